#ifndef STATUSTIPDISPLAY_H
#define STATUSTIPDISPLAY_H

#include <QObject>
#include <QPointer>
#include <QWidget>

// Shows the status tip of the focused field of a dialog in its description area: a label, a line
// edit, a text edit, or any other widget (which then gets a label of its own).
class StatusTipDisplay : public QObject
{
    Q_OBJECT
public:
    StatusTipDisplay(QWidget *dialog, QWidget *area);

    // The status tip of widget or, for a part of a field (a spin box's line edit), of the field.
    static QString statusTipOf(QWidget *widget, const QWidget *dialog);
    void showTip(const QString &tip);
    QString shownTip() const { return m_shown; }

private:
    void focusChanged(QWidget *old, QWidget *now);

    QPointer<QWidget> m_dialog;
    QPointer<QWidget> m_area;
    QPointer<QWidget> m_label; // the widget written to
    QString m_shown;
};

#endif
