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
        for (const char *c : {"BitButton", "FunctionButton"}) { // both share the actions' values
            QTest::addRow("%s Invert of 0", c) << c << int(BitButton::Invert) << false << true << -1 << 1;
            QTest::addRow("%s Invert of 1", c) << c << int(BitButton::Invert) << true << false << -1 << 1;
            QTest::addRow("%s action 5 ignored: stays SetOn", c) << c << 5 << false << true << -1 << 1;
        }
        QTest::newRow("BitButton SetOff") << "BitButton" << int(BitButton::SetOff) << true << false << -1 << 1;
        QTest::newRow("BitButton SetOn, current channel 3") << "BitButton" << 0 << false << true << 3 << 2;
        QTest::newRow("BitButton SetOff, current channel 0 gives 0") << "BitButton" << int(BitButton::SetOff) << true << false << 0 << 0;
        QTest::newRow("BitButton SetOn, current channel smallest int gives 0") << "BitButton" << 0 << false << true << INT_MIN << 0;
        QTest::newRow("BitButton Invert reads and writes one current channel") << "BitButton" << int(BitButton::Invert) << false << true << 3 << 2;
        QTest::newRow("FunctionButton SetOn") << "FunctionButton" << int(FunctionButton::SetOn) << false << true << -1 << 1;
        QTest::newRow("FunctionButton KeepOn") << "FunctionButton" << int(FunctionButton::KeepOn) << false << true << -1 << 1;
        QTest::newRow("FunctionButton KeepOff") << "FunctionButton" << int(FunctionButton::KeepOff) << true << false << -1 << 1;
        // The function button keeps the flag for the application only.
        QTest::newRow("FunctionButton SetOn, current channel not used") << "FunctionButton" << 0 << false << true << 4 << 1;
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
        for (const char *end : {"enabled bit 0", "destroyed", "released outside", "soft key Space"})
            QTest::addRow("KeepOff, %s", end) << int(BitButton::KeepOff) << QString::fromLatin1(end);
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
        QList<QVariantList> writes{{"setBit", 1, 7, 100, 5, on, 3}}; // the press, then a keep action's release
        if (action == BitButton::KeepOn || action == BitButton::KeepOff)
            writes << QVariantList{"setBit", 1, 7, 100, 5, !on, 3};
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
            QCOMPARE(namedArguments(panel.app.callsNamed("setBit")), writes.mid(0, 1));

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
        QCOMPARE(namedArguments(panel.app.callsNamed("setBit")), writes);

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
        QTest::addColumn<bool>("chnNoVar");
        QTest::addColumn<int>("channel"); QTest::addColumn<int>("bitType"); // given to the call
        QTest::addColumn<bool>("accepted"); // refused: nothing changes
        QTest::addColumn<int>("registeredChannel"); QTest::addColumn<int>("readChannel");
        QTest::newRow("stored channel") << false << 2 << int(BitButton::O_BIT) << true << 1 << 1;
        QTest::newRow("current channel") << true << 2 << int(BitButton::O_BIT) << true << int(QeltApp::CurrentChannel) << 2;
        QTest::newRow("channel 9 refused") << false << 9 << int(BitButton::O_BIT) << false << 0 << 1;
        QTest::newRow("bit type 13 refused") << false << 1 << 13 << false << 0 << 1;
    }

    // The monitor bit moved at run time: one registration instead of three, read at once.
    void resetReadAddress()
    {
        QFETCH(bool, chnNoVar); QFETCH(int, channel); QFETCH(int, bitType); QFETCH(bool, accepted);
        QFETCH(int, registeredChannel); QFETCH(int, readChannel);
        Panel panel;
        BitButton *b = panel.button;
        panel.set({"comId=2", QStringLiteral("ChnNoVarEnable=%1").arg(chnNoVar), "enabledBitType=2",
                   "visibleBitType=3"});
        panel.app.memory().setWord(0, 0, QeltApp::Com, QeltApp::CurrentChannelAddress, 3);
        panel.app.memory().setBit(0, readChannel, QeltApp::O_BIT, 7, 3, true);
        b->ensurePolished(); // the polish event registers the items
        QCOMPARE(int(panel.app.registrations().size()), 3);
        panel.app.clearCalls();
        const auto readBit = [b] { return QList<int>{b->channel(), b->readBitType(), b->readAddress(), b->readBitIndex()}; };
        const QList<int> before = readBit();
        b->resetRegisterReadBitData(channel, bitType, 7, 3);
        const QVariant form = RecordingQeltApp::pointer(&panel.form), widget = RecordingQeltApp::pointer(b);
        const QVariant callback = RecordingQeltApp::pointer(static_cast<norvo_v0::UpdateVariableInterface *>(b));
        QList<QVariantList> calls;
        if (accepted) {
            calls << QVariantList{"stopUpdateUI"} << QVariantList{"removeUIVariable", form, widget}
                  << QVariantList{"registerUIVariable", form, widget, callback} + registration({0, 2, registeredChannel, 0, 7, 1, 3});
            if (chnNoVar)
                calls << QVariantList{"getData", 0, int(QeltApp::Com), QeltApp::CurrentChannelAddress, 0};
            calls << QVariantList{"getBit", readChannel, 1, 7, 3, 0} << QVariantList{"startUpdateUI", form};
        }
        QCOMPARE(namedArguments(panel.app.calls()), calls);
        if (!accepted) {
            QCOMPARE(readBit(), before);
            return;
        }
        QCOMPARE(b->state(), BitButton::On);
        // The monitor bit, the only registration left, still arrives.
        QCOMPARE(panel.app.deliver(b, 0, 0), 1);
        QCOMPARE(b->state(), BitButton::Off);
    }

    // The function button's face: its colour bit and setters, and the caption table the text-control word
    // picks from. steps: "bit V" (colour bit), "name S" (setButtonColor), "normal R,G,B" (SetButtonColorNormal),
    // "values V,V" and "captions C;C,C;C" (the table, one caption list per value), "language N", "attach"
    // (through the slot), "word V" (the text-control word). shown: what the row checks of "body", "caption", "text" and "list".
    void face_data()
    {
        QTest::addColumn<QStringList>("steps"); QTest::addColumn<QStringList>("shown");
        const auto row = [](const char *name, const char *steps, const char *shown) {
            QTest::newRow(name) << QString(steps).split(", ") << QString(shown).split(", ");
        };
        row("default", "attach", "body #f0f0f0, caption #005a00");
        row("colour bit 1", "attach, bit 1", "body #c80000, caption #0000c8");
        row("three numbers", "attach, name 10,20,30", "body #0a141e, caption #005a00");
        row("next bit 1 overwrites", "attach, bit 1, name 10,20,30, bit 1", "body #c80000, caption #0000c8");
        row("two numbers are no colour", "attach, name 10,20", "body none, caption #005a00");
        row("not a number counts 0", "attach, name 10,x,30", "body #0a001e");
        row("colour name", "attach, name red", "body #ff0000");
        row("unknown name", "attach, name nocolour", "body none");
        row("normal colour setter shows at once", "attach, name 10,20,30, normal 1,2,3", "body #010203, caption #005a00");
        const QString table = "values 0,1, captions A0;A1,B0;B1";
        row("caption of value 1, language 1", qPrintable(table + ", language 1, attach, word 1"), "text B1, list B0|B1");
        row("caption of value 0, language 0", qPrintable(table + ", language 0, attach, word 0"), "text A0, list A0|A1");
        row("absent value changes nothing", qPrintable(table + ", language 1, attach, word 1, word 2"), "text B1, list B0|B1");
        row("entry without separator", "values 5, captions Solo, attach, word 5", "text Solo, list Solo");
        row("unequal counts leave the table empty", "values 0,1, captions A0;A1, attach, word 0", "text init, list init|i1");
        row("later entry with the same value wins", "values 3,3, captions first,second, attach, word 3", "text second, list second");
    }

    void face()
    {
        QFETCH(QStringList, steps); QFETCH(QStringList, shown);
        PanelOf<ProbeButton> panel;
        ProbeButton *b = panel.button;
        b->setText(QStringLiteral("init"));
        b->setTextList({"init", "i1"});
        b->SetTextControlDataClass(FunctionButton::Reg_Var);
        b->SetColorBitType(FunctionButton::S_BIT);
        b->SetButtonColorOn(QColor(200, 0, 0));
        b->SetTextColorOn(QColor(0, 0, 200));
        b->SetTextColorEnabled(QColor(0, 90, 0));
        for (const QString &step : std::as_const(steps)) {
            const QString arg = step.section(' ', 1);
            const QStringList rgb = arg.split(',');
            if (step == "attach")
                QVERIFY(panel.attachBySlot());
            else if (step.startsWith("bit"))
                QCOMPARE(panel.app.deliver(b, 2, arg.toInt()), 1);
            else if (step.startsWith("word"))
                QCOMPARE(panel.app.deliver(b, 3, arg.toInt()), 1);
            else if (step.startsWith("name"))
                b->setButtonColor(arg);
            else if (step.startsWith("normal"))
                b->SetButtonColorNormal(QColor(rgb.at(0).toInt(), rgb.at(1).toInt(), rgb.at(2).toInt()));
            else if (step.startsWith("values"))
                b->SetTextValueList(rgb);
            else if (step.startsWith("captions"))
                b->SetTextStringList(rgb);
            else
                b->setLanguage(FunctionButton::Language(arg.toInt()));
        }
        const ButtonFace face = b->shownFace();
        const QMap<QString, QString> actual{{"body", face.bodyColor.isValid() ? face.bodyColor.name() : "none"},
                                            {"caption", face.captionColor.name()}, {"text", b->text()},
                                            {"list", b->getTextList().join('|')}};
        for (const QString &item : std::as_const(shown))
            QCOMPARE(item.section(' ', 0, 0) + ' ' + actual.value(item.section(' ', 0, 0)), item);
        // The caption is empty, so the middle of the body shows the fill.
        if (face.bodyColor.isValid() && b->text().isEmpty())
            QCOMPARE(QColor(b->grab().toImage().pixel(50, 15)), face.bodyColor);
    }
};

QTEST_MAIN(TestButtonWrites)
#include "tst_buttonwrites.moc"
