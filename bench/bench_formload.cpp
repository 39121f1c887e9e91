// A form of 500 of the library's widgets (every kind, in turn) loaded through the panel's form
// loader and shown, against a form of 500 push buttons; then the same for each kind alone, so that
// a miss shows where the time goes.
// Usage: bench_formload [widgets] [rounds] [kind]  (a kind's class name: that kind alone)
#include "formloader.h"

#include <QApplication>
#include <QBuffer>
#include <QElapsedTimer>
#include <QTextStream>
#include <QWidget>

#include <algorithm>

namespace {

struct Kind
{
    const char *className;
    QSize size;
    const char *extra; // properties or children that make it the usual instance
    const char *stockClass; // the stock Qt widget nearest to it, made alike
    const char *stockExtra;
};

// The kinds of a panel, with what the widget box gives them.
const char *const Button = "<property name=\"text\"><string>OK</string></property>";
const char *const Page = "<widget class=\"QWidget\" name=\"p%1\"><attribute name=\"title\"><string>tab_1</string>"
                         "</attribute></widget><widget class=\"QWidget\" name=\"q%1\"><attribute name=\"title\">"
                         "<string>tab_2</string></attribute></widget>";
const char *const TenButtons = "<layout class=\"QHBoxLayout\" name=\"l%1\">"
                               "<item><widget class=\"QPushButton\" name=\"a%1\"/></item><item><widget class=\"QPushButton\" name=\"b%1\"/></item>"
                               "<item><widget class=\"QPushButton\" name=\"c%1\"/></item><item><widget class=\"QPushButton\" name=\"d%1\"/></item>"
                               "<item><widget class=\"QPushButton\" name=\"e%1\"/></item><item><widget class=\"QPushButton\" name=\"f%1\"/></item>"
                               "<item><widget class=\"QPushButton\" name=\"g%1\"/></item><item><widget class=\"QPushButton\" name=\"h%1\"/></item>"
                               "<item><widget class=\"QPushButton\" name=\"i%1\"/></item><item><widget class=\"QPushButton\" name=\"j%1\"/></item>"
                               "</layout>";
const char *const Table = "<property name=\"rowCount\"><number>4</number></property>"
                          "<property name=\"columnCount\"><number>3</number></property>";
const char *const Panel = "<widget class=\"%2\" name=\"panel%1\"><property name=\"geometry\"><rect><x>10</x><y>10</y>"
                          "<width>100</width><height>50</height></rect></property></widget>";

// The kinds of a panel, with what the widget box gives them, and their stock counterparts.
const Kind Kinds[] = {
    {"BitButton", {100, 30}, "<property name=\"text\"><string>OFF</string></property>", "QPushButton", Button},
    {"FunctionButton", {100, 30}, "<property name=\"text\"><string>F</string></property>", "QPushButton", Button},
    {"PictureButton", {100, 30}, "<property name=\"text\"><string>P</string></property>", "QPushButton", Button},
    {"ButtonGroup", {460, 60}, "", "QWidget", TenButtons},
    {"TableWidget", {320, 200}, "", "QTableWidget", Table},
    {"TabWidget", {150, 150}, "", "QTabWidget", Page},
    {"DynamicImage", {60, 60}, "", "QLabel", ""},
    {"GridSplitter", {300, 300}, "", "QSplitter", ""},
    {"MdiArea", {200, 200}, Panel, "QMdiArea", ""},
};

QByteArray form(const QList<const Kind *> &kinds, int count, bool stock = false)
{
    QByteArray xml = "<ui version=\"4.0\"><class>Bench</class><widget class=\"QWidget\" name=\"Bench\">"
                     "<property name=\"geometry\"><rect><x>0</x><y>0</y><width>1600</width><height>1200</height>"
                     "</rect></property>";
    for (int i = 0; i < count; ++i) {
        const Kind *k = kinds.at(i % kinds.size());
        const QString className = QLatin1String(stock ? k->stockClass : k->className);
        const QString extra = QString::fromLatin1(stock ? k->stockExtra : k->extra)
                                  .replace(QLatin1String("%2"), QLatin1String(stock ? "QWidget" : "SubWindow"))
                                  .replace(QLatin1String("%1"), QString::number(i));
        xml += QStringLiteral("<widget class=\"%1\" name=\"w%2\"><property name=\"geometry\"><rect><x>%3</x><y>%4</y>"
                              "<width>%5</width><height>%6</height></rect></property>%7</widget>")
                   .arg(className)
                   .arg(i)
                   .arg((i % 20) * 60)
                   .arg((i / 20) * 40)
                   .arg(k->size.width())
                   .arg(k->size.height())
                   .arg(extra)
                   .toUtf8();
    }
    return xml + "</widget></ui>";
}

struct Timing
{
    qint64 load = 0;
    qint64 show = 0;
    qint64 total() const { return load + show; }
};

// Best of rounds: the form read and made, then shown and painted once.
Timing measure(const QByteArray &xml, int rounds)
{
    Timing best{-1, -1};
    for (int round = 0; round < rounds; ++round) {
        FormLoader loader;
        QBuffer buffer;
        buffer.setData(xml);
        buffer.open(QIODevice::ReadOnly);
        QElapsedTimer timer;
        timer.start();
        std::unique_ptr<QWidget> root(loader.load(&buffer));
        const qint64 load = timer.nsecsElapsed();
        if (!root)
            qFatal("form not loaded: %s", qPrintable(loader.errorString()));
        timer.restart();
        root->show();
        QCoreApplication::processEvents();
        (void)root->grab();
        const qint64 show = timer.nsecsElapsed();
        if (best.load < 0 || load + show < best.total())
            best = {load, show};
    }
    return best;
}

} // namespace

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    const int count = argc > 1 ? std::max(1, atoi(argv[1])) : 500;
    const int rounds = argc > 2 ? std::max(1, atoi(argv[2])) : 5;
    QTextStream out(stdout);
    const QByteArray only = argc > 3 ? QByteArray(argv[3]) : QByteArray();
    static const Kind button{"QPushButton", {100, 30}, Button, "QPushButton", Button};
    const Timing stock = measure(form({&button}, count), rounds);
    QList<const Kind *> all;
    for (const Kind &k : Kinds)
        all << &k;
    if (!only.isEmpty())
        all.erase(std::remove_if(all.begin(), all.end(), [&](const Kind *k) { return only != k->className; }), all.end());
    if (all.isEmpty())
        qFatal("no kind %s", only.constData());
    const Timing mixed = measure(form(all, count), rounds);
    const auto ms = [](qint64 ns) { return QString::number(ns / 1e6, 'f', 1); };
    out << count << " widgets, best of " << rounds << " rounds (load + show)\n";
    out << "push buttons: " << ms(stock.load) << " + " << ms(stock.show) << " ms\n";
    out << "every kind in turn: " << ms(mixed.load) << " + " << ms(mixed.show) << " ms\n";
    const Timing mixedStock = measure(form(all, count, true), rounds);
    out << "their stock counterparts in turn: " << ms(mixedStock.load) << " + " << ms(mixedStock.show) << " ms\n";
    out << "ratio mixed form / push buttons: " << double(mixed.total()) / double(stock.total())
        << " (target <= 1.3)\n";
    out << "ratio mixed form / stock counterparts: " << double(mixed.total()) / double(mixedStock.total()) << "\n";
    out << "by kind (" << count << " of one kind / push buttons, / its stock counterpart):\n";
    for (const Kind *kind : std::as_const(all)) {
        const Kind &k = *kind;
        const Timing one = measure(form({&k}, count), std::max(1, rounds / 2));
        const Timing counterpart = measure(form({&k}, count, true), std::max(1, rounds / 2));
        out << "  ratio " << k.className << ": " << double(one.total()) / double(stock.total()) << ", / "
            << k.stockClass << ": " << double(one.total()) / double(counterpart.total()) << " (" << ms(one.load)
            << " + " << ms(one.show) << " ms against " << ms(counterpart.load) << " + " << ms(counterpart.show)
            << " ms)\n";
    }
    return 0;
}
