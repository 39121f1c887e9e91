#include "unknownvaluemarks.h"

#include <QEvent>
#include <QPainter>
#include <QWidget>

namespace {

class Veil : public QWidget
{
public:
    explicit Veil(QWidget *over)
        : QWidget(over)
    {
        setObjectName(QStringLiteral("unknownValueVeil"));
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setGeometry(over->rect());
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.fillRect(rect(), QColor(128, 128, 128, 110));
        painter.fillRect(rect(), QBrush(QColor(64, 64, 64, 160), Qt::BDiagPattern));
    }
};

} // namespace

UnknownValueMarks::~UnknownValueMarks()
{
    unmarkAll();
}

void UnknownValueMarks::mark(QWidget *widget, const QString &why)
{
    if (!widget)
        return;
    QPointer<QWidget> &veil = m_veils[widget];
    if (!veil) {
        veil = new Veil(widget);
        widget->installEventFilter(this);
        connect(widget, &QObject::destroyed, this, [this, widget] { m_veils.remove(widget); });
    }
    // Marked again at every poll: only a change is worth a repaint.
    if (veil->isVisibleTo(widget) && veil->toolTip() == why)
        return;
    veil->setToolTip(why);
    veil->raise();
    veil->show();
}

void UnknownValueMarks::unmark(QWidget *widget)
{
    const auto it = m_veils.find(widget);
    if (it == m_veils.end())
        return;
    widget->removeEventFilter(this);
    QObject::disconnect(widget, nullptr, this, nullptr);
    delete it->data();
    m_veils.erase(it);
}

void UnknownValueMarks::unmarkAll()
{
    while (!m_veils.isEmpty())
        unmark(const_cast<QWidget *>(m_veils.begin().key()));
}

bool UnknownValueMarks::isMarked(const QWidget *widget) const
{
    return m_veils.contains(widget);
}

bool UnknownValueMarks::eventFilter(QObject *watched, QEvent *event)
{
    // Children a widget makes later (table cells' editors, pages) would cover the veil otherwise.
    if (event->type() == QEvent::Resize || event->type() == QEvent::ChildAdded) {
        if (QWidget *veil = m_veils.value(static_cast<QWidget *>(watched))) {
            veil->setGeometry(static_cast<QWidget *>(watched)->rect());
            veil->raise();
        }
    }
    return QObject::eventFilter(watched, event);
}
