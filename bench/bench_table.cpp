// The parameter table against what a Qt developer writes instead for the same bound parameters: a
// QTableView over a QAbstractTableModel that formats the values in data(), same size, columns, rows,
// font and grid. Each case is timed until painted: first show, one scroll step near the top and far
// down, the first jump from the top to a far row, value updates reaching the screen, and the memory
// held after first show, after one drag to the end and after scrolling all of it screen by screen.
// Usage: bench_table [rounds] [scroll steps] [updates] [section: memory, show, scroll, jump or update]
#include "simulatedcontroller.h"
#include "tablecontents.h"
#include "tablewidget.h"

#include "residentmemory.h"

#include <QApplication>
#include <QAbstractTableModel>
#include <QDialog>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QHeaderView>
#include <QScrollBar>
#include <QTableView>
#include <QTableWidget>
#include <QTextStream>
#include <QTimer>

#include <algorithm>
#include <memory>
#include <tuple>
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

// A form with one table filling it, as a panel page lays it out.
struct Form
{
    Form()
        : dialog(new QDialog)
    {
        dialog->resize(800, 600);
    }
    ~Form() { delete dialog; } // the controller drops the form's registrations when it goes

    void place(QAbstractItemView *table) { table->setGeometry(0, 0, 800, 600); }
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

// The model view's values: raw controller values formatted in data() as the table's value cells are.
class ValueModel : public QAbstractTableModel
{
public:
    explicit ValueModel(int rows)
        : m_rows(rows)
        , m_values(size_t(rows) * Columns, 0)
    {
    }
    int rowCount(const QModelIndex &parent = QModelIndex()) const override { return parent.isValid() ? 0 : m_rows; }
    int columnCount(const QModelIndex &parent = QModelIndex()) const override { return parent.isValid() ? 0 : Columns; }
    QVariant data(const QModelIndex &index, int role) const override
    {
        if (role != Qt::DisplayRole)
            return QVariant();
        const int value = m_values[size_t(index.row()) * Columns + size_t(index.column())];
        return QString::number(value / 100.0, 'f', 2);
    }
    void setValue(int cell, int value)
    {
        m_values[size_t(cell)] = value;
        const QModelIndex i = index(cell / Columns, cell % Columns);
        emit dataChanged(i, i, {Qt::DisplayRole});
    }

private:
    int m_rows;
    std::vector<int> m_values;
};

// What the model view takes over from the parameter table, read from one made with its defaults.
struct TableLook
{
    QFont font;
    QColor grid;
    int rowHeight = 0;
};

const TableLook &tableLook()
{
    static const TableLook look = [] {
        TableWidget table;
        return TableLook{table.font(), table.gridColor(), table.verticalHeader()->defaultSectionSize()};
    }();
    return look;
}

struct ModelTable
{
    explicit ModelTable(int rows)
        : model(rows)
    {
        view = new QTableView(form.dialog);
        form.place(view);
        // Same font, grid colour and row height as the parameter table, set the way a Qt developer would.
        const TableLook &look = tableLook();
        view->setFont(look.font);
        view->setStyleSheet(QStringLiteral("QTableView { gridline-color: %1; }").arg(look.grid.name()));
        view->verticalHeader()->setDefaultSectionSize(look.rowHeight);
        view->setModel(&model);
    }
    void show() { form.show(); }

    Form form;
    ValueModel model;
    QTableView *view;
};

// The same parts of a table of either kind.
QAbstractItemView *viewOf(OurTable &t) { return t.table; }
QAbstractItemView *viewOf(ModelTable &t) { return t.view; }

template<typename Table, typename... Args>
qint64 firstShow(Args &&...args)
{
    QElapsedTimer timer;
    timer.start();
    auto t = std::make_unique<Table>(std::forward<Args>(args)...);
    t->show();
    const qint64 ns = timer.nsecsElapsed();
    t.reset(); // destroyed outside the timing
    return ns;
}

// One row forward, until painted.
void step(QAbstractItemView *view, QAbstractSlider::SliderAction action = QAbstractSlider::SliderSingleStepAdd)
{
    view->verticalScrollBar()->triggerAction(action);
    view->viewport()->repaint();
}

// Steps forward one row at a time from startRow on a freshly shown table.
template<typename Table, typename... Args>
qint64 freshSteps(int startRow, int steps, Args &&...args)
{
    Table t(std::forward<Args>(args)...);
    t.show();
    QScrollBar *bar = viewOf(t)->verticalScrollBar();
    bar->setValue(startRow); // the first far jump is timed on its own
    QApplication::processEvents();
    QElapsedTimer timer;
    timer.start();
    for (int i = 0; i < steps; ++i)
        step(viewOf(t));
    const qint64 ns = timer.nsecsElapsed();
    if (bar->value() != startRow + steps)
        out() << "warning: scrolled to " << bar->value() << " instead of " << startRow + steps << "\n";
    return ns;
}

// The first jump from the top of a freshly shown table to row, until painted: at once, or after the
// page was shown for idleMs with the application idle, as when an operator reads it before jumping.
template<typename Table, typename... Args>
qint64 firstJump(int row, int idleMs, Args &&...args)
{
    Table t(std::forward<Args>(args)...);
    t.show();
    if (idleMs > 0) {
        QEventLoop idle;
        QTimer::singleShot(idleMs, &idle, &QEventLoop::quit);
        idle.exec();
    }
    QElapsedTimer timer;
    timer.start();
    viewOf(t)->verticalScrollBar()->setValue(row);
    viewOf(t)->viewport()->repaint();
    return timer.nsecsElapsed();
}

// Resident memory added by a table of either kind: after first show, after one drag to the end, and
// after scrolling all of it screen by screen (a second table from the top).
struct Memory
{
    qint64 shown = 0, dragged = 0, scrolled = 0; // KiB: over the process before, and the last two over first show
};

template<typename Table, typename... Args>
Memory memory(const char *name, Args &&...args)
{
    trimHeap();
    const qint64 before = residentKiB();
    qint64 shown = 0, dragged = 0, scrolled = 0;
    {
        Table t(args...);
        t.show();
        trimHeap();
        shown = residentKiB();
        QScrollBar *bar = viewOf(t)->verticalScrollBar();
        bar->setValue(bar->maximum());
        QApplication::processEvents();
        trimHeap();
        dragged = residentKiB();
    }
    trimHeap();
    const qint64 base = residentKiB();
    {
        Table t(args...);
        t.show();
        QScrollBar *bar = viewOf(t)->verticalScrollBar();
        for (int v = 0; v < bar->maximum();) {
            v = std::min(bar->maximum(), v + bar->pageStep());
            bar->setValue(v);
            QApplication::processEvents();
        }
        trimHeap();
        scrolled = residentKiB() - base + before;
    }
    trimHeap();
    out() << "memory " << name << ": first show +" << (shown - before) / 1024 << " MB, after a drag to the end +"
          << (dragged - shown) / 1024 << " MB, after scrolling all screen by screen +" << (scrolled - shown) / 1024
          << " MB (over first show)\n";
    out().flush();
    return {shown - before, dragged - shown, scrolled - shown};
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

    tableLook(); // read before any measurement
    const QByteArray data = encodedTable(LongRows);
    trimHeap();
    out() << "data property: " << LongRows << " rows " << data.size() / 1024 << " KiB\n";
    out().flush();
    SimulatedController controller;
    constexpr int FarRow = 99000;
    constexpr int NearRow = 100;

    // Memory first, on a heap no timing round has churned yet.
    if (runs("memory")) {
        const Memory ours = memory<OurTable>("parameter table", &controller, LongRows, data);
        const Memory model = memory<ModelTable>("model view", LongRows);
        out() << "ratio memory first show parameter table - model view: +" << (ours.shown - model.shown) / 1024
              << " MB\n";
        out() << "ratio memory after a drag to the end, over first show: +" << ours.dragged / 1024
              << " MB (target <= +10 MB; model view +" << model.dragged / 1024 << " MB)\n";
        out() << "ratio memory after scrolling all screen by screen, over first show: +" << ours.scrolled / 1024
              << " MB (target <= +40 MB; model view +" << model.scrolled / 1024 << " MB)\n";
        out().flush();
    }

    if (runs("show")) {
        firstShow<OurTable>(&controller, LongRows, data); // warm-up
        firstShow<ModelTable>(LongRows);
        Best ours, model;
        for (int r = 0; r < rounds; ++r) {
            ours.add(firstShow<OurTable>(&controller, LongRows, data));
            model.add(firstShow<ModelTable>(LongRows));
        }
        out() << "first show " << LongRows << " rows: parameter table " << ms(ours.ns) << " ms, model view "
              << ms(model.ns) << " ms\n";
        out() << "ratio first show parameter table / model view: " << double(ours.ns) / double(model.ns)
              << " (target <= 1.1)\n";
        out().flush();
    }
    trimHeap();

    if (runs("jump")) {
        firstJump<ModelTable>(FarRow, 0, LongRows); // warm-up
        constexpr int ReadingMs = 500;
        for (const int idleMs : {0, ReadingMs}) {
            Best ours, model;
            for (int r = 0; r < rounds; ++r) {
                ours.add(firstJump<OurTable>(FarRow, idleMs, &controller, LongRows, data));
                model.add(firstJump<ModelTable>(FarRow, idleMs, LongRows));
            }
            const QString when = idleMs == 0 ? QStringLiteral("right after first show")
                                             : QStringLiteral("%1 ms after first show").arg(idleMs);
            out() << "first jump from the top to row " << FarRow << " " << when << ": parameter table "
                  << ms(ours.ns) << " ms, model view " << ms(model.ns) << " ms\n";
            out() << "ratio first far jump " << when << " parameter table: " << ms(ours.ns) << " ms (target <= 20 ms)\n";
        }
        out().flush();
    }
    trimHeap();

    if (runs("scroll")) {
        freshSteps<ModelTable>(NearRow, steps, LongRows); // warm-up
        freshSteps<OurTable>(NearRow, steps, &controller, LongRows, data);
        Best oursNear, oursFar, modelNear, modelFar;
        for (int r = 0; r < rounds; ++r) {
            oursNear.add(freshSteps<OurTable>(NearRow, steps, &controller, LongRows, data));
            modelNear.add(freshSteps<ModelTable>(NearRow, steps, LongRows));
            oursFar.add(freshSteps<OurTable>(FarRow, steps, &controller, LongRows, data));
            modelFar.add(freshSteps<ModelTable>(FarRow, steps, LongRows));
        }
        for (const auto &[row, ours, model] : {std::tuple(NearRow, oursNear, modelNear), std::tuple(FarRow, oursFar, modelFar)}) {
            out() << "scroll step at row " << row << ": parameter table " << us(ours.ns) / steps << " us, model view "
                  << us(model.ns) / steps << " us\n";
            out() << "ratio scroll step at row " << row << " parameter table / model view: "
                  << double(ours.ns) / double(model.ns) << " (target <= 1.1)\n";
        }
        out().flush();
    }

    // Controller values reaching the cells on screen: the table's update call against the model's
    // dataChanged, each until painted.
    if (runs("update")) {
        OurTable t(&controller, LongRows, data);
        t.show();
        ModelTable m(LongRows);
        m.show();
        TableWidget *table = t.table;
        const int shownRows = std::max(1, table->rowAt(table->viewport()->height() - 1) + 1);
        const int cells = shownRows * Columns;
        const QString texts[] = {QStringLiteral("12.34"), QStringLiteral("56.78")};
        const int values[] = {1234, 5678};
        // One count across all runs: a cell's next value is always the other one, so each update
        // changes what the cell shows.
        qint64 counter = 0;
        auto runOurs = [&](int count) {
            QElapsedTimer timer;
            timer.start();
            for (int i = 0; i < count; ++i, ++counter) {
                table->updateData(int(counter % cells), texts[(counter / cells) & 1]);
                table->viewport()->repaint();
            }
            return timer.nsecsElapsed();
        };
        auto runModel = [&](int count) {
            QElapsedTimer timer;
            timer.start();
            for (int i = 0; i < count; ++i, ++counter) {
                m.model.setValue(int(counter % cells), values[(counter / cells) & 1]);
                m.view->viewport()->repaint();
            }
            return timer.nsecsElapsed();
        };
        runModel(updates / 10); // warm-up
        runOurs(updates / 10);
        // Each round makes all its updates of both kinds in alternating chunks.
        constexpr int Chunk = 500;
        Best modelBest, oursBest;
        for (int r = 0; r < rounds; ++r) {
            qint64 modelRound = 0;
            qint64 oursRound = 0;
            for (int done = 0; done < updates; done += Chunk) {
                const int count = std::min(Chunk, updates - done);
                modelRound += runModel(count);
                oursRound += runOurs(count);
            }
            modelBest.add(modelRound);
            oursBest.add(oursRound);
        }
        out() << updates << " value updates on " << cells << " cells on screen: parameter table "
              << ms(oursBest.ns) << " ms, model view " << ms(modelBest.ns) << " ms\n";
        out() << "ratio value updates parameter table / model view: " << double(oursBest.ns) / double(modelBest.ns)
              << " (target <= 1.1)\n";
    }
    return 0;
}
