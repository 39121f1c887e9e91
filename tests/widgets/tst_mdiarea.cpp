// The MDI area and its panels: names and the cascade of new panels, the active panel from the form,
// auto hide at run time (not in Designer), hiding and showing by name, the panels' show, hide and
// timeout signals, the drag strips and their moves in Designer, and what the panels' controls are given.
#include "controlprobe.h"
#include "cascadeplacement.h"
#include "fakedesignerhost.h"
#include "mdiarea.h"
#include "movehandler.h"
#include "subwindow.h"

#include <QDialog>
#include <QtTest>

namespace {

struct Form
{
    explicit Form(bool designing = false, QSize size = QSize(400, 300))
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

class TstMdiArea : public QObject
{
    Q_OBJECT

private Q_SLOTS:
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
        Form f(false, area);
        f.show();
        QStringList names;
        QStringList expectedNames;
        for (int i = 0; i < expected.size(); ++i) {
            SubWindow *panel = f.area->addSubWindow();
            QCOMPARE(panel->geometry(), expected.at(i));
            QVERIFY(panel->isVisible());
            QCOMPARE(f.area->activePanel(), panel);
            expectedNames << QStringLiteral("subWindow_%1").arg(i + 1);
        }
        QCOMPARE(f.area->getSubwindows(), expectedNames);
        QCOMPARE(f.area->activeSubWindow(), expectedNames.last());
        QCOMPARE(f.shown().size(), expected.size()); // the earlier ones stay shown
    }

    void placementBouncesWithoutEnd()
    {
        CascadePlacement placement;
        const QRect tiny(0, 0, 50, 20); // no panel fits
        for (int i = 0; i < 50; ++i)
            QVERIFY(qAbs(placement.next(tiny).x()) <= 20);
    }

    void activeFromTheForm_data()
    {
        QTest::addColumn<bool>("autoHide"); QTest::addColumn<bool>("designing"); QTest::addColumn<QString>("active");
        QTest::addColumn<QStringList>("shown");
        QTest::newRow("all shown") << false << false << "panelB" << QStringList{"panelA", "panelB", "panelC"};
        QTest::newRow("auto hide") << true << false << "panelB" << QStringList{"panelB"};
        QTest::newRow("auto hide, unknown active") << true << false << "nothing" << QStringList();
        QTest::newRow("auto hide in Designer") << true << true << "panelB" << QStringList{"panelA", "panelB", "panelC"};
    }
    void activeFromTheForm()
    {
        QFETCH(bool, autoHide); QFETCH(bool, designing); QFETCH(QString, active); QFETCH(QStringList, shown);
        Form f(designing);
        f.area->setActiveSubWindow(active); // the form sets the name before the panels exist
        f.area->setAutoHide(autoHide);
        f.loadPanel(QStringLiteral("panelA"), QRect(0, 0, 100, 100));
        f.loadPanel(QStringLiteral("panelB"), QRect(20, 20, 100, 100));
        f.loadPanel(QStringLiteral("panelC"), QRect(40, 40, 100, 100));
        f.show();
        QCOMPARE(f.area->getSubwindows(), (QStringList{"panelA", "panelB", "panelC"}));
        QCOMPARE(f.shown(), shown);
        QCOMPARE(f.area->activeSubWindow(), active);
        if (f.area->activePanel()) // raised above the later panels
            QCOMPARE(f.area->childAt(50, 50), f.area->activePanel());
    }

    // With auto hide at run time, a panel that is shown takes the active one's place; in Designer
    // both stay.
    void autoHideSwitch_data()
    {
        QTest::addColumn<bool>("designing"); QTest::addColumn<QStringList>("shown");
        QTest::newRow("run time") << false << QStringList{"panelB"};
        QTest::newRow("Designer") << true << QStringList{"panelA", "panelB"};
    }
    void autoHideSwitch()
    {
        QFETCH(bool, designing); QFETCH(QStringList, shown);
        Form f(designing);
        f.area->setActiveSubWindow(QStringLiteral("panelA"));
        f.area->setAutoHide(true);
        f.loadPanel(QStringLiteral("panelA"), QRect(0, 0, 100, 100));
        SubWindow *b = f.loadPanel(QStringLiteral("panelB"), QRect(20, 20, 100, 100));
        f.show();
        b->hide(); // as a screen starts: only the active panel
        b->show();
        QCOMPARE(f.shown(), shown);
        QCOMPARE(f.area->activeSubWindow(), designing ? QStringLiteral("panelA") : QStringLiteral("panelB"));
    }

    void hideAndShowByName()
    {
        Form f;
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

    void firstHideIsSilent()
    {
        Form f;
        SubWindow *panel = f.loadPanel(QStringLiteral("panel"), QRect(0, 0, 100, 100));
        QSignalSpy shows(panel, &SubWindow::subWindowShow);
        QSignalSpy hides(panel, &SubWindow::subWindowHide);
        f.show();
        QCOMPARE(shows.count(), 1);
        panel->hide();
        QCOMPARE(hides.count(), 0);
        panel->show();
        panel->hide();
        QCOMPARE(shows.count(), 2);
        QCOMPARE(hides.count(), 1);
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
        Form f;
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
    }

    void stripsAndMovesInDesigner()
    {
        Form f(true);
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
    }

    void noStripsAtRunTime()
    {
        Form f;
        f.show();
        SubWindow *panel = f.area->addSubWindow();
        QVERIFY(!panel->handle(MoveHandler::Left));
        panel->handlerMove(nullptr, QPoint(5, 5));
        QCOMPARE(panel->pos(), QPoint(10, 10));
    }

    void designerSelectionActivates()
    {
        Form f(true);
        f.show();
        SubWindow *first = f.area->addSubWindow();
        SubWindow *second = f.area->addSubWindow();
        f.host->selectWidget(&f.dialog, first, true);
        emit f.host->selectionChanged(&f.dialog);
        QCOMPARE(f.area->activePanel(), first);
        QVERIFY(first->handle(MoveHandler::Top)->isVisible());
        QVERIFY(!second->handle(MoveHandler::Top)->isVisible());
        // Two panels selected: no change.
        f.host->selectWidget(&f.dialog, second, true);
        emit f.host->selectionChanged(&f.dialog);
        QCOMPARE(f.area->activePanel(), first);
    }

    void removedPanelsInDesigner()
    {
        Form f(true);
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

    void controlsInPanels()
    {
        Form f;
        SubWindow *panel = f.loadPanel(QStringLiteral("panel"), QRect(0, 0, 100, 100));
        auto *probe = new ControlProbe(panel);
        int app = 0;
        f.area->setQeltAppAndFormPtr(&app, &f.dialog);
        QCOMPARE(probe->app, static_cast<void *>(&app));
    }

    void backgrounds()
    {
        Form f(true);
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

QTEST_MAIN(TstMdiArea)
#include "tst_mdiarea.moc"
