#include "tablewidget_p.h"

#include "bufferwarning.h"
#include "operatormessage.h"

#include <QHeaderView>

#include <limits>

using norvo_v0::QeltApp;
using namespace TableWidgetLimits;

int TableWidget::Private::boundedCount(const char *property, int wanted, int current, int most, int across) const
{
    const int limit = std::min(most, MaxCells / std::max(1, across));
    if (wanted >= 0 && wanted <= limit)
        return wanted;
    const int kept = wanted < 0 ? current : limit;
    warnProperty(q, property,
                 QStringLiteral("%1 is outside 0 ... %2 (at most %3 rows, %4 columns and %5 cells); the table has %6")
                     .arg(wanted).arg(limit).arg(MaxRows).arg(MaxColumns).arg(MaxCells).arg(kept));
    return kept;
}

QTableWidgetItem *TableWidget::Private::madeItem(int row, int column)
{
    if (row < 0 || column < 0 || row >= q->rowCount() || column >= q->columnCount())
        return nullptr;
    loader.makeCell(row, column);
    return q->item(row, column);
}

void TableWidget::Private::fitRows(int first, int last)
{
    first = std::max(first, 0);
    last = std::min(last, q->rowCount() - 1);
    for (int r = first; r <= last; ++r) {
        for (int c = 0; c < q->columnCount(); ++c) {
            if (q->item(r, c)) {
                q->resizeRowToContents(r);
                break;
            }
        }
    }
}

void TableWidget::Private::showFound()
{
    const JumpSearch::Cell cell = found.at(foundIndex);
    q->jumpToCell(cell.first, cell.second);
    q->setFocus();
}

QTableWidgetItem *TableWidget::Private::itemAt(int row, int column)
{
    if (row < 0 || column < 0 || row >= q->rowCount() || column >= q->columnCount())
        return nullptr;
    QTableWidgetItem *item = q->item(row, column);
    if (!item) {
        item = new QTableWidgetItem;
        q->QTableWidget::setItem(row, column, item);
    }
    return item;
}

void TableWidget::Private::loadData()
{
    if (loader.isEmpty())
        return;
    int first = firstVisibleRow();
    int last = lastVisibleRow();
    if (inDesigner()) {
        // Designer edits and saves every item: they all exist there, none is registered.
        if (itemSync)
            itemSync->setSuspended(true);
        loader.loadAll(&DesignerItemSync::expose);
        if (itemSync)
            itemSync->setSuspended(false);
    } else {
        loader.cover(first, last);
        // Rows fitted to their contents as they were made may bring more rows on screen.
        for (int pass = 0; pass < 3 && verticalMode == ResizeToContents && lastVisibleRow() != last; ++pass) {
            first = firstVisibleRow();
            last = lastVisibleRow();
            loader.cover(first, last);
        }
        // Values the controller shows are read again when their row returns: not kept.
        loader.release(first, last, q->currentRow(), [this](const QTableWidgetItem *item) {
            // Parsed here, not cached: the cache holds the rows on screen.
            return binding.app() && BindingText::parse(item->whatsThis()).kind == BindingText::Value;
        });
    }
    // Parsed bindings are kept for the rows around the screen only, not for all rows ever shown.
    if (registrar.cacheSize() > 4 * (last - first + 2) * q->columnCount())
        registrar.clearCache();
    if (QeltApp *app = binding.app()) {
        app->stopUpdateUI();
        app->removeUIVariable(binding.form(), q);
        registrar.registerRows(app, binding.form(), first, last + 1, scrolling);
        registerTableVariables(app);
        app->startUpdateUI(binding.form());
    }
    dataLoaded = true;
    updateItemText();
}

void TableWidget::Private::registerTableVariables(QeltApp *app)
{
    QWidget *form = binding.form();
    if (defaultSearchClass != None) {
        app->registerUIVariable(form, q, q, DefaultSearchIndex, 0, defaultSearchChannel, defaultSearchClass,
                                defaultSearchAddress, -1, 0, 1, 10, 10, 0, 0, false);
        const int method = app->getData(defaultSearchChannel, QeltApp::DataClass(defaultSearchClass), defaultSearchAddress, 0);
        defaultSearchMethod = method >= 0 && method < SearchMethodCount ? method : 0;
    }
    if (visibleSearchClass != None) {
        app->registerUIVariable(form, q, q, VisibleSearchIndex, 0, visibleSearchChannel, visibleSearchClass,
                                visibleSearchAddress, -1, 0, 1, 10, 10, 0, 0, false);
        visibleSearchMethods = app->getData(visibleSearchChannel, QeltApp::DataClass(visibleSearchClass),
                                            visibleSearchAddress, 0)
            | (1 << defaultSearchMethod);
    }
    if (dataClass != None) {
        const QList<int> words = ColumnVisibility::addresses(addresses);
        for (int i = 0; i < words.size(); ++i)
            app->registerUIVariable(form, q, q, ColumnVisibility::registrationIndex(i), 0, binding.channelIndex(),
                                    dataClass, words.at(i), -1, 0, 1, 10, 10, 0, 0, false);
    }
}

void TableWidget::Private::applyColumnVisibility()
{
    // Hiding follows the table's own words alone: a column the controller hides must be hidden
    // before the operator ever touches a cell.
    if (inDesigner() || dataClass == None)
        return;
    bool changed = false;
    for (int c = 0; c < q->columnCount(); ++c) {
        if (const auto shown = columnWords.shown(c))
            changed = setColumnShown(c, *shown) || changed;
    }
    if (changed)
        refreshVisibleRows();
}

bool TableWidget::Private::setColumnShown(int column, bool shown)
{
    if (q->isColumnHidden(column) == !shown)
        return false;
    q->setColumnHidden(column, !shown);
    if (shown)
        loader.columnShown(column);
    return true;
}

void TableWidget::Private::indirectBit(int index, int value)
{
    const int cell = IndirectBitIndex - index;
    const int columns = q->columnCount();
    if (columns <= 0)
        return;
    const QTableWidgetItem *item = q->item(cell / columns, cell % columns);
    QeltApp *app = binding.app();
    if (!item || item->whatsThis().isEmpty() || !app)
        return;
    // No registration of the table asks for these updates; a panel application that does gives a
    // bit cell a moving address: the received value, less field 10, replaces the cell's address while
    // its bit type and bit index stay, as a button's live address change does.
    const BindingText b = BindingText::parse(item->whatsThis());
    const int channel = binding.chnNoVarEnable() ? QeltApp::CurrentChannel : b.channel;
    const qint64 address = qint64(value) - b.field(10);
    if (address < 0 || address > std::numeric_limits<int>::max())
        return; // no variable lies there
    app->stopUpdateUI();
    app->registerUIVariable(binding.form(), q, q, cell, b.comId, channel, 0, int(address), b.field(2), b.field(4), 1,
                            10, 10, 0, 0, false);
    app->startUpdateUI(binding.form());
}


bool TableWidget::Private::readCell(int row, int column, QString *text, QString *binding)
{
    if (const QTableWidgetItem *cell = q->item(row, column)) {
        *text = cell->text();
        *binding = cell->whatsThis();
        return true;
    }
    return loader.storedTexts(row, column, text, binding);
}

void TableWidget::Private::leaveDesignedContents()
{
    loader.load(QByteArray());
    registrar.clearCache();
    if (QeltApp *app = binding.app()) {
        // Their indexes would now name the program's or the monitor's cells.
        app->stopUpdateUI();
        app->removeUIVariable(binding.form(), q);
        app->startUpdateUI(binding.form());
    }
}

void TableWidget::Private::loadBitData()
{
    QeltApp *app = binding.app();
    if (!app || !bitView.isActive())
        return;
    app->removeUIVariable(binding.form(), q);
    bitView.registerRows(app, binding.form(), q, firstVisibleRow(), lastVisibleRow());
}

void TableWidget::Private::refreshVisibleRows()
{
    if (firstShowPending)
        return;
    if (ncView.isActive()) {
        ncView.cover(firstVisibleRow(), lastVisibleRow());
    } else if (bitView.isActive()) {
        bitView.cover(firstVisibleRow(), lastVisibleRow());
        if (QeltApp *app = binding.app()) {
            app->stopUpdateUI();
            loadBitData();
            app->startUpdateUI(binding.form());
        }
    } else if (mode == 0) {
        loadData();
    }
}

void TableWidget::Private::warnFile(const char *message, const QFile &file)
{
    OperatorMessage::warning(q, QStringLiteral("TableWidget"), QLatin1String(message) + file.errorString());
}
