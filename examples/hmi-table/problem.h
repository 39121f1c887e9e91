#ifndef PROBLEM_H
#define PROBLEM_H

#include <QString>

// Why an input was refused: the message and, when known, the 1-based line it is about (0 when the
// whole input is meant).
struct Problem
{
    qint64 line = 0;
    QString message;
};

#endif
