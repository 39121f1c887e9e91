#include "textpropertyeditordialog_z12.h"

#include "norvointerface_z3.h"
#include "textpropertyeditor_z12.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QVBoxLayout>

textPropertyEditorDialog_Z12::textPropertyEditorDialog_Z12(QWidget *parent)
    : QDialog(parent)
    , m_editor(new textPropertyEditor_Z12(this))
    , m_language(new QComboBox(this))
    , m_state(new QComboBox(this))
{
    setObjectName(QStringLiteral("textPropertyEditorDialog"));
    setWindowTitle(tr("Edit Texts"));
    m_editor->setObjectName(QStringLiteral("mTextPropertyEditor"));
    m_language->setObjectName(QStringLiteral("languageComboBox"));
    m_state->setObjectName(QStringLiteral("stateComboBox"));
    const int languages = NORVOInterface_Z3::initialization()->getSystemLanguageCount();
    for (int i = 0; i < languages; ++i)
        m_language->addItem(tr("Language %1").arg(i + 1));
    auto *choice = new QFormLayout;
    choice->addRow(tr("Language:"), m_language);
    choice->addRow(tr("State:"), m_state);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->setObjectName(QStringLiteral("buttonBox"));
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(choice);
    layout->addWidget(m_editor, 1);
    layout->addWidget(buttons);
    const auto select = [this] { m_editor->selectText(m_language->currentIndex(), m_state->currentIndex()); };
    connect(m_language, qOverload<int>(&QComboBox::currentIndexChanged), this, select);
    connect(m_state, qOverload<int>(&QComboBox::currentIndexChanged), this, select);
    fillStates();
}

void textPropertyEditorDialog_Z12::setTextDataList(const QList<TextData> &list)
{
    m_editor->setTextDataList(list);
    fillStates();
}

QList<TextData> textPropertyEditorDialog_Z12::getTextDataList() const
{
    return m_editor->getTextDataList();
}

void textPropertyEditorDialog_Z12::setcurrentLanguageAndState(int language, int state)
{
    if (language >= 0 && language < m_language->count())
        m_language->setCurrentIndex(language);
    if (state >= 0 && state < m_state->count())
        m_state->setCurrentIndex(state);
    m_editor->selectText(m_language->currentIndex(), m_state->currentIndex());
}

void textPropertyEditorDialog_Z12::setFontAndTextColorisVisible(bool fontVisible, bool colorVisible)
{
    m_editor->setFontVisible(fontVisible);
    m_editor->setColorVisible(colorVisible);
}

void textPropertyEditorDialog_Z12::fillStates()
{
    const QSignalBlocker blocker(m_state);
    m_state->clear();
    const int records = std::max(1, int(m_editor->getTextDataList().size()));
    for (int i = 0; i < records; ++i)
        m_state->addItem(tr("State %1").arg(i));
}
