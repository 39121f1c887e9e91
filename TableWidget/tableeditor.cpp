#include "tableeditor.h"

#include "columndefaults.h"
#include "controllerbinding.h"
#include "inputtyping.h"
#include "inputwidget.h"
#include "keypaddescription.h"
#include "norvointerface_z3.h"
#include "qeltapp.h"
#include "tablewidget.h"
#include "valueconversion.h"

#include <QHeaderView>
#include <QLocale>

#include <algorithm>
#include <limits>

using norvo_v0::QeltApp;

namespace {
constexpr int KeypadMaxLength = 20;
constexpr int BusParameterWord = 3;
constexpr int BusCommandWord = 2;

// setItemEditable(row, column, false) leaves the number 0 in the item's tool-tip role.
bool markedNotEditable(const QTableWidgetItem *item)
{
    if (!item)
        return false;
    bool ok = false;
    return item->data(Qt::ToolTipRole).toInt(&ok) == 0 && ok;
}
} // namespace

TableEditor::TableEditor(TableWidget *table, const ControllerBinding *binding, const ColumnDefaults *columns)
    : m_table(table)
    , m_binding(binding)
    , m_columns(columns)
{
    // Panel numbers are typed with a point and without exponents, whatever the machine's locale.
    QLocale c = QLocale::c();
    c.setNumberOptions(QLocale::RejectGroupSeparator);
    m_validator.setLocale(c);
    m_validator.setNotation(QDoubleValidator::StandardNotation);
    m_validator.setRange(m_record.lowest, m_record.highest, m_record.decimals);
}

void TableEditor::setInputWidget(QWidget *widget)
{
    if (auto *input = qobject_cast<InputWidget *>(widget))
        m_input = input;
}

void TableEditor::rebuild(const QTableWidgetItem *item)
{
    m_record = CurrentCell::of(item, m_table->mode());
    m_validator.setRange(m_record.lowest, m_record.highest, m_record.decimals);
}

void TableEditor::currentChanged(QTableWidgetItem *current, QTableWidgetItem *previous)
{
    m_record.bound = m_record.isValue = m_record.isBit = false;
    if (previous && previous->tableWidget() == m_table)
        restRow(previous->row());
    if (!current)
        return;
    if (m_table->resizeToContents())
        growRow(current->row());
    rebuild(current);
}

void TableEditor::growRow(int row) const
{
    // The cells count, not only the header's label: two lines of text or a large font.
    const QAbstractItemView *view = m_table;
    if (std::max(view->sizeHintForRow(row), m_table->verticalHeader()->sectionSizeHint(row)) > m_table->rowsHeight())
        m_table->resizeRowToContents(row);
}

void TableEditor::restRow(int row) const
{
    if (m_table->verticalHeaderResizeMode() == TableWidget::ResizeToContents)
        m_table->resizeRowToContents(row);
    else
        m_table->setRowHeight(row, m_table->rowsHeight());
}

void TableEditor::refreshRecord()
{
    rebuild(m_table->currentItem());
}

bool TableEditor::authorityGranted() const
{
    if (m_table->editingEnabled())
        return true;
    NORVOInterface_Z3::initialization()->inadequateOperationAuthority(m_table->operationalAuthority());
    return false;
}

QRect TableEditor::globalCellRect(const QTableWidgetItem *item) const
{
    const QRect r = m_table->visualItemRect(item).translated(m_table->verticalHeader()->width(),
                                                             m_table->horizontalHeader()->height());
    return QRect(m_table->mapToGlobal(r.topLeft()), r.size());
}

QRect TableEditor::formGeometry() const
{
    const QWidget *form = m_binding->form();
    return form ? form->geometry() : QRect();
}

void TableEditor::describe(const QTableWidgetItem *item, QString *name, QString *unit) const
{
    const int row = item->row();
    const auto textAt = [this, row](int column) {
        const QTableWidgetItem *cell = m_table->item(row, column);
        // A binding text of four fields or more makes the cell show a variable.
        if (!cell || m_table->isColumnHidden(column) || cell->whatsThis().count(QLatin1Char('@')) >= 3)
            return QString();
        return cell->text().trimmed();
    };
    for (int column = 0; column < item->column() && name->isEmpty(); ++column)
        *name = textAt(column);
    for (int column = item->column() + 1; column < m_table->columnCount() && unit->isEmpty(); ++column)
        *unit = textAt(column);
}

QString TableEditor::showKeypad(bool *ok, int radix, const QString &text, const QRect &cellRect)
{
    QeltApp *app = m_binding->app();
    if (!m_keypad.softKeypad() || !app) {
        if (ok)
            *ok = false;
        return QString();
    }
    return app->showKeypad(ok, radix, text, m_keypad.position(), m_keypad.geometry(), cellRect, formGeometry(),
                           nullptr, KeypadMaxLength, 0, CurrentCell::DefaultLowest, CurrentCell::DefaultHighest);
}

void TableEditor::writeData(QTableWidgetItem *item)
{
    if (!item || item != m_table->currentItem())
        return;
    const int mode = m_table->mode();
    // The cell's binding may have changed since it became current: write where it points now.
    refreshRecord();
    if (mode != 1 && !m_record.bound)
        return;
    if (!authorityGranted())
        return;
    QeltApp *app = m_binding->app();
    if (!m_keypad.softKeypad() || !app)
        return;
    const int row = item->row();
    const int column = item->column();
    if (mode == 1) {
        if (!m_columns->isEditable(column) || markedNotEditable(item))
            return;
        m_record.lowest = std::numeric_limits<qint32>::min();
        m_record.highest = std::numeric_limits<qint32>::max();
        m_record.decimals = 3;
    }
    const CurrentCell cell = m_record;
    const int radix = mode == 1 ? 10 : cell.radix;
    QPointer<TableWidget> alive(m_table);
    bool ok = false;
    QString name, unit;
    describe(item, &name, &unit);
    QString text;
    {
        const KeypadDescription::Scope described(m_table, name, unit);
        text = app->showKeypad(&ok, radix, item->text(), m_keypad.position(), m_keypad.geometry(),
                               globalCellRect(item), formGeometry(), nullptr, KeypadMaxLength, cell.decimals,
                               cell.lowest, cell.highest);
    }
    // The keypad runs its own event loop: the form may have closed, the rows moved on, or the operator
    // lost the authority (logged out) meanwhile.
    if (!alive || !ok || !authorityGranted())
        return;
    QTableWidgetItem *target = m_table->item(row, column);
    if (!target)
        return;
    if (mode == 1) {
        target->setText(text);
        emit m_table->editingFinished(m_table->currentRow(), m_table->currentColumn());
        return;
    }
    if (cell.isValue || cell.isBit) {
        const auto value = ValueConversion::fromKeypad(text, cell.sizeCode, cell.radix, cell.decimals, cell.lowest,
                                                       cell.highest);
        if (!value || !writeNumber(cell, *value))
            return;
    } else {
        target->setText(text);
    }
    finished();
}

bool TableEditor::writeNumber(const CurrentCell &cell, qint32 value) const
{
    QeltApp *app = m_binding->app();
    if (!app)
        return false;
    if (cell.isBit) {
        app->setBit(cell.channel, QeltApp::BitType(cell.bitType), cell.address, cell.bitIndex, value != 0,
                    cell.comId);
        return true;
    }
    app->setData(cell.channel, QeltApp::DataClass(cell.dataClass), cell.address, value, cell.comId);
    busFollowUp(cell);
    return true;
}

void TableEditor::busFollowUp(const CurrentCell &cell) const
{
    QeltApp *app = m_binding->app();
    if (!app || m_table->parameterType() != TableWidget::M3 || cell.dataClass != QeltApp::Bus)
        return;
    const bool device = m_table->busServoParameterType() == TableWidget::Device;
    const qint64 parameter = qint64(cell.address) - (device ? 4200 : 4000);
    if (parameter < std::numeric_limits<qint32>::min())
        return; // no drive parameter lies there
    // The drive takes the parameter number first, then the command that makes it read it.
    app->setData(cell.channel, QeltApp::Bus, BusParameterWord, int(parameter), 0);
    app->setData(cell.channel, QeltApp::Bus, BusCommandWord, device ? 107 : 7, cell.comId);
}

void TableEditor::finished() const
{
    emit m_table->editingFinished(m_table->currentRow(), m_table->currentColumn());
}

void TableEditor::refuseInput(const char *tip)
{
    if (m_input)
        m_input->showToolTip(QLatin1String(tip));
}

void TableEditor::returnPressed()
{
    if (!m_input || m_input->text().isEmpty())
        return;
    if (!authorityGranted())
        return;
    const QString text = m_input->text();
    const int row = m_table->currentRow();
    const int column = m_table->currentColumn();
    refreshRecord();
    if (m_table->mode() == 1) {
        const QTableWidgetItem *item = m_table->item(row, column);
        if (row >= 0 && m_columns->isEditable(column) && !markedNotEditable(item)) {
            m_table->setItemData(row, column, text);
            finished();
        } else {
            refuseInput(NotEditableTip);
        }
    } else if (m_record.isValue || m_record.isBit) {
        QString copy = text;
        int position = 0;
        std::optional<qint32> value;
        if (m_validator.validate(copy, position) == QValidator::Acceptable) {
            value = m_record.isBit ? ValueConversion::fromKeypad(text, 0, 10, 0, 0, 1)
                                   : ValueConversion::fromDecimalText(text, m_record.decimals);
        }
        if (value && writeNumber(m_record, *value))
            finished();
        else
            refuseInput(RefusedTip);
    } else if (row >= 0 && column >= 0) {
        QTableWidgetItem *item = m_table->item(row, column);
        if (!item) {
            item = new QTableWidgetItem;
            m_table->setItem(row, column, item);
        }
        item->setText(text);
        finished();
    }
    if (m_input)
        m_input->clear();
}

bool TableEditor::takesKey(int key) const
{
    return m_input && m_record.bound && InputTyping::accepts(key, m_table->mode());
}

void TableEditor::typeKey(int key)
{
    if (!m_input)
        return;
    QString tip;
    m_input->setText(InputTyping::typed(m_input->text(), key, &tip));
    if (!tip.isEmpty())
        m_input->showToolTip(tip);
}

void TableEditor::backspace()
{
    if (m_input && !m_input->text().isEmpty())
        m_input->setText(m_input->text().chopped(1));
}
