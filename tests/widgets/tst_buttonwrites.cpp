// What a press of a bit or function button writes, on which channel, and every way a held press ends;
// moving the bit button's monitor bit at run time; the function button's colour bit and caption table.
#include "bitbutton.h"
#include "buttontestsupport.h"
#include "functionbutton.h"
#include "norvointerface_z3.h"
#include "widgetfactory.h"

#include <QLineEdit>
#include <QMenu>
#include <QtTest>

#include <climits>

using norvo_v0::QeltApp;
using namespace buttontest;

namespace {
using Panel = buttontest::PanelOf<BitButton>;
// Presses write bit 5 of user word 100 on channel 2, link 3: setBit(1, 7, 100, 5, value, 3).
const QStringList writesUserBit100_5{"comId=3", "channel=2", "writeBitType=7", "writeAddress=100", "writeBitIndex=5"};
// The current-channel word moves on at every read, so that a press reading it twice shows.
struct MovingChannelApp : RecordingQeltApp
{
    int getData(int channel, DataClass dataClass, int address, int comId) override
    {
        const int value = RecordingQeltApp::getData(channel, dataClass, address, comId);
        if (address == CurrentChannelAddress)
            memory().setWord(comId, channel, dataClass, address, value + 1);
        return value;
    }
};
// Shows what the function button paints in its current state.
class ProbeButton : public FunctionButton
{
public:
    using FunctionButton::FunctionButton;
    ButtonFace shownFace() const { return face(); }
};
} // namespace

class TestButtonWrites : public QObject
{
    Q_OBJECT

private slots:
    void init() { NORVOInterface_Z3::initialization()->resetToDefaults(); }

    // The keep actions' releases, and every way a press ends: momentaryPressEnds.
    void press_data()
    {
        QTest::addColumn<QString>("className"); QTest::addColumn<int>("action");
        QTest::addColumn<bool>("bitBefore");     // the write bit's value when pressed
        QTest::addColumn<bool>("written");       // by the press, to bit 5 of user word 100 on link 3
        QTest::addColumn<int>("currentChannel"); // the current-channel word, with the flag set; -1: flag off
        QTest::addColumn<int>("channel");        // of the write: the stored channel 2 is 1
        QTest::newRow("BitButton SetOff") << "BitButton" << int(BitButton::SetOff) << true << false << -1 << 1;
        QTest::newRow("BitButton Invert of 0") << "BitButton" << int(BitButton::Invert) << false << true << -1 << 1;
        QTest::newRow("BitButton Invert of 1") << "BitButton" << int(BitButton::Invert) << true << false << -1 << 1;
        QTest::newRow("BitButton action 7 ignored: stays SetOn") << "BitButton" << 7 << false << true << -1 << 1;
        QTest::newRow("BitButton SetOn, current channel 3") << "BitButton" << 0 << false << true << 3 << 2;
        QTest::newRow("BitButton SetOff, current channel 0 gives 0") << "BitButton" << int(BitButton::SetOff) << true << false << 0 << 0;
        QTest::newRow("BitButton SetOn, current channel smallest int gives 0") << "BitButton" << 0 << false << true << INT_MIN << 0;
        QTest::newRow("BitButton Invert reads and writes one current channel") << "BitButton" << int(BitButton::Invert) << false << true << 3 << 2;
        QTest::newRow("FunctionButton SetOn") << "FunctionButton" << int(FunctionButton::SetOn) << false << true << -1 << 1;
        QTest::newRow("FunctionButton KeepOn") << "FunctionButton" << int(FunctionButton::KeepOn) << false << true << -1 << 1;
        QTest::newRow("FunctionButton KeepOff") << "FunctionButton" << int(FunctionButton::KeepOff) << true << false << -1 << 1;
        QTest::newRow("FunctionButton Invert of 0") << "FunctionButton" << int(FunctionButton::Invert) << false << true << -1 << 1;
        QTest::newRow("FunctionButton Invert of 1") << "FunctionButton" << int(FunctionButton::Invert) << true << false << -1 << 1;
        // The function button keeps the flag for the application only.
        QTest::newRow("FunctionButton SetOn, current channel not used") << "FunctionButton" << 0 << false << true << 4 << 1;
        QTest::newRow("FunctionButton action 5 ignored: stays SetOn") << "FunctionButton" << 5 << false << true << -1 << 1;
    }

    void press()
    {
        QFETCH(QString, className); QFETCH(int, action); QFETCH(bool, bitBefore); QFETCH(bool, written);
        QFETCH(int, currentChannel); QFETCH(int, channel);
        PanelOf<QWidget, MovingChannelApp> panel(className);
        QWidget *b = panel.button;
        MovingChannelApp &app = panel.app;
        panel.set(writesUserBit100_5 + QStringList{QStringLiteral("action=%1").arg(action),
                                                   QStringLiteral("ChnNoVarEnable=%1").arg(int(currentChannel != -1))});
        // The monitor bit (I0.0) holds the opposite value, so a read of the wrong bit shows.
        app.memory().setBit(3, channel, QeltApp::User_BIT, 100, 5, bitBefore);
        app.memory().setBit(3, channel, QeltApp::I_BIT, 0, 0, !bitBefore);
        panel.form.show();
        QVERIFY(QTest::qWaitForWindowExposed(&panel.form));
        app.memory().setWord(0, 0, QeltApp::Com, QeltApp::CurrentChannelAddress, currentChannel);
        app.clearCalls();
        QTest::mousePress(b, Qt::LeftButton, {}, QPoint(50, 15));
        // What the press reads and writes: the current channel (the bit button only), the bit it inverts.
        QList<QVariantList> calls;
        if (currentChannel != -1 && className == "BitButton")
            calls << QVariantList{"getData", 0, int(QeltApp::Com), QeltApp::CurrentChannelAddress, 0};
        if (action == BitButton::Invert)
            calls << QVariantList{"getBit", channel, 7, 100, 5, 3};
        QCOMPARE(namedArguments(app.calls()), (calls << QVariantList{"setBit", channel, 7, 100, 5, written, 3}));
        QCOMPARE(b->property("state").toInt(), 0); // the write is not shown until the monitor bit comes back
        app.clearCalls();
        QSignalSpy released(b, SIGNAL(released()));
        QTest::mouseRelease(b, Qt::LeftButton, {}, QPoint(50, 15));
        QCOMPARE(released.count(), 1);
        QCOMPARE(app.callNames(), QStringList());
    }

    void momentaryPressEnds_data()
    {
        QTest::addColumn<int>("action"); QTest::addColumn<QString>("end");
        for (const char *end : {"release", "drag out", "enabled bit 0", "authority refused", "visible bit hides",
                                "form hidden", "modal dialog", "window deactivated", "focus lost", "destroyed",
                                "released outside", "key moved away", "key shrunk", "popup takes the release",
                                "another widget grabs the mouse", "Escape", "soft key Space"})
            QTest::newRow(end) << int(BitButton::KeepOn) << QString::fromLatin1(end);
        QTest::newRow("KeepOff, enabled bit 0") << int(BitButton::KeepOff) << "enabled bit 0";
        QTest::newRow("KeepOff, destroyed") << int(BitButton::KeepOff) << "destroyed";
        QTest::newRow("KeepOff, released outside") << int(BitButton::KeepOff) << "released outside";
        QTest::newRow("KeepOff, soft key Space") << int(BitButton::KeepOff) << "soft key Space";
        // These write on the press only, however it ends.
        QTest::newRow("SetOn, release") << int(BitButton::SetOn) << "release";
        QTest::newRow("SetOn, released outside") << int(BitButton::SetOn) << "released outside";
        QTest::newRow("Invert, disabled") << int(BitButton::Invert) << "enabled bit 0";
    }

    // Whatever ends a held momentary press, the release value is written exactly once, to the bit and
    // channel the press wrote.
    void momentaryPressEnds()
    {
        QFETCH(int, action); QFETCH(QString, end);
        Panel panel;
        BitButton *b = panel.button;
        panel.set(writesUserBit100_5 + QStringList{QStringLiteral("action=%1").arg(action), "enabledBitType=1", "visibleBitType=1",
                                                   "visibleAddress=1", "operationalAuthority=3"});
        panel.form.show();
        panel.form.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&panel.form));
        panel.app.clearCalls();
        const bool on = action != BitButton::KeepOff; // Invert of the bit at 0 writes 1
        const bool keep = action == BitButton::KeepOn || action == BitButton::KeepOff;
        const QVariantList press{1, 7, 100, 5, on, 3};
        const QList<QVariantList> writes = keep ? QList<QVariantList>{press, {1, 7, 100, 5, !on, 3}}
                                                : QList<QVariantList>{press};
        if (end == "soft key Space") { // a soft key sends the press alone
            QKeyEvent space(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier, QStringLiteral(" "));
            QCoreApplication::sendEvent(b, &space);
        } else if (end == "focus lost" || end == "Escape") {
            b->setFocusPolicy(Qt::StrongFocus);
            b->setFocus();
            QTest::keyPress(b, Qt::Key_Space);
        } else {
            QTest::mousePress(b, Qt::LeftButton, {}, QPoint(50, 15));
        }
        if (end != "soft key Space")
            QCOMPARE(argumentsOf(panel.app.callsNamed("setBit")), QList<QVariantList>{press});

        QLineEdit other(&panel.form);
        other.setGeometry(0, 40, 100, 20);
        other.show();
        QDialog modal(&panel.form);
        QWidget otherWindow;
        QMenu popup;
        if (end == "release") {
            QTest::mouseRelease(b, Qt::LeftButton, {}, QPoint(50, 15));
        } else if (end == "released outside") {
            QTest::mouseRelease(b, Qt::LeftButton, {}, QPoint(150, 15));
        } else if (end == "key moved away" || end == "key shrunk") {
            end == "key shrunk" ? b->resize(20, 10) : b->move(120, 0);
            QTest::mouseRelease(b, Qt::LeftButton, {}, b->mapFromParent(QPoint(50, 15)));
        } else if (end == "popup takes the release") {
            popup.addAction(QStringLiteral("Menu"));
            popup.popup(b->mapToGlobal(QPoint(50, 15)));
            QTest::mouseRelease(&popup, Qt::LeftButton, {}, QPoint(2, 2));
        } else if (end == "another widget grabs the mouse") {
            other.grabMouse();
            QTest::mouseRelease(&other, Qt::LeftButton, {}, QPoint(5, 5));
            other.releaseMouse();
        } else if (end == "Escape") {
            QTest::keyPress(b, Qt::Key_Escape);
        } else if (end == "drag out") {
            dragTo(b, QPoint(150, 15));
        } else if (end == "enabled bit 0") {
            panel.app.deliver(b, 1, 0);
        } else if (end == "authority refused") {
            b->updateAuthority(5);
        } else if (end == "visible bit hides") {
            panel.app.deliver(b, 2, 0);
        } else if (end == "form hidden") {
            panel.form.hide();
        } else if (end == "modal dialog") {
            modal.setModal(true);
            modal.show();
        } else if (end == "window deactivated") {
            otherWindow.show();
            otherWindow.activateWindow();
            QVERIFY(QTest::qWaitForWindowActive(&otherWindow));
        } else if (end == "focus lost") {
            other.setFocus();
            QVERIFY(other.hasFocus());
        } else if (end == "destroyed") {
            delete b;
            b = nullptr;
        }
        QCOMPARE(argumentsOf(panel.app.callsNamed("setBit")), writes);

        // What comes after the end writes nothing more.
        if (b) {
            modal.hide();
            b->updateAuthority(1);
            panel.app.deliver(b, 1, 1);
            QTest::mouseRelease(b, Qt::LeftButton, {}, QPoint(50, 15));
            QTest::keyRelease(b, Qt::Key_Space);
        }
        QCOMPARE(panel.app.callsNamed("setBit").size(), writes.size());
    }

    void resetReadAddress_data()
    {
        QTest::addColumn<bool>("chnNoVar"); QTest::addColumn<bool>("bit");
        QTest::addColumn<int>("channel"); QTest::addColumn<int>("bitType"); // given to the call
        QTest::addColumn<QStringList>("sequence"); // empty: refused, nothing changes
        QTest::addColumn<int>("registeredChannel"); QTest::addColumn<int>("readChannel");
        const QStringList stored{"stopUpdateUI", "removeUIVariable", "registerUIVariable", "getBit", "startUpdateUI"};
        QTest::newRow("stored channel, bit 1") << false << true << 2 << int(BitButton::O_BIT) << stored << 1 << 1;
        QTest::newRow("current channel") << true << true << 2 << int(BitButton::O_BIT)
            << QStringList{"stopUpdateUI", "removeUIVariable", "registerUIVariable", "getData", "getBit", "startUpdateUI"}
            << QeltApp::CurrentChannel << 2;
        QTest::newRow("channel 9 refused") << false << true << 9 << int(BitButton::O_BIT) << QStringList() << 0 << 1;
        QTest::newRow("bit type 13 refused") << false << true << 1 << 13 << QStringList() << 0 << 1;
    }

    void resetReadAddress()
    {
        QFETCH(bool, chnNoVar); QFETCH(bool, bit); QFETCH(int, channel); QFETCH(int, bitType);
        QFETCH(QStringList, sequence); QFETCH(int, registeredChannel); QFETCH(int, readChannel);
        Panel panel;
        BitButton *b = panel.button;
        b->setComId(ComId);
        b->SetChnNoVarEnable(chnNoVar);
        b->SetEnabledBitType(BitButton::C_BIT);
        b->SetVisibleBitType(BitButton::S_BIT);
        b->SetState(bit ? BitButton::Off : BitButton::On);
        panel.app.memory().setWord(0, 0, QeltApp::Com, QeltApp::CurrentChannelAddress, 3);
        panel.app.memory().setBit(0, readChannel, QeltApp::O_BIT, 7, 3, bit);
        panel.attach();
        QCOMPARE(int(panel.app.registrations().size()), 3);
        panel.app.clearCalls();
        const auto readBit = [b] { return QList<int>{b->channel(), b->readBitType(), b->readAddress(), b->readBitIndex()}; };
        const QList<int> before = readBit();
        b->resetRegisterReadBitData(channel, bitType, 7, 3);
        QCOMPARE(panel.app.callNames(), sequence);
        if (sequence.isEmpty()) {
            QCOMPARE(readBit(), before);
            QCOMPARE(int(panel.app.registrations().size()), 3);
            return;
        }
        const QVariant form = RecordingQeltApp::pointer(&panel.form);
        QCOMPARE(panel.app.callsNamed("removeUIVariable").first().args,
                 QVariantList({form, RecordingQeltApp::pointer(b)}));
        QCOMPARE(panel.app.callsNamed("startUpdateUI").first().args, QVariantList({form}));
        QCOMPARE(panel.app.callsNamed("getBit").first().args, QVariantList({readChannel, 1, 7, 3, 0}));
        QCOMPARE(int(panel.app.registrations().size()), 1);
        QCOMPARE(panel.app.registrations().first().arguments(),
                 registration(0, registeredChannel, 0, 7, int(BitButton::O_BIT), 3));
        QCOMPARE(b->state(), bit ? BitButton::On : BitButton::Off);
        // The enabled and visible bits are gone; the monitor bit still arrives.
        QCOMPARE(panel.app.deliver(b, 1, 0), 0);
        QCOMPARE(panel.app.deliver(b, 2, 0), 0);
        QVERIFY(b->QWidget::isEnabled());
        QVERIFY(!b->isHidden());
        QCOMPARE(panel.app.deliver(b, 0, bit ? 0 : 1), 1);
        QCOMPARE(b->state(), bit ? BitButton::Off : BitButton::On);
    }

    void colours_data()
    {
        // "bit V": colour bit update; "name S": setButtonColor(S); "normal R,G,B": SetButtonColorNormal
        QTest::addColumn<QStringList>("steps"); QTest::addColumn<QColor>("body"); QTest::addColumn<QColor>("caption");
        const QColor on(200, 0, 0);
        const QColor enabledText(0, 90, 0);
        const QColor onText(0, 0, 200);
        QTest::newRow("default") << QStringList() << QColor(240, 240, 240) << enabledText;
        QTest::newRow("colour bit 1") << QStringList{"bit 1"} << on << onText;
        QTest::newRow("three numbers") << QStringList{"name 10,20,30"} << QColor(10, 20, 30) << enabledText;
        QTest::newRow("next bit 1 overwrites") << QStringList{"bit 1", "name 10,20,30", "bit 1"} << on << onText;
        QTest::newRow("two numbers are no colour") << QStringList{"name 10,20"} << QColor() << enabledText;
        QTest::newRow("not a number counts 0") << QStringList{"name 10,x,30"} << QColor(10, 0, 30) << enabledText;
        QTest::newRow("colour name") << QStringList{"name red"} << QColor(255, 0, 0) << enabledText;
        QTest::newRow("unknown name") << QStringList{"name nocolour"} << QColor() << enabledText;
        QTest::newRow("normal colour setter shows at once") << QStringList{"name 10,20,30", "normal 1,2,3"} << QColor(1, 2, 3)
                                                           << enabledText;
    }

    void colours()
    {
        QFETCH(QStringList, steps); QFETCH(QColor, body); QFETCH(QColor, caption);
        PanelOf<ProbeButton> panel;
        ProbeButton *b = panel.button;
        b->SetColorBitType(FunctionButton::S_BIT);
        b->SetButtonColorOn(QColor(200, 0, 0));
        b->SetTextColorOn(QColor(0, 0, 200));
        b->SetTextColorEnabled(QColor(0, 90, 0));
        panel.attachBySlot();
        for (const QString &step : steps) {
            const QString arg = step.section(QLatin1Char(' '), 1);
            if (step.startsWith("bit")) {
                QCOMPARE(panel.app.deliver(b, 2, arg.toInt()), 1);
            } else if (step.startsWith("name")) {
                b->setButtonColor(arg);
            } else {
                const QStringList rgb = arg.split(QLatin1Char(','));
                b->SetButtonColorNormal(QColor(rgb.at(0).toInt(), rgb.at(1).toInt(), rgb.at(2).toInt()));
            }
        }
        const ButtonFace face = b->shownFace();
        QCOMPARE(face.bodyColor.isValid(), body.isValid());
        if (body.isValid()) {
            QCOMPARE(face.bodyColor, body);
            // The caption is empty, so the middle of the body shows the fill.
            QCOMPARE(QColor(b->grab().toImage().pixel(50, 15)), body);
        }
        QCOMPARE(face.captionColor, caption);
    }

    void captionTable_data()
    {
        QTest::addColumn<QStringList>("values"); QTest::addColumn<QStringList>("captions");
        QTest::addColumn<int>("language"); QTest::addColumn<QList<int>>("delivered"); QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("textList");
        const QStringList values{"0", "1"};
        const QStringList captions{"A0;A1", "B0;B1"};
        const QStringList before{"init", "i1"};
        QTest::newRow("value 1, language 1") << values << captions << 1 << QList<int>{1} << "B1"
                                             << QStringList{"B0", "B1"};
        QTest::newRow("value 0, language 0") << values << captions << 0 << QList<int>{0} << "A0"
                                             << QStringList{"A0", "A1"};
        QTest::newRow("absent value changes nothing")
            << values << captions << 1 << QList<int>{1, 2} << "B1" << QStringList{"B0", "B1"};
        QTest::newRow("entry without separator") << QStringList{"5"} << QStringList{"Solo"} << 0 << QList<int>{5}
                                                 << "Solo" << QStringList{"Solo"};
        QTest::newRow("unequal counts leave the table empty")
            << values << QStringList{"A0;A1"} << 0 << QList<int>{0} << "init" << before;
        QTest::newRow("later entry with the same value wins")
            << QStringList{"3", "3"} << QStringList{"first", "second"} << 0 << QList<int>{3} << "second"
            << QStringList{"second"};
    }

    void captionTable()
    {
        QFETCH(QStringList, values); QFETCH(QStringList, captions); QFETCH(int, language);
        QFETCH(QList<int>, delivered); QFETCH(QString, text); QFETCH(QStringList, textList);
        PanelOf<ProbeButton> panel;
        ProbeButton *b = panel.button;
        b->setText(QStringLiteral("init"));
        b->setTextList({"init", "i1"});
        b->SetTextControlDataClass(FunctionButton::Reg_Var);
        b->SetTextValueList(values);
        b->SetTextStringList(captions);
        b->setLanguage(FunctionButton::Language(language));
        panel.attach();
        for (int value : delivered)
            QCOMPARE(panel.app.deliver(b, 3, value), 1);
        QCOMPARE(b->text(), text);
        QCOMPARE(b->getTextList(), textList);
    }

};

QTEST_MAIN(TestButtonWrites)
#include "tst_buttonwrites.moc"
