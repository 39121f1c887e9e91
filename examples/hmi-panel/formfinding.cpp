#include "formfinding.h"

QString FormFinding::toString() const
{
    return QStringLiteral("%1:%2: widget \"%3\" (%4): %5").arg(file).arg(line).arg(objectName, className, message);
}
