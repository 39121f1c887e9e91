#ifndef BITBUTTONTEXTLISTEDIT_H
#define BITBUTTONTEXTLISTEDIT_H

#include "bitbutton.h"
#include "textdata.h"

#include <QColor>
#include <QFont>
#include <QList>
#include <QMap>
#include <QObject>
#include <QPointer>

class QDesignerFormWindowInterface;
class textPropertyEditor_Z12;

namespace Ui {
class BitButtonEditor;
}

// The Text page of the Bit Button Editor: the ON and the OFF captions in every language, their
// fonts and colours. One text editor shows the state picked with "ON Edited" / "OFF Edited"; the
// preview follows every edit; Ok writes the captions to the button through the form window, so that
// Designer records them with the dialog's other changes.
class BitButtonTextListEdit : public QObject
{
    Q_OBJECT
public:
    BitButtonTextListEdit(BitButton *widget, BitButton *preview, QDesignerFormWindowInterface *formWindow,
                          Ui::BitButtonEditor *ui, QObject *parent = nullptr);
    ~BitButtonTextListEdit() override;

public Q_SLOTS:
    void accept();
    // The edited state follows the "ON Edited" / "OFF Edited" buttons.
    void radioBtnClicked(bool checked);
    // The preview's state from the layout's state buttons; not connected here, the dialog binds them.
    void changedPreviewState();
    void stateRadioBtnClick(bool checked);

    // Slots of separate text and font fields, which the text editor widget replaces; they do nothing
    // and stay so that connections made by name still resolve.
    void languageBtnClick();
    void planTextChanged();
    void currentLanguageChanged(int index);
    void fontComboboxIndexChanged(const QString &family);
    void fontPointSizeChanged(int size);
    void CheckBox_Bold_StateChanged(bool on);
    void CheckBox_Italic_StateChanged(bool on);
    void CheckBox_Underline_StateChanged(bool on);
    void comboboxCurrentIndexChanged(int index);
    void onPlainTextEditTextChanged();
    void offPlainTextEditTextChanged();
    void onLangBtnClick();
    void offLangBtnClick();
    void setFontInfo(const QFont &font);

private Q_SLOTS:
    void textChanged(const QString &text);
    void fontChanged(const QFont &font);
    void colorChanged(const QColor &color);

private:
    void load();
    // One record made from the button's caption list and caption when none was stored.
    void completeRecords(QList<TextData> &records, const QStringList &textList, const QString &text) const;
    // The font of every language for a record that has none.
    QList<QFont> startFonts() const;
    void showState(BitButton::State state);
    // The editor's records and colour back into the state being edited.
    void keepEdits();
    void shareFonts(BitButton::State from, BitButton::State to);
    QList<TextData> &records(BitButton::State state);
    QColor &color(BitButton::State state);
    void commit(const char *name, const QVariant &value);

    QPointer<BitButton> m_widget;
    QPointer<BitButton> m_preview;
    QDesignerFormWindowInterface *m_formWindow;
    Ui::BitButtonEditor *m_ui;
    textPropertyEditor_Z12 *m_editor;

    QMap<int, QFont> m_fontMap;
    QList<TextData> m_onRecords;
    QList<TextData> m_offRecords;
    QColor m_onColor;
    QColor m_offColor;
    BitButton::State m_edited = BitButton::On;
};

#endif
