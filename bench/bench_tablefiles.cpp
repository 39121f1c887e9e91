// The table's NC program view and bit monitor: loading a long program against reading the same file
// line by line and splitting each line at blanks, and one scroll step of the bit monitor far down
// against one near its start. Then files far beyond what a table holds: a 1 GiB program and a table
// file of a million lines, time and resident memory.
// Usage: bench_tablefiles [rounds] [lines] [scroll steps]   (TMPDIR=/dev/shm for the large files)
#include "operatormessage.h"
#include "residentmemory.h"
#include "simulatedcontroller.h"
#include "tablewidget.h"

#include <QApplication>
#include <QDialog>
#include <QElapsedTimer>
#include <QFile>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTextStream>

#include <algorithm>

namespace {

QTextStream &out()
{
    static QTextStream stream(stdout);
    return stream;
}

struct Best
{
    qint64 ns = -1;
    void add(qint64 t) { ns = ns < 0 ? t : std::min(ns, t); }
};

// A milling program: sequence numbers, motions with coordinates and feeds, tool changes, comments.
void writeProgram(const QString &fileName, int lines)
{
    QFile file(fileName);
    file.open(QIODevice::WriteOnly);
    QTextStream stream(&file);
    for (int i = 0; i < lines; ++i) {
        switch (i % 5) {
        case 0: stream << "N" << i << " G01 X" << (i % 400) * 0.25 << " Y-" << (i % 97) << ".5 F1200\n"; break;
        case 1: stream << "N" << i << " G02 X" << (i % 300) << " Y" << (i % 50) << " I5. J-2.5\n"; break;
        case 2: stream << "N" << i << " G00 Z" << (i % 20) + 5 << " (RETRACT)\n"; break;
        case 3: stream << "N" << i << " M03 S" << 1000 + i % 5000 << "\n"; break;
        default: stream << "N" << i << " T" << i % 24 << " M06 ; TOOL CHANGE\n"; break;
        }
    }
}

qint64 readAndSplit(const QString &fileName, int *words)
{
    QElapsedTimer timer;
    timer.start();
    QFile file(fileName);
    file.open(QIODevice::ReadOnly | QIODevice::Text);
    QTextStream stream(&file);
    int count = 0;
    QString line;
    while (stream.readLineInto(&line))
        count += int(line.split(QLatin1Char(' ')).size());
    *words = count;
    return timer.nsecsElapsed();
}

struct Panel
{
    QDialog form;
    TableWidget *table = new TableWidget(&form);
    explicit Panel(SimulatedController *controller)
    {
        form.resize(800, 600);
        table->setGeometry(0, 0, 800, 600);
        table->setQeltAppAndFormPtr(static_cast<norvo_v0::QeltApp *>(controller), &form);
        form.show();
        QApplication::processEvents();
    }
};

qint64 loadProgram(SimulatedController *controller, const QString &fileName)
{
    Panel panel(controller);
    QElapsedTimer timer;
    timer.start();
    panel.table->showAsNCCode(fileName, QStringLiteral("N,G,X,Y,Z,I,J,F,S,T,M"));
    return timer.nsecsElapsed();
}

// Scrolled to row and painted.
void scrollPainted(TableWidget *table, int row)
{
    table->verticalScrollBar()->setValue(row);
    QApplication::processEvents(); // the registrations' first values
    table->viewport()->repaint();
}

// One scroll step down and back at row, new rows made, registered and painted each way.
qint64 scrollStep(TableWidget *table, int row)
{
    scrollPainted(table, row);
    QElapsedTimer timer;
    timer.start();
    scrollPainted(table, row + 1);
    scrollPainted(table, row);
    return timer.nsecsElapsed() / 2;
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", qgetenv("QT_QPA_PLATFORM").isEmpty() ? QByteArray("offscreen") : qgetenv("QT_QPA_PLATFORM"));
    QApplication app(argc, argv);
    const int rounds = argc > 1 ? std::max(1, atoi(argv[1])) : 5;
    const int lines = argc > 2 ? std::max(1, atoi(argv[2])) : 100000;
    const int steps = argc > 3 ? std::max(1, atoi(argv[3])) : 200;
    out() << "Qt " << qVersion() << ", " << rounds << " rounds, best of each\n";

    SimulatedController controller;
    QTemporaryDir dir;
    const QString program = dir.filePath(QStringLiteral("program.nc"));
    writeProgram(program, lines);
    out() << "program: " << lines << " lines, " << QFile(program).size() / 1024 << " KiB\n";
    Best load, baseline;
    int words = 0;
    for (int round = 0; round < rounds; ++round) {
        baseline.add(readAndSplit(program, &words));
        load.add(loadProgram(&controller, program));
    }
    out() << "read and split " << lines << " lines (" << words << " parts): " << baseline.ns / 1e6 << " ms\n";
    out() << "showAsNCCode " << lines << " lines: " << load.ns / 1e6 << " ms\n";
    out() << "ratio NC program load / readLine and split: " << double(load.ns) / double(baseline.ns)
          << " (target <= 3)\n";

    const int near = 100 / 16;
    const int far = 50000 / 16;
    Best firstJump;
    for (int round = 0; round < rounds; ++round) {
        Panel fresh(&controller);
        fresh.table->showAsCNCBit(1, 0, 0, 200000, 1);
        QApplication::processEvents();
        QElapsedTimer timer;
        timer.start();
        scrollPainted(fresh.table, far);
        firstJump.add(timer.nsecsElapsed());
    }
    Panel monitor(&controller);
    monitor.table->showAsCNCBit(1, 0, 0, 200000, 1);
    QApplication::processEvents();
    Best nearStep, farStep;
    for (int round = 0; round < rounds; ++round) {
        for (int i = 0; i < steps; ++i) {
            nearStep.add(scrollStep(monitor.table, near));
            farStep.add(scrollStep(monitor.table, far));
        }
    }
    out() << "bit monitor scroll step at bit 100: " << nearStep.ns / 1e3 << " us, at bit 50000: " << farStep.ns / 1e3
          << " us\n";
    out() << "ratio bit monitor scroll step at bit 50000 / at bit 100 (until painted): " << double(farStep.ns) / double(nearStep.ns)
          << " (target <= 1.2)\n";
    out() << "ratio bit monitor first jump from the top to bit 50000 (until painted): " << firstJump.ns / 1e6
          << " ms (target <= 20 ms; " << double(firstJump.ns) / double(nearStep.ns) << " x a scroll step at bit 100)\n";

    // The operator's messages about files not read whole, counted instead of waiting in a box.
    int told = 0;
    OperatorMessage::setSink([&told](OperatorMessage::Kind, QWidget *, const QString &, const QString &) { ++told; });
    const QString huge = dir.filePath(QStringLiteral("huge.nc"));
    {
        QFile file(huge);
        file.open(QIODevice::WriteOnly);
        const QByteArray block = QByteArray("N10 G01 X12.5 Y-3 F1200 (A COMMENT)\n").repeated(1 << 15);
        for (qint64 written = 0; written < (qint64(1) << 30); written += block.size())
            file.write(block);
    }
    {
        Panel panel(&controller);
        const qint64 before = residentKiB();
        QElapsedTimer timer;
        timer.start();
        panel.table->showAsNCCode(huge, QStringLiteral("N,G,X,Y,Z,I,J,F,S,T,M"));
        out() << "showAsNCCode of a 1 GiB program: " << timer.elapsed() << " ms, +" << (residentKiB() - before) / 1024
              << " MiB, " << panel.table->rowCount() << " rows shown\n";
    }
    QFile::remove(huge);
    const QString rows = dir.filePath(QStringLiteral("rows.txt"));
    {
        QFile file(rows);
        file.open(QIODevice::WriteOnly);
        for (int i = 0; i < 1000000; ++i)
            file.write(QByteArray("Parameter ") + QByteArray::number(i) + "\t" + QByteArray::number(i % 977) + "\tmm\tx\ty\n");
    }
    {
        Panel panel(&controller);
        panel.table->setColumnCount(5);
        const qint64 before = residentKiB();
        QElapsedTimer timer;
        timer.start();
        panel.table->loadFormFile(rows);
        out() << "loadFormFile of a 1,000,000-line file into 5 columns: " << timer.elapsed() << " ms, +"
              << (residentKiB() - before) / 1024 << " MiB, " << panel.table->rowCount() << " rows\n";
    }
    out() << told << " messages for the operator\n";
    out().flush();
    return 0;
}
