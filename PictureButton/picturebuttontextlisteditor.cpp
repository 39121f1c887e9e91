#include "picturebuttontextlisteditor.h"

#include "PictureButton.h"
#include "ui_picturebuttoneditor.h"

#include <QVariant>

PictureButtonTextListEditor::PictureButtonTextListEditor(PictureButton *widget, PictureButton *preview,
                                                         QDesignerFormWindowInterface *formWindow,
                                                         Ui::PictureButtonEditor *ui, QObject *parent)
    : CaptionListEditor(widget, preview, formWindow, ui->mTextPropertyEditor, parent)
    , m_language(widget ? int(widget->getLanguage()) : 0)
{
}

void PictureButtonTextListEditor::accept()
{
    if (!widget())
        return;
    commit("language", QVariant(m_language));
    CaptionListEditor::accept();
}

void PictureButtonTextListEditor::fontComboboxIndexChanged(const QString &) {}
void PictureButtonTextListEditor::fontPointSizeChanged(int) {}
void PictureButtonTextListEditor::CheckBox_Bold_StateChanged(bool) {}
void PictureButtonTextListEditor::CheckBox_Italic_StateChanged(bool) {}
void PictureButtonTextListEditor::CheckBox_Underline_StateChanged(bool) {}
