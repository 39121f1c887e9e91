#include "statustipdisplay.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTextEdit>
#include <QVBoxLayout>

StatusTipDisplay::StatusTipDisplay(QWidget *dialog, QWidget *area)
    : QObject(dialog)
    , m_dialog(dialog)
    , m_area(area)
{
    if (qobject_cast<QLabel *>(area) || qobject_cast<QLineEdit *>(area) || qobject_cast<QTextEdit *>(area)
        || qobject_cast<QPlainTextEdit *>(area)) {
        m_label = area;
    } else if (area) {
        auto *label = new QLabel(area);
        label->setObjectName(QStringLiteral("descriptionLabel"));
        label->setWordWrap(true);
        label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
        if (!area->layout())
            new QVBoxLayout(area);
        area->layout()->addWidget(label);
        m_label = label;
    }
    if (auto *line = qobject_cast<QLineEdit *>(m_label.data()))
        line->setReadOnly(true);
    connect(qApp, &QApplication::focusChanged, this, &StatusTipDisplay::focusChanged);
}

QString StatusTipDisplay::statusTipOf(QWidget *widget, const QWidget *dialog)
{
    for (QWidget *w = widget; w && w != dialog; w = w->parentWidget()) {
        if (!w->statusTip().isEmpty())
            return w->statusTip();
    }
    return QString();
}

void StatusTipDisplay::focusChanged(QWidget *, QWidget *now)
{
    if (!now || !m_dialog || !m_dialog->isAncestorOf(now) || now == m_label)
        return;
    showTip(statusTipOf(now, m_dialog));
}

void StatusTipDisplay::showTip(const QString &tip)
{
    m_shown = tip;
    QWidget *target = m_label;
    if (auto *label = qobject_cast<QLabel *>(target))
        label->setText(tip);
    else if (auto *line = qobject_cast<QLineEdit *>(target))
        line->setText(tip);
    else if (auto *text = qobject_cast<QTextEdit *>(target))
        text->setPlainText(tip);
    else if (auto *plain = qobject_cast<QPlainTextEdit *>(target))
        plain->setPlainText(tip);
}
