#ifndef CHOICEFIELDBINDING_H
#define CHOICEFIELDBINDING_H

#include "fieldbinding.h"

class QAbstractButton;

// A radio button (or check box) standing for one value of an enum property, or one flag of a flags
// property ("name.number"). Checking it sets that value; for flags it sets that flag and clears the
// other flags of its group, the buttons of the same property that share its button group or parent.
class ChoiceFieldBinding : public FieldBinding
{
    Q_OBJECT
public:
    ChoiceFieldBinding(QAbstractButton *field, const PropertyPath &path, const QMetaProperty &property,
                       QObject *parent = nullptr);

    static bool supports(QWidget *field);
    // The flags of this button's group; only this button's own flag until told.
    void setGroupMask(int mask) { m_groupMask = mask; }
    QAbstractButton *button() const;
    bool isExclusive() const;

    QVariant store(const QVariant &whole) const override;

protected:
    void show(const QVariant &whole) override;

private:
    bool isFlags() const;
    int m_groupMask;
};

#endif
