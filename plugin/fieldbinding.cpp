#include "fieldbinding.h"

FieldBinding::FieldBinding(QWidget *field, const PropertyPath &path, const QMetaProperty &property, int type,
                           QObject *parent)
    : QObject(parent)
    , m_field(field)
    , m_path(path)
    , m_property(property)
    , m_type(type)
{
}

void FieldBinding::load(const QVariant &whole)
{
    if (!m_field)
        return;
    m_loading = true;
    show(whole);
    m_loading = false;
}

void FieldBinding::reportEdit()
{
    if (!m_loading)
        Q_EMIT edited(this);
}
