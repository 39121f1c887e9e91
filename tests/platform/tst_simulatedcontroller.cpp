// The simulated controller: word bits inside their class words, the current channel taken from word
// 40017, coalesced deliveries between startUpdateUI and stopUpdateUI, registration clean-up, value
// formatting, the soft keypad's entry checks and where it opens (driven through the controller:
// tst_endtoend).

#include "keypaddialog.h"
#include "keypadplacement.h"
#include "norvointerface_z3.h"
#include "simulatedcontroller.h"
#include "updatevariableinterface.h"
#include "valueformatter.h"
#include "variablememory.h"

#include <QLineEdit>
#include <QtTest>

#include <limits>

using norvo_v0::QeltApp;

namespace {

constexpr int Timeout = 10000;
constexpr int ChannelWord = QeltApp::CurrentChannelAddress;
constexpr int IntMin = std::numeric_limits<int>::min();

class CallbackLog : public norvo_v0::UpdateVariableInterface
{
public:
    void updateData(int index, int value) override { received.append(qMakePair(index, QVariant(value))); }
    void updateData(int index, const QString &text) override { received.append(qMakePair(index, QVariant(text))); }
    QVariantList values(int index) const
    {
        QVariantList out;
        for (const auto &r : received)
            out << (r.first == index ? QVariantList{r.second} : QVariantList{});
        return out;
    }
    int count() const { return int(received.size()); }
    QList<QPair<int, QVariant>> received;
};

class Recorder : public QWidget, public CallbackLog
{
public:
    using QWidget::QWidget;
};

// 'b' bit (area = bit type) or 'w' word (area = data class) write.
struct Write
{
    char kind;
    int area, address, bitIndex, value, channel = 0, comId = 0;
};

void apply(QeltApp &app, const Write &w)
{
    if (w.kind == 'b')
        app.setBit(w.channel, QeltApp::BitType(w.area), w.address, w.bitIndex, w.value != 0, w.comId);
    else
        app.setData(w.channel, QeltApp::DataClass(w.area), w.address, w.value, w.comId);
}

void watch(QeltApp &app, QWidget *form, QWidget *w, norvo_v0::UpdateVariableInterface *cb, int index, bool bit,
           int area, int address, int bitIndex = 0, int channel = 0)
{
    app.registerUIVariable(form, w, cb, index, 0, channel, bit ? 0 : area, address, bit ? area : -1, bitIndex, 1,
                           10, 10, 0, 0, false);
}

void settle(SimulatedController &sim)
{
    QCoreApplication::processEvents();
    sim.flushUpdates();
    QCoreApplication::processEvents();
}

} // namespace

Q_DECLARE_METATYPE(Write)

class TestSimulatedController : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { NORVOInterface_Z3::initialization()->resetToDefaults(); }
    void wordBits_data(); void wordBits();
    void currentChannel_data(); void currentChannel();
    void deliveriesFollowStartAndStop();
    void changesCoalesce_data(); void changesCoalesce();
    void currentChannelRegistrationFollows40017_data(); void currentChannelRegistrationFollows40017();
    void removeAndDestruction();
    void formatsValues_data(); void formatsValues();
    void keypadChecksTheEntry_data(); void keypadChecksTheEntry();
    void keypadPlacement_data(); void keypadPlacement();
};

void TestSimulatedController::wordBits_data()
{
    QTest::addColumn<int>("initialWord"); QTest::addColumn<int>("bitType"); QTest::addColumn<int>("bitIndex");
    QTest::addColumn<bool>("value"); QTest::addColumn<bool>("changed"); QTest::addColumn<int>("expectedWord");
    QTest::newRow("User bit 3 set") << 0 << int(QeltApp::User_BIT) << 3 << true << true << 8;
    QTest::newRow("Reg bit 3 cleared") << 0xff << int(QeltApp::Reg_BIT) << 3 << false << true << 0xf7;
    QTest::newRow("Bus bit 31 set") << 0 << int(QeltApp::Bus_BIT) << 31 << true << true << IntMin;
    QTest::newRow("Com bit 31 cleared") << -1 << int(QeltApp::Com_BIT) << 31 << false << true << ~IntMin;
    QTest::newRow("already set") << 8 << int(QeltApp::User_BIT) << 3 << true << false << 8;
    QTest::newRow("bit 32 ignored") << 0 << int(QeltApp::User_BIT) << 32 << true << false << 0;
}

void TestSimulatedController::wordBits()
{
    QFETCH(int, initialWord); QFETCH(int, bitType); QFETCH(int, bitIndex); QFETCH(bool, value); QFETCH(bool, changed);
    QFETCH(int, expectedWord);
    const int dataClass = bitType - 7;
    VariableMemory memory;
    memory.setWord(0, 0, dataClass, 5, initialWord);
    QCOMPARE(memory.setBit(0, 0, bitType, 5, bitIndex, value), changed);
    QCOMPARE(memory.word(0, 0, dataClass, 5), expectedWord);
    QCOMPARE(memory.word(0, 0, dataClass, 4) | memory.word(0, 0, dataClass, 6), 0);
    for (int other = 0; other <= 5; ++other)
        if (other != dataClass)
            QCOMPARE(memory.word(0, 0, other, 5), 0);
}

void TestSimulatedController::currentChannel_data()
{
    QTest::addColumn<QList<Write>>("writes"); QTest::addColumn<int>("resolved");
    QTest::newRow("40017 = 3") << QList<Write>{{'w', QeltApp::Com, ChannelWord, 0, 3}} << 2;
    QTest::newRow("40017 = 0") << QList<Write>{{'w', QeltApp::Com, ChannelWord, 0, 0}} << 0;
    QTest::newRow("40017 smallest int") << QList<Write>{{'w', QeltApp::Com, ChannelWord, 0, IntMin}} << 0;
    QTest::newRow("through its bits") << QList<Write>{{'b', QeltApp::Com_BIT, ChannelWord, 2, 1}} << 4;
    QTest::newRow("channel 2's word ignored") << QList<Write>{{'w', QeltApp::Com, ChannelWord, 0, 4, 1}} << 0;
    QTest::newRow("link 1's word ignored") << QList<Write>{{'w', QeltApp::Com, ChannelWord, 0, 4, 0, 1}} << 0;
}

void TestSimulatedController::currentChannel()
{
    QFETCH(QList<Write>, writes); QFETCH(int, resolved);
    SimulatedController sim;
    for (const Write &w : writes)
        apply(sim, w);
    QCOMPARE(sim.resolveChannel(QeltApp::CurrentChannel), resolved);
    for (int channel = 0; channel < 6; ++channel)
        sim.setData(channel, QeltApp::Mcm, 3, 100 + channel, 0);
    QCOMPARE(sim.getData(QeltApp::CurrentChannel, QeltApp::Mcm, 3, 0), 100 + resolved);
    sim.setBit(QeltApp::CurrentChannel, QeltApp::A_BIT, 3, 0, true, 0);
    QVERIFY(sim.getBit(resolved, QeltApp::A_BIT, 3, 0, 0) && !sim.getBit(resolved + 1, QeltApp::A_BIT, 3, 0, 0));
}

void TestSimulatedController::deliveriesFollowStartAndStop()
{
    SimulatedController sim;
    QWidget form;
    auto *w = new Recorder(&form);
    sim.setData(0, QeltApp::User, 5, 8, 0);
    watch(sim, &form, w, w, 0, false, QeltApp::User, 5);
    watch(sim, &form, w, w, 1, true, QeltApp::User_BIT, 5, 3);
    watch(sim, &form, w, w, 2, true, QeltApp::User_BIT, 5, 4);
    watch(sim, &form, w, w, 3, false, QeltApp::User, 6); // zero: still delivered once
    sim.setData(0, QeltApp::User, 5, 9, 0);
    settle(sim);
    QCOMPARE(w->count(), 0); // nothing before startUpdateUI

    sim.startUpdateUI(&form);
    QTRY_COMPARE_WITH_TIMEOUT(w->count(), 4, Timeout);
    settle(sim);
    QCOMPARE(w->received, (QList<QPair<int, QVariant>>{{0, 9}, {1, 1}, {2, 0}, {3, 0}}));

    // A change reaches exactly the registrations whose value it changes; writes elsewhere reach nobody.
    w->received.clear();
    sim.setData(0, QeltApp::User, 5, 16, 0);
    sim.setData(0, QeltApp::User, 7, 1, 0);
    sim.setData(1, QeltApp::User, 5, 1, 0);
    sim.setData(0, QeltApp::User, 5, 1, 1);
    sim.setBit(0, QeltApp::I_BIT, 5, 0, true, 0);
    QTRY_COMPARE_WITH_TIMEOUT(w->count(), 3, Timeout);
    settle(sim);
    QCOMPARE(w->received, (QList<QPair<int, QVariant>>{{0, 16}, {1, 0}, {2, 1}}));

    sim.stopUpdateUI();
    QVERIFY(!sim.isUpdating(&form));
    w->received.clear();
    sim.setData(0, QeltApp::User, 5, 2, 0);
    settle(sim);
    QCOMPARE(w->count(), 0);
    sim.startUpdateUI(&form); // restarting hands every registration its current value once more
    QTRY_COMPARE_WITH_TIMEOUT(w->count(), 4, Timeout);
    settle(sim);
    QCOMPARE(w->values(0), QVariantList{2});
}

void TestSimulatedController::changesCoalesce_data()
{
    QTest::addColumn<bool>("bit"); QTest::addColumn<int>("area"); QTest::addColumn<int>("bitIndex");
    QTest::addColumn<QList<Write>>("writes"); QTest::addColumn<QVariantList>("expected");
    const int U = QeltApp::User, UB = QeltApp::User_BIT, IB = QeltApp::I_BIT;
    QTest::newRow("three word writes") << false << U << 0
        << QList<Write>{{'w', U, 5, 0, 1}, {'w', U, 5, 0, 2}, {'w', U, 5, 0, 3}} << QVariantList{3};
    QTest::newRow("bits of the watched word") << false << U << 0
        << QList<Write>{{'b', UB, 5, 0, 1}, {'b', UB, 5, 1, 1}, {'b', UB, 5, 2, 1}} << QVariantList{7};
    QTest::newRow("word bit through its word") << true << UB << 3
        << QList<Write>{{'w', U, 5, 0, 1}, {'w', U, 5, 0, 8}, {'w', U, 5, 0, 9}} << QVariantList{1};
    QTest::newRow("PLC bit on, off, on") << true << IB << 0
        << QList<Write>{{'b', IB, 5, 0, 1}, {'b', IB, 5, 0, 0}, {'b', IB, 5, 0, 1}} << QVariantList{1};
}

void TestSimulatedController::changesCoalesce()
{
    QFETCH(bool, bit); QFETCH(int, area); QFETCH(int, bitIndex); QFETCH(QList<Write>, writes);
    QFETCH(QVariantList, expected);
    SimulatedController sim;
    QWidget form;
    auto *w = new Recorder(&form);
    auto *probe = new Recorder(&form); // proves the writes were delivered at all
    watch(sim, &form, w, w, 0, bit, area, 5, bitIndex);
    watch(sim, &form, probe, probe, 0, false, QeltApp::Sys, 99);
    sim.startUpdateUI(&form);
    QTRY_COMPARE_WITH_TIMEOUT(w->count() + probe->count(), 2, Timeout);
    w->received.clear();
    for (const Write &write : writes)
        apply(sim, write);
    sim.setData(0, QeltApp::Sys, 99, 1, 0);
    QTRY_COMPARE_WITH_TIMEOUT(probe->count(), 2, Timeout);
    settle(sim);
    QCOMPARE(w->values(0), expected);
}

void TestSimulatedController::currentChannelRegistrationFollows40017_data()
{
    QTest::addColumn<bool>("bit");
    QTest::newRow("word") << false;
    QTest::newRow("word bit") << true;
}

void TestSimulatedController::currentChannelRegistrationFollows40017()
{
    QFETCH(bool, bit);
    SimulatedController sim; // channel c holds 10 + c in Reg word 7: bit 0 is set on odd channels
    for (int channel = 0; channel < 4; ++channel)
        sim.setData(channel, QeltApp::Reg, 7, 10 + channel, 0);
    auto expect = [bit](int v) { return QVariant(bit ? v & 1 : v); };
    QWidget form;
    auto *w = new Recorder(&form);
    watch(sim, &form, w, w, 0, bit, bit ? int(QeltApp::Reg_BIT) : int(QeltApp::Reg), 7, 0, QeltApp::CurrentChannel);
    sim.startUpdateUI(&form);
    QTRY_COMPARE_WITH_TIMEOUT(w->count(), 1, Timeout);
    QCOMPARE(w->values(0).last(), expect(10));

    sim.setData(0, QeltApp::Com, ChannelWord, 2, 0); // re-evaluated on channel index 1
    QTRY_COMPARE_WITH_TIMEOUT(w->count(), 2, Timeout);
    QCOMPARE(w->values(0).last(), expect(11));
    w->received.clear();
    sim.setData(0, QeltApp::Reg, 7, 21, 0); // the previous channel no longer counts
    settle(sim);
    QCOMPARE(w->count(), 0);
    sim.setData(1, QeltApp::Reg, 7, 22, 0);
    QTRY_COMPARE_WITH_TIMEOUT(w->count(), 1, Timeout);
    QCOMPARE(w->values(0).last(), expect(22));
    sim.setData(0, QeltApp::Com, ChannelWord, 0, 0); // 0 means the first channel
    QTRY_COMPARE_WITH_TIMEOUT(w->count(), 2, Timeout);
    QCOMPARE(w->values(0).last(), expect(21));
}

void TestSimulatedController::removeAndDestruction()
{
    SimulatedController sim;
    QWidget formA, formB;
    auto *w1 = new Recorder(&formA);
    auto *w2 = new Recorder(&formA);
    CallbackLog orphanLog, formLog; // outlive their widgets, so a late delivery would show
    auto *doomed = new QWidget(&formA);
    auto *doomedForm = new QWidget;
    watch(sim, &formA, w1, w1, 0, false, QeltApp::User, 1);
    watch(sim, &formA, w2, w2, 0, false, QeltApp::User, 1);
    watch(sim, &formB, w1, w1, 7, false, QeltApp::User, 1); // the same widget on another form stays
    watch(sim, &formA, doomed, &orphanLog, 0, false, QeltApp::User, 1);
    watch(sim, doomedForm, new QWidget(doomedForm), &formLog, 0, false, QeltApp::User, 1);
    QCOMPARE(sim.registrationCount(), 5);

    sim.removeUIVariable(&formA, w1);
    QCOMPARE(sim.registrationCount(&formA), 2);
    QCOMPARE(sim.registrationCount(&formB), 1);
    delete doomedForm;
    QCOMPARE(sim.registrationCount(), 3);
    delete doomed;

    sim.startUpdateUI(&formA);
    sim.startUpdateUI(&formB);
    sim.setData(0, QeltApp::User, 1, 5, 0);
    QTRY_COMPARE_WITH_TIMEOUT(w2->values(0).value(w2->count() - 1), QVariant(5), Timeout);
    QTRY_COMPARE_WITH_TIMEOUT(w1->values(7).value(w1->count() - 1), QVariant(5), Timeout);
    settle(sim);
    QCOMPARE(w1->values(0), QVariantList{});
    QCOMPARE(orphanLog.count() + formLog.count(), 0);
}

void TestSimulatedController::formatsValues_data()
{
    QTest::addColumn<int>("value"); QTest::addColumn<int>("sizeCode"); QTest::addColumn<int>("radix");
    QTest::addColumn<int>("width"); QTest::addColumn<int>("decimals"); QTest::addColumn<QString>("expected");
    QTest::newRow("fixed point in width") << 12345 << 4 << 10 << 8 << 2 << "  123.45";
    QTest::newRow("negative fixed point") << -12345 << 4 << 10 << 8 << 2 << " -123.45";
    QTest::newRow("narrow width does not cut") << 12345 << 4 << 10 << 3 << 2 << "123.45";
    QTest::newRow("smallest int") << IntMin << 4 << 10 << 0 << 0 << "-2147483648";
    QTest::newRow("hex zero padded, upper case") << 0xab << 4 << 16 << 4 << 0 << "00AB";
    QTest::newRow("hex negative word") << -1 << 4 << 16 << 0 << 0 << "FFFFFFFF";
    QTest::newRow("hex two bytes") << 0x123456 << 2 << 16 << 0 << 0 << "3456";
    QTest::newRow("hex one byte") << -1 << 1 << 16 << 0 << 0 << "FF";
    QTest::newRow("binary one byte") << 0x1ff << 1 << 2 << 0 << 0 << "11111111";
}

void TestSimulatedController::formatsValues()
{
    QFETCH(int, value); QFETCH(int, sizeCode); QFETCH(int, radix); QFETCH(int, width); QFETCH(int, decimals);
    QFETCH(QString, expected);
    QCOMPARE(ValueFormatter::format(value, sizeCode, radix, width, decimals), expected);
}

void TestSimulatedController::keypadChecksTheEntry_data()
{
    QTest::addColumn<int>("radix"); QTest::addColumn<int>("decimals"); QTest::addColumn<double>("lowest");
    QTest::addColumn<double>("highest");
    QTest::addColumn<QStringList>("keys"); // multi-letter entries are typed into the entry line
    QTest::addColumn<bool>("accepted");
    QTest::newRow("above highest") << 10 << 0 << 0.0 << 100.0 << QStringList{"1", "0", "1"} << false;
    QTest::newRow("below lowest") << 10 << 0 << -10.0 << 10.0 << QStringList{"1", "1", "-"} << false;
    QTest::newRow("decimals within") << 10 << 2 << 0.0 << 10.0 << QStringList{"1", ".", "2", "5"} << true;
    QTest::newRow("too many decimals") << 10 << 1 << 0.0 << 10.0 << QStringList{"1", ".", "2", "5"} << false;
    QTest::newRow("empty") << 10 << 0 << 0.0 << 10.0 << QStringList{} << false;
    QTest::newRow("typed nan") << 10 << 0 << 0.0 << 100.0 << QStringList{"nan"} << false;
    QTest::newRow("hex above highest") << 16 << 0 << 0.0 << 255.0 << QStringList{"1", "0", "0"} << false;
}

void TestSimulatedController::keypadChecksTheEntry()
{
    QFETCH(int, radix); QFETCH(int, decimals); QFETCH(double, lowest); QFETCH(double, highest);
    QFETCH(QStringList, keys); QFETCH(bool, accepted);
    KeypadDialog dialog;
    dialog.setEntry(radix, QString(), 20, decimals, lowest, highest);
    auto *entry = dialog.findChild<QLineEdit *>(QStringLiteral("keypadEntry"));
    QVERIFY(entry);
    for (const QString &key : std::as_const(keys))
        key.size() > 1 ? QTest::keyClicks(entry, key) : dialog.typeKey(key);
    dialog.accept();
    QCOMPARE(dialog.result() == QDialog::Accepted, accepted);
    QCOMPARE(dialog.problem().isEmpty(), accepted);
}

void TestSimulatedController::keypadPlacement_data()
{
    QTest::addColumn<int>("position");
    QTest::addColumn<QRect>("custom");
    QTest::addColumn<QRect>("field");
    QTest::addColumn<QRect>("placed");
    const QRect field(100, 100, 80, 30); // on a 1000 x 800 screen, the keypad 200 x 300
    QTest::newRow("next to the field: below") << 0 << QRect() << field << QRect(100, 130, 200, 300);
    QTest::newRow("next to the field: above near the bottom") << 0 << QRect() << QRect(100, 700, 80, 30)
                                                               << QRect(100, 400, 200, 300);
    QTest::newRow("next to the field: kept on screen") << 0 << QRect() << QRect(900, 100, 80, 30)
                                                        << QRect(800, 130, 200, 300);
    QTest::newRow("centred on the form") << 1 << QRect() << field << QRect(300, 150, 200, 300);
    QTest::newRow("fixed") << 2 << QRect(10, 20, 250, 350) << field << QRect(10, 20, 250, 350);
    QTest::newRow("fixed without a size: next to the field") << 2 << QRect(10, 20, 0, 0) << field
                                                              << QRect(100, 130, 200, 300);
    QTest::newRow("fixed off the screen") << 2 << QRect(-500, 900, 250, 350) << field << QRect(0, 450, 250, 350);
    const int most = std::numeric_limits<int>::max();
    QTest::newRow("fixed too wide for QRect: next to the field") << 2 << QRect(QPoint(most - 1, 0), QPoint(-most, 10))
                                                                << field << QRect(100, 130, 200, 300);
    QTest::newRow("field past screen coordinates: centred") << 0 << QRect() << QRect(QPoint(most - 9, 0), QPoint(most, 9))
                                                            << QRect(300, 150, 200, 300);
    QTest::newRow("unknown mode: next to the field") << 7 << QRect() << field << QRect(100, 130, 200, 300);
}

void TestSimulatedController::keypadPlacement()
{
    QFETCH(int, position);
    QFETCH(QRect, custom);
    QFETCH(QRect, field);
    QFETCH(QRect, placed);
    const QRect form(100, 100, 600, 400);
    QCOMPARE(KeypadPlacement::place(position, custom, field, form, QSize(200, 300), QRect(0, 0, 1000, 800)), placed);
}

QTEST_MAIN(TestSimulatedController)
#include "tst_simulatedcontroller.moc"
