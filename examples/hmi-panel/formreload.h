#ifndef FORMRELOAD_H
#define FORMRELOAD_H

#include <QMap>
#include <QObject>
#include <QStringList>

#include <functional>
#include <memory>

class FormSession;
class PanelWindow;
namespace norvo_v0 { class QeltApp; }

// Loads the panel's form again from its file. A form that loads takes the place of the one on screen
// with the panel's language and authority, on the same controller (whose machine keeps its state).
// One that does not load leaves the last good form on screen and says why: the checker's findings in
// the message line and on stderr.
class FormReload : public QObject
{
    Q_OBJECT
public:
    struct Hooks
    {
        // The word library for the form, read anew.
        std::function<QMap<int, QStringList>()> words;
        // What the panel does to a form before it starts (paths), and once it runs (tables).
        std::function<void(FormSession *)> prepare;
        std::function<void(FormSession *)> started;
        // What keeps a form that loads from running on the panel's controller (variables a Modbus
        // map lacks), one finding a line; the form on screen stays when there is any.
        std::function<QStringList(const QString &fileName)> gaps;
    };
    // At most this many lines about a refused form go to stderr.
    static constexpr int MaxLines = 200;

    FormReload(const QString &fileName, PanelWindow *window, std::unique_ptr<FormSession> shown,
               norvo_v0::QeltApp *app, Hooks hooks, QObject *parent = nullptr);
    ~FormReload() override;

    FormSession *session() const { return m_session.get(); }
    // True when the file's form is now on screen.
    bool reload();
    // The same once no dialog or popup is open: one opened by a widget of the form (the keypad, a
    // file dialog) returns into that widget, which must still be there.
    void reloadWhenIdle();

private:
    // The loader's problem and the checker's findings on the file, one a line.
    QStringList checked(const QString &problem, const QMap<int, QStringList> &words) const;
    // Keeps the form on screen: the lines to stderr (bounded), the first finding to the message line.
    void refuse(const QStringList &lines);

    QString m_fileName;
    PanelWindow *m_window;
    std::unique_ptr<FormSession> m_session;
    norvo_v0::QeltApp *m_app;
    Hooks m_hooks;
};

#endif
