#ifndef DESIGNERITEMSYNC_H
#define DESIGNERITEMSYNC_H

#include "hmiwidgets_export.h"

#include <QByteArray>
#include <QObject>

class QTableWidget;
class QTableWidgetItem;

// In a Designer form the table's items are what the panel builder edits with Designer's own item
// editor, and its stored contents follow them: after every change of the items the contents are
// encoded again and written to the "data" property through the property sheet (the item change is
// itself the undoable edit). The designer plugin drops Designer's own copies of the items from the
// saved form, so forms keep one copy of the cells and loaders never build them all at once.
// Designer's item editor lists only the rows and columns that have a header item: every row and
// column gets one, labelled with the number the table shows, so that the editor counts what the
// property sheet and the saved form count (the plugin leaves such plain labels out of the form).
class HMIWIDGETS_EXPORT DesignerItemSync : public QObject
{
    Q_OBJECT
public:
    // A status tip holding per-language text records is shown in Designer as this marker and hex.
    static const QString RecordsMarker;

    explicit DesignerItemSync(QTableWidget *table);

    // Makes the item editable in Designer's item editor, status-tip records included.
    static void expose(QTableWidgetItem *item);
    // The stored contents of every item of the table.
    static QByteArray encode(const QTableWidget *table);

    void setSuspended(bool suspended) { m_suspended = suspended; }
    // Writes the contents now if a change is pending; returns the current contents.
    QByteArray flush();

Q_SIGNALS:
    // The contents changed; the table stores them before the property sheet hears of them.
    void encoded(const QByteArray &data);

private:
    void schedule();
    void labelHeaders();

    QTableWidget *const m_table;
    bool m_pending = false;
    bool m_suspended = false;
};

#endif
