#ifndef FORMWIDGET_H
#define FORMWIDGET_H

#include <QList>
#include <QString>
#include <QStringList>

// One <property> of a widget as the form writes it: the element holding the value ("number",
// "enum", "cstring", "stringlist", "rect", ...), its text or the entries of a compound value (the
// strings of a list, a rectangle's x, y, width and height, with their element names), and the line
// of the value, which is where a panel builder would correct it.
struct FormProperty
{
    QString name;
    QString type;
    QString text;
    QStringList entries;
    QStringList entryNames;
    QList<qint64> entryLines;
    qint64 line = 0;

    qint64 entryLine(int index) const { return entryLines.value(index, line); }
    // The text of the last entry of that element name, or empty.
    QString entry(const QString &elementName) const
    {
        const int index = int(entryNames.lastIndexOf(elementName));
        return index < 0 ? QString() : entries.at(index);
    }
};

// A table cell the form lists itself (<item row column>), with its what's-this text.
struct FormCell
{
    int row = -1;
    int column = -1;
    QString whatsThis;
    QString flags; // the item's "flags" set, when the form gives one
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
