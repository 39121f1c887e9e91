#ifndef DEMOSCENARIO_H
#define DEMOSCENARIO_H

#include <QObject>
#include <QTimer>

class SimulatedController;

// A little machine life for the demo form: input I0.0 blinks, output O0.0 follows the cycle, and a
// mode counter in register word 100 steps through 0, 1, 2.
class DemoScenario : public QObject
{
    Q_OBJECT
public:
    explicit DemoScenario(SimulatedController *controller, QObject *parent = nullptr);

    void start(int intervalMs = 1000);
    void stop();
    // One step of the scenario; the timer calls it.
    void step();
    int steps() const { return m_steps; }

private:
    SimulatedController *m_controller;
    QTimer m_timer;
    int m_steps = 0;
};

#endif
