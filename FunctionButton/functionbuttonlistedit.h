#ifndef FUNCTIONBUTTONLISTEDIT_H
#define FUNCTIONBUTTONLISTEDIT_H

#include "captionlisteditor.h"

class FunctionButton;

namespace Ui {
class FunctionButtonEditor;
}

// The Text tab of the Function Button Editor. The button's font property sets its font at any time,
// so the font the new records give it is recorded too, and one undo takes the whole edit back.
class functionButtonListEdit : public CaptionListEditor
{
    Q_OBJECT
public:
    functionButtonListEdit(FunctionButton *widget, FunctionButton *preview, QDesignerFormWindowInterface *formWindow,
                           Ui::FunctionButtonEditor *ui, QObject *parent = nullptr);
};

#endif
