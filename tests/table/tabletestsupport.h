#ifndef TABLETESTSUPPORT_H
#define TABLETESTSUPPORT_H

// A parameter table's stored contents made from binding texts, and a table shown in a form on a
// recording application: what the table tests share.
#include "recordingqeltapp.h"
#include "tablecontents.h"
#include "tablewidget.h"

#include <QDialog>
#include <QTableWidgetItem>
#include <QtTest>

#include <functional>
#include <memory>
#include <vector>

namespace TableTest {

// Contents of a table whose cells carry these binding texts (row-major).
inline QByteArray contents(int rows, int columns, const std::function<QString(int, int)> &binding,
                    const std::function<void(QTableWidgetItem *, int, int)> &more = nullptr)
{
    std::vector<std::unique_ptr<QTableWidgetItem>> items;
    QList<QList<const QTableWidgetItem *>> grid;
    for (int r = 0; r < rows; ++r) {
        QList<const QTableWidgetItem *> row;
        for (int c = 0; c < columns; ++c) {
            auto item = std::make_unique<QTableWidgetItem>();
            item->setWhatsThis(binding(r, c));
            if (more)
                more(item.get(), r, c);
            row.append(item.get());
            items.push_back(std::move(item));
        }
        grid.append(row);
    }
    return TableContents::encode(rows, columns, grid);
}

inline QByteArray readAll(const QString &fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

inline bool writeFile(const QString &fileName, const QByteArray &bytes)
{
    QFile file(fileName);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

// A table in a form attached to a recording application, shown at a fixed size.
struct Panel
{
    RecordingQeltApp app;
    QDialog form;
    TableWidget *table = new TableWidget(&form);

    Panel(int rows, int columns, const QByteArray &data = QByteArray())
    {
        table->setRowCount(rows);
        table->setColumnCount(columns);
        if (!data.isEmpty())
            table->setData(data);
        table->setGeometry(0, 0, 400, 300);
        form.resize(400, 300);
        table->setQeltAppAndFormPtr(&app, &form);
    }
    void show()
    {
        form.show();
        QVERIFY(QTest::qWaitForWindowExposed(&form));
    }
    int visibleRows() const
    {
        const int last = table->rowAt(table->viewport()->height());
        return (last < 0 ? table->rowCount() - 1 : last) - std::max(0, table->rowAt(0)) + 1;
    }
    QList<int> registeredRows() const
    {
        QList<int> rows;
        for (const UiRegistration &r : app.registrations()) {
            if (r.index >= 0 && !rows.contains(r.index / table->columnCount()))
                rows.append(r.index / table->columnCount());
        }
        return rows;
    }
};

} // namespace TableTest

#endif
