// Two Modbus/TCP devices with 2,000 controller variables each (1,000 words, 500 inputs, 500 outputs),
// polled at 10 Hz: first both answering, then one of them stalled (it accepts connections and never
// answers). For each phase: how late the GUI thread's timers run, against the same event loop with no
// link (a stock-Qt baseline in the same run), how many polls of each device reached its widgets, how
// many reads a poll took, and whether memory stays flat.
// Usage: bench_modbus [seconds of each phase, default 60]
#include "modbuscontroller.h"
#include "modbusmap.h"
#include "modbustestserver.h"
#include "residentmemory.h"
#include "updatevariableinterface.h"

#include <QApplication>
#include <QDialog>
#include <QElapsedTimer>
#include <QFile>
#include <QTcpServer>
#include <QTcpSocket>
#include <QThread>
#include <QTimer>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <functional>
#include <memory>

#include <time.h>

namespace {

constexpr int Variables = 2000; // per device
constexpr int PollMs = 100;
constexpr int ChangeMs = 25; // a few changes per poll: every poll of a device moves its widgets

class Probe : public QWidget, public norvo_v0::UpdateVariableInterface
{
public:
    using QWidget::QWidget;
    void updateData(int, int) override { ++updates; }
    qint64 updates = 0;
};

// The GUI thread's processor time so far, in ms: what the link costs it whatever else the machine runs.
double threadCpuMs()
{
    timespec t{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &t);
    return t.tv_sec * 1e3 + t.tv_nsec / 1e6;
}

struct Lateness
{
    QVector<double> late; // ms, sorted
    double p99 = 0, max = 0, mean = 0;
    double cpu = 0; // GUI thread, ms per second

    explicit Lateness(QVector<double> samples = {}, double cpuPerSecond = 0)
        : late(std::move(samples))
        , cpu(cpuPerSecond)
    {
        std::sort(late.begin(), late.end());
        p99 = late.value(int(late.size() * 0.99));
        max = late.isEmpty() ? 0 : late.last();
        for (double v : std::as_const(late))
            mean += v / late.size();
    }
    Lateness operator+(const Lateness &other) const { return Lateness(late + other.late, (cpu + other.cpu) / 2); }
};

// A 10 ms timer on the GUI thread for the given time: how much later than due each tick came.
Lateness measure(int milliseconds, const std::function<void()> &halfway = {})
{
    QVector<double> late;
    late.reserve(milliseconds / 10 + 100); // not to be taken for growth of the link's memory
    const double cpuBefore = threadCpuMs();
    QElapsedTimer clock;
    clock.start();
    qint64 due = 10;
    QTimer timer;
    timer.setTimerType(Qt::PreciseTimer);
    timer.setInterval(10);
    QEventLoop loop;
    QObject::connect(&timer, &QTimer::timeout, [&] {
        const qint64 now = clock.nsecsElapsed() / 1000;
        late << std::max<double>(0, (now - due * 1000) / 1000.0);
        due = now / 1000 + 10;
        if (clock.elapsed() >= milliseconds)
            loop.quit();
    });
    if (halfway)
        QTimer::singleShot(milliseconds / 2, &loop, halfway);
    timer.start();
    loop.exec();
    return Lateness(late, (threadCpuMs() - cpuBefore) * 1000.0 / clock.elapsed());
}

// Against 1 ms so that an idle loop's near-zero lateness does not blow the ratio up.
double latenessRatio(const Lateness &busy, const Lateness &idle)
{
    return std::max(1.0, busy.p99) / std::max(1.0, idle.p99);
}

// The benchmark's own devices run in a thread of their own: neither the pymodbus server's answers to
// its commands nor a stalled device's connections are waited for on the GUI thread being measured.
class Worker
{
public:
    Worker()
    {
        m_context.moveToThread(&m_thread);
        m_thread.start();
    }
    ~Worker()
    {
        m_thread.quit();
        m_thread.wait();
    }
    template<typename F>
    void run(F f)
    {
        QMetaObject::invokeMethod(&m_context, f, Qt::BlockingQueuedConnection);
    }
    QObject *context() { return &m_context; }

private:
    QThread m_thread;
    QObject m_context;
};

// A device answering from modbusserver.py, one of its holding registers changing every ChangeMs.
class LiveDevice
{
public:
    ~LiveDevice()
    {
        m_worker.run([this] {
            delete m_changer;
            m_server.reset();
        });
    }
    bool start()
    {
        bool started = false;
        m_worker.run([&] {
            m_server = std::make_unique<ModbusTestServer>();
            started = m_server->start();
            m_changer = new QTimer(m_worker.context());
            QObject::connect(m_changer, &QTimer::timeout, m_changer, [this] {
                m_server->command(QStringLiteral("set hr 1 %1 %2").arg((m_tick * 37) % Variables).arg(m_tick));
                ++m_tick;
            });
            if (started)
                m_changer->start(ChangeMs);
        });
        return started;
    }
    int port() const { return m_server->port(); }
    // Reads served so far.
    qint64 reads()
    {
        qint64 n = 0;
        m_worker.run([&] { n = m_server->command(QStringLiteral("requests")).value(0).section(QLatin1Char(' '), 1, 1).toLongLong(); });
        return n;
    }

private:
    Worker m_worker;
    std::unique_ptr<ModbusTestServer> m_server;
    QTimer *m_changer = nullptr;
    int m_tick = 1;
};

// A device whose program hangs: it accepts connections and never answers.
class StalledDevice
{
public:
    StalledDevice()
    {
        m_worker.run([this] {
            m_server = new QTcpServer(m_worker.context());
            QObject::connect(m_server, &QTcpServer::newConnection, m_server, [this] {
                while (QTcpSocket *socket = m_server->nextPendingConnection()) {
                    ++m_connections;
                    QObject::connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
                }
            });
            m_server->listen(QHostAddress::LocalHost);
            m_port = m_server->serverPort();
        });
    }
    ~StalledDevice()
    {
        m_worker.run([this] { delete m_server; });
    }
    int port() const { return m_port; }
    int connections() const { return m_connections; }

private:
    Worker m_worker;
    QTcpServer *m_server = nullptr;
    int m_port = 0;
    std::atomic<int> m_connections{0};
};

struct Device
{
    QString name;
    int port = 0;
    LiveDevice *live = nullptr; // null for the stalled one
};

struct Phase
{
    Lateness lateness;
    qint64 rss[3] = {}; // start, middle, end
    QVector<int> polls; // per device
    QVector<double> readsPerPoll;
    QVector<qint64> deliveries;
    int unattributed = 0;
    QString status;
    QElapsedTimer closing; // from the end of the measurement until the controller and its threads are gone
    qint64 closedMs = 0;
};

// Device d's variables are on channel d + 1, at the same addresses on every device.
QByteArray mapOf(const QList<Device> &devices)
{
    QStringList list, entries;
    for (int d = 0; d < devices.size(); ++d) {
        list << QStringLiteral(R"({"name": "%1", "host": "127.0.0.1", "port": %2})").arg(devices.at(d).name).arg(devices.at(d).port);
        const QString where = QStringLiteral(R"("device": "%1", "channel": %2, "first": 0, "unit": 1, "start": 0)")
                                  .arg(devices.at(d).name)
                                  .arg(d + 1);
        entries << QStringLiteral(R"({%1, "dataClass": "User", "last": 999, "table": "holding"})").arg(where)
                << QStringLiteral(R"({%1, "bitType": "I_BIT", "last": 499, "table": "discreteInputs"})").arg(where)
                << QStringLiteral(R"({%1, "bitType": "O_BIT", "last": 499, "table": "coils"})").arg(where);
    }
    return QStringLiteral(R"({"devices": [%1], "entries": [%2]})").arg(list.join(QLatin1Char(',')), entries.join(QLatin1Char(','))).toUtf8();
}

// One shown form of 100 widgets per device on one controller, polled every PollMs for the given time.
Phase run(const QList<Device> &devices, int seconds)
{
    const int n = int(devices.size());
    ModbusMap map;
    if (!map.parse(mapOf(devices)))
        qFatal("bench_modbus: %s", qPrintable(map.errors().join(QLatin1Char('\n'))));
    ModbusController controller(map);
    controller.setPollPeriod(PollMs);
    QDialog form;
    QVector<QList<Probe *>> probes(n);
    for (int d = 0; d < n; ++d) {
        for (int w = 0; w < 100; ++w) {
            probes[d] << new Probe(&form);
            probes[d].last()->setGeometry(d * 600 + w % 10 * 60, w / 10 * 30, 60, 30);
        }
        for (int i = 0; i < Variables; ++i) {
            Probe *p = probes[d].at(i % 100);
            if (i < 1000)
                controller.registerUIVariable(&form, p, p, i, 0, d, norvo_v0::QeltApp::User, i, -1, 0, 0, 0, 0, 0, 0, false);
            else
                controller.registerUIVariable(&form, p, p, i, 0, d, -1, i % 500,
                                              i < 1500 ? norvo_v0::QeltApp::I_BIT : norvo_v0::QeltApp::O_BIT, 0, 0, 0, 0,
                                              0, 0, false);
        }
    }
    controller.startUpdateUI(&form);
    form.resize(n * 600, 300);
    form.show(); // veils over widgets whose values are unknown paint

    // A poll is its device's when the values it changed are on that device's channel.
    Phase phase;
    phase.polls.fill(0, n);
    QVector<bool> changed(n, false);
    const auto change = [&](int channel) {
        if (channel >= 0 && channel < n)
            changed[channel] = true;
    };
    QObject::connect(&controller.values(), &SimulatedController::dataChanged, [&](int, int c, int, int, int) { change(c); });
    QObject::connect(&controller.values(), &SimulatedController::bitChanged, [&](int, int c, int, int, int, bool) { change(c); });
    QObject::connect(&controller, &ModbusController::pollApplied, [&] {
        const int d = int(changed.indexOf(true));
        if (d < 0 || changed.count(true) > 1)
            ++phase.unattributed;
        else
            ++phase.polls[d];
        changed.fill(false);
    });

    measure(2000); // connects, plans, first values
    const QVector<int> pollsBefore = phase.polls;
    const int unattributedBefore = phase.unattributed;
    QVector<qint64> readsBefore(n), deliveriesBefore(n);
    for (int d = 0; d < n; ++d) {
        readsBefore[d] = devices.at(d).live ? devices.at(d).live->reads() : 0;
        for (const Probe *p : std::as_const(probes[d]))
            deliveriesBefore[d] += p->updates;
    }
    phase.rss[0] = residentKiB();
    phase.lateness = measure(seconds * 1000, [&] { phase.rss[1] = residentKiB(); });
    phase.rss[2] = residentKiB();
    phase.unattributed -= unattributedBefore;
    phase.readsPerPoll.fill(0, n);
    phase.deliveries.fill(0, n);
    for (int d = 0; d < n; ++d) {
        phase.polls[d] -= pollsBefore.at(d);
        if (devices.at(d).live && phase.polls.at(d) > 0)
            phase.readsPerPoll[d] = (devices.at(d).live->reads() - readsBefore.at(d)) / double(phase.polls.at(d));
        for (const Probe *p : std::as_const(probes[d]))
            phase.deliveries[d] += p->updates;
        phase.deliveries[d] -= deliveriesBefore.at(d);
    }
    phase.status = controller.status();
    phase.closing.start();
    return phase;
}

void print(const char *title, const QList<Device> &devices, const Phase &phase, int seconds)
{
    std::printf("%s, %d variables each, polled every %d ms, for %d s:\n", title, Variables, PollMs, seconds);
    for (int d = 0; d < devices.size(); ++d)
        std::printf("  device %s: %d polls reached its widgets (%.1f per second), %.2f reads per poll, %lld deliveries\n",
                    qPrintable(devices.at(d).name), phase.polls.at(d), phase.polls.at(d) / double(seconds),
                    phase.readsPerPoll.at(d), phase.deliveries.at(d));
    std::printf("  polls that changed nothing (device unknown): %d\n", phase.unattributed);
    std::printf("  event-loop lateness of a 10 ms timer: mean %.2f ms, p99 %.2f ms, max %.2f ms; GUI thread busy %.1f ms "
                "per second\n",
                phase.lateness.mean, phase.lateness.p99, phase.lateness.max, phase.lateness.cpu);
    std::printf("  resident memory %lld KiB at the start, %lld KiB in the middle, %lld KiB at the end (%+lld KiB)\n",
                phase.rss[0], phase.rss[1], phase.rss[2], phase.rss[2] - phase.rss[0]);
    std::printf("  message line: %s\n", qPrintable(phase.status));
    std::printf("  closing the form and the controller took %lld ms on the GUI thread\n", phase.closedMs);
    std::fflush(stdout);
}

// The machine is shared: its load says how far the figures can be trusted.
QByteArray loadAverage()
{
    QFile file(QStringLiteral("/proc/loadavg"));
    return file.open(QIODevice::ReadOnly) ? file.readAll().trimmed() : QByteArray("?");
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const int seconds = argc > 1 ? std::max(2, atoi(argv[1])) : 60;
    std::printf("load average at the start: %s\n", loadAverage().constData());

    // The machine may be busy with more than this: the idle loop is measured before and after the links.
    const int idleMs = std::min(10, seconds) * 1000;
    const Lateness idleBefore = measure(idleMs);

    const QStringList names{QStringLiteral("a"), QStringLiteral("b")};
    Phase answering, stalling;
    {
        LiveDevice first, second;
        if (!first.start() || !second.start()) {
            std::fprintf(stderr, "bench_modbus: the Modbus servers did not start\n");
            return 1;
        }
        const QList<Device> both{{names.at(0), first.port(), &first}, {names.at(1), second.port(), &second}};
        answering = run(both, seconds);
        answering.closedMs = answering.closing.elapsed();
        print("two devices answering", both, answering, seconds);

        StalledDevice stalled;
        const QList<Device> oneStalled{{names.at(0), first.port(), &first}, {QStringLiteral("stalled"), stalled.port(), nullptr}};
        stalling = run(oneStalled, seconds);
        stalling.closedMs = stalling.closing.elapsed();
        print("device a answering, device stalled accepting connections and never answering", oneStalled, stalling, seconds);
        std::printf("  connections the stalled device accepted: %d\n", stalled.connections());
    } // the servers stop: the idle loop after is as idle as the one before
    const Lateness idleAfter = measure(idleMs);
    const Lateness idle = idleBefore + idleAfter;
    for (const auto &[when, l] : {std::make_pair("before", &idleBefore), std::make_pair("after", &idleAfter), std::make_pair("both", &idle)})
        std::printf("event-loop lateness of a 10 ms timer, idle %s: mean %.2f ms, p99 %.2f ms, max %.2f ms; GUI thread "
                    "busy %.1f ms per second\n",
                    when, l->mean, l->p99, l->max, l->cpu);
    std::printf("load average at the end: %s\n", loadAverage().constData());

    std::printf("ratio p99 lateness two devices / idle (floor 1 ms) %.2f (target <= 1.10)\n", latenessRatio(answering.lateness, idle));
    std::printf("ratio p99 lateness one device stalled / idle (floor 1 ms) %.2f (target <= 1.10)\n", latenessRatio(stalling.lateness, idle));
    for (int d = 0; d < names.size(); ++d)
        std::printf("ratio polls per second of device %s / 10, both answering %.2f (target >= 0.95)\n",
                    qPrintable(names.at(d)), answering.polls.at(d) / double(seconds) / (1000.0 / PollMs));
    std::printf("ratio polls per second of device a / 10, the other stalled %.2f (target >= 0.95)\n",
                stalling.polls.at(0) / double(seconds) / (1000.0 / PollMs));
    std::printf("ratio resident memory end / start, both answering %.3f, one stalled %.3f (target 1.00)\n",
                answering.rss[2] / double(answering.rss[0]), stalling.rss[2] / double(stalling.rss[0]));
    return 0;
}
