#ifndef GRIDSPLITTER_P_H
#define GRIDSPLITTER_P_H

#include "controllerbinding.h"
#include "gridsplitter.h"
#include "gridgeometry.h"

#include <QColor>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QStringList>

#include <optional>

class AdvSplitter;

// The state of a grid splitter: its lines, its cells and the settings they are built from, and the
// steps that build, lay out and drag them.
class GridSplitter::Private : public QObject
{
public:
    explicit Private(GridSplitter *q);
    ~Private() override;

    static constexpr int MaxCount = 100;

    GridSplitter *const q;
    ControllerBinding binding;
    QList<AdvSplitter *> vLines; // between columns, left to right
    QList<AdvSplitter *> hLines; // between rows, top to bottom
    QList<QPointer<QWidget>> cells; // row-major
    bool initializing = true;
    int spacing = 0;
    int splittersSpacing = 16;
    int minimumWidgetSize = 30;
    int centerPartWidth = 30;
    int rowCount = 3;
    int columnCount = 4;
    QStringList lineHPosText; // positions of the lines between columns, as stored
    QStringList lineVPosText; // positions of the lines between rows, as stored
    int gridLineWidth = 1;
    QColor gridLineColor = Qt::black;
    QColor backgroundColor;
    QColor borderColor = Qt::black;
    Qt::PenStyle gridLineStyle = Qt::SolidLine;
    bool sameWidth = false;
    bool sameHeight = false;

    // The Designer form window, or null at run time.
    QWidget *formWindow() const;
    GridGeometry geometry() const;

    // The first build of lines and cells, from the counts and the stored positions.
    void build();
    // Lines and cells again after a count change; cells that the grid no longer has are kept
    // hidden with what was put on them, and come back when it grows again.
    void setCount(Qt::Orientation orientation, int count);
    void setSame(Qt::Orientation orientation, bool on);
    // Puts the lines where their positions say and the cells between them.
    void layOut();
    // Cells that went missing (taken away in Designer) are made again.
    void repairCells();

    // Designer drag: moves line so that its leading edge is as near to edge (widget coordinates)
    // as the neighbours and the grid's edges allow, and the cells beside it with it.
    void dragLine(AdvSplitter *line, int edge);
    // Records a finished drag, from the positions at the press, as one undo step.
    void commitDrag(const AdvSplitter *line, const QStringList &before);
    void selectInForm();

    QStringList positionsText(Qt::Orientation orientation) const;
    // A stored position list for this many lines, or nothing (the lines are then spread evenly).
    std::optional<QList<double>> storedPositions(const QStringList &texts, int lines, const char *property) const;
    void applyStoredPositions(Qt::Orientation orientation);
    void applyBorderStyle();

    QWidget *cellAt(int row, int column) const;
    QWidget *findCell(const QString &tag) const;

private:
    QList<AdvSplitter *> &linesOf(Qt::Orientation orientation) { return orientation == Qt::Horizontal ? vLines : hLines; }
    void resizeLines(Qt::Orientation orientation, int count);
    void spreadEvenly(Qt::Orientation orientation);
    void syncCells();
    QList<QRect> lineRects(Qt::Orientation orientation);
    void placeCell(int row, int column, const GridGeometry &grid, const QList<QRect> &vertical,
                   const QList<QRect> &horizontal);
};

#endif
