#ifndef VALUEFIELDBINDING_H
#define VALUEFIELDBINDING_H

#include "fieldbinding.h"

// A field that holds a value of its own: line edit (text, numbers, shortcuts), spin box, slider,
// combo box (enum keys, font families, texts), check box, plain-text or text edit (string lists
// one per line), key sequence edit.
class ValueFieldBinding : public FieldBinding
{
    Q_OBJECT
public:
    ValueFieldBinding(QWidget *field, const PropertyPath &path, const QMetaProperty &property, int type,
                      QObject *parent = nullptr);

    static bool supports(QWidget *field);
    QVariant store(const QVariant &whole) const override;

protected:
    void show(const QVariant &whole) override;

private:
    // The value the field shows, in the field's own type.
    QVariant fieldValue() const;
    void fillEnumKeys();
    void widenDefaultRange(const QVariant &part);
    bool isEnumWhole() const;
};

#endif
