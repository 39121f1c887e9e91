#include "abstractbutton.h"

#include <QElapsedTimer>
#include <QtTest>

// Records the button's signals in the order they arrive.
class SignalLog
{
public:
    explicit SignalLog(AbstractButton *b)
    {
        QObject::connect(b, &AbstractButton::pressed, b, [this] { add("pressed"); });
        QObject::connect(b, &AbstractButton::released, b, [this] { add("released"); });
        QObject::connect(b, &AbstractButton::clicked, b, [this](bool c) { add(c ? "clicked+" : "clicked"); });
        QObject::connect(b, &AbstractButton::toggled, b, [this](bool c) { add(c ? "toggled+" : "toggled-"); });
        QObject::connect(b, &AbstractButton::pressDelayTrigger, b, [this] { add("trigger"); });
        QObject::connect(b, &AbstractButton::keyPress, b, [this](int k) { add(QString("key %1").arg(k)); });
        clock.start();
    }
    void add(const QString &s)
    {
        entries << s;
        times << clock.elapsed();
    }
    int count(const QString &s) const { return entries.count(s); }
    QStringList entries;
    QList<qint64> times;
    QElapsedTimer clock;
};

static void moveMouse(QWidget *w, const QPoint &pos)
{
    QMouseEvent e(QEvent::MouseMove, pos, w->mapToGlobal(pos), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(w, &e);
}

// Runs steps like "press 10 10", "move 200 10", "release 10 10", "rpress 10 10" (right button), "disable 0 0",
// "hide 0 0", "key 32", "keyup 32", "animate 10 0" (animated click of 10 ms) and "wait 50 0" (ms).
static void play(AbstractButton *b, const QStringList &steps)
{
    for (const QString &step : steps) {
        const QStringList f = step.split(' ');
        const QPoint pos(f[1].toInt(), f.value(2).toInt());
        if (f[0] == "key")
            QTest::keyPress(b, Qt::Key(pos.x()));
        else if (f[0] == "keyup")
            QTest::keyRelease(b, Qt::Key(pos.x()));
        else if (f[0] == "press")
            QTest::mousePress(b, Qt::LeftButton, {}, pos);
        else if (f[0] == "rpress")
            QTest::mousePress(b, Qt::RightButton, {}, pos);
        else if (f[0] == "release")
            QTest::mouseRelease(b, Qt::LeftButton, {}, pos);
        else if (f[0] == "disable")
            b->setEnabled(false);
        else if (f[0] == "hide")
            b->hide();
        else if (f[0] == "animate")
            b->animateClick(pos.x());
        else if (f[0] == "wait")
            QTest::qWait(pos.x());
        else
            moveMouse(b, pos);
    }
}

class TestAbstractButton : public QObject
{
    Q_OBJECT

private:
    QWidget *window = nullptr;

    AbstractButton *shownButton(const QRect &geometry = QRect(10, 10, 100, 30))
    {
        auto *b = new AbstractButton(window);
        b->setGeometry(geometry);
        b->setFocusPolicy(Qt::StrongFocus);
        b->show();
        return b;
    }

private slots:
    void init()
    {
        window = new QWidget;
        window->resize(600, 400);
        window->show();
        window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window));
    }
    void cleanup() { delete window; }
    void mouseAndKeys_data()
    {
        QTest::addColumn<bool>("checkable"); QTest::addColumn<QStringList>("steps");
        QTest::addColumn<QStringList>("expected");
        const QStringList click{"press 50 15", "release 50 15"};
        QTest::newRow("click") << false << click << QStringList{"pressed", "released", "clicked"};
        QTest::newRow("checkable click") << true << click << QStringList{"pressed", "toggled+", "released", "clicked+"};
        QTest::newRow("drag out and back in")
            << false << QStringList{"press 50 15", "move 150 15", "move 60 15", "release 60 15"}
            << QStringList{"pressed", "released", "pressed", "released", "clicked"};
        QTest::newRow("release outside") << true << QStringList{"press 50 15", "move 150 15", "release 150 15"}
                                         << QStringList{"pressed", "released"};
        QTest::newRow("right button") << false << QStringList{"rpress 50 15"} << QStringList{};
        QTest::newRow("move without press") << false << QStringList{"move 50 15", "move 150 15"} << QStringList{};
        QTest::newRow("disabled while down") << false << QStringList{"press 50 15", "disable 0 0", "release 50 15"}
                                             << QStringList{"pressed"};
        QTest::newRow("space") << false << QStringList{"key 32", "keyup 32"}
                               << QStringList{"key 32", "pressed", "released", "clicked"};
        QTest::newRow("escape cancels") << false << QStringList{"key 32", "key 16777216", "keyup 32"}
                                        << QStringList{"key 32", "pressed", "key 16777216", "released"};
        // A button that goes up before its click completes is not clicked.
        QTest::newRow("hidden while down") << false << QStringList{"press 50 15", "hide 0 0", "release 50 15"}
                                           << QStringList{"pressed"};
        QTest::newRow("animated click cancelled by Escape")
            << false << QStringList{"animate 10 0", "key 16777216", "wait 50 0"}
            << QStringList{"pressed", "key 16777216", "released"};
        QTest::newRow("return is ignored") << false << QStringList{"key 16777220", "keyup 16777220"}
                                           << QStringList{"key 16777220"};
    }
    void mouseAndKeys()
    {
        QFETCH(bool, checkable); QFETCH(QStringList, steps); QFETCH(QStringList, expected);
        AbstractButton *b = shownButton(QRect(10, 10, 100, 30));
        b->setCheckable(checkable);
        b->setFocus();
        SignalLog log(b);
        play(b, steps);
        QCOMPARE(log.entries, expected);
        QVERIFY(!b->isDown());
    }

    void autoRepeat()
    {
        AbstractButton *b = shownButton();
        b->setAutoRepeat(true);
        SignalLog log(b);
        QTest::mousePress(b, Qt::LeftButton, {}, QPoint(50, 15));
        QTRY_VERIFY_WITH_TIMEOUT(log.count("clicked") >= 3, 10000);
        QTest::mouseRelease(b, Qt::LeftButton, {}, QPoint(50, 15));
        // Timers never fire much early, so the first repeat waits for the 300 ms delay.
        QVERIFY2(log.times.at(2) >= 250, qPrintable(QString::number(log.times.at(2))));
        QStringList expected{"pressed"};
        for (int i = 0; i < log.count("clicked") - 1; ++i)
            expected << "released" << "clicked" << "pressed";
        expected << "released" << "clicked";
        QCOMPARE(log.entries, expected);
    }

    void delayedTrigger_data()
    {
        QTest::addColumn<QString>("ending"); QTest::addColumn<int>("triggers");
        QTest::newRow("held") << "" << 1;
        QTest::newRow("released") << "release" << 0;
        QTest::newRow("dragged out") << "drag" << 0;
        QTest::newRow("disabled") << "disable" << 0;
        QTest::newRow("focus lost") << "focus" << 0;
    }
    void delayedTrigger()
    {
        QFETCH(QString, ending); QFETCH(int, triggers);
        AbstractButton *b = shownButton();
        AbstractButton *other = shownButton(QRect(10, 50, 100, 30));
        b->setDeylayTrigger(true);
        b->setFocus();
        SignalLog log(b);
        QTest::mousePress(b, Qt::LeftButton, {}, QPoint(50, 15));
        if (ending == "release")
            QTest::mouseRelease(b, Qt::LeftButton, {}, QPoint(50, 15));
        else if (ending == "drag")
            moveMouse(b, QPoint(200, 15));
        else if (ending == "disable")
            b->setEnabled(false);
        else if (ending == "focus")
            other->setFocus();
        if (triggers) {
            QTRY_COMPARE_WITH_TIMEOUT(log.count("trigger"), 1, 10000);
            QVERIFY(log.times.last() >= 900);
        }
        QTest::qWait(1500);
        QCOMPARE(log.count("trigger"), triggers);
        QCOMPARE(log.count("clicked"), ending == "release" ? 1 : 0);
        QCOMPARE(b->isDown(), ending.isEmpty());
    }

    void shortcutKeys_data()
    {
        QTest::addColumn<int>("key");
        QTest::newRow("first key") << int(Qt::Key_K);
        QTest::newRow("second key") << int(Qt::Key_L);
    }
    void shortcutKeys()
    {
        QFETCH(int, key);
        AbstractButton *b = shownButton();
        b->setShortcut(QKeySequence("Ctrl+K, Ctrl+L"));
        SignalLog log(b);
        auto hit = [&] { QTest::keyClick(window, Qt::Key(key), Qt::ControlModifier); };
        hit();
        QTRY_COMPARE(log.count("clicked"), 1);
        b->setShortcutEnabled(false);
        QCOMPARE(b->shortcut(), QKeySequence("Ctrl+K, Ctrl+L"));
        hit();
        QTest::qWait(400);
        QCOMPARE(log.count("clicked"), 1);
        b->setShortcutEnabled(true);
        hit();
        QTRY_COMPARE(log.count("clicked"), 2);
    }

    void exclusiveGroup()
    {
        QList<AbstractButton *> group;
        auto *inner = new QWidget(window); // the window's descendants count, not only its children
        for (QWidget *parent : {window, window, inner}) {
            auto *b = new AbstractButton(parent);
            b->setCheckable(true);
            b->setAutoExclusive(true);
            group << b;
        }
        auto *outsider = new AbstractButton(window);
        outsider->setCheckable(true);
        outsider->setChecked(true);

        group[2]->click();
        group[0]->click();
        QCOMPARE(group[2]->isChecked(), false);
        QCOMPARE(group[0]->isChecked(), true);
        QCOMPARE(outsider->isChecked(), true);

        SignalLog log(group[0]);
        group[0]->click(); // the refused uncheck
        group[0]->setChecked(false);
        QCOMPARE(group[0]->isChecked(), true);
        QCOMPARE(log.entries, QStringList({"pressed", "released", "clicked+"}));
    }

    void arrowKeys_data()
    {
        QTest::addColumn<bool>("exclusive"); QTest::addColumn<int>("key");
        QTest::addColumn<int>("target"); // -1: focus stays
        // 0: origin (0,0); 1: same row far right; 2: near but diagonal; 3: same column far below;
        // 4: hidden, between 0 and 1
        QTest::newRow("right prefers the same row") << true << int(Qt::Key_Right) << 1;
        QTest::newRow("down prefers the same column") << true << int(Qt::Key_Down) << 3;
        QTest::newRow("nothing to the left") << true << int(Qt::Key_Left) << -1;
        QTest::newRow("not exclusive: tab chain") << false << int(Qt::Key_Right) << 1;
    }
    void arrowKeys()
    {
        QFETCH(bool, exclusive); QFETCH(int, key); QFETCH(int, target);
        const QList<QRect> rects{{0, 0, 100, 30}, {400, 0, 100, 30}, {120, 40, 100, 30}, {0, 300, 100, 30},
                                 {200, 0, 100, 30}};
        QList<AbstractButton *> buttons;
        for (const QRect &r : rects) {
            buttons << shownButton(r);
            buttons.last()->setAutoExclusive(exclusive);
            buttons.last()->setCheckable(true);
        }
        buttons[4]->hide();
        QWidget::setTabOrder(buttons[0], buttons[1]);
        buttons[0]->setFocus();
        buttons[0]->setChecked(true);
        QTest::keyClick(buttons[0], Qt::Key(key));
        AbstractButton *focused = target < 0 ? buttons[0] : buttons[target];
        QTRY_VERIFY(focused->hasFocus());
        // Moving within a group carries the check along.
        QCOMPARE(focused->isChecked(), exclusive || target < 0);
    }
};

QTEST_MAIN(TestAbstractButton)
#include "tst_abstractbutton.moc"
