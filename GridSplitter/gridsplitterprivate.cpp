#include "gridsplitter_p.h"

#include "advsplitter.h"
#include "bufferwarning.h"
#include "designerchildren.h"
#include "designercommit.h"
#include "designerhost.h"
#include "gridsplitter.h"

namespace {
// Marks a cell the grid gave up on a count change: kept hidden, taken back when the grid grows.
const char *const RemovedCell = "_hmi_removedCell";
} // namespace

GridSplitter::Private::Private(GridSplitter *q)
    : q(q)
    , binding(q, nullptr)
    , backgroundColor(q->palette().color(QPalette::Window))
{
}

GridSplitter::Private::~Private() = default;

QWidget *GridSplitter::Private::formWindow() const
{
    return DesignerHost::formWindowOf(q);
}

GridGeometry GridSplitter::Private::geometry() const
{
    return GridGeometry(q->size(), q->frameWidth(), spacing, gridLineWidth);
}

void GridSplitter::Private::build()
{
    if (!initializing)
        return;
    resizeLines(Qt::Horizontal, columnCount);
    resizeLines(Qt::Vertical, rowCount);
    applyStoredPositions(Qt::Horizontal);
    applyStoredPositions(Qt::Vertical);
    setSame(Qt::Horizontal, sameWidth);
    setSame(Qt::Vertical, sameHeight);
    initializing = false;
    syncCells();
    layOut();
    if (DesignerHost *host = DesignerHost::instance(); host && formWindow()) {
        host->markPropertyChanged(q, QStringLiteral("lineHPos"));
        host->markPropertyChanged(q, QStringLiteral("lineVPos"));
    }
}

void GridSplitter::Private::applyStoredPositions(Qt::Orientation orientation)
{
    QList<AdvSplitter *> &lines = linesOf(orientation);
    const bool columns = orientation == Qt::Horizontal;
    const auto stored = storedPositions(columns ? lineHPosText : lineVPosText, int(lines.size()),
                                        columns ? "lineHPos" : "lineVPos");
    if (!stored) {
        spreadEvenly(orientation);
        return;
    }
    for (int i = 0; i < lines.size(); ++i)
        lines.at(i)->setPosition(stored->at(i));
}

std::optional<QList<double>> GridSplitter::Private::storedPositions(const QStringList &texts, int lines,
                                                                  const char *property) const
{
    if (texts.isEmpty() && lines > 0)
        return std::nullopt;
    if (texts.size() != lines) {
        warnUnreadableBuffer(q, property);
        return std::nullopt;
    }
    // Lines out of the grid or out of order would give cells of no or negative size.
    QList<double> positions;
    double previous = 0.0;
    for (const QString &text : texts) {
        bool ok = false;
        const double position = text.trimmed().toDouble(&ok);
        if (!ok || !(position >= previous && position <= 1.0)) {
            warnUnreadableBuffer(q, property);
            return std::nullopt;
        }
        positions << position;
        previous = position;
    }
    return positions;
}

void GridSplitter::Private::resizeLines(Qt::Orientation orientation, int count)
{
    QList<AdvSplitter *> &lines = linesOf(orientation);
    while (lines.size() > count - 1)
        delete lines.takeLast();
    while (lines.size() < count - 1) {
        auto *line = new AdvSplitter(orientation, this, q);
        line->setMovable(!(orientation == Qt::Horizontal ? sameWidth : sameHeight));
        lines << line;
    }
}

void GridSplitter::Private::spreadEvenly(Qt::Orientation orientation)
{
    const QList<AdvSplitter *> &lines = linesOf(orientation);
    const double count = double(lines.size() + 1);
    for (int i = 0; i < lines.size(); ++i)
        lines.at(i)->setPosition((i + 1.0) / count);
}

void GridSplitter::Private::setCount(Qt::Orientation orientation, int count)
{
    if (count < 1 || count > MaxCount)
        return;
    int &stored = orientation == Qt::Horizontal ? columnCount : rowCount;
    if (count == stored)
        return;
    const bool growing = count > stored;
    stored = count;
    if (initializing)
        return;
    resizeLines(orientation, count);
    // A grown grid starts even; a shrunk one keeps the lines it still has where they were.
    if (growing || (orientation == Qt::Horizontal ? sameWidth : sameHeight))
        spreadEvenly(orientation);
    syncCells();
    layOut();
}

void GridSplitter::Private::setSame(Qt::Orientation orientation, bool on)
{
    (orientation == Qt::Horizontal ? sameWidth : sameHeight) = on;
    if (on)
        spreadEvenly(orientation);
    for (AdvSplitter *line : linesOf(orientation))
        line->setMovable(!on);
    layOut();
}

void GridSplitter::Private::syncCells()
{
    QList<QPointer<QWidget>> next;
    bool changed = false;
    for (int row = 0; row < rowCount; ++row) {
        for (int column = 0; column < columnCount; ++column) {
            const QString tag = GridSplitter::cellName(row, column);
            QWidget *cell = findCell(tag);
            if (!cell) {
                cell = new QWidget(q);
                cell->setObjectName(tag);
                cell->setStatusTip(tag);
                DesignerChildren::adopt(q, cell);
                if (DesignerHost *host = DesignerHost::instance(); host && formWindow())
                    host->ensureUniqueName(formWindow(), cell);
                changed = true;
            } else if (cell->property(RemovedCell).toBool()) {
                cell->setProperty(RemovedCell, QVariant());
                DesignerChildren::readopt(q, cell);
                changed = true;
            }
            cell->show();
            next << cell;
        }
    }
    for (const QPointer<QWidget> &cell : std::as_const(cells)) {
        if (cell && cell->parentWidget() == q && !next.contains(cell)) {
            DesignerChildren::release(q, cell);
            cell->setProperty(RemovedCell, true);
            cell->hide();
            changed = true;
        }
    }
    cells = next;
    for (AdvSplitter *line : std::as_const(vLines))
        line->raise();
    for (AdvSplitter *line : std::as_const(hLines))
        line->raise();
    if (changed)
        DesignerChildren::refresh(q);
}

void GridSplitter::Private::repairCells()
{
    for (const QPointer<QWidget> &cell : std::as_const(cells)) {
        if (!cell || cell->parentWidget() != q) {
            syncCells();
            return;
        }
    }
}

void GridSplitter::Private::layOut()
{
    if (initializing)
        return;
    const GridGeometry grid = geometry();
    for (AdvSplitter *line : std::as_const(vLines)) {
        line->setGeometry(grid.verticalLine(line->position()));
        line->raise();
        line->show();
    }
    for (AdvSplitter *line : std::as_const(hLines)) {
        line->setGeometry(grid.horizontalLine(line->position()));
        line->raise();
        line->show();
    }
    const QList<QRect> vertical = lineRects(Qt::Horizontal);
    const QList<QRect> horizontal = lineRects(Qt::Vertical);
    for (int row = 0; row < rowCount; ++row) {
        for (int column = 0; column < columnCount; ++column)
            placeCell(row, column, grid, vertical, horizontal);
    }
}

QList<QRect> GridSplitter::Private::lineRects(Qt::Orientation orientation)
{
    QList<QRect> rects;
    for (const AdvSplitter *line : linesOf(orientation))
        rects << line->geometry();
    return rects;
}

void GridSplitter::Private::placeCell(int row, int column, const GridGeometry &grid, const QList<QRect> &vertical,
                                    const QList<QRect> &horizontal)
{
    if (QWidget *cell = cellAt(row, column))
        cell->setGeometry(grid.cell(row, column, vertical, horizontal));
}

void GridSplitter::Private::dragLine(AdvSplitter *line, int edge)
{
    const bool vertical = line->orientation() == Qt::Horizontal;
    const QList<AdvSplitter *> &lines = linesOf(line->orientation());
    const int index = int(lines.indexOf(line));
    if (index < 0 || !line->isMovable())
        return;
    const GridGeometry grid = geometry();
    const int extent = vertical ? grid.area().width() : grid.area().height();
    const auto trailing = [vertical](const AdvSplitter *l) { return vertical ? l->geometry().right() : l->geometry().bottom(); };
    const auto leading = [vertical](const AdvSplitter *l) { return vertical ? l->x() : l->y(); };
    const int previous = index > 0 ? trailing(lines.at(index - 1)) : -1;
    const int next = index + 1 < lines.size() ? leading(lines.at(index + 1)) : -1;
    const int offset = grid.clampDrag(edge - grid.offset(), extent, previous, next, splittersSpacing);
    line->setPosition(grid.positionAt(offset, extent));
    line->move(vertical ? QPoint(grid.offset() + offset, grid.offset()) : QPoint(grid.offset(), grid.offset() + offset));
    const QList<QRect> verticalRects = lineRects(Qt::Horizontal);
    const QList<QRect> horizontalRects = lineRects(Qt::Vertical);
    for (int other = 0; other < (vertical ? rowCount : columnCount); ++other) {
        for (int side = index; side <= index + 1; ++side) {
            if (vertical)
                placeCell(other, side, grid, verticalRects, horizontalRects);
            else
                placeCell(side, other, grid, verticalRects, horizontalRects);
        }
    }
    if (DesignerHost *host = DesignerHost::instance(); host && formWindow())
        host->markDirty(formWindow());
}

void GridSplitter::Private::commitDrag(const AdvSplitter *line, const QStringList &before)
{
    const QList<AdvSplitter *> &lines = linesOf(line->orientation());
    QList<double> dragged;
    for (const AdvSplitter *l : lines)
        dragged << l->position();
    if (!DesignerCommit::recordChange(q, line->orientation() == Qt::Horizontal ? "lineHPos" : "lineVPos", before,
                                      GridSplitter::tr("Move line of '%1'").arg(q->objectName())))
        return;
    // The step puts the lines at their rounded texts; they stay where they were dragged, which reads
    // as the same texts.
    for (int i = 0; i < lines.size() && i < dragged.size(); ++i)
        lines.at(i)->setPosition(dragged.at(i));
    layOut();
}

void GridSplitter::Private::selectInForm()
{
    DesignerHost *host = DesignerHost::instance();
    QWidget *fw = formWindow();
    if (!host || !fw)
        return;
    host->clearSelection(fw);
    host->selectWidget(fw, q, true);
}

QStringList GridSplitter::Private::positionsText(Qt::Orientation orientation) const
{
    const bool columns = orientation == Qt::Horizontal;
    if (initializing)
        return columns ? lineHPosText : lineVPosText;
    QStringList texts;
    for (const AdvSplitter *line : columns ? vLines : hLines)
        texts << QString::number(line->position(), 'g', 6);
    return texts;
}

void GridSplitter::Private::applyBorderStyle()
{
    if (q->frameShape() == QFrame::Box && q->frameShadow() == QFrame::Plain) {
        q->setStyleSheet(QStringLiteral("GridSplitter{ border: %1px solid rgb(%2, %3, %4);}")
                             .arg(q->lineWidth())
                             .arg(borderColor.red())
                             .arg(borderColor.green())
                             .arg(borderColor.blue()));
    } else {
        q->setStyleSheet(QString());
    }
}

QWidget *GridSplitter::Private::cellAt(int row, int column) const
{
    if (row < 0 || column < 0 || row >= rowCount || column >= columnCount)
        return nullptr;
    const int index = row * columnCount + column;
    return index < cells.size() ? cells.at(index).data() : nullptr;
}

QWidget *GridSplitter::Private::findCell(const QString &tag) const
{
    for (QWidget *child : q->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly)) {
        if (child->statusTip() == tag)
            return child;
    }
    return nullptr;
}
