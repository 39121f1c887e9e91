#ifndef PANELPRESENCE_H
#define PANELPRESENCE_H

#include <QPointer>
#include <QString>
#include <QUndoCommand>

class MdiArea;
class SubWindow;

// A panel made or deleted through the MdiArea Editor, as one step of Designer's undo history. The
// panel object lives on while it is out of the form, so undo and redo hand the same panel, with
// what is on it, back and forth; the active panel is put back as it was on either side.
class PanelPresence : public QUndoCommand
{
public:
    // A new panel, made on the first redo.
    explicit PanelPresence(MdiArea *area);
    // The deletion of an existing panel.
    PanelPresence(MdiArea *area, SubWindow *panel);

    SubWindow *panel() const { return m_panel; }

    void redo() override;
    void undo() override;

private:
    void place(bool present);

    QPointer<MdiArea> m_area;
    QPointer<SubWindow> m_panel;
    const bool m_adds;
    QString m_activeBefore;
    QString m_activeAfter;
};

#endif
