#ifndef PROPERTYDIALOG_H
#define PROPERTYDIALOG_H

#include <QDialog>
#include <QPointer>

#include <memory>

class FieldBinder;
class FormValueReader;
class StatusTipDisplay;

// The editor dialog behind a task menu's "Edit Properties...". The task menu builds its layout
// on it (with the children "tabWidget", "previewWidget", "descriptionWidget", "buttonBox" and
// "macroTreeView") and runs exec(). When first shown the dialog binds every field whose
// what's-this is a property path of the widget, shows the preview, keeps it in step with every
// edit and shows the focused field's status tip. Ok commits the changed properties through the
// form window cursor as one undo step, together with what the companion editors commit on
// accepted(); Cancel commits nothing. The dialog owns the preview and deletes itself once closed.
class PropertyDialog : public QDialog
{
    Q_OBJECT
public:
    PropertyDialog(QWidget *widget, QWidget *preview, QWidget *parent = nullptr);
    ~PropertyDialog() override;

    QWidget *widget() const { return m_widget; }
    QWidget *preview() const { return m_preview; }
    FieldBinder *binder() const { return m_binder; }

    // Binds the layout; runs once, by itself when the dialog is first shown.
    void bind();
    bool isBound() const { return m_bound; }

    void setVisible(bool visible) override;

public Q_SLOTS:
    void accept() override;

private:
    void copyWidgetToPreview();
    void commitChanges();
    void dropEmptyCommand();

    QPointer<QWidget> m_widget;
    QPointer<QWidget> m_preview;
    std::unique_ptr<FormValueReader> m_reader;
    FieldBinder *m_binder = nullptr;
    StatusTipDisplay *m_tips = nullptr;
    bool m_bound = false;
    bool m_accepting = false;
};

// The dialog for the widget on a form, with preview (a new instance of the widget's class, without
// parent) for its preview area. The dialog owns preview and deletes itself after it is closed.
QDialog *createPropertyDialog(QWidget *widget, QWidget *preview);

#endif
