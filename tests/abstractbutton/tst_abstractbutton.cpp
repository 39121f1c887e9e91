#include "abstractbutton.h"

#include <QElapsedTimer>
#include <QMetaProperty>
#include <QStyle>
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

// Runs steps like "press 10 10", "move 200 10", "release 10 10", "rpress 10 10" (right button), "disable 0 0".
static void playMouse(AbstractButton *b, const QStringList &steps)
{
    for (const QString &step : steps) {
        const QStringList f = step.split(' ');
        const QPoint pos(f[1].toInt(), f[2].toInt());
        if (f[0] == "press")
            QTest::mousePress(b, Qt::LeftButton, {}, pos);
        else if (f[0] == "rpress")
            QTest::mousePress(b, Qt::RightButton, {}, pos);
        else if (f[0] == "release")
            QTest::mouseRelease(b, Qt::LeftButton, {}, pos);
        else if (f[0] == "disable")
            b->setEnabled(false);
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

    void defaults_data()
    {
        QTest::addColumn<QString>("property");
        QTest::addColumn<QVariant>("value");
        QTest::newRow("text") << "text" << QVariant(QString());
        QTest::newRow("alignment") << "alignment" << QVariant::fromValue(Qt::Alignment(Qt::AlignCenter));
        QTest::newRow("autoRepeatDelay") << "autoRepeatDelay" << QVariant(300);
        QTest::newRow("autoRepeatInterval") << "autoRepeatInterval" << QVariant(100);
        QTest::newRow("deylayTrigger") << "deylayTrigger" << QVariant(false);
        QTest::newRow("deylayTriggerInterval") << "deylayTriggerInterval" << QVariant(1000);
        QTest::newRow("checkable") << "checkable" << QVariant(false);
        QTest::newRow("autoExclusive") << "autoExclusive" << QVariant(false);
        QTest::newRow("down") << "down" << QVariant(false);
    }
    void defaults()
    {
        QFETCH(QString, property);
        QFETCH(QVariant, value);
        AbstractButton b;
        QCOMPARE(b.property(qPrintable(property)), value);
        const QMetaProperty meta = b.metaObject()->property(b.metaObject()->indexOfProperty(qPrintable(property)));
        QCOMPARE(meta.isDesignable(), property != "down");
    }

    void construction()
    {
        AbstractButton b;
        const int e = b.style()->pixelMetric(QStyle::PM_ButtonIconSize, nullptr, &b);
        QCOMPARE(b.iconSize(), QSize(e, e));
        QCOMPARE(b.focusPolicy(), Qt::NoFocus);
        QCOMPARE(b.sizePolicy().horizontalPolicy(), QSizePolicy::Minimum);
        QCOMPARE(b.sizePolicy().verticalPolicy(), QSizePolicy::Fixed);
        QStringList signalsInOrder;
        const QMetaObject *mo = b.metaObject();
        for (int i = mo->methodOffset(); i < mo->methodCount(); ++i) {
            if (mo->method(i).methodType() == QMetaMethod::Signal)
                signalsInOrder << mo->method(i).methodSignature();
        }
        QCOMPARE(signalsInOrder, QStringList({"pressed()", "released()", "clicked(bool)", "clicked()", "toggled(bool)",
                                              "pressDelayTrigger()", "keyPress(int)"}));
    }

    void mouse_data()
    {
        QTest::addColumn<bool>("checkable");
        QTest::addColumn<QStringList>("steps");
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
        QTest::newRow("disabled") << true << (QStringList{"disable 0 0"} + click) << QStringList{};
        QTest::newRow("disabled while down") << false << QStringList{"press 50 15", "disable 0 0", "release 50 15"}
                                             << QStringList{"pressed"};
    }
    void mouse()
    {
        QFETCH(bool, checkable);
        QFETCH(QStringList, steps);
        QFETCH(QStringList, expected);
        AbstractButton *b = shownButton(QRect(10, 10, 100, 30));
        b->setCheckable(checkable);
        SignalLog log(b);
        playMouse(b, steps);
        QCOMPARE(log.entries, expected);
        QVERIFY(!b->isDown());
    }

    void keys_data()
    {
        QTest::addColumn<QList<int>>("presses"); // negative: release of that key
        QTest::addColumn<QStringList>("expected");
        QTest::newRow("space") << QList<int>{Qt::Key_Space, -Qt::Key_Space}
                               << QStringList{"key 32", "pressed", "released", "clicked"};
        QTest::newRow("escape cancels") << QList<int>{Qt::Key_Space, Qt::Key_Escape, -Qt::Key_Space}
                                        << QStringList{"key 32", "pressed", "key 16777216", "released"};
        QTest::newRow("return is ignored") << QList<int>{Qt::Key_Return, -Qt::Key_Return}
                                           << QStringList{"key 16777220"};
        QTest::newRow("letter") << QList<int>{Qt::Key_A} << QStringList{"key 65"};
        QTest::newRow("escape while up") << QList<int>{Qt::Key_Escape} << QStringList{"key 16777216"};
    }
    void keys()
    {
        QFETCH(QList<int>, presses);
        QFETCH(QStringList, expected);
        AbstractButton *b = shownButton();
        b->setFocus();
        SignalLog log(b);
        for (int k : presses) {
            if (k > 0)
                QTest::keyPress(b, Qt::Key(k));
            else
                QTest::keyRelease(b, Qt::Key(-k));
        }
        QCOMPARE(log.entries, expected);
    }

    void clickAndAnimateClick()
    {
        AbstractButton *b = shownButton();
        SignalLog log(b);
        b->click();
        QCOMPARE(log.entries, QStringList({"pressed", "released", "clicked"}));
        log.entries.clear();
        b->animateClick(50);
        QCOMPARE(log.entries, QStringList({"pressed"}));
        QVERIFY(b->isDown());
        QTRY_COMPARE(log.entries, QStringList({"pressed", "released", "clicked"}));
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
        QTest::addColumn<QString>("ending");
        QTest::addColumn<int>("triggers");
        QTest::newRow("held") << "" << 1;
        QTest::newRow("released") << "release" << 0;
        QTest::newRow("dragged out") << "drag" << 0;
        QTest::newRow("disabled") << "disable" << 0;
        QTest::newRow("focus lost") << "focus" << 0;
    }
    void delayedTrigger()
    {
        QFETCH(QString, ending);
        QFETCH(int, triggers);
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

    void ambiguousShortcutOnlyFocuses()
    {
        AbstractButton *a = shownButton();
        AbstractButton *b = shownButton(QRect(10, 50, 100, 30));
        a->setShortcut(QKeySequence(Qt::Key_F5));
        b->setShortcut(QKeySequence(Qt::Key_F5));
        SignalLog logA(a), logB(b);
        QTest::keyClick(window, Qt::Key_F5);
        QTest::qWait(300);
        QVERIFY(a->hasFocus() || b->hasFocus());
        QCOMPARE(logA.count("clicked") + logB.count("clicked"), 0);
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

        auto *alone = new AbstractButton;
        alone->setCheckable(true);
        alone->setAutoExclusive(true);
        alone->click();
        alone->click();
        QVERIFY(!alone->isChecked());
        delete alone;
    }

    void arrowKeys_data()
    {
        QTest::addColumn<bool>("exclusive");
        QTest::addColumn<int>("key");
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
        QFETCH(bool, exclusive);
        QFETCH(int, key);
        QFETCH(int, target);
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
