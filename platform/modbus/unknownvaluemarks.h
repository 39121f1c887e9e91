#ifndef UNKNOWNVALUEMARKS_H
#define UNKNOWNVALUEMARKS_H

#include <QHash>
#include <QObject>
#include <QPointer>
#include <QString>

class QWidget;

// The look of a widget whose value the panel does not know (the controller link is down, or the
// device refused the read): the same for every widget, laid over it by the application so that no
// widget's painting has to know about links — a grey veil with diagonal hatching, and a tool tip
// saying why. Mouse presses pass through: a refused write says itself why it was refused.
class UnknownValueMarks : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;
    ~UnknownValueMarks() override;

    void mark(QWidget *widget, const QString &why);
    void unmark(QWidget *widget);
    void unmarkAll();
    bool isMarked(const QWidget *widget) const;
    int count() const { return int(m_veils.size()); }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QHash<const QWidget *, QPointer<QWidget>> m_veils;
};

#endif
