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

// A grid splitter on a shown form, built (first polish); with a designer host when designing.
struct GridForm
{
    explicit GridForm(bool designing = false, const std::function<void(GridSplitter *)> &before = nullptr)
    {
        if (designing)
            host = std::make_unique<FakeDesignerHost>(&dialog);
        grid = new GridSplitter(&dialog);
        dialog.resize(320, 320);
        grid->setGeometry(0, 0, 300, 300); // a one-pixel box: the grid area is 298 square from (1, 1)
        if (before)
            before(grid);
        dialog.show();
        if (!QTest::qWaitForWindowExposed(&dialog))
            qFatal("form not shown");
    }
    QStringList cellTags() const
    {
        QStringList tags;
        for (int r = 0; r < grid->rowCount(); ++r)
            for (int c = 0; c < grid->columnCount(); ++c)
                tags << (grid->cell(r, c) ? grid->cell(r, c)->statusTip() : QString());
        return tags;
    }
    // Drags a line with the mouse by dx, dy.
    void drag(AdvSplitter *line, int dx, int dy)
    {
        const QPoint start = line->rect().center();
        QTest::mousePress(line, Qt::LeftButton, Qt::NoModifier, start);
        QMouseEvent move(QEvent::MouseMove, start + QPoint(dx, dy), line->mapToGlobal(start + QPoint(dx, dy)),
                         Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(line, &move);
        // The line moved under the pointer; the release comes where the pointer is now.
        QTest::mouseRelease(line, Qt::LeftButton, Qt::NoModifier, line->mapFromGlobal(line->mapToGlobal(start) + QPoint(dx, dy)));
    }

    QDialog dialog;
    std::unique_ptr<FakeDesignerHost> host;
    GridSplitter *grid = nullptr;
};

QStringList positions(const GridSplitter *grid, Qt::Orientation orientation)
{
    QStringList texts;
    for (int i = 0; AdvSplitter *line = grid->line(orientation, i); ++i)
        texts << QString::number(line->position(), 'g', 6);
    return texts;
}

// n copies of text (Qt 5's QStringList has no such constructor).
QStringList repeated(int n, const QString &text)
{
    QStringList list;
    for (int i = 0; i < n; ++i)
        list << text;
    return list;
}

// A tab widget on a shown form, built (first polish) with count tabs.
struct TabForm
{
    QDialog dialog;
    TabWidget *tabs = new TabWidget(&dialog);
    explicit TabForm(int count = 2, const std::function<void(TabWidget *)> &before = nullptr)
    {
        dialog.resize(400, 300);
        tabs->setGeometry(0, 0, 400, 300);
        tabs->setTabsCount(count);
        if (before)
            before(tabs);
        dialog.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    }
    QStringList barTexts() const
    {
        QStringList texts;
        for (int i = 0; i < tabs->tabBar()->count(); ++i)
            texts << tabs->tabBar()->tabText(i);
        return texts;
    }
    QStringList pageTags() const
    {
        QStringList tags;
        for (int i = 0; i < tabs->stackedWidget()->count(); ++i)
            tags << tabs->stackedWidget()->widget(i)->statusTip();
        return tags;
    }
};

struct MdiForm
{
    explicit MdiForm(bool designing = false, QSize size = QSize(400, 300))
    {
        if (designing)
            host = std::make_unique<FakeDesignerHost>(&dialog);
        area = new MdiArea(&dialog);
        dialog.resize(size + QSize(20, 20));
        area->setGeometry(QRect(QPoint(0, 0), size));
    }
    void show()
    {
        dialog.show();
        if (!QTest::qWaitForWindowExposed(&dialog))
            qFatal("form not shown");
    }
    // Panels as a form brings them: children made before the first show.
    SubWindow *loadPanel(const QString &name, const QRect &geometry)
    {
        auto *panel = new SubWindow(area);
        panel->setObjectName(name);
        panel->setGeometry(geometry);
        return panel;
    }
    QStringList shown() const
    {
        QStringList names;
        for (SubWindow *panel : area->findChildren<SubWindow *>()) {
            if (panel->isVisible())
                names << panel->objectName();
        }
        names.sort(); // raising a panel changes the child order
        return names;
    }

    std::unique_ptr<FakeDesignerHost> host;
    QDialog dialog;
    MdiArea *area = nullptr;
};

} // namespace

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
        GridForm f(false, [&](GridSplitter *g) {
            if (!built)
                g->setColumnCount(columns);
        });
        if (built)
            f.grid->setColumnCount(columns);
        QCOMPARE(f.grid->columnCount(), expected);
        QVERIFY(f.grid->line(Qt::Horizontal, expected - 2));
        QVERIFY(!f.grid->line(Qt::Horizontal, expected - 1));
        QVERIFY(f.grid->cell(2, expected - 1));
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
        GridForm f(false, [&](GridSplitter *g) { g->setLineHPos(stored); });
        QCOMPARE(f.grid->lineHPos(), expected);
        QCOMPARE(f.grid->lineVPos(), (QStringList{"0.333333", "0.666667"}));
    }

    // Lines are handles two pixels wider than the pen, centred on their position; a cell shares a
    // pixel column or row with each line beside it; the last cells reach the frame.
    void geometry_data()
    {
        QTest::addColumn<int>("lineWidth"); QTest::addColumn<int>("spacing"); QTest::addColumn<QRect>("firstVertical");
        QTest::addColumn<QRect>("firstHorizontal"); QTest::addColumn<QRect>("topLeftCell");
        QTest::addColumn<QRect>("bottomRightCell");
        QTest::newRow("pen 1") << 1 << 0 << QRect(75, 1, 3, 298) << QRect(1, 99, 298, 3)
                               << QRect(QPoint(1, 1), QPoint(75, 99)) << QRect(QPoint(226, 201), QPoint(298, 298));
        QTest::newRow("pen 4, spacing 5") << 4 << 5 << QRect(75, 6, 6, 288) << QRect(6, 99, 288, 6)
                                          << QRect(QPoint(6, 6), QPoint(75, 99)) << QRect(QPoint(224, 200), QPoint(293, 293));
    }
    void geometry()
    {
        QFETCH(int, lineWidth); QFETCH(int, spacing); QFETCH(QRect, firstVertical); QFETCH(QRect, firstHorizontal);
        QFETCH(QRect, topLeftCell); QFETCH(QRect, bottomRightCell);
        GridForm f(false, [&](GridSplitter *g) {
            g->setGridLineWidth(lineWidth);
            g->setSpacing(spacing);
        });
        QCOMPARE(f.grid->line(Qt::Horizontal, 0)->geometry(), firstVertical);
        QCOMPARE(f.grid->line(Qt::Vertical, 0)->geometry(), firstHorizontal);
        QCOMPARE(f.grid->cell(0, 0)->geometry(), topLeftCell);
        QCOMPARE(f.grid->cell(2, 3)->geometry(), bottomRightCell);
        // Scaled with the widget.
        f.grid->resize(600, 300);
        QVERIFY(qAbs(f.grid->line(Qt::Horizontal, 1)->geometry().center().x() - 300) <= 1);
        // At run time a line lets the mouse through to the cells and does not move.
        AdvSplitter *handle = f.grid->line(Qt::Vertical, 0);
        QVERIFY(handle->testAttribute(Qt::WA_TransparentForMouseEvents));
        const QRect before = handle->geometry();
        f.drag(handle, 0, 40);
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
        GridForm f(true, [&](GridSplitter *g) { g->setSplittersSpacing(spacing); });
        AdvSplitter *handle = f.grid->line(Qt::Horizontal, line);
        QCOMPARE(handle->cursor().shape(), Qt::SplitHCursor);
        f.host->log.clear();
        f.drag(handle, dx, 0);
        QCOMPARE(handle->x(), expectedLeft);
        QCOMPARE(handle->position(), expectedLeft / 298.0); // the leading edge plus half the handle, in the area
        // The cells on both sides follow; the grid is selected and the form modified.
        QCOMPARE(f.grid->cell(1, line)->geometry().right(), handle->x());
        QCOMPARE(f.grid->cell(1, line + 1)->geometry().left(), handle->geometry().right());
        QVERIFY(f.host->log.contains(QStringLiteral("markDirty")));
        QVERIFY(f.host->isSelected(&f.dialog, f.grid));
        QCOMPARE(f.grid->lineHPos().at(line), QString::number((expectedLeft) / 298.0, 'g', 6));
        QVERIFY(f.grid->lineHPos().at(line).size() <= 8);
    }

    void sameWidthAndHeight_data()
    {
        QTest::addColumn<Qt::Orientation>("lines");
        QTest::newRow("same width") << Qt::Horizontal;
        QTest::newRow("same height") << Qt::Vertical;
    }
    void sameWidthAndHeight()
    {
        QFETCH(Qt::Orientation, lines);
        const bool columns = lines == Qt::Horizontal;
        GridForm f(true, [&](GridSplitter *g) {
            g->setLineHPos({"0.1", "0.2", "0.3"});
            g->setLineVPos({"0.1", "0.2"});
        });
        const auto setSame = [&](bool on) { columns ? f.grid->setSameWidth(on) : f.grid->setSameHeight(on); };
        setSame(true);
        const QStringList even = columns ? QStringList{"0.25", "0.5", "0.75"} : QStringList{"0.333333", "0.666667"};
        QCOMPARE(positions(f.grid, lines), even);
        // The other direction keeps its lines.
        const QStringList kept = columns ? QStringList{"0.1", "0.2"} : QStringList{"0.1", "0.2", "0.3"};
        QCOMPARE(positions(f.grid, columns ? Qt::Vertical : Qt::Horizontal), kept);
        AdvSplitter *handle = f.grid->line(lines, 0);
        QVERIFY(!handle->isMovable());
        QCOMPARE(handle->cursor().shape(), Qt::ArrowCursor);
        f.drag(handle, 30, 30);
        QCOMPARE(positions(f.grid, lines), even);
        // Off again: movable, where they were.
        setSame(false);
        QVERIFY(handle->isMovable());
        QCOMPARE(positions(f.grid, lines), even);
        f.drag(handle, 30, 30);
        QVERIFY(positions(f.grid, lines) != even);
        // A count change keeps them even while the option is on.
        setSame(true);
        columns ? f.grid->setColumnCount(2) : f.grid->setRowCount(2);
        QCOMPARE(positions(f.grid, lines), QStringList{"0.5"});
    }

    void countChangesKeepCells()
    {
        GridForm f(false, [](GridSplitter *g) { g->setLineHPos({"0.1", "0.2", "0.3"}); });
        QWidget *corner = f.grid->cell(2, 3);
        auto *placed = new QWidget(corner);
        QCOMPARE(f.cellTags().size(), 12);
        // Shrinking keeps the remaining lines where they were and hides the cells it gives up.
        f.grid->setColumnCount(3);
        QCOMPARE(f.grid->lineHPos(), (QStringList{"0.1", "0.2"}));
        const QStringList threeColumns{"cell0000", "cell0001", "cell0002", "cell0100", "cell0101",
                                       "cell0102", "cell0200", "cell0201", "cell0202"};
        QCOMPARE(f.cellTags(), threeColumns);
        QVERIFY(corner->isHidden());
        // Growing spreads the lines evenly and takes the same cell back, with what is on it.
        f.grid->setColumnCount(4);
        QCOMPARE(f.grid->lineHPos(), (QStringList{"0.25", "0.5", "0.75"}));
        QCOMPARE(f.grid->cell(2, 3), corner);
        QCOMPARE(placed->parentWidget(), corner);
        QVERIFY(corner->isVisible());
        f.grid->setRowCount(1);
        f.grid->setRowCount(5);
        QCOMPARE(f.cellTags().size(), 20);
        QCOMPARE(f.grid->cell(2, 3), corner);
        // No cell twice.
        QStringList tags;
        for (QWidget *child : f.grid->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly)) {
            if (!child->statusTip().isEmpty())
                tags << child->statusTip();
        }
        QCOMPARE(tags.size(), int(QSet<QString>(tags.begin(), tags.end()).size()));
    }

    // Cells a form brings (children with their tags) are the grid's cells, not made again; their
    // controls are given the application and the language.
    void cellsFromTheForm()
    {
        QWidget *loaded = nullptr;
        ControlProbe *probe = nullptr;
        GridForm f(false, [&](GridSplitter *g) {
            g->setRowCount(2);
            g->setColumnCount(3);
            loaded = new QWidget(g);
            loaded->setObjectName(QStringLiteral("cell0102"));
            loaded->setStatusTip(QStringLiteral("cell0102"));
            probe = new ControlProbe(loaded);
        });
        QCOMPARE(f.grid->cell(1, 2), loaded);
        QCOMPARE(f.grid->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly).size(), 6 + 2 + 1);
        int app = 0;
        f.grid->setQeltAppAndFormPtr(&app, &f.dialog);
        QCOMPARE(probe->app, static_cast<void *>(&app));
        f.grid->updateLanguage(3);
        QCOMPARE(probe->language, 3);
    }

    // A plain frame in a colour other than black gets a border style sheet; in Designer a frame
    // change in the property editor puts the sheet right.
    void borderStyleSheet()
    {
        GridForm f(true);
        f.grid->setBorderColor(Qt::black); // the colour it has
        QCOMPARE(f.grid->styleSheet(), QString());
        f.grid->setBorderColor(QColor(10, 20, 30));
        QCOMPARE(f.grid->styleSheet(), QStringLiteral("GridSplitter{ border: 1px solid rgb(10, 20, 30);}"));
        f.grid->setBorderColor(Qt::red);
        f.host->setPropertyEditorObject(f.grid);
        f.grid->setFrameShadow(QFrame::Sunken);
        emit f.host->propertyChanged(QStringLiteral("frameShadow"), QVariant());
        QTRY_VERIFY(f.grid->styleSheet().isEmpty());
        f.grid->setBorderColor(Qt::blue); // not a plain frame: no sheet
        QVERIFY(f.grid->styleSheet().isEmpty());
        f.grid->setBorderColor(Qt::red);
        f.grid->setFrameShadow(QFrame::Plain);
        emit f.host->propertyChanged(QStringLiteral("frameShadow"), QVariant());
        QTRY_COMPARE(f.grid->styleSheet(), QStringLiteral("GridSplitter{ border: 1px solid rgb(255, 0, 0);}"));
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
        GridForm f(true, [&](GridSplitter *g) {
            g->setGridLineColor(Qt::red);
            g->setGridLineStyle(style);
            g->setBackgroundColor(Qt::yellow);
        });
        const QImage image = f.grid->grab().toImage();
        const QRect line = f.grid->line(Qt::Horizontal, 0)->geometry();
        QCOMPARE(image.pixelColor(line.center().x(), 40), drawn ? QColor(Qt::red) : QColor(Qt::yellow));
        QCOMPARE(image.pixelColor(line.center().x() + 10, 40), QColor(Qt::yellow));
        // A background set in Designer is an undoable change; loading sets no sheet of its own.
        QVERIFY(!f.host->log.contains(QStringLiteral("setSheetProperty")));
        f.grid->setBackgroundColor(Qt::green);
        QCOMPARE(f.host->changes.last().name, QStringLiteral("autoFillBackground"));
        QTRY_COMPARE(f.grid->grab().toImage().pixelColor(40, 40), QColor(Qt::green));
    }


    void tabCounts_data()
    {
        QTest::addColumn<QList<int>>("counts"); // set one after the other after the build
        QTest::addColumn<QStringList>("texts"); // and the pages' tags
        QTest::newRow("below 2 ignored") << QList<int>{1, 0, -4} << QStringList{"tab_1", "tab_2"};
        QTest::newRow("past the limit ignored") << QList<int>{101} << QStringList{"tab_1", "tab_2"};
        QTest::newRow("grow") << QList<int>{4} << QStringList{"tab_1", "tab_2", "tab_3", "tab_4"};
        QTest::newRow("grow then shrink") << QList<int>{5, 3} << QStringList{"tab_1", "tab_2", "tab_3"};
        QTest::newRow("shrink then grow again") << QList<int>{5, 2, 3} << QStringList{"tab_1", "tab_2", "tab_3"};
    }
    void tabCounts()
    {
        QFETCH(QList<int>, counts); QFETCH(QStringList, texts);
        TabForm f;
        for (int n : counts)
            f.tabs->setTabsCount(n);
        QCOMPARE(f.tabs->tabsCount(), int(texts.size()));
        QCOMPARE(f.barTexts(), texts);
        QCOMPARE(f.tabs->tabTexts(), texts);
        QCOMPARE(f.pageTags(), texts);
        QCOMPARE(f.tabs->tabTextColors().size(), texts.size());
        QCOMPARE(f.tabs->operationalAuthoritys().size(), texts.size());
        QCOMPARE(f.tabs->multiTextList().size(), texts.size() * 10);
        // Removed tabs' pages stay hidden children; a page comes back with its own widgets.
        for (int i = int(texts.size()); i < 5; ++i) {
            if (QWidget *page = f.tabs->findTab(QStringLiteral("tab_%1").arg(i + 1)))
                QVERIFY(page->isHidden());
        }
    }

    void authority_data()
    {
        QTest::addColumn<QStringList>("thresholds"); QTest::addColumn<int>("level");
        QTest::addColumn<QList<bool>>("enabled");
        QTest::newRow("level 7") << QStringList{"0", "5"} << 7 << QList<bool>{true, false};
        QTest::newRow("level 4") << QStringList{"3", "5"} << 4 << QList<bool>{false, true};
        QTest::newRow("level 100: ignored") << QStringList{"0", "5"} << 100 << QList<bool>{true, true};
        QTest::newRow("not numbers: always") << QStringList{"x", ""} << 9 << QList<bool>{true, true};
    }
    void authority()
    {
        QFETCH(QStringList, thresholds); QFETCH(int, level); QFETCH(QList<bool>, enabled);
        TabForm f;
        f.tabs->setOperationalAuthoritys(thresholds);
        f.tabs->updateAuthority(level);
        QCOMPARE((QList<bool>{f.tabs->tabBar()->isTabEnabled(0), f.tabs->tabBar()->isTabEnabled(1)}), enabled);
        // Thresholds follow the pages, not the positions.
        f.tabs->tabBar()->moveTab(1, 0);
        f.tabs->tabMoved(1, 0);
        QCOMPARE(f.tabs->operationalAuthoritys(), (QStringList{thresholds.at(1), thresholds.at(0)}));
        QCOMPARE(f.tabs->tabBar()->isTabEnabled(0), enabled.at(1));
    }

    void controllerDrivenTabs_data()
    {
        QTest::addColumn<int>("count"); QTest::addColumn<int>("value"); QTest::addColumn<QStringList>("tabs");
        QTest::newRow("5: tabs 1 and 3") << 3 << 5 << QStringList{"tab_1", "tab_3"};
        QTest::newRow("0: none") << 3 << 0 << QStringList{};
        QTest::newRow("-1: all") << 3 << -1 << QStringList{"tab_1", "tab_2", "tab_3"};
        QTest::newRow("past 32 tabs always") << 34 << 1 << QStringList{"tab_1", "tab_33", "tab_34"};
    }
    void controllerDrivenTabs()
    {
        QFETCH(int, count); QFETCH(int, value); QFETCH(QStringList, tabs);
        RecordingQeltApp app;
        app.memory().setWord(0, 0, 0, 77, value);
        QDialog dialog;
        dialog.setProperty("QeltApp", norvo_v0::QeltApp::toVariant(&app));
        auto *widget = new TabWidget(&dialog);
        widget->setTabsCount(count);
        widget->setDataClass(TabWidget::User);
        widget->setAddress(77);
        widget->setOperationalAuthoritys(repeated(count, QStringLiteral("0")) << QStringLiteral("9"));
        dialog.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dialog));
        // Registered at the first polish; no tab until the first word.
        QCOMPARE(app.registrations().size(), 1);
        QCOMPARE(app.registrations().first().arguments(),
                 (QVariantList{0, 0, 0, 0, 77, -1, 0, 1, 10, 10, 0, 0, false}));
        QCOMPARE(widget->tabBar()->count(), 0);
        widget->updateAuthority(5);
        widget->setCurrentIndex(2);
        QCOMPARE(app.deliver(widget, 0, value), 1);
        QStringList shown;
        for (int i = 0; i < widget->tabBar()->count(); ++i)
            shown << widget->tabBar()->tabText(i);
        QCOMPARE(shown, tabs);
        for (int i = 0; i < count; ++i) {
            const QString tag = QStringLiteral("tab_%1").arg(i + 1);
            if (!tabs.contains(tag))
                QVERIFY(!widget->findTab(tag) || widget->findTab(tag)->isHidden());
        }
        // The current tab stays when it is still there, else the first; authority reaches new tabs.
        QCOMPARE(widget->currentIndex(), tabs.size() > 2 ? 2 : 0);
        widget->setCurrentIndex(1); // the operator's choice outlasts the same word delivered again
        QCOMPARE(app.deliver(widget, 0, value), 1);
        QCOMPARE(widget->currentIndex(), tabs.size() > 1 ? 1 : 0);
        if (count == 3 && value == -1)
            QVERIFY(widget->tabBar()->isTabEnabled(2));
    }

    void currentIndex_data()
    {
        QTest::addColumn<int>("before"); // set before the build
        QTest::addColumn<int>("after");  // set after it
        QTest::addColumn<int>("current");
        QTest::newRow("kept for the build") << 1 << -5 << 1;
        QTest::newRow("out of range before the build") << 7 << -1 << 0;
        QTest::newRow("set after") << 0 << 2 << 2;
        QTest::newRow("out of range after") << 0 << 3 << 0;
    }
    void currentIndex()
    {
        QFETCH(int, before); QFETCH(int, after); QFETCH(int, current);
        TabForm f(3, [&](TabWidget *t) { t->setCurrentIndex(before); });
        QSignalSpy changed(f.tabs, &TabWidget::currentChanged);
        if (after >= -1)
            f.tabs->setCurrentIndex(after);
        QCOMPARE(f.tabs->tabBar()->currentIndex(), current);
        QCOMPARE(f.tabs->stackedWidget()->currentIndex(), current);
        QVERIFY(f.tabs->stackedWidget()->currentWidget()->isVisible());
        if (after != current && after >= 0 && after < 3)
            QCOMPARE(changed.count(), 1);
    }

    void movesRenumberPages()
    {
        TabForm f(3);
        auto *onThird = new ControlProbe(f.tabs->findTab(QStringLiteral("tab_3")));
        auto *deeper = new ControlProbe(new QWidget(f.tabs->findTab(QStringLiteral("tab_1"))));
        f.tabs->setTabTextColors({"#000000", "#ff0000", "#00ff00"});
        f.tabs->setOperationalAuthoritys({"0", "2", "3"});
        f.tabs->setCurrentIndex(1);
        f.tabs->tabBar()->moveTab(2, 0);
        f.tabs->tabMoved(2, 0);
        QCOMPARE(f.pageTags(), (QStringList{"tab_1", "tab_2", "tab_3"}));
        QCOMPARE(onThird->parentWidget()->statusTip(), QStringLiteral("tab_1"));
        QCOMPARE(onThird->parentWidget()->objectName(), QStringLiteral("tab_1"));
        QCOMPARE(f.tabs->tabTexts(), (QStringList{"tab_3", "tab_1", "tab_2"}));
        QCOMPARE(f.tabs->tabTextColors(), (QStringList{"#00ff00", "#000000", "#ff0000"}));
        QCOMPARE(f.tabs->operationalAuthoritys(), (QStringList{"3", "0", "2"}));
        QCOMPARE(f.tabs->multiTextList().mid(0, 10), repeated(10, QStringLiteral("tab_3")));
        QCOMPARE(f.tabs->currentIndex(), 2); // the same page stays current
        QCOMPARE(f.tabs->stackedWidget()->currentWidget()->statusTip(), QStringLiteral("tab_3"));
        RecordingQeltApp app;
        f.tabs->setQeltAppAndFormPtr(&app, &f.dialog);
        QCOMPARE(onThird->app, static_cast<void *>(&app));
        QCOMPARE(deeper->app, nullptr); // only the pages' own controls; containers pass it on
    }

    void languages_data()
    {
        QTest::addColumn<bool>("records");
        QTest::newRow("from records") << true;
        QTest::newRow("from the language texts") << false;
    }
    void languages()
    {
        QFETCH(bool, records);
        NORVOInterface_Z3::initialization()->setSystemLanguages({"Sans", "Sans"});
        QFont big(QStringLiteral("Sans"), 17);
        TabForm f(2, [&](TabWidget *t) {
            if (records) {
                t->SetTextInfoBuffer(TextInfoCodec::encodeSlots(
                    {{textRecord({"Axes", "Achsen"}, -1, {QFont(), big})}, {textRecord({"Spindle", "Spindel"})}}));
            } else { // ten texts per tab
                QStringList multi;
                for (const QStringList &texts : {QStringList{"Axes", "Achsen"}, QStringList{"Spindle", "Spindel"}})
                    multi << texts << repeated(8, texts.first());
                t->setMultiTextList(multi);
            }
        });
        f.tabs->updateLanguage(0);
        QCOMPARE(f.barTexts(), (QStringList{"Axes", "Spindle"}));
        f.tabs->updateLanguage(1);
        QCOMPARE(f.barTexts(), (QStringList{"Achsen", "Spindel"}));
        if (records) {
            QCOMPARE(f.tabs->font().pointSize(), 17);
            QCOMPARE(f.tabs->tabTexts(), (QStringList{"Achsen", "Spindel"}));
        }
        // Translations come back per tab.
        QList<QList<TextData>> texts;
        f.tabs->getPluginNameAndTransText(texts);
        QCOMPARE(texts.size(), 2);
        QCOMPARE(texts.at(1).first().texts, (QStringList{"Spindle", "Spindel"}));
        QList<QStringList> translated{{"Axes", "Achsen!"}};
        QTest::ignoreMessage(QtDebugMsg, "TabWidget::setPluginTransText transText.size()=1 i_end=1");
        f.tabs->setPluginTransText(translated);
        QCOMPARE(f.tabs->tabBar()->tabText(0), QStringLiteral("Achsen!"));
        QList<QList<TextData>> stored;
        QVERIFY(TextInfoCodec::decodeSlots(f.tabs->textInfoBuffer(), &stored, {100, 1, 1 << 20}));
        QCOMPARE(stored.size(), 2);
    }

    void paneAndSelectedTabColours()
    {
        TabForm f(2, [](TabWidget *t) {
            t->setBackgroundColor(QColor(0, 0, 255));
            t->setSelectedTabColor(QColor(255, 0, 0));
        });
        const QImage image = f.tabs->grab().toImage();
        const QRect tab = f.tabs->tabBar()->tabRect(0).translated(f.tabs->tabBar()->pos());
        QCOMPARE(image.pixelColor(tab.center().x(), tab.top() + 3), QColor(255, 0, 0));
        const QRect stack = f.tabs->stackedWidget()->geometry();
        QCOMPARE(image.pixelColor(stack.center()), QColor(0, 0, 255));
        // A colour set again leaves a sheet alone.
        f.tabs->setStyleSheet(QString());
        f.tabs->setBackgroundColor(QColor(0, 0, 255));
        QCOMPARE(f.tabs->styleSheet(), QString());
    }

    void foreignPageInTheStack()
    {
        StackedWidget stack;
        QWidget page;
        QWidget other;
        stack.insertWidget(0, &page);
        stack.setCurrentIndex(0);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(
            QStringLiteral("^StackedWidget::setCurrentWidget: Widget 0x[0-9a-f]+ not contained in stack$")));
        stack.setCurrentWidget(&other);
        QCOMPARE(stack.currentWidget(), &page);
        stack.setCurrentIndex(5);
        QCOMPARE(stack.currentIndex(), 0);
    }

    void listsOfTheWrongLength()
    {
        TabForm f(3, [](TabWidget *t) {
            t->setTabTextColors({"#ff0000"});
            t->setOperationalAuthoritys({"1", "2", "3", "4", "5"});
            t->setTabTexts({"One"});
        });
        QCOMPARE(f.tabs->tabTextColors(), repeated(3, QStringLiteral("#000000")));
        QCOMPARE(f.tabs->operationalAuthoritys(), repeated(3, QStringLiteral("0")));
        QCOMPARE(f.barTexts(), (QStringList{"One", "tab_2", "tab_3"}));
        // A page with a tag past the lists, and one without a tag, are read within them.
        f.tabs->findTab(QStringLiteral("tab_3"))->setStatusTip(QStringLiteral("tab_99"));
        f.tabs->stackedWidget()->widget(1)->setStatusTip(QStringLiteral("page"));
        f.tabs->updateAuthority(5);
        QVERIFY(f.tabs->tabBar()->isTabEnabled(2));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("textInfoBuffer")));
        f.tabs->SetTextInfoBuffer("zz");
        QCOMPARE(f.barTexts(), (QStringList{"One", "tab_2", "tab_3"}));
        f.tabs->setCurrentTabOperationalAuthority(4);
        QCOMPARE(f.tabs->operationalAuthoritys(), (QStringList{"4", "0", "0"}));
        // The operator's level 5 is too low for it now: the bar leaves that tab.
        QVERIFY(!f.tabs->tabBar()->isTabEnabled(0));
        QCOMPARE(f.tabs->currentIndex(), 1);
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
        MdiForm f(false, area);
        f.show();
        QStringList names;
        QStringList expectedNames;
        for (int i = 0; i < expected.size(); ++i) {
            SubWindow *panel = f.area->addSubWindow();
            QCOMPARE(panel->geometry(), expected.at(i));
            QVERIFY(panel->isVisible());
            QCOMPARE(f.area->activePanel(), panel);
            QVERIFY(!panel->handle(MoveHandler::Left)); // drag strips are for Designer only
            expectedNames << QStringLiteral("subWindow_%1").arg(i + 1);
        }
        QCOMPARE(f.area->getSubwindows(), expectedNames);
        QCOMPARE(f.area->activeSubWindow(), expectedNames.last());
        QCOMPARE(f.shown().size(), expected.size()); // the earlier ones stay shown
        f.area->activePanel()->handlerMove(nullptr, QPoint(5, 5));
        QCOMPARE(f.area->activePanel()->geometry(), expected.last());
    }

    void placementBouncesWithoutEnd()
    {
        CascadePlacement placement;
        const QRect tiny(0, 0, 50, 20); // no panel fits
        for (int i = 0; i < 50; ++i)
            QVERIFY(qAbs(placement.next(tiny).x()) <= 20);
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
        QFETCH(bool, autoHide); QFETCH(bool, designing); QFETCH(QString, active); QFETCH(QStringList, shown);
        QFETCH(QStringList, shownLater);
        MdiForm f(designing);
        f.area->setActiveSubWindow(active); // the form sets the name before the panels exist
        f.area->setAutoHide(autoHide);
        auto *probe = new ControlProbe(f.loadPanel(QStringLiteral("panelA"), QRect(0, 0, 100, 100)));
        f.loadPanel(QStringLiteral("panelB"), QRect(20, 20, 100, 100));
        SubWindow *c = f.loadPanel(QStringLiteral("panelC"), QRect(40, 40, 100, 100));
        f.show();
        int app = 0;
        f.area->setQeltAppAndFormPtr(&app, &f.dialog); // the panels' controls, hidden or not
        QCOMPARE(probe->app, static_cast<void *>(&app));
        QCOMPARE(f.area->getSubwindows(), (QStringList{"panelA", "panelB", "panelC"}));
        QCOMPARE(f.shown(), shown);
        QCOMPARE(f.area->activeSubWindow(), active);
        if (f.area->activePanel()) // raised above the later panels
            QCOMPARE(f.area->childAt(50, 50), f.area->activePanel());
        c->hide();
        c->show();
        QCOMPARE(f.shown(), shownLater);
        QCOMPARE(f.area->activeSubWindow(), shownLater.size() == 1 ? QStringLiteral("panelC") : active);
    }

    void hideAndShowByName()
    {
        MdiForm f;
        f.area->setActiveSubWindow(QStringLiteral("panelA"));
        f.loadPanel(QStringLiteral("panelA"), QRect(0, 0, 100, 100));
        f.loadPanel(QStringLiteral("panelB"), QRect(20, 20, 100, 100));
        f.show();
        f.area->setSubWindowVisible(QStringLiteral("nothing"), false);
        f.area->setSubWindowVisible(QStringLiteral("panelB"), false);
        f.area->setSubWindowVisible(QStringLiteral("panelB"), false);
        QCOMPARE(f.area->hideSubwindows(), QStringList{"panelB"});
        QCOMPARE(f.shown(), QStringList{"panelA"});
        f.area->hideSubWindow();
        QCOMPARE(f.area->hideSubwindows(), (QStringList{"panelB", "panelA"}));
        QVERIFY(!f.area->activePanel());
        QCOMPARE(f.shown(), QStringList());
        f.area->hideSubWindow(); // nothing active: nothing happens
        QCOMPARE(f.area->hideSubwindows(), (QStringList{"panelB", "panelA"}));
        f.area->setSubWindowVisible(QStringLiteral("panelB"), true);
        QCOMPARE(f.area->hideSubwindows(), QStringList{"panelA"});
        QCOMPARE(f.shown(), QStringList{"panelB"});
        // Unknown names are ignored; a known one makes its panel the active one.
        f.area->setActiveSubWindow(QStringLiteral("nothing"));
        QVERIFY(!f.area->activePanel());
        f.area->setActiveSubWindow(QStringLiteral("panelB"));
        QCOMPARE(f.area->activeSubWindow(), QStringLiteral("panelB"));
        // Deleting is for Designer only.
        f.area->removeSubWindow(QStringLiteral("panelB"));
        QCOMPARE(f.area->getSubwindows(), (QStringList{"panelA", "panelB"}));
    }

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
        MdiForm f;
        SubWindow *panel = f.loadPanel(QStringLiteral("panel"), QRect(0, 0, 100, 100));
        int ticks = 0;
        if (connected)
            connect(panel, &SubWindow::subWindowTimeout, this, [&] { ++ticks; });
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
        panel->installEventFilter(&timers);
        QSignalSpy shows(panel, &SubWindow::subWindowShow);
        QSignalSpy hides(panel, &SubWindow::subWindowHide);
        f.show();
        if (!visible)
            panel->hide();
        QElapsedTimer clock;
        clock.start();
        QTest::qWait(1050);
        const qint64 elapsed = clock.elapsed();
        if (connected && visible) {
            // One tick every 200 ms: as many as fit in the time waited, give or take a busy machine.
            QVERIFY2(ticks >= 3 && ticks <= elapsed / SubWindow::TimeoutInterval, qPrintable(QString::number(ticks)));
            panel->hide();
            const int atHide = ticks;
            QTest::qWait(450);
            QCOMPARE(ticks, atHide);
        } else {
            QCOMPARE(ticks, 0);
            QCOMPARE(timers.count, 0);
        }
        // The first hide after the form shows the panel is silent.
        if (panel->isVisible())
            panel->hide();
        panel->show();
        panel->hide();
        QCOMPARE((QList<int>{int(shows.count()), int(hides.count())}), (QList<int>{2, 1}));
    }

    void stripsAndMovesInDesigner()
    {
        MdiForm f(true);
        f.show();
        SubWindow *panel = f.area->addSubWindow();
        QCOMPARE(panel->geometry(), QRect(10, 10, 100, 50));
        const QList<QRect> strips{{QPoint(0, 5), QPoint(4, 44)}, {QPoint(95, 5), QPoint(99, 44)},
                                  {QPoint(0, 0), QPoint(99, 4)}, {QPoint(0, 45), QPoint(99, 49)}};
        for (int edge = MoveHandler::Left; edge <= MoveHandler::Bottom; ++edge) {
            QVERIFY(panel->handle(edge));
            QCOMPARE(panel->handle(edge)->geometry(), strips.at(edge));
            QVERIFY(panel->handle(edge)->isVisible());
            QCOMPARE(panel->handle(edge)->cursor().shape(), Qt::SizeAllCursor);
        }
        // A drag of the top strip by (30, 20).
        MoveHandler *top = panel->handle(MoveHandler::Top);
        f.host->log.clear();
        QTest::mousePress(top, Qt::LeftButton, Qt::NoModifier, QPoint(50, 2));
        QMouseEvent move(QEvent::MouseMove, QPoint(80, 22), top->mapToGlobal(QPoint(80, 22)), Qt::LeftButton,
                         Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(top, &move);
        QTest::mouseRelease(top, Qt::LeftButton, Qt::NoModifier, QPoint(50, 2));
        QCOMPARE(panel->pos(), QPoint(40, 30));
        QVERIFY(f.host->log.contains(QStringLiteral("markDirty")));
        // Moves that would leave the area are refused.
        for (const QPoint &delta : {QPoint(-41, 0), QPoint(0, -31), QPoint(261, 0), QPoint(0, 221)}) {
            panel->handlerMove(top, delta);
            QCOMPARE(panel->pos(), QPoint(40, 30));
        }
        panel->handlerMove(top, QPoint(260, 220)); // right up to the corner
        QCOMPARE(panel->geometry().bottomRight(), QPoint(399, 299));
        // A second panel becomes the active one: the first loses its strips.
        SubWindow *second = f.area->addSubWindow();
        QVERIFY(!panel->handle(MoveHandler::Left)->isVisible());
        QVERIFY(second->handle(MoveHandler::Left)->isVisible());
        QVERIFY(f.host->managed.contains(second));
        // Selecting the first in Designer makes it the active one again; two selected change nothing.
        f.host->selectWidget(&f.dialog, panel, true);
        emit f.host->selectionChanged(&f.dialog);
        QCOMPARE(f.area->activePanel(), panel);
        QVERIFY(panel->handle(MoveHandler::Top)->isVisible());
        QVERIFY(!second->handle(MoveHandler::Top)->isVisible());
        f.host->selectWidget(&f.dialog, second, true);
        emit f.host->selectionChanged(&f.dialog);
        QCOMPARE(f.area->activePanel(), panel);
    }

    void removedPanelsInDesigner()
    {
        MdiForm f(true);
        f.show();
        f.area->addSubWindow();
        SubWindow *second = f.area->addSubWindow();
        auto *placed = new QWidget(second);
        f.host->manageWidget(&f.dialog, placed);
        f.area->removeSubWindow(QStringLiteral("subWindow_2"));
        QCOMPARE(f.area->getSubwindows(), QStringList{"subWindow_1"});
        QVERIFY(!f.host->managed.contains(second));
        QVERIFY(!f.host->managed.contains(placed));
        QVERIFY(second->isHidden());
        QCOMPARE(placed->parentWidget(), second); // kept, never deleted
        QVERIFY(!f.area->activePanel());
        QVERIFY(!f.area->subWindow(QStringLiteral("subWindow_2")));
        // The next panel takes the free name.
        QCOMPARE(f.area->addSubWindow()->objectName(), QStringLiteral("subWindow_2"));
        f.area->removeSubWindow(QStringLiteral("nothing"));
        QCOMPARE(f.area->getSubwindows().size(), 2);
    }

    void backgrounds()
    {
        MdiForm f(true);
        f.show();
        SubWindow *panel = f.area->addSubWindow();
        panel->setBackgroundColor(Qt::cyan);
        f.area->setBackgroundColor(Qt::magenta);
        QVERIFY(panel->autoFillBackground());
        QVERIFY(f.area->autoFillBackground());
        const QImage image = f.area->grab().toImage();
        QCOMPARE(image.pixelColor(60, 40), QColor(Qt::cyan));
        QCOMPARE(image.pixelColor(300, 250), QColor(Qt::magenta));
    }
};

QTEST_MAIN(TestContainers)
#include "tst_containers.moc"
