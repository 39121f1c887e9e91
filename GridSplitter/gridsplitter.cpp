#include "gridsplitter.h"

#include "advsplitter.h"
#include "backgroundfill.h"
#include "containedcontrols.h"
#include "designerhost.h"
#include "enumvalue.h"
#include "gridsplitter_p.h"
#include "norvointerface_z3.h"
#include "widgetfactory.h"

#include <QEvent>
#include <QTimer>

#include <cstring>

HMI_REGISTER_WIDGET(GridSplitter)

GridSplitter::GridSplitter(QWidget *parent)
    : QFrame(parent)
    , d(new Private(this))
{
    NORVOInterface_Z3::setWidgetDefaultFont(this);
    setFrameShape(QFrame::Box);
    if (DesignerHost *host = DesignerHost::instance(); host && d->formWindow())
        connect(host, &DesignerHost::propertyChanged, this, &GridSplitter::slotPropertyChanged);
}

GridSplitter::~GridSplitter()
{
    // The lines are children and go with the widget; they must not outlive the state they paint.
    qDeleteAll(d->vLines);
    qDeleteAll(d->hLines);
    d->vLines.clear();
    d->hLines.clear();
}

QStringList GridSplitter::lineVPos() const { return d->positionsText(Qt::Vertical); }

void GridSplitter::setLineVPos(const QStringList &positions)
{
    d->lineVPosText = positions;
    if (!d->initializing && !d->sameHeight) {
        d->applyStoredPositions(Qt::Vertical);
        d->layOut();
    }
}

QStringList GridSplitter::lineHPos() const { return d->positionsText(Qt::Horizontal); }

void GridSplitter::setLineHPos(const QStringList &positions)
{
    d->lineHPosText = positions;
    if (!d->initializing && !d->sameWidth) {
        d->applyStoredPositions(Qt::Horizontal);
        d->layOut();
    }
}

int GridSplitter::rowCount() const { return d->rowCount; }
void GridSplitter::setRowCount(int count) { d->setCount(Qt::Vertical, count); }
int GridSplitter::columnCount() const { return d->columnCount; }
void GridSplitter::setColumnCount(int count) { d->setCount(Qt::Horizontal, count); }
int GridSplitter::gridLineWidth() const { return d->gridLineWidth; }

void GridSplitter::setGridLineWidth(int width)
{
    d->gridLineWidth = qBound(0, width, 100);
    d->layOut();
}

QColor GridSplitter::gridLineColor() const { return d->gridLineColor; }

void GridSplitter::setGridLineColor(const QColor &color)
{
    d->gridLineColor = color;
    update();
    for (AdvSplitter *line : d->vLines + d->hLines)
        line->update();
}

Qt::PenStyle GridSplitter::gridLineStyle() const { return d->gridLineStyle; }

void GridSplitter::setGridLineStyle(const Qt::PenStyle &style)
{
    // Qt::PenStyle holds 0 ... 15 only, and a form may bring any int: the value is looked at as the int it
    // is (reading it as the enum would be undefined). Custom dashes need a pattern a form cannot give.
    int value = 0;
    static_assert(sizeof value == sizeof style, "Qt::PenStyle is an int");
    std::memcpy(&value, &style, sizeof value);
    if (value < Qt::NoPen || value > Qt::DashDotDotLine) {
        warnUnknownEnumValue(this, "gridLineStyle", value);
        return;
    }
    d->gridLineStyle = Qt::PenStyle(value);
    for (AdvSplitter *line : d->vLines + d->hLines)
        line->update();
}

bool GridSplitter::sameWidth() const { return d->sameWidth; }
void GridSplitter::setSameWidth(bool on) { d->setSame(Qt::Horizontal, on); }
bool GridSplitter::sameHeight() const { return d->sameHeight; }
void GridSplitter::setSameHeight(bool on) { d->setSame(Qt::Vertical, on); }
QColor GridSplitter::borderColor() const { return d->borderColor; }

void GridSplitter::setBorderColor(const QColor &color)
{
    if (color != d->borderColor && frameShape() == QFrame::Box && frameShadow() == QFrame::Plain) {
        d->borderColor = color;
        d->applyBorderStyle();
    }
    d->borderColor = color;
}

QColor GridSplitter::backgroundColor() const { return d->backgroundColor; }

void GridSplitter::setBackgroundColor(const QColor &color)
{
    d->backgroundColor = color;
    BackgroundFill::apply(this, color);
}

int GridSplitter::spacing() const { return d->spacing; }

void GridSplitter::setSpacing(int spacing)
{
    d->spacing = qMax(0, spacing);
    d->layOut();
}

int GridSplitter::splittersSpacing() const { return d->splittersSpacing; }
void GridSplitter::setSplittersSpacing(int spacing) { d->splittersSpacing = qMax(0, spacing); }
int GridSplitter::centerPartWidth() const { return d->centerPartWidth; }
void GridSplitter::setCenterPartWidth(int width) { d->centerPartWidth = qMax(0, width); }
int GridSplitter::minimumWidgetSize() const { return d->minimumWidgetSize; }
void GridSplitter::setMinimumWidgetSize(int size) { d->minimumWidgetSize = qMax(0, size); }

QString GridSplitter::cellName(int row, int column)
{
    return QStringLiteral("cell%1%2").arg(row, 2, 10, QLatin1Char('0')).arg(column, 2, 10, QLatin1Char('0'));
}

QWidget *GridSplitter::cell(int row, int column) const { return d->cellAt(row, column); }

AdvSplitter *GridSplitter::line(Qt::Orientation orientation, int index) const
{
    const QList<AdvSplitter *> &lines = orientation == Qt::Horizontal ? d->vLines : d->hLines;
    return index >= 0 && index < lines.size() ? lines.at(index) : nullptr;
}

QList<QWidget *> GridSplitter::cellWidgets() const
{
    QList<QWidget *> widgets;
    for (const QPointer<QWidget> &cell : d->cells) {
        if (cell)
            widgets << cell;
    }
    return widgets;
}

void GridSplitter::updateLanguage(int index)
{
    ContainedControls::updateLanguage(cellWidgets(), index);
}

void GridSplitter::setQeltAppAndFormPtr(void *app, void *form)
{
    d->binding.attach(app, form);
    // Cells of a grid not built yet are still plain children, known by their tags.
    QList<QWidget *> holders = cellWidgets();
    if (d->initializing) {
        for (QWidget *child : findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly)) {
            if (child->statusTip().startsWith(QLatin1String("cell")))
                holders << child;
        }
    }
    ContainedControls::attach(holders, app, form);
}

void GridSplitter::slotPropertyChanged(const QString &name, const QVariant &)
{
    DesignerHost *host = DesignerHost::instance();
    if (!host || host->propertyEditorObject() != this)
        return;
    if (name == QLatin1String("frameShape") || name == QLatin1String("frameShadow")) {
        // The editor's signal may come before the frame has its new value.
        QTimer::singleShot(0, this, [this] { d->applyBorderStyle(); });
    }
}

bool GridSplitter::event(QEvent *event)
{
    const bool handled = QFrame::event(event);
    switch (event->type()) {
    case QEvent::Polish:
        if (d->initializing) {
            d->binding.attachToForm();
            d->build();
        }
        break;
    case QEvent::ContentsRectChange:
        d->layOut();
        break;
    default:
        break;
    }
    return handled;
}

void GridSplitter::resizeEvent(QResizeEvent *event)
{
    QFrame::resizeEvent(event);
    if (d->initializing)
        return;
    d->repairCells();
    d->layOut();
}
