// 2,000 controller variables (1,000 words, 500 inputs, 500 outputs) on a Modbus/TCP server polled at
// 10 Hz: how late the GUI thread's timers run meanwhile, against the same event loop with no link (a
// stock-Qt baseline in the same run), how many polls arrived, how many reads each took, and whether
// memory stays flat.
// Usage: bench_modbus [seconds, default 60]
#include "modbuscontroller.h"
#include "modbusmap.h"
#include "modbustestserver.h"
#include "residentmemory.h"
#include "updatevariableinterface.h"

#include <QApplication>
#include <QDialog>
#include <QElapsedTimer>
#include <QTimer>

#include <algorithm>
#include <cstdio>

namespace {

class Probe : public QWidget, public norvo_v0::UpdateVariableInterface
{
public:
    using QWidget::QWidget;
    void updateData(int, int) override { ++updates; }
    qint64 updates = 0;
};

struct Lateness
{
    double p99 = 0, max = 0, mean = 0;
};

// A 10 ms timer on the GUI thread for the given time: how much later than due each tick came.
Lateness measure(int milliseconds)
{
    QVector<double> late;
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
    timer.start();
    loop.exec();
    std::sort(late.begin(), late.end());
    Lateness l;
    l.p99 = late.value(int(late.size() * 0.99));
    l.max = late.isEmpty() ? 0 : late.last();
    for (double v : late)
        l.mean += v / late.size();
    return l;
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const int seconds = argc > 1 ? std::max(2, atoi(argv[1])) : 60;

    const Lateness idle = measure(std::min(10, seconds) * 1000);

    ModbusTestServer server;
    if (!server.start()) {
        std::fprintf(stderr, "bench_modbus: the Modbus server did not start\n");
        return 1;
    }
    ModbusMap map;
    map.parse(R"({"entries": [
      {"dataClass": "User", "first": 0, "last": 999, "unit": 1, "table": "holding", "start": 0},
      {"bitType": "I_BIT", "first": 0, "last": 499, "unit": 1, "table": "discreteInputs", "start": 0},
      {"bitType": "O_BIT", "first": 0, "last": 499, "unit": 1, "table": "coils", "start": 0}]})");
    ModbusController controller(map, QStringLiteral("127.0.0.1"), server.port());
    controller.setPollPeriod(100);
    QDialog form;
    QList<Probe *> probes;
    for (int w = 0; w < 100; ++w)
        probes << new Probe(&form);
    for (int i = 0; i < 2000; ++i) {
        Probe *p = probes.at(i % 100);
        if (i < 1000)
            controller.registerUIVariable(&form, p, p, i, 0, 0, norvo_v0::QeltApp::User, i, -1, 0, 0, 0, 0, 0, 0, false);
        else
            controller.registerUIVariable(&form, p, p, i, 0, 0, -1, i % 500,
                                          i < 1500 ? norvo_v0::QeltApp::I_BIT : norvo_v0::QeltApp::O_BIT, 0, 0, 0, 0, 0, 0,
                                          false);
    }
    controller.startUpdateUI(&form);
    int polls = 0;
    QObject::connect(&controller, &ModbusController::pollApplied, [&] { ++polls; });
    // The device's values keep changing, so every poll has something to deliver.
    QTimer changer;
    int tick = 0;
    QObject::connect(&changer, &QTimer::timeout, [&] {
        server.command(QStringLiteral("set hr 1 %1 %2").arg((tick * 37) % 2000).arg(tick));
        ++tick;
    });
    changer.start(50);
    const Lateness warm = measure(2000);
    Q_UNUSED(warm)
    const qint64 rssStart = residentKiB();
    const int pollsStart = polls;
    const int readsStart = server.command(QStringLiteral("requests")).value(0).section(QLatin1Char(' '), 1, 1).toInt();
    const Lateness busy = measure(seconds * 1000);
    const qint64 rssEnd = residentKiB();
    const int pollCount = polls - pollsStart;
    const int reads = server.command(QStringLiteral("requests")).value(0).section(QLatin1Char(' '), 1, 1).toInt() - readsStart;
    qint64 updates = 0;
    for (const Probe *p : probes)
        updates += p->updates;

    std::printf("variables 2000 polled every 100 ms for %d s: %d polls (%.1f per second), %.2f reads per poll, "
                "%lld deliveries\n",
                seconds, pollCount, pollCount / double(seconds), pollCount ? reads / double(pollCount) : 0.0, updates);
    std::printf("event-loop lateness of a 10 ms timer, idle: mean %.2f ms, p99 %.2f ms, max %.2f ms\n", idle.mean,
                idle.p99, idle.max);
    std::printf("event-loop lateness of a 10 ms timer, polling: mean %.2f ms, p99 %.2f ms, max %.2f ms\n", busy.mean,
                busy.p99, busy.max);
    std::printf("resident memory %lld KiB after warm-up, %lld KiB at the end (%+lld KiB)\n", rssStart, rssEnd,
                rssEnd - rssStart);
    // Against 1 ms so that an idle loop's near-zero lateness does not blow the ratio up.
    std::printf("ratio p99 lateness polling / idle (floor 1 ms) %.2f\n", std::max(1.0, busy.p99) / std::max(1.0, idle.p99));
    return 0;
}
