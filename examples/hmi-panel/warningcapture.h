#ifndef WARNINGCAPTURE_H
#define WARNINGCAPTURE_H

#include <QStringList>
#include <QtGlobal>

// Collects the warnings the widgets print while it lives instead of printing them: the checker
// reports them at the line of the property that caused them. Not nestable, one thread.
class WarningCapture
{
public:
    WarningCapture();
    ~WarningCapture();
    WarningCapture(const WarningCapture &) = delete;
    WarningCapture &operator=(const WarningCapture &) = delete;

    QStringList take();

private:
    QtMessageHandler m_previous;
};

#endif
