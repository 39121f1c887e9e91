#include "formtableeditor.h"

#include "formtablereader.h"
#include "tabledeclaration.h"

#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include <algorithm>

namespace {

// XML 1.0 holds no other control characters, and a CR in element text reads back as LF.
int unstorable(const QString &text)
{
    for (const QChar c : text) {
        const ushort u = c.unicode();
        if ((u < 0x20 && u != '\t' && u != '\n') || u == 0xfffe || u == 0xffff)
            return u;
    }
    return -1;
}

// The XML declaration as the form spells it; the stream writer would spell it its own way.
QByteArray declaration(const QByteArray &form)
{
    const int start = form.startsWith("\xEF\xBB\xBF") ? 3 : 0;
    if (form.mid(start, 5) != "<?xml")
        return QByteArray();
    const int end = form.indexOf("?>", start);
    return end < 0 ? QByteArray() : form.left(end + 2) + '\n';
}

class Editor
{
public:
    Editor(const QByteArray &form, const QString &name, const StoredTable &table, QByteArray *out)
        : m_in(form), m_out(out), m_name(name), m_table(table), m_declaration(TableDeclaration::find(form))
    {
    }

    void run()
    {
        int depth = 0;
        bool rootDone = false;
        while (!m_in.atEnd()) {
            switch (m_in.readNext()) {
            case QXmlStreamReader::StartDocument:
            case QXmlStreamReader::EndDocument:
            case QXmlStreamReader::Invalid:
                break;
            case QXmlStreamReader::Characters:
                if (m_in.isWhitespace() && !m_in.isCDATA())
                    m_pending += m_in.text();
                else
                    copy();
                break;
            case QXmlStreamReader::StartElement:
                ++depth;
                if (depth == 2)
                    enterRootChild();
                if (m_tableDepth > 0 && depth == m_tableDepth + 1 && replaced()) {
                    m_pending.clear();
                    m_in.skipCurrentElement();
                    --depth;
                    break;
                }
                if (m_tableDepth < 0 && isTable())
                    enterTable(depth);
                copy();
                break;
            case QXmlStreamReader::EndElement:
                if (depth == m_tableDepth)
                    leaveTable();
                declareBeforeEnd(depth);
                copy();
                rootDone = --depth == 0;
                break;
            default: // comments, processing instructions, DTD, entity references
                if (depth == 0 && rootDone)
                    m_out.writeCharacters(QStringLiteral("\n"));
                copy();
                if (depth == 0 && !rootDone)
                    m_out.writeCharacters(QStringLiteral("\n"));
                break;
            }
        }
    }

    bool failed() const { return m_in.hasError() || m_out.hasError(); }
    QString error() const { return m_in.hasError() ? m_in.errorString() : QStringLiteral("cannot write the form"); }
    qint64 line() const { return m_in.hasError() ? m_in.lineNumber() : 0; }

private:
    void copy()
    {
        if (!m_pending.isEmpty())
            m_out.writeCharacters(m_pending);
        m_pending.clear();
        m_out.writeCurrentToken(m_in);
    }

    bool isTable() const
    {
        const QXmlStreamAttributes a = m_in.attributes();
        return m_in.name() == QLatin1String("widget") && a.value(QLatin1String("name")) == m_name
            && a.value(QLatin1String("class")) == FormTableReader::tableClass();
    }

    // Whether a child of the table is one this editor writes anew. The new properties go before the
    // first child that is no property, the new headers where the old items began; both go before the
    // held-back whitespace, which then indents the next element.
    bool replaced()
    {
        const QStringView element = m_in.name();
        const bool property = element == QLatin1String("property");
        if (property) {
            const QXmlStreamAttributes attributes = m_in.attributes();
            const QStringView name = attributes.value(QLatin1String("name"));
            return name == QLatin1String("rowCount") || name == QLatin1String("columnCount")
                || name == QLatin1String("data") || name == QLatin1String("mergeCells");
        }
        writeProperties();
        if (element != QLatin1String("column") && element != QLatin1String("row") && element != QLatin1String("item"))
            return false;
        writeColumns();
        return true;
    }

    // The table's class is declared to uic where Designer would put it: its list before the first
    // root child that follows it, or at the root's end; its entry at the end of a list without one.
    void enterRootChild()
    {
        if (m_rootUnit.isEmpty()) {
            m_rootUnit = m_pending.mid(m_pending.lastIndexOf(QLatin1Char('\n')) + 1);
            if (m_rootUnit.isEmpty())
                m_rootUnit = QStringLiteral(" ");
        }
        if (m_declaration == TableDeclaration::Found::Nothing && TableDeclaration::follows(m_in.name())) {
            TableDeclaration::writeList(&m_out, 1, m_rootUnit);
            m_declaration = TableDeclaration::Found::Entry;
        }
        m_inList = m_declaration == TableDeclaration::Found::ListOnly && m_in.name() == QLatin1String("customwidgets");
    }

    // The end tag then goes on a line of its own, as it would after any other child.
    void declareBeforeEnd(int depth)
    {
        QString endIndent;
        if (depth == 2 && m_inList) {
            TableDeclaration::writeEntry(&m_out, 2, m_rootUnit);
            endIndent = m_rootUnit;
        } else if (depth == 1 && m_declaration == TableDeclaration::Found::Nothing) {
            TableDeclaration::writeList(&m_out, 1, m_rootUnit);
        } else {
            return;
        }
        m_declaration = TableDeclaration::Found::Entry;
        m_inList = false;
        if (m_pending.isEmpty())
            m_pending = QLatin1Char('\n') + endIndent;
    }

    void enterTable(int depth)
    {
        m_tableDepth = depth;
        m_tableIndent = m_pending.mid(m_pending.lastIndexOf(QLatin1Char('\n')) + 1);
        // Designer indents by one space a level; follow what the form does.
        m_unit = QStringLiteral(" ");
        if (!m_tableIndent.isEmpty() && m_tableIndent.count(QLatin1Char('\t')) == m_tableIndent.size())
            m_unit = QStringLiteral("\t");
        else if (depth > 1 && !m_tableIndent.isEmpty() && m_tableIndent.size() % (depth - 1) == 0)
            m_unit = QString(int(m_tableIndent.size() / (depth - 1)), QLatin1Char(' '));
    }

    void leaveTable()
    {
        writeProperties();
        writeColumns();
        if (m_pending.isEmpty())
            m_pending = QLatin1Char('\n') + m_tableIndent;
        m_tableDepth = 0; // done: no other widget of the name is touched
    }

    void startLine(int level) { m_out.writeCharacters(QLatin1Char('\n') + m_tableIndent + m_unit.repeated(level)); }

    void property(const QString &name, const QString &type, const QString &value, int level = 1)
    {
        startLine(level);
        m_out.writeStartElement(QStringLiteral("property"));
        m_out.writeAttribute(QStringLiteral("name"), name);
        startLine(level + 1);
        if (value.isEmpty())
            m_out.writeEmptyElement(type);
        else
            m_out.writeTextElement(type, value);
        startLine(level);
        m_out.writeEndElement();
    }

    void writeProperties()
    {
        if (m_propertiesWritten)
            return;
        m_propertiesWritten = true;
        const QString number = QStringLiteral("number");
        const QString cstring = QStringLiteral("cstring");
        property(QStringLiteral("rowCount"), number, QString::number(m_table.rowCount));
        property(QStringLiteral("columnCount"), number, QString::number(m_table.columnCount));
        property(QStringLiteral("data"), cstring, QString::fromLatin1(m_table.data));
        if (!m_table.mergeCells.isEmpty())
            property(QStringLiteral("mergeCells"), cstring, QString::fromLatin1(m_table.mergeCells));
    }

    void writeColumns()
    {
        if (m_columnsWritten)
            return;
        m_columnsWritten = true;
        for (const TableCells::Item &header : m_table.columns) {
            startLine(1);
            m_out.writeStartElement(QStringLiteral("column"));
            property(QStringLiteral("text"), QStringLiteral("string"), header.text, 2);
            if (!header.whatsThis.isEmpty())
                property(QStringLiteral("whatsThis"), QStringLiteral("string"), header.whatsThis, 2);
            startLine(1);
            m_out.writeEndElement();
        }
    }

    QXmlStreamReader m_in;
    QXmlStreamWriter m_out;
    QString m_name;
    const StoredTable &m_table;
    QString m_pending; // whitespace held back until it is known whether the next element stays
    int m_tableDepth = -1;
    QString m_tableIndent;
    QString m_unit;
    bool m_propertiesWritten = false;
    bool m_columnsWritten = false;
    TableDeclaration::Found m_declaration;
    QString m_rootUnit; // the indentation of the root's children
    bool m_inList = false;
};

} // namespace

bool FormTableEditor::write(const QByteArray &form, const QString &name, const StoredTable &table, QByteArray *out,
                            Problem *problem)
{
    out->clear();
    StoredTable current;
    if (!FormTableReader::read(form, name, &current, problem))
        return false;
    for (int c = 0; c < table.columns.size(); ++c) {
        const TableCells::Item &header = table.columns.at(c);
        const int bad = std::max(unstorable(header.text), unstorable(header.whatsThis));
        if (bad >= 0) {
            *problem = {0, QStringLiteral("header %1 holds the character U+%2, which a form cannot hold")
                               .arg(c + 1)
                               .arg(bad, 4, 16, QLatin1Char('0'))};
            return false;
        }
    }
    QByteArray body;
    Editor editor(form, name, table, &body);
    editor.run();
    if (editor.failed()) {
        *problem = {editor.line(), editor.error()};
        return false;
    }
    *out = declaration(form) + body;
    if (form.endsWith('\n') && !out->endsWith('\n'))
        *out += '\n';
    return true;
}
