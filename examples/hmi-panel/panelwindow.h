#ifndef PANELWINDOW_H
#define PANELWINDOW_H

#include <QWidget>

#include <functional>

class FormSession;
class LastUsedTable;
class QAction;
class QLabel;
class QPushButton;
class QScrollArea;
class QSpinBox;
class QToolButton;
class TableWidget;

// The panel around a form: the operator picks the language and logs in with an authority, and finds
// parameters in the form's tables. The panel's own texts follow the panel language (PanelWords).
class PanelWindow : public QWidget
{
    Q_OBJECT
public:
    // The window shows the form at its own size, the whole window up to screenArea (no bound when
    // invalid); a form larger than that scrolls.
    PanelWindow(FormSession *session, const QStringList &languageNames, const QSize &screenArea,
                QWidget *parent = nullptr);

    // Shows the session's form in place of the one shown; the caller then deletes the old session.
    void setSession(FormSession *session);
    int authority() const;
    // A line under the form for what the operator should know (refusals, the controller link).
    void showMessage(const QString &message);
    // A message made of the panel's words: said again whenever the panel language changes.
    void showMessage(std::function<QString()> message);

private:
    void retranslate();
    QWidget *addSearchKeys();
    QToolButton *addFileMenu();
    // The table the operator works in (PanelTables::searchTable); says so when none is on screen.
    TableWidget *currentTable();

    FormSession *m_session = nullptr;
    LastUsedTable *m_lastTable;
    QSize m_screenArea;
    QScrollArea *m_view = nullptr;
    QLabel *m_languageLabel = nullptr;
    QLabel *m_authorityLabel = nullptr;
    QSpinBox *m_authority = nullptr;
    QWidget *m_tableKeys = nullptr;
    QPushButton *m_find = nullptr;
    QPushButton *m_findNext = nullptr;
    QPushButton *m_jump = nullptr;
    QToolButton *m_files = nullptr;
    QList<QAction *> m_fileActions;
    QLabel *m_message = nullptr;
    std::function<QString()> m_wordsMessage;
};

#endif
