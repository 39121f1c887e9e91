#ifndef DEMOSCENARIO_H
#define DEMOSCENARIO_H

#include <QObject>
#include <QTemporaryDir>
#include <QTimer>

class SimulatedController;

// A little machine life for the demo forms: input I0.0 blinks, output O0.0 follows the cycle, a mode
// counter in register word 100 steps through 0, 1, 2, the parameter list's words (user words
// 1001 ... 1999, column word 500) hold values, the first four changing, and the word of the
// operating modes a machine offers (user word 520, a bit a mode) changes now and then; a camera
// writes a new picture into its folder every other step; the operator screen's machine runs while its
// spindle is on, makes parts, walks through its program and now and then raises an alarm.
class DemoScenario : public QObject
{
    Q_OBJECT
public:
    explicit DemoScenario(SimulatedController *controller, QObject *parent = nullptr);

    static constexpr int ParameterColumnsWord = 500;
    static constexpr int FirstParameterWord = 1000;
    static constexpr int ParameterCount = 2000;
    static constexpr int ModesWord = 520;
    static constexpr int OverrideWords = 3101; // feed, spindle and rapid override, tool number
    // The operator screen's machine: spindle bit U100.0 (the operator's), machine state in R101
    // (0 idle, 1 running, 2 alarm), alarm bit U120.0 cleared by the reset request U121.0, parts made
    // in U130 and the program line in U131.
    static constexpr int StateRegister = 101;
    static constexpr int AlarmWord = 120;
    static constexpr int ResetWord = 121;
    static constexpr int PartsWord = 130;
    static constexpr int ProgramLineWord = 131;
    static constexpr int ProgramLines = 97; // the lines of program.nc

    void start(int intervalMs = 1000);
    void stop();
    // One step of the scenario; the timer calls it.
    void step();
    int steps() const { return m_steps; }
    // The folder the camera writes into (a fresh one for each run).
    QString cameraFolder() const { return m_camera.path(); }

private:
    SimulatedController *m_controller;
    void takePicture();
    void runMachine();

    QTimer m_timer;
    int m_line = 0;
    QTemporaryDir m_camera;
    int m_steps = 0;
};

#endif
