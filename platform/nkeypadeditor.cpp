#include "nkeypadeditor.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QSpinBox>
#include <QVBoxLayout>

namespace {
constexpr int CustomPosition = 2;

QSpinBox *coordinateBox(QWidget *parent, const char *name, int minimum)
{
    auto *box = new QSpinBox(parent);
    box->setObjectName(QLatin1String(name));
    box->setRange(minimum, 9999);
    return box;
}
} // namespace

NKeyPadEditor::NKeyPadEditor(QWidget *parent)
    : QWidget(parent)
{
    auto *group = new QGroupBox(tr("Soft Keypad"), this);
    m_enabled = new QCheckBox(tr("Enabled"), group);
    m_enabled->setObjectName(QStringLiteral("keypadEnabled"));
    m_position = new QComboBox(group);
    m_position->setObjectName(QStringLiteral("keypadPosition"));
    m_position->addItems({tr("Auto"), tr("Center"), tr("Custom")});
    m_x = coordinateBox(group, "keypadX", -9999);
    m_y = coordinateBox(group, "keypadY", -9999);
    m_width = coordinateBox(group, "keypadWidth", 0);
    m_height = coordinateBox(group, "keypadHeight", 0);

    auto *form = new QFormLayout(group);
    form->addRow(m_enabled);
    form->addRow(tr("Position:"), m_position);
    auto *place = new QHBoxLayout;
    place->addWidget(m_x);
    place->addWidget(m_y);
    form->addRow(tr("X, Y:"), place);
    auto *size = new QHBoxLayout;
    size->addWidget(m_width);
    size->addWidget(m_height);
    form->addRow(tr("Width, Height:"), size);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(group);

    connect(m_enabled, &QCheckBox::toggled, this, &NKeyPadEditor::changed);
    connect(m_position, qOverload<int>(&QComboBox::currentIndexChanged), this, [this] {
        updateGeometryFields();
        emit changed();
    });
    for (QSpinBox *box : {m_x, m_y, m_width, m_height})
        connect(box, qOverload<int>(&QSpinBox::valueChanged), this, &NKeyPadEditor::changed);
    updateGeometryFields();
}

void NKeyPadEditor::setKeyPadStruct(const NKeyPadStruct &keyPad)
{
    m_keyPad = keyPad;
    const QSignalBlocker blockers[] = {QSignalBlocker(m_enabled), QSignalBlocker(m_position), QSignalBlocker(m_x),
                                       QSignalBlocker(m_y), QSignalBlocker(m_width), QSignalBlocker(m_height)};
    m_enabled->setChecked(keyPad.enabled != 0);
    m_position->setCurrentIndex(keyPad.position >= 0 && keyPad.position <= CustomPosition ? keyPad.position : 0);
    m_x->setValue(keyPad.x);
    m_y->setValue(keyPad.y);
    m_width->setValue(keyPad.width);
    m_height->setValue(keyPad.height);
    updateGeometryFields();
}

NKeyPadStruct NKeyPadEditor::getKeyPadStruct() const
{
    NKeyPadStruct k = m_keyPad;
    k.enabled = m_enabled->isChecked() ? 1 : 0;
    k.position = m_position->currentIndex();
    k.x = m_x->value();
    k.y = m_y->value();
    k.width = m_width->value();
    k.height = m_height->value();
    return k;
}

void NKeyPadEditor::updateGeometryFields()
{
    const bool custom = m_position->currentIndex() == CustomPosition;
    for (QSpinBox *box : {m_x, m_y, m_width, m_height})
        box->setEnabled(custom);
}
