#ifndef FORMWIDGET_H
#define FORMWIDGET_H

#include <QList>
#include <QString>
#include <QStringList>

// One <property> of a widget as the form writes it: the element holding the value ("number",
// "enum", "cstring", "stringlist", ...), its text or the entries of a string list, and the line
// of the value, which is where a panel builder would correct it.
struct FormProperty
{
    QString name;
    QString type;
    QString text;
    QStringList entries;
    QList<qint64> entryLines;
    qint64 line = 0;

    qint64 entryLine(int index) const { return entryLines.value(index, line); }
};

// A table cell the form lists itself (<item row column>), with its what's-this text.
struct FormCell
{
    int row = -1;
    int column = -1;
    QString whatsThis;
    qint64 line = 0;
};

// A <widget> of a form with what the checks look at.
struct FormWidget
{
    QString className;
    QString name;
    qint64 line = 0;
    bool isRoot = false;
    QList<FormProperty> properties;
    QList<FormCell> cells;

    // The value the loader applies last, or null.
    const FormProperty *property(const QString &propertyName) const
    {
        for (auto it = properties.crbegin(); it != properties.crend(); ++it) {
            if (it->name == propertyName)
                return &*it;
        }
        return nullptr;
    }
};

#endif
