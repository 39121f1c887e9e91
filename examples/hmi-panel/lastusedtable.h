#ifndef LASTUSEDTABLE_H
#define LASTUSEDTABLE_H

#include <QObject>
#include <QPointer>

class TableWidget;

// The table the operator last clicked or typed in, anywhere in the application: the one the panel's
// search keys act on. A table that merely took the focus (as the first in the focus chain does when
// its window opens) was not used.
class LastUsedTable : public QObject
{
    Q_OBJECT
public:
    explicit LastUsedTable(QObject *parent = nullptr);
    TableWidget *table() const;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QPointer<TableWidget> m_table;
};

#endif
