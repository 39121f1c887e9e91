#include "tabledeclaration.h"

#include "formtablereader.h"

#include <QXmlStreamReader>
#include <QXmlStreamWriter>

namespace {

const QString List = QStringLiteral("customwidgets");
const QString Entry = QStringLiteral("customwidget");

void startLine(QXmlStreamWriter *out, int level, const QString &unit)
{
    out->writeCharacters(QLatin1Char('\n') + unit.repeated(level));
}

// Whether the <customwidget> the reader is in names the table's class; leaves it at its end.
bool namesTable(QXmlStreamReader *xml)
{
    bool names = false;
    while (xml->readNextStartElement()) {
        if (xml->name() == QLatin1String("class"))
            names = names || xml->readElementText(QXmlStreamReader::SkipChildElements) == FormTableReader::tableClass();
        else
            xml->skipCurrentElement();
    }
    return names;
}

} // namespace

TableDeclaration::Found TableDeclaration::find(const QByteArray &form)
{
    QXmlStreamReader xml(form);
    Found found = Found::Nothing;
    if (!xml.readNextStartElement())
        return found;
    // uic reads the list only among the root's children.
    while (xml.readNextStartElement()) {
        if (xml.name() != List) {
            xml.skipCurrentElement();
            continue;
        }
        found = Found::ListOnly;
        while (xml.readNextStartElement()) {
            if (xml.name() != Entry)
                xml.skipCurrentElement();
            else if (namesTable(&xml))
                return Found::Entry;
        }
    }
    return found;
}

bool TableDeclaration::follows(QStringView rootChild)
{
    for (const char *name : {"tabstops", "images", "includes", "resources", "connections", "designerdata", "slots",
                             "buttongroups"}) {
        if (rootChild == QLatin1String(name))
            return true;
    }
    return false;
}

void TableDeclaration::writeEntry(QXmlStreamWriter *out, int level, const QString &unit)
{
    startLine(out, level, unit);
    out->writeStartElement(Entry);
    const std::pair<QString, QString> children[] = {{QStringLiteral("class"), FormTableReader::tableClass()},
                                                    {QStringLiteral("extends"), QStringLiteral("QTableWidget")},
                                                    {QStringLiteral("header"), QStringLiteral("tablewidget.h")}};
    for (const auto &[element, text] : children) {
        startLine(out, level + 1, unit);
        out->writeTextElement(element, text);
    }
    startLine(out, level, unit);
    out->writeEndElement();
}

void TableDeclaration::writeList(QXmlStreamWriter *out, int level, const QString &unit)
{
    startLine(out, level, unit);
    out->writeStartElement(List);
    writeEntry(out, level + 1, unit);
    startLine(out, level, unit);
    out->writeEndElement();
}
