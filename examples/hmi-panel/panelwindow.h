#ifndef PANELWINDOW_H
#define PANELWINDOW_H

#include <QWidget>

class FormSession;
class QLabel;

// The panel around a form: the operator picks the language and logs in with an authority.
class PanelWindow : public QWidget
{
    Q_OBJECT
public:
    PanelWindow(FormSession *session, const QStringList &languageNames, QWidget *parent = nullptr);

private:
    void showRefusal(int authority);

    FormSession *m_session;
    QLabel *m_message = nullptr;
};

#endif
