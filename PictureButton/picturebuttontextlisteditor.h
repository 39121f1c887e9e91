#ifndef PICTUREBUTTONTEXTLISTEDITOR_H
#define PICTUREBUTTONTEXTLISTEDITOR_H

#include "captionlisteditor.h"

namespace Ui {
class PictureButtonEditor;
}

class PictureButton;

// The textEdit tab of the Picture Button Editor. The button's language is read when the page opens
// and committed first on accept, ahead of the captions.
class PictureButtonTextListEditor : public CaptionListEditor
{
    Q_OBJECT
public:
    PictureButtonTextListEditor(PictureButton *widget, PictureButton *preview,
                                QDesignerFormWindowInterface *formWindow, Ui::PictureButtonEditor *ui,
                                QObject *parent = nullptr);

public Q_SLOTS:
    void accept() override;
    // Kept for layouts that connect them by name; the text editor handles fonts itself.
    void fontComboboxIndexChanged(const QString &family);
    void fontPointSizeChanged(int size);
    void CheckBox_Bold_StateChanged(bool on);
    void CheckBox_Italic_StateChanged(bool on);
    void CheckBox_Underline_StateChanged(bool on);

private:
    int m_language = 0;
};

#endif
