#include "functionbuttonlistedit.h"

#include "functionbutton.h"
#include "ui_functionbuttoneditor.h"

functionButtonListEdit::functionButtonListEdit(FunctionButton *widget, FunctionButton *preview,
                                               QDesignerFormWindowInterface *formWindow,
                                               Ui::FunctionButtonEditor *ui, QObject *parent)
    : CaptionListEditor(widget, preview, formWindow, ui ? ui->mTextPropertyEditor : nullptr, parent)
{
    m_commitFont = true;
}
