#include "previewplacer.h"

#include <QEvent>

#include <algorithm>

PreviewPlacer::PreviewPlacer(QWidget *area, QWidget *preview)
    : QObject(area)
    , m_area(area)
    , m_preview(preview)
{
    const QSize size = preview->size();
    preview->setParent(area);
    preview->resize(size);
    preview->show();
    area->installEventFilter(this);
    preview->installEventFilter(this);
    place();
}

bool PreviewPlacer::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Resize && (watched == m_area || watched == m_preview))
        place();
    return QObject::eventFilter(watched, event);
}

void PreviewPlacer::place()
{
    if (!m_area || !m_preview)
        return;
    const QSize free = m_area->size() - m_preview->size();
    m_preview->move(std::max(0, free.width() / 2), std::max(0, free.height() / 2));
}
