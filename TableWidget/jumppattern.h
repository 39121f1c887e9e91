#ifndef JUMPPATTERN_H
#define JUMPPATTERN_H

#include "hmiwidgets_export.h"

#include <QString>

#include <optional>

// What the operator asks the jump dialog for, turned into the text the search looks for: the
// text itself for a row, a number or a cell text, or a pattern over the cells' binding texts for a
// controller variable, given field by field or in the short form (U100, R5.3, IB12, Z2, T1).
class HMIWIDGETS_EXPORT JumpPattern
{
public:
    enum Method { Row = 0, Number = 1, Text = 2, Variable = 3, ShortVariable = 4 };
    static constexpr int ClassCount = 6; // User ... Com; the entries after them are bit types

    struct Input
    {
        int method = Row;
        QString text;       // rows, numbers, texts and the short form
        int classIndex = 0; // data classes, then bit types
        QString channel;
        QString address;
        QString bitIndex;
        QString com;
    };

    // None when the input cannot be searched for.
    static std::optional<QString> build(const Input &input);

    // The pattern of a value cell or (bitType >= 0) a bit cell; empty parts match any field.
    static QString valuePattern(const QString &channel, const QString &dataClass, const QString &address,
                                const QString &com);
    static QString bitPattern(const QString &channel, const QString &bitType, const QString &address,
                              const QString &bitIndex, const QString &com);

private:
    static std::optional<QString> fromFields(const Input &input);
    static std::optional<QString> fromShortForm(const QString &text);
};

#endif
