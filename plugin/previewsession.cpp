#include "previewsession.h"

#include "demoscenario.h"
#include "designerhost.h"
#include "designerwords.h"
#include "formsession.h"
#include "norvointerface_z3.h"
#include "softkeypages.h"

#include <QtDesigner/QDesignerFormWindowInterface>

#include <QAction>
#include <QActionGroup>
#include <QEvent>
#include <QList>
#include <QWidget>

namespace {
QList<PreviewSession *> &sessions()
{
    static QList<PreviewSession *> all;
    return all;
}

constexpr int Authorities = 10; // 0 ... 9 in the menu; smaller is stronger
} // namespace

PreviewSession::PreviewSession(QWidget *form)
    : m_form(form)
{
    sessions().append(this);
    // Before the preview's widgets take their properties: word ids read the library as saved now.
    DesignerWords::refresh();
    // Self-attaching widgets find the application here when they are polished, as on a panel's form.
    form->setProperty("QeltApp", norvo_v0::QeltApp::toVariant(&m_controller));
    form->installEventFilter(this);
    // The widgets unregister while the form deletes them; the controller must outlive them.
    connect(form, &QObject::destroyed, this, &QObject::deleteLater);
}

PreviewSession::~PreviewSession()
{
    sessions().removeAll(this);
    m_scenario.reset();
    m_controller.stopUpdateUI();
    if (m_form) {
        m_form->removeEventFilter(this);
        m_form->setProperty("QeltApp", QVariant());
        const QList<QWidget *> widgets = m_form->findChildren<QWidget *>();
        for (QWidget *w : widgets)
            m_controller.removeUIVariable(m_form, w);
    }
}

void PreviewSession::adopt(QWidget *parent)
{
    if (!parent || !DesignerHost::instance() || QDesignerFormWindowInterface::findFormWindow(parent))
        return;
    // The picture Designer grabs for a drag from the widget box is made outside any form too; it is
    // grabbed, never shown, so its session never starts and goes with it.
    QWidget *top = parent->window();
    if (top->windowType() == Qt::ToolTip || of(top))
        return;
    new PreviewSession(top);
}

PreviewSession *PreviewSession::of(const QWidget *widget)
{
    for (const QWidget *w = widget; w; w = w->parentWidget()) {
        for (PreviewSession *session : sessions()) {
            if (session->m_form == w)
                return session;
        }
    }
    return nullptr;
}

bool PreviewSession::eventFilter(QObject *watched, QEvent *event)
{
    // The preview is built whole by now; a preview image that is never shown registers nothing.
    if (watched == m_form && event->type() == QEvent::Show && !m_started)
        start();
    return QObject::eventFilter(watched, event);
}

void PreviewSession::start()
{
    m_started = true;
    FormSession::attachWidgets(m_form, &m_controller);
    setLanguage(NORVOInterface_Z3::initialization()->currentLanguageIndex());
    setAuthority(1);
    for (const QString &problem : SoftKeyPages::setUp(m_form))
        qWarning("%s", qPrintable(problem));
    m_scenario = std::make_unique<DemoScenario>(&m_controller);
    m_scenario->step();
    m_controller.startUpdateUI(m_form);
    m_scenario->start();
    addMenu();
}

void PreviewSession::setLanguage(int index)
{
    // The editor keeps Designer's language; only the preview's widgets change.
    FormSession::callOnWidgets(m_form, "updateLanguage(int)", index);
}

void PreviewSession::setAuthority(int authority)
{
    FormSession::callOnWidgets(m_form, "updateAuthority(int)", authority);
}

void PreviewSession::addMenu()
{
    m_form->setContextMenuPolicy(Qt::ActionsContextMenu);
    const auto addGroup = [this](const QStringList &names, int checked, void (PreviewSession::*set)(int)) {
        auto *group = new QActionGroup(m_form);
        for (int i = 0; i < names.size(); ++i) {
            QAction *action = group->addAction(names.at(i));
            action->setCheckable(true);
            action->setChecked(i == checked);
            connect(action, &QAction::triggered, this, [this, set, i] { (this->*set)(i); });
            m_form->addAction(action);
        }
        auto *separator = new QAction(m_form);
        separator->setSeparator(true);
        m_form->addAction(separator);
    };
    addGroup({tr("Language: English"), tr("Language: Deutsch")},
             NORVOInterface_Z3::initialization()->currentLanguageIndex(), &PreviewSession::setLanguage);
    QStringList authorities;
    for (int i = 0; i < Authorities; ++i)
        authorities << tr("Operator authority %1").arg(i);
    addGroup(authorities, 1, &PreviewSession::setAuthority);
}
