#ifndef GRIDSPLITTER_H
#define GRIDSPLITTER_H

#include "hmiwidgets_export.h"

#include <QColor>
#include <QFrame>
#include <QStringList>

#include <memory>

class AdvSplitter;

// A framed screen layout: rows × columns of cells divided by straight lines. Each cell is a plain
// child ("cell0102": row 1, column 2) on which the panel builder places controls. The lines sit at
// fractions of the grid's width and height, so the grid scales with the widget; in Designer they are
// dragged with the mouse, at run time they are fixed.
class HMIWIDGETS_EXPORT GridSplitter : public QFrame
{
    Q_OBJECT
    Q_PROPERTY(QStringList lineVPos READ lineVPos WRITE setLineVPos DESIGNABLE false)
    Q_PROPERTY(QStringList lineHPos READ lineHPos WRITE setLineHPos DESIGNABLE false)
    Q_PROPERTY(int rowCount READ rowCount WRITE setRowCount)
    Q_PROPERTY(int columnCount READ columnCount WRITE setColumnCount)
    Q_PROPERTY(int gridLineWidth READ gridLineWidth WRITE setGridLineWidth)
    Q_PROPERTY(QColor gridLineColor READ gridLineColor WRITE setGridLineColor)
    Q_PROPERTY(Qt::PenStyle gridLineStyle READ gridLineStyle WRITE setGridLineStyle)
    Q_PROPERTY(bool sameWidth READ sameWidth WRITE setSameWidth)
    Q_PROPERTY(bool sameHeight READ sameHeight WRITE setSameHeight)
    Q_PROPERTY(QColor borderColor READ borderColor WRITE setBorderColor)
    Q_PROPERTY(QColor backgroundColor READ backgroundColor WRITE setBackgroundColor)

public:
    Q_INVOKABLE explicit GridSplitter(QWidget *parent = nullptr);
    ~GridSplitter() override;

    // Positions of the lines between rows (lineVPos) and between columns (lineHPos), each the
    // fraction of the grid's height or width at the line's centre.
    QStringList lineVPos() const;
    void setLineVPos(const QStringList &positions);
    QStringList lineHPos() const;
    void setLineHPos(const QStringList &positions);
    int rowCount() const;
    void setRowCount(int count);
    int columnCount() const;
    void setColumnCount(int count);
    int gridLineWidth() const;
    void setGridLineWidth(int width);
    QColor gridLineColor() const;
    void setGridLineColor(const QColor &color);
    Qt::PenStyle gridLineStyle() const;
    void setGridLineStyle(const Qt::PenStyle &style); // by reference: see the definition
    bool sameWidth() const;
    void setSameWidth(bool on);
    bool sameHeight() const;
    void setSameHeight(bool on);
    QColor borderColor() const;
    void setBorderColor(const QColor &color);
    QColor backgroundColor() const;
    void setBackgroundColor(const QColor &color);

    int spacing() const;
    void setSpacing(int spacing);
    int splittersSpacing() const;
    void setSplittersSpacing(int spacing);
    int centerPartWidth() const;
    void setCenterPartWidth(int width);
    int minimumWidgetSize() const;
    void setMinimumWidgetSize(int size);

    // The name and tag of the cell in row, column.
    static QString cellName(int row, int column);
    // The cell in row, column once the grid is built, or null.
    QWidget *cell(int row, int column) const;
    // A line between columns (Qt::Horizontal, it moves sideways) or rows, or null.
    AdvSplitter *line(Qt::Orientation orientation, int index) const;

public Q_SLOTS:
    void updateLanguage(int index);
    void setQeltAppAndFormPtr(void *app, void *form);

private Q_SLOTS:
    void slotPropertyChanged(const QString &name, const QVariant &value);

protected:
    bool event(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    QList<QWidget *> cellWidgets() const;

    class Private;
    friend class AdvSplitter; // a line drags through the grid's state
    std::unique_ptr<Private> const d;
};

#endif
