#ifndef PREVIEWPLACER_H
#define PREVIEWPLACER_H

#include <QObject>
#include <QPointer>
#include <QWidget>

// Keeps the preview instance centred in the dialog's preview area, at its own size, as either
// changes. The preview becomes a child of the area and is deleted with it.
class PreviewPlacer : public QObject
{
    Q_OBJECT
public:
    PreviewPlacer(QWidget *area, QWidget *preview);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void place();

    QPointer<QWidget> m_area;
    QPointer<QWidget> m_preview;
};

#endif
