#include "keypaddescription.h"

#include <QApplication>
#include <QRect>
#include <QVariant>

KeypadDescription::Scope::Scope(QWidget *widget, const QString &name, const QString &unit)
    : m_widget(widget)
{
    if (!m_widget)
        return;
    m_widget->setProperty(NameProperty, name);
    m_widget->setProperty(UnitProperty, unit);
}

KeypadDescription::Scope::~Scope()
{
    if (!m_widget)
        return;
    m_widget->setProperty(NameProperty, QVariant());
    m_widget->setProperty(UnitProperty, QVariant());
}

KeypadDescription KeypadDescription::at(const QRect &itemRect)
{
    const auto describing = [](QWidget *w) {
        while (w && !w->property(NameProperty).isValid())
            w = w->parentWidget();
        return w;
    };
    QWidget *widget = itemRect.isValid() ? describing(QApplication::widgetAt(itemRect.center())) : nullptr;
    if (!widget)
        widget = describing(QApplication::focusWidget());
    if (!widget)
        return {};
    return {widget->property(NameProperty).toString(), widget->property(UnitProperty).toString()};
}
