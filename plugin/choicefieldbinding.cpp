#include "choicefieldbinding.h"

#include <QAbstractButton>
#include <QButtonGroup>

ChoiceFieldBinding::ChoiceFieldBinding(QAbstractButton *field, const PropertyPath &path,
                                       const QMetaProperty &property, QObject *parent)
    : FieldBinding(field, path, property, QMetaType::Int, parent)
    , m_groupMask(path.number())
{
    connect(field, &QAbstractButton::toggled, this, &ChoiceFieldBinding::reportEdit);
}

bool ChoiceFieldBinding::supports(QWidget *field)
{
    auto *button = qobject_cast<QAbstractButton *>(field);
    return button && button->isCheckable();
}

QAbstractButton *ChoiceFieldBinding::button() const
{
    return static_cast<QAbstractButton *>(field());
}

bool ChoiceFieldBinding::isFlags() const
{
    return property().isFlagType();
}

bool ChoiceFieldBinding::isExclusive() const
{
    QAbstractButton *b = button();
    return b->group() ? b->group()->exclusive() : b->autoExclusive();
}

void ChoiceFieldBinding::show(const QVariant &whole)
{
    const int value = whole.toInt();
    const int number = path().number();
    const bool checked = isFlags() ? number != 0 && (value & number) == number : value == number;
    QAbstractButton *b = button();
    if (checked || !b->isChecked() || !isExclusive()) {
        b->setChecked(checked);
        return;
    }
    // An exclusive button refuses to be unchecked while checked; this value matches none of them.
    QButtonGroup *group = b->group();
    const bool autoExclusive = b->autoExclusive();
    if (group)
        group->setExclusive(false);
    b->setAutoExclusive(false);
    b->setChecked(false);
    b->setAutoExclusive(autoExclusive);
    if (group)
        group->setExclusive(true);
}

QVariant ChoiceFieldBinding::store(const QVariant &whole) const
{
    const int value = whole.toInt();
    const int number = path().number();
    if (button()->isChecked())
        return isFlags() ? (value & ~m_groupMask) | number : number;
    // An exclusive button is unchecked by checking another one, which sets the value.
    if (isExclusive() || !isFlags())
        return value;
    return value & ~number;
}
