#include "propertypath.h"

#include <QFont>
#include <QPoint>
#include <QRect>
#include <QRegularExpression>
#include <QSize>

PropertyPath PropertyPath::parse(const QString &text)
{
    static const QRegularExpression pattern(
        QStringLiteral("^([A-Za-z_][A-Za-z0-9_]*)(?:\\.(?:([A-Za-z_][A-Za-z0-9_]*)|(-?[0-9]+)))?$"));
    const QRegularExpressionMatch match = pattern.match(text.trimmed());
    PropertyPath path;
    if (!match.hasMatch())
        return path;
    path.m_name = match.captured(1).toLatin1();
    if (!match.captured(2).isEmpty()) {
        path.m_form = Member;
        path.m_member = match.captured(2);
    } else if (!match.captured(3).isEmpty()) {
        bool ok = false;
        path.m_number = match.captured(3).toInt(&ok);
        path.m_form = ok ? Number : Invalid;
    } else {
        path.m_form = Whole;
    }
    return path;
}

int PropertyPath::partType(int wholeType) const
{
    if (m_form != Member)
        return wholeType;
    switch (wholeType) {
    case QMetaType::QRect:
        return QStringList{QStringLiteral("left"), QStringLiteral("x"), QStringLiteral("top"), QStringLiteral("y"),
                           QStringLiteral("width"), QStringLiteral("height")}.contains(m_member)
                   ? int(QMetaType::Int) : int(QMetaType::UnknownType);
    case QMetaType::QSize:
        return m_member == QLatin1String("width") || m_member == QLatin1String("height")
                   ? int(QMetaType::Int) : int(QMetaType::UnknownType);
    case QMetaType::QPoint:
        return m_member == QLatin1String("x") || m_member == QLatin1String("y")
                   ? int(QMetaType::Int) : int(QMetaType::UnknownType);
    case QMetaType::QFont:
        if (m_member == QLatin1String("family"))
            return QMetaType::QString;
        if (m_member == QLatin1String("pointSize"))
            return QMetaType::Int;
        if (QStringList{QStringLiteral("bold"), QStringLiteral("italic"), QStringLiteral("underline"),
                        QStringLiteral("strikeOut")}.contains(m_member))
            return QMetaType::Bool;
        return QMetaType::UnknownType;
    default:
        return QMetaType::UnknownType;
    }
}

QVariant PropertyPath::read(const QVariant &whole) const
{
    if (m_form != Member)
        return whole;
    const QString &m = m_member;
    switch (whole.userType()) {
    case QMetaType::QRect: {
        const QRect r = whole.toRect();
        if (m == QLatin1String("left") || m == QLatin1String("x"))
            return r.x();
        if (m == QLatin1String("top") || m == QLatin1String("y"))
            return r.y();
        if (m == QLatin1String("width"))
            return r.width();
        if (m == QLatin1String("height"))
            return r.height();
        break;
    }
    case QMetaType::QSize: {
        const QSize s = whole.toSize();
        if (m == QLatin1String("width"))
            return s.width();
        if (m == QLatin1String("height"))
            return s.height();
        break;
    }
    case QMetaType::QPoint: {
        const QPoint p = whole.toPoint();
        if (m == QLatin1String("x"))
            return p.x();
        if (m == QLatin1String("y"))
            return p.y();
        break;
    }
    case QMetaType::QFont: {
        const QFont f = whole.value<QFont>();
        if (m == QLatin1String("family"))
            return f.family();
        if (m == QLatin1String("pointSize"))
            return f.pointSize();
        if (m == QLatin1String("bold"))
            return f.bold();
        if (m == QLatin1String("italic"))
            return f.italic();
        if (m == QLatin1String("underline"))
            return f.underline();
        if (m == QLatin1String("strikeOut"))
            return f.strikeOut();
        break;
    }
    default:
        break;
    }
    return QVariant();
}

QVariant PropertyPath::write(const QVariant &whole, const QVariant &part) const
{
    if (m_form != Member)
        return part;
    if (partType(whole.userType()) == QMetaType::UnknownType)
        return QVariant();
    const QString &m = m_member;
    switch (whole.userType()) {
    case QMetaType::QRect: {
        QRect r = whole.toRect();
        const int v = part.toInt();
        // Left and top move the rectangle: the other members keep their values.
        if (m == QLatin1String("left") || m == QLatin1String("x"))
            r.moveLeft(v);
        else if (m == QLatin1String("top") || m == QLatin1String("y"))
            r.moveTop(v);
        else if (m == QLatin1String("width"))
            r.setWidth(v);
        else
            r.setHeight(v);
        return r;
    }
    case QMetaType::QSize: {
        QSize s = whole.toSize();
        if (m == QLatin1String("width"))
            s.setWidth(part.toInt());
        else
            s.setHeight(part.toInt());
        return s;
    }
    case QMetaType::QPoint: {
        QPoint p = whole.toPoint();
        if (m == QLatin1String("x"))
            p.setX(part.toInt());
        else
            p.setY(part.toInt());
        return p;
    }
    case QMetaType::QFont: {
        QFont f = whole.value<QFont>();
        if (m == QLatin1String("family"))
            f.setFamily(part.toString());
        else if (m == QLatin1String("pointSize")) {
            if (part.toInt() > 0)
                f.setPointSize(part.toInt());
        } else if (m == QLatin1String("bold"))
            f.setBold(part.toBool());
        else if (m == QLatin1String("italic"))
            f.setItalic(part.toBool());
        else if (m == QLatin1String("underline"))
            f.setUnderline(part.toBool());
        else
            f.setStrikeOut(part.toBool());
        return f;
    }
    default:
        return QVariant();
    }
}
