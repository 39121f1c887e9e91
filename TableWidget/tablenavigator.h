#ifndef TABLENAVIGATOR_H
#define TABLENAVIGATOR_H

#include "hmiwidgets_export.h"

#include <functional>

class QTableWidget;
class QTableWidgetItem;

// Moves the table's current cell for the panel's navigation keys and slots, over cells an operator
// can select: up and down through the table's own key handling, left, right, home and end directly,
// and pages by what the screen shows.
class HMIWIDGETS_EXPORT TableNavigator
{
public:
    // The item at a cell, made from the stored contents first when its row has not been made yet.
    using ItemAt = std::function<QTableWidgetItem *(int row, int column)>;

    TableNavigator(QTableWidget *table, ItemAt itemAt);

    void moveUp();
    void moveDown();
    void moveLeft();
    void moveRight();
    void moveHome();
    void moveEnd();
    void pageUp();
    void pageDown();
    void pageLeft();
    void pageRight();

    // Whether an Up or Down key press is the one moveUp or moveDown sent (clears the mark).
    bool takeSentKey();

private:
    bool stopsAt(int row, int column) const;
    void moveVertically(int step);
    void moveHorizontally(int step);
    void makeCurrent(int row, int column);
    void pageVertically(bool forward);
    void pageHorizontally(bool forward);

    QTableWidget *const m_table;
    ItemAt m_itemAt;
    bool m_sentKey = false;
};

#endif
