#ifndef PANELWINDOW_H
#define PANELWINDOW_H

#include <QWidget>

class FormSession;
class LastUsedTable;
class QHBoxLayout;
class QLabel;
class TableWidget;

// The panel around a form: the operator picks the language and logs in with an authority, and finds
// parameters in the form's tables.
class PanelWindow : public QWidget
{
    Q_OBJECT
public:
    // The window shows the form at its own size, the whole window up to screenArea (no bound when
    // invalid); a form larger than that scrolls.
    PanelWindow(FormSession *session, const QStringList &languageNames, const QSize &screenArea,
                QWidget *parent = nullptr);

    // A line under the form for what the operator should know (refusals, the controller link).
    void showMessage(const QString &message);

private:
    void showRefusal(int authority);
    void addSearchKeys(QHBoxLayout *bar);
    void addFileMenu(QHBoxLayout *bar);
    // The table the operator works in (PanelTables::searchTable); says so when none is on screen.
    TableWidget *currentTable();

    FormSession *m_session;
    LastUsedTable *m_lastTable;
    QLabel *m_message = nullptr;
};

#endif
