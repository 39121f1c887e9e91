#include "tableitembounds.h"

#include "widgetfactory.h"

#include <QLoggingCategory>
#include <QTableWidget>
#include <QXmlStreamReader>

#include <algorithm>
#include <memory>

namespace {

// A <widget> being read: what sets its rows and columns, and its items.
struct OpenTable
{
    QString className;
    QString objectName;
    int depth = 0;
    QList<std::pair<QString, QVariant>> counts; // rowCount / columnCount properties in document order
    int rowElements = 0;
    int columnElements = 0;
    QList<TableItemBounds::Stray> items;
};

// The value the loader writes: a <number> as the integer it reads (0 when unreadable), anything else
// as its text, converted by the property.
QVariant propertyValue(QXmlStreamReader &xml)
{
    while (xml.readNextStartElement()) {
        const bool number = xml.name() == QLatin1String("number");
        const QString text = xml.readElementText(QXmlStreamReader::SkipChildElements);
        xml.skipCurrentElement();
        return number ? QVariant(text.trimmed().toInt()) : QVariant(text);
    }
    return {};
}

// The table's rows and columns when the loader places its items: a table of its class given the
// properties, then as many as the form lists <row> and <column> elements, when it lists any.
std::pair<int, int> cellsAtItems(const OpenTable &table)
{
    std::unique_ptr<QWidget> made(WidgetFactory::create(table.className, nullptr));
    if (!made && table.className == QLatin1String("QTableWidget"))
        made = std::make_unique<QTableWidget>();
    auto *probe = qobject_cast<QTableWidget *>(made.get());
    if (!probe)
        return {-1, -1}; // not a table: the loader makes no items
    // The probe's own warnings about the counts come again from the table the form makes.
    QLoggingCategory *category = QLoggingCategory::defaultCategory();
    const bool warnings = category->isWarningEnabled();
    category->setEnabled(QtWarningMsg, false);
    for (const auto &[name, value] : table.counts)
        probe->setProperty(name.toLatin1().constData(), value);
    category->setEnabled(QtWarningMsg, warnings);
    return {table.rowElements > 0 ? table.rowElements : probe->rowCount(),
            table.columnElements > 0 ? table.columnElements : probe->columnCount()};
}

} // namespace

QList<TableItemBounds::Stray> TableItemBounds::find(const QString &form)
{
    QList<Stray> strays;
    QXmlStreamReader xml(form);
    QList<OpenTable> open;
    int depth = 0;
    qint64 before = 0; // where the token just read starts
    while (!xml.atEnd()) {
        const QXmlStreamReader::TokenType token = xml.readNext();
        if (token == QXmlStreamReader::StartElement) {
            ++depth;
            const auto name = xml.name();
            const bool child = !open.isEmpty() && depth == open.last().depth + 1;
            if (name == QLatin1String("widget")) {
                OpenTable table;
                table.className = xml.attributes().value(QLatin1String("class")).toString();
                table.objectName = xml.attributes().value(QLatin1String("name")).toString();
                table.depth = depth;
                open.append(table);
            } else if (child && name == QLatin1String("row")) {
                ++open.last().rowElements;
            } else if (child && name == QLatin1String("column")) {
                ++open.last().columnElements;
            } else if (child && name == QLatin1String("property")) {
                const QString property = xml.attributes().value(QLatin1String("name")).toString();
                if (property == QLatin1String("rowCount") || property == QLatin1String("columnCount")) {
                    open.last().counts.append({property, propertyValue(xml)});
                    --depth; // propertyValue read up to its end element
                }
            } else if (child && name == QLatin1String("item") && xml.attributes().hasAttribute(QLatin1String("row"))
                       && xml.attributes().hasAttribute(QLatin1String("column"))) {
                Stray item;
                item.line = xml.lineNumber();
                item.row = xml.attributes().value(QLatin1String("row")).toString().toInt();
                item.column = xml.attributes().value(QLatin1String("column")).toString().toInt();
                item.start = before;
                xml.skipCurrentElement();
                --depth;
                item.end = xml.characterOffset();
                open.last().items.append(item);
            }
        } else if (token == QXmlStreamReader::EndElement) {
            if (!open.isEmpty() && depth == open.last().depth) {
                const OpenTable table = open.takeLast();
                if (!table.items.isEmpty()) {
                    const auto [rows, columns] = cellsAtItems(table);
                    for (Stray item : table.items) {
                        if (rows < 0 || (item.row >= 0 && item.column >= 0 && item.row < rows && item.column < columns))
                            continue;
                        item.className = table.className;
                        item.objectName = table.objectName;
                        item.rows = rows;
                        item.columns = columns;
                        strays.append(item);
                    }
                }
            }
            --depth;
        }
        before = xml.characterOffset();
    }
    if (xml.hasError())
        return {};
    std::sort(strays.begin(), strays.end(), [](const Stray &a, const Stray &b) { return a.start < b.start; });
    return strays;
}

QString TableItemBounds::problem(const Stray &stray)
{
    const auto counted = [](int n, const char *what) {
        return QStringLiteral("%1 %2%3").arg(n).arg(QLatin1String(what)).arg(n == 1 ? "" : "s");
    };
    return QStringLiteral("item (row %1, column %2) lies outside the table's %3 and %4; it is left out")
        .arg(stray.row).arg(stray.column).arg(counted(stray.rows, "row"), counted(stray.columns, "column"));
}

QByteArray TableItemBounds::withoutStray(const QByteArray &form)
{
    if (!form.contains("<item"))
        return form;
    QString text = QString::fromUtf8(form);
    const QList<Stray> strays = find(text);
    if (strays.isEmpty())
        return form;
    for (const Stray &stray : strays) {
        qWarning("%s \"%s\": line %lld: %s", qPrintable(stray.className), qPrintable(stray.objectName), stray.line,
                 qPrintable(problem(stray)));
    }
    for (auto it = strays.crbegin(); it != strays.crend(); ++it)
        text.remove(it->start, it->end - it->start);
    return text.toUtf8();
}
