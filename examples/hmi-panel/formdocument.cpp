#include "formdocument.h"

#include "formlimits.h"

#include <QXmlStreamReader>

namespace {

// Where the reader is inside the <property> being read.
struct OpenProperty
{
    FormProperty property;
    int depth = -1;      // depth of the <property> element; -1: none open
    int widget = -1;     // the widget it belongs to
    bool ofCell = false; // a property of a table cell (<item>) rather than of the widget
};

struct OpenCell
{
    FormCell cell;
    int depth = -1;
    int widget = -1;
};

int intAttribute(const QXmlStreamAttributes &attributes, const char *name)
{
    bool ok = false;
    const int value = attributes.value(QLatin1String(name)).toString().toInt(&ok);
    return ok ? value : -1;
}

} // namespace

bool FormDocument::read(QIODevice *device)
{
    m_widgets.clear();
    m_problem.clear();
    m_tooDeepLine = 0;
    m_tooDeepWidget = -1;
    QXmlStreamReader xml(device);
    FormLimits::Nesting nesting;
    QStringList path;        // names of the open elements
    QList<int> widgetStack;  // indexes of the open widgets
    OpenProperty open;
    OpenCell cell;
    while (!xml.atEnd()) {
        const QXmlStreamReader::TokenType token = xml.readNext();
        if (token == QXmlStreamReader::StartElement) {
            const QString name = xml.name().toString();
            const QString parent = path.isEmpty() ? QString() : path.last();
            const int depth = int(path.size());
            if (depth == 0 && name != QLatin1String("ui")) {
                m_problem = QStringLiteral("line %1: not a form (<%2> instead of <ui>)").arg(xml.lineNumber()).arg(name);
                return false;
            }
            if (!nesting.enter(name)) {
                // The panel refuses the form; what lies deeper is not read (nor its widgets kept).
                if (m_tooDeepLine == 0) {
                    m_tooDeepLine = xml.lineNumber();
                    m_tooDeepWidget = widgetStack.isEmpty() ? -1 : widgetStack.last();
                }
                xml.skipCurrentElement();
                continue;
            }
            if (name == QLatin1String("widget")) {
                FormWidget widget;
                widget.className = xml.attributes().value(QLatin1String("class")).toString();
                widget.name = xml.attributes().value(QLatin1String("name")).toString();
                widget.line = xml.lineNumber();
                widget.isRoot = widgetStack.isEmpty();
                m_widgets.append(widget);
                widgetStack.append(int(m_widgets.size()) - 1);
            } else if (name == QLatin1String("item") && parent == QLatin1String("widget") && cell.depth < 0) {
                cell = OpenCell();
                cell.cell.row = intAttribute(xml.attributes(), "row");
                cell.cell.column = intAttribute(xml.attributes(), "column");
                cell.depth = depth;
                cell.widget = widgetStack.last();
            } else if (name == QLatin1String("property") && open.depth < 0
                       && (parent == QLatin1String("widget") || (parent == QLatin1String("item") && cell.depth == depth - 1))) {
                open = OpenProperty();
                open.property.name = xml.attributes().value(QLatin1String("name")).toString();
                open.depth = depth;
                open.widget = widgetStack.last();
                open.ofCell = parent == QLatin1String("item");
            } else if (open.depth >= 0 && depth == open.depth + 1 && open.property.type.isEmpty()) {
                open.property.type = name;
                open.property.line = xml.lineNumber();
            } else if (open.depth >= 0 && depth == open.depth + 2) { // a string of a list, a rectangle's x
                open.property.entries.append(QString());
                open.property.entryLines.append(xml.lineNumber());
                open.property.entryNames.append(name);
            }
            path.append(name);
        } else if (token == QXmlStreamReader::Characters) {
            const int depth = int(path.size());
            if (open.depth >= 0 && depth == open.depth + 2 && open.property.type != QLatin1String("stringlist"))
                open.property.text += xml.text();
            else if (open.depth >= 0 && depth == open.depth + 3 && !open.property.entries.isEmpty())
                open.property.entries.last() += xml.text();
        } else if (token == QXmlStreamReader::EndElement) {
            nesting.leave(xml.name());
            path.removeLast();
            const int depth = int(path.size());
            if (xml.name() == QLatin1String("widget")) {
                widgetStack.removeLast();
            } else if (depth == open.depth) {
                if (!open.ofCell)
                    m_widgets[open.widget].properties.append(open.property);
                else if (open.property.name == QLatin1String("whatsThis")) {
                    cell.cell.whatsThis = open.property.text;
                    cell.cell.line = open.property.line;
                }
                else if (open.property.name == QLatin1String("flags"))
                    cell.cell.flags = open.property.text;
                open = OpenProperty();
            } else if (depth == cell.depth) {
                if (!cell.cell.whatsThis.isEmpty())
                    m_widgets[cell.widget].cells.append(cell.cell);
                cell = OpenCell();
            }
        }
    }
    if (xml.hasError()) {
        m_problem = QStringLiteral("line %1: %2").arg(xml.lineNumber()).arg(xml.errorString());
        m_widgets.clear();
        return false;
    }
    if (m_widgets.isEmpty()) {
        m_problem = QStringLiteral("the form holds no widget");
        return false;
    }
    return true;
}
