#include "textpropertyeditor_z12.h"

#include "norvointerface_z3.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QFontComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPixmap>
#include <QPushButton>
#include <QSpinBox>
#include <QTableWidget>
#include <QVBoxLayout>

#include <algorithm>
#include <limits>

namespace {

NORVOInterface_Z3 *hmi()
{
    return NORVOInterface_Z3::initialization();
}

} // namespace

textPropertyEditor_Z12::textPropertyEditor_Z12(QWidget *parent)
    : QWidget(parent)
    , m_color(Qt::black)
    , m_table(new QTableWidget(this))
    , m_wordLibId(new QSpinBox(this))
    , m_family(new QFontComboBox(this))
    , m_pointSize(new QSpinBox(this))
    , m_bold(new QCheckBox(tr("Bold"), this))
    , m_italic(new QCheckBox(tr("Italic"), this))
    , m_underline(new QCheckBox(tr("Underline"), this))
    , m_colorButton(new QPushButton(tr("Edit..."), this))
{
    m_table->setObjectName(QStringLiteral("textTable"));
    m_table->setSelectionMode(QAbstractItemView::SingleSelection);
    m_table->horizontalHeader()->setStretchLastSection(true);
    m_wordLibId->setObjectName(QStringLiteral("wordLibIdSpinBox"));
    m_wordLibId->setRange(-1, std::numeric_limits<int>::max());
    m_wordLibId->setSpecialValueText(tr("None"));
    m_family->setObjectName(QStringLiteral("fontComboBox"));
    m_pointSize->setObjectName(QStringLiteral("pointSizeSpinBox"));
    m_pointSize->setRange(1, 200);
    m_bold->setObjectName(QStringLiteral("boldCheckBox"));
    m_italic->setObjectName(QStringLiteral("italicCheckBox"));
    m_underline->setObjectName(QStringLiteral("underlineCheckBox"));
    m_colorButton->setObjectName(QStringLiteral("colorButton"));

    auto *fontBox = new QGroupBox(tr("Font"), this);
    auto *fontForm = new QFormLayout(fontBox);
    fontForm->addRow(tr("Family:"), m_family);
    fontForm->addRow(tr("Point Size:"), m_pointSize);
    auto *styles = new QHBoxLayout;
    styles->addWidget(m_bold);
    styles->addWidget(m_italic);
    styles->addWidget(m_underline);
    fontForm->addRow(styles);
    m_fontBox = fontBox;
    auto *textForm = new QFormLayout;
    textForm->addRow(tr("Word Library ID:"), m_wordLibId);
    textForm->addRow(tr("Text Color:"), m_colorButton);
    m_colorLabel = textForm->labelForField(m_colorButton);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_table, 1);
    layout->addLayout(textForm);
    layout->addWidget(fontBox);

    connect(m_table, &QTableWidget::cellChanged, this, &textPropertyEditor_Z12::cellEdited);
    connect(m_table, &QTableWidget::currentCellChanged, this,
            [this](int row, int column) { showCell(row, column); });
    connect(m_family, &QFontComboBox::currentFontChanged, this, &textPropertyEditor_Z12::fontEdited);
    connect(m_pointSize, QOverload<int>::of(&QSpinBox::valueChanged), this, &textPropertyEditor_Z12::fontEdited);
    connect(m_bold, &QCheckBox::toggled, this, &textPropertyEditor_Z12::fontEdited);
    connect(m_italic, &QCheckBox::toggled, this, &textPropertyEditor_Z12::fontEdited);
    connect(m_underline, &QCheckBox::toggled, this, &textPropertyEditor_Z12::fontEdited);
    connect(m_wordLibId, QOverload<int>::of(&QSpinBox::valueChanged), this,
            &textPropertyEditor_Z12::wordLibIdEdited);
    connect(m_colorButton, &QPushButton::clicked, this, &textPropertyEditor_Z12::chooseColor);

    buildTable();
    showColor();
}

textPropertyEditor_Z12::~textPropertyEditor_Z12() = default;

void textPropertyEditor_Z12::setTextDataList(const QList<TextData> &list)
{
    m_records = list;
    buildTable();
}

QList<TextData> textPropertyEditor_Z12::getTextDataList() const
{
    return m_records;
}

void textPropertyEditor_Z12::setTextColor(const QColor &color)
{
    m_color = color;
    showColor();
}

QColor textPropertyEditor_Z12::getTextColor() const
{
    return m_color;
}

void textPropertyEditor_Z12::setFontVisible(bool visible)
{
    m_fontBox->setVisible(visible);
}

void textPropertyEditor_Z12::setColorVisible(bool visible)
{
    m_colorButton->setVisible(visible);
    if (m_colorLabel)
        m_colorLabel->setVisible(visible);
}

void textPropertyEditor_Z12::selectText(int language, int record)
{
    if (language >= 0 && language < m_table->rowCount() && record >= 0 && record < m_table->columnCount())
        m_table->setCurrentCell(language, record);
}

QColor textPropertyEditor_Z12::askColor(const QColor &current)
{
    return QColorDialog::getColor(current, this, tr("Text Color"));
}

int textPropertyEditor_Z12::languageCount() const
{
    int count = hmi()->getSystemLanguageCount();
    for (const TextData &data : m_records)
        count = std::max(count, int(data.texts.size()));
    return std::max(count, 1);
}

void textPropertyEditor_Z12::buildTable()
{
    m_updating = true;
    const int rows = languageCount();
    const int columns = std::max(1, int(m_records.size()));
    m_table->clear();
    m_table->setRowCount(rows);
    m_table->setColumnCount(columns);
    QStringList rowLabels;
    for (int row = 0; row < rows; ++row)
        rowLabels.append(tr("Language %1").arg(row + 1));
    m_table->setVerticalHeaderLabels(rowLabels);
    QStringList columnLabels;
    for (int column = 0; column < columns; ++column)
        columnLabels.append(columns == 1 ? tr("Text") : tr("Text %1").arg(column + 1));
    m_table->setHorizontalHeaderLabels(columnLabels);
    for (int column = 0; column < columns; ++column) {
        const TextData data = column < m_records.size() ? m_records.at(column) : TextData();
        for (int row = 0; row < rows; ++row) {
            auto *item = new QTableWidgetItem(row < data.texts.size() ? data.texts.at(row) : QString());
            // Texts taken from the word library are edited there, not here.
            if (data.wordLibId != -1)
                item->setFlags(item->flags() & ~Qt::ItemIsEditable);
            m_table->setItem(row, column, item);
        }
    }
    const int current = std::min(std::max(0, hmi()->currentLanguageIndex()), rows - 1);
    m_table->setCurrentCell(current, 0);
    m_updating = false;
    showCell(current, 0);
}

void textPropertyEditor_Z12::showCell(int row, int column)
{
    if (row < 0 || column < 0)
        return;
    const bool updating = m_updating;
    m_updating = true;
    const TextData data = column < m_records.size() ? m_records.at(column) : TextData();
    const QFont font = fontOf(data, row);
    m_family->setCurrentFont(font);
    m_pointSize->setValue(std::max(1, font.pointSize()));
    m_bold->setChecked(font.bold());
    m_italic->setChecked(font.italic());
    m_underline->setChecked(font.underline());
    m_wordLibId->setValue(data.wordLibId);
    m_updating = updating;
}

TextData &textPropertyEditor_Z12::record(int column)
{
    while (m_records.size() <= column) {
        TextData data;
        data.wordLibId = -1;
        m_records.append(data);
    }
    return m_records[column];
}

QFont textPropertyEditor_Z12::fontOf(const TextData &data, int language) const
{
    if (language >= 0 && language < data.fonts.size())
        return data.fonts.at(language);
    return data.fonts.isEmpty() ? font() : data.fonts.first();
}

void textPropertyEditor_Z12::cellEdited(int row, int column)
{
    if (m_updating)
        return;
    const QString text = m_table->item(row, column) ? m_table->item(row, column)->text() : QString();
    TextData &data = record(column);
    while (data.texts.size() <= row)
        data.texts.append(QString());
    data.texts[row] = text;
    if (row == hmi()->currentLanguageIndex())
        Q_EMIT textChange(text);
}

void textPropertyEditor_Z12::fontEdited()
{
    const int row = m_table->currentRow();
    const int column = std::max(0, m_table->currentColumn());
    if (m_updating || row < 0)
        return;
    TextData &data = record(column);
    // Languages without a font of their own get the one they showed so far.
    while (data.fonts.size() <= row)
        data.fonts.append(fontOf(data, int(data.fonts.size())));
    QFont font = data.fonts.at(row);
    font.setFamily(m_family->currentFont().family());
    font.setPointSize(m_pointSize->value());
    font.setBold(m_bold->isChecked());
    font.setItalic(m_italic->isChecked());
    font.setUnderline(m_underline->isChecked());
    data.fonts[row] = font;
    if (row == hmi()->currentLanguageIndex())
        Q_EMIT fontChange(font);
}

void textPropertyEditor_Z12::wordLibIdEdited(int id)
{
    const int column = std::max(0, m_table->currentColumn());
    if (m_updating)
        return;
    TextData &data = record(column);
    data.wordLibId = id;
    QStringList texts;
    if (id != -1 && hmi()->getWordLibraryDatasUsedId(id, texts))
        data.texts = texts;
    const int row = m_table->currentRow();
    buildTable();
    m_table->setCurrentCell(std::max(0, row), column);
    const int current = hmi()->currentLanguageIndex();
    if (current >= 0 && current < data.texts.size())
        Q_EMIT textChange(m_records.at(column).texts.at(current));
}

void textPropertyEditor_Z12::chooseColor()
{
    const QColor color = askColor(m_color);
    if (!color.isValid())
        return;
    m_color = color;
    showColor();
    Q_EMIT colorChange(color);
}

void textPropertyEditor_Z12::showColor()
{
    QPixmap swatch(20, 20);
    swatch.fill(m_color);
    m_colorButton->setIcon(QIcon(swatch));
}
