// The simulated controller: word bits inside their class words, the current channel taken from word
// 40017, coalesced deliveries between startUpdateUI and stopUpdateUI (one script table over a fixed set
// of registrations), registration clean-up, value formatting, the soft keypad's entry checks and where
// it opens (driven through the controller: tst_endtoend).

#include "keypaddialog.h"
#include "keypadplacement.h"
#include "norvointerface_z3.h"
#include "simulatedcontroller.h"
#include "updatevariableinterface.h"
#include "valueformatter.h"

#include <QLineEdit>
#include <QtTest>

#include <limits>

using norvo_v0::QeltApp;

namespace {

constexpr int ChannelWord = QeltApp::CurrentChannelAddress;
constexpr int IntMin = std::numeric_limits<int>::min();
constexpr int Current = QeltApp::CurrentChannel;

using Deliveries = QList<QPair<int, int>>; // (registration index, value) in the order delivered

class CallbackLog : public norvo_v0::UpdateVariableInterface
{
public:
    void updateData(int index, int value) override { received.append(qMakePair(index, value)); }
    Deliveries received;
};

class Recorder : public QWidget, public CallbackLog
{
public:
    using QWidget::QWidget;
    void updateData(int, const QString &text) override { texts.append(text); }
    using CallbackLog::updateData;
    QStringList texts;
};

// What a row does to the controller: 'w' word or 'b' bit write (area = data class or bit type),
// 's' startUpdateUI, 'x' stopUpdateUI, '.' let deliveries happen, 'c' let them happen and forget them.
struct Step
{
    char kind;
    int area = 0, address = 0, bitIndex = 0, value = 0, channel = 0, comId = 0;
};

void watch(QeltApp &app, QWidget *form, QWidget *w, norvo_v0::UpdateVariableInterface *cb, int index, bool bit,
           int area, int address, int bitIndex = 0, int channel = 0)
{
    app.registerUIVariable(form, w, cb, index, 0, channel, bit ? 0 : area, address, bit ? area : -1, bitIndex, 1,
                           10, 10, 0, 0, false);
}

} // namespace

Q_DECLARE_METATYPE(Step)

class TestSimulatedController : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { NORVOInterface_Z3::initialization()->resetToDefaults(); }

    // Every row watches: 0 User word 5, 1 its bit 3, 2 the PLC bit I_BIT 5, 3 Reg word 7 and 4 its bit 0
    // on the current channel; channel c holds 10 + c in Reg word 7.
    void deliveries_data()
    {
        QTest::addColumn<QList<Step>>("steps");
        QTest::addColumn<Deliveries>("expected");
        const Step start{'s'}, stop{'x'}, forget{'c'};
        const int U = QeltApp::User, UB = QeltApp::User_BIT, IB = QeltApp::I_BIT, C = QeltApp::Com, R = QeltApp::Reg;
        QTest::newRow("each once at the start, nothing before") << QList<Step>{{'w', U, 5, 0, 9}, {'.'}, start}
                                                                << Deliveries{{0, 9}, {1, 1}, {2, 0}, {3, 10}, {4, 0}};
        QTest::newRow("only where the value changes")
            << QList<Step>{start, forget, {'w', U, 5, 0, 16}, {'w', U, 7, 0, 1}, {'w', U, 5, 0, 1, 1},
                           {'w', U, 5, 0, 1, 0, 1}, {'b', IB, 5, 0, 1}, {'b', IB, 6, 0, 1}}
            << Deliveries{{0, 16}, {2, 1}};
        QTest::newRow("stopped: nothing; restarted: every value again")
            << QList<Step>{start, forget, stop, {'w', U, 5, 0, 8}, forget, start}
            << Deliveries{{0, 8}, {1, 1}, {2, 0}, {3, 10}, {4, 0}};
        QTest::newRow("word writes coalesce") << QList<Step>{start, forget, {'w', U, 5, 0, 1}, {'w', U, 5, 0, 2}, {'w', U, 5, 0, 3}}
                                              << Deliveries{{0, 3}};
        QTest::newRow("bits of the word coalesce")
            << QList<Step>{start, forget, {'b', UB, 5, 0, 1}, {'b', UB, 5, 1, 1}, {'b', UB, 5, 3, 1}} << Deliveries{{0, 11}, {1, 1}};
        QTest::newRow("word bit through its word, changed once")
            << QList<Step>{start, forget, {'w', U, 5, 0, 1}, {'w', U, 5, 0, 8}, {'w', U, 5, 0, 9}} << Deliveries{{0, 9}, {1, 1}};
        QTest::newRow("PLC bit on, off, on") << QList<Step>{start, forget, {'b', IB, 5, 0, 1}, {'b', IB, 5, 0, 0}, {'b', IB, 5, 0, 1}}
                                             << Deliveries{{2, 1}};
        QTest::newRow("bit 31 is the sign") << QList<Step>{start, forget, {'b', UB, 5, 31, 1}} << Deliveries{{0, IntMin}};
        QTest::newRow("bit 32 ignored") << QList<Step>{start, forget, {'b', UB, 5, 32, 1}} << Deliveries{};
        QTest::newRow("40017 = 3: the third channel") << QList<Step>{start, forget, {'w', C, ChannelWord, 0, 3}}
                                                      << Deliveries{{3, 12}};
        QTest::newRow("40017 = smallest int: the first channel")
            << QList<Step>{{'w', C, ChannelWord, 0, 2}, start, forget, {'w', C, ChannelWord, 0, IntMin}} << Deliveries{{3, 10}, {4, 0}};
        QTest::newRow("the previous channel no longer counts")
            << QList<Step>{start, {'w', C, ChannelWord, 0, 2}, forget, {'w', R, 7, 0, 21}, {'w', R, 7, 0, 22, 1}}
            << Deliveries{{3, 22}, {4, 0}};
        QTest::newRow("writes to the current channel") << QList<Step>{{'w', C, ChannelWord, 0, 3}, start, forget,
                                                                      {'w', R, 7, 0, 31, Current}, {'b', QeltApp::Reg_BIT, 7, 5, 1, Current}}
                                                       << Deliveries{{3, 63}, {4, 1}};
    }

    void deliveries()
    {
        QFETCH(QList<Step>, steps);
        QFETCH(Deliveries, expected);
        SimulatedController sim;
        for (int channel = 0; channel < 6; ++channel)
            sim.setData(channel, QeltApp::Reg, 7, 10 + channel, 0);
        QWidget form;
        auto *w = new Recorder(&form);
        watch(sim, &form, w, w, 0, false, QeltApp::User, 5);
        watch(sim, &form, w, w, 1, true, QeltApp::User_BIT, 5, 3);
        watch(sim, &form, w, w, 2, true, QeltApp::I_BIT, 5);
        watch(sim, &form, w, w, 3, false, QeltApp::Reg, 7, 0, Current);
        watch(sim, &form, w, w, 4, true, QeltApp::Reg_BIT, 7, 0, Current);
        for (const Step &s : steps) {
            if (s.kind == 'w')
                sim.setData(s.channel, QeltApp::DataClass(s.area), s.address, s.value, s.comId);
            else if (s.kind == 'b')
                sim.setBit(s.channel, QeltApp::BitType(s.area), s.address, s.bitIndex, s.value != 0, s.comId);
            else if (s.kind == 's')
                sim.startUpdateUI(&form);
            else if (s.kind == 'x')
                sim.stopUpdateUI();
            if (s.kind == '.' || s.kind == 'c')
                QTest::qWait(5); // deliveries come from the event loop, never from inside a write
            if (s.kind == 'c')
                w->received.clear();
        }
        QTest::qWait(5);
        QCOMPARE(w->received, expected);
        // Reads resolve the current channel as registrations do.
        QCOMPARE(sim.getData(Current, QeltApp::Reg, 7, 0), sim.getData(sim.resolveChannel(Current), QeltApp::Reg, 7, 0));
    }

    void removeAndDestruction()
    {
        SimulatedController sim;
        QWidget formA, formB;
        auto *w1 = new Recorder(&formA), *w2 = new Recorder(&formA);
        CallbackLog orphanLog, formLog; // outlive their widgets, so a late delivery would show
        auto *doomed = new QWidget(&formA), *doomedForm = new QWidget;
        watch(sim, &formA, w1, w1, 0, false, QeltApp::User, 1);
        watch(sim, &formA, w2, w2, 0, false, QeltApp::User, 1);
        watch(sim, &formB, w1, w1, 7, false, QeltApp::User, 1); // the same widget on another form stays
        watch(sim, &formA, doomed, &orphanLog, 0, false, QeltApp::User, 1);
        watch(sim, doomedForm, new QWidget(doomedForm), &formLog, 0, false, QeltApp::User, 1);
        sim.removeUIVariable(&formA, w1);
        delete doomedForm;
        delete doomed;
        QCOMPARE(sim.registrationCount(), 3); // w2, w1 on form B, the deleted widget's until a delivery finds it

        sim.startUpdateUI(&formA);
        sim.startUpdateUI(&formB);
        sim.setData(0, QeltApp::User, 1, 5, 0);
        QTest::qWait(5);
        QCOMPARE((QList<Deliveries>{w1->received, w2->received, orphanLog.received, formLog.received}),
                 (QList<Deliveries>{{{7, 5}}, {{0, 5}}, {}, {}}));
        // Removed and registered the same again, as a table renews its rows: its text comes again on the
        // restart, made once.
        sim.registerUIVariable(&formA, w2, w2, 3, 0, 0, QeltApp::User, 1, -1, 0, 4, 10, 8, 2, 0, true);
        for (int i = 0; i < 2; ++i) {
            sim.stopUpdateUI();
            sim.removeUIVariable(&formA, w2);
            sim.registerUIVariable(&formA, w2, w2, 3, 0, 0, QeltApp::User, 1, -1, 0, 4, 10, 8, 2, 0, true);
            sim.startUpdateUI(&formA);
            sim.flushUpdates();
        }
        QCOMPARE(w2->texts, (QStringList{QStringLiteral("0.05"), QStringLiteral("0.05")}));
        QVERIFY(w2->texts.at(0).constData() == w2->texts.at(1).constData());
    }

    void formatsValues_data()
    {
        QTest::addColumn<QList<int>>("format"); // value, size code, radix, width, decimals
        QTest::addColumn<QString>("expected");
        QTest::newRow("fixed point in width") << QList<int>{12345, 4, 10, 8, 2} << "  123.45";
        QTest::newRow("negative fixed point") << QList<int>{-12345, 4, 10, 8, 2} << " -123.45";
        QTest::newRow("narrow width does not cut") << QList<int>{12345, 4, 10, 3, 2} << "123.45";
        QTest::newRow("smallest int") << QList<int>{IntMin, 4, 10, 0, 0} << "-2147483648";
        QTest::newRow("hex zero padded, upper case") << QList<int>{0xab, 4, 16, 4, 0} << "00AB";
        QTest::newRow("hex negative word") << QList<int>{-1, 4, 16, 0, 0} << "FFFFFFFF";
        QTest::newRow("hex two bytes") << QList<int>{0x123456, 2, 16, 0, 0} << "3456";
        QTest::newRow("hex one byte") << QList<int>{-1, 1, 16, 0, 0} << "FF";
        QTest::newRow("binary one byte") << QList<int>{0x1ff, 1, 2, 0, 0} << "11111111";
    }

    void formatsValues()
    {
        QFETCH(QList<int>, format);
        QFETCH(QString, expected);
        QCOMPARE(ValueFormatter::format(format[0], format[1], format[2], format[3], format[4]), expected);
    }

    void keypadChecksTheEntry_data()
    {
        QTest::addColumn<QList<double>>("entry"); // radix, decimals, lowest, highest
        QTest::addColumn<QStringList>("keys"); // multi-letter entries are typed into the entry line
        QTest::addColumn<QString>("range"); // as the keypad lists it before anything is typed
        QTest::addColumn<QString>("refusal"); // empty: accepted
        QTest::newRow("below lowest") << QList<double>{10, 0, -10, 10} << QStringList{"1", "1", "-"} << "-10 ... 10"
                                      << "\"-11\" refused: allowed -10 ... 10";
        QTest::newRow("decimals within") << QList<double>{10, 2, 0, 10} << QStringList{"1", ".", "2", "5"} << "0 ... 10" << "";
        QTest::newRow("too many decimals") << QList<double>{10, 1, 0, 1e9} << QStringList{"1", ".", "2", "5"} << "0 ... 1000000000"
                                           << "\"1.25\" refused: at most 1 decimal place(s)";
        QTest::newRow("empty") << QList<double>{10, 0, 0, 10} << QStringList{} << "0 ... 10" << "Nothing typed";
        QTest::newRow("typed nan") << QList<double>{10, 0, 0, 100} << QStringList{"nan"} << "0 ... 100"
                                   << "\"nan\" refused: allowed 0 ... 100";
        QTest::newRow("hex above highest") << QList<double>{16, 0, 0, 255} << QStringList{"1", "0", "0"} << "0 ... FF"
                                           << "\"100\" refused: allowed 0 ... FF";
    }

    void keypadChecksTheEntry()
    {
        QFETCH(QList<double>, entry);
        QFETCH(QStringList, keys);
        QFETCH(QString, range);
        QFETCH(QString, refusal);
        KeypadDialog dialog;
        dialog.setEntry(int(entry[0]), QString(), 20, int(entry[1]), entry[2], entry[3]);
        dialog.setDescription(QStringLiteral("Feed"), QStringLiteral("mm/min"));
        QCOMPARE(dialog.description(), "Feed [mm/min]\nAllowed: " + range);
        auto *line = dialog.findChild<QLineEdit *>(QStringLiteral("keypadEntry"));
        QVERIFY(line);
        for (const QString &key : std::as_const(keys))
            key.size() > 1 ? QTest::keyClicks(line, key) : dialog.typeKey(key);
        dialog.accept();
        QCOMPARE(dialog.result() == QDialog::Accepted, refusal.isEmpty());
        QCOMPARE(dialog.problem(), refusal);
    }

    void keypadPlacement_data()
    {
        QTest::addColumn<int>("position");
        QTest::addColumn<QRect>("custom");
        QTest::addColumn<QRect>("field");
        QTest::addColumn<QRect>("placed");
        const QRect field(100, 100, 80, 30), below(100, 130, 200, 300); // on a 1000 x 800 screen, the keypad 200 x 300
        const int most = std::numeric_limits<int>::max();
        QTest::newRow("next to the field: below") << 0 << QRect() << field << below;
        QTest::newRow("next to the field: above near the bottom") << 0 << QRect() << QRect(100, 700, 80, 30) << QRect(100, 400, 200, 300);
        QTest::newRow("next to the field: kept on screen") << 0 << QRect() << QRect(900, 100, 80, 30) << QRect(800, 130, 200, 300);
        QTest::newRow("centred on the form") << 1 << QRect() << field << QRect(300, 150, 200, 300);
        QTest::newRow("fixed") << 2 << QRect(10, 20, 250, 350) << field << QRect(10, 20, 250, 350);
        QTest::newRow("fixed without a size: next to the field") << 2 << QRect(10, 20, 0, 0) << field << below;
        QTest::newRow("fixed off the screen") << 2 << QRect(-500, 900, 250, 350) << field << QRect(0, 450, 250, 350);
        QTest::newRow("fixed too wide for QRect: next to the field") << 2 << QRect(QPoint(most - 1, 0), QPoint(-most, 10)) << field << below;
        QTest::newRow("field past screen coordinates: centred") << 0 << QRect() << QRect(QPoint(most - 9, 0), QPoint(most, 9))
                                                                << QRect(300, 150, 200, 300);
        QTest::newRow("unknown mode: next to the field") << 7 << QRect() << field << below;
    }

    void keypadPlacement()
    {
        QFETCH(int, position);
        QFETCH(QRect, custom);
        QFETCH(QRect, field);
        QFETCH(QRect, placed);
        const QRect form(100, 100, 600, 400);
        QCOMPARE(KeypadPlacement::place(position, custom, field, form, QSize(200, 300), QRect(0, 0, 1000, 800)), placed);
    }
};

QTEST_MAIN(TestSimulatedController)
#include "tst_simulatedcontroller.moc"
