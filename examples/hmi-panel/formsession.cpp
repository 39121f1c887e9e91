#include "formsession.h"

#include "norvointerface_z3.h"
#include "qeltapp.h"
#include "softkeypages.h"

#include <QDialog>
#include <QMetaMethod>
#include <QVBoxLayout>

namespace {
bool hasMethod(const QObject *object, const char *signature)
{
    return object->metaObject()->indexOfMethod(QMetaObject::normalizedSignature(signature)) >= 0;
}

// Containers pass the application on to their children themselves: call only the outermost.
bool hasAncestorWithMethod(const QWidget *widget, const QWidget *form, const char *signature)
{
    for (const QWidget *w = widget->parentWidget(); w && w != form; w = w->parentWidget()) {
        if (hasMethod(w, signature))
            return true;
    }
    return false;
}
} // namespace

FormSession::FormSession(QWidget *loadedRoot, norvo_v0::QeltApp *app, QObject *parent)
    : QObject(parent)
    , m_app(app)
{
    auto *dialog = qobject_cast<QDialog *>(loadedRoot);
    if (!dialog || qstrcmp(dialog->metaObject()->className(), "QDialog") != 0) {
        dialog = new QDialog;
        dialog->setWindowTitle(loadedRoot->windowTitle());
        auto *layout = new QVBoxLayout(dialog);
        layout->setContentsMargins(0, 0, 0, 0);
        dialog->resize(loadedRoot->size()); // the form's size, as Designer shows it
        loadedRoot->setParent(dialog);
        layout->addWidget(loadedRoot);
    }
    m_form = dialog;
    m_form->setProperty("QeltApp", norvo_v0::QeltApp::toVariant(app));
}

FormSession::~FormSession()
{
    // Callbacks into the form's widgets stop before the form goes; a form never started leaves the
    // updates of the form on screen running.
    if (m_form) {
        if (m_started)
            m_app->stopUpdateUI();
        const QList<QWidget *> widgets = m_form->findChildren<QWidget *>();
        for (QWidget *w : widgets)
            m_app->removeUIVariable(m_form, w);
        delete m_form;
    }
}

QDialog *FormSession::form() const
{
    return m_form;
}

QStringList FormSession::problems() const
{
    QStringList out;
    const QList<QDialog *> dialogs = m_form->findChildren<QDialog *>();
    for (const QDialog *dialog : dialogs) {
        if (qstrcmp(dialog->metaObject()->className(), "QDialog") != 0)
            continue;
        const QString why = dialog->property("QeltApp").isValid()
                                ? QStringLiteral("sets its own \"QeltApp\" property, which only the panel may set")
                                : QStringLiteral("has no application");
        out << QStringLiteral("dialog \"%1\" inside the form %2; the widgets in it cannot attach")
                   .arg(dialog->objectName(), why);
    }
    return out;
}

void FormSession::start()
{
    m_started = true;
    attachWidgets(m_form, m_app);
    setLanguage(NORVOInterface_Z3::initialization()->currentLanguageIndex());
    for (const QString &problem : SoftKeyPages::setUp(m_form))
        qWarning("%s", qPrintable(problem));
    m_app->startUpdateUI(m_form);
}

void FormSession::attachWidgets(QWidget *form, norvo_v0::QeltApp *app)
{
    const char *attach = "setQeltAppAndFormPtr(void*,void*)";
    const QList<QWidget *> widgets = form->findChildren<QWidget *>();
    for (QWidget *w : widgets) {
        if (hasMethod(w, attach) && !hasAncestorWithMethod(w, form, attach)) {
            QMetaObject::invokeMethod(w, "setQeltAppAndFormPtr", Qt::DirectConnection,
                                      Q_ARG(void *, static_cast<void *>(app)),
                                      Q_ARG(void *, static_cast<void *>(form)));
        }
    }
    form->ensurePolished();
    for (QWidget *w : widgets)
        w->ensurePolished(); // self-attaching widgets register on polish
}

void FormSession::setLanguage(int index)
{
    NORVOInterface_Z3::initialization()->setCurrentLanguageIndex(index);
    callOnWidgets(m_form, "updateLanguage(int)", index);
}

void FormSession::setAuthority(int authority)
{
    callOnWidgets(m_form, "updateAuthority(int)", authority);
}

void FormSession::callOnWidgets(QWidget *form, const char *method, int value)
{
    const QByteArray name = QByteArray(method).left(QByteArray(method).indexOf('('));
    const QList<QWidget *> widgets = form->findChildren<QWidget *>();
    for (QWidget *w : widgets) {
        if (hasMethod(w, method))
            QMetaObject::invokeMethod(w, name.constData(), Qt::DirectConnection, Q_ARG(int, value));
    }
}
