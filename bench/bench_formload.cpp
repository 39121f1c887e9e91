// Loading and showing forms until painted, against what a Qt developer would put there instead, in the
// same run: each kind of the library alone (500 of it) against its stock counterpart, time and memory;
// a form mixing every kind against the same form of stock counterparts; 50 copies of the operator
// screen loaded and shown one after another against the same screens made of stock widgets.
// Memory is the resident growth of a fresh process (the bench runs itself once per figure).
// Usage: bench_formload [widgets] [rounds] [operator.ui] [only the rows whose name holds this]
#include "formloader.h"
#include "residentmemory.h"

#include <QApplication>
#include <QBuffer>
#include <QElapsedTimer>
#include <QFile>
#include <QHash>
#include <QMetaObject>
#include <QProcess>
#include <QTemporaryFile>
#include <QTextStream>
#include <QWidget>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include <malloc.h>

#include <algorithm>
#include <memory>

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
QString cells(int count)
{
    QString out;
    for (int i = 0; i < count; ++i)
        out += QStringLiteral("<widget class=\"QWidget\" name=\"cell%1_") + QString::number(i) + QStringLiteral("\"/>");
    return out;
}
// The grid's default 3 x 4 cells, as children of a stock splitter.
const QByteArray TwelveCells = cells(12).toLatin1();
const char *const Panel = "<widget class=\"%2\" name=\"panel%1\"><property name=\"geometry\"><rect><x>10</x><y>10</y>"
                          "<width>100</width><height>50</height></rect></property></widget>";

// The kinds of a panel, with what the widget box gives them, and their stock counterparts.
const Kind Kinds[] = {
    {"BitButton", {100, 30}, "<property name=\"text\"><string>OFF</string></property>", "QPushButton", Button},
    {"FunctionButton", {100, 30}, "<property name=\"text\"><string>F</string></property>", "QPushButton", Button},
    {"PictureButton", {100, 30}, "<property name=\"text\"><string>P</string></property>", "QPushButton", Button},
    {"KeypadButton", {100, 30}, "<property name=\"text\"><string>7</string></property>", "QPushButton", Button},
    {"ButtonGroup", {460, 60}, "", "QWidget", TenButtons},
    {"TableWidget", {320, 200}, "", "QTableWidget", Table},
    {"TabWidget", {150, 150}, "", "QTabWidget", Page},
    {"DynamicImage", {60, 60}, "", "QLabel", ""},
    {"GridSplitter", {300, 300}, "", "QSplitter", TwelveCells.constData()},
    {"MdiArea", {200, 200}, Panel, "QMdiArea", Panel},
};

// An image showing a still picture, against a label showing it (not in the mix: the widget box's
// image shows none).
const char *const Picture = "<property name=\"images\"><stringlist><string>" HMI_FORMS_DIR "/pictures/idle.png"
                            "</string></stringlist></property><property name=\"index\"><number>0</number></property>";
const char *const Pixmap = "<property name=\"pixmap\"><pixmap>" HMI_FORMS_DIR "/pictures/idle.png</pixmap></property>";
const Kind ShowingPicture{"DynamicImage", {60, 60}, Picture, "QLabel", Pixmap};

// The form of count widgets of kinds in turn; of their stock counterparts when stock, or of the
// stock counterpart of stockKind alone.
QByteArray form(const QList<const Kind *> &kinds, int count, bool allStock = false, const Kind *stockKind = nullptr)
{
    QByteArray xml = "<ui version=\"4.0\"><class>Bench</class><widget class=\"QWidget\" name=\"Bench\">"
                     "<property name=\"geometry\"><rect><x>0</x><y>0</y><width>1600</width><height>1200</height>"
                     "</rect></property>";
    for (int i = 0; i < count; ++i) {
        const Kind *k = kinds.at(i % kinds.size());
        const bool stock = allStock || k == stockKind;
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

// The same screen made of stock widgets: each of the library's classes (or those of kinds alone)
// becomes the stock class a Qt developer would use, and properties the stock class does not have are
// left out.
const QHash<QString, QString> StockClasses{
    {"BitButton", "QPushButton"},  {"FunctionButton", "QPushButton"}, {"PictureButton", "QPushButton"},
    {"KeypadButton", "QPushButton"}, {"ButtonGroup", "QWidget"},     {"DynamicImage", "QLabel"},
    {"GridSplitter", "QSplitter"}, {"TabWidget", "QTabWidget"},      {"TableWidget", "QTableWidget"},
    {"MdiArea", "QMdiArea"},       {"SubWindow", "QWidget"}};

const QMetaObject *stockMeta(const QString &className)
{
    static QHash<QString, const QMetaObject *> known;
    if (!known.contains(className)) {
        QUiLoader loader;
        std::unique_ptr<QWidget> w(loader.createWidget(className));
        known.insert(className, w ? w->metaObject() : nullptr);
    }
    return known.value(className);
}

QByteArray stockForm(const QByteArray &xml, const QStringList &kinds = {})
{
    QByteArray out;
    QXmlStreamReader r(xml);
    QXmlStreamWriter w(&out);
    QList<const QMetaObject *> open; // per open element: the widget's class, or null
    while (!r.atEnd()) {
        r.readNext();
        if (r.isStartElement() && r.name() == QLatin1String("customwidgets") && kinds.isEmpty()) {
            r.skipCurrentElement();
            continue;
        }
        if (r.isStartElement() && r.name() == QLatin1String("property") && !open.isEmpty() && open.last()
            && open.last()->indexOfProperty(r.attributes().value(QLatin1String("name")).toLatin1().constData()) < 0) {
            r.skipCurrentElement();
            continue;
        }
        if (r.isStartElement() && r.name() == QLatin1String("widget")) {
            QString className = r.attributes().value(QLatin1String("class")).toString();
            const bool kept = StockClasses.contains(className) && !kinds.isEmpty() && !kinds.contains(className);
            if (!kept)
                className = StockClasses.value(className, className);
            w.writeStartElement(QStringLiteral("widget"));
            w.writeAttribute(QStringLiteral("class"), className);
            w.writeAttribute(QStringLiteral("name"), r.attributes().value(QLatin1String("name")).toString());
            open << (kept ? nullptr : stockMeta(className));
            continue;
        }
        if (r.isStartElement())
            open << nullptr;
        else if (r.isEndElement())
            open.removeLast();
        w.writeCurrentToken(r);
    }
    return out;
}

struct Timing
{
    qint64 load = 0;
    qint64 show = 0;
    qint64 total() const { return load + show; }
};

// Not inlined: a profiler is pointed at these two, the timed parts.
Q_NEVER_INLINE QWidget *loadForm(const QByteArray &xml)
{
    FormLoader loader;
    QBuffer buffer;
    buffer.setData(xml);
    buffer.open(QIODevice::ReadOnly);
    QWidget *root = loader.load(&buffer);
    if (!root)
        qFatal("form not loaded: %s", qPrintable(loader.errorString()));
    return root;
}

Q_NEVER_INLINE void showPainted(QWidget *root)
{
    root->show();
    QCoreApplication::processEvents();
    (void)root->grab();
}

// Best of rounds: copies of the form read, made, shown and painted one after another, each
// staying in memory (the one shown before is hidden, as a panel switches screens).
Timing measure(const QByteArray &xml, int rounds, int copies = 1)
{
    Timing best{-1, -1};
    for (int round = 0; round < rounds; ++round) {
        std::vector<std::unique_ptr<QWidget>> screens;
        Timing t;
        QElapsedTimer timer;
        for (int copy = 0; copy < copies; ++copy) {
            timer.start();
            screens.emplace_back(loadForm(xml));
            t.load += timer.nsecsElapsed();
            timer.restart();
            if (copy > 0)
                screens.at(copy - 1)->hide();
            showPainted(screens.back().get());
            t.show += timer.nsecsElapsed();
        }
        if (best.load < 0 || t.total() < best.total())
            best = t;
    }
    return best;
}

// Run as a child: the resident growth in KiB of loading and showing copies of the form in the
// file, after one copy was made, shown and deleted (first use of fonts, styles and plugins) and the
// memory it freed returned to the system.
int residentChild(const QString &file, int copies)
{
    QFile f(file);
    if (!f.open(QIODevice::ReadOnly))
        return 1;
    const QByteArray xml = f.readAll();
    {
        std::unique_ptr<QWidget> warm(loadForm(xml));
        showPainted(warm.get());
    }
    QCoreApplication::processEvents();
    malloc_trim(0); // what the first copy freed goes back, instead of being counted as free room
    const qint64 before = residentKiB();
    std::vector<std::unique_ptr<QWidget>> screens;
    for (int copy = 0; copy < copies; ++copy) {
        screens.emplace_back(loadForm(xml));
        if (copy > 0)
            screens.at(copy - 1)->hide();
        showPainted(screens.back().get());
    }
    QTextStream(stdout) << residentKiB() - before << "\n";
    return 0;
}

qint64 residentGrowth(const QByteArray &xml, int copies = 1)
{
    QTemporaryFile file;
    if (!file.open() || file.write(xml) != xml.size())
        qFatal("cannot write the form");
    file.flush();
    QProcess child;
    child.start(QCoreApplication::applicationFilePath(),
                {QStringLiteral("--resident"), file.fileName(), QString::number(copies)});
    if (!child.waitForFinished(600000) || child.exitCode() != 0)
        qFatal("resident child failed");
    return child.readAllStandardOutput().trimmed().toLongLong();
}

struct Figures
{
    Timing time;
    qint64 memory = 0; // KiB
};

Figures figures(const QByteArray &xml, int rounds, int copies, qint64 emptyWindow)
{
    return {measure(xml, rounds, copies), residentGrowth(xml, copies) - emptyWindow};
}

QString ms(qint64 ns)
{
    return QString::number(ns / 1e6, 'f', 1);
}

// The memory figures leave out what the window alone costs (its backing store and the grabbed image,
// about 15 MiB for the 1600 x 1200 bench form): emptyWindow is the growth for an empty form.
void compare(QTextStream &out, const QString &what, const QByteArray &own, const QByteArray &stock, int rounds,
             int copies, double timeTarget, double memoryTarget, qint64 emptyWindow = 0)
{
    const Timing a = measure(own, rounds, copies);
    const Timing b = measure(stock, rounds, copies);
    const qint64 ma = residentGrowth(own, copies) - emptyWindow;
    const qint64 mb = residentGrowth(stock, copies) - emptyWindow;
    out << "  ratio " << what << " time: " << double(a.total()) / double(b.total()) << " (target <= " << timeTarget
        << "; " << ms(a.load) << " + " << ms(a.show) << " ms against " << ms(b.load) << " + " << ms(b.show)
        << " ms)\n";
    out << "  ratio " << what << " memory: " << double(std::max<qint64>(ma, 1)) / double(std::max<qint64>(mb, 1));
    if (memoryTarget > 0)
        out << " (target <= " << memoryTarget << ")";
    out << " (+" << ma << " KiB against +" << mb << " KiB)\n";
    out.flush();
}

// What each kind adds to a form over its stock counterpart: the form with that kind alone made stock
// against the form as it is; with the share of the whole extra over the all-stock form.
void breakdown(QTextStream &out, const QString &what, const QByteArray &own, const QByteArray &stock,
               const QList<std::pair<QString, QByteArray>> &oneKindStock, int rounds, int copies, qint64 emptyWindow)
{
    const Figures a = figures(own, rounds, copies, emptyWindow);
    const Figures b = figures(stock, rounds, copies, emptyWindow);
    const double extraTime = double(a.time.total() - b.time.total());
    const double extraMemory = double(a.memory - b.memory);
    out << "  " << what << ": " << ms(a.time.total()) << " ms, +" << a.memory << " KiB against " << ms(b.time.total())
        << " ms, +" << b.memory << " KiB; the extra by kind:\n";
    for (const auto &[kind, variant] : oneKindStock) {
        const Figures v = figures(variant, rounds, copies, emptyWindow);
        const qint64 time = a.time.total() - v.time.total();
        out << "    " << kind << ": " << ms(time) << " ms (" << qRound(100 * time / extraTime) << " %), +"
            << a.memory - v.memory << " KiB (" << qRound(100 * (a.memory - v.memory) / extraMemory) << " %); without it "
            << double(v.time.total()) / double(b.time.total()) << " x time, "
            << double(v.memory) / double(std::max<qint64>(b.memory, 1)) << " x memory\n";
        out.flush();
    }
}

} // namespace

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    const QStringList args = app.arguments();
    if (args.size() == 4 && args.at(1) == QLatin1String("--resident"))
        return residentChild(args.at(2), args.at(3).toInt());
    const int count = argc > 1 ? std::max(1, atoi(argv[1])) : 500;
    const int rounds = argc > 2 ? std::max(1, atoi(argv[2])) : 5;
    const QString operatorForm = argc > 3 ? QString::fromLocal8Bit(argv[3]) : QStringLiteral(HMI_OPERATOR_FORM);
    const QString only = argc > 4 ? QString::fromLocal8Bit(argv[4]) : QString();
    QTextStream out(stdout);
    out << count << " widgets, best of " << rounds << " rounds (load + show until painted; memory: resident growth)\n";
    QList<const Kind *> all;
    for (const Kind &k : Kinds)
        all << &k;
    measure(form(all, count), 1); // first use of fonts, glyphs and styles, counted for no kind
    measure(form(all, count, true), 1);
    const qint64 emptyWindow = residentGrowth(form({}, 0));
    out << "by kind (" << count << " of one kind against as many of its stock counterpart; memory beyond the empty"
        << " form's +" << emptyWindow << " KiB):\n";
    for (const Kind &k : Kinds) {
        if (!QLatin1String(k.className).contains(only))
            continue;
        const bool button = QByteArray(k.stockClass) == "QPushButton" || QByteArray(k.className) == "ButtonGroup";
        compare(out, QLatin1String(k.className) + QLatin1String(" / ") + QLatin1String(k.stockClass), form({&k}, count),
                form({&k}, count, true), std::max(1, rounds / 2), 1, 1.3, button ? 1.5 : 0, emptyWindow);
    }
    if (QLatin1String(ShowingPicture.className).contains(only)) {
        compare(out, QStringLiteral("DynamicImage showing a picture / QLabel showing it"), form({&ShowingPicture}, count),
                form({&ShowingPicture}, count, true), std::max(1, rounds / 2), 1, 1.3, 1.5, emptyWindow);
    }
    if (QStringLiteral("mixed").contains(only)) {
        out << "a form of " << count << " mixing every kind in turn:\n";
        compare(out, QStringLiteral("mixed form / stock counterparts"), form(all, count), form(all, count, true), rounds,
                1, 1.3, 0, emptyWindow);
        QList<std::pair<QString, QByteArray>> variants;
        for (const Kind &k : Kinds)
            variants.append({QLatin1String(k.className), form(all, count, false, &k)});
        breakdown(out, QStringLiteral("mixed form"), form(all, count), form(all, count, true), variants, rounds, 1,
                  emptyWindow);
    }
    if (!QStringLiteral("screens").contains(only))
        return 0;
    QFile screen(operatorForm);
    if (!screen.open(QIODevice::ReadOnly))
        qFatal("cannot read %s", qPrintable(operatorForm));
    const QByteArray ui = screen.readAll();
    out << "50 operator screens loaded and shown one after another:\n";
    compare(out, QStringLiteral("50 screens / stock counterparts"), ui, stockForm(ui), std::max(1, rounds / 2), 50,
            1.5, 0);
    QList<std::pair<QString, QByteArray>> variants;
    for (auto kind = StockClasses.cbegin(); kind != StockClasses.cend(); ++kind) {
        if (ui.contains("class=\"" + kind.key().toLatin1() + "\""))
            variants.append({kind.key(), stockForm(ui, {kind.key()})});
    }
    std::sort(variants.begin(), variants.end());
    breakdown(out, QStringLiteral("50 screens"), ui, stockForm(ui), variants, std::max(1, rounds / 2), 50, 0);
    return 0;
}
