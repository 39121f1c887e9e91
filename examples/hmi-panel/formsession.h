#ifndef FORMSESSION_H
#define FORMSESSION_H

#include <QObject>
#include <QPointer>
#include <QStringList>

class QDialog;
class QWidget;
namespace norvo_v0 { class QeltApp; }

// One loaded form on the panel: the form is a QDialog carrying the application in its "QeltApp"
// property; widgets that take the application by call get it, updates run while the session lives,
// and language and authority changes reach every widget that follows them.
class FormSession : public QObject
{
    Q_OBJECT
public:
    // Takes a loaded form; a root that is not a QDialog is placed in one.
    FormSession(QWidget *loadedRoot, norvo_v0::QeltApp *app, QObject *parent = nullptr);
    ~FormSession() override;

    QDialog *form() const;
    // What keeps the form from running whole, one line each: a plain QDialog inside the form would be
    // the form of the widgets in it, and it carries no application (a form file cannot give one).
    QStringList problems() const;
    // Hands the application to the widgets and starts updates.
    void start();
    void setLanguage(int index);
    void setAuthority(int authority);

    // What start() does to the widgets of any form (also a designer's preview): the outermost of those
    // taking the application by call get it, all are polished (the others attach then).
    static void attachWidgets(QWidget *form, norvo_v0::QeltApp *app);
    // Calls method (taking one int) on every widget of form that has it.
    static void callOnWidgets(QWidget *form, const char *method, int value);

private:
    QPointer<QDialog> m_form;
    norvo_v0::QeltApp *m_app;
    bool m_started = false;
};

#endif
