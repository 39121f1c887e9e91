// The platform layer seen by the widgets: the simulated controller (variable memory, registrations,
// coalesced deliveries, the current-channel marker, text formatting, the soft keypad), the recording
// stand-in the widget tests rely on, and the HMI settings singleton.

#include "hmiuiupdateinterface.h"
#include "keypaddialog.h"
#include "norvointerface_z3.h"
#include "recordingqeltapp.h"
#include "simulatedcontroller.h"
#include "updatevariableinterface.h"
#include "valueformatter.h"
#include "variablememory.h"

#include <QApplication>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QSignalSpy>
#include <QTimer>
#include <QtTest>

#include <functional>
#include <limits>
#include <memory>

using norvo_v0::QeltApp;

namespace {

constexpr int DeliveryTimeout = 10000;
constexpr int CurrentChannelWord = QeltApp::CurrentChannelAddress;

// Collects the values a callback receives: ints as int, texts as QString.
class CallbackLog : public norvo_v0::UpdateVariableInterface
{
public:
    void updateData(int index, int value) override
    {
        received.append(qMakePair(index, QVariant(value)));
        if (onUpdate)
            onUpdate(index);
    }
    void updateData(int index, const QString &text) override
    {
        received.append(qMakePair(index, QVariant(text)));
        if (onUpdate)
            onUpdate(index);
    }
    QVariantList values(int index) const
    {
        QVariantList out;
        for (const auto &r : received) {
            if (r.first == index)
                out.append(r.second);
        }
        return out;
    }
    int count() const { return int(received.size()); }

    QList<QPair<int, QVariant>> received;
    std::function<void(int)> onUpdate;
};

// A widget that watches variables the way the bound widgets do.
class Recorder : public QWidget, public CallbackLog
{
public:
    using QWidget::QWidget;
};

struct Write
{
    char kind; // 'b' bit, 'w' word
    int area;  // bit type or data class
    int address;
    int bitIndex;
    int value;
    int channel;
    int comId;
};

Write bitWrite(int bitType, int address, int bitIndex, bool value, int channel = 0, int comId = 0)
{
    return Write{'b', bitType, address, bitIndex, value ? 1 : 0, channel, comId};
}

Write wordWrite(int dataClass, int address, int value, int channel = 0, int comId = 0)
{
    return Write{'w', dataClass, address, 0, value, channel, comId};
}

void apply(QeltApp &app, const Write &w)
{
    if (w.kind == 'b')
        app.setBit(w.channel, QeltApp::BitType(w.area), w.address, w.bitIndex, w.value != 0, w.comId);
    else
        app.setData(w.channel, QeltApp::DataClass(w.area), w.address, w.value, w.comId);
}

void registerBit(QeltApp &app, QWidget *form, QWidget *widget, norvo_v0::UpdateVariableInterface *callback,
                 int index, int bitType, int address, int bitIndex, int channel = 0, int comId = 0)
{
    app.registerUIVariable(form, widget, callback, index, comId, channel, 0, address, bitType, bitIndex, 1, 10,
                           10, 0, 0, false);
}

void registerWord(QeltApp &app, QWidget *form, QWidget *widget, norvo_v0::UpdateVariableInterface *callback,
                  int index, int dataClass, int address, int channel = 0, int comId = 0)
{
    app.registerUIVariable(form, widget, callback, index, comId, channel, dataClass, address, -1, 0, 1, 10, 10,
                           0, 0, false);
}

// Lets every pending delivery happen, so that a following comparison sees the final state.
void settle(SimulatedController &sim)
{
    QCoreApplication::processEvents();
    sim.flushUpdates();
    QCoreApplication::processEvents();
}

KeypadDialog *openKeypad()
{
    if (auto *dialog = qobject_cast<KeypadDialog *>(QApplication::activeModalWidget()))
        return dialog;
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget *w : windows) {
        auto *dialog = qobject_cast<KeypadDialog *>(w);
        if (dialog && dialog->isVisible())
            return dialog;
    }
    return nullptr;
}

// Runs action on the keypad once showKeypad has it on screen (gives up after many event-loop turns,
// so that a keypad that never opens does not leave the check running into later tests).
void whenKeypadOpens(const std::function<void(KeypadDialog *)> &action, int turnsLeft = 100000)
{
    QTimer::singleShot(0, qApp, [action, turnsLeft] {
        if (KeypadDialog *dialog = openKeypad())
            action(dialog);
        else if (turnsLeft > 0)
            whenKeypadOpens(action, turnsLeft - 1);
    });
}

class TextInterface : public Hmi_v0::HMI_UiUpdateInterface
{
};

} // namespace

Q_DECLARE_METATYPE(Write)

class TestSimulatedController : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    // variable memory
    void wordBitsAreBitsOfTheirClassWords_data();
    void wordBitsAreBitsOfTheirClassWords();
    void bitIndexOutsideTheWordIsIgnored_data();
    void bitIndexOutsideTheWordIsIgnored();
    void variablesAreSeparate_data();
    void variablesAreSeparate();
    void unknownAreasHoldNothing_data();
    void unknownAreasHoldNothing();

    // outside access
    void outsideWritesAreSignalled_data();
    void outsideWritesAreSignalled();
    void currentChannelComesFromCommonWord_data();
    void currentChannelComesFromCommonWord();

    // registrations and deliveries
    void nothingIsDeliveredBeforeStart();
    void startDeliversCurrentValuesOnceThenChanges();
    void stopHoldsDeliveriesAndStartResumes();
    void updatesRunPerForm();
    void registrationOnRunningFormIsDelivered();
    void changesBetweenDeliveriesArriveOnce_data();
    void changesBetweenDeliveriesArriveOnce();
    void currentChannelRegistrationFollowsTheCurrentChannel_data();
    void currentChannelRegistrationFollowsTheCurrentChannel();
    void removeDropsOnlyThatWidgetOnThatForm();
    void destroyedWidgetGetsNoCallback();
    void destroyedFormDropsItsRegistrations();
    void callbackMayReRegisterDuringDelivery();
    void formAtAReusedAddressStartsStopped();
    void textRegistrationsGetFormattedText_data();
    void textRegistrationsGetFormattedText();

    // formatting
    void formatsValues_data();
    void formatsValues();

    // soft keypad
    void keypadChecksTheEntry_data();
    void keypadChecksTheEntry();
    void keypadOffersTheKeysOfItsRadix_data();
    void keypadOffersTheKeysOfItsRadix();
    void showKeypadReturnsTheConfirmedText_data();
    void showKeypadReturnsTheConfirmedText();

    // recording stand-in
    void recordingLogsEveryCallInOrder();
    void recordingDeliversToLiveRegistrations();

    // HMI settings
    void hmiInterfaceIsOneInstance();
    void systemLanguages_data();
    void systemLanguages();
    void currentLanguage_data();
    void currentLanguage();
    void wordLibrary();
    void channelCount_data();
    void channelCount();
    void authorityRefusalIsSignalled();
    void textInterfacesAreKept();
    void defaultWidgetFont();
};

void TestSimulatedController::init()
{
    NORVOInterface_Z3::initialization()->resetToDefaults();
}

// ---------------------------------------------------------------------------------------------------------
// variable memory

void TestSimulatedController::wordBitsAreBitsOfTheirClassWords_data()
{
    QTest::addColumn<int>("initialWord");
    QTest::addColumn<int>("bitType");
    QTest::addColumn<int>("bitIndex");
    QTest::addColumn<bool>("value");
    QTest::addColumn<bool>("changed");
    QTest::addColumn<int>("expectedWord");

    QTest::newRow("User bit 3 set") << 0 << int(QeltApp::User_BIT) << 3 << true << true << 8;
    QTest::newRow("Mcm bit 0 set") << 0 << int(QeltApp::Mcm_BIT) << 0 << true << true << 1;
    QTest::newRow("Sys bit 15 set") << 0x10 << int(QeltApp::Sys_BIT) << 15 << true << true << 0x8010;
    QTest::newRow("Reg bit 3 cleared") << 0xff << int(QeltApp::Reg_BIT) << 3 << false << true << 0xf7;
    QTest::newRow("Bus bit 31 set") << 0 << int(QeltApp::Bus_BIT) << 31 << true << true
                                    << std::numeric_limits<int>::min();
    QTest::newRow("Com bit 31 cleared") << -1 << int(QeltApp::Com_BIT) << 31 << false << true
                                        << std::numeric_limits<int>::max();
    QTest::newRow("already set") << 8 << int(QeltApp::User_BIT) << 3 << true << false << 8;
    QTest::newRow("already clear") << 0 << int(QeltApp::User_BIT) << 3 << false << false << 0;
}

void TestSimulatedController::wordBitsAreBitsOfTheirClassWords()
{
    QFETCH(int, initialWord);
    QFETCH(int, bitType);
    QFETCH(int, bitIndex);
    QFETCH(bool, value);
    QFETCH(bool, changed);
    QFETCH(int, expectedWord);

    const int dataClass = bitType - 7;
    VariableMemory memory;
    memory.setWord(0, 0, dataClass, 5, initialWord);
    QCOMPARE(memory.setBit(0, 0, bitType, 5, bitIndex, value), changed);
    QCOMPARE(memory.word(0, 0, dataClass, 5), expectedWord);
    QCOMPARE(memory.bit(0, 0, bitType, 5, bitIndex), value);
    // The neighbouring words and the other classes' word 5 stay untouched.
    QCOMPARE(memory.word(0, 0, dataClass, 4), 0);
    QCOMPARE(memory.word(0, 0, dataClass, 6), 0);
    for (int other = 0; other <= 5; ++other) {
        if (other != dataClass)
            QCOMPARE(memory.word(0, 0, other, 5), 0);
    }
}

void TestSimulatedController::bitIndexOutsideTheWordIsIgnored_data()
{
    QTest::addColumn<int>("bitType");
    QTest::addColumn<int>("bitIndex");

    QTest::newRow("User -1") << int(QeltApp::User_BIT) << -1;
    QTest::newRow("User 32") << int(QeltApp::User_BIT) << 32;
    QTest::newRow("Com 33") << int(QeltApp::Com_BIT) << 33;
    QTest::newRow("Sys 64") << int(QeltApp::Sys_BIT) << 64;
    QTest::newRow("Reg min int") << int(QeltApp::Reg_BIT) << std::numeric_limits<int>::min();
}

void TestSimulatedController::bitIndexOutsideTheWordIsIgnored()
{
    QFETCH(int, bitType);
    QFETCH(int, bitIndex);

    const int dataClass = bitType - 7;
    VariableMemory memory;
    QVERIFY(!memory.setBit(0, 0, bitType, 5, bitIndex, true));
    QCOMPARE(memory.word(0, 0, dataClass, 5), 0);

    // A full word does not make the out-of-range bit read as set either.
    memory.setWord(0, 0, dataClass, 5, -1);
    QVERIFY(!memory.bit(0, 0, bitType, 5, bitIndex));
    QVERIFY(!memory.setBit(0, 0, bitType, 5, bitIndex, false));
    QCOMPARE(memory.word(0, 0, dataClass, 5), -1);

    SimulatedController sim;
    QSignalSpy bits(&sim, &SimulatedController::bitChanged);
    QSignalSpy words(&sim, &SimulatedController::dataChanged);
    sim.setBit(0, QeltApp::BitType(bitType), 5, bitIndex, true, 0);
    QCOMPARE(sim.getData(0, QeltApp::DataClass(dataClass), 5, 0), 0);
    QCOMPARE(bits.count(), 0);
    QCOMPARE(words.count(), 0);
}

void TestSimulatedController::variablesAreSeparate_data()
{
    QTest::addColumn<Write>("write");
    QTest::addColumn<Write>("read");
    QTest::addColumn<int>("expected");

    // PLC areas hold bits of their own.
    QTest::newRow("PLC bit, same address") << bitWrite(QeltApp::I_BIT, 5, 0, true)
                                           << bitWrite(QeltApp::I_BIT, 5, 0, false) << 1;
    QTest::newRow("PLC I vs O") << bitWrite(QeltApp::I_BIT, 5, 0, true) << bitWrite(QeltApp::O_BIT, 5, 0, false)
                                << 0;
    QTest::newRow("PLC Tm vs Cn") << bitWrite(QeltApp::Tm_BIT, 9, 0, true)
                                  << bitWrite(QeltApp::Cn_BIT, 9, 0, false) << 0;
    QTest::newRow("PLC bit vs User word") << bitWrite(QeltApp::I_BIT, 5, 0, true) << wordWrite(QeltApp::User, 5, 0)
                                          << 0;
    QTest::newRow("PLC bit vs User bit 0") << bitWrite(QeltApp::I_BIT, 5, 0, true)
                                           << bitWrite(QeltApp::User_BIT, 5, 0, false) << 0;
    QTest::newRow("PLC bit, other address") << bitWrite(QeltApp::S_BIT, 5, 0, true)
                                            << bitWrite(QeltApp::S_BIT, 6, 0, false) << 0;
    // Word bits and words of the matching class are one variable.
    QTest::newRow("User bit in User word") << bitWrite(QeltApp::User_BIT, 5, 3, true)
                                           << wordWrite(QeltApp::User, 5, 0) << 8;
    QTest::newRow("Com word through Com bit") << wordWrite(QeltApp::Com, 7, 0x20)
                                              << bitWrite(QeltApp::Com_BIT, 7, 5, false) << 1;
    QTest::newRow("User vs Mcm word") << wordWrite(QeltApp::User, 5, 42) << wordWrite(QeltApp::Mcm, 5, 0) << 0;
    QTest::newRow("Mcm bit vs User word") << bitWrite(QeltApp::Mcm_BIT, 5, 3, true)
                                          << wordWrite(QeltApp::User, 5, 0) << 0;
    // Channels and links.
    QTest::newRow("word, other channel") << wordWrite(QeltApp::User, 5, 42, 1) << wordWrite(QeltApp::User, 5, 0, 2)
                                         << 0;
    QTest::newRow("word, same channel") << wordWrite(QeltApp::User, 5, 42, 2) << wordWrite(QeltApp::User, 5, 0, 2)
                                        << 42;
    QTest::newRow("word, other link") << wordWrite(QeltApp::User, 5, 42, 0, 1) << wordWrite(QeltApp::User, 5, 0, 0, 2)
                                      << 0;
    QTest::newRow("word, same link") << wordWrite(QeltApp::User, 5, 42, 0, 3) << wordWrite(QeltApp::User, 5, 0, 0, 3)
                                     << 42;
    QTest::newRow("PLC bit, other channel") << bitWrite(QeltApp::A_BIT, 5, 0, true, 0)
                                            << bitWrite(QeltApp::A_BIT, 5, 0, false, 1) << 0;
    QTest::newRow("PLC bit, other link") << bitWrite(QeltApp::C_BIT, 5, 0, true, 0, 0)
                                         << bitWrite(QeltApp::C_BIT, 5, 0, false, 0, 1) << 0;
    QTest::newRow("word bit, other link") << bitWrite(QeltApp::Reg_BIT, 5, 2, true, 0, 1)
                                          << wordWrite(QeltApp::Reg, 5, 0, 0, 0) << 0;
}

void TestSimulatedController::variablesAreSeparate()
{
    QFETCH(Write, write);
    QFETCH(Write, read);
    QFETCH(int, expected);

    SimulatedController sim;
    apply(sim, write);
    const int value = read.kind == 'b'
                          ? int(sim.getBit(read.channel, read.area, read.address, read.bitIndex, read.comId))
                          : sim.getData(read.channel, QeltApp::DataClass(read.area), read.address, read.comId);
    QCOMPARE(value, expected);
}

void TestSimulatedController::unknownAreasHoldNothing_data()
{
    QTest::addColumn<char>("kind");
    QTest::addColumn<int>("area");

    QTest::newRow("data class -1") << 'w' << -1;
    QTest::newRow("data class 6") << 'w' << 6;
    QTest::newRow("bit type -1") << 'b' << -1;
    QTest::newRow("bit type 13") << 'b' << 13;
}

void TestSimulatedController::unknownAreasHoldNothing()
{
    QFETCH(char, kind);
    QFETCH(int, area);

    VariableMemory memory;
    if (kind == 'w') {
        QVERIFY(!memory.setWord(0, 0, area, 5, 42));
        QCOMPARE(memory.word(0, 0, area, 5), 0);
    } else {
        QVERIFY(!memory.setBit(0, 0, area, 5, 0, true));
        QVERIFY(!memory.bit(0, 0, area, 5, 0));
    }
    for (int dataClass = 0; dataClass <= 5; ++dataClass)
        QCOMPARE(memory.word(0, 0, dataClass, 5), 0);
}

// ---------------------------------------------------------------------------------------------------------
// outside access

void TestSimulatedController::outsideWritesAreSignalled_data()
{
    QTest::addColumn<int>("currentChannel"); // the 1-based current channel word
    QTest::addColumn<QList<Write>>("writes");
    QTest::addColumn<QVariantList>("bitSignals");  // one QVariantList of arguments per signal
    QTest::addColumn<QVariantList>("dataSignals");

    QTest::newRow("PLC bit")
        << 1 << QList<Write>{bitWrite(QeltApp::O_BIT, 12, 0, true, 1, 2)}
        << QVariantList{QVariant(QVariantList{2, 1, int(QeltApp::O_BIT), 12, 0, true})} << QVariantList{};
    QTest::newRow("word bit")
        << 1 << QList<Write>{bitWrite(QeltApp::User_BIT, 5, 3, true)}
        << QVariantList{QVariant(QVariantList{0, 0, int(QeltApp::User_BIT), 5, 3, true})} << QVariantList{};
    QTest::newRow("word") << 1 << QList<Write>{wordWrite(QeltApp::Sys, 100, -7, 3, 1)} << QVariantList{}
                          << QVariantList{QVariant(QVariantList{1, 3, int(QeltApp::Sys), 100, -7})};
    QTest::newRow("unchanged word") << 1
                                    << QList<Write>{wordWrite(QeltApp::User, 5, 9), wordWrite(QeltApp::User, 5, 9)}
                                    << QVariantList{}
                                    << QVariantList{QVariant(QVariantList{0, 0, int(QeltApp::User), 5, 9})};
    QTest::newRow("bit set, set again, cleared")
        << 1
        << QList<Write>{bitWrite(QeltApp::I_BIT, 1, 0, true), bitWrite(QeltApp::I_BIT, 1, 0, true),
                        bitWrite(QeltApp::I_BIT, 1, 0, false)}
        << QVariantList{QVariant(QVariantList{0, 0, int(QeltApp::I_BIT), 1, 0, true}),
                        QVariant(QVariantList{0, 0, int(QeltApp::I_BIT), 1, 0, false})}
        << QVariantList{};
    QTest::newRow("writing zero to a fresh word") << 1 << QList<Write>{wordWrite(QeltApp::User, 5, 0)}
                                                  << QVariantList{} << QVariantList{};
    QTest::newRow("current channel marker, word")
        << 3 << QList<Write>{wordWrite(QeltApp::Bus, 8, 77, QeltApp::CurrentChannel)} << QVariantList{}
        << QVariantList{QVariant(QVariantList{0, 2, int(QeltApp::Bus), 8, 77})};
    QTest::newRow("current channel marker, bit")
        << 2 << QList<Write>{bitWrite(QeltApp::C_BIT, 8, 0, true, QeltApp::CurrentChannel)}
        << QVariantList{QVariant(QVariantList{0, 1, int(QeltApp::C_BIT), 8, 0, true})} << QVariantList{};
}

void TestSimulatedController::outsideWritesAreSignalled()
{
    QFETCH(int, currentChannel);
    QFETCH(QList<Write>, writes);
    QFETCH(QVariantList, bitSignals);
    QFETCH(QVariantList, dataSignals);

    SimulatedController sim;
    sim.setData(0, QeltApp::Com, CurrentChannelWord, currentChannel, 0);
    QSignalSpy bits(&sim, &SimulatedController::bitChanged);
    QSignalSpy words(&sim, &SimulatedController::dataChanged);
    for (const Write &w : writes)
        apply(sim, w);

    QCOMPARE(bits.count(), int(bitSignals.size()));
    for (int i = 0; i < bits.count(); ++i)
        QCOMPARE(bits.at(i), bitSignals.at(i).toList());
    QCOMPARE(words.count(), int(dataSignals.size()));
    for (int i = 0; i < words.count(); ++i)
        QCOMPARE(words.at(i), dataSignals.at(i).toList());
}

void TestSimulatedController::currentChannelComesFromCommonWord_data()
{
    QTest::addColumn<QList<Write>>("writes");
    QTest::addColumn<int>("resolved");

    QTest::newRow("panel starts on channel 1") << QList<Write>{} << 0;
    QTest::newRow("channel 3") << QList<Write>{wordWrite(QeltApp::Com, CurrentChannelWord, 3)} << 2;
    QTest::newRow("0 gives 0") << QList<Write>{wordWrite(QeltApp::Com, CurrentChannelWord, 0)} << 0;
    QTest::newRow("negative gives 0") << QList<Write>{wordWrite(QeltApp::Com, CurrentChannelWord, -5)} << 0;
    QTest::newRow("smallest int gives 0")
        << QList<Write>{wordWrite(QeltApp::Com, CurrentChannelWord, std::numeric_limits<int>::min())} << 0;
    QTest::newRow("through its bits") << QList<Write>{bitWrite(QeltApp::Com_BIT, CurrentChannelWord, 2, true)}
                                      << 4; // 1 | 4 = 5
    QTest::newRow("word of channel 2 does not count")
        << QList<Write>{wordWrite(QeltApp::Com, CurrentChannelWord, 4, 1)} << 0;
    QTest::newRow("word of link 1 does not count")
        << QList<Write>{wordWrite(QeltApp::Com, CurrentChannelWord, 4, 0, 1)} << 0;
    QTest::newRow("User word of that address does not count")
        << QList<Write>{wordWrite(QeltApp::User, CurrentChannelWord, 4)} << 0;
    QTest::newRow("latest value counts") << QList<Write>{wordWrite(QeltApp::Com, CurrentChannelWord, 4),
                                                         wordWrite(QeltApp::Com, CurrentChannelWord, 2)}
                                         << 1;
}

void TestSimulatedController::currentChannelComesFromCommonWord()
{
    QFETCH(QList<Write>, writes);
    QFETCH(int, resolved);

    SimulatedController sim;
    for (const Write &w : writes)
        apply(sim, w);
    QCOMPARE(sim.resolveChannel(QeltApp::CurrentChannel), resolved);

    // Reads and writes with the marker go to that channel; explicit channels are left alone.
    for (int channel = 0; channel < 6; ++channel)
        sim.setData(channel, QeltApp::Mcm, 3, 100 + channel, 0);
    QCOMPARE(sim.getData(QeltApp::CurrentChannel, QeltApp::Mcm, 3, 0), 100 + resolved);
    sim.setBit(QeltApp::CurrentChannel, QeltApp::A_BIT, 3, 0, true, 0);
    QVERIFY(sim.getBit(resolved, QeltApp::A_BIT, 3, 0, 0));
    QVERIFY(sim.getBit(QeltApp::CurrentChannel, QeltApp::A_BIT, 3, 0, 0));
    QVERIFY(!sim.getBit(resolved + 1, QeltApp::A_BIT, 3, 0, 0));
    sim.setData(QeltApp::CurrentChannel, QeltApp::Reg, 3, 55, 0);
    QCOMPARE(sim.getData(resolved, QeltApp::Reg, 3, 0), 55);
    QCOMPARE(sim.getData(resolved + 1, QeltApp::Reg, 3, 0), 0);
}

// ---------------------------------------------------------------------------------------------------------
// registrations and deliveries

void TestSimulatedController::nothingIsDeliveredBeforeStart()
{
    SimulatedController sim;
    QWidget form;
    auto *w = new Recorder(&form);
    sim.setData(0, QeltApp::User, 5, 8, 0);
    registerWord(sim, &form, w, w, 0, QeltApp::User, 5);
    registerBit(sim, &form, w, w, 1, QeltApp::User_BIT, 5, 3);
    QCOMPARE(sim.registrationCount(&form), 2);

    sim.setData(0, QeltApp::User, 5, 9, 0);
    settle(sim);
    QCOMPARE(w->count(), 0);
    QVERIFY(!sim.isUpdating(&form));
}

void TestSimulatedController::startDeliversCurrentValuesOnceThenChanges()
{
    SimulatedController sim;
    QWidget form;
    auto *w = new Recorder(&form);
    sim.setData(0, QeltApp::User, 5, 8, 0);
    sim.setBit(0, QeltApp::I_BIT, 2, 0, true, 0);
    registerWord(sim, &form, w, w, 0, QeltApp::User, 5);
    registerBit(sim, &form, w, w, 1, QeltApp::User_BIT, 5, 3);
    registerBit(sim, &form, w, w, 2, QeltApp::User_BIT, 5, 4);
    registerBit(sim, &form, w, w, 3, QeltApp::I_BIT, 2, 0);
    registerWord(sim, &form, w, w, 4, QeltApp::User, 6); // zero: still delivered once

    sim.startUpdateUI(&form);
    QVERIFY(sim.isUpdating(&form));
    QTRY_COMPARE_WITH_TIMEOUT(w->count(), 5, DeliveryTimeout);
    settle(sim);
    QCOMPARE(w->count(), 5);
    QCOMPARE(w->values(0), QVariantList{8});
    QCOMPARE(w->values(1), QVariantList{1});
    QCOMPARE(w->values(2), QVariantList{0});
    QCOMPARE(w->values(3), QVariantList{1});
    QCOMPARE(w->values(4), QVariantList{0});

    // A change reaches exactly the registrations whose value it changes.
    w->received.clear();
    sim.setData(0, QeltApp::User, 5, 16, 0);
    QTRY_COMPARE_WITH_TIMEOUT(w->count(), 3, DeliveryTimeout);
    settle(sim);
    QCOMPARE(w->count(), 3);
    QCOMPARE(w->values(0), QVariantList{16});
    QCOMPARE(w->values(1), QVariantList{0});
    QCOMPARE(w->values(2), QVariantList{1});

    // Writes elsewhere reach nobody.
    w->received.clear();
    sim.setData(0, QeltApp::User, 7, 1, 0);
    sim.setData(1, QeltApp::User, 5, 1, 0);
    sim.setData(0, QeltApp::User, 5, 1, 1);
    sim.setBit(0, QeltApp::I_BIT, 3, 0, true, 0);
    sim.setBit(0, QeltApp::O_BIT, 2, 0, true, 0);
    settle(sim);
    QCOMPARE(w->count(), 0);
}

void TestSimulatedController::stopHoldsDeliveriesAndStartResumes()
{
    SimulatedController sim;
    QWidget form;
    auto *w = new Recorder(&form);
    sim.setData(0, QeltApp::User, 5, 1, 0);
    registerWord(sim, &form, w, w, 0, QeltApp::User, 5);
    registerWord(sim, &form, w, w, 1, QeltApp::User, 6);
    sim.startUpdateUI(&form);
    QTRY_COMPARE_WITH_TIMEOUT(w->count(), 2, DeliveryTimeout);

    sim.stopUpdateUI();
    QVERIFY(!sim.isUpdating(&form));
    w->received.clear();
    sim.setData(0, QeltApp::User, 5, 2, 0);
    sim.setData(0, QeltApp::User, 5, 3, 0);
    settle(sim);
    QCOMPARE(w->count(), 0);

    // Restarting hands every registration its current value once more.
    sim.startUpdateUI(&form);
    QTRY_COMPARE_WITH_TIMEOUT(w->count(), 2, DeliveryTimeout);
    settle(sim);
    QCOMPARE(w->values(0), QVariantList{3});
    QCOMPARE(w->values(1), QVariantList{0});

    w->received.clear();
    sim.setData(0, QeltApp::User, 6, 4, 0);
    QTRY_COMPARE_WITH_TIMEOUT(w->count(), 1, DeliveryTimeout);
    QCOMPARE(w->values(1), QVariantList{4});
}

void TestSimulatedController::updatesRunPerForm()
{
    SimulatedController sim;
    QWidget formA, formB;
    auto *a = new Recorder(&formA);
    auto *b = new Recorder(&formB);
    sim.setData(0, QeltApp::User, 5, 7, 0);
    registerWord(sim, &formA, a, a, 0, QeltApp::User, 5);
    registerWord(sim, &formB, b, b, 0, QeltApp::User, 5);

    sim.startUpdateUI(&formA);
    QTRY_COMPARE_WITH_TIMEOUT(a->count(), 1, DeliveryTimeout);
    sim.setData(0, QeltApp::User, 5, 8, 0);
    QTRY_COMPARE_WITH_TIMEOUT(a->count(), 2, DeliveryTimeout);
    settle(sim);
    QCOMPARE(b->count(), 0);
    QVERIFY(!sim.isUpdating(&formB));

    sim.startUpdateUI(&formB);
    QTRY_COMPARE_WITH_TIMEOUT(b->count(), 1, DeliveryTimeout);
    settle(sim);
    QCOMPARE(b->values(0), QVariantList{8});
    QCOMPARE(a->values(0), (QVariantList{7, 8}));

    sim.setData(0, QeltApp::User, 5, 9, 0);
    QTRY_COMPARE_WITH_TIMEOUT(a->count(), 3, DeliveryTimeout);
    QTRY_COMPARE_WITH_TIMEOUT(b->count(), 2, DeliveryTimeout);

    // A widget on form B changes its address (stop, ..., start B): form A must not stay frozen.
    sim.stopUpdateUI();
    sim.startUpdateUI(&formB);
    QTRY_COMPARE_WITH_TIMEOUT(b->count(), 3, DeliveryTimeout);
    sim.setData(0, QeltApp::User, 5, 10, 0);
    QTRY_COMPARE_WITH_TIMEOUT(a->count(), 4, DeliveryTimeout);
    QCOMPARE(a->values(0).last(), QVariant(10));
}

void TestSimulatedController::registrationOnRunningFormIsDelivered()
{
    SimulatedController sim;
    QWidget form;
    auto *w = new Recorder(&form);
    sim.startUpdateUI(&form);
    settle(sim);

    sim.setData(0, QeltApp::Bus, 2, 12, 0);
    registerWord(sim, &form, w, w, 3, QeltApp::Bus, 2);
    QTRY_COMPARE_WITH_TIMEOUT(w->count(), 1, DeliveryTimeout);
    settle(sim);
    QCOMPARE(w->values(3), QVariantList{12});
}

void TestSimulatedController::changesBetweenDeliveriesArriveOnce_data()
{
    QTest::addColumn<char>("kind");
    QTest::addColumn<int>("area");
    QTest::addColumn<int>("bitIndex");
    QTest::addColumn<QList<Write>>("writes");
    QTest::addColumn<QVariantList>("expected");

    QTest::newRow("three word writes")
        << 'w' << int(QeltApp::User) << 0
        << QList<Write>{wordWrite(QeltApp::User, 5, 1), wordWrite(QeltApp::User, 5, 2), wordWrite(QeltApp::User, 5, 3)}
        << QVariantList{3};
    QTest::newRow("bits of the watched word")
        << 'w' << int(QeltApp::User) << 0
        << QList<Write>{bitWrite(QeltApp::User_BIT, 5, 0, true), bitWrite(QeltApp::User_BIT, 5, 1, true),
                        bitWrite(QeltApp::User_BIT, 5, 2, true)}
        << QVariantList{7};
    QTest::newRow("word bit off, on, off")
        << 'b' << int(QeltApp::User_BIT) << 3
        << QList<Write>{bitWrite(QeltApp::User_BIT, 5, 3, true), bitWrite(QeltApp::User_BIT, 5, 3, false),
                        bitWrite(QeltApp::User_BIT, 5, 3, true)}
        << QVariantList{1};
    QTest::newRow("word bit through its word")
        << 'b' << int(QeltApp::User_BIT) << 3
        << QList<Write>{wordWrite(QeltApp::User, 5, 1), wordWrite(QeltApp::User, 5, 8),
                        wordWrite(QeltApp::User, 5, 9)}
        << QVariantList{1};
    QTest::newRow("PLC bit on, off, on")
        << 'b' << int(QeltApp::I_BIT) << 0
        << QList<Write>{bitWrite(QeltApp::I_BIT, 5, 0, true), bitWrite(QeltApp::I_BIT, 5, 0, false),
                        bitWrite(QeltApp::I_BIT, 5, 0, true)}
        << QVariantList{1};
    QTest::newRow("other bits of the word leave the watched bit")
        << 'b' << int(QeltApp::User_BIT) << 3
        << QList<Write>{bitWrite(QeltApp::User_BIT, 5, 0, true), bitWrite(QeltApp::User_BIT, 5, 4, true)}
        << QVariantList{};
}

void TestSimulatedController::changesBetweenDeliveriesArriveOnce()
{
    QFETCH(char, kind);
    QFETCH(int, area);
    QFETCH(int, bitIndex);
    QFETCH(QList<Write>, writes);
    QFETCH(QVariantList, expected);

    SimulatedController sim;
    QWidget form;
    auto *w = new Recorder(&form);
    auto *probe = new Recorder(&form); // a second watcher proves the writes were delivered at all
    if (kind == 'w')
        registerWord(sim, &form, w, w, 0, area, 5);
    else
        registerBit(sim, &form, w, w, 0, area, 5, bitIndex);
    registerWord(sim, &form, probe, probe, 0, QeltApp::Sys, 99);
    sim.startUpdateUI(&form);
    QTRY_COMPARE_WITH_TIMEOUT(w->count(), 1, DeliveryTimeout);
    QTRY_COMPARE_WITH_TIMEOUT(probe->count(), 1, DeliveryTimeout);
    w->received.clear();

    for (const Write &write : writes)
        apply(sim, write);
    sim.setData(0, QeltApp::Sys, 99, 1, 0);
    QTRY_COMPARE_WITH_TIMEOUT(probe->count(), 2, DeliveryTimeout);
    settle(sim);
    QCOMPARE(w->values(0), expected);
}

void TestSimulatedController::currentChannelRegistrationFollowsTheCurrentChannel_data()
{
    QTest::addColumn<char>("kind");
    QTest::newRow("word") << 'w';
    QTest::newRow("word bit") << 'b';
}

void TestSimulatedController::currentChannelRegistrationFollowsTheCurrentChannel()
{
    QFETCH(char, kind);

    // Channel c holds 10 + c in Reg word 7, so bit 0 of it is set on odd channels.
    SimulatedController sim;
    for (int channel = 0; channel < 4; ++channel)
        sim.setData(channel, QeltApp::Reg, 7, 10 + channel, 0);
    auto expect = [kind](int channel) { return kind == 'w' ? 10 + channel : (10 + channel) & 1; };

    QWidget form;
    auto *w = new Recorder(&form);
    if (kind == 'w')
        registerWord(sim, &form, w, w, 0, QeltApp::Reg, 7, QeltApp::CurrentChannel);
    else
        registerBit(sim, &form, w, w, 0, QeltApp::Reg_BIT, 7, 0, QeltApp::CurrentChannel);
    sim.startUpdateUI(&form);
    QTRY_COMPARE_WITH_TIMEOUT(w->count(), 1, DeliveryTimeout);
    QCOMPARE(w->values(0), QVariantList{expect(0)});

    // The operator switches to channel 2: the registration now shows channel index 1.
    sim.setData(0, QeltApp::Com, CurrentChannelWord, 2, 0);
    QTRY_COMPARE_WITH_TIMEOUT(w->count(), 2, DeliveryTimeout);
    QCOMPARE(w->values(0).last(), QVariant(expect(1)));

    // Changes on the current channel arrive; changes on the previous one do not.
    w->received.clear();
    sim.setData(0, QeltApp::Reg, 7, 21, 0);
    settle(sim);
    QCOMPARE(w->count(), 0);
    sim.setData(1, QeltApp::Reg, 7, 22, 0);
    QTRY_COMPARE_WITH_TIMEOUT(w->count(), 1, DeliveryTimeout);
    QCOMPARE(w->values(0), QVariantList{kind == 'w' ? 22 : 0});

    // A current-channel word of 0 still means the first channel.
    sim.setData(0, QeltApp::Com, CurrentChannelWord, 0, 0);
    QTRY_COMPARE_WITH_TIMEOUT(w->count(), 2, DeliveryTimeout);
    settle(sim);
    QCOMPARE(w->values(0), (QVariantList{kind == 'w' ? 22 : 0, kind == 'w' ? 21 : 1}));
}

void TestSimulatedController::removeDropsOnlyThatWidgetOnThatForm()
{
    SimulatedController sim;
    QWidget formA, formB;
    auto *w1 = new Recorder(&formA);
    auto *w2 = new Recorder(&formA);
    registerWord(sim, &formA, w1, w1, 0, QeltApp::User, 1);
    registerBit(sim, &formA, w1, w1, 1, QeltApp::User_BIT, 1, 0);
    registerWord(sim, &formA, w2, w2, 0, QeltApp::User, 1);
    registerWord(sim, &formB, w1, w1, 7, QeltApp::User, 1); // the same widget also watches on another form
    QCOMPARE(sim.registrationCount(&formA), 3);
    QCOMPARE(sim.registrationCount(&formB), 1);

    sim.removeUIVariable(&formA, w1);
    QCOMPARE(sim.registrationCount(&formA), 1);
    QCOMPARE(sim.registrationCount(&formB), 1);
    QCOMPARE(sim.registrationCount(), 2);

    sim.startUpdateUI(&formA);
    sim.startUpdateUI(&formB);
    QTRY_COMPARE_WITH_TIMEOUT(w2->count(), 1, DeliveryTimeout);
    QTRY_COMPARE_WITH_TIMEOUT(w1->count(), 1, DeliveryTimeout);
    sim.setData(0, QeltApp::User, 1, 5, 0);
    QTRY_COMPARE_WITH_TIMEOUT(w2->count(), 2, DeliveryTimeout);
    settle(sim);
    QCOMPARE(w1->received.size(), 2);
    QCOMPARE(w1->values(7), (QVariantList{0, 5}));
    QCOMPARE(w1->values(0), QVariantList{});
    QCOMPARE(w1->values(1), QVariantList{});

    // Removing what is not there is harmless.
    sim.removeUIVariable(&formA, w1);
    sim.removeUIVariable(nullptr, nullptr);
    QCOMPARE(sim.registrationCount(), 2);
}

void TestSimulatedController::destroyedWidgetGetsNoCallback()
{
    // The callback object outlives the widget, so a delivery after the widget's death would show up.
    SimulatedController sim;
    QWidget form;
    CallbackLog callback;
    auto *widget = new QWidget(&form);
    auto *survivor = new Recorder(&form);
    registerWord(sim, &form, widget, &callback, 0, QeltApp::User, 1);
    registerWord(sim, &form, survivor, survivor, 0, QeltApp::User, 1);
    sim.startUpdateUI(&form);
    QTRY_COMPARE_WITH_TIMEOUT(callback.count(), 1, DeliveryTimeout);

    sim.setData(0, QeltApp::User, 1, 3, 0);
    delete widget;
    QTRY_COMPARE_WITH_TIMEOUT(survivor->count(), 2, DeliveryTimeout);
    sim.setData(0, QeltApp::User, 1, 4, 0);
    QTRY_COMPARE_WITH_TIMEOUT(survivor->count(), 3, DeliveryTimeout);
    sim.startUpdateUI(&form);
    QTRY_COMPARE_WITH_TIMEOUT(survivor->count(), 4, DeliveryTimeout);
    settle(sim);
    QCOMPARE(callback.count(), 1);
}

void TestSimulatedController::destroyedFormDropsItsRegistrations()
{
    SimulatedController sim;
    CallbackLog callback;
    auto *form = new QWidget;
    auto *widget = new QWidget(form);
    QWidget otherForm;
    auto *other = new Recorder(&otherForm);
    registerWord(sim, form, widget, &callback, 0, QeltApp::User, 1);
    registerBit(sim, form, widget, &callback, 1, QeltApp::User_BIT, 1, 0);
    registerWord(sim, &otherForm, other, other, 0, QeltApp::User, 1);
    sim.startUpdateUI(form);
    sim.startUpdateUI(&otherForm);
    QTRY_COMPARE_WITH_TIMEOUT(callback.count(), 2, DeliveryTimeout);
    QTRY_COMPARE_WITH_TIMEOUT(other->count(), 1, DeliveryTimeout);

    delete form;
    QCOMPARE(sim.registrationCount(), 1);
    QCOMPARE(sim.registrationCount(&otherForm), 1);
    sim.setData(0, QeltApp::User, 1, 1, 0);
    QTRY_COMPARE_WITH_TIMEOUT(other->count(), 2, DeliveryTimeout);
    settle(sim);
    QCOMPARE(callback.count(), 2);
}

void TestSimulatedController::formAtAReusedAddressStartsStopped()
{
    // A form that was started and closed must not leave a later form, which the allocator may place at
    // the same address, running before the application starts it.
    SimulatedController sim;
    auto *closed = new QWidget;
    sim.startUpdateUI(closed);
    settle(sim);
    const quintptr oldAddress = quintptr(closed);
    delete closed;

    auto form = std::make_unique<QWidget>();
    if (quintptr(form.get()) != oldAddress)
        QSKIP("the new form did not reuse the closed form's address");
    auto *w = new Recorder(form.get());
    registerWord(sim, form.get(), w, w, 0, QeltApp::User, 1);
    sim.setData(0, QeltApp::User, 1, 5, 0);
    settle(sim);
    QVERIFY(!sim.isUpdating(form.get()));
    QCOMPARE(w->count(), 0);
}

void TestSimulatedController::callbackMayReRegisterDuringDelivery()
{
    // A widget that changes its address from inside updateData, as an address slot does, and while
    // doing so drops a neighbour whose delivery is still due in the same round.
    SimulatedController sim;
    QWidget form;
    auto *a = new Recorder(&form);
    auto *b = new Recorder(&form);
    sim.setData(0, QeltApp::User, 1, 11, 0);
    sim.setData(0, QeltApp::User, 2, 22, 0);
    sim.setData(0, QeltApp::User, 3, 33, 0);
    registerWord(sim, &form, a, a, 0, QeltApp::User, 1);
    registerWord(sim, &form, b, b, 0, QeltApp::User, 2);
    bool moved = false;
    a->onUpdate = [&](int) {
        if (moved)
            return;
        moved = true;
        sim.removeUIVariable(&form, b);
        sim.stopUpdateUI();
        sim.removeUIVariable(&form, a);
        registerWord(sim, &form, a, a, 5, QeltApp::User, 3);
        sim.startUpdateUI(&form);
    };

    sim.startUpdateUI(&form);
    QTRY_COMPARE_WITH_TIMEOUT(a->count(), 2, DeliveryTimeout);
    settle(sim);
    QCOMPARE(a->values(0), QVariantList{11});
    QCOMPARE(a->values(5), QVariantList{33});
    QCOMPARE(b->count(), 0);
    QCOMPARE(sim.registrationCount(&form), 1);

    sim.setData(0, QeltApp::User, 1, 12, 0);
    sim.setData(0, QeltApp::User, 3, 34, 0);
    QTRY_COMPARE_WITH_TIMEOUT(a->count(), 3, DeliveryTimeout);
    settle(sim);
    QCOMPARE(a->values(5), (QVariantList{33, 34}));
}

void TestSimulatedController::textRegistrationsGetFormattedText_data()
{
    QTest::addColumn<QList<int>>("formats");
    QTest::addColumn<int>("first");
    QTest::addColumn<QString>("firstText");
    QTest::addColumn<int>("second");
    QTest::addColumn<QString>("secondText");

    QTest::newRow("fixed point") << QList<int>{4, 10, 8, 2} << 12345 << QStringLiteral("  123.45") << -5
                                 << QStringLiteral("   -0.05");
    QTest::newRow("hex word") << QList<int>{4, 16, 8, 0} << 255 << QStringLiteral("000000FF") << -1
                              << QStringLiteral("FFFFFFFF");
    QTest::newRow("hex byte") << QList<int>{1, 16, 2, 0} << 0x1234 << QStringLiteral("34") << 0x1200
                              << QStringLiteral("00");
}

void TestSimulatedController::textRegistrationsGetFormattedText()
{
    QFETCH(QList<int>, formats);
    QFETCH(int, first);
    QFETCH(QString, firstText);
    QFETCH(int, second);
    QFETCH(QString, secondText);

    SimulatedController sim;
    QWidget form;
    auto *w = new Recorder(&form);
    sim.setData(0, QeltApp::Sys, 40, first, 0);
    sim.registerUIVariable(&form, w, w, 12, 0, 0, QeltApp::Sys, 40, -1, 0, formats.at(0), formats.at(1),
                           formats.at(2), formats.at(3), 0, true);
    sim.startUpdateUI(&form);
    QTRY_COMPARE_WITH_TIMEOUT(w->count(), 1, DeliveryTimeout);
    QCOMPARE(w->values(12), QVariantList{firstText});

    sim.setData(0, QeltApp::Sys, 40, second, 0);
    QTRY_COMPARE_WITH_TIMEOUT(w->count(), 2, DeliveryTimeout);
    QCOMPARE(w->values(12).last(), QVariant(secondText));
}

// ---------------------------------------------------------------------------------------------------------
// formatting

void TestSimulatedController::formatsValues_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("sizeCode");
    QTest::addColumn<int>("radix");
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("decimals");
    QTest::addColumn<QString>("expected");

    QTest::newRow("fixed point in width") << 12345 << 4 << 10 << 8 << 2 << QStringLiteral("  123.45");
    QTest::newRow("standard integer format") << 12345 << 1 << 10 << 10 << 0 << QStringLiteral("     12345");
    QTest::newRow("negative fixed point") << -12345 << 4 << 10 << 8 << 2 << QStringLiteral(" -123.45");
    QTest::newRow("leading zero of a fraction") << 7 << 4 << 10 << 6 << 3 << QStringLiteral(" 0.007");
    QTest::newRow("one decimal") << 5 << 4 << 10 << 0 << 1 << QStringLiteral("0.5");
    QTest::newRow("trailing zeros kept") << 1200 << 4 << 10 << 0 << 2 << QStringLiteral("12.00");
    QTest::newRow("narrow width does not cut") << 12345 << 4 << 10 << 3 << 2 << QStringLiteral("123.45");
    QTest::newRow("zero width") << -42 << 4 << 10 << 0 << 0 << QStringLiteral("-42");
    QTest::newRow("largest int") << std::numeric_limits<int>::max() << 4 << 10 << 0 << 2
                                 << QStringLiteral("21474836.47");
    QTest::newRow("smallest int") << std::numeric_limits<int>::min() << 4 << 10 << 0 << 0
                                  << QStringLiteral("-2147483648");
    QTest::newRow("hex zero padded") << 255 << 4 << 16 << 4 << 0 << QStringLiteral("00FF");
    QTest::newRow("hex upper case") << 0xabcd << 4 << 16 << 0 << 0 << QStringLiteral("ABCD");
    QTest::newRow("hex negative word") << -1 << 4 << 16 << 0 << 0 << QStringLiteral("FFFFFFFF");
    QTest::newRow("hex two bytes") << -1 << 2 << 16 << 0 << 0 << QStringLiteral("FFFF");
    QTest::newRow("hex one byte") << -1 << 1 << 16 << 0 << 0 << QStringLiteral("FF");
    QTest::newRow("hex one byte of a larger value") << 0x1234 << 1 << 16 << 4 << 0 << QStringLiteral("0034");
    QTest::newRow("hex two bytes of a larger value") << 0x123456 << 2 << 16 << 0 << 0 << QStringLiteral("3456");
    QTest::newRow("hex ignores decimals") << 255 << 4 << 16 << 2 << 2 << QStringLiteral("FF");
    QTest::newRow("octal") << 8 << 4 << 8 << 3 << 0 << QStringLiteral("010");
    QTest::newRow("binary") << 5 << 4 << 2 << 8 << 0 << QStringLiteral("00000101");
    QTest::newRow("binary one byte") << 0x1ff << 1 << 2 << 0 << 0 << QStringLiteral("11111111");
}

void TestSimulatedController::formatsValues()
{
    QFETCH(int, value);
    QFETCH(int, sizeCode);
    QFETCH(int, radix);
    QFETCH(int, width);
    QFETCH(int, decimals);
    QFETCH(QString, expected);

    QCOMPARE(ValueFormatter::format(value, sizeCode, radix, width, decimals), expected);
}

// ---------------------------------------------------------------------------------------------------------
// soft keypad

void TestSimulatedController::keypadChecksTheEntry_data()
{
    QTest::addColumn<int>("radix");
    QTest::addColumn<QString>("initial");
    QTest::addColumn<int>("maxLength");
    QTest::addColumn<int>("decimals");
    QTest::addColumn<double>("lowest");
    QTest::addColumn<double>("highest");
    QTest::addColumn<QStringList>("keys");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("accepted");

    const QStringList none;
    QTest::newRow("in range") << 10 << QString() << 20 << 0 << 0.0 << 100.0 << QStringList{"4", "2"}
                              << QStringLiteral("42") << true;
    QTest::newRow("highest is allowed") << 10 << QString() << 20 << 0 << 0.0 << 100.0
                                        << QStringList{"1", "0", "0"} << QStringLiteral("100") << true;
    QTest::newRow("above highest") << 10 << QString() << 20 << 0 << 0.0 << 100.0 << QStringList{"1", "0", "1"}
                                   << QStringLiteral("101") << false;
    QTest::newRow("lowest is allowed") << 10 << QString() << 20 << 0 << -10.0 << 10.0 << QStringList{"1", "0", "-"}
                                       << QStringLiteral("-10") << true;
    QTest::newRow("below lowest") << 10 << QString() << 20 << 0 << -10.0 << 10.0 << QStringList{"1", "1", "-"}
                                  << QStringLiteral("-11") << false;
    QTest::newRow("sign toggles back") << 10 << QString() << 20 << 0 << 0.0 << 10.0 << QStringList{"5", "-", "-"}
                                       << QStringLiteral("5") << true;
    QTest::newRow("decimals within") << 10 << QString() << 20 << 2 << 0.0 << 10.0
                                     << QStringList{"1", ".", "2", "5"} << QStringLiteral("1.25") << true;
    QTest::newRow("too many decimals") << 10 << QString() << 20 << 1 << 0.0 << 10.0
                                       << QStringList{"1", ".", "2", "5"} << QStringLiteral("1.25") << false;
    QTest::newRow("fraction without decimals") << 10 << QString() << 20 << 0 << 0.0 << 10.0
                                               << QStringList{"1", ".", "5"} << QStringLiteral("1.5") << false;
    QTest::newRow("fraction above highest") << 10 << QString() << 20 << 2 << 0.0 << 10.0
                                            << QStringList{"1", "0", ".", "0", "1"} << QStringLiteral("10.01")
                                            << false;
    QTest::newRow("empty") << 10 << QString() << 20 << 0 << 0.0 << 10.0 << none << QString() << false;
    QTest::newRow("not a number") << 10 << QString() << 20 << 0 << -1e9 << 1e9 << QStringList{"A"}
                                  << QStringLiteral("A") << false;
    QTest::newRow("hex in range") << 16 << QString() << 20 << 0 << 0.0 << 255.0 << QStringList{"F", "F"}
                                  << QStringLiteral("FF") << true;
    QTest::newRow("hex above highest") << 16 << QString() << 20 << 0 << 0.0 << 255.0 << QStringList{"1", "0", "0"}
                                       << QStringLiteral("100") << false;
    QTest::newRow("hex has no fraction") << 16 << QString() << 20 << 2 << 0.0 << 255.0
                                         << QStringList{"1", ".", "5"} << QStringLiteral("1.5") << false;
    QTest::newRow("octal digit 8") << 8 << QString() << 20 << 0 << 0.0 << 1000.0 << QStringList{"1", "8"}
                                   << QStringLiteral("18") << false;
    QTest::newRow("binary in range") << 2 << QString() << 20 << 0 << 0.0 << 7.0 << QStringList{"1", "1", "1"}
                                     << QStringLiteral("111") << true;
    QTest::newRow("binary digit 2") << 2 << QString() << 20 << 0 << 0.0 << 7.0 << QStringList{"2"}
                                    << QStringLiteral("2") << false;
    QTest::newRow("shown value accepted as is") << 10 << QStringLiteral(" 42 ") << 20 << 0 << 0.0 << 100.0 << none
                                                << QStringLiteral("42") << true;
    QTest::newRow("first key replaces the shown value") << 10 << QStringLiteral("77") << 20 << 0 << 0.0 << 100.0
                                                        << QStringList{"5"} << QStringLiteral("5") << true;
    QTest::newRow("clear and backspace") << 10 << QStringLiteral("77") << 20 << 0 << 0.0 << 100.0
                                         << QStringList{"1", "CLR", "3", "4", "5", QStringLiteral("\u232b")}
                                         << QStringLiteral("34") << true;
    // Multi-letter entries come from a hardware keyboard typing into the entry line.
    QTest::newRow("typed nan") << 10 << QString() << 20 << 0 << 0.0 << 100.0 << QStringList{"nan"}
                               << QStringLiteral("nan") << false;
    QTest::newRow("typed inf") << 10 << QString() << 20 << 0 << 0.0 << 100.0 << QStringList{"inf"}
                               << QStringLiteral("inf") << false;
    QTest::newRow("maximum length") << 10 << QString() << 3 << 0 << 0.0 << 1e9 << QStringList{"1", "2", "3", "4"}
                                    << QStringLiteral("123") << true;
}

void TestSimulatedController::keypadChecksTheEntry()
{
    QFETCH(int, radix);
    QFETCH(QString, initial);
    QFETCH(int, maxLength);
    QFETCH(int, decimals);
    QFETCH(double, lowest);
    QFETCH(double, highest);
    QFETCH(QStringList, keys);
    QFETCH(QString, text);
    QFETCH(bool, accepted);

    KeypadDialog dialog;
    dialog.setEntry(radix, initial, maxLength, decimals, lowest, highest);
    auto *entry = dialog.findChild<QLineEdit *>(QStringLiteral("keypadEntry"));
    QVERIFY(entry);
    for (const QString &key : std::as_const(keys)) {
        if (key.size() > 1 && key != QLatin1String("CLR"))
            QTest::keyClicks(entry, key);
        else
            dialog.typeKey(key);
    }
    QCOMPARE(dialog.text(), text);
    QVERIFY(dialog.problem().isEmpty());

    dialog.accept();
    QCOMPARE(dialog.result() == QDialog::Accepted, accepted);
    QCOMPARE(dialog.problem().isEmpty(), accepted);

    if (!accepted) {
        // Typing again clears the complaint.
        dialog.typeKey(QStringLiteral("1"));
        QVERIFY(dialog.problem().isEmpty());
    }
}

void TestSimulatedController::keypadOffersTheKeysOfItsRadix_data()
{
    QTest::addColumn<int>("radix");
    QTest::addColumn<int>("decimals");
    QTest::addColumn<double>("lowest");
    QTest::addColumn<QStringList>("enabled");
    QTest::addColumn<QStringList>("disabled");

    QTest::newRow("decimal integer, not negative")
        << 10 << 0 << 0.0 << QStringList{"0", "9", "CLR"} << QStringList{"A", "F", ".", "-"};
    QTest::newRow("decimal with fraction and sign")
        << 10 << 2 << -5.0 << QStringList{"0", "9", ".", "-"} << QStringList{"A", "F"};
    QTest::newRow("hex") << 16 << 2 << -5.0 << QStringList{"0", "9", "A", "F"} << QStringList{".", "-"};
    QTest::newRow("octal") << 8 << 0 << 0.0 << QStringList{"0", "7"} << QStringList{"8", "9", "A", ".", "-"};
    QTest::newRow("binary") << 2 << 0 << 0.0 << QStringList{"0", "1"} << QStringList{"2", "7", "A"};
    QTest::newRow("unknown radix is decimal") << 7 << 0 << 0.0 << QStringList{"8", "9"} << QStringList{"A"};
}

void TestSimulatedController::keypadOffersTheKeysOfItsRadix()
{
    QFETCH(int, radix);
    QFETCH(int, decimals);
    QFETCH(double, lowest);
    QFETCH(QStringList, enabled);
    QFETCH(QStringList, disabled);

    KeypadDialog dialog;
    dialog.setEntry(radix, QString(), 20, decimals, lowest, 1000.0);
    for (const QString &key : std::as_const(enabled)) {
        auto *button = dialog.findChild<QPushButton *>(QStringLiteral("key_") + key);
        QVERIFY2(button, qPrintable(key));
        QVERIFY2(button->isEnabled(), qPrintable(key));
    }
    for (const QString &key : std::as_const(disabled)) {
        auto *button = dialog.findChild<QPushButton *>(QStringLiteral("key_") + key);
        QVERIFY2(button, qPrintable(key));
        QVERIFY2(!button->isEnabled(), qPrintable(key));
    }
}

void TestSimulatedController::showKeypadReturnsTheConfirmedText_data()
{
    QTest::addColumn<int>("radix");
    QTest::addColumn<QString>("initial");
    QTest::addColumn<int>("decimals");
    QTest::addColumn<double>("lowest");
    QTest::addColumn<double>("highest");
    QTest::addColumn<QStringList>("keys"); // "OK" confirms, "Cancel" cancels
    QTest::addColumn<int>("refusals");
    QTest::addColumn<bool>("ok");
    QTest::addColumn<QString>("result");

    QTest::newRow("decimal confirmed") << 10 << QStringLiteral("12") << 2 << -100.0 << 100.0
                                       << QStringList{"3", ".", "5", "OK"} << 0 << true << QStringLiteral("3.5");
    QTest::newRow("shown value confirmed") << 10 << QStringLiteral("12") << 0 << 0.0 << 100.0 << QStringList{"OK"}
                                           << 0 << true << QStringLiteral("12");
    QTest::newRow("hex confirmed") << 16 << QStringLiteral("0") << 0 << 0.0 << 65535.0
                                   << QStringList{"B", "E", "E", "F", "OK"} << 0 << true << QStringLiteral("BEEF");
    QTest::newRow("cancelled") << 10 << QStringLiteral("12") << 0 << 0.0 << 100.0 << QStringList{"5", "Cancel"}
                               << 0 << false << QString();
    QTest::newRow("out of range refused, then corrected")
        << 10 << QString() << 0 << 0.0 << 100.0 << QStringList{"2", "0", "0", "OK", "CLR", "9", "9", "OK"} << 1
        << true << QStringLiteral("99");
    QTest::newRow("too many decimals refused, then cancelled")
        << 10 << QString() << 1 << 0.0 << 100.0 << QStringList{"1", ".", "2", "5", "OK", "Cancel"} << 1 << false
        << QString();
}

void TestSimulatedController::showKeypadReturnsTheConfirmedText()
{
    QFETCH(int, radix);
    QFETCH(QString, initial);
    QFETCH(int, decimals);
    QFETCH(double, lowest);
    QFETCH(double, highest);
    QFETCH(QStringList, keys);
    QFETCH(int, refusals);
    QFETCH(bool, ok);
    QFETCH(QString, result);

    SimulatedController sim;
    QString shown;
    int refused = 0;
    bool finished = false;
    whenKeypadOpens([&](KeypadDialog *dialog) {
        shown = dialog->text();
        for (const QString &key : std::as_const(keys)) {
            if (key == QLatin1String("OK")) {
                dialog->accept();
                if (dialog->isVisible())
                    ++refused;
            } else if (key == QLatin1String("Cancel")) {
                dialog->reject();
            } else {
                dialog->typeKey(key);
            }
        }
        finished = !dialog->isVisible();
        if (!finished)
            dialog->reject(); // the row left it open: close it so that the test goes on
    });

    bool confirmed = !ok;
    const QString text = sim.showKeypad(&confirmed, radix, initial, 0, QRect(), QRect(), QRect(), nullptr, 20,
                                        decimals, lowest, highest);
    QVERIFY(finished);
    QCOMPARE(shown, initial.trimmed());
    QCOMPARE(refused, refusals);
    QCOMPARE(confirmed, ok);
    QCOMPARE(text, result);
}

// ---------------------------------------------------------------------------------------------------------
// recording stand-in

void TestSimulatedController::recordingLogsEveryCallInOrder()
{
    RecordingQeltApp app;
    QWidget form;
    auto *w = new Recorder(&form);
    const QRect custom(1, 2, 3, 4), item(5, 6, 7, 8), formRect(9, 10, 11, 12);
    app.setKeypadAnswer(QStringLiteral("17"), true);

    app.setBit(2, QeltApp::User_BIT, 5, 3, true, 1);
    QCOMPARE(app.getBit(2, QeltApp::User_BIT, 5, 3, 1), true);
    app.setData(3, QeltApp::Sys, 7, -9, 0);
    QCOMPARE(app.getData(3, QeltApp::Sys, 7, 0), -9);
    app.registerUIVariable(&form, w, w, 4, 1, QeltApp::CurrentChannel, 2, 7, -1, 0, 1, 10, 10, 0, 0, false);
    app.startUpdateUI(&form);
    app.stopUpdateUI();
    bool ok = false;
    QCOMPARE(app.showKeypad(&ok, 16, QStringLiteral("A"), 2, custom, item, formRect, nullptr, 20, 3, -1.5, 2.5),
             QStringLiteral("17"));
    QVERIFY(ok);
    app.removeUIVariable(&form, w);

    const QVariant formPtr = RecordingQeltApp::pointer(&form);
    const QVariant widgetPtr = RecordingQeltApp::pointer(w);
    const QVariant callbackPtr = RecordingQeltApp::pointer(static_cast<norvo_v0::UpdateVariableInterface *>(w));
    QVERIFY(widgetPtr != callbackPtr); // the callback is the interface subobject, not the widget
    QCOMPARE(app.callNames(), (QStringList{"setBit", "getBit", "setData", "getData", "registerUIVariable",
                                           "startUpdateUI", "stopUpdateUI", "showKeypad", "removeUIVariable"}));
    const QList<RecordingQeltApp::Call> calls = app.calls();
    QCOMPARE(calls.at(0).args, (QVariantList{2, int(QeltApp::User_BIT), 5, 3, true, 1}));
    QCOMPARE(calls.at(1).args, (QVariantList{2, int(QeltApp::User_BIT), 5, 3, 1}));
    QCOMPARE(calls.at(2).args, (QVariantList{3, int(QeltApp::Sys), 7, -9, 0}));
    QCOMPARE(calls.at(3).args, (QVariantList{3, int(QeltApp::Sys), 7, 0}));
    QCOMPARE(calls.at(4).args, (QVariantList{formPtr, widgetPtr, callbackPtr, 4, 1, QeltApp::CurrentChannel, 2, 7,
                                             -1, 0, 1, 10, 10, 0, 0, false}));
    QCOMPARE(calls.at(5).args, QVariantList{formPtr});
    QCOMPARE(calls.at(6).args, QVariantList{});
    QCOMPARE(calls.at(7).args, (QVariantList{16, QStringLiteral("A"), 2, custom, item, formRect,
                                             RecordingQeltApp::pointer(nullptr), 20, 3, -1.5, 2.5}));
    QCOMPARE(calls.at(8).args, (QVariantList{formPtr, widgetPtr}));
    QCOMPARE(app.callsNamed(QStringLiteral("getData")).size(), 1);

    // Channels are kept as passed: the marker is not resolved.
    QCOMPARE(app.memory().word(0, 3, QeltApp::Sys, 7), -9);
    QCOMPARE(app.getData(QeltApp::CurrentChannel, QeltApp::Sys, 7, 0), 0);

    app.clearCalls();
    QVERIFY(app.calls().isEmpty());
    app.setKeypadAnswer(QString(), false);
    ok = true;
    QCOMPARE(app.showKeypad(&ok, 10, QString(), 0, QRect(), QRect(), QRect(), nullptr, 20, 0, 0, 1), QString());
    QVERIFY(!ok);
}

void TestSimulatedController::recordingDeliversToLiveRegistrations()
{
    RecordingQeltApp app;
    QWidget formA, formB;
    auto *w = new Recorder(&formA);
    auto *gone = new Recorder(&formA);
    registerBit(app, &formA, w, w, 0, QeltApp::I_BIT, 1, 0);
    registerBit(app, &formA, w, w, 1, QeltApp::I_BIT, 2, 0);
    registerBit(app, &formB, w, w, 1, QeltApp::I_BIT, 3, 0);
    registerBit(app, &formA, gone, gone, 1, QeltApp::I_BIT, 4, 0);
    QCOMPARE(app.registrations().size(), 4);
    QCOMPARE(app.registrations().at(2).arguments(),
             (QVariantList{1, 0, 0, 0, 3, int(QeltApp::I_BIT), 0, 1, 10, 10, 0, 0, false}));

    QCOMPARE(app.deliver(w, 1, 5), 2); // both forms' index 1
    QCOMPARE(app.deliverText(w, 0, QStringLiteral("on")), 1);
    QCOMPARE(app.deliver(w, 9, 1), 0);
    QCOMPARE(w->received, (QList<QPair<int, QVariant>>{qMakePair(1, QVariant(5)), qMakePair(1, QVariant(5)),
                                                       qMakePair(0, QVariant(QStringLiteral("on")))}));

    delete gone;
    QCOMPARE(app.deliver(gone, 1, 1), 0);

    app.removeUIVariable(&formA, w);
    QCOMPARE(app.registrations().size(), 2);
    QCOMPARE(app.deliver(w, 1, 6), 1);
    QCOMPARE(w->values(1).last(), QVariant(6));
}

// ---------------------------------------------------------------------------------------------------------
// HMI settings

void TestSimulatedController::hmiInterfaceIsOneInstance()
{
    QVERIFY(NORVOInterface_Z3::initialization());
    QCOMPARE(NORVOInterface_Z3::init(), NORVOInterface_Z3::initialization());
}

void TestSimulatedController::systemLanguages_data()
{
    QTest::addColumn<QStringList>("families");
    QTest::addColumn<int>("count");

    QTest::newRow("three") << QStringList{"Sans", "Serif", "Mono"} << 3;
    QTest::newRow("ten") << QStringList{"0", "1", "2", "3", "4", "5", "6", "7", "8", "9"} << 10;
    QTest::newRow("twelve are cut to ten") << QStringList{"0", "1", "2", "3", "4", "5", "6", "7", "8", "9", "a", "b"}
                                           << 10;
    QTest::newRow("none keeps one") << QStringList{} << 1;
}

void TestSimulatedController::systemLanguages()
{
    QFETCH(QStringList, families);
    QFETCH(int, count);

    NORVOInterface_Z3 *hmi = NORVOInterface_Z3::initialization();
    hmi->setSystemLanguages(families);
    QCOMPARE(hmi->getSystemLanguageCount(), count);
    QCOMPARE(hmi->getSystemLanguageFamilys().size(), count);
    if (!families.isEmpty())
        QCOMPARE(hmi->getSystemLanguageFamilys(), families.mid(0, count));
}

void TestSimulatedController::currentLanguage_data()
{
    QTest::addColumn<int>("languages");
    QTest::addColumn<QList<int>>("requests");
    QTest::addColumn<int>("current");
    QTest::addColumn<QList<int>>("signalled");

    QTest::newRow("valid") << 3 << QList<int>{2} << 2 << QList<int>{2};
    QTest::newRow("same again is quiet") << 3 << QList<int>{2, 2} << 2 << QList<int>{2};
    QTest::newRow("past the last ignored") << 3 << QList<int>{1, 3} << 1 << QList<int>{1};
    QTest::newRow("negative ignored") << 3 << QList<int>{1, -1} << 1 << QList<int>{1};
    QTest::newRow("back to the first") << 3 << QList<int>{2, 0} << 0 << QList<int>{2, 0};
}

void TestSimulatedController::currentLanguage()
{
    QFETCH(int, languages);
    QFETCH(QList<int>, requests);
    QFETCH(int, current);
    QFETCH(QList<int>, signalled);

    NORVOInterface_Z3 *hmi = NORVOInterface_Z3::initialization();
    QStringList families;
    for (int i = 0; i < languages; ++i)
        families.append(QStringLiteral("Sans"));
    hmi->setSystemLanguages(families);
    QSignalSpy spy(hmi, &NORVOInterface_Z3::currentLanguageChanged);
    for (int index : std::as_const(requests))
        hmi->setCurrentLanguageIndex(index);
    QCOMPARE(hmi->currentLanguageIndex(), current);
    QList<int> got;
    for (const QList<QVariant> &args : std::as_const(spy))
        got.append(args.at(0).toInt());
    QCOMPARE(got, signalled);

    // Fewer languages than the current index: back to the first, and said so.
    spy.clear();
    hmi->setSystemLanguages(QStringList{QStringLiteral("Sans")});
    QCOMPARE(hmi->currentLanguageIndex(), 0);
    QCOMPARE(spy.count(), current == 0 ? 0 : 1);
}

void TestSimulatedController::wordLibrary()
{
    NORVOInterface_Z3 *hmi = NORVOInterface_Z3::initialization();
    QSignalSpy changed(hmi, &NORVOInterface_Z3::wordLibraryChanged);
    hmi->setWordLibrary({{1, QStringList{"Start", "Marche"}}, {2, QStringList{"Stop", "Arret"}}});
    hmi->setWordLibraryEntry(3, QStringList{"Feed", "Avance"});
    QCOMPARE(changed.count(), 2);

    QStringList texts{QStringLiteral("mine")};
    QVERIFY(hmi->getWordLibraryDatasUsedId(3, texts));
    QCOMPARE(texts, (QStringList{"Feed", "Avance"}));
    QVERIFY(hmi->getWordLibraryDatasUsedId(1, texts));
    QCOMPARE(texts, (QStringList{"Start", "Marche"}));

    texts = QStringList{QStringLiteral("mine")};
    QVERIFY(!hmi->getWordLibraryDatasUsedId(4, texts));
    QCOMPARE(texts, QStringList{QStringLiteral("mine")});

    hmi->setWordLibrary({{4, QStringList{"Jog"}}});
    QVERIFY(!hmi->getWordLibraryDatasUsedId(1, texts));
    QVERIFY(hmi->getWordLibraryDatasUsedId(4, texts));
    QCOMPARE(texts, QStringList{QStringLiteral("Jog")});
}

void TestSimulatedController::channelCount_data()
{
    QTest::addColumn<int>("request");
    QTest::addColumn<int>("count");

    QTest::newRow("one") << 1 << 1;
    QTest::newRow("eight") << 8 << 8;
    QTest::newRow("zero ignored") << 0 << 4;
    QTest::newRow("negative ignored") << -3 << 4;
}

void TestSimulatedController::channelCount()
{
    QFETCH(int, request);
    QFETCH(int, count);

    NORVOInterface_Z3 *hmi = NORVOInterface_Z3::initialization();
    QCOMPARE(hmi->maxChannelCount(), 4);
    hmi->setMaxChannelCount(request);
    QCOMPARE(hmi->maxChannelCount(), count);
}

void TestSimulatedController::authorityRefusalIsSignalled()
{
    NORVOInterface_Z3 *hmi = NORVOInterface_Z3::initialization();
    QSignalSpy spy(hmi, &NORVOInterface_Z3::authorityRefused);
    hmi->inadequateOperationAuthority(3);
    hmi->inadequateOperationAuthority(0);
    QCOMPARE(spy.count(), 2);
    QCOMPARE(spy.at(0).at(0).toInt(), 3);
    QCOMPARE(spy.at(1).at(0).toInt(), 0);
}

void TestSimulatedController::textInterfacesAreKept()
{
    NORVOInterface_Z3 *hmi = NORVOInterface_Z3::initialization();
    QWidget formA, formB;
    TextInterface first, second;
    hmi->setHMIUiUpdateInterfaceWidgetPtr(&formA, QStringLiteral("a.ui"), &first);
    hmi->setHMIUiUpdateInterfaceWidgetPtr(&formA, QStringLiteral("a.ui"), &second);
    hmi->setHMIUiUpdateInterfaceWidgetPtr(&formB, QStringLiteral("b.ui"), &first);
    QCOMPARE(hmi->textInterfaces().size(), 3);
    QCOMPARE(hmi->textInterfaces().at(2).owner, &formB);
    QCOMPARE(hmi->textInterfaces().at(2).fileName, QStringLiteral("b.ui"));
    QCOMPARE(hmi->textInterfaces().at(2).iface, static_cast<Hmi_v0::HMI_UiUpdateInterface *>(&first));

    hmi->removeHMIUiUpdateInterfaceWidgetPtr(&formB, &second); // no such pair
    QCOMPARE(hmi->textInterfaces().size(), 3);
    hmi->removeHMIUiUpdateInterfaceWidgetPtr(&formA, &first);
    const QList<NORVOInterface_Z3::TextInterfaceEntry> left = hmi->textInterfaces();
    QCOMPARE(left.size(), 2);
    QCOMPARE(left.at(0).iface, static_cast<Hmi_v0::HMI_UiUpdateInterface *>(&second));
    QCOMPARE(left.at(1).owner, &formB);

    hmi->resetToDefaults();
    QVERIFY(hmi->textInterfaces().isEmpty());
}

void TestSimulatedController::defaultWidgetFont()
{
    NORVOInterface_Z3 *hmi = NORVOInterface_Z3::initialization();
    QFont font(QStringLiteral("Monospace"), 17);
    font.setBold(true);
    hmi->setDefaultWidgetFont(font);
    QCOMPARE(hmi->defaultWidgetFont(), font);

    QWidget widget;
    NORVOInterface_Z3::setWidgetDefaultFont(&widget);
    QCOMPARE(widget.font().pointSize(), 17);
    QCOMPARE(widget.font().bold(), true);
    NORVOInterface_Z3::setWidgetDefaultFont(nullptr);

    hmi->setKeypadModeSize(3);
    QCOMPARE(hmi->keypadModeSize(), 3);
    hmi->resetToDefaults();
    QCOMPARE(hmi->keypadModeSize(), 0);
    QCOMPARE(hmi->maxChannelCount(), 4);
}

QTEST_MAIN(TestSimulatedController)
#include "tst_simulatedcontroller.moc"
