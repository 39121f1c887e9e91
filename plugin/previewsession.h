#ifndef PREVIEWSESSION_H
#define PREVIEWSESSION_H

#include "simulatedcontroller.h"

#include <QObject>
#include <QPointer>

#include <memory>

class DemoScenario;
class QWidget;

// Designer's Form > Preview on a simulated controller of its own, for the preview's life: the
// preview's widgets attach to it as to a panel's form once it shows, values move as in the panel's
// demo, keys write, and the preview's context menu sets the language and the operator's authority.
// Designer makes a preview's widgets through the plugin like the editor's, but outside any form window;
// a form in the editor gets none and stays static.
class PreviewSession : public QObject
{
    Q_OBJECT
public:
    ~PreviewSession() override;

    // Called for every widget the plugin makes for Designer: a widget made inside Designer (a host is
    // installed), under a parent outside any form window and not in a drag's picture, is part of a
    // preview, whose top widget then gets a session unless it has one.
    static void adopt(QWidget *parent);
    // The session of the preview holding widget, or null.
    static PreviewSession *of(const QWidget *widget);

    QWidget *form() const { return m_form; }
    SimulatedController *controller() { return &m_controller; }
    void setLanguage(int index);
    void setAuthority(int authority);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    explicit PreviewSession(QWidget *form);
    void start();
    void addMenu();

    QPointer<QWidget> m_form;
    SimulatedController m_controller;
    std::unique_ptr<DemoScenario> m_scenario;
    bool m_started = false;
};

#endif
