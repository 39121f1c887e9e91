#ifndef FUNCTIONBUTTONLISTEDIT_H
#define FUNCTIONBUTTONLISTEDIT_H

#include <QColor>
#include <QObject>
#include <QPointer>

class FunctionButton;
class QDesignerFormWindowInterface;
class QFont;
class textPropertyEditor_Z12;

namespace Ui {
class FunctionButtonEditor;
}

// The Text tab of the Function Button Editor: fills the multi-language text editor from the button,
// keeps the preview's caption, font and colour in step, and on accept() writes the captions back
// through the form window as undoable changes. Lives as long as the dialog runs.
class functionButtonListEdit : public QObject
{
    Q_OBJECT
public:
    functionButtonListEdit(FunctionButton *widget, FunctionButton *preview, QDesignerFormWindowInterface *formWindow,
                           Ui::FunctionButtonEditor *ui, QObject *parent = nullptr);
    ~functionButtonListEdit() override;

public Q_SLOTS:
    void accept();
    // Kept for layouts that connect them by name: the text editor handles languages and plain
    // text itself, so they have nothing left to do.
    void languageBtnClick();
    void planTextChanged();
    void currentLanguageChanged(int index);

private Q_SLOTS:
    void textChanged(const QString &text);
    void fontChanged(const QFont &font);
    void colorChanged(const QColor &color);

private:
    void load();
    void commit(const char *name, const QVariant &value);
    textPropertyEditor_Z12 *editor() const;

    QPointer<FunctionButton> m_widget;
    QPointer<FunctionButton> m_preview;
    QPointer<QDesignerFormWindowInterface> m_formWindow;
    Ui::FunctionButtonEditor *m_ui;
    QColor m_color;
};

#endif
