#ifndef TEXTPROPERTYEDITOR_Z12_H
#define TEXTPROPERTYEDITOR_Z12_H

#include "hmiplatform_export.h"
#include "textdata.h"

#include <QColor>
#include <QList>
#include <QWidget>

class QCheckBox;
class QFontComboBox;
class QPushButton;
class QSpinBox;
class QTableWidget;

// Edits the multi-language texts of a widget: one row per system language, one column per text
// record, the font of the selected language, the caption colour and the selected record's
// word-library link. It reports the edits that show on a preview: the text and the font of the
// current system language, and the colour.
class HMIPLATFORM_EXPORT textPropertyEditor_Z12 : public QWidget
{
    Q_OBJECT
public:
    explicit textPropertyEditor_Z12(QWidget *parent = nullptr);
    ~textPropertyEditor_Z12() override;

    // Records are kept as given; only the texts and fonts the user edits change.
    void setTextDataList(const QList<TextData> &list);
    QList<TextData> getTextDataList() const;
    void setTextColor(const QColor &color);
    QColor getTextColor() const;
    // Shows or hides the font fields and the colour field.
    void setFontVisible(bool visible);
    void setColorVisible(bool visible);
    // Makes the text of language in record (column) the one being edited.
    void selectText(int language, int record);

Q_SIGNALS:
    void textChange(const QString &text);
    void fontChange(const QFont &font);
    void colorChange(const QColor &color);

protected:
    // The colour chooser behind the colour button; an invalid colour means cancel.
    virtual QColor askColor(const QColor &current);

private:
    void buildTable();
    void showCell(int row, int column);
    void cellEdited(int row, int column);
    void fontEdited();
    void wordLibIdEdited(int id);
    void chooseColor();
    void showColor();
    // The record of a column, created when the user edits a column that has none yet.
    TextData &record(int column);
    QFont fontOf(const TextData &data, int language) const;
    int languageCount() const;

    QList<TextData> m_records;
    QColor m_color;
    bool m_updating = false;

    QTableWidget *m_table;
    QSpinBox *m_wordLibId;
    QFontComboBox *m_family;
    QSpinBox *m_pointSize;
    QCheckBox *m_bold;
    QCheckBox *m_italic;
    QCheckBox *m_underline;
    QPushButton *m_colorButton;
    QWidget *m_fontBox = nullptr;
    QWidget *m_colorLabel = nullptr;
};

#endif
