#include "formtablereader.h"

#include <QXmlStreamReader>

namespace {

class Reader
{
public:
    Reader(const QByteArray &form, const QString &name, StoredTable *table)
        : m_xml(form), m_name(name), m_table(table)
    {
    }

    bool read(Problem *problem, QStringList *notes)
    {
        m_problem = problem;
        while (!m_xml.atEnd()) {
            if (m_xml.readNext() != QXmlStreamReader::StartElement || m_xml.name() != QLatin1String("widget"))
                continue;
            const QXmlStreamAttributes attributes = m_xml.attributes();
            const QString className = attributes.value(QLatin1String("class")).toString();
            const QString name = attributes.value(QLatin1String("name")).toString();
            if (className == FormTableReader::tableClass())
                m_tables << name;
            if (name != m_name)
                continue;
            if (++m_named > 1)
                return fail(QStringLiteral("a second widget named \"%1\"").arg(m_name));
            if (className != FormTableReader::tableClass())
                return fail(QStringLiteral("the widget \"%1\" is a %2, not a %3").arg(m_name, className, FormTableReader::tableClass()));
            if (!table())
                return false;
        }
        if (m_xml.hasError())
            return fail(QStringLiteral("not a well-formed form: %1").arg(m_xml.errorString()));
        if (m_named == 0) {
            const QString known = m_tables.isEmpty() ? QStringLiteral("none")
                                                     : QLatin1Char('"') + m_tables.join(QLatin1String("\", \"")) + QLatin1Char('"');
            *problem = {0, QStringLiteral("no %1 named \"%2\" (the form's tables: %3)").arg(FormTableReader::tableClass(), m_name, known)};
            return false;
        }
        if (notes && m_items > 0)
            *notes << QStringLiteral("the table also has Designer items (%1 <item> elements); they are not read, "
                                     "and writing the table removes them")
                          .arg(m_items);
        if (notes && m_columnExtras > 0)
            *notes << QStringLiteral("its headers have other properties than a text and a what's-this text (%1); "
                                     "they are not read, and writing the table removes them")
                          .arg(m_columnExtras);
        return true;
    }

private:
    bool fail(const QString &message)
    {
        *m_problem = {m_xml.lineNumber(), message};
        return false;
    }

    // The children of the table element, up to its end.
    bool table()
    {
        while (m_xml.readNextStartElement()) {
            const QStringView element = m_xml.name();
            if (element == QLatin1String("property")) {
                const QString property = m_xml.attributes().value(QLatin1String("name")).toString();
                if (property == QLatin1String("data") && !bytes(property, &m_table->data))
                    return false;
                if (property == QLatin1String("mergeCells") && !bytes(property, &m_table->mergeCells))
                    return false;
                if (m_xml.isStartElement())
                    m_xml.skipCurrentElement();
            } else if (element == QLatin1String("column")) {
                column();
            } else {
                m_items += element == QLatin1String("item");
                m_xml.skipCurrentElement();
            }
        }
        return !m_xml.hasError() || fail(QStringLiteral("not a well-formed form: %1").arg(m_xml.errorString()));
    }

    // A byte-array property: its <cstring> value, the reader left at the property's end.
    bool bytes(const QString &property, QByteArray *value)
    {
        if (!m_xml.readNextStartElement())
            return true; // no value: nothing stored
        if (m_xml.name() != QLatin1String("cstring"))
            return fail(QStringLiteral("the property \"%1\" holds a <%2>, not a byte array (<cstring>)")
                            .arg(property, m_xml.name().toString()));
        *value = m_xml.readElementText().toLatin1();
        m_xml.skipCurrentElement();
        return true;
    }

    void column()
    {
        TableCells::Item header;
        while (m_xml.readNextStartElement()) {
            if (m_xml.name() != QLatin1String("property")) {
                m_xml.skipCurrentElement();
                continue;
            }
            const QString property = m_xml.attributes().value(QLatin1String("name")).toString();
            QString *text = property == QLatin1String("text") ? &header.text
                : property == QLatin1String("whatsThis")      ? &header.whatsThis
                                                              : nullptr;
            if (text && m_xml.readNextStartElement()) {
                if (m_xml.name() == QLatin1String("string"))
                    *text = m_xml.readElementText(QXmlStreamReader::SkipChildElements);
                else
                    ++m_columnExtras;
                m_xml.skipCurrentElement();
            } else if (m_xml.isStartElement()) {
                ++m_columnExtras;
                m_xml.skipCurrentElement();
            }
        }
        m_table->columns.append(header);
    }

    QXmlStreamReader m_xml;
    QString m_name;
    StoredTable *m_table;
    Problem *m_problem = nullptr;
    QStringList m_tables;
    int m_named = 0;
    int m_items = 0;
    int m_columnExtras = 0;
};

} // namespace

bool FormTableReader::read(const QByteArray &form, const QString &name, StoredTable *table, Problem *problem,
                           QStringList *notes)
{
    *table = StoredTable();
    *problem = Problem();
    Reader reader(form, name, table);
    if (reader.read(problem, notes))
        return true;
    *table = StoredTable();
    return false;
}
