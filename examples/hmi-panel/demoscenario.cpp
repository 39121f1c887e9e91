#include "demoscenario.h"

#include "simulatedcontroller.h"

using norvo_v0::QeltApp;

DemoScenario::DemoScenario(SimulatedController *controller, QObject *parent)
    : QObject(parent)
    , m_controller(controller)
{
    connect(&m_timer, &QTimer::timeout, this, &DemoScenario::step);
    // Keys start enabled and the brake starts closed.
    m_controller->setBit(0, QeltApp::User_BIT, 103, 0, true, 0);
    m_controller->setBit(0, QeltApp::User_BIT, 102, 0, true, 0);
    // The parameter list: every column shown, and a value in each parameter word.
    m_controller->setData(0, QeltApp::User, ParameterColumnsWord, 0x1f, 0);
    for (int i = 1; i < ParameterCount; ++i)
        m_controller->setData(0, QeltApp::User, FirstParameterWord + i, (i * 37) % 5000, 0);
    m_controller->setData(0, QeltApp::User, ModesWord, 0b0111, 0);
    const int overrides[] = {100, 100, 50, 7};
    for (int i = 0; i < 4; ++i)
        m_controller->setData(0, QeltApp::User, OverrideWords + i, overrides[i], 0);
}

void DemoScenario::start(int intervalMs)
{
    m_timer.start(intervalMs);
}

void DemoScenario::stop()
{
    m_timer.stop();
}

void DemoScenario::step()
{
    ++m_steps;
    m_controller->setBit(0, QeltApp::I_BIT, 0, 0, m_steps % 2 == 1, 0);
    m_controller->setBit(0, QeltApp::O_BIT, 0, 0, (m_steps / 2) % 2 == 1, 0);
    m_controller->setData(0, QeltApp::Reg, 100, (m_steps / 3) % 3, 0);
    // Reference run done: Ref goes and comes back; MDI is refused while the door is open.
    static const int modes[] = {0b0111, 0b1111, 0b1011};
    m_controller->setData(0, QeltApp::User, ModesWord, modes[(m_steps / 3) % 3], 0);
    // A few parameters the machine itself adjusts, near the top of the list.
    for (int i = 1; i <= 4; ++i)
        m_controller->setData(0, QeltApp::User, FirstParameterWord + i, (i * 37 + m_steps * 11 * i) % 5000, 0);
}
