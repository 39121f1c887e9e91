#include "widgetpropertycheck.h"

#include "bindingtextcheck.h"
#include "cellspans.h"
#include "formlimits.h"
#include "tablecontents.h"
#include "tablewordmap.h"
#include "textinfocodec.h"
#include "warningcapture.h"
#include "widgetfactory.h"

#include <QMetaEnum>
#include <QMetaProperty>
#include <QTableWidget>
#include <QVariant>
#include <QWidget>

#include <memory>
#include <utility>

namespace {

constexpr int MaxAuthority = 99;
constexpr int MaxColumnWords = 11;

class Reporter
{
public:
    Reporter(const FormWidget &widget, const QString &property, QList<FormFinding> *findings)
        : m_widget(widget)
        , m_property(property)
        , m_findings(findings)
    {
    }
    void operator()(qint64 line, const QString &message) const
    {
        m_findings->append(FormFinding::about(m_widget, line, message, m_property));
    }

private:
    const FormWidget &m_widget;
    const QString m_property;
    QList<FormFinding> *m_findings;
};

// The value the form loader would write, or invalid for a type no check looks at.
QVariant formValue(const FormProperty &p, const QMetaProperty &meta, const Reporter &report)
{
    if (p.type == QLatin1String("number")) {
        bool ok = false;
        const int value = p.text.trimmed().toInt(&ok);
        if (!ok)
            report(p.line, QStringLiteral("\"%1\": \"%2\" is not a whole number; the loader leaves the property unset")
                               .arg(p.name, p.text));
        return ok ? QVariant(value) : QVariant();
    }
    if (p.type == QLatin1String("enum")) {
        const QString key = p.text.section(QLatin1String("::"), -1).trimmed();
        bool ok = false;
        const int value = meta.isEnumType() ? meta.enumerator().keyToValue(key.toLatin1().constData(), &ok) : -1;
        if (!ok)
            report(p.line, QStringLiteral("\"%1\": \"%2\" is no value of it; the loader leaves the property unset")
                               .arg(p.name, p.text));
        return ok ? QVariant(value) : QVariant();
    }
    if (p.type == QLatin1String("bool"))
        return p.text.trimmed() == QLatin1String("true");
    if (p.type == QLatin1String("string"))
        return p.text;
    if (p.type == QLatin1String("cstring"))
        return p.text.toUtf8();
    if (p.type == QLatin1String("stringlist"))
        return p.entries;
    return QVariant();
}

bool holdsInteger(const QMetaProperty &meta)
{
    return meta.isEnumType() || meta.userType() == QMetaType::Int;
}

QString valueName(const QMetaProperty &meta, int value)
{
    if (meta.isEnumType()) {
        if (const char *key = meta.enumerator().valueToKey(value))
            return QString::fromLatin1(key);
    }
    return QString::number(value);
}

void checkWarnings(const FormWidget &widget, const FormProperty &p, const QStringList &warnings, const Reporter &report)
{
    // The finding names the widget and property already.
    const QString about = QStringLiteral("%1 \"%2\": property \"%3\": ").arg(widget.className, widget.name, p.name);
    for (const QString &warning : warnings) {
        if (warning.contains(QLatin1String("is malformed or larger than it can be")))
            report(p.line, QStringLiteral("stored \"%1\" cannot be read; the widget takes it as holding no data").arg(p.name));
        else
            report(p.line, QStringLiteral("setting \"%1\": %2").arg(p.name, warning.startsWith(about) ? warning.mid(about.size()) : warning));
    }
}

void checkWordId(const FormProperty &p, int id, const WidgetPropertyCheck::Context &context, const Reporter &report)
{
    if (id >= 0 && !context.words.contains(id))
        report(p.line, QStringLiteral("\"%1\": word %2 is not in the panel's word library").arg(p.name).arg(id));
}

// Text records carry word ids too. Buttons keep one slot of records, the others several; both forms
// start alike, so a buffer that reads either way is taken in the form it was written in.
void checkRecordWords(const FormProperty &p, const WidgetPropertyCheck::Context &context, const Reporter &report)
{
    const QByteArray buffer = p.text.toUtf8();
    TextInfoLimits limits;
    limits.slotCount = 1000;
    limits.recordCount = 1000;
    QList<TextData> single;
    QList<QList<TextData>> slotRecords;
    const bool asSingle = TextInfoCodec::decodeSlot(buffer, &single, limits);
    const bool asSlots = TextInfoCodec::decodeSlots(buffer, &slotRecords, limits);
    if (asSingle && (!asSlots || TextInfoCodec::encodeSlot(single) == buffer))
        slotRecords = {single};
    else if (!asSlots)
        return;
    for (const QList<TextData> &records : std::as_const(slotRecords)) {
        for (const TextData &record : records)
            checkWordId(p, record.wordLibId, context, report);
    }
}

void checkMapWords(const FormProperty &p, const WidgetPropertyCheck::Context &context, const Reporter &report)
{
    TableWordMap map;
    if (!map.decode(p.text.toUtf8()))
        return;
    for (const TextData &record : std::as_const(map.entries))
        checkWordId(p, record.wordLibId, context, report);
}

void checkColumnWords(const FormProperty &p, const Reporter &report)
{
    for (int i = 0; i < p.entries.size(); ++i) {
        bool ok = false;
        const int address = p.entries.at(i).trimmed().toInt(&ok);
        if (i >= MaxColumnWords)
            report(p.entryLine(i), QStringLiteral("\"%1\": entry %2 is beyond the %3 column words a table reads")
                               .arg(p.name).arg(i + 1).arg(MaxColumnWords));
        else if (!ok || address < 0)
            report(p.entryLine(i), QStringLiteral("\"%1\": entry %2 \"%3\" is no address; that column word is skipped")
                               .arg(p.name).arg(i + 1).arg(p.entries.at(i)));
    }
}

void checkAuthorityList(const FormProperty &p, const Reporter &report)
{
    for (int i = 0; i < p.entries.size(); ++i) {
        bool ok = false;
        const int authority = p.entries.at(i).trimmed().toInt(&ok);
        // What the tab then does follows from its rule: open when 0 or at least the operator's value.
        QString effect;
        if (!ok)
            effect = QStringLiteral("is not a number, read as 0: the tab is open to anybody");
        else if (authority < 0)
            effect = QStringLiteral("is below 0: the tab is closed to every operator");
        else if (authority > MaxAuthority)
            effect = QStringLiteral("is above %1: the tab is open to every operator").arg(MaxAuthority);
        if (!effect.isEmpty())
            report(p.entryLine(i), QStringLiteral("\"%1\": entry %2 \"%3\" %4").arg(p.name).arg(i + 1).arg(p.entries.at(i), effect));
    }
}

void checkCell(const Reporter &report, qint64 line, int row, int column, const QString &text, int channelCount)
{
    for (const QString &problem : BindingTextCheck::problems(text, channelCount))
        report(line, QStringLiteral("cell (%1, %2) \"%3\": %4").arg(row).arg(column).arg(text, problem));
}

// Width, height and position as the loader reads them (a number or 0), against what the panel takes.
void checkGeometry(const FormProperty &p, const Reporter &report)
{
    const auto read = [&p](const char *name) { return qint64(p.entry(QLatin1String(name)).trimmed().toInt()); };
    const FormLimits::Geometry given{read("x"), read("y"), read("width"), read("height")};
    const FormLimits::Geometry kept = FormLimits::clamped(given);
    if (kept != given)
        report(p.line, QStringLiteral("\"geometry\" %1 is beyond the panel's %2 x %2; the panel clamps it to %3")
                           .arg(given.toString()).arg(FormLimits::MaxExtent).arg(kept.toString()));
}

// The stored contents are read lazily by the table, so a break in them shows only when the operator
// scrolls there: read them to the end now.
void checkStoredCells(const FormProperty &p, int channelCount, const Reporter &report)
{
    TableContents contents;
    if (!contents.load(p.text.toUtf8()))
        return; // the widget's own warning said so
    QList<TableContents::Roles> row;
    for (int r = 0; r < contents.rowCount(); ++r) {
        if (!contents.readRow(r, contents.columnCount(), &row)) {
            report(p.line, QStringLiteral("stored \"%1\" breaks off at row %2 of %3; the rows from there are empty")
                               .arg(p.name).arg(r).arg(contents.rowCount()));
            return;
        }
        for (int c = 0; c < row.size(); ++c) {
            for (const auto &role : std::as_const(row.at(c))) {
                if (role.first == Qt::WhatsThisRole)
                    checkCell(report, p.line, r, c, role.second.toString(), channelCount);
            }
        }
    }
}

bool isAddress(const QString &name)
{
    return name == QLatin1String("address") || name.endsWith(QLatin1String("Address"));
}

} // namespace

void WidgetPropertyCheck::check(const FormWidget &widget, const Context &context, QList<FormFinding> *findings)
{
    const std::unique_ptr<QWidget> probe(WidgetFactory::create(widget.className, nullptr));
    for (const FormProperty &p : widget.properties) {
        if (p.name == QLatin1String("geometry") && p.type == QLatin1String("rect"))
            checkGeometry(p, Reporter(widget, p.name, findings)); // of every widget: the loader clamps all
    }
    if (!probe)
        return;
    probe->setObjectName(widget.name);
    const QMetaObject *meta = probe->metaObject();
    const bool table = widget.className == QLatin1String("TableWidget");
    for (const FormProperty &p : widget.properties) {
        const int index = meta->indexOfProperty(p.name.toLatin1().constData());
        if (index < 0)
            continue; // dynamic: the application's own
        const Reporter report(widget, p.name, findings);
        const QMetaProperty property = meta->property(index);
        const QVariant value = formValue(p, property, report);
        if (!value.isValid())
            continue;
        WarningCapture capture;
        probe->setProperty(property.name(), value);
        const QStringList warnings = capture.take();
        checkWarnings(widget, p, warnings, report);
        if (holdsInteger(property)) {
            const int written = value.toInt();
            const int kept = probe->property(property.name()).toInt();
            // A word id the library lacks is dropped too; said below in the library's terms. What the
            // setter said about the value is said already.
            if (kept != written && p.name != QLatin1String("wordLibId") && warnings.isEmpty())
                report(p.line, QStringLiteral("\"%1\": %2 is out of range; the widget keeps %3")
                                   .arg(p.name, valueName(property, written), valueName(property, kept)));
            else if (isAddress(p.name) && written < 0)
                report(p.line, QStringLiteral("\"%1\": a negative address names no variable").arg(p.name));
            if (p.name == QLatin1String("wordLibId"))
                checkWordId(p, written, context, report);
        }
        if (p.name == QLatin1String("textInfoBuffer") || p.name == QLatin1String("headerTextInfoBuffer"))
            checkRecordWords(p, context, report);
        else if (table && p.name == QLatin1String("mapBuffer"))
            checkMapWords(p, context, report);
        else if (p.name.startsWith(QLatin1String("operationalAuthorit")) && p.type == QLatin1String("stringlist"))
            checkAuthorityList(p, report);
        else if (table && p.name == QLatin1String("address"))
            checkColumnWords(p, report);
        else if (table && p.name == QLatin1String("data"))
            checkStoredCells(p, context.channelCount, report);
    }
    if (table) {
        // Against the counts the table ends with, whatever order the form sets them in.
        for (const FormProperty &p : widget.properties) {
            QList<CellSpans::Span> spans;
            if (p.name == QLatin1String("mergeCells") && CellSpans::decode(p.text.toUtf8(), &spans)) {
                if (const int cut = CellSpans::apply(spans, static_cast<QTableWidget *>(probe.get())))
                    Reporter(widget, p.name, findings)(p.line, QStringLiteral("\"mergeCells\": %1 spans reach past the "
                                                                               "table; the panel ends them at its edge").arg(cut));
            }
        }
        const Reporter report(widget, QStringLiteral("items"), findings); // the cells the form lists
        for (const FormCell &cell : widget.cells)
            checkCell(report, cell.line, cell.row, cell.column, cell.whatsThis, context.channelCount);
    }
}
