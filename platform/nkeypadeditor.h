#ifndef NKEYPADEDITOR_H
#define NKEYPADEDITOR_H

#include "hmiplatform_export.h"
#include "nkeypadstruct.h"

#include <QWidget>

class QCheckBox;
class QComboBox;
class QSpinBox;

// Edits a soft-keypad record: used or not, where it opens, and the rectangle for a fixed place
// (only editable for that place). The record's flags and text pass through unchanged.
class HMIPLATFORM_EXPORT NKeyPadEditor : public QWidget
{
    Q_OBJECT
public:
    explicit NKeyPadEditor(QWidget *parent = nullptr);

    void setKeyPadStruct(const NKeyPadStruct &keyPad);
    NKeyPadStruct getKeyPadStruct() const;

Q_SIGNALS:
    void changed();

private:
    void updateGeometryFields();

    NKeyPadStruct m_keyPad;
    QCheckBox *m_enabled;
    QComboBox *m_position;
    QSpinBox *m_x;
    QSpinBox *m_y;
    QSpinBox *m_width;
    QSpinBox *m_height;
};

#endif
