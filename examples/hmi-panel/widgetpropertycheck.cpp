#include "widgetpropertycheck.h"

#include "bindingtextcheck.h"
#include "tablecontents.h"
#include "tablewordmap.h"
#include "textinfocodec.h"
#include "warningcapture.h"
#include "widgetfactory.h"

#include <QMetaEnum>
#include <QMetaProperty>
#include <QVariant>
#include <QWidget>

#include <memory>
#include <utility>

namespace {

constexpr int MaxAuthority = 99;
constexpr int MaxColumnWords = 11;
// A table of wrong bindings is one slip copied down a column: enough to find it.
constexpr int MaxCellFindings = 20;

class Reporter
{
public:
    Reporter(const FormWidget &widget, QList<FormFinding> *findings)
        : m_widget(widget)
        , m_findings(findings)
    {
    }
    void operator()(qint64 line, const QString &message) const
    {
        m_findings->append(FormFinding::about(m_widget, line, message));
    }

private:
    const FormWidget &m_widget;
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

void checkWarnings(const FormProperty &p, const QStringList &warnings, const Reporter &report)
{
    for (const QString &warning : warnings) {
        if (warning.contains(QLatin1String("is malformed or larger than it can be")))
            report(p.line, QStringLiteral("stored \"%1\" cannot be read; the widget takes it as holding no data").arg(p.name));
        else
            report(p.line, QStringLiteral("setting \"%1\": %2").arg(p.name, warning));
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

class CellReporter
{
public:
    CellReporter(const Reporter &report)
        : m_report(report)
    {
    }
    void operator()(qint64 line, int row, int column, const QString &text, int channelCount)
    {
        for (const QString &problem : BindingTextCheck::problems(text, channelCount)) {
            if (++m_count == MaxCellFindings + 1)
                m_report(line, QStringLiteral("more cells with binding problems are not listed"));
            if (m_count > MaxCellFindings)
                return;
            m_report(line, QStringLiteral("cell (%1, %2) \"%3\": %4").arg(row).arg(column).arg(text, problem));
        }
    }

private:
    const Reporter &m_report;
    int m_count = 0;
};

// The stored contents are read lazily by the table, so a break in them shows only when the operator
// scrolls there: read them to the end now.
void checkStoredCells(const FormProperty &p, CellReporter &cells, int channelCount, const Reporter &report)
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
                    cells(p.line, r, c, role.second.toString(), channelCount);
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
    if (!probe)
        return;
    probe->setObjectName(widget.name);
    const Reporter report(widget, findings);
    CellReporter cells(report);
    const QMetaObject *meta = probe->metaObject();
    const bool table = widget.className == QLatin1String("TableWidget");
    for (const FormProperty &p : widget.properties) {
        const int index = meta->indexOfProperty(p.name.toLatin1().constData());
        if (index < 0)
            continue; // dynamic: the application's own
        const QMetaProperty property = meta->property(index);
        const QVariant value = formValue(p, property, report);
        if (!value.isValid())
            continue;
        WarningCapture warnings;
        probe->setProperty(property.name(), value);
        checkWarnings(p, warnings.take(), report);
        if (holdsInteger(property)) {
            const int written = value.toInt();
            const int kept = probe->property(property.name()).toInt();
            // A word id the library lacks is dropped too; said below in the library's terms.
            if (kept != written && p.name != QLatin1String("wordLibId"))
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
            checkStoredCells(p, cells, context.channelCount, report);
    }
    if (table) {
        for (const FormCell &cell : widget.cells)
            cells(cell.line, cell.row, cell.column, cell.whatsThis, context.channelCount);
    }
}
