#ifndef FORMDOCUMENT_H
#define FORMDOCUMENT_H

#include "formwidget.h"

#include <QList>
#include <QString>

class QIODevice;

// A .ui form read as XML, widget by widget with the line of every element, so that a check can
// point at the line to correct. Reads without recursion, and not below the depth the panel takes: a
// file of any length costs memory in proportion to it, and malformed XML ends the reading with its line.
class FormDocument
{
public:
    // False when the device holds no readable form: not XML, XML that breaks off or goes wrong,
    // not a <ui> document, or a <ui> without a widget. problem() says why (with the line).
    bool read(QIODevice *device);
    QString problem() const { return m_problem; }
    // Every <widget> in document order; the form's own widget comes first.
    const QList<FormWidget> &widgets() const { return m_widgets; }
    // The line of the first element nested deeper than the panel takes (FormLimits), or 0; what lies
    // deeper is not read. tooDeepWidget() is the index of the widget holding it, or -1.
    qint64 tooDeepLine() const { return m_tooDeepLine; }
    int tooDeepWidget() const { return m_tooDeepWidget; }

private:
    QList<FormWidget> m_widgets;
    QString m_problem;
    qint64 m_tooDeepLine = 0;
    int m_tooDeepWidget = -1;
};

#endif
