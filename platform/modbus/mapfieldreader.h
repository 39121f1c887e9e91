#ifndef MAPFIELDREADER_H
#define MAPFIELDREADER_H

#include <QJsonObject>
#include <QString>
#include <QStringList>

#include <initializer_list>

// Reads the fields of one object of a map file, checking each against what it may hold; every problem
// goes to the error list with the object named ("entry 3: ..."), and the field takes its default.
class MapFieldReader
{
public:
    MapFieldReader(const QJsonObject &object, const QString &name, QStringList *errors);

    void fail(const QString &what);
    bool ok() const { return m_errors->size() == m_before; }
    // A field whose name is not among these is refused: a misspelt one would silently take its default.
    void knownKeys(std::initializer_list<const char *> keys);
    int integer(const char *key, int fallback, int lowest, int highest);
    // The index of the field's text among names.
    int choice(const char *key, int fallback, std::initializer_list<const char *> names);
    QString text(const char *key);
    bool boolean(const char *key, bool fallback);

private:
    const QJsonObject &m_object;
    const QString m_name;
    QStringList *const m_errors;
    const int m_before;
};

#endif
