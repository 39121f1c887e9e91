#include "bitbutton.h"
#include "buttontestsupport.h"
#include "fakedesignerhost.h"
#include "norvointerface_z3.h"

#include <QLineEdit>
#include <QMenu>
#include <QtTest>

#include <climits>

using norvo_v0::QeltApp;
using namespace buttontest;

namespace {
using Panel = buttontest::PanelOf<BitButton>;
QVariantList bitRegistration(int index, int channel, int address, int bitType, int bitIndex, int comId = ComId)
{
    return registration(index, channel, 0, address, bitType, bitIndex, comId);
}
// Presses write bit 5 of user word 100 on channel 2, link 3: setBit(1, 7, 100, 5, value, 3).
void writeUserBit100_5(BitButton *b, int action)
{
    b->setComId(3);
    b->SetChannel(2);
    b->SetWriteBitType(BitButton::User);
    b->SetWriteAddress(100);
    b->SetWriteBitIndex(5);
    b->SetAction(BitButton::Action(action));
}
QStringList describe(const QList<QList<TextData>> &slotRecords)
{
    QStringList out;
    for (int s = 0; s < slotRecords.size(); ++s)
        for (const TextData &r : slotRecords.at(s))
            out << QStringLiteral("slot %1: %2").arg(s).arg(describeRecord(r));
    return out;
}
} // namespace

class TestBitButton : public QObject
{
    Q_OBJECT

private slots:
    void init() { NORVOInterface_Z3::initialization()->resetToDefaults(); }

    void setterLimits_data()
    {
        QTest::addColumn<QString>("property");
        QTest::addColumn<int>("before");
        QTest::addColumn<int>("written");
        QTest::addColumn<int>("expected");
        QTest::newRow("negative radius") << "cornersRadius" << 5 << -3 << 0;
        QTest::newRow("negative link") << "comId" << 3 << -1 << 0;
        QTest::newRow("channel above the count") << "channel" << 2 << 99 << 4;
        QTest::newRow("authority above 99") << "operationalAuthority" << 5 << 100 << 5;
        QTest::newRow("authority 99") << "operationalAuthority" << 5 << 99 << 99;
        // Enums take only their declared values, bit indexes only 0 ... 31, whatever a form holds.
        QTest::newRow("action 5") << "action" << 2 << 5 << 2;
        QTest::newRow("action far out") << "action" << 3 << 1094795585 << 3;
        QTest::newRow("state 2") << "state" << 1 << 2 << 1;
        QTest::newRow("read bit type 13") << "readBitType" << 3 << 13 << 3;
        QTest::newRow("read bit type -2") << "readBitType" << 3 << -2 << 3;
        QTest::newRow("read bit type -1") << "readBitType" << 3 << -1 << -1;
        QTest::newRow("write bit type 3") << "writeBitType" << 7 << 3 << 7;
        QTest::newRow("enabled bit type 99") << "enabledBitType" << 1 << 99 << 1;
        QTest::newRow("visible bit type smallest int") << "visibleBitType" << 2 << INT_MIN << 2;
        QTest::newRow("user level 10") << "lowestEnablingUserLevel" << 4 << 10 << 4;
        QTest::newRow("visible user level -1") << "lowestVisibleUserLevel" << 4 << -1 << 4;
        QTest::newRow("language 10") << "language" << 3 << 10 << 3;
        QTest::newRow("icon position 5") << "iconPosition" << 1 << 5 << 1;
        QTest::newRow("read bit index 32") << "readBitIndex" << 4 << 32 << 4;
        QTest::newRow("read bit index -1") << "readBitIndex" << 4 << -1 << 4;
        QTest::newRow("write bit index 32") << "writeBitIndex" << 4 << 32 << 4;
        QTest::newRow("enabled bit index -1") << "enabledBitIndex" << 4 << -1 << 4;
        QTest::newRow("visible bit index 31") << "visibleBitIndex" << 4 << 31 << 31;
    }

    void setterLimits()
    {
        QFETCH(QString, property);
        QFETCH(int, before);
        QFETCH(int, written);
        QFETCH(int, expected);
        NORVOInterface_Z3::initialization()->setMaxChannelCount(4);
        BitButton b;
        QVERIFY(b.setProperty(qPrintable(property), before));
        b.setProperty(qPrintable(property), written);
        QCOMPARE(b.property(qPrintable(property)).toInt(), expected);
    }

    void defaultLook_data()
    {
        QTest::addColumn<int>("monitorBit");
        QTest::addColumn<QString>("caption");
        QTest::addColumn<QColor>("body");
        QTest::newRow("off") << 0 << "OFF" << QColor(240, 240, 240);
        QTest::newRow("monitor bit 1") << 1 << "ON" << QColor(192, 192, 192);
    }

    void defaultLook()
    {
        QFETCH(int, monitorBit);
        QFETCH(QString, caption);
        QFETCH(QColor, body);
        Panel panel;
        panel.attach();
        QCOMPARE(panel.app.deliver(panel.button, 0, 0), 1);
        panel.app.deliver(panel.button, 0, monitorBit);
        const QImage image = panel.button->grab().toImage();
        QCOMPARE(panel.button->text(), caption);
        // Inside the body, clear of the bevel (2 px from the edge) and of the centred caption.
        for (const QPoint &p : {QPoint(12, 8), QPoint(12, 22), QPoint(88, 15)})
            QCOMPARE(QColor(image.pixel(p)), body);
    }

    void registrations_data()
    {
        QTest::addColumn<int>("readType");
        QTest::addColumn<int>("enabledType");
        QTest::addColumn<int>("visibleType");
        QTest::addColumn<bool>("chnNoVar");
        QTest::addColumn<QList<QVariantList>>("expected");
        // Monitor bit at 11.1, enabled bit at 21.2, visible bit at 31.3; channel property 3.
        QTest::newRow("default monitor bit only")
            << int(BitButton::I_BIT) << -1 << -1 << false << QList<QVariantList>{bitRegistration(0, 2, 11, 0, 1)};
        QTest::newRow("all three in order")
            << int(BitButton::O_BIT) << int(BitButton::C_BIT) << int(BitButton::Com_BIT) << false
            << QList<QVariantList>{bitRegistration(0, 2, 11, 1, 1), bitRegistration(1, 2, 21, 2, 2),
                                   bitRegistration(2, 2, 31, 12, 3)};
        QTest::newRow("nothing configured") << -1 << -1 << -1 << false << QList<QVariantList>{};
        QTest::newRow("current-channel flag keeps the stored channel")
            << int(BitButton::User_BIT) << -1 << int(BitButton::A_BIT) << true
            << QList<QVariantList>{bitRegistration(0, 2, 11, 7, 1), bitRegistration(2, 2, 31, 4, 3)};
    }

    void registrations()
    {
        QFETCH(int, readType);
        QFETCH(int, enabledType);
        QFETCH(int, visibleType);
        QFETCH(bool, chnNoVar);
        QFETCH(QList<QVariantList>, expected);
        Panel panel;
        BitButton *b = panel.button;
        b->setComId(ComId);
        b->SetChannel(3);
        b->SetChnNoVarEnable(chnNoVar);
        panel.app.memory().setWord(0, 0, QeltApp::Com, QeltApp::CurrentChannelAddress, 4);
        b->SetReadBitType(BitButton::ReadBitType(readType));
        b->SetReadAddress(11);
        b->SetReadBitIndex(1);
        b->SetEnabledBitType(BitButton::ReadBitType(enabledType));
        b->SetEnabledAddress(21);
        b->SetEnabledBitIndex(2);
        b->SetVisibleBitType(BitButton::ReadBitType(visibleType));
        b->SetVisibleAddress(31);
        b->SetVisibleBitIndex(3);
        panel.attach();
        const QList<RecordingQeltApp::Registration> regs = panel.app.registrations();
        QList<QVariantList> actual;
        for (const RecordingQeltApp::Registration &r : regs) {
            QCOMPARE(r.form, static_cast<QWidget *>(&panel.form));
            QCOMPARE(r.widget.data(), static_cast<QWidget *>(b));
            QCOMPARE(r.callback, static_cast<norvo_v0::UpdateVariableInterface *>(b));
            actual << r.arguments();
        }
        QCOMPARE(actual, expected);
        // Attaching reads nothing and starts no updates.
        QStringList registrationCalls;
        for (int i = 0; i < expected.size(); ++i)
            registrationCalls << QStringLiteral("registerUIVariable");
        QCOMPARE(panel.app.callNames(), registrationCalls);
        // A second polish event does not attach again.
        QEvent polish(QEvent::Polish);
        QApplication::sendEvent(b, &polish);
        QCOMPARE(int(panel.app.registrations().size()), int(expected.size()));
    }

    // The keep actions, and every way a press ends: momentaryPressEnds.
    void pressAndRelease_data()
    {
        QTest::addColumn<int>("action");
        QTest::addColumn<bool>("bitBefore"); // the write bit's value when pressed
        QTest::addColumn<bool>("written");   // by the press, to bit 5 of user word 100 on channel 1, link 3
        QTest::newRow("SetOff") << int(BitButton::SetOff) << true << false;
        QTest::newRow("Invert of 0") << int(BitButton::Invert) << false << true;
        QTest::newRow("Invert of 1") << int(BitButton::Invert) << true << false;
        QTest::newRow("action 7 ignored: stays SetOn") << 7 << false << true;
    }

    void pressAndRelease()
    {
        QFETCH(int, action);
        QFETCH(bool, bitBefore);
        QFETCH(bool, written);
        Panel panel;
        BitButton *b = panel.button;
        writeUserBit100_5(b, action);
        // The monitor bit (I0.0) holds the opposite value, so a read of the wrong bit shows.
        panel.app.memory().setBit(3, 1, QeltApp::User_BIT, 100, 5, bitBefore);
        panel.app.memory().setBit(3, 1, QeltApp::I_BIT, 0, 0, !bitBefore);
        panel.form.show();
        QVERIFY(QTest::qWaitForWindowExposed(&panel.form));
        panel.app.clearCalls();
        QTest::mousePress(b, Qt::LeftButton, {}, QPoint(50, 15));
        QCOMPARE(argumentsOf(panel.app.callsNamed("setBit")), (QList<QVariantList>{{1, 7, 100, 5, written, 3}}));
        if (action == BitButton::Invert) {
            QCOMPARE(panel.app.callNames(), QStringList({"getBit", "setBit"}));
            QCOMPARE(panel.app.calls().first().args, QVariantList({1, 7, 100, 5, 3}));
        }
        QCOMPARE(b->state(), BitButton::Off); // the write is not shown until the monitor bit comes back
        panel.app.clearCalls();
        QTest::mouseRelease(b, Qt::LeftButton, {}, QPoint(50, 15));
        QCOMPARE(panel.app.callNames(), QStringList());
    }

    void channelOfWrites_data()
    {
        QTest::addColumn<bool>("chnNoVar");
        QTest::addColumn<int>("currentChannel"); // value of the current-channel word
        QTest::addColumn<int>("action");
        QTest::addColumn<int>("expected");
        QTest::newRow("stored channel") << false << 2 << int(BitButton::SetOn) << 2;
        QTest::newRow("current channel 2") << true << 2 << int(BitButton::SetOn) << 1;
        QTest::newRow("current channel 0 gives 0") << true << 0 << int(BitButton::SetOff) << 0;
        QTest::newRow("invert reads on the current channel") << true << 2 << int(BitButton::Invert) << 1;
    }

    void channelOfWrites()
    {
        QFETCH(bool, chnNoVar);
        QFETCH(int, currentChannel);
        QFETCH(int, action);
        QFETCH(int, expected);
        Panel panel;
        BitButton *b = panel.button;
        b->SetChannel(3);
        b->SetChnNoVarEnable(chnNoVar);
        b->SetWriteBitType(BitButton::Com);
        b->SetAction(BitButton::Action(action));
        panel.app.memory().setWord(0, 0, QeltApp::Com, QeltApp::CurrentChannelAddress, currentChannel);
        panel.attach();
        panel.app.clearCalls();
        b->slotPressed();
        b->slotReleased();
        const QList<RecordingQeltApp::Call> calls = panel.app.calls();
        QVERIFY(!calls.isEmpty());
        for (const RecordingQeltApp::Call &c : calls) {
            if (c.name == "getData")
                QCOMPARE(c.args, QVariantList({0, int(QeltApp::Com), QeltApp::CurrentChannelAddress, 0}));
            else
                QCOMPARE(c.args.first().toInt(), expected);
        }
        QCOMPARE(panel.app.callsNamed("getData").isEmpty(), !chnNoVar);
    }

    // An inverting press reads and writes one channel, even when the current-channel word changes
    // between the read and the write.
    void invertUsesOneChannel()
    {
        struct SwitchingApp : RecordingQeltApp
        {
            int getData(int channel, DataClass dataClass, int address, int comId) override
            {
                const int value = RecordingQeltApp::getData(channel, dataClass, address, comId);
                if (address == CurrentChannelAddress)
                    memory().setWord(comId, channel, dataClass, address, value + 1);
                return value;
            }
        } app;
        app.memory().setWord(0, 0, QeltApp::Com, QeltApp::CurrentChannelAddress, 2);
        QDialog form;
        form.setProperty("QeltApp", QeltApp::toVariant(&app));
        auto *b = new BitButton(&form);
        b->SetChnNoVarEnable(true);
        b->SetWriteBitType(BitButton::Com);
        b->SetAction(BitButton::Invert);
        b->ensurePolished();
        app.clearCalls();
        b->slotPressed();
        QCOMPARE(app.callNames(), QStringList({"getData", "getBit", "setBit"}));
        QCOMPARE(app.callsNamed("getBit").first().args.first(), QVariant(1));
        QCOMPARE(app.callsNamed("setBit").first().args.first(), QVariant(1));
    }

    void momentaryPressEnds_data()
    {
        QTest::addColumn<int>("action");
        QTest::addColumn<QString>("end");
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
        QFETCH(int, action);
        QFETCH(QString, end);
        Panel panel;
        BitButton *b = panel.button;
        writeUserBit100_5(b, action);
        b->SetEnabledBitType(BitButton::O_BIT);
        b->SetVisibleBitType(BitButton::O_BIT);
        b->SetVisibleAddress(1);
        b->setOperationalAuthority(3);
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

    void visibleBit()
    {
        for (bool onVisible : {true, false}) {
            Panel panel;
            panel.button->SetVisibleBitType(BitButton::O_BIT);
            panel.button->SetBitOnVisible(onVisible);
            panel.attach();
            for (int v : {0, 1, 0}) {
                QCOMPARE(panel.app.deliver(panel.button, 2, v), 1);
                QCOMPARE(panel.button->isHidden(), (v == 1) != onVisible);
            }
        }
    }

    void resetReadAddress_data()
    {
        QTest::addColumn<bool>("chnNoVar");
        QTest::addColumn<bool>("bit");
        QTest::addColumn<QStringList>("sequence");
        QTest::addColumn<int>("registeredChannel");
        QTest::addColumn<int>("readChannel");
        QTest::newRow("stored channel, bit 1")
            << false << true
            << QStringList{"stopUpdateUI", "removeUIVariable", "registerUIVariable", "getBit", "startUpdateUI"} << 1
            << 1;
        QTest::newRow("current channel")
            << true << true
            << QStringList{"stopUpdateUI", "removeUIVariable", "registerUIVariable", "getData", "getBit",
                           "startUpdateUI"}
            << QeltApp::CurrentChannel << 2;
    }

    void resetReadAddress()
    {
        QFETCH(bool, chnNoVar);
        QFETCH(bool, bit);
        QFETCH(QStringList, sequence);
        QFETCH(int, registeredChannel);
        QFETCH(int, readChannel);
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
        b->resetRegisterReadBitData(2, BitButton::O_BIT, 7, 3);
        QCOMPARE(panel.app.callNames(), sequence);
        const QVariant form = RecordingQeltApp::pointer(&panel.form);
        QCOMPARE(panel.app.callsNamed("removeUIVariable").first().args,
                 QVariantList({form, RecordingQeltApp::pointer(b)}));
        QCOMPARE(panel.app.callsNamed("startUpdateUI").first().args, QVariantList({form}));
        QCOMPARE(panel.app.callsNamed("getBit").first().args, QVariantList({readChannel, 1, 7, 3, 0}));
        QCOMPARE(int(panel.app.registrations().size()), 1);
        QCOMPARE(panel.app.registrations().first().arguments(),
                 bitRegistration(0, registeredChannel, 7, int(BitButton::O_BIT), 3));
        QCOMPARE(b->state(), bit ? BitButton::On : BitButton::Off);
        // The enabled and visible bits are gone; the monitor bit still arrives.
        QCOMPARE(panel.app.deliver(b, 1, 0), 0);
        QCOMPARE(panel.app.deliver(b, 2, 0), 0);
        QVERIFY(b->QWidget::isEnabled());
        QVERIFY(!b->isHidden());
        QCOMPARE(panel.app.deliver(b, 0, bit ? 0 : 1), 1);
        QCOMPARE(b->state(), bit ? BitButton::Off : BitButton::On);
    }

    void resetReadAddressRejects_data()
    {
        QTest::addColumn<int>("channel");
        QTest::addColumn<int>("bitType");
        QTest::addColumn<int>("address");
        QTest::newRow("channel 9") << 9 << 0 << 0;
        QTest::newRow("bit type 13") << 1 << 13 << 0;
    }

    void resetReadAddressRejects()
    {
        QFETCH(int, channel);
        QFETCH(int, bitType);
        QFETCH(int, address);
        Panel panel;
        BitButton *b = panel.button;
        b->SetChannel(3);
        b->SetReadBitType(BitButton::C_BIT);
        b->SetReadAddress(4);
        b->SetReadBitIndex(2);
        panel.attach();
        panel.app.clearCalls();
        b->resetRegisterReadBitData(channel, bitType, address, 1);
        QCOMPARE(panel.app.callNames(), QStringList());
        QCOMPARE(b->channel(), 3);
        QCOMPARE(b->readBitType(), BitButton::C_BIT);
        QCOMPARE(b->readAddress(), 4);
        QCOMPARE(b->readBitIndex(), 2);
        QCOMPARE(int(panel.app.registrations().size()), 1);
    }

    void languages_data()
    {
        QTest::addColumn<QStringList>("onList");
        QTest::addColumn<QStringList>("offList");
        // "lang N": updateLanguage(N); "caption X": SetOnText(X); "lists": set both lists to On0..2/Off0..2
        QTest::addColumn<QStringList>("steps");
        QTest::addColumn<QString>("onText");
        QTest::addColumn<QString>("offText");
        const QStringList on{"On0", "On1", "On2"};
        const QStringList off{"Off0", "Off1", "Off2"};
        QTest::newRow("first change to the current language applies")
            << on << off << QStringList{"lang 0"} << "On0" << "Off0";
        QTest::newRow("second change to the same language does nothing")
            << on << off << QStringList{"lang 0", "caption X", "lang 0"} << "X" << "Off0";
        QTest::newRow("change to another language") << on << off << QStringList{"lang 0", "caption X", "lang 2"}
                                                    << "On2" << "Off2";
        QTest::newRow("empty lists keep ON/OFF")
            << QStringList() << QStringList() << QStringList{"lang 0", "lang 1"} << "ON" << "OFF";
        QTest::newRow("still pending after empty lists")
            << QStringList() << QStringList() << QStringList{"lang 0", "lists", "lang 0"} << "On0" << "Off0";
        QTest::newRow("ignored index keeps the language pending")
            << on << off << QStringList{"lang 3", "lang 0"} << "On0" << "Off0";
        QTest::newRow("short list keeps its caption")
            << QStringList{"On0"} << off << QStringList{"lang 2"} << "ON" << "Off2";
    }

    void languages()
    {
        QFETCH(QStringList, onList);
        QFETCH(QStringList, offList);
        QFETCH(QStringList, steps);
        QFETCH(QString, onText);
        QFETCH(QString, offText);
        NORVOInterface_Z3::initialization()->setSystemLanguages({"Sans", "Sans", "Sans"});
        BitButton b;
        b.setOnTextList(onList);
        b.setOffTextList(offList);
        for (const QString &step : steps) {
            const QString arg = step.section(QLatin1Char(' '), 1);
            if (step.startsWith("lang")) {
                b.updateLanguage(arg.toInt());
            } else if (step.startsWith("caption")) {
                b.SetOnText(arg);
            } else {
                b.setOnTextList({"On0", "On1", "On2"});
                b.setOffTextList({"Off0", "Off1", "Off2"});
            }
        }
        QCOMPARE(b.onText(), onText);
        QCOMPARE(b.offText(), offText);
    }

    void languageFonts_data()
    {
        QTest::addColumn<QList<int>>("recordFonts"); // point sizes of the On record's fonts
        QTest::addColumn<bool>("mapHasLanguage1");   // the caption font map holds 23 pt for language 1
        QTest::addColumn<int>("expected");           // point size after switching to language 1
        QTest::newRow("record font") << QList<int>{12, 13} << false << 13;
        QTest::newRow("short record list falls back to the map") << QList<int>{12} << true << 23;
        QTest::newRow("map only") << QList<int>{} << true << 23;
        QTest::newRow("neither keeps the font") << QList<int>{} << false << 11;
    }

    void languageFonts()
    {
        QFETCH(QList<int>, recordFonts);
        QFETCH(bool, mapHasLanguage1);
        QFETCH(int, expected);
        BitButton b;
        QMap<int, QFont> map{{2, sizedFont(31)}};
        if (mapHasLanguage1)
            map.insert(1, sizedFont(23));
        b.SetMapBuffer(fontMapBuffer(map));
        b.setFont(sizedFont(11));
        b.SetTextInfoBuffer(
            TextInfoCodec::encodeSlots({{record(-1, {"On0", "On1"}, recordFonts)}, {record(-1, {"Off0", "Off1"})}}));
        b.updateLanguage(1);
        QCOMPARE(b.onText(), QStringLiteral("On1"));
        QCOMPARE(b.font().pointSize(), expected);
    }

    void textInfoRoundTrip()
    {
        NORVOInterface_Z3::initialization()->setSystemLanguages({"Sans", "Serif"});
        const QList<QList<TextData>> records{{record(-1, {"An", "On"}, {12, 13}, 3, 4)},
                                             {record(-1, {"Aus", "Off"}, {14, 15})}};
        BitButton first;
        first.SetTextInfoBuffer(TextInfoCodec::encodeSlots(records));
        QCOMPARE(first.getOnTextList(), QStringList({"An", "On"}));
        QCOMPARE(first.getOffTextList(), QStringList({"Aus", "Off"}));
        QCOMPARE(first.font().pointSize(), 12);
        // New captions go into a new buffer that another button reads back unchanged.
        QList<QStringList> translated{{"Ein", "On!"}, {"Aus!", "Off!"}};
        first.setPluginTransText(translated);
        BitButton second;
        second.SetTextInfoBuffer(first.textInfoBuffer());
        QList<QList<TextData>> expected = records;
        expected[0][0].texts = translated.at(0);
        expected[1][0].texts = translated.at(1);
        QList<QList<TextData>> firstOut, secondOut;
        first.getPluginNameAndTransText(firstOut);
        second.getPluginNameAndTransText(secondOut);
        QCOMPARE(describe(firstOut), describe(expected));
        QCOMPARE(describe(secondOut), describe(expected));
        QCOMPARE(second.getOnTextList(), translated.at(0));
        QCOMPARE(second.getOffTextList(), translated.at(1));
        second.updateLanguage(1);
        QCOMPARE(second.onText(), QStringLiteral("On!"));
        QCOMPARE(second.font().pointSize(), 13);
    }

    void wordLibrary_data()
    {
        QTest::addColumn<int>("wordLibId");
        QTest::addColumn<QStringList>("libraryAtLoad");    // entry 5; empty: none
        QTest::addColumn<QStringList>("libraryAtRefresh"); // entry 5; empty: none
        QTest::addColumn<QStringList>("loaded");
        QTest::addColumn<QStringList>("refreshed");
        QTest::addColumn<QString>("caption");
        QTest::newRow("library texts replace the record's")
            << 5 << QStringList{"W0", "W1"} << QStringList{"N0", "N1"} << QStringList{"W0", "W1"}
            << QStringList{"N0", "N1"} << "N0";
        QTest::newRow("unknown id keeps the record's texts, refresh empties")
            << 5 << QStringList() << QStringList() << QStringList{"R0", "R1"} << QStringList() << "";
        QTest::newRow("entry removed later empties")
            << 5 << QStringList{"W0", "W1"} << QStringList() << QStringList{"W0", "W1"} << QStringList() << "";
        QTest::newRow("record without id is left alone")
            << -1 << QStringList{"W0", "W1"} << QStringList{"N0", "N1"} << QStringList{"R0", "R1"}
            << QStringList{"R0", "R1"} << "ON";
    }

    void wordLibrary()
    {
        QFETCH(int, wordLibId);
        QFETCH(QStringList, libraryAtLoad);
        QFETCH(QStringList, libraryAtRefresh);
        QFETCH(QStringList, loaded);
        QFETCH(QStringList, refreshed);
        QFETCH(QString, caption);
        NORVOInterface_Z3 *hmi = NORVOInterface_Z3::initialization();
        if (!libraryAtLoad.isEmpty())
            hmi->setWordLibraryEntry(5, libraryAtLoad);
        BitButton b;
        b.SetTextInfoBuffer(
            TextInfoCodec::encodeSlots({{record(wordLibId, {"R0", "R1"})}, {record(-1, {"Off0", "Off1"})}}));
        QCOMPARE(b.getOnTextList(), loaded);
        hmi->setWordLibrary({});
        if (!libraryAtRefresh.isEmpty())
            hmi->setWordLibraryEntry(5, libraryAtRefresh);
        b.upDatePluginTextfromWordLib();
        QCOMPARE(b.getOnTextList(), refreshed);
        QCOMPARE(b.onText(), caption);
        QCOMPARE(b.getOffTextList(), QStringList({"Off0", "Off1"}));
        QCOMPARE(b.offText(), QStringLiteral("OFF"));
    }

    void translatedTexts_data()
    {
        QTest::addColumn<bool>("designer");
        QTest::addColumn<bool>("withRecords");
        QTest::addColumn<QStringList>("hostLog");
        QTest::addColumn<QString>("property");
        const QStringList commit{"clearSelection", "select", "setUndoableProperty", "deselect"};
        QTest::newRow("run time, caption lists") << false << false << QStringList() << QString();
        QTest::newRow("run time, text records") << false << true << QStringList() << QString();
        QTest::newRow("designer, caption lists") << true << false << commit << "onTextList";
        QTest::newRow("designer, text records") << true << true << commit << "textInfoBuffer";
    }

    void translatedTexts()
    {
        QFETCH(bool, designer);
        QFETCH(bool, withRecords);
        QFETCH(QStringList, hostLog);
        QFETCH(QString, property);
        NORVOInterface_Z3::initialization()->setWordLibraryEntry(5, {"L0", "L1"});
        QWidget formWindow;
        std::unique_ptr<FakeDesignerHost> host(designer ? new FakeDesignerHost(&formWindow) : nullptr);
        auto *b = new BitButton(&formWindow);
        if (withRecords) {
            b->SetTextInfoBuffer(
                TextInfoCodec::encodeSlots({{record(-1, {"A0", "A1"}, {12})}, {record(5, {"B0", "B1"})}}));
        }
        if (host)
            host->log.clear();
        QList<QStringList> texts{{"T0", "T1"}, {"U0", "U1"}};
        b->setPluginTransText(texts);
        const QStringList expectedOff = withRecords ? QStringList{"L0", "L1"} : texts.at(1);
        QCOMPARE(b->getOnTextList(), texts.at(0));
        QCOMPARE(b->getOffTextList(), expectedOff);
        QCOMPARE(b->onText(), QStringLiteral("T0"));
        QCOMPARE(b->offText(), expectedOff.first());
        if (withRecords) {
            // The record with a word-library id is stored without texts.
            QList<QList<TextData>> stored;
            QVERIFY(TextInfoCodec::decodeSlots(b->textInfoBuffer(), &stored));
            const QList<QList<TextData>> expected{{record(-1, texts.at(0), {12})}, {record(5, {})}};
            QCOMPARE(describe(stored), describe(expected));
        } else {
            QCOMPARE(b->textInfoBuffer(), QByteArray());
        }
        if (!host)
            return;
        QCOMPARE(host->log, hostLog);
        QCOMPARE(int(host->changes.size()), 1);
        QCOMPARE(host->changes.first().widget, static_cast<QWidget *>(b));
        QCOMPARE(host->changes.first().name, property);
        QVERIFY(host->changes.first().undoable);
        QCOMPARE(host->changes.first().value, b->property(qPrintable(property)));
    }
};

QTEST_MAIN(TestBitButton)
#include "tst_bitbutton.moc"
