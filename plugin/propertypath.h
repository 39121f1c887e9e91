#ifndef PROPERTYPATH_H
#define PROPERTYPATH_H

#include <QByteArray>
#include <QString>
#include <QVariant>

// The widget property an editor field edits, written as the field's what's-this:
//   "name"         the whole property;
//   "name.member"  one member of a rectangle, size, point or font ("geometry.width", "font.bold");
//   "name.number"  one value of an enum property, or one flag of a flags property ("action.2").
class PropertyPath
{
public:
    enum Form { Invalid, Whole, Member, Number };

    // Invalid for anything else, such as a what's-this that is a sentence.
    static PropertyPath parse(const QString &text);

    Form form() const { return m_form; }
    bool isValid() const { return m_form != Invalid; }
    const QByteArray &name() const { return m_name; }
    const QString &member() const { return m_member; }
    int number() const { return m_number; }

    // The edited part of a whole property value: the member, or the whole value.
    QVariant read(const QVariant &whole) const;
    // whole with the edited part replaced; invalid when the member does not belong to its type.
    QVariant write(const QVariant &whole, const QVariant &part) const;
    // The type id of the edited part for a property of type wholeType (UnknownType if none).
    int partType(int wholeType) const;

private:
    Form m_form = Invalid;
    QByteArray m_name;
    QString m_member;
    int m_number = 0;
};

#endif
