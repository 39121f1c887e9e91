#include "inputwidget.h"

#include <QToolTip>

InputWidget::InputWidget(QWidget *parent)
    : QLineEdit(parent)
{
    // Keys reach it from the widget being edited, never from the keyboard focus.
    setFocusPolicy(Qt::NoFocus);
}

void InputWidget::showToolTip(const QString &text)
{
    setToolTip(text);
    if (isVisible())
        QToolTip::showText(mapToGlobal(QPoint(0, height())), text, this);
}
