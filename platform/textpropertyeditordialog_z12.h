#ifndef TEXTPROPERTYEDITORDIALOG_Z12_H
#define TEXTPROPERTYEDITORDIALOG_Z12_H

#include "hmiplatform_export.h"
#include "textdata.h"

#include <QDialog>

class QComboBox;
class textPropertyEditor_Z12;

// The multi-language text editor as a dialog: the texts of one or more records in every system
// language, opened on a chosen language and record (the state: for two-state captions, On and Off).
class HMIPLATFORM_EXPORT textPropertyEditorDialog_Z12 : public QDialog
{
    Q_OBJECT
public:
    explicit textPropertyEditorDialog_Z12(QWidget *parent = nullptr);

    void setTextDataList(const QList<TextData> &list);
    QList<TextData> getTextDataList() const;
    void setcurrentLanguageAndState(int language, int state);
    void setFontAndTextColorisVisible(bool fontVisible, bool colorVisible);
    textPropertyEditor_Z12 *editor() const { return m_editor; }

private:
    void fillStates();

    textPropertyEditor_Z12 *m_editor;
    QComboBox *m_language;
    QComboBox *m_state;
};

#endif
