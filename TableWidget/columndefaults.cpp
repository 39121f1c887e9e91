#include "columndefaults.h"

#include <QStringList>
#include <QTableWidgetItem>

QColor ColumnDefaults::parseColor(const QString &text)
{
    const QStringList parts = text.split(QLatin1Char(','));
    if (parts.size() == 3)
        return QColor(parts.at(0).trimmed().toInt(), parts.at(1).trimmed().toInt(), parts.at(2).trimmed().toInt(), 255);
    QColor color;
#if QT_VERSION >= QT_VERSION_CHECK(6, 4, 0)
    color = QColor::fromString(text);
#else
    color.setNamedColor(text);
#endif
    return color;
}

void ColumnDefaults::apply(QTableWidgetItem *item, int column) const
{
    if (m_alignment.contains(column))
        item->setData(Qt::TextAlignmentRole, m_alignment.value(column));
    if (m_background.contains(column))
        item->setBackground(m_background.value(column));
    if (m_foreground.contains(column))
        item->setForeground(m_foreground.value(column));
    if (m_selectable.contains(column))
        item->setFlags(m_selectable.value(column) ? item->flags() | Qt::ItemIsSelectable
                                                  : item->flags() & ~Qt::ItemIsSelectable);
}
