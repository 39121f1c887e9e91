#ifndef CAPTIONLISTEDITOR_H
#define CAPTIONLISTEDITOR_H

#include <QColor>
#include <QObject>
#include <QPointer>

class AbstractButton;
class QDesignerFormWindowInterface;
class QFont;
class textPropertyEditor_Z12;

// The text page of the editors of buttons with one caption slot (function and picture buttons):
// fills the multi-language text editor from the button's records, caption list or caption, keeps
// the preview's caption, font and colour in step, and on accept() writes the records, caption colour
// and caption back through the form window as undoable changes. Lives as long as the dialog runs.
class CaptionListEditor : public QObject
{
    Q_OBJECT
public:
    ~CaptionListEditor() override;

public Q_SLOTS:
    virtual void accept();
    // Kept for layouts that connect them by name: the text editor handles languages and plain
    // text itself, so they have nothing left to do.
    void languageBtnClick();
    void planTextChanged();
    void currentLanguageChanged(int index);

protected:
    CaptionListEditor(AbstractButton *widget, AbstractButton *preview, QDesignerFormWindowInterface *formWindow,
                      textPropertyEditor_Z12 *editor, QObject *parent);

    void commit(const char *name, const QVariant &value);
    AbstractButton *widget() const { return m_widget; }
    // Whether accept() also records the font the new records give the button, so that undoing the
    // edit takes that font back too (for buttons whose font property sets the font at any time).
    bool m_commitFont = false;

private Q_SLOTS:
    void textChanged(const QString &text);
    void fontChanged(const QFont &font);
    void colorChanged(const QColor &color);

private:
    void load();

    QPointer<AbstractButton> m_widget;
    QPointer<AbstractButton> m_preview;
    QPointer<QDesignerFormWindowInterface> m_formWindow;
    QPointer<textPropertyEditor_Z12> m_editor;
    QColor m_color;
};

#endif
