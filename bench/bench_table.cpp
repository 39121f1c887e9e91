// The parameter table against a stock QTableWidget: first show of a long list, one scroll step far
// down against one near the top, controller text updates against QTableWidgetItem::setText, and the
// memory a long list holds before and after the operator has scrolled through all of it.
// Usage: bench_table [rounds] [scroll steps] [text updates] [section: memory, show, scroll or update]
#include "simulatedcontroller.h"
#include "tablecontents.h"
#include "tablewidget.h"

#include "residentmemory.h"

#include <QApplication>
#include <QDialog>
#include <QElapsedTimer>
#include <QFile>
#include <QScrollBar>
#include <QTableWidget>
#include <QTextStream>

#include <algorithm>
#include <memory>
#include <vector>

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace {

constexpr int Columns = 8;
constexpr int LongRows = 100000;
constexpr int ShortRows = 100;

QTextStream &out()
{
    static QTextStream stream(stdout);
    return stream;
}

// The fastest of the rounds so far. Rounds of the cases compared are interleaved, so that a busy
// moment of the machine does not fall on one case alone.
struct Best
{
    qint64 ns = -1;
    void add(qint64 t) { ns = ns < 0 ? t : std::min(ns, t); }
};

QString bindingOf(int row, int column)
{
    // A value cell: channel 1, User words, its own address, width 8, 2 decimals, range 0 ... 9999.
    return QStringLiteral("1@0@%1@8@2@0@9999").arg(row * Columns + column);
}

// The "data" property of a form's table of value cells.
QByteArray encodedTable(int rows)
{
    std::vector<std::unique_ptr<QTableWidgetItem>> items;
    items.reserve(size_t(rows) * Columns);
    QList<QList<const QTableWidgetItem *>> grid;
    grid.reserve(rows);
    for (int r = 0; r < rows; ++r) {
        QList<const QTableWidgetItem *> row;
        row.reserve(Columns);
        for (int c = 0; c < Columns; ++c) {
            items.push_back(std::make_unique<QTableWidgetItem>(QStringLiteral("0")));
            items.back()->setWhatsThis(bindingOf(r, c));
            row.append(items.back().get());
        }
        grid.append(row);
    }
    return TableContents::encode(rows, Columns, grid);
}

// Gives freed heap back so that resident sizes show what is held, not what was once used.
void trimHeap()
{
#ifdef __GLIBC__
    malloc_trim(0);
#endif
}

int liveItems(const QTableWidget &table)
{
    int count = 0;
    for (int r = 0; r < table.rowCount(); ++r) {
        for (int c = 0; c < table.columnCount(); ++c)
            count += table.item(r, c) != nullptr;
    }
    return count;
}

// A form with one table filling it, as a panel page lays it out.
struct Form
{
    Form()
        : dialog(new QDialog)
    {
        dialog->resize(800, 600);
    }
    ~Form() { delete dialog; } // the controller drops the form's registrations when it goes

    void place(QTableWidget *table) { table->setGeometry(0, 0, 800, 600); }
    void show()
    {
        dialog->show();
        QApplication::processEvents(); // first paint and the controller's first deliveries
    }

    QDialog *dialog;
};

struct OurTable
{
    OurTable(SimulatedController *controller, int rows, const QByteArray &data)
    {
        table = new TableWidget(form.dialog);
        form.place(table);
        table->setRowCount(rows);
        table->setColumnCount(Columns);
        table->setData(data);
        table->setQeltAppAndFormPtr(static_cast<norvo_v0::QeltApp *>(controller), form.dialog);
    }
    void show()
    {
        form.show();
        while (table->loadedRowCount() == 0)
            QApplication::processEvents();
    }

    Form form;
    TableWidget *table;
};

double ms(qint64 ns) { return double(ns) / 1e6; }
double us(qint64 ns) { return double(ns) / 1e3; }

// --- first show ------------------------------------------------------------------------------------

// Where the time of one first show goes.
struct ShowTimes
{
    qint64 counts = 0; // construction and the row and column counts
    qint64 data = 0;   // setData
    qint64 show = 0;   // attaching, show and the events until the rows are loaded
    qint64 total() const { return counts + data + show; }
};

// A form sets the row count before the column count (the properties' order); columnsFirst swaps them.
ShowTimes firstShow(SimulatedController *controller, int rows, const QByteArray &data, bool columnsFirst = false)
{
    auto owner = std::make_unique<Form>(); // destroyed outside the timing
    ShowTimes times;
    QElapsedTimer timer;
    timer.start();
    auto *table = new TableWidget(owner->dialog);
    owner->place(table);
    if (columnsFirst)
        table->setColumnCount(Columns);
    table->setRowCount(rows);
    table->setColumnCount(Columns);
    times.counts = timer.nsecsElapsed();
    // The property value is what a form gives the table; decoding it is the table's own work.
    table->setData(data);
    times.data = timer.nsecsElapsed() - times.counts;
    table->setQeltAppAndFormPtr(static_cast<norvo_v0::QeltApp *>(controller), owner->dialog);
    owner->show();
    while (table->loadedRowCount() == 0)
        QApplication::processEvents();
    times.show = timer.nsecsElapsed() - times.counts - times.data;
    owner.reset();
    return times;
}

struct BestShow
{
    ShowTimes times;
    bool any = false;
    void add(const ShowTimes &t)
    {
        if (!any || t.total() < times.total())
            times = t;
        any = true;
    }
};

// The application fills a stock table with every item itself.
qint64 stockFirstShow(const std::vector<QString> &bindings)
{
    auto owner = std::make_unique<Form>();
    const QString text = QStringLiteral("0");
    // The texts are made beforehand and shared: only what Qt itself does counts for the stock table.
    QElapsedTimer timer;
    timer.start();
    auto *table = new QTableWidget(owner->dialog);
    owner->place(table);
    table->setRowCount(LongRows);
    table->setColumnCount(Columns);
    for (int r = 0; r < LongRows; ++r) {
        for (int c = 0; c < Columns; ++c) {
            auto *item = new QTableWidgetItem(text);
            item->setWhatsThis(bindings[size_t(r) * Columns + size_t(c)]);
            table->setItem(r, c, item);
        }
    }
    owner->show();
    const qint64 t = timer.nsecsElapsed();
    owner.reset();
    return t;
}

// --- scrolling -------------------------------------------------------------------------------------

// Steps forward one row at a time from startRow on a fresh table, so every step makes a new row's
// items as well as registering the rows on screen again.
qint64 freshSteps(SimulatedController *controller, const QByteArray &data, int startRow, int steps)
{
    OurTable t(controller, LongRows, data);
    t.show();
    QScrollBar *bar = t.table->verticalScrollBar();
    bar->setValue(startRow); // reaching a far row reads the stored rows before it once: not a step
    QApplication::processEvents();
    QElapsedTimer timer;
    timer.start();
    for (int i = 0; i < steps; ++i)
        bar->triggerAction(QAbstractSlider::SliderSingleStepAdd);
    const qint64 ns = timer.nsecsElapsed();
    if (bar->value() != startRow + steps)
        out() << "warning: scrolled to " << bar->value() << " instead of " << startRow + steps << "\n";
    return ns;
}

// Steps back and forth over rows whose items exist: the registration part of a step alone.
qint64 revisitSteps(TableWidget *table, int startRow, int steps)
{
    QScrollBar *bar = table->verticalScrollBar();
    bar->setValue(startRow);
    QApplication::processEvents();
    QElapsedTimer timer;
    timer.start();
    for (int i = 0; i < steps; ++i)
        bar->triggerAction(i & 1 ? QAbstractSlider::SliderSingleStepSub : QAbstractSlider::SliderSingleStepAdd);
    const qint64 ns = timer.nsecsElapsed();
    QApplication::processEvents();
    return ns;
}

} // namespace

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const int rounds = std::max(5, argc > 1 ? QString::fromLocal8Bit(argv[1]).toInt() : 5);
    const int steps = argc > 2 ? QString::fromLocal8Bit(argv[2]).toInt() : 300;
    const int updates = argc > 3 ? QString::fromLocal8Bit(argv[3]).toInt() : 10000;
    // One section alone, for profiling it.
    const QString only = argc > 4 ? QString::fromLocal8Bit(argv[4]) : QString();
    auto runs = [&](const char *section) { return only.isEmpty() || only == QLatin1String(section); };
    out() << "Qt " << qVersion() << ", " << rounds << " rounds, best of each\n";

    const QByteArray longData = encodedTable(LongRows);
    const QByteArray shortData = encodedTable(ShortRows);
    trimHeap();
    out() << "data property: " << LongRows << " rows " << longData.size() / 1024 << " KiB, " << ShortRows
          << " rows " << shortData.size() / 1024 << " KiB\n";
    out().flush();
    SimulatedController controller;

    // Memory first, on a heap no timing round has churned yet.
    if (runs("memory")) {
        {
            const qint64 before = residentKiB();
            OurTable t(&controller, LongRows, longData);
            t.show();
            const qint64 shown = residentKiB();
            out() << "memory before the table: " << before << " KiB\n";
            out() << "memory after first show of " << LongRows << " rows: " << shown << " KiB (+" << shown - before
                  << " KiB), loaded rows " << t.table->loadedRowCount() << ", live items " << liveItems(*t.table)
                  << "\n";
            QScrollBar *bar = t.table->verticalScrollBar();
            QElapsedTimer timer;
            timer.start();
            int pages = 0;
            for (int v = 0; v < bar->maximum(); ++pages) {
                v = std::min(bar->maximum(), v + bar->pageStep());
                bar->setValue(v);
                QApplication::processEvents();
            }
            const qint64 scrolled = residentKiB();
            out() << "memory after scrolling to the bottom screen by screen (" << pages << " screens, "
                  << ms(timer.nsecsElapsed()) / pages << " ms each): " << scrolled << " KiB (+" << scrolled - before
                  << " KiB), loaded rows " << t.table->loadedRowCount() << ", live items " << liveItems(*t.table)
                  << "\n";
            out().flush();
        }
        trimHeap();
        // The same items in a stock table, each with texts of its own as an application makes them.
        const qint64 before = residentKiB();
        {
            Form form;
            auto *table = new QTableWidget(form.dialog);
            form.place(table);
            table->setRowCount(LongRows);
            table->setColumnCount(Columns);
            for (int r = 0; r < LongRows; ++r) {
                for (int c = 0; c < Columns; ++c) {
                    auto *item = new QTableWidgetItem(QString(QLatin1Char('0')));
                    item->setWhatsThis(bindingOf(r, c));
                    table->setItem(r, c, item);
                }
            }
            form.show();
            const qint64 shown = residentKiB();
            out() << "memory stock QTableWidget filled with " << LongRows * Columns << " items: +" << shown - before
                  << " KiB\n";
        }
        trimHeap();
    }

    // First show of a long list against a short one and against a stock table.
    if (runs("show")) {
        std::vector<QString> bindings;
        bindings.reserve(size_t(LongRows) * Columns);
        for (int r = 0; r < LongRows; ++r) {
            for (int c = 0; c < Columns; ++c)
                bindings.push_back(bindingOf(r, c));
        }
        firstShow(&controller, ShortRows, shortData); // warm-up
        firstShow(&controller, LongRows, longData);
        BestShow shortBest, longBest, columnsFirstBest;
        Best stockBest;
        for (int r = 0; r < rounds; ++r) {
            shortBest.add(firstShow(&controller, ShortRows, shortData));
            longBest.add(firstShow(&controller, LongRows, longData));
            columnsFirstBest.add(firstShow(&controller, LongRows, longData, true));
        }
        for (int r = 0; r < rounds; ++r)
            stockBest.add(stockFirstShow(bindings));
        const ShowTimes &shortShow = shortBest.times;
        const ShowTimes &longShow = longBest.times;
        const ShowTimes &columnsFirst = columnsFirstBest.times;
        const qint64 stock = stockBest.ns;
        for (const auto &[rows, t] : {std::pair(ShortRows, shortShow), std::pair(LongRows, longShow)}) {
            out() << "first show " << rows << " rows: " << ms(t.total()) << " ms (counts " << ms(t.counts)
                  << ", setData " << ms(t.data) << ", show " << ms(t.show) << ")\n";
        }
        out() << "first show " << LongRows << " rows, column count set before the row count: "
              << ms(columnsFirst.total()) << " ms (counts " << ms(columnsFirst.counts) << ", setData "
              << ms(columnsFirst.data) << ", show " << ms(columnsFirst.show) << ")\n";
        out() << "first show stock QTableWidget with " << LongRows * Columns << " items: " << ms(stock) << " ms\n";
        out() << "ratio first-show " << LongRows << " rows / " << ShortRows << " rows: "
              << double(longShow.total()) / double(shortShow.total()) << " (target <= 1.5)\n";
        out() << "ratio stock QTableWidget filled with " << LongRows * Columns << " items / ours: "
              << double(stock) / double(longShow.total()) << " (target >= 20)\n";
        out().flush();
    }
    trimHeap();

    // One scroll step far down against one near the top.
    if (runs("scroll")) {
        const int nearRow = 100;
        const int farRow = 99000;
        freshSteps(&controller, longData, nearRow, steps); // warm-up
        Best near, far;
        for (int r = 0; r < rounds; ++r) {
            near.add(freshSteps(&controller, longData, nearRow, steps));
            far.add(freshSteps(&controller, longData, farRow, steps));
        }
        const qint64 stepNear = near.ns;
        const qint64 stepFar = far.ns;
        out() << "scroll step at row " << nearRow << ": " << us(stepNear) / steps << " us\n";
        out() << "scroll step at row " << farRow << ": " << us(stepFar) / steps << " us\n";
        out() << "ratio scroll step at row " << farRow << " / at row " << nearRow << ": "
              << double(stepFar) / double(stepNear) << " (target <= 1.2)\n";
        OurTable t(&controller, LongRows, longData);
        t.show();
        // Make the rows around both places first: what is left is registering the screen again.
        revisitSteps(t.table, farRow, 2);
        revisitSteps(t.table, nearRow, 2);
        Best backNearBest, backFarBest;
        for (int r = 0; r < rounds; ++r) {
            backNearBest.add(revisitSteps(t.table, nearRow, steps));
            backFarBest.add(revisitSteps(t.table, farRow, steps));
        }
        const qint64 backNear = backNearBest.ns;
        const qint64 backFar = backFarBest.ns;
        out() << "scroll step back and forth over made rows at row " << nearRow << ": " << us(backNear) / steps
              << " us, at row " << farRow << ": " << us(backFar) / steps << " us ("
              << double(backFar) / double(backNear) << "x)\n";
        out().flush();
    }

    // Controller text updates on the cells on screen against setting the items' texts.
    if (runs("update")) {
        OurTable t(&controller, LongRows, longData);
        t.show();
        TableWidget *table = t.table;
        const int shownRows = std::max(1, table->rowAt(table->viewport()->height() - 1) + 1);
        const int cells = shownRows * Columns;
        std::vector<QTableWidgetItem *> items;
        for (int i = 0; i < cells; ++i)
            items.push_back(table->item(i / Columns, i % Columns));
        const QString texts[] = {QStringLiteral("12.34"), QStringLiteral("56.78")};
        // One count across all runs: a cell's next text is always the other one, so each update
        // changes what the cell shows.
        qint64 counter = 0;
        QWidget *viewport = table->viewport(); // where the cells are painted
        auto runOurs = [&](int count) {
            QElapsedTimer timer;
            timer.start();
            for (int i = 0; i < count; ++i, ++counter) {
                table->updateData(int(counter % cells), texts[(counter / cells) & 1]);
                viewport->repaint();
            }
            return timer.nsecsElapsed();
        };
        auto runStock = [&](int count) {
            QElapsedTimer timer;
            timer.start();
            for (int i = 0; i < count; ++i, ++counter) {
                items[size_t(counter % cells)]->setText(texts[(counter / cells) & 1]);
                viewport->repaint();
            }
            return timer.nsecsElapsed();
        };
        runStock(updates / 10); // warm-up
        runOurs(updates / 10);
        // Each round makes all its updates of both kinds in alternating chunks.
        constexpr int Chunk = 500;
        Best stockBest, oursBest;
        for (int r = 0; r < rounds; ++r) {
            qint64 stockRound = 0;
            qint64 oursRound = 0;
            for (int done = 0; done < updates; done += Chunk) {
                const int count = std::min(Chunk, updates - done);
                stockRound += runStock(count);
                oursRound += runOurs(count);
            }
            stockBest.add(stockRound);
            oursBest.add(oursRound);
        }
        const qint64 stock = stockBest.ns;
        const qint64 ours = oursBest.ns;
        out() << "text update on " << cells << " cells on screen: updateData " << us(ours) / updates
              << " us, QTableWidgetItem::setText " << us(stock) / updates << " us\n";
        out() << "ratio updateData text / QTableWidgetItem::setText: " << double(ours) / double(stock)
              << " (target <= 1.1)\n";
    }
    return 0;
}
