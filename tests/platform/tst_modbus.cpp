// The Modbus/TCP link against an independent server (pymodbus) on loopback: the map file, request
// merging, reads of every table and word order, writes, the bit button and a table cell end to end,
// and the faults a real device brings (a restart, exceptions, garbage).
#include "bitbutton.h"
#include "buttontestsupport.h"
#include "modbuscontroller.h"
#include "modbusmap.h"
#include "modbustestserver.h"
#include "norvointerface_z3.h"
#include "tablecontents.h"
#include "tablewidget.h"
#include "unknownvaluemarks.h"
#include "updatevariableinterface.h"

#include <QDialog>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QPushButton>
#include <QTemporaryDir>
#include <QSignalSpy>
#include <QTableWidgetItem>
#include <QtTest>

#include <sys/stat.h>

using norvo_v0::QeltApp;

namespace {

// A widget that records what the application hands it.
class Probe : public QWidget, public norvo_v0::UpdateVariableInterface
{
public:
    using QWidget::QWidget;
    void updateData(int index, int value) override { values[index] = value; }
    QHash<int, int> values;
};

const QByteArray EveryTable = R"({"entries": [
  {"dataClass": "User", "first": 0, "last": 99, "unit": 1, "table": "holding", "start": 100},
  {"dataClass": "Sys", "first": 0, "last": 9, "unit": 1, "table": "input", "start": 0, "wordOrder": "lowFirst"},
  {"dataClass": "Reg", "first": 0, "last": 9, "unit": 2, "table": "holding", "start": 0, "registers": 1},
  {"bitType": "O_BIT", "first": 0, "last": 63, "unit": 1, "table": "coils", "start": 0},
  {"bitType": "I_BIT", "first": 0, "last": 63, "unit": 1, "table": "discreteInputs", "start": 0},
  {"bitType": "User_BIT", "first": 0, "last": 99, "unit": 1, "table": "holding", "start": 100},
  {"dataClass": "Mcm", "first": 0, "last": 9, "unit": 1, "table": "holding", "start": 4990},
  {"dataClass": "Bus", "first": 0, "last": 9, "unit": 2, "table": "holding", "start": 100, "type": "int16"},
  {"dataClass": "Com", "first": 0, "last": 9, "unit": 2, "table": "holding", "start": 200, "wordOrder": "lowFirst", "byteSwap": true},
  {"bitType": "Com_BIT", "first": 0, "last": 9, "unit": 2, "table": "holding", "start": 200, "wordOrder": "lowFirst", "byteSwap": true}
]})";

// A controller on the map with a form and a probe; watch() registers a word (dataClass, bitType -1) or a
// bit (dataClass -1) of the first link for the probe or another one.
struct Link
{
    explicit Link(int port) : controller(everyTable(), QStringLiteral("127.0.0.1"), port) {}
    // The same entries on named devices: "a" at port, and the unit 2 entries on "b" at port2 when given;
    // both with options (JSON fields).
    Link(int port, const QByteArray &options, int port2 = 0) : controller(everyTable(port, options, port2)) {}
    static ModbusMap everyTable(int port = 0, const QByteArray &options = {}, int port2 = 0)
    {
        QJsonObject top = QJsonDocument::fromJson(EveryTable).object();
        if (port) {
            QJsonObject a = QJsonDocument::fromJson("{" + options + "}").object();
            a.insert(QStringLiteral("name"), QStringLiteral("a"));
            if (!a.contains(QLatin1String("serial"))) {
                a.insert(QStringLiteral("host"), QStringLiteral("127.0.0.1"));
                a.insert(QStringLiteral("port"), port);
            }
            QJsonArray devices{a}, entries;
            if (port2) {
                a.insert(QStringLiteral("name"), QStringLiteral("b"));
                a.insert(QStringLiteral("port"), port2);
                devices.append(a);
            }
            for (const QJsonValue e : top.value(QLatin1String("entries")).toArray()) {
                QJsonObject entry = e.toObject();
                entry.insert(QStringLiteral("device"), port2 && entry.value(QLatin1String("unit")).toInt() == 2 ? "b" : "a");
                entries.append(entry);
            }
            top = QJsonObject{{"devices", devices}, {"entries", entries}};
        }
        ModbusMap map;
        map.parse(QJsonDocument(top).toJson());
        return map;
    }
    void watch(int index, int dataClass, int bitType, int address, int bitIndex = 0, int channel = 0, Probe *to = nullptr)
    {
        to = to ? to : &probe;
        controller.registerUIVariable(&form, to, to, index, 0, channel, dataClass, address, bitType, bitIndex, 0, 0, 0, 0, 0,
                                      false);
    }
    bool marked() const { return controller.marks().isMarked(&probe); }
    ModbusController controller;
    QDialog form;
    Probe probe{&form};
};

// A variable and its value: 'w' word (area = data class) or 'b' bit (area = bit type).
struct Write
{
    char kind;
    int area, address, bitIndex, value;
};

} // namespace

Q_DECLARE_METATYPE(Write)

class TestModbus : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { QVERIFY(m_server.start()); }
    void init() { NORVOInterface_Z3::initialization()->resetToDefaults(); }

    void mapErrors_data()
    {
        QTest::addColumn<QByteArray>("json");
        QTest::addColumn<QString>("error");
        const auto map = [](const QByteArrayList &entries) { // each in holding registers
            return QByteArray(R"({"entries":[{"table":"holding",)") + entries.join(R"(},{"table":"holding",)") + "}]}";
        };
        const QByteArray user = R"("dataClass":"User","first":0,"last":9)";
        QTest::newRow("not json") << QByteArray("{entries: ") << "not JSON at byte";
        QTest::newRow("both kinds") << map({R"("dataClass":"User","bitType":"I_BIT","first":0,"last":1)"}) << "entry 1: needs either \"dataClass\" or \"bitType\"";
        QTest::newRow("unknown class") << map({R"("dataClass":"Usr","first":0,"last":1)"}) << "entry 1: \"Usr\" is no data class";
        QTest::newRow("bits in registers") << map({R"("bitType":"I_BIT","first":0,"last":1)"}) << "entry 1: PLC bits live in coils or discrete inputs";
        QTest::newRow("beyond an int") << map({R"("dataClass":"User","first":1e62,"last":1)"}) << "entry 1: \"first\" must be a whole number from 0 to 2147483646";
        QTest::newRow("every word") << map({R"("dataClass":"User","first":0,"last":2147483646)"}) << "entry 1: 4294967294 addresses from 0 run past";
        QTest::newRow("last below first") << map({R"("dataClass":"User","first":5,"last":1)"}) << "entry 1: \"last\" is below \"first\"";
        QTest::newRow("same variables twice") << map({user, R"("dataClass":"User","first":5,"last":20,"start":100)"})
            << "entry 1 (link 0, channel 1, User words 0 ... 9) and entry 2 (link 0, channel 1, User words 5 ... 20) overlap: both map the same variables";
        QTest::newRow("same registers twice") << map({user, R"("dataClass":"Mcm","first":0,"last":9,"start":19)"}) << "overlap on unit 1: both use holding 19 ... 19";
        QTest::newRow("reserved unit") << map({R"("dataClass":"User","first":0,"last":1,"unit":250)"}) << "entry 1: \"unit\" 250 is no Modbus/TCP unit";
        QTest::newRow("unsigned 32 bits") << map({R"("dataClass":"User","first":0,"last":1,"type":"uint32")"}) << "entry 1: \"type\" uint32 does not fit the panel's words";
        QTest::newRow("type against registers") << map({R"("dataClass":"User","first":0,"last":1,"type":"int16","registers":2)"}) << "entry 1: \"registers\" 2 contradicts \"type\" int16";
        QTest::newRow("word order of one register") << map({R"("dataClass":"User","first":0,"last":1,"type":"uint16","wordOrder":"lowFirst")"}) << "\"wordOrder\" is for words of two registers";
        QTest::newRow("misspelt field") << map({R"("dataClass":"User","first":0,"last":1,"wordorder":"lowFirst")"}) << "entry 1: unknown field \"wordorder\"";
        const auto devices = [](const QByteArray &devices, const QByteArray &entry) {
            return "{\"devices\":[" + devices + R"(],"entries":[{"dataClass":"User","first":0,"last":9,"table":"holding",)" + entry + "}]}";
        };
        const QByteArray two = R"({"name":"plc","host":"10.0.0.5"},{"name":"drives","serial":"/dev/ttyS0","parity":"none"})";
        QTest::newRow("device not listed") << devices(two, R"("device":"press")") << "entry 1: \"device\" \"press\" is not in the \"devices\" list";
        QTest::newRow("device not named") << devices(two, R"("unit":1)") << "entry 1: needs a \"device\" (the map has 2)";
        QTest::newRow("serial unit 0") << devices(two, R"("device":"drives","unit":0)") << "entry 1: \"unit\" 0 is no Modbus RTU unit (1 ... 247)";
        QTest::newRow("host and serial") << devices(R"({"name":"plc","host":"h","serial":"/dev/ttyS0"})", R"("unit":1)") << "device 1: needs either \"host\" (Modbus/TCP) or \"serial\"";
        QTest::newRow("serial options over TCP") << devices(R"({"name":"plc","host":"h","baud":9600,"maskWrite":"fc23"})", R"("unit":1)") << "device 1: \"baud\" is for a serial line\ndevice 1: \"maskWrite\" must be fc22, readModifyWrite or auto";
        QTest::newRow("same registers on two devices are fine") << QByteArray(R"({"devices":[{"name":"a","host":"h"},{"name":"b","host":"h"}],"entries":[
            {"device":"a","dataClass":"User","first":0,"last":9,"table":"holding"},{"device":"b","dataClass":"Mcm","first":0,"last":9,"table":"holding"}]})") << QString();
        QTest::newRow("bits of the same words are fine") << map({user, R"("bitType":"User_BIT","first":0,"last":9)"}) << QString();
    }

    void mapErrors()
    {
        QFETCH(QByteArray, json);
        QFETCH(QString, error);
        ModbusMap map;
        QCOMPARE(map.parse(json), error.isEmpty());
        if (!error.isEmpty()) {
            QVERIFY2(map.errors().join(QLatin1Char('\n')).contains(error), qPrintable(map.errors().join(QLatin1Char('\n'))));
            QVERIFY(map.entries().isEmpty());
        }
    }

    // A pipe would block the panel in open() and a folder is no map: both are refused by name.
    void mapFileMustBeRegular()
    {
        QTemporaryDir dir;
        const QString pipe = dir.filePath(QStringLiteral("map.json"));
        QCOMPARE(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
        for (const QString &path : {pipe, dir.path()}) {
            ModbusMap map;
            QVERIFY(!map.readFile(path));
            QVERIFY2(map.errors().join(QString()).contains(QLatin1String("not a regular file")), qPrintable(path));
        }
    }

    void readsAndWrites_data()
    {
        QTest::addColumn<bool>("read"); // the device's values reach the widget, or the value written reaches the device
        QTest::addColumn<Write>("variable"); // and its value
        QTest::addColumn<QString>("registers"); // "TABLE UNIT ADDRESS" and the values there
        QTest::addColumn<QList<int>>("values");
        QTest::addColumn<QString>("refused");
        const QString none;
        QTest::newRow("read two holding registers, high word first") << true << Write{'w', QeltApp::User, 2, 0, 65538} << "hr 1 104" << QList<int>{1, 2} << none;
        QTest::newRow("read input registers, low word first") << true << Write{'w', QeltApp::Sys, 4, 0, 65543} << "ir 1 8" << QList<int>{7, 1} << none;
        QTest::newRow("read one register, unit 2") << true << Write{'w', QeltApp::Reg, 5, 0, 40000} << "hr 2 5" << QList<int>{40000} << none;
        QTest::newRow("read a coil") << true << Write{'b', QeltApp::O_BIT, 7, 0, 1} << "co 1 7" << QList<int>{1} << none;
        QTest::newRow("read a discrete input") << true << Write{'b', QeltApp::I_BIT, 9, 0, 1} << "di 1 9" << QList<int>{1} << none;
        QTest::newRow("read a bit of the low half") << true << Write{'b', QeltApp::User_BIT, 4, 1, 1} << "hr 1 108" << QList<int>{1, 2} << none;
        QTest::newRow("read a bit of the high half") << true << Write{'b', QeltApp::User_BIT, 6, 16, 1} << "hr 1 112" << QList<int>{1, 2} << none;
        QTest::newRow("write two registers, high word first") << false << Write{'w', QeltApp::User, 3, 0, 0x12345678} << "hr 1 106" << QList<int>{0x1234, 0x5678} << none;
        QTest::newRow("write one register") << false << Write{'w', QeltApp::Reg, 2, 0, 513} << "hr 2 2" << QList<int>{513} << none;
        QTest::newRow("too large for one register") << false << Write{'w', QeltApp::Reg, 3, 0, 70000} << "hr 2 3" << QList<int>{0} << "70000 does not fit an unsigned 16-bit word";
        QTest::newRow("write input registers") << false << Write{'w', QeltApp::Sys, 1, 0, 5} << "ir 1 2" << QList<int>{0, 0} << "read-only input registers";
        QTest::newRow("write a coil") << false << Write{'b', QeltApp::O_BIT, 4, 0, 1} << "co 1 4" << QList<int>{1} << none;
        QTest::newRow("write a discrete input") << false << Write{'b', QeltApp::I_BIT, 4, 0, 1} << "di 1 4" << QList<int>{0} << "read-only discrete inputs";
        QTest::newRow("write a bit of the low half") << false << Write{'b', QeltApp::User_BIT, 5, 3, 0} << "hr 1 110" << QList<int>{255, 255 & ~8} << none;
        QTest::newRow("write a bit of the high half") << false << Write{'b', QeltApp::User_BIT, 5, 20, 0} << "hr 1 110" << QList<int>{255 & ~16, 255} << none;
        QTest::newRow("read a negative int16") << true << Write{'w', QeltApp::Bus, 1, 0, -2} << "hr 2 101" << QList<int>{65534} << none;
        QTest::newRow("read byte-swapped, low word first") << true << Write{'w', QeltApp::Com, 1, 0, 0x20001} << "hr 2 202" << QList<int>{0x100, 0x200} << none;
        QTest::newRow("write a negative int16") << false << Write{'w', QeltApp::Bus, 2, 0, -3} << "hr 2 102" << QList<int>{65533} << none;
        QTest::newRow("too large for an int16") << false << Write{'w', QeltApp::Bus, 3, 0, 40000} << "hr 2 103" << QList<int>{0} << "40000 does not fit a signed 16-bit word";
        QTest::newRow("write byte-swapped, low word first") << false << Write{'w', QeltApp::Com, 3, 0, 0x01020304} << "hr 2 206" << QList<int>{0x0403, 0x0201} << none;
        QTest::newRow("write a bit of a byte-swapped word") << false << Write{'b', QeltApp::Com_BIT, 4, 0, 1} << "hr 2 208" << QList<int>{0x100, 0} << none;
        QTest::newRow("write a word not in the map") << false << Write{'w', QeltApp::User, 100, 0, 1} << "hr 1 300" << QList<int>{0, 0} << "User word 100 refused: the map has no entry";
    }

    // A value the device holds once the first poll has delivered reaches the widget by a later poll.
    void readsAndWrites()
    {
        QFETCH(bool, read);
        QFETCH(Write, variable);
        QFETCH(QString, registers);
        QFETCH(QList<int>, values);
        QFETCH(QString, refused);
        m_server.command(QStringLiteral("set hr 1 110 255 255")); // bits are written into what is there
        Link link(m_server.port());
        const bool bit = variable.kind == 'b';
        if (read) {
            link.watch(0, bit ? -1 : variable.area, bit ? variable.area : -1, variable.address, variable.bitIndex);
            link.controller.startUpdateUI(&link.form);
            QTRY_VERIFY_WITH_TIMEOUT(!link.marked(), 5000);
            QCOMPARE(link.probe.values.value(0, -7), 0);
            QStringList command{QStringLiteral("set"), registers}; // registers no other row uses
            for (int v : values)
                command << QString::number(v);
            m_server.command(command.join(QLatin1Char(' ')));
            QTRY_COMPARE_WITH_TIMEOUT(link.probe.values.value(0), variable.value, 3000);
            return;
        }
        QTRY_VERIFY_WITH_TIMEOUT(link.controller.isLinkUp(), 5000);
        QSignalSpy refusals(&link.controller, &ModbusController::writeReported);
        if (!refused.isEmpty())
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression(refused));
        if (bit)
            link.controller.setBit(0, QeltApp::BitType(variable.area), variable.address, variable.bitIndex, variable.value != 0, 0);
        else
            link.controller.setData(0, QeltApp::DataClass(variable.area), variable.address, variable.value, 0);
        const QStringList where = registers.split(QLatin1Char(' '));
        QTRY_COMPARE_WITH_TIMEOUT(m_server.get(where[0], where[1].toInt(), where[2].toInt(), int(values.size())), values, 3000);
        QCOMPARE(refusals.size(), refused.isEmpty() ? 0 : 1);
        if (!refused.isEmpty())
            QVERIFY2(refusals.at(0).at(0).toString().contains(refused), qPrintable(refusals.at(0).at(0).toString()));
    }

    // One poll reads the registered variables in as few requests as it may. A read the device refuses
    // (Mcm words 5 ... lie past its 5,000 registers) and a variable the map lacks mark only their widgets.
    void pollsMergedRequests()
    {
        ModbusTestServer server; // its own: the log counts every request
        QVERIFY(server.start());
        server.command(QStringLiteral("set hr 1 100 0 7")); // User word 0
        server.command(QStringLiteral("set hr 1 180 0 5")); // User word 40
        server.command(QStringLiteral("set hr 1 226 0 9")); // User word 63
        Link link(server.port());
        link.controller.setPollPeriod(100000); // one poll when the plan arrives, then none
        QSignalSpy polls(&link.controller, &ModbusController::pollApplied);
        QList<int> wordAtPoll;
        connect(&link.controller, &ModbusController::pollApplied, this,
                [&] { wordAtPoll << link.controller.getData(0, QeltApp::User, 0, 0); });
        // Connected with nothing registered: nothing is read, and no values are announced.
        QTRY_VERIFY_WITH_TIMEOUT(link.controller.isLinkUp(), 5000);
        QTest::qWait(200);
        QCOMPARE(polls.size(), 0);
        QVERIFY(server.log().isEmpty());

        int index = 0;
        for (int address : {63, 0, 1, 40, 2, 3, 62, 10}) // in any order
            link.watch(index++, QeltApp::User, -1, address);
        for (int address : {0, 5, 6})
            link.watch(index++, -1, QeltApp::O_BIT, address);
        link.watch(index++, QeltApp::Reg, -1, 4);
        Probe beyond(&link.form), unmapped(&link.form);
        unmapped.setObjectName(QStringLiteral("spindleSpeed"));
        const QString problem = QStringLiteral("no map entry for link 0, channel 2, User word 7 (widget \"spindleSpeed\")");
        QTest::ignoreMessage(QtWarningMsg, qPrintable(problem)); // once, though registered twice
        for (int i : {0, 1})
            link.watch(i, QeltApp::User, -1, 7, 0, 1, &unmapped);
        link.watch(0, QeltApp::Mcm, -1, 9, 0, 0, &beyond);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("refused the read")));
        link.controller.startUpdateUI(&link.form);
        QTRY_VERIFY_WITH_TIMEOUT(polls.size() >= 1, 5000);
        QCOMPARE(wordAtPoll.value(0), 7); // announced once the device's values are in
        // User words 0 ... 40 are one read of registers 100 ... 181, gaps included; 62 and 63 would make it
        // longer than one read may be. The coils are one read, Reg one.
        QStringList reads = server.log();
        reads.sort();
        QCOMPARE(reads, (QStringList{"1 1 0 7", "3 1 100 82", "3 1 224 4", "3 2 4 1"}));
        QTRY_COMPARE(link.probe.values.value(1), 7);
        QCOMPARE(link.probe.values.size(), index);
        QCOMPARE((QList<int>{link.probe.values[0], link.probe.values[3]}), (QList<int>{9, 5})); // words 63 and 40
        QCOMPARE((QList<bool>{link.marked(), link.controller.marks().isMarked(&beyond), link.controller.marks().isMarked(&unmapped)}),
                 (QList<bool>{false, true, true}));
        QCOMPARE(link.controller.problems(), QStringList{problem});
        QVERIFY(link.controller.isLinkUp());
    }

    void bitButtonAndTableCell()
    {
        m_server.command(QStringLiteral("set hr 1 110 0 1234")); // User word 5
        Link link(m_server.port());
        QTRY_VERIFY_WITH_TIMEOUT(link.controller.isLinkUp(), 5000);
        link.form.setProperty("QeltApp", QeltApp::toVariant(&link.controller));
        BitButton *button = buttontest::keepOnUserBitKey(&link.form, 10, 3);
        auto *table = new TableWidget(&link.form);
        table->setGeometry(0, 40, 300, 200);
        table->setRowCount(1);
        table->setColumnCount(1);
        QTableWidgetItem cell;
        cell.setWhatsThis(QStringLiteral("1@0@5@8@0@0@100000"));
        table->setData(TableContents::encode(1, 1, {{&cell}}));
        link.form.show();
        QVERIFY(QTest::qWaitForWindowExposed(&link.form));
        link.controller.startUpdateUI(&link.form);
        QTRY_COMPARE_WITH_TIMEOUT(table->item(0, 0) ? table->item(0, 0)->text().trimmed() : QString(), QStringLiteral("1234"), 5000);
        QTRY_VERIFY(!link.controller.marks().isMarked(button));
        // A held key: its bit is on while pressed, off once let go, on the device as on the screen.
        QTest::mousePress(button, Qt::LeftButton, {}, QPoint(50, 15));
        QTRY_COMPARE_WITH_TIMEOUT(m_server.get(QStringLiteral("hr"), 1, 121, 1), QList<int>{8}, 3000);
        QTRY_COMPARE_WITH_TIMEOUT(button->state(), BitButton::On, 3000);
        QTest::mouseRelease(button, Qt::LeftButton, {}, QPoint(50, 15));
        QTRY_COMPARE_WITH_TIMEOUT(m_server.get(QStringLiteral("hr"), 1, 121, 1), QList<int>{0}, 3000);
        QTRY_COMPARE_WITH_TIMEOUT(button->state(), BitButton::Off, 3000);
    }

    void deviceRestarts()
    {
        auto server = std::make_unique<ModbusTestServer>();
        QVERIFY(server->start());
        const int port = server->port();
        server->command(QStringLiteral("set hr 1 100 0 7"));
        Link link(port);
        link.watch(0, QeltApp::User, -1, 0);
        link.controller.startUpdateUI(&link.form);
        QTRY_COMPARE_WITH_TIMEOUT(link.probe.values.value(0), 7, 5000);
        QTRY_VERIFY(!link.marked());

        server.reset();
        QTRY_VERIFY_WITH_TIMEOUT(!link.controller.isLinkUp(), 5000);
        QVERIFY(link.marked());
        QSignalSpy refused(&link.controller, &ModbusController::writeReported);
        link.controller.setData(0, QeltApp::User, 0, 99, 0);
        QCOMPARE(refused.size(), 1);
        QVERIFY(refused.at(0).at(0).toString().contains(QLatin1String("is down")));

        server = std::make_unique<ModbusTestServer>(false, port);
        QVERIFY(server->start());
        server->command(QStringLiteral("set hr 1 100 0 8"));
        QTRY_VERIFY_WITH_TIMEOUT(link.controller.isLinkUp(), 10000);
        QTRY_COMPARE_WITH_TIMEOUT(link.probe.values.value(0), 8, 5000);
        QTRY_VERIFY(!link.marked());
        // The refused write was not kept for later.
        QCOMPARE(server->get(QStringLiteral("hr"), 1, 100, 2), (QList<int>{0, 8}));
    }

    void garbageGetsNoValueThrough()
    {
        ModbusTestServer garbage(true);
        QVERIFY(garbage.start());
        Link link(garbage.port());
        link.watch(0, QeltApp::User, -1, 0);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("requests in a row without an answer \\(Invalid data\\)")));
        link.controller.startUpdateUI(&link.form);
        QTRY_VERIFY_WITH_TIMEOUT(link.controller.status().contains(QLatin1String("without an answer")), 5000);
        QVERIFY(link.marked());
        QCOMPARE(link.probe.values.value(0), 0); // the start's zero only: nothing from the garbage
    }

    // Devices as they behave in the field, one behaviour of the test server a row: what the message line
    // says, what became of a write, and that none is sent twice.
    void deviceBehaviours_data()
    {
        QTest::addColumn<bool>("serial"); // Modbus RTU on a pseudo-terminal pair, or Modbus/TCP
        QTest::addColumn<QString>("behaviour"); // server commands, ';' between
        QTest::addColumn<QByteArray>("options"); // of the device
        QTest::addColumn<Write>("variable"); // written once the link is up; kind 'n': nothing
        QTest::addColumn<QList<int>>("values"); // what the device holds then
        QTest::addColumn<QString>("status"); // the message line
        QTest::addColumn<QString>("report"); // of the write
        const Write none{'n', 0, 0, 0, 0}, word{'w', QeltApp::User, 3, 0, 4242}; // hr 1 106
        const Write bit{'b', QeltApp::User_BIT, 7, 3, 1}; // hr 1 115, bit 3
        const QString up = QStringLiteral("Connected."), quiet;
        QTest::newRow("answers late, in time") << false << "late 1 450" << QByteArray() << word << QList<int>{0, 4242} << up << quiet;
        QTest::newRow("answers too late") << false << "late 1 700" << QByteArray(R"("timeoutMs": 300)") << word << QList<int>{0, 4242} << quiet
                                          << "outcome unknown, unit 1 ";
        QTest::newRow("a silent unit") << false << "silent 2" << QByteArray() << none << QList<int>{} << "Connected; 1 variable unknown: unit 2 does not answer" << quiet;
        QTest::newRow("no function 22") << false << "nofc22" << QByteArray() << bit << QList<int>{8} << up << quiet;
        QTest::newRow("no function 22, none other allowed") << false << "nofc22" << QByteArray(R"("maskWrite": "fc22")") << bit << QList<int>{0} << up
                                                            << "refused: unit 1 answered: Illegal function";
        QTest::newRow("reads of at most 64") << false << "limit 64" << QByteArray() << none << QList<int>{} << up << quiet;
        QTest::newRow("closes idle connections") << false << "idleclose 300" << QByteArray() << word << QList<int>{0, 4242} << up << quiet;
        QTest::newRow("stalls") << false << "stall" << QByteArray(R"("timeoutMs": 100)") << none << QList<int>{} << "3 requests in a row without an answer" << quiet;
        const QByteArray fast = R"("timeoutMs": 300)";
        QTest::newRow("serial line") << true << "behave normal" << fast << word << QList<int>{0, 4242} << up << quiet;
        QTest::newRow("serial line, a CRC error") << true << "corrupt 1" << fast << word << QList<int>{0, 4242} << up << quiet;
        QTest::newRow("serial line, a silent unit") << true << "silent 2" << fast << none << QList<int>{} << "Connected; 1 variable unknown: unit 2 does not answer" << quiet;
        QTest::newRow("resets every connection") << false << "reset" << QByteArray() << none << QList<int>{} << "connection lost" << quiet;
    }

    void deviceBehaviours()
    {
        QFETCH(bool, serial);
        QFETCH(QString, behaviour);
        QFETCH(QByteArray, options);
        QFETCH(Write, variable);
        QFETCH(QList<int>, values);
        QFETCH(QString, status);
        QFETCH(QString, report);
        ModbusTestServer server;
        QVERIFY(serial ? server.startSerial() : server.start());
        for (const QString &command : behaviour.split(QLatin1Char(';')))
            QVERIFY(server.behave(command.trimmed()));
        if (serial)
            options += ", \"serial\": \"" + server.serialPort().toUtf8() + '"';
        QTemporaryDir dir;
        auto trace = std::make_shared<ModbusTrace>();
        QVERIFY(trace->open(dir.filePath(QStringLiteral("trace"))));
        Link link(serial ? 1 : server.port(), options);
        QSignalSpy said(&link.controller, &ModbusController::statusChanged);
        link.controller.setTrace(trace);
        if (behaviour.startsWith(QLatin1String("idleclose")))
            link.controller.setPollPeriod(100000); // idle after the first poll
        Probe unit2(&link.form);
        link.watch(0, QeltApp::User, -1, 0);
        link.watch(1, QeltApp::User, -1, 40); // one read of 82 registers with word 0
        link.watch(0, QeltApp::Reg, -1, 0, 0, 0, &unit2);
        QSignalSpy reports(&link.controller, &ModbusController::writeReported);
        link.controller.startUpdateUI(&link.form);
        if (variable.kind != 'n') {
            QTRY_VERIFY_WITH_TIMEOUT(link.controller.isLinkUp(), 5000);
            if (link.controller.pollPeriod() > 1000)
                QTest::qWait(800); // the device has closed the connection by then
            if (variable.kind == 'b')
                link.controller.setBit(0, QeltApp::BitType(variable.area), variable.address, variable.bitIndex, true, 0);
            else
                link.controller.setData(0, QeltApp::DataClass(variable.area), variable.address, variable.value, 0);
            const int address = variable.kind == 'b' ? 115 : 106;
            QTRY_COMPARE_WITH_TIMEOUT(server.get(QStringLiteral("hr"), 1, address, int(values.size())), values, 5000);
            QTRY_COMPARE_WITH_TIMEOUT(reports.size(), report.isEmpty() ? 0 : 1, 3000);
            if (!report.isEmpty())
                QVERIFY2(reports.at(0).at(0).toString().contains(report), qPrintable(reports.at(0).at(0).toString()));
            // Whatever the device answered, the write went once.
            QCOMPARE(server.log().filter(QRegularExpression(QStringLiteral("^(6|16) 1 "))).size(), report.contains(QLatin1String("refused")) ? 0 : 1);
        }
        QTRY_VERIFY2_WITH_TIMEOUT(link.controller.status().contains(status), qPrintable(link.controller.status()), 8000);
        if (behaviour.startsWith(QLatin1String("silent")) || behaviour.startsWith(QLatin1String("limit"))) {
            // The silent unit is left alone between tries; the refused size is not asked for again.
            QSignalSpy polls(&link.controller, &ModbusController::pollApplied);
            QTest::qWait(1500);
            QVERIFY2(polls.size() >= 5, qPrintable(QString::number(polls.size())));
            QCOMPARE(server.log().filter(QStringLiteral("exception")).size(), serial ? 0 : behaviour.startsWith(QLatin1String("limit")) ? 1 : 0);
        }
        for (const QList<QVariant> &line : std::as_const(said)) // no veil flashing on a device in good health
            QVERIFY2(status != QLatin1String("Connected.") || !line.value(0).toString().startsWith(QLatin1String("No connection")),
                     qPrintable(line.value(0).toString()));
        if (behaviour == QLatin1String("stall")) { // a connection alone is not a device answering
            QTest::qWait(1500);
            for (const QList<QVariant> &line : std::as_const(said))
                QVERIFY2(!line.value(0).toString().startsWith(QLatin1String("Connected")), qPrintable(line.value(0).toString()));
        }
        if (behaviour == QLatin1String("reset"))
            QTest::qWait(3000);
        QFile lines(dir.filePath(QStringLiteral("trace")));
        QVERIFY(lines.open(QIODevice::ReadOnly));
        const QList<QByteArray> requests = lines.readAll().split('\n');
        if (serial && behaviour.startsWith(QLatin1String("corrupt"))) // and the retry was answered
            QVERIFY(requests.value(0).contains("result=bad answer (Invalid CRC)") || requests.value(1).contains("result=bad answer (Invalid CRC)"));
        if (behaviour == QLatin1String("reset")) {
            // Connecting works, every request fails: the link waits longer after each failure.
            QVERIFY2(requests.size() <= 9, qPrintable(QString::number(requests.size())));
            QVERIFY2(QRegularExpression(QStringLiteral("^\\S+ device=a unit=1 fc=3 address=100 count=82 result=connection lost \\(.+\\) ms=[0-9.]+$"))
                         .match(QString::fromUtf8(requests.value(0))).hasMatch(), requests.value(0).constData());
        }
    }

    // A stalled device veils only its own widgets; the other's values keep coming at the poll rate.
    void stalledDeviceLeavesTheOther()
    {
        ModbusTestServer stalled;
        QVERIFY(stalled.start());
        stalled.command(QStringLiteral("stall"));
        m_server.command(QStringLiteral("set hr 1 100 0 1"));
        Link link(m_server.port(), R"("timeoutMs": 200)", stalled.port());
        Probe other(&link.form);
        link.watch(0, QeltApp::User, -1, 0);
        link.watch(0, QeltApp::Reg, -1, 0, 0, 0, &other); // unit 2: on the stalled device
        QSignalSpy polls(&link.controller, &ModbusController::pollApplied);
        link.controller.startUpdateUI(&link.form);
        QTRY_COMPARE_WITH_TIMEOUT(link.probe.values.value(0), 1, 5000);
        polls.clear();
        QTest::qWait(2000);
        QVERIFY2(polls.size() >= 10, qPrintable(QString::number(polls.size()))); // 10 a second, give or take a lot
        m_server.command(QStringLiteral("set hr 1 100 0 2"));
        QTRY_COMPARE(link.probe.values.value(0), 2);
        QVERIFY(!link.marked());
        QVERIFY(link.controller.marks().isMarked(&other));
        QTRY_VERIFY2(link.controller.status().startsWith(QLatin1String("No connection to device b (127.0.0.1:")), qPrintable(link.controller.status()));
        m_server.command(QStringLiteral("set hr 1 100 0 0"));
    }

    // A widget of unknown value is veiled, hatched all over (no white left along a line above the text)
    // and saying why, whatever it is and however it is resized; unmarked, it looks as before.
    void veilLooksTheSameOnEveryWidget()
    {
        QLabel label;
        QPushButton button(QStringLiteral("Spindle"));
        UnknownValueMarks marks;
        for (QWidget *w : {static_cast<QWidget *>(&label), static_cast<QWidget *>(&button)}) {
            const auto look = [w] {
                const QImage image = w->grab().toImage();
                QSet<QRgb> seen;
                for (int x = 0; x < image.width(); ++x)
                    seen.insert(image.pixel(x, 3));
                const QWidget *veil = w->findChild<QWidget *>(QStringLiteral("unknownValueVeil"));
                return QStringLiteral("%1 colours%2, %3").arg(seen.size()).arg(seen.contains(QColor(Qt::white).rgb()) ? " with white" : "")
                    .arg(veil && !veil->isHidden() ? veil->toolTip() : QStringLiteral("no veil"));
            };
            w->setStyleSheet(QStringLiteral("background: white; border: none;"));
            w->resize(60, 40);
            marks.mark(w, QStringLiteral("No connection"));
            w->resize(90, 50); // the veil follows the widget
            const QString veiled = look();
            marks.unmark(w);
            QCOMPARE((QStringList{veiled, look()}), (QStringList{"2 colours, No connection", "1 colours with white, no veil"}));
        }
        QCOMPARE(marks.count(), 0);
    }

#ifdef HMI_PANEL
    void panelCommand_data()
    {
        QTest::addColumn<QByteArray>("map"); // empty: the operator screen's own map
        QTest::addColumn<QString>("target"); // "server": the test server
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("said");
        QTest::newRow("not host:port") << QByteArray() << "localhost" << 1 << "--modbus wants HOST:PORT";
        QTest::newRow("map refused")
            << QByteArray(R"({"entries":[{"dataClass":"User","first":0,"last":9,"table":"holding"},
                                         {"dataClass":"User","first":5,"last":9,"table":"holding","start":50}]})")
            << "server" << 1 << "overlap: both map the same variables";
        QTest::newRow("variables the map lacks")
            << QByteArray(R"({"entries":[{"dataClass":"User","first":0,"last":9,"table":"holding"}]})")
            << "server" << 1 << "no map entry for link 0, channel 1";
        for (const char *poll : {"0", "-5", "100ms"})
            QTest::newRow(poll) << QByteArray() << QStringLiteral("server --poll ") + poll << 1 << "--poll wants a whole number";
        QTest::newRow("devices named twice")
            << QByteArray(R"({"devices":[{"name":"plc","host":"127.0.0.1"}],"entries":[{"dataClass":"User","first":0,"last":9,"table":"holding"}]})")
            << "server" << 1 << "names its devices: --modbus is for a map without a \"devices\" list";
        QTest::newRow("trace nowhere") << QByteArray() << "server --trace /nonexistent/trace" << 1 << "--trace /nonexistent/trace: ";
        QTest::newRow("the operator screen on the device") << QByteArray() << "server" << 0 << "wrote";
    }

    void panelCommand()
    {
        QFETCH(QByteArray, map);
        QFETCH(QString, target);
        QFETCH(int, status);
        QFETCH(QString, said);
        const QStringList options = target.split(QLatin1Char(' ')).mid(1); // after the target: more options
        target = target.section(QLatin1Char(' '), 0, 0);
        ModbusTestServer server;
        QVERIFY(server.start());
        QTemporaryDir dir;
        QString mapFile = QStringLiteral(HMI_FORMS_DIR "/operator-modbus.json");
        if (!map.isEmpty()) {
            mapFile = dir.filePath(QStringLiteral("map.json"));
            QFile file(mapFile);
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write(map);
        }
        // Paths as an operator types them: relative to where the panel is started, not to the form.
        QProcess panel;
        panel.setWorkingDirectory(dir.path());
        panel.start(QStringLiteral(HMI_PANEL),
                    QStringList{QDir(dir.path()).relativeFilePath(QStringLiteral(HMI_FORMS_DIR "/operator.ui")), QStringLiteral("--modbus"),
                     target == QLatin1String("server") ? QStringLiteral("127.0.0.1:%1").arg(server.port()) : target,
                     QStringLiteral("--map"), mapFile, QStringLiteral("--screenshot"), QStringLiteral("shot.png")}
                        + options);
        QVERIFY(panel.waitForFinished(60000));
        const QString out = QString::fromUtf8(panel.readAllStandardOutput() + panel.readAllStandardError());
        QCOMPARE(panel.exitCode(), status);
        QVERIFY2(out.contains(said), qPrintable(out));
        if (status == 0) {
            QVERIFY(!server.log().filter(QRegularExpression(QStringLiteral("^3 1 "))).isEmpty()); // read the device
            QVERIFY(QFileInfo::exists(dir.filePath(QStringLiteral("shot.png"))));
            QVERIFY2(!out.contains(QLatin1String("no program")), qPrintable(out)); // the NC view found its file
        }
    }
#endif

private:
    ModbusTestServer m_server; // for the tests that need neither its log nor a restart
};

QTEST_MAIN(TestModbus)
#include "tst_modbus.moc"
