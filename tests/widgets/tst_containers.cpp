// The grid splitter: counts and their limits, lines spread evenly or at stored positions (and stored
// lists a form gets wrong), line and cell geometry, drags in Designer within their limits, the same
// width and height, count changes that keep the cells and what is on them, the border style sheet,
// the background, what the cells' controls are given, and the lines as painted.
// The tab widget at run time: tab counts and the lists that follow them, authority per tab, tabs a
// controller word makes present, the current tab, moves and the renumbered pages, languages from
// records and from the language texts, its style sheet, the pane and selected-tab colours on screen,
// and lists a form gives in the wrong length.
// The MDI area and its panels: names and the cascade of new panels, the active panel from the form,
// auto hide at run time (not in Designer), hiding and showing by name, the panels' show, hide and
// timeout signals, the drag strips and their moves in Designer, and what the panels' controls are given.
#include "advsplitter.h"
#include "cascadeplacement.h"
#include "controlprobe.h"
#include "fakedesignerhost.h"
#include "gridsplitter.h"
#include "mdiarea.h"
#include "movehandler.h"
#include "norvointerface_z3.h"
#include "recordingqeltapp.h"
#include "subwindow.h"
#include "tabwidget.h"
#include "textinfocodec.h"

#include "textrecord.h"

#include <QDialog>
#include <QTabBar>
#include <QtTest>

namespace {

// A container on a shown form, built (first polish); with a designer host when designing. before runs
// first, as a loaded form sets properties and brings children before the form shows.
template <class W>
struct Form
{
    explicit Form(bool designing = false, const std::function<void(W *)> &before = nullptr, QSize size = QSize(300, 300))
    {
        if (designing)
            host = std::make_unique<FakeDesignerHost>(&dialog);
        widget = new W(&dialog);
        dialog.resize(size + QSize(20, 20));
        widget->setGeometry(QRect(QPoint(0, 0), size)); // a grid's one-pixel box leaves it 298 square from (1, 1)
        if (before)
            before(widget);
        dialog.show();
        if (!QTest::qWaitForWindowExposed(&dialog))
            qFatal("form not shown");
    }

    std::unique_ptr<FakeDesignerHost> host;
    QDialog dialog;
    W *widget = nullptr;
};
const QSize Wide(400, 300);

// Drags a grid line with the mouse by dx, dy.
void dragLine(AdvSplitter *line, int dx, int dy)
{
    const QPoint start = line->rect().center();
    QTest::mousePress(line, Qt::LeftButton, Qt::NoModifier, start);
    QMouseEvent move(QEvent::MouseMove, start + QPoint(dx, dy), line->mapToGlobal(start + QPoint(dx, dy)),
                     Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(line, &move);
    // The line moved under the pointer; the release comes where the pointer is now.
    QTest::mouseRelease(line, Qt::LeftButton, Qt::NoModifier, line->mapFromGlobal(line->mapToGlobal(start) + QPoint(dx, dy)));
}

QStringList positions(const GridSplitter *grid, Qt::Orientation orientation)
{
    QStringList texts;
    for (int i = 0; AdvSplitter *line = grid->line(orientation, i); ++i)
        texts << QString::number(line->position(), 'g', 6);
    return texts;
}

// Panels as a form brings them: children made before the first show.
SubWindow *panel(MdiArea *area, const char *name, const QRect &geometry)
{
    auto *panel = new SubWindow(area);
    panel->setObjectName(QLatin1String(name));
    panel->setGeometry(geometry);
    return panel;
}

QStringList shown(const MdiArea *area)
{
    QStringList names;
    for (SubWindow *panel : area->findChildren<SubWindow *>()) {
        if (panel->isVisible())
            names << panel->objectName();
    }
    names.sort(); // raising a panel changes the child order
    return names;
}

// What a tab widget shows: the bar's texts (a disabled tab marked "!"), the pages' tags in their order,
// the tab texts, colours and thresholds as stored, and the current tab in the bar and the stack with
// its page's tag.
QStringList look(TabWidget *tabs)
{
    QStringList bar, pages;
    for (int i = 0; i < tabs->tabBar()->count(); ++i)
        bar << tabs->tabBar()->tabText(i) + (tabs->tabBar()->isTabEnabled(i) ? "" : "!");
    for (int i = 0; i < tabs->stackedWidget()->count(); ++i)
        pages << tabs->stackedWidget()->widget(i)->statusTip();
    QWidget *page = tabs->stackedWidget()->currentWidget();
    return {bar.join(QLatin1Char(' ')), pages.join(QLatin1Char(' ')), tabs->tabTexts().join(QLatin1Char(' ')),
            tabs->tabTextColors().join(QLatin1Char(' ')), tabs->operationalAuthoritys().join(QLatin1Char(' ')),
            QStringLiteral("current %1/%2 %3%4, %5 texts").arg(tabs->tabBar()->currentIndex()).arg(tabs->stackedWidget()->currentIndex())
                .arg(page ? page->statusTip() : "none", page && page->isVisible() ? "" : " hidden").arg(tabs->multiTextList().size())};
}

// The look of n tabs as made, the given one current.
QStringList fresh(int n, int current = 0)
{
    QStringList tags;
    for (int i = 1; i <= n; ++i)
        tags << QStringLiteral("tab_%1").arg(i);
    const QString all = tags.join(QLatin1Char(' '));
    return {all, all, all, QStringLiteral("#000000 ").repeated(n).trimmed(), QStringLiteral("0 ").repeated(n).trimmed(),
            QStringLiteral("current %1/%1 tab_%2, %3 texts").arg(current).arg(current + 1).arg(n * 10)};
}

using TabAction = std::function<QStringList(TabWidget *)>; // what it returns is checked after the look

} // namespace
Q_DECLARE_METATYPE(TabAction)

class TestContainers : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { NORVOInterface_Z3::initialization()->resetToDefaults(); }

    void gridCounts_data()
    {
        QTest::addColumn<bool>("built"); QTest::addColumn<int>("columns"); QTest::addColumn<int>("expected");
        QTest::newRow("0 ignored") << true << 0 << 4;
        QTest::newRow("101 ignored") << true << 101 << 4;
        QTest::newRow("100 taken") << true << 100 << 100;
        QTest::newRow("before the build: stored") << false << 6 << 6;
        QTest::newRow("before the build: -1 ignored") << false << -1 << 4;
    }
    void gridCounts()
    {
        QFETCH(bool, built); QFETCH(int, columns); QFETCH(int, expected);
        Form<GridSplitter> f(false, [&](GridSplitter *g) {
            if (!built)
                g->setColumnCount(columns);
        });
        if (built)
            f.widget->setColumnCount(columns);
        QCOMPARE(f.widget->columnCount(), expected);
        QCOMPARE(positions(f.widget, Qt::Horizontal).size(), expected - 1);
        QVERIFY(f.widget->cell(2, expected - 1));
    }

    void storedPositions_data()
    {
        QTest::addColumn<QStringList>("stored"); QTest::addColumn<QStringList>("expected");
        QTest::addColumn<bool>("warned");
        QTest::newRow("none: even") << QStringList() << QStringList{"0.25", "0.5", "0.75"} << false;
        QTest::newRow("stored") << QStringList{"0.1", "0.333333", "0.9"} << QStringList{"0.1", "0.333333", "0.9"} << false;
        QTest::newRow("too few") << QStringList{"0.1", "0.2"} << QStringList{"0.25", "0.5", "0.75"} << true;
        QTest::newRow("not a number") << QStringList{"0.1", "half", "0.9"} << QStringList{"0.25", "0.5", "0.75"} << true;
        QTest::newRow("past the edge") << QStringList{"0.1", "0.5", "1.5"} << QStringList{"0.25", "0.5", "0.75"} << true;
        QTest::newRow("out of order") << QStringList{"0.6", "0.5", "0.9"} << QStringList{"0.25", "0.5", "0.75"} << true;
    }
    void storedPositions()
    {
        QFETCH(QStringList, stored); QFETCH(QStringList, expected); QFETCH(bool, warned);
        if (warned)
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("\"lineHPos\" is malformed")));
        Form<GridSplitter> f(false, [&](GridSplitter *g) { g->setLineHPos(stored); });
        QCOMPARE(f.widget->lineHPos(), expected);
        QCOMPARE(f.widget->lineVPos(), (QStringList{"0.333333", "0.666667"}));
    }

    // Lines are handles two pixels wider than the pen, centred on their position; a cell shares a
    // pixel column or row with each line beside it; the last cells reach the frame.
    void geometry_data()
    {
        QTest::addColumn<int>("lineWidth"); QTest::addColumn<int>("spacing");
        QTest::addColumn<QList<QRect>>("expected"); // the first vertical and horizontal lines, the top left and bottom right cells
        QTest::newRow("pen 1") << 1 << 0 << QList<QRect>{{75, 1, 3, 298}, {1, 99, 298, 3}, {QPoint(1, 1), QPoint(75, 99)},
                                                         {QPoint(226, 201), QPoint(298, 298)}};
        QTest::newRow("pen 4, spacing 5") << 4 << 5 << QList<QRect>{{75, 6, 6, 288}, {6, 99, 288, 6}, {QPoint(6, 6), QPoint(75, 99)},
                                                                    {QPoint(224, 200), QPoint(293, 293)}};
    }
    void geometry()
    {
        QFETCH(int, lineWidth); QFETCH(int, spacing);
        Form<GridSplitter> f(false, [&](GridSplitter *g) {
            g->setGridLineWidth(lineWidth);
            g->setSpacing(spacing);
        });
        AdvSplitter *handle = f.widget->line(Qt::Vertical, 0);
        QTEST((QList<QRect>{f.widget->line(Qt::Horizontal, 0)->geometry(), handle->geometry(), f.widget->cell(0, 0)->geometry(),
                            f.widget->cell(2, 3)->geometry()}), "expected");
        // Scaled with the widget.
        f.widget->resize(600, 300);
        QVERIFY(qAbs(f.widget->line(Qt::Horizontal, 1)->geometry().center().x() - 300) <= 1);
        // At run time a line lets the mouse through to the cells and does not move.
        QVERIFY(handle->testAttribute(Qt::WA_TransparentForMouseEvents));
        const QRect before = handle->geometry();
        dragLine(handle, 0, 40);
        QCOMPARE(handle->geometry(), before);
    }

    void drag_data()
    {
        QTest::addColumn<int>("line"); // between columns
        QTest::addColumn<int>("dx"); QTest::addColumn<int>("spacing"); QTest::addColumn<int>("expectedLeft");
        QTest::newRow("free") << 1 << -20 << 16 << 129;
        QTest::newRow("stops before the next line") << 1 << 200 << 16 << 224 - 16 - 3; // next at x 224
        QTest::newRow("stops before the previous line") << 1 << -200 << 16 << 77 + 16 + 1 - 1; // previous ends at x 77
        QTest::newRow("stops before the left edge") << 0 << -200 << 16 << 1 + 16;
        QTest::newRow("stops before the right edge") << 2 << 200 << 16 << 1 + 298 - 16 - 3;
        QTest::newRow("closer with less spacing") << 1 << 200 << 4 << 224 - 4 - 3;
        // Drags ending within a handle width of the limit (line 1 starts at x 149, line 2 at 224).
        QTest::newRow("a pixel short of the next line's limit") << 1 << 55 << 16 << 224 - 16 - 3 - 1;
        QTest::newRow("within a handle width past the next line's limit") << 1 << 57 << 16 << 224 - 16 - 3;
        QTest::newRow("within a handle width past the previous line's limit") << 1 << -57 << 16 << 77 + 16;
        QTest::newRow("within a handle width past the right edge's limit") << 2 << 57 << 16 << 1 + 298 - 16 - 3;
    }
    void drag()
    {
        QFETCH(int, line); QFETCH(int, dx); QFETCH(int, spacing); QFETCH(int, expectedLeft);
        Form<GridSplitter> f(true, [&](GridSplitter *g) { g->setSplittersSpacing(spacing); });
        AdvSplitter *handle = f.widget->line(Qt::Horizontal, line);
        QCOMPARE(handle->cursor().shape(), Qt::SplitHCursor);
        f.host->log.clear();
        dragLine(handle, dx, 0);
        QCOMPARE(handle->x(), expectedLeft);
        QCOMPARE(handle->position(), expectedLeft / 298.0); // the leading edge plus half the handle, in the area
        QCOMPARE(f.widget->lineHPos().at(line), QString::number(expectedLeft / 298.0, 'g', 6)); // stored short
        // The cells on both sides follow; the grid is selected and the form modified.
        QCOMPARE(QList<int>({f.widget->cell(1, line)->geometry().right(), f.widget->cell(1, line + 1)->geometry().left()}),
                 QList<int>({handle->x(), handle->geometry().right()}));
        QVERIFY(f.host->log.contains(QStringLiteral("markDirty")) && f.host->isSelected(&f.dialog, f.widget));
    }

    // Each step: these lines, the other direction's (kept), whether the first of these moves and its
    // cursor (0 an arrow, 11 and 12 the split cursors).
    void sameWidthAndHeight_data()
    {
        QTest::addColumn<Qt::Orientation>("lines"); QTest::addColumn<QStringList>("expected");
        QTest::newRow("same width") << Qt::Horizontal << QStringList{"0.25 0.5 0.75 | 0.1 0.2 | 0 0", "0.25 0.5 0.75 | 0.1 0.2 | 1 12",
                                                                    "0.352349 0.5 0.75 | 0.1 0.2 | 1 12", "0.5 | 0.1 0.2 | 0 0"};
        QTest::newRow("same height") << Qt::Vertical << QStringList{"0.333333 0.666667 | 0.1 0.2 0.3 | 0 0", "0.333333 0.666667 | 0.1 0.2 0.3 | 1 11",
                                                                   "0.432886 0.666667 | 0.1 0.2 0.3 | 1 11", "0.5 | 0.1 0.2 0.3 | 0 0"};
    }
    void sameWidthAndHeight()
    {
        QFETCH(Qt::Orientation, lines);
        const bool columns = lines == Qt::Horizontal;
        Form<GridSplitter> f(true, [&](GridSplitter *g) {
            g->setLineHPos({"0.1", "0.2", "0.3"});
            g->setLineVPos({"0.1", "0.2"});
        });
        const auto setSame = [&](bool on) { columns ? f.widget->setSameWidth(on) : f.widget->setSameHeight(on); };
        AdvSplitter *handle = f.widget->line(lines, 0);
        QStringList seen;
        const auto step = [&] {
            seen << positions(f.widget, lines).join(QLatin1Char(' ')) + " | " + positions(f.widget, columns ? Qt::Vertical : Qt::Horizontal).join(QLatin1Char(' '))
                        + QStringLiteral(" | %1 %2").arg(handle->isMovable()).arg(handle->cursor().shape());
        };
        setSame(true);
        dragLine(handle, 30, 30); // refused
        step();
        setSame(false); // movable, where they were
        step();
        dragLine(handle, 30, 30);
        step();
        // A count change keeps them even while the option is on.
        setSame(true);
        columns ? f.widget->setColumnCount(2) : f.widget->setRowCount(2);
        step();
        QTEST(seen, "expected");
    }

    // Shrinking keeps the remaining lines where they were and hides the cells it gives up; growing
    // spreads the lines evenly and takes the same cells back; every cell once, a cell the form brings
    // (a child with its tag) among them. The controls on that cell are given the application and the
    // language. (That such cells are not made again, the Designer reload and screenshots show.)
    void countChangesKeepCells()
    {
        ControlProbe *probe = nullptr;
        Form<GridSplitter> f(false, [&](GridSplitter *g) {
            g->setLineHPos({"0.1", "0.2", "0.3"});
            auto *loaded = new QWidget(g);
            loaded->setStatusTip(QStringLiteral("cell0102"));
            probe = new ControlProbe(loaded);
        });
        int app = 0;
        f.widget->setQeltAppAndFormPtr(&app, &f.dialog);
        f.widget->updateLanguage(3);
        QCOMPARE(probe->app, static_cast<void *>(&app));
        QCOMPARE(probe->language, 3);
        QWidget *corner = f.widget->cell(2, 3);
        f.widget->setColumnCount(3);
        QCOMPARE(f.widget->lineHPos(), (QStringList{"0.1", "0.2"}));
        QVERIFY(corner->isHidden());
        f.widget->setColumnCount(4);
        f.widget->setRowCount(1);
        f.widget->setRowCount(5);
        QCOMPARE(f.widget->lineHPos(), (QStringList{"0.25", "0.5", "0.75"}));
        QCOMPARE(f.widget->cell(2, 3), corner);
        QStringList tags, expected;
        for (QWidget *child : f.widget->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly)) {
            if (child->isVisible() && child->statusTip().startsWith(QLatin1String("cell")))
                tags << child->statusTip();
        }
        for (int cell = 0; cell < 20; ++cell)
            expected << QStringLiteral("cell%1%2").arg(cell / 4, 2, 10, QLatin1Char('0')).arg(cell % 4, 2, 10, QLatin1Char('0'));
        tags.sort();
        QCOMPARE(tags, expected);
    }

    void painted_data()
    {
        QTest::addColumn<Qt::PenStyle>("style"); QTest::addColumn<bool>("drawn");
        QTest::newRow("solid") << Qt::SolidLine << true;
        QTest::newRow("no pen") << Qt::NoPen << false;
    }
    void painted()
    {
        QFETCH(Qt::PenStyle, style); QFETCH(bool, drawn);
        Form<GridSplitter> f(true, [&](GridSplitter *g) {
            g->setGridLineColor(Qt::red);
            g->setGridLineStyle(style);
            g->setBackgroundColor(Qt::yellow);
        });
        const QImage image = f.widget->grab().toImage();
        const QRect line = f.widget->line(Qt::Horizontal, 0)->geometry();
        QCOMPARE(image.pixelColor(line.center().x(), 40), drawn ? QColor(Qt::red) : QColor(Qt::yellow));
        QCOMPARE(image.pixelColor(line.center().x() + 10, 40), QColor(Qt::yellow));
        // A background set in Designer is an undoable change; loading sets no sheet of its own.
        QVERIFY(!f.host->log.contains(QStringLiteral("setSheetProperty")));
        f.widget->setBackgroundColor(Qt::green);
        QCOMPARE(f.host->changes.last().name, QStringLiteral("autoFillBackground"));
        QTRY_COMPARE(f.widget->grab().toImage().pixelColor(40, 40), QColor(Qt::green));
        // A plain frame in a colour other than black gets a border style sheet; a frame change in the
        // property editor puts the sheet right.
        f.widget->setStyleSheet(QString());
        f.widget->setBorderColor(Qt::black); // the colour it has
        QCOMPARE(f.widget->styleSheet(), QString());
        f.widget->setBorderColor(QColor(10, 20, 30));
        QCOMPARE(f.widget->styleSheet(), QStringLiteral("GridSplitter{ border: 1px solid rgb(10, 20, 30);}"));
        f.widget->setBorderColor(Qt::red);
        f.host->setPropertyEditorObject(f.widget);
        f.widget->setFrameShadow(QFrame::Sunken);
        emit f.host->propertyChanged(QStringLiteral("frameShadow"), QVariant());
        QTRY_VERIFY(f.widget->styleSheet().isEmpty());
        f.widget->setBorderColor(Qt::blue); // not a plain frame: no sheet
        QVERIFY(f.widget->styleSheet().isEmpty());
        f.widget->setBorderColor(Qt::red);
        f.widget->setFrameShadow(QFrame::Plain);
        emit f.host->propertyChanged(QStringLiteral("frameShadow"), QVariant());
        QTRY_COMPARE(f.widget->styleSheet(), QStringLiteral("GridSplitter{ border: 1px solid rgb(255, 0, 0);}"));
    }


    // Tab widgets of a count, set before the build, then changed: each compared with its whole look.
    void tabs_data()
    {
        QTest::addColumn<int>("count"); QTest::addColumn<TabAction>("before"); QTest::addColumn<TabAction>("action");
        QTest::addColumn<QStringList>("expected");
        const auto counts = [](QList<int> counts) {
            return [counts](TabWidget *tabs) {
                for (int n : counts)
                    tabs->setTabsCount(n);
                return QStringList();
            };
        };
        QTest::newRow("below 2 ignored") << 2 << TabAction() << TabAction(counts({1, 0, -4})) << fresh(2);
        QTest::newRow("past the limit ignored") << 2 << TabAction() << TabAction(counts({101})) << fresh(2);
        QTest::newRow("grow") << 2 << TabAction() << TabAction(counts({4})) << fresh(4);
        QTest::newRow("grow then shrink") << 2 << TabAction() << TabAction(counts({5, 3})) << fresh(3);
        QTest::newRow("shrink then grow again") << 2 << TabAction() << TabAction(counts({5, 2, 3})) << fresh(3);

        // Thresholds at an operator's level; they follow the pages when a tab moves.
        const auto level = [](QStringList thresholds, int level) {
            return [thresholds, level](TabWidget *tabs) {
                tabs->setOperationalAuthoritys(thresholds);
                tabs->updateAuthority(level);
                tabs->tabBar()->moveTab(1, 0);
                tabs->tabMoved(1, 0);
                return QStringList();
            };
        };
        const auto moved = [](const char *bar, const char *thresholds, int current = 1) { // the current tab's page renumbered
            return QStringList{bar, "tab_1 tab_2", "tab_2 tab_1", "#000000 #000000", thresholds,
                               QStringLiteral("current %1/%1 tab_%2, 20 texts").arg(current).arg(current + 1)};
        };
        QTest::newRow("level 7") << 2 << TabAction() << TabAction(level({"0", "5"}, 7)) << moved("tab_2! tab_1", "5 0");
        QTest::newRow("level 4") << 2 << TabAction() << TabAction(level({"3", "5"}, 4)) << moved("tab_2 tab_1!", "5 3", 0);
        QTest::newRow("level 100 ignored") << 2 << TabAction() << TabAction(level({"0", "5"}, 100)) << moved("tab_2 tab_1", "5 0");
        QTest::newRow("not numbers: always") << 2 << TabAction() << TabAction(level({"x", ""}, 9)) << moved("tab_2 tab_1", " x");

        const auto current = [](int index) {
            return [index](TabWidget *tabs) {
                tabs->setCurrentIndex(index);
                return QStringList();
            };
        };
        QTest::newRow("current kept for the build") << 3 << TabAction(current(1)) << TabAction() << fresh(3, 1);
        QTest::newRow("current out of range before the build") << 3 << TabAction(current(7)) << TabAction(current(-1)) << fresh(3);
        QTest::newRow("current set after") << 3 << TabAction() << TabAction(current(2)) << fresh(3, 2);
        QTest::newRow("current out of range after") << 3 << TabAction() << TabAction(current(3)) << fresh(3);

        // A move renumbers the pages; the current page stays current; texts, colours and thresholds go
        // with their pages, and so do the controls on them, which the application reaches.
        QTest::newRow("move") << 3 << TabAction() << TabAction([](TabWidget *tabs) {
            auto *onThird = new ControlProbe(tabs->findTab(QStringLiteral("tab_3")));
            auto *deeper = new ControlProbe(new QWidget(tabs->findTab(QStringLiteral("tab_1"))));
            tabs->setTabTextColors({"#000000", "#ff0000", "#00ff00"});
            tabs->setOperationalAuthoritys({"0", "2", "3"});
            tabs->setCurrentIndex(1);
            tabs->tabBar()->moveTab(2, 0);
            tabs->tabMoved(2, 0);
            RecordingQeltApp app;
            tabs->setQeltAppAndFormPtr(&app, tabs->window());
            return QStringList{onThird->parentWidget()->statusTip(), onThird->parentWidget()->objectName(),
                               tabs->multiTextList().mid(0, 10).join(QLatin1Char(' ')), // the moved tab's texts
                               QStringLiteral("reached %1 %2").arg(onThird->app != nullptr).arg(deeper->app != nullptr)};
        }) << QStringList{"tab_3 tab_1 tab_2", "tab_1 tab_2 tab_3", "tab_3 tab_1 tab_2", "#00ff00 #000000 #ff0000", "3 0 2",
                          "current 2/2 tab_3, 30 texts", "tab_1", "tab_1", QStringLiteral("tab_3 ").repeated(10).trimmed(), "reached 1 0"};

        // Lists a form gives in the wrong length are made whole; pages with tags past them or none
        // are read within them; an unreadable text record changes nothing.
        QTest::newRow("lists of the wrong length") << 3 << TabAction([](TabWidget *tabs) {
            tabs->setTabTextColors({"#ff0000"});
            tabs->setOperationalAuthoritys({"1", "2", "3", "4", "5"});
            tabs->setTabTexts({"One"});
            return QStringList();
        }) << TabAction([](TabWidget *tabs) {
            const QString colours = tabs->tabTextColors().join(QLatin1Char(' '));
            const QString thresholds = tabs->operationalAuthoritys().join(QLatin1Char(' '));
            tabs->findTab(QStringLiteral("tab_3"))->setStatusTip(QStringLiteral("tab_99"));
            tabs->stackedWidget()->widget(1)->setStatusTip(QStringLiteral("page"));
            tabs->updateAuthority(5);
            const bool lastEnabled = tabs->tabBar()->isTabEnabled(2);
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("textInfoBuffer")));
            tabs->SetTextInfoBuffer("zz");
            tabs->setCurrentTabOperationalAuthority(4); // too high for level 5: the bar leaves that tab
            return QStringList{colours, thresholds, QString::number(lastEnabled)};
        }) << QStringList{"One! tab_2 tab_3", "tab_1 page tab_99", "One tab_2 tab_3", "#000000 #000000 #000000", "4 0 0",
                          "current 1/1 page, 30 texts", "#000000 #000000 #000000", "0 0 0", "1"};

        // The stack keeps its page when asked for one it does not hold or an index out of range.
        QTest::newRow("foreign page") << 3 << TabAction(current(1)) << TabAction([](TabWidget *tabs) {
            QWidget other;
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression(
                QStringLiteral("^StackedWidget::setCurrentWidget: Widget 0x[0-9a-f]+ not contained in stack$")));
            tabs->stackedWidget()->setCurrentWidget(&other);
            tabs->stackedWidget()->setCurrentIndex(5);
            return QStringList();
        }) << fresh(3, 1);

        // The pane and the selected tab in their colours on screen; a colour set again leaves a sheet alone.
        QTest::newRow("pane and selected tab colours") << 2 << TabAction([](TabWidget *tabs) {
            tabs->setBackgroundColor(QColor(0, 0, 255));
            tabs->setSelectedTabColor(QColor(255, 0, 0));
            return QStringList();
        }) << TabAction([](TabWidget *tabs) {
            const QImage image = tabs->grab().toImage();
            const QRect tab = tabs->tabBar()->tabRect(0).translated(tabs->tabBar()->pos());
            QStringList seen{image.pixelColor(tab.center().x(), tab.top() + 3).name(), image.pixelColor(tabs->stackedWidget()->geometry().center()).name()};
            tabs->setStyleSheet(QString());
            tabs->setBackgroundColor(QColor(0, 0, 255));
            return seen << tabs->styleSheet();
        }) << fresh(2) + QStringList{"#ff0000", "#0000ff", ""};

        // Languages from text records (their font taken) or from ten language texts per tab; the bar
        // in each language, then the translations handed out and back per tab.
        const auto languages = [](bool records) {
            return [records](TabWidget *tabs) {
                NORVOInterface_Z3::initialization()->setSystemLanguages({"Sans", "Sans"});
                if (records) {
                    tabs->SetTextInfoBuffer(TextInfoCodec::encodeSlots({{textRecord({"Axes", "Achsen"}, -1, {QFont(), QFont(QStringLiteral("Sans"), 17)})},
                                                                        {textRecord({"Spindle", "Spindel"})}}));
                } else {
                    tabs->setMultiTextList(QString("Axes Achsen" + QString(" Axes").repeated(8) + " Spindle Spindel" + QString(" Spindle").repeated(8)).split(' '));
                }
                return QStringList();
            };
        };
        const auto translated = [](TabWidget *tabs) {
            QStringList seen;
            for (int language : {0, 1}) {
                tabs->updateLanguage(language);
                seen << look(tabs).first();
            }
            QList<QList<TextData>> texts;
            tabs->getPluginNameAndTransText(texts);
            seen << QString::number(tabs->font().pointSize() == 17) << QString::number(texts.size()) << texts.at(1).first().texts;
            QTest::ignoreMessage(QtDebugMsg, "TabWidget::setPluginTransText transText.size()=1 i_end=1");
            QList<QStringList> translated{{"Axes", "Achsen!"}};
            tabs->setPluginTransText(translated);
            QList<QList<TextData>> stored;
            TextInfoCodec::decodeSlots(tabs->textInfoBuffer(), &stored, {100, 1, 1 << 20});
            return seen << QString::number(stored.size());
        };
        const QStringList after{"#000000 #000000", "0 0", "current 0/0 tab_1, 20 texts", "Axes Spindle", "Achsen Spindel"};
        QTest::newRow("languages from records") << 2 << TabAction(languages(true)) << TabAction(translated)
                                                << QStringList{"Achsen! Spindel", "tab_1 tab_2", "Achsen Spindel"} + after + QStringList{"1", "2", "Spindle", "Spindel", "2"};
        QTest::newRow("languages from the language texts") << 2 << TabAction(languages(false)) << TabAction(translated)
                                                           << QStringList{"Achsen! tab_2", "tab_1 tab_2", "tab_1 tab_2"} + after + QStringList{"0", "2", "Spindle", "Spindel", "2"};
    }
    void tabs()
    {
        QFETCH(int, count); QFETCH(TabAction, before); QFETCH(TabAction, action); QFETCH(QStringList, expected);
        Form<TabWidget> f(false, [&](TabWidget *t) {
            t->setTabsCount(count);
            if (before)
                before(t);
        }, Wide);
        const QStringList seen = action ? action(f.widget) : QStringList();
        QCOMPARE(look(f.widget) + seen, expected);
    }

    // Tabs a controller word makes present, none before the first word. The current tab stays when it
    // is still there, else the first; the operator's choice outlasts the same word delivered again;
    // authority reaches new tabs.
    void controllerDrivenTabs_data()
    {
        QTest::addColumn<int>("count"); QTest::addColumn<int>("value");
        QTest::addColumn<QStringList>("expected"); // tabs before the word, tabs and pages after it, current tab, then after a choice
        QTest::newRow("5: tabs 1 and 3") << 3 << 5 << QStringList{"0", "tab_1 tab_3", "tab_1 tab_3", "0", "1"};
        QTest::newRow("0: none") << 3 << 0 << QStringList{"0", "", "", "0", "0"};
        QTest::newRow("-1: all") << 3 << -1 << QStringList{"0", "tab_1 tab_2 tab_3", "tab_1 tab_2 tab_3", "2", "1"};
        QTest::newRow("past 32 tabs always") << 34 << 1 << QStringList{"0", "tab_1 tab_33 tab_34", "tab_1 tab_33 tab_34", "2", "1"};
    }
    void controllerDrivenTabs()
    {
        QFETCH(int, count); QFETCH(int, value); QFETCH(QStringList, expected);
        RecordingQeltApp app;
        app.memory().setWord(0, 0, 0, 77, value);
        Form<TabWidget> f(false, [&](TabWidget *t) {
            t->window()->setProperty("QeltApp", norvo_v0::QeltApp::toVariant(&app));
            t->setTabsCount(count);
            t->setDataClass(TabWidget::User);
            t->setAddress(77);
            t->setOperationalAuthoritys(QString(QStringLiteral("0 ").repeated(count) + "9").split(' '));
        }, Wide);
        // Registered at the first polish.
        QCOMPARE(app.registrations().size(), 1);
        QCOMPARE(app.registrations().first().arguments(), (QVariantList{0, 0, 0, 0, 77, -1, 0, 1, 10, 10, 0, 0, false}));
        QStringList seen{QString::number(f.widget->tabBar()->count())};
        f.widget->updateAuthority(5);
        f.widget->setCurrentIndex(2);
        app.deliver(f.widget, 0, value);
        seen << look(f.widget).mid(0, 2) << QString::number(f.widget->currentIndex());
        f.widget->setCurrentIndex(1);
        app.deliver(f.widget, 0, value);
        QCOMPARE(seen << QString::number(f.widget->currentIndex()), expected);
    }

    void cascade_data()
    {
        QTest::addColumn<QSize>("area"); QTest::addColumn<QList<QRect>>("expected");
        QTest::newRow("room for all") << QSize(400, 300)
                                      << QList<QRect>{{10, 10, 100, 50}, {20, 20, 100, 50}, {30, 30, 100, 50}};
        QTest::newRow("120 wide: back at the third")
            << QSize(120, 300) << QList<QRect>{{10, 10, 100, 50}, {20, 20, 100, 50}, {10, 10, 100, 50}, {0, 0, 100, 50}};
        QTest::newRow("down to the bottom and back")
            << QSize(400, 75) << QList<QRect>{{10, 10, 100, 50}, {20, 20, 100, 50}, {10, 10, 100, 50}};
    }
    void cascade()
    {
        QFETCH(QSize, area); QFETCH(QList<QRect>, expected);
        Form<MdiArea> f(false, nullptr, area);
        QList<QRect> placed;
        QStringList expectedNames;
        for (int i = 0; i < expected.size(); ++i) {
            SubWindow *panel = f.widget->addSubWindow();
            placed << panel->geometry();
            QVERIFY(panel->isVisible() && f.widget->activePanel() == panel);
            QVERIFY(!panel->handle(MoveHandler::Left)); // drag strips are for Designer only
            expectedNames << QStringLiteral("subWindow_%1").arg(i + 1);
        }
        QCOMPARE(placed, expected);
        QCOMPARE(f.widget->getSubwindows(), expectedNames);
        QCOMPARE(f.widget->activeSubWindow(), expectedNames.last());
        QCOMPARE(shown(f.widget).size(), expected.size()); // the earlier ones stay shown
        f.widget->activePanel()->handlerMove(nullptr, QPoint(5, 5));
        QCOMPARE(f.widget->activePanel()->geometry(), expected.last());
        // Where no panel fits, placement bounces without end.
        CascadePlacement placement;
        for (int i = 0; i < 50; ++i)
            QVERIFY(qAbs(placement.next(QRect(0, 0, 50, 20)).x()) <= 20);
    }

    // The active panel from the form; with auto hide at run time only it is shown, and a panel shown
    // later takes its place. In Designer all stay.
    void activeFromTheForm_data()
    {
        QTest::addColumn<bool>("autoHide"); QTest::addColumn<bool>("designing"); QTest::addColumn<QString>("active");
        QTest::addColumn<QStringList>("shown");
        QTest::addColumn<QStringList>("shownLater"); // after panelC is shown
        const QStringList all{"panelA", "panelB", "panelC"};
        QTest::newRow("all shown") << false << false << "panelB" << all << all;
        QTest::newRow("auto hide") << true << false << "panelB" << QStringList{"panelB"} << QStringList{"panelC"};
        QTest::newRow("auto hide, unknown active") << true << false << "nothing" << QStringList() << QStringList{"panelC"};
        QTest::newRow("auto hide in Designer") << true << true << "panelB" << all << all;
    }
    void activeFromTheForm()
    {
        QFETCH(bool, autoHide); QFETCH(bool, designing); QFETCH(QString, active); QFETCH(QStringList, shownLater);
        ControlProbe *probe = nullptr;
        SubWindow *c = nullptr;
        Form<MdiArea> f(designing, [&](MdiArea *area) {
            area->setActiveSubWindow(active); // the form sets the name before the panels exist
            area->setAutoHide(autoHide);
            probe = new ControlProbe(panel(area, "panelA", QRect(0, 0, 100, 100)));
            panel(area, "panelB", QRect(20, 20, 100, 100));
            c = panel(area, "panelC", QRect(40, 40, 100, 100));
        }, Wide);
        int app = 0;
        f.widget->setQeltAppAndFormPtr(&app, &f.dialog); // the panels' controls, hidden or not
        QCOMPARE(probe->app, static_cast<void *>(&app));
        QCOMPARE(f.widget->getSubwindows(), (QStringList{"panelA", "panelB", "panelC"}));
        QTEST(shown(f.widget), "shown");
        QCOMPARE(f.widget->activeSubWindow(), active);
        if (f.widget->activePanel()) // raised above the later panels
            QCOMPARE(f.widget->childAt(50, 50), f.widget->activePanel());
        c->hide();
        c->show();
        QCOMPARE(shown(f.widget), shownLater);
        QCOMPARE(f.widget->activeSubWindow(), shownLater.size() == 1 ? QStringLiteral("panelC") : active);
    }

    void hideAndShowByName()
    {
        Form<MdiArea> f(false, [](MdiArea *area) {
            area->setActiveSubWindow(QStringLiteral("panelA"));
            panel(area, "panelA", QRect(0, 0, 100, 100));
            panel(area, "panelB", QRect(20, 20, 100, 100));
        }, Wide);
        MdiArea *area = f.widget;
        // What is hidden, shown and active after each step.
        const auto state = [area] {
            return area->hideSubwindows().join(QLatin1Char(' ')) + " | " + shown(area).join(QLatin1Char(' ')) + " | "
                   + (area->activePanel() ? area->activePanel()->objectName() : QStringLiteral("none"));
        };
        area->setSubWindowVisible(QStringLiteral("nothing"), false);
        area->setSubWindowVisible(QStringLiteral("panelB"), false);
        area->setSubWindowVisible(QStringLiteral("panelB"), false);
        QStringList seen{state()};
        area->hideSubWindow();
        seen << state();
        area->hideSubWindow(); // nothing active: nothing happens
        seen << state();
        area->setSubWindowVisible(QStringLiteral("panelB"), true);
        seen << state();
        // Unknown names are ignored; a known one makes its panel the active one; deleting is for Designer only.
        area->setActiveSubWindow(QStringLiteral("nothing"));
        seen << state();
        area->setActiveSubWindow(QStringLiteral("panelB"));
        area->removeSubWindow(QStringLiteral("panelB"));
        QCOMPARE(seen << state() + ", " + area->getSubwindows().join(QLatin1Char(' ')),
                 (QStringList{"panelB | panelA | panelA", "panelB panelA |  | none", "panelB panelA |  | none", "panelA | panelB | none",
                              "panelA | panelB | none", "panelA | panelB | panelB, panelA panelB"}));
    }

    // A panel ticks while it is shown and something listens; an unconnected one runs no timer. The
    // first hide after the form shows the panel is silent.
    void timeout_data()
    {
        QTest::addColumn<bool>("connected"); QTest::addColumn<bool>("visible");
        QTest::newRow("connected, shown") << true << true;
        QTest::newRow("connected, hidden") << true << false;
        QTest::newRow("not connected") << false << true;
    }
    void timeout()
    {
        QFETCH(bool, connected); QFETCH(bool, visible);
        // Every timer event the panel gets, so that an unconnected panel is seen to run none.
        struct TimerCount : QObject
        {
            int count = 0;
            bool eventFilter(QObject *, QEvent *e) override
            {
                count += e->type() == QEvent::Timer;
                return false;
            }
        } timers;
        int ticks = 0;
        QStringList shownAndHidden;
        SubWindow *p = nullptr;
        Form<MdiArea> f(false, [&](MdiArea *area) {
            p = panel(area, "panel", QRect(0, 0, 100, 100));
            if (connected)
                connect(p, &SubWindow::subWindowTimeout, this, [&] { ++ticks; });
            p->installEventFilter(&timers);
            connect(p, &SubWindow::subWindowShow, this, [&] { shownAndHidden << "shown"; });
            connect(p, &SubWindow::subWindowHide, this, [&] { shownAndHidden << "hidden"; });
        }, Wide);
        if (!visible)
            p->hide();
        if (connected && visible)
            QTRY_VERIFY(ticks >= 2);
        else
            QTest::qWait(3 * SubWindow::TimeoutInterval);
        QCOMPARE(timers.count, ticks);
        p->hide();
        const int atHide = ticks;
        QTest::qWait(3 * SubWindow::TimeoutInterval);
        QCOMPARE(QList<int>({ticks, timers.count}), QList<int>({atHide, atHide}));
        p->show();
        p->hide();
        QCOMPARE(shownAndHidden, (QStringList{"shown", "shown", "hidden"}));
    }

    void stripsAndMovesInDesigner()
    {
        Form<MdiArea> f(true, nullptr, Wide);
        SubWindow *panel = f.widget->addSubWindow();
        QCOMPARE(panel->geometry(), QRect(10, 10, 100, 50));
        panel->setBackgroundColor(Qt::cyan);
        f.widget->setBackgroundColor(Qt::magenta);
        const QImage image = f.widget->grab().toImage();
        QCOMPARE(QList<QColor>({image.pixelColor(60, 40), image.pixelColor(300, 250)}), QList<QColor>({Qt::cyan, Qt::magenta}));
        const QList<QRect> strips{{QPoint(0, 5), QPoint(4, 44)}, {QPoint(95, 5), QPoint(99, 44)},
                                  {QPoint(0, 0), QPoint(99, 4)}, {QPoint(0, 45), QPoint(99, 49)}};
        for (int edge = MoveHandler::Left; edge <= MoveHandler::Bottom; ++edge) {
            QCOMPARE(panel->handle(edge)->geometry(), strips.at(edge));
            QVERIFY(panel->handle(edge)->isVisible());
            QCOMPARE(panel->handle(edge)->cursor().shape(), Qt::SizeAllCursor);
        }
        // A move, moves that would leave the area (refused), one right up to the corner.
        QList<QPoint> moved;
        for (const QPoint &delta : {QPoint(30, 20), QPoint(-41, 0), QPoint(0, -31), QPoint(261, 0), QPoint(0, 221), QPoint(260, 220)}) {
            panel->handlerMove(panel->handle(MoveHandler::Top), delta);
            moved << panel->pos();
        }
        QCOMPARE(moved, (QList<QPoint>{{40, 30}, {40, 30}, {40, 30}, {40, 30}, {40, 30}, {300, 250}}));
        // A second panel becomes the active one: the first loses its strips. Two selected in Designer
        // change nothing.
        SubWindow *second = f.widget->addSubWindow();
        QVERIFY(!panel->handle(MoveHandler::Left)->isVisible());
        QVERIFY(f.host->managed.contains(second));
        f.host->selectWidget(&f.dialog, panel, true);
        f.host->selectWidget(&f.dialog, second, true);
        emit f.host->selectionChanged(&f.dialog);
        QCOMPARE(f.widget->activePanel(), second);
        QVERIFY(second->handle(MoveHandler::Left)->isVisible());
        // Deleting releases the panel and what is on it, never deletes them; the next panel takes the
        // free name.
        auto *placed = new QWidget(second);
        f.host->manageWidget(&f.dialog, placed);
        f.widget->removeSubWindow(QStringLiteral("subWindow_2"));
        f.widget->removeSubWindow(QStringLiteral("nothing"));
        QCOMPARE(f.widget->getSubwindows(), QStringList{"subWindow_1"});
        QVERIFY(!f.host->managed.contains(second) && !f.host->managed.contains(placed));
        QVERIFY(second->isHidden() && !f.widget->activePanel());
        QCOMPARE(placed->parentWidget(), second);
        QCOMPARE(f.widget->addSubWindow()->objectName(), QStringLiteral("subWindow_2"));
    }
};

QTEST_MAIN(TestContainers)
#include "tst_containers.moc"
