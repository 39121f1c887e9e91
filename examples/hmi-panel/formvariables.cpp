#include "formvariables.h"

#include "bindingtext.h"
#include "currentcell.h"
#include "formlimits.h"
#include "formloader.h"
#include "formsession.h"
#include "simulatedcontroller.h"
#include "tablecontents.h"
#include "warningcapture.h"

#include <QCoreApplication>
#include <QDialog>
#include <QHash>
#include <QPointer>
#include <QTableWidgetItem>
#include <QVariant>


using norvo_v0::QeltApp;

namespace {

// The controller the form is attached to: what the widgets register, with the channel resolved as
// the panel's Modbus service resolves it.
class RegistrationRecorder : public SimulatedController
{
public:
    struct Registration
    {
        QWidget *widget;
        FormVariable variable;
    };
    QList<Registration> registrations;

    void registerUIVariable(QWidget *form, QWidget *widget, norvo_v0::UpdateVariableInterface *callback, int index,
                            int comId, int channel, int dataClass, int address, int bitType, int bitIndex, int format1,
                            int format2, int format3, int format4, int reserved, bool asText) override
    {
        SimulatedController::registerUIVariable(form, widget, callback, index, comId, channel, dataClass, address,
                                                bitType, bitIndex, format1, format2, format3, format4, reserved, asText);
        if (!form || !widget || !callback || (bitType < 0 && dataClass < 0))
            return; // not configured: nothing a device is asked for
        FormVariable v;
        v.comId = comId;
        v.channel = resolveChannel(channel);
        v.dataClass = bitType >= 0 ? -1 : dataClass;
        v.bitType = bitType;
        v.address = address;
        v.bitIndex = bitType >= 0 ? bitIndex : 0;
        registrations.append({widget, v});
    }
};

// One entry per widget and variable; a variable shown and written counts as written.
class VariableList
{
public:
    bool contains(const FormVariable &v) const { return m_seen.contains(key(v)); }
    void add(const FormVariable &v)
    {
        const auto it = m_seen.constFind(key(v));
        if (it == m_seen.constEnd()) {
            m_seen.insert(key(v), int(m_list.size()));
            m_list.append(v);
        } else if (v.writes && !m_list.at(*it).writes) {
            m_list[*it] = v;
        }
    }
    const QList<FormVariable> &list() const { return m_list; }

private:
    static QString key(const FormVariable &v)
    {
        return QStringLiteral("%1 %2 %3 %4 %5 %6 %7").arg(v.widget).arg(v.comId).arg(v.channel).arg(v.dataClass)
            .arg(v.bitType).arg(v.address).arg(v.bitIndex);
    }

    QHash<QString, int> m_seen;
    QList<FormVariable> m_list;
};

FormVariable cellVariable(const BindingText &b)
{
    FormVariable v;
    v.comId = b.comId;
    v.channel = b.channel;
    v.dataClass = b.kind == BindingText::Bit ? -1 : b.dataClass;
    v.bitType = b.kind == BindingText::Bit ? b.bitType : -1;
    v.address = b.address;
    v.bitIndex = b.kind == BindingText::Bit ? b.bitIndex : 0;
    return v;
}

bool isAddress(const QString &name)
{
    return name == QLatin1String("address") || name.endsWith(QLatin1String("Address"));
}

// Where the form gives a registered variable: an address property holding its address (not the
// write bit's: a widget shows what it registers), a cell binding it, the stored cells, or the widget.
void placeInForm(const FormWidget &widget, FormVariable *v)
{
    for (const FormProperty &p : widget.properties) {
        if (!isAddress(p.name) || p.name.startsWith(QLatin1String("write")))
            continue;
        const int entry = int(p.entries.indexOf(QString::number(v->address)));
        if (p.text.trimmed() == QString::number(v->address) || entry >= 0) {
            v->line = entry >= 0 ? p.entryLine(entry) : p.line;
            v->property = p.name;
            return;
        }
    }
    for (const FormCell &cell : widget.cells) {
        const BindingText b = BindingText::parse(cell.whatsThis);
        if (b.kind != BindingText::Text && cellVariable(b).sameVariable(*v)) {
            v->line = cell.line;
            v->property = QStringLiteral("items");
            return;
        }
    }
    const FormProperty *data = widget.property(QStringLiteral("data"));
    v->line = data ? data->line : widget.line;
    v->property = data ? data->name : QString();
}

// What a cell shows (its registration) and what the keypad writes when the operator edits it (the
// table's record of the current cell, which has rules of its own for short texts and locked cells).
void addCell(const QTableWidgetItem &item, int widget, qint64 line, const QString &property, VariableList *out)
{
    const BindingText shown = BindingText::parse(item.whatsThis());
    const CurrentCell edited = CurrentCell::of(&item, 0);
    QList<FormVariable> found;
    if (shown.kind != BindingText::Text)
        found << cellVariable(shown);
    if (edited.isValue || edited.isBit) {
        FormVariable v;
        v.comId = edited.comId;
        v.channel = edited.channel;
        v.dataClass = edited.isBit ? -1 : edited.dataClass;
        v.bitType = edited.isBit ? edited.bitType : -1;
        v.address = edited.address;
        v.bitIndex = edited.isBit ? edited.bitIndex : 0;
        v.writes = true;
        found << v;
    }
    for (FormVariable &v : found) {
        v.widget = widget;
        v.line = line;
        v.property = property;
        out->add(v);
    }
}

void addCells(const FormWidget &widget, int index, VariableList *out)
{
    for (const FormCell &cell : widget.cells) {
        QTableWidgetItem item;
        item.setWhatsThis(cell.whatsThis);
        if (!cell.flags.isEmpty() && !cell.flags.contains(QLatin1String("ItemIsEditable")))
            item.setFlags(item.flags() & ~Qt::ItemIsEditable);
        addCell(item, index, cell.line, QStringLiteral("items"), out);
    }
    const FormProperty *data = widget.property(QStringLiteral("data"));
    TableContents contents;
    if (!data || !contents.load(data->text.toUtf8()))
        return;
    QList<TableContents::Roles> row;
    for (int r = 0; contents.readRow(r, contents.columnCount(), &row); ++r) {
        for (const TableContents::Roles &cell : std::as_const(row))
            addCell(*TableContents::makeItem(cell), index, data->line, data->name, out);
    }
}

// The bit a press of the widget writes, on the channel the widget resolves when pressed.
bool writeBit(const QWidget *widget, RegistrationRecorder *recorder, FormVariable *v)
{
    const QVariant type = widget->property("writeBitType");
    if (!type.isValid() || type.toInt() < 0)
        return false;
    v->bitType = type.toInt();
    v->address = widget->property("writeAddress").toInt();
    v->bitIndex = widget->property("writeBitIndex").toInt();
    v->comId = widget->property("comId").toInt();
    v->channel = widget->property("ChnNoVarEnable").toBool() ? recorder->resolveChannel(QeltApp::CurrentChannel)
                                                             : widget->property("channel").toInt() - 1;
    v->writes = true;
    return true;
}

// The loader makes the widgets in the order of their elements, as the document lists them: that
// tells widgets of the same name apart. Where it skipped one (a class it cannot make, with what it
// holds), the names alone say which is which.
class OrderedLoader : public FormLoader
{
public:
    QWidget *createWidget(const QString &className, QWidget *parent, const QString &name) override
    {
        QWidget *widget = FormLoader::createWidget(className, parent, name);
        made.append(widget);
        return widget;
    }

    QHash<const QWidget *, int> indexes(const QList<FormWidget> &widgets) const
    {
        QHash<const QWidget *, int> out;
        bool inOrder = made.size() == widgets.size();
        for (int i = 0; inOrder && i < made.size(); ++i)
            inOrder = made.at(i) && made.at(i)->objectName() == widgets.at(i).name;
        for (int i = int(made.size()) - 1; i >= 0; --i) {
            if (!made.at(i))
                continue;
            if (inOrder)
                out.insert(made.at(i).data(), i);
            else if (const int j = indexOfName(widgets, made.at(i)->objectName()); j >= 0)
                out.insert(made.at(i).data(), j);
        }
        return out;
    }

private:
    static int indexOfName(const QList<FormWidget> &widgets, const QString &name)
    {
        for (int i = 0; i < widgets.size(); ++i) {
            if (widgets.at(i).name == name)
                return i;
        }
        return -1;
    }

    QList<QPointer<QWidget>> made; // null where a class could not be made
};

} // namespace

bool FormVariable::sameVariable(const FormVariable &other) const
{
    return comId == other.comId && channel == other.channel && dataClass == other.dataClass
           && bitType == other.bitType && address == other.address && bitIndex == other.bitIndex;
}

QList<FormVariable> FormVariables::collect(const QByteArray &form, const QList<FormWidget> &widgets)
{
    VariableList found;
    for (int i = 0; i < widgets.size(); ++i)
        addCells(widgets.at(i), i, &found);
    RegistrationRecorder recorder;
    WarningCapture quiet; // what the widgets say about their properties is reported at those already
    OrderedLoader loader;
    QWidget *root = loader.loadForm(form);
    if (root) {
        FormLimits::clampGeometry(root);
        FormSession session(root, &recorder);
        session.form()->setAttribute(Qt::WA_DontShowOnScreen);
        session.start();
        session.form()->show(); // tables register the rows they show
        QCoreApplication::processEvents();
        const QHash<const QWidget *, int> indexes = loader.indexes(widgets);
        for (const RegistrationRecorder::Registration &r : std::as_const(recorder.registrations)) {
            FormVariable v = r.variable;
            v.widget = indexes.value(r.widget, -1);
            if (v.widget >= 0 && !found.contains(v)) { // a cell's is placed already
                placeInForm(widgets.at(v.widget), &v);
                found.add(v);
            }
        }
        for (const QWidget *widget : session.form()->findChildren<QWidget *>()) {
            FormVariable v;
            v.widget = indexes.value(widget, -1);
            if (v.widget >= 0 && writeBit(widget, &recorder, &v)) {
                const FormProperty *address = widgets.at(v.widget).property(QStringLiteral("writeAddress"));
                v.line = address ? address->line : widgets.at(v.widget).line;
                v.property = address ? address->name : QString();
                found.add(v);
            }
        }
        session.form()->hide();
    }
    quiet.take();
    return found.list();
}
