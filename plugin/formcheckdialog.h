#ifndef FORMCHECKDIALOG_H
#define FORMCHECKDIALOG_H

#include <QDialog>
#include <QPointer>

class QDesignerFormWindowInterface;
class QLabel;
class QTreeWidget;
class QTreeWidgetItem;

// "Check Form...": what the panel's form checker (the rules of hmi-panel --check) finds in a form as
// it stands in Designer, saved or not, with the word library beside its file, one finding a row
// (line, widget, message). Double-clicking a row selects its widget in the form. Not modal, so the
// panel builder can correct the form with the list open and check again.
class FormCheckDialog : public QDialog
{
    Q_OBJECT
public:
    // The form's dialog, made on first use (a child of the form, gone with it), checked again, shown.
    static FormCheckDialog *showFor(QDesignerFormWindowInterface *form);

    QTreeWidget *findingsList() const { return m_list; }

public Q_SLOTS:
    // Checks the form's current contents and lists the findings.
    void check();

private:
    explicit FormCheckDialog(QDesignerFormWindowInterface *form);
    void selectWidgetOf(QTreeWidgetItem *item);

    QPointer<QDesignerFormWindowInterface> m_form;
    QTreeWidget *m_list;
    QLabel *m_summary;
};

#endif
