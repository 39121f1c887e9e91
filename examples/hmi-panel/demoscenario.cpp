#include "demoscenario.h"

#include "simulatedcontroller.h"

#include <QDir>
#include <QImage>
#include <QPainter>

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
    if (m_steps % 2 == 1)
        takePicture();
    // Reference run done: Ref goes and comes back; MDI is refused while the door is open.
    static const int modes[] = {0b0111, 0b1111, 0b1011};
    m_controller->setData(0, QeltApp::User, ModesWord, modes[(m_steps / 3) % 3], 0);
    // A few parameters the machine itself adjusts, near the top of the list.
    for (int i = 1; i <= 4; ++i)
        m_controller->setData(0, QeltApp::User, FirstParameterWord + i, (i * 37 + m_steps * 11 * i) % 5000, 0);
    runMachine();
}

void DemoScenario::runMachine()
{
    bool alarm = m_controller->getBit(0, QeltApp::User_BIT, AlarmWord, 0, 0);
    if (m_controller->getBit(0, QeltApp::User_BIT, ResetWord, 0, 0)) {
        alarm = false;
        m_controller->setBit(0, QeltApp::User_BIT, ResetWord, 0, false, 0);
    } else if (m_steps % 30 == 20) {
        alarm = true; // a lubrication alarm, until the operator resets it
    }
    m_controller->setBit(0, QeltApp::User_BIT, AlarmWord, 0, alarm, 0);
    const bool running = !alarm && m_controller->getBit(0, QeltApp::User_BIT, 100, 0, 0);
    if (running) {
        m_line = m_line % ProgramLines + 1;
        if (m_line == 1)
            m_controller->setData(0, QeltApp::User, PartsWord, m_controller->getData(0, QeltApp::User, PartsWord, 0) + 1, 0);
        m_controller->setData(0, QeltApp::User, ProgramLineWord, m_line, 0);
    }
    m_controller->setData(0, QeltApp::Reg, StateRegister, alarm ? 2 : running ? 1 : 0, 0);
}

void DemoScenario::takePicture()
{
    if (!m_camera.isValid())
        return;
    QImage shot(320, 220, QImage::Format_RGB32);
    shot.fill(QColor(30, 34, 40));
    QPainter painter(&shot);
    painter.setRenderHint(QPainter::Antialiasing);
    // A part under the camera, turning a little from shot to shot.
    painter.translate(160, 110);
    painter.rotate(m_steps * 9);
    painter.setBrush(QColor(190, 195, 205));
    painter.setPen(QPen(QColor(90, 95, 105), 3));
    painter.drawRoundedRect(QRectF(-80, -50, 160, 100), 12, 12);
    painter.setBrush(QColor(30, 34, 40));
    painter.drawEllipse(QPointF(0, 0), 22, 22);
    painter.resetTransform();
    painter.setPen(Qt::white);
    painter.drawText(QRect(8, 4, 300, 20), QStringLiteral("shot %1").arg(m_steps));
    painter.end();
    const QString name = QStringLiteral("shot_%1.png").arg(m_steps, 6, 10, QLatin1Char('0'));
    shot.save(QDir(m_camera.path()).filePath(name), "PNG");
    // Only the last few shots are kept.
    const QStringList shots = QDir(m_camera.path()).entryList({QStringLiteral("shot_*.png")}, QDir::Files, QDir::Name);
    for (int i = 0; i + 10 < shots.size(); ++i)
        QFile::remove(QDir(m_camera.path()).filePath(shots.at(i)));
}
