// One controller update plus repaint on a bit button, against QPushButton::setText plus repaint.
// Both alternate between two looks so every repaint draws something new.
#include "bitbutton.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QPushButton>
#include <QTextStream>

#include <algorithm>
#include <functional>
#include <vector>

namespace {

qint64 bestOf(int rounds, int iterations, const std::function<void(int)> &step)
{
    std::vector<qint64> times;
    for (int r = 0; r < rounds; ++r) {
        QElapsedTimer timer;
        timer.start();
        for (int i = 0; i < iterations; ++i)
            step(i);
        times.push_back(timer.nsecsElapsed());
    }
    return *std::min_element(times.begin(), times.end());
}

} // namespace

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const int iterations = argc > 1 ? QString::fromLocal8Bit(argv[1]).toInt() : 5000;
    const int rounds = 7;

    BitButton bitButton;
    bitButton.resize(100, 30);
    bitButton.show();
    QPushButton pushButton;
    pushButton.resize(100, 30);
    pushButton.show();
    app.processEvents();

    const QString texts[] = {QStringLiteral("OFF"), QStringLiteral("ON")};
    auto baseline = [&](int i) {
        pushButton.setText(texts[i & 1]);
        pushButton.repaint();
    };
    auto ours = [&](int i) {
        bitButton.updateData(0, i & 1);
        bitButton.repaint();
    };
    bestOf(1, iterations / 10, baseline); // warm-up
    bestOf(1, iterations / 10, ours);
    const qint64 base = bestOf(rounds, iterations, baseline);
    const qint64 mine = bestOf(rounds, iterations, ours);

    QTextStream out(stdout);
    out << "QPushButton setText + repaint : " << double(base) / iterations / 1000.0 << " us\n";
    out << "BitButton updateData + repaint: " << double(mine) / iterations / 1000.0 << " us\n";
    out << "ratio (BitButton / QPushButton): " << double(mine) / double(base) << "\n";
    return 0;
}
