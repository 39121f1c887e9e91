#include "tabwidgetpropertieseditor.h"

#include "formwindowhost.h"
#include "languagestate.h"
#include "norvointerface_z3.h"
#include "tabwidget.h"
#include "textinfocodec.h"
#include "textpropertyeditordialog_z12.h"
#include "ui_tabwidgeteditor.h"

#include <QColorDialog>
#include <QPixmap>

namespace {
int currentLanguage()
{
    return NORVOInterface_Z3::initialization()->currentLanguageIndex();
}
} // namespace

TabWidgetPropertiesEditor::TabWidgetPropertiesEditor(TabWidget *widget, TabWidget *preview,
                                                     QDesignerFormWindowInterface *formWindow,
                                                     Ui::TabWidgetEditor *ui, QObject *parent)
    : QObject(parent)
    , ui(ui)
    , widget(widget)
    , preview(preview)
    , formWindow(formWindow)
{
    ui->tabCountSpinBox->setRange(2, TabWidget::MaxTabs);
    ui->tabCountSpinBox->setValue(widget->tabsCount());
    connect(ui->tabCountSpinBox, qOverload<int>(&QSpinBox::valueChanged), this,
            &TabWidgetPropertiesEditor::tabsCountChanged);
    ui->objectNameLineEdit->setText(widget->objectName());

    // The preview shows the widget's tabs in the panel's language.
    preview->setTabTexts(widget->tabTexts());
    preview->SetTextInfoBuffer(widget->property("textInfoBuffer").toByteArray());
    preview->setMultiTextList(widget->multiTextList());
    const QStringList families = NORVOInterface_Z3::initialization()->getSystemLanguageFamilys();
    if (const QString family = LanguageState::textAt(families, currentLanguage()); !family.isEmpty()) {
        QFont font = preview->font();
        font.setFamily(family);
        preview->setFont(font);
    }
    preview->updateLanguage(currentLanguage());
    widget->getPluginNameAndTransText(textRecords);
    tabTexts = widget->tabTexts();

    tabTextColors = widget->tabTextColors();
    operationalAuthoritys = widget->operationalAuthoritys();
    preview->setTabTextColors(tabTextColors);
    preview->setOperationalAuthoritys(operationalAuthoritys);

    selectedTabColor = widget->selectedTabColor();
    backgroundColor = widget->backgroundColor();
    showColor(ui->selectedClrBtn, selectedTabColor);
    showColor(ui->backGroundClrBtn, backgroundColor);
    preview->setSelectedTabColor(selectedTabColor);
    preview->setBackgroundColor(backgroundColor);
    connect(ui->selectedClrBtn, &QPushButton::clicked, this, &TabWidgetPropertiesEditor::selectedColorBtnClicked);
    connect(ui->backGroundClrBtn, &QPushButton::clicked, this, &TabWidgetPropertiesEditor::backGroundClrEditBtnClicked);

    ui->currentIndexSpinBox->setRange(0, widget->tabsCount() - 1);
    ui->currentIndexSpinBox->setValue(widget->currentIndex());
    connect(ui->currentIndexSpinBox, qOverload<int>(&QSpinBox::valueChanged), this,
            &TabWidgetPropertiesEditor::currentIndexChanged);
    connect(ui->currentColorEditBtn, &QPushButton::clicked, this, &TabWidgetPropertiesEditor::currentColorEditBtnClicked);
    connect(ui->currentTextInput, &QLineEdit::textEdited, this, &TabWidgetPropertiesEditor::textEdit);
    connect(ui->textEditBtn, &QPushButton::clicked, this, &TabWidgetPropertiesEditor::textEditBtnClicked);
    connect(preview, &TabWidget::currentChanged, this, &TabWidgetPropertiesEditor::showTabCurrentChanged);
    ui->currentOperationalAuthority->setRange(0, 99);
    connect(ui->currentOperationalAuthority, qOverload<int>(&QSpinBox::valueChanged), this,
            &TabWidgetPropertiesEditor::curAuthorityChanged);
    currentIndexChanged(widget->currentIndex());
}

TabWidgetPropertiesEditor::~TabWidgetPropertiesEditor() = default;

void TabWidgetPropertiesEditor::showColor(QPushButton *button, const QColor &color)
{
    QPixmap swatch(20, 20);
    swatch.fill(color);
    button->setIcon(QIcon(swatch));
}

TextData &TabWidgetPropertiesEditor::recordOf(int tab)
{
    while (textRecords.size() <= tab)
        textRecords.append(QList<TextData>{TextData()});
    if (textRecords[tab].isEmpty())
        textRecords[tab].append(TextData());
    return textRecords[tab].first();
}

void TabWidgetPropertiesEditor::readCopiesFromPreview()
{
    tabTexts = preview->tabTexts();
    tabTextColors = preview->tabTextColors();
    operationalAuthoritys = preview->operationalAuthoritys();
    preview->getPluginNameAndTransText(textRecords);
}

void TabWidgetPropertiesEditor::tabsCountChanged(int count)
{
    if (!preview)
        return;
    preview->setTabsCount(count);
    readCopiesFromPreview();
    ui->currentIndexSpinBox->setMaximum(preview->tabsCount() - 1);
}

void TabWidgetPropertiesEditor::currentIndexChanged(int index)
{
    if (!preview || index < 0 || index >= qMax(tabTexts.size(), textRecords.size()))
        return;
    preview->setCurrentIndex(index);
    currentTab = index;
    const QSignalBlocker text(ui->currentTextInput);
    ui->currentTextInput->setText(LanguageState::textAt(recordOf(index).texts, currentLanguage()));
    showColor(ui->currentColorEditBtn, QColor(tabTextColors.value(index, QStringLiteral("#000000"))));
    const QSignalBlocker authority(ui->currentOperationalAuthority);
    ui->currentOperationalAuthority->setValue(operationalAuthoritys.value(index).toInt());
}

void TabWidgetPropertiesEditor::showTabCurrentChanged(int index)
{
    ui->currentIndexSpinBox->setValue(index);
}

void TabWidgetPropertiesEditor::textEdit(const QString &text)
{
    // The record keeps its word-library link; the text of the panel's language is the one typed.
    QStringList &texts = recordOf(currentTab).texts;
    const int language = currentLanguage();
    while (texts.size() <= language)
        texts.append(QString());
    texts[language] = text;
    // Committed with the records, so that redo shows the typed text too.
    if (currentTab < tabTexts.size())
        tabTexts[currentTab] = text;
    if (preview)
        preview->setCurrentTabText(text);
}

void TabWidgetPropertiesEditor::textEditBtnClicked()
{
    textPropertyEditorDialog_Z12 dialog(ui->textEditBtn->window());
    dialog.setTextDataList({recordOf(currentTab)});
    dialog.setcurrentLanguageAndState(currentLanguage(), 0);
    dialog.setFontAndTextColorisVisible(true, false);
    if (dialog.exec() != QDialog::Accepted || dialog.getTextDataList().isEmpty())
        return;
    recordOf(currentTab) = dialog.getTextDataList().first();
    const QString text = LanguageState::textAt(recordOf(currentTab).texts, currentLanguage());
    ui->currentTextInput->setText(text);
    if (currentTab < tabTexts.size())
        tabTexts[currentTab] = text;
    if (preview) {
        preview->SetTextInfoBuffer(TextInfoCodec::encodeSlots(textRecords));
        preview->refreshlanguage(currentLanguage());
    }
}

void TabWidgetPropertiesEditor::languageChanged(int index)
{
    if (preview)
        preview->updateLanguage(index);
}

QColor TabWidgetPropertiesEditor::askColor(const QColor &current)
{
    return QColorDialog::getColor(current, ui->tabCountSpinBox->window());
}

void TabWidgetPropertiesEditor::currentColorEditBtnClicked()
{
    const QColor color = askColor(QColor(tabTextColors.value(currentTab, QStringLiteral("#000000"))));
    if (!color.isValid() || currentTab >= tabTextColors.size())
        return;
    tabTextColors[currentTab] = color.name();
    if (preview)
        preview->setCurrentTabTextColor(color);
    showColor(ui->currentColorEditBtn, color);
}

void TabWidgetPropertiesEditor::backGroundClrEditBtnClicked()
{
    if (const QColor color = askColor(backgroundColor); color.isValid()) {
        backgroundColor = color;
        showColor(ui->backGroundClrBtn, color);
    }
    if (preview)
        preview->setBackgroundColor(backgroundColor);
}

void TabWidgetPropertiesEditor::selectedColorBtnClicked()
{
    if (const QColor color = askColor(selectedTabColor); color.isValid()) {
        selectedTabColor = color;
        showColor(ui->selectedClrBtn, color);
    }
    if (preview)
        preview->setSelectedTabColor(selectedTabColor);
}

void TabWidgetPropertiesEditor::curAuthorityChanged(int authority)
{
    if (currentTab < operationalAuthoritys.size())
        operationalAuthoritys[currentTab] = QString::number(authority);
    // The preview keeps it too, so that changing the number of tabs does not lose it.
    if (preview)
        preview->setOperationalAuthoritys(operationalAuthoritys);
}

void TabWidgetPropertiesEditor::commit(const char *name, const QVariant &value)
{
    if (formWindow)
        FormWindowHost::setCursorProperty(formWindow, widget, QString::fromLatin1(name), value);
    else
        widget->setProperty(name, value);
}

void TabWidgetPropertiesEditor::accept()
{
    if (!widget)
        return;
    commit("tabsCount", ui->tabCountSpinBox->value());
    commit("currentIndex", ui->currentIndexSpinBox->value());
    commit("selectedTabColor", selectedTabColor);
    commit("backgroundColor", backgroundColor);
    commit("tabTextColors", tabTextColors);
    commit("operationalAuthoritys", operationalAuthoritys);
    commit("textInfoBuffer", TextInfoCodec::encodeSlots(textRecords.mid(0, ui->tabCountSpinBox->value())));
    commit("tabTexts", tabTexts);
    widget->refreshlanguage(currentLanguage());
}
