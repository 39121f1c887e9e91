#ifndef COLUMNDEFAULTS_H
#define COLUMNDEFAULTS_H

#include "hmiwidgets_export.h"

#include <QColor>
#include <QMap>
#include <QString>

class QTableWidgetItem;

// Per-column settings the panel application made, remembered for rows it inserts later.
class HMIWIDGETS_EXPORT ColumnDefaults
{
public:
    // "r,g,b" in decimal (alpha 255), otherwise a colour name.
    static QColor parseColor(const QString &text);

    void setAlignment(int column, int alignment) { m_alignment.insert(column, alignment); }
    void setBackground(int column, const QColor &color) { m_background.insert(column, color); }
    void setForeground(int column, const QColor &color) { m_foreground.insert(column, color); }
    void setEditable(int column, bool editable) { m_editable.insert(column, editable); }
    void setSelectable(int column, bool selectable) { m_selectable.insert(column, selectable); }
    bool isEditable(int column) const { return m_editable.value(column, false); }

    // Gives a new item of the column the remembered alignment, colours and selectability.
    void apply(QTableWidgetItem *item, int column) const;

private:
    QMap<int, int> m_alignment;
    QMap<int, QColor> m_background;
    QMap<int, QColor> m_foreground;
    QMap<int, bool> m_editable;
    QMap<int, bool> m_selectable;
};

#endif
