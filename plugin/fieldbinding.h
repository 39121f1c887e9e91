#ifndef FIELDBINDING_H
#define FIELDBINDING_H

#include "propertypath.h"

#include <QMetaProperty>
#include <QObject>
#include <QPointer>
#include <QWidget>

// One editor field bound to a property path of the edited widget. It shows its part of the
// property's value and folds what the user enters back into a whole property value.
class FieldBinding : public QObject
{
    Q_OBJECT
public:
    // property: the widget's meta property (invalid for a dynamic property); type: the property's
    // value type, enums and flags as int.
    FieldBinding(QWidget *field, const PropertyPath &path, const QMetaProperty &property, int type,
                 QObject *parent = nullptr);

    QWidget *field() const { return m_field; }
    const PropertyPath &path() const { return m_path; }
    const QMetaProperty &property() const { return m_property; }
    int propertyType() const { return m_type; }

    // Shows the field's part of whole without reporting an edit.
    void load(const QVariant &whole);
    // whole with the field's part replaced by what the field shows.
    virtual QVariant store(const QVariant &whole) const = 0;

Q_SIGNALS:
    void edited(FieldBinding *binding);

protected:
    virtual void show(const QVariant &whole) = 0;
    // Connected to the field's change signals: reports user edits, not loads.
    void reportEdit();

private:
    QPointer<QWidget> m_field;
    PropertyPath m_path;
    QMetaProperty m_property;
    int m_type;
    bool m_loading = false;
};

#endif
