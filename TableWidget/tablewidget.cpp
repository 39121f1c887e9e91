#include "tablewidget.h"

#include "bufferwarning.h"
#include "operatormessage.h"
#include "regularfile.h"

#include "tablegridstyle.h"
#include "tablewidget_p.h"
#include "widgetfactory.h"

#include <QAbstractButton>
#include <QApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPointer>
#include <QScrollBar>
#include <QStyleOptionHeader>
#include <QStylePainter>

#include <algorithm>
#include <utility>

HMI_REGISTER_WIDGET(TableWidget)

using norvo_v0::QeltApp;
using namespace TableWidgetLimits;

namespace {
// Channels are shown 1-based and kept 0-based, within the channels the HMI has.
int channelIndex(int channel)
{
    const int count = NORVOInterface_Z3::initialization()->maxChannelCount();
    return std::clamp(channel > 1 ? channel - 1 : 0, 0, std::max(0, count - 1));
}

void warnOutOfRange(const QObject *table, const char *property, const char *kept)
{
    warnProperty(table, property, QStringLiteral("out of range; the table keeps %1").arg(QLatin1String(kept)));
}
} // namespace

TableWidget::TableWidget(QWidget *parent)
    : QTableWidget(parent)
    , d(new Private(this))
{
    setColumnCount(3);
    setRowCount(4);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    NORVOInterface_Z3::setWidgetDefaultFont(this);
    verticalHeader()->setDefaultSectionSize(DefaultRowHeight);
    setStyle(TableGridStyle::shared());
    setGridColor(QColor(216, 216, 216));
    connect(model(), &QAbstractItemModel::dataChanged, this, [this](const QModelIndex &from, const QModelIndex &to) {
        d->itemsPlaced = true;
        if (d->verticalMode == ResizeToContents)
            d->fitRows(from.row(), to.row());
    });
    connect(model(), &QAbstractItemModel::headerDataChanged, this, [this](Qt::Orientation o) {
        if (o == Qt::Vertical)
            d->itemsPlaced = true;
    });
    connect(this, &QTableWidget::itemClicked, this, &TableWidget::writeData);
    connect(this, &QTableWidget::currentItemChanged, this, &TableWidget::slotCurrentItemChanged);
    connect(this, &QTableWidget::itemChanged, this, &TableWidget::itemChangedSlot);
    connect(this, &QTableWidget::itemEntered, this, &TableWidget::slotCellEnter);
    if (DesignerHost *host = DesignerHost::instance())
        connect(host, &DesignerHost::propertyChanged, this, &TableWidget::slotPropertyChanged);
    d->jumpDialog = new JumpToDialog(this);
    setAttribute(Qt::WA_MouseTracking);
    NORVOInterface_Z3 *hmi = NORVOInterface_Z3::init();
    hmi->setKeypadModeSize(3);
    d->language.setCurrent(hmi->currentLanguageIndex());
    d->textRegistration = std::make_unique<DesignerTextRegistration>(this, this);
}

TableWidget::~TableWidget() = default;

void TableWidget::setRowCount(int rows)
{
    QTableWidget::setRowCount(d->boundedCount("rowCount", rows, rowCount(), MaxRows, columnCount()));
}

void TableWidget::setColumnCount(int columns)
{
    columns = d->boundedCount("columnCount", columns, columnCount(), MaxColumns, rowCount());
    const int rows = rowCount();
    // Qt widens a table that already has rows one row at a time, moving the cells of all later rows
    // each time: seconds for a long list. A form sets the row count first; while no item exists yet,
    // the rows can be laid out again after the columns at no cost.
    if (columns > columnCount() && rows > 0 && !d->itemsPlaced) {
        QTableWidget::setRowCount(0);
        QTableWidget::setColumnCount(columns);
        QTableWidget::setRowCount(rows);
        return;
    }
    QTableWidget::setColumnCount(columns);
}

QByteArray TableWidget::data() const { return d->data; }

void TableWidget::setData(const QByteArray &data)
{
    if (data == d->data && !d->data.isEmpty())
        return; // Designer hands back what the table just wrote
    d->data = data;
    d->registrar.clearCache();
    if (!d->loader.load(data))
        warnUnreadableBuffer(this, "data");
    if (data.isEmpty() || d->firstShowPending || d->mode != 0)
        return;
    // After the first show new contents replace what the rows show, again only near the screen.
    if (d->inDesigner())
        clearContents();
    d->loadData();
}

QByteArray TableWidget::mergeCells() const { return d->mergeCells; }

void TableWidget::setMergeCells(const QByteArray &spans)
{
    d->mergeCells = spans;
    if (!CellSpans::decode(spans, &d->spans))
        warnUnreadableBuffer(this, "mergeCells");
}

QByteArray TableWidget::mapBuffer() const { return d->mapBuffer; }

void TableWidget::setMapBuffer(const QByteArray &buffer)
{
    d->mapBuffer = buffer;
    if (!d->wordMap.decode(buffer))
        warnUnreadableBuffer(this, "mapBuffer");
}

QByteArray TableWidget::headerTextInfoBuffer() const { return d->headerBuffer; }

void TableWidget::setHeaderTextInfoBuffer(const QByteArray &buffer)
{
    d->headerBuffer = buffer;
    if (!d->headerTexts.decode(buffer))
        warnUnreadableBuffer(this, "headerTextInfoBuffer");
    d->headerTexts.refreshFromWordLibrary(false);
    if (!d->firstShowPending)
        d->updateItemText();
}

TableWidget::ResizeMode TableWidget::horizontalHeaderResizeMode() const { return d->horizontalMode; }

void TableWidget::setHorizontalHeaderResizeMode(ResizeMode mode)
{
    if (assignEnum(this, "horizontalHeaderResizeMode", d->horizontalMode, mode))
        horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeMode(mode));
}

TableWidget::ResizeMode TableWidget::verticalHeaderResizeMode() const { return d->verticalMode; }

void TableWidget::setVerticalHeaderResizeMode(ResizeMode mode)
{
    if (!assignEnum(this, "verticalHeaderResizeMode", d->verticalMode, mode))
        return;
    // In its own ResizeToContents mode the header measures every row again whenever any cell
    // changes: seconds for each item placed in a long list. The table fits the rows whose cells
    // change instead, and the operator cannot drag them, as in that mode.
    verticalHeader()->setSectionResizeMode(mode == ResizeToContents ? QHeaderView::Fixed : QHeaderView::ResizeMode(mode));
    if (mode == Interactive || mode == Fixed)
        verticalHeader()->setDefaultSectionSize(d->rowHeight);
    else if (mode == ResizeToContents)
        d->fitRows(0, rowCount() - 1);
}

bool TableWidget::verticalHeaderVisible() const { return !verticalHeader()->isHidden(); }
void TableWidget::setVerticalHeaderVisible(bool visible) { verticalHeader()->setVisible(visible); }
bool TableWidget::horizontalHeaderVisible() const { return !horizontalHeader()->isHidden(); }
void TableWidget::setHorizontalHeaderVisible(bool visible) { horizontalHeader()->setVisible(visible); }
bool TableWidget::verticalHeaderHighlightSections() const { return verticalHeader()->highlightSections(); }
void TableWidget::setVerticalHeaderHighlightSections(bool highlight) { verticalHeader()->setHighlightSections(highlight); }
bool TableWidget::horizontalHeaderHighlightSections() const { return horizontalHeader()->highlightSections(); }
void TableWidget::setHorizontalHeaderHighlightSections(bool highlight) { horizontalHeader()->setHighlightSections(highlight); }

int TableWidget::rowsHeight() const { return d->rowHeight; }

void TableWidget::setRowsHeight(int height)
{
    d->rowCountAtHeight = rowCount();
    if (height > MaxRowHeight)
        warnOutOfRange(this, "rowHeight", "its row height");
    if (height < MinRowHeight || height > MaxRowHeight || height == d->rowHeight)
        return;
    d->rowHeight = height;
    // The default section size reaches every row without touching them one by one.
    if (d->verticalMode != ResizeToContents)
        verticalHeader()->setDefaultSectionSize(height);
}

int TableWidget::scrollBarExtent() const { return d->scrollBarExtent; }

void TableWidget::setScrollBarExtent(int extent)
{
    if (extent == d->scrollBarExtent || extent < MinScrollBarExtent)
        return;
    d->scrollBarExtent = extent;
    verticalScrollBar()->setStyleSheet(TableStyleSheets::verticalScrollBar(extent));
    horizontalScrollBar()->setStyleSheet(TableStyleSheets::horizontalScrollBar(extent));
}

QColor TableWidget::gridColor() const { return d->gridColor; }

void TableWidget::setGridColor(const QColor &color)
{
    if (color == d->gridColor)
        return;
    d->gridColor = color;
    // The grid colour's sheet replaces one set on the table before, as it always did.
    if (d->ownStyleSheet) {
        d->ownStyleSheet = false;
        QWidget::setStyleSheet(QString());
    }
    d->styleSheet = TableStyleSheets::grid(color);
    viewport()->update();
}

// The style sheet engine reads this property, not QWidget's sheet: it sees a sheet set on the table
// as long as one is, the grid's otherwise.
QString TableWidget::styleSheet() const { return d->styleSheet; }

void TableWidget::setStyleSheet(const QString &sheet)
{
    d->styleSheet = sheet;
    d->ownStyleSheet = !sheet.isEmpty();
    QWidget::setStyleSheet(sheet);
}

QColor TableWidget::textColor() const { return palette().color(QPalette::Text); }

void TableWidget::setTextColor(const QColor &color)
{
    QPalette p = palette();
    p.setBrush(QPalette::All, QPalette::Text, color);
    setPalette(p);
}

QColor TableWidget::backgroundColor() const { return palette().color(QPalette::Base); }

void TableWidget::setBackgroundColor(const QColor &color)
{
    QPalette p = palette();
    p.setBrush(QPalette::All, QPalette::Base, color);
    setPalette(p);
}

TableWidget::ParameterType TableWidget::parameterType() const { return d->parameterType; }
void TableWidget::setParameterType(ParameterType type) { assignEnum(this, "parameterType", d->parameterType, type); }
TableWidget::BusServoParameterType TableWidget::busServoParameterType() const { return d->busServoType; }
void TableWidget::setBusServoParameterType(BusServoParameterType type) { assignEnum(this, "busServoParameterType", d->busServoType, type); }
int TableWidget::comId() const { return d->binding.comId(); }
void TableWidget::setComId(int comId) { d->binding.setComId(comId); }
int TableWidget::channel() const { return d->binding.channel(); }
void TableWidget::setChannel(int channel) { d->binding.setChannel(channel); }
TableWidget::DataClass TableWidget::dataClass() const { return d->dataClass; }
void TableWidget::setDataClass(DataClass dataClass) { assignEnum(this, "dataClass", d->dataClass, dataClass); }
QStringList TableWidget::address() const { return d->addresses; }
void TableWidget::setAddress(const QStringList &addresses) { d->addresses = addresses; }
bool TableWidget::inputWidgetEnabled() const { return d->inputWidgetEnabled; }
void TableWidget::setInputWidgetEnabled(bool enabled) { d->inputWidgetEnabled = enabled; }
TableWidget::UserLevel TableWidget::lowestEnablingUserLevel() const { return d->enablingLevel; }
void TableWidget::setLowestEnablingUserLevel(UserLevel level) { assignEnum(this, "lowestEnablingUserLevel", d->enablingLevel, level); }
TableWidget::UserLevel TableWidget::lowestVisibleUserLevel() const { return d->visibleLevel; }
void TableWidget::setLowestVisibleUserLevel(UserLevel level) { assignEnum(this, "lowestVisibleUserLevel", d->visibleLevel, level); }
int TableWidget::operationalAuthority() const { return d->authority; }

void TableWidget::setOperationalAuthority(int authority)
{
    if (authority >= 0 && authority <= ControllerBinding::MaxAuthority)
        d->authority = authority;
}

TableWidget::Language TableWidget::language() const { return d->languageProperty; }

void TableWidget::setLanguage(Language language)
{
    if (assignEnum(this, "language", d->languageProperty, language))
        setWhatsThis(QString::number(int(language)));
}

int TableWidget::defaultSearchMethodChannel() const { return d->defaultSearchChannel + 1; }
void TableWidget::setDefaultSearchMethodChannel(int channel) { d->defaultSearchChannel = channelIndex(channel); }
TableWidget::DataClass TableWidget::defaultSearchMethodDataClass() const { return d->defaultSearchClass; }
void TableWidget::setDefaultSearchMethodDataClass(DataClass dataClass) { assignEnum(this, "defaultSearchMethodDataClass", d->defaultSearchClass, dataClass); }
int TableWidget::defaultSearchMethodAddress() const { return d->defaultSearchAddress; }
void TableWidget::setDefaultSearchMethodAddress(int address) { d->defaultSearchAddress = std::max(0, address); }
int TableWidget::searchMethodVisibleChannel() const { return d->visibleSearchChannel + 1; }
void TableWidget::setSearchMethodVisibleChannel(int channel) { d->visibleSearchChannel = channelIndex(channel); }
TableWidget::DataClass TableWidget::searchMethodVisibleDataClass() const { return d->visibleSearchClass; }
void TableWidget::setSearchMethodVisibleDataClass(DataClass dataClass) { assignEnum(this, "searchMethodVisibleDataClass", d->visibleSearchClass, dataClass); }
int TableWidget::searchMethodVisibleAddress() const { return d->visibleSearchAddress; }
void TableWidget::setSearchMethodVisibleAddress(int address) { d->visibleSearchAddress = std::max(0, address); }
bool TableWidget::ChnNoVarEnable() const { return d->binding.chnNoVarEnable(); }
void TableWidget::SetChnNoVarEnable(bool enable) { d->binding.setChnNoVarEnable(enable); }

int TableWidget::defaultSearchMethod() const { return d->defaultSearchMethod; }
int TableWidget::visibleSearchMethods() const { return d->visibleSearchMethods; }
bool TableWidget::editingEnabled() const { return d->editingEnabled; }
int TableWidget::mode() const { return d->mode; }
bool TableWidget::resizeToContents() const { return d->resizeToContents; }
QFont TableWidget::initFont() const { return font(); }
QByteArray TableWidget::storedContents() { return d->itemSync ? d->itemSync->flush() : d->data; }
int TableWidget::loadedRowCount() const { return d->loader.loadedRows(); }

// The fields as the cell's binding text writes them; a text cell, or no current cell, has none.
// A value cell without the long form is on link 0, as it is registered.
int TableWidget::getVariableComId() const
{
    const BindingText &b = d->registrar.binding(currentItem());
    return b.kind == BindingText::Text ? -1 : b.comId;
}

int TableWidget::getVariableChannel() const
{
    const BindingText &b = d->registrar.binding(currentItem());
    return b.kind == BindingText::Text ? -1 : b.field(b.kind == BindingText::Bit ? 1 : 0);
}

int TableWidget::getVariableAddress() const
{
    const BindingText &b = d->registrar.binding(currentItem());
    return b.kind == BindingText::Text ? -1 : b.address;
}

int TableWidget::getVariableBit() const
{
    const BindingText &b = d->registrar.binding(currentItem());
    return b.kind == BindingText::Bit ? b.bitIndex : -1;
}

int TableWidget::getVariableClass() const
{
    const BindingText &b = d->registrar.binding(currentItem());
    if (b.kind == BindingText::Text)
        return -1;
    return b.kind == BindingText::Bit ? b.bitType : b.dataClass;
}

const CurrentCell &TableWidget::currentCellRecord() const { return d->editor.record(); }

bool TableWidget::softKeypad() const { return d->editor.keypad().softKeypad(); }
void TableWidget::setSoftKeypad(bool on) { d->editor.keypad().setSoftKeypad(on); }
bool TableWidget::softKeypadAutoAdjust() const { return d->editor.keypad().autoAdjust(); }
void TableWidget::setSoftKeypadAutoAdjust(bool on) { d->editor.keypad().setAutoAdjust(on); }

TableWidget::KeypadPosition TableWidget::softKeypadPosition() const
{
    return KeypadPosition(d->editor.keypad().position());
}

void TableWidget::setSoftKeypadPosition(KeypadPosition position)
{
    if (acceptEnum(this, "softKeypadPosition", position))
        d->editor.keypad().setPosition(position);
}

QRect TableWidget::softKeypadGeometry() const { return d->editor.keypad().geometry(); }
void TableWidget::setSoftKeypadGeometry(const QRect &rect)
{
    if (!d->editor.keypad().setGeometry(rect))
        warnOutOfRange(this, "softKeypadGeometry", "it within screen coordinates");
}

NKeyPadStruct TableWidget::keyPad() const
{
    NORVOInterface_Z3::initialization()->setKeypadModeSize(3);
    return d->editor.keypad().record();
}

void TableWidget::setKeyPad(const NKeyPadStruct &keyPad)
{
    if (!d->editor.keypad().setRecord(keyPad))
        warnOutOfRange(this, "keyPad", "its rectangle within screen coordinates and a known position");
    const NKeyPadStruct &kept = d->editor.keypad().record();
    QWidget *formWindow = DesignerHost::formWindowOf(this);
    DesignerHost *host = DesignerHost::instance();
    if (!formWindow || !host)
        return;
    // Designer saves the record through these three and shows them in its property editor. They are
    // set through the property sheet, not as undo steps of their own: this runs inside the record's
    // own undoable change (and its undo and redo), which thereby carries them along.
    host->setSheetProperty(this, QStringLiteral("softKeypad"), kept.enabled != 0);
    host->setSheetProperty(this, QStringLiteral("softKeypadPosition"), QVariant::fromValue(KeypadPosition(kept.position)));
    host->setSheetProperty(this, QStringLiteral("softKeypadGeometry"), kept.geometry());
    host->refreshEditors(formWindow);
}

QString TableWidget::showKeypad(bool *ok, int radix, const QString &text, const QRect &cellRect)
{
    return d->editor.showKeypad(ok, radix, text, cellRect);
}

QWidget *TableWidget::inputWidget() const { return d->editor.inputWidget(); }

QString TableWidget::cellText(int row, int column)
{
    QString text, binding;
    d->readCell(row, column, &text, &binding);
    return text;
}

QString TableWidget::cellBindingText(int row, int column)
{
    QString text, binding;
    d->readCell(row, column, &text, &binding);
    return binding;
}

void TableWidget::jumpToCell(int row, int column)
{
    if (row < 0 || column < 0 || row >= rowCount() || column >= columnCount())
        return;
    d->madeItem(row, column);
    QTableWidget::setCurrentCell(row, column);
    scrollTo(model()->index(row, column));
}

void TableWidget::updateData(int index, int value)
{
    if (ColumnVisibility::isWordIndex(index)) {
        if (d->columnWords.update(index, value))
            d->applyColumnVisibility();
    } else if (index == DefaultSearchIndex) {
        d->defaultSearchMethod = value >= 0 && value < SearchMethodCount ? value : 0;
        QeltApp *app = d->binding.app();
        if (d->visibleSearchMethods != -1 && app && d->visibleSearchClass != None)
            d->visibleSearchMethods = app->getData(d->visibleSearchChannel, QeltApp::DataClass(d->visibleSearchClass),
                                                   d->visibleSearchAddress, 0);
        d->visibleSearchMethods |= 1 << d->defaultSearchMethod;
    } else if (index == VisibleSearchIndex) {
        d->visibleSearchMethods = value | (1 << d->defaultSearchMethod);
    } else if (index <= IndirectBitIndex) {
        d->indirectBit(index, value);
    } else if (index >= 0 && columnCount() > 0) {
        QTableWidgetItem *cell = item(index / columnCount(), index % columnCount());
        if (!cell)
            return;
        if (d->bitView.isActive())
            cell->setBackground(value == 0 ? QColor(Qt::white) : QColor(255, 50, 50));
        else
            cell->setText(value != 0 ? QStringLiteral("1") : QStringLiteral("0"));
    }
    Q_UNUSED(IgnoredIndex)
}

void TableWidget::updateData(int index, const QString &text)
{
    if (index < 0 || d->bitView.isActive() || columnCount() <= 0)
        return;
    if (QTableWidgetItem *cell = item(index / columnCount(), index % columnCount()))
        cell->setText(text);
}

void TableWidget::updateLanguage(int index)
{
    index = std::max(0, index);
    if (index == d->language.current() && !d->language.isPending() && !d->dataLoaded && d->firstShowPending)
        return;
    d->language.markApplied(index);
    d->updateItemText();
}

void TableWidget::upDatePluginTextfromWordLib()
{
    d->headerTexts.refreshFromWordLibrary(true);
    d->updateItemText();
}

void TableWidget::getPluginNameAndListType(QString &name, int &listType)
{
    name = objectName();
    listType = 2;
}

void TableWidget::getPluginNameAndTransText(QList<QList<TextData>> &texts)
{
    if (d->headerTexts.isEmpty())
        d->headerTexts.buildFrom(this, NORVOInterface_Z3::initialization()->getSystemLanguageCount());
    else
        d->headerTexts.trimTo(columnCount());
    texts = d->texts.translatable();
}

void TableWidget::setPluginTransText(QList<QStringList> &texts)
{
    const int used = d->texts.applyTranslations(texts);
    qDebug("TableWidget::setPluginTransText transTextSize=%d i_end=%d", int(texts.size()), used);
    const QByteArray header = d->headerTexts.encode();
    // Only a table whose every row has items can write its contents back whole.
    const bool whole = d->loader.loadedRows() == rowCount();
    const QByteArray contents = whole ? DesignerItemSync::encode(this) : d->data;
    if (!DesignerCommit::setProperty(this, "headerTextInfoBuffer", header))
        setHeaderTextInfoBuffer(header);
    if (whole && !DesignerCommit::setProperty(this, "data", contents))
        d->data = contents;
    d->updateItemText();
}

void TableWidget::setQeltAppAndFormPtr(void *app, void *form) { d->binding.attach(app, form); }

void TableWidget::updateAuthority(int level)
{
    d->editingEnabled = d->authority == 0 || d->authority >= level;
}

int TableWidget::getCurrentRow() const { return currentRow(); }
int TableWidget::getCurrentColumn() const { return currentColumn(); }
void TableWidget::setCurrentCell(int row, int column) { QTableWidget::setCurrentCell(row, column); }
void TableWidget::setColumnWidth(int column, int width) { QTableWidget::setColumnWidth(column, width); }

void TableWidget::writeData(QTableWidgetItem *item) { d->editor.writeData(item); }

void TableWidget::slotCurrentItemChanged(QTableWidgetItem *current, QTableWidgetItem *previous)
{
    d->editor.currentChanged(current, previous);
}

void TableWidget::setInputWidget(QWidget *widget) { d->editor.setInputWidget(widget); }
void TableWidget::inputBackspace() { d->editor.backspace(); }
void TableWidget::returnPressed() { d->editor.returnPressed(); }
void TableWidget::textChanged(int key) { d->editor.typeKey(key); }
void TableWidget::moveUp() { d->navigator.moveUp(); }
void TableWidget::moveDown() { d->navigator.moveDown(); }
void TableWidget::moveLeft() { d->navigator.moveLeft(); }
void TableWidget::moveRight() { d->navigator.moveRight(); }
void TableWidget::moveHome() { d->navigator.moveHome(); }
void TableWidget::moveEnd() { d->navigator.moveEnd(); }
void TableWidget::pageUp() { d->navigator.pageUp(); }
void TableWidget::pageDown() { d->navigator.pageDown(); }
void TableWidget::pageLeft() { d->navigator.pageLeft(); }
void TableWidget::pageRight() { d->navigator.pageRight(); }

void TableWidget::find(const QString &text)
{
    d->found.clear();
    d->foundIndex = -1;
    // The whole list, also rows not made yet, in the table's order.
    for (int r = 0; r < rowCount(); ++r) {
        for (int c = 0; c < columnCount(); ++c) {
            if (cellText(r, c).contains(text))
                d->found.append({r, c});
        }
    }
    findNext();
}

void TableWidget::findNext()
{
    if (d->found.isEmpty()) {
        OperatorMessage::information(this, tr("Table Find"), tr("Not found!"));
        return;
    }
    d->foundIndex = std::max(0, d->foundIndex + 1);
    if (d->foundIndex >= d->found.size()) {
        QPointer<TableWidget> alive(this);
        OperatorMessage::information(this, tr("Table Find"), tr("Not found!"));
        if (!alive)
            return;
        d->foundIndex = 0;
    }
    d->showFound();
}

void TableWidget::findPrevious()
{
    if (d->found.isEmpty()) {
        OperatorMessage::information(this, tr("Table Find"), tr("Not found!"));
        return;
    }
    d->foundIndex -= 1;
    if (d->foundIndex < 0) {
        QPointer<TableWidget> alive(this);
        OperatorMessage::information(this, tr("Table Find"), tr("Not found!"));
        if (!alive)
            return;
        d->foundIndex = int(d->found.size()) - 1;
    }
    d->showFound();
}

void TableWidget::jumpTo(int column)
{
    QWidget *form = d->binding.form() ? d->binding.form() : window();
    QList<QPointer<QWidget>> bars;
    for (QWidget *w : form->findChildren<QWidget *>()) {
        if (qstrcmp(w->metaObject()->className(), "ButtonGroup") == 0)
            bars.append(w);
    }
    // While the dialog is open the soft keys are its own: focus up, focus down, OK and cancel on the
    // first four keys (F1 ... F4, which the dialog takes), the rest blank; the keys stop acting as
    // shortcuts so that those F keys reach the dialog.
    for (const QPointer<QWidget> &bar : std::as_const(bars)) {
        const int keys = bar->property("buttonCount").toInt();
        QStringList list = {QStringLiteral("<<"), QStringLiteral("false")};
        const QStringList actions = {QString::fromUtf8("焦点上移"), QString::fromUtf8("焦点下移"),
                                     QString::fromUtf8("确定"), QString::fromUtf8("取消")};
        for (int i = 0; i < keys; ++i) {
            list << (i < actions.size() ? actions.at(i) : QString())
                 << (i < actions.size() ? QStringLiteral("true") : QStringLiteral("false"));
        }
        list << QStringLiteral(">>") << QStringLiteral("false");
        QMetaObject::invokeMethod(bar, "setCurrentButtonGroup", Q_ARG(QStringList, list));
        QMetaObject::invokeMethod(bar, "setShortcutEnabled", Q_ARG(bool, false));
    }
    QPointer<TableWidget> alive(this);
    d->jumpDialog->runFor(column, d->defaultSearchMethod, d->visibleSearchMethods);
    for (const QPointer<QWidget> &bar : std::as_const(bars)) {
        if (!bar)
            continue;
        QMetaObject::invokeMethod(bar, "restorePreviousButtonGroup");
        QMetaObject::invokeMethod(bar, "setShortcutEnabled", Q_ARG(bool, true));
    }
    if (alive)
        setFocus();
}

void TableWidget::setColumnHeaderLabel(int column, const QString &label)
{
    if (column < 0 || column >= columnCount())
        return;
    QTableWidgetItem *header = horizontalHeaderItem(column);
    if (!header) {
        header = new QTableWidgetItem;
        setHorizontalHeaderItem(column, header);
    }
    header->setText(label);
}

void TableWidget::setColumnHide(int column, bool hide)
{
    if (column >= 0 && column < columnCount() && d->setColumnShown(column, !hide))
        d->refreshVisibleRows();
}

void TableWidget::setColumnBackgroundColor(int column, const QString &color)
{
    const QColor c = ColumnDefaults::parseColor(color);
    d->columnDefaults.setBackground(column, c);
    for (int r = 0; r < rowCount(); ++r) {
        if (QTableWidgetItem *cell = d->itemAt(r, column))
            cell->setBackground(c);
    }
}

void TableWidget::setColumnTextColor(int column, const QString &color)
{
    const QColor c = ColumnDefaults::parseColor(color);
    d->columnDefaults.setForeground(column, c);
    for (int r = 0; r < rowCount(); ++r) {
        if (QTableWidgetItem *cell = d->itemAt(r, column))
            cell->setForeground(c);
    }
}

void TableWidget::setColumnTextAlignment(int column, int alignment)
{
    if (column < 0 || column >= columnCount())
        return;
    d->columnDefaults.setAlignment(column, alignment);
    for (int r = 0; r < rowCount(); ++r)
        d->itemAt(r, column)->setData(Qt::TextAlignmentRole, alignment);
}

void TableWidget::setColumnEditable(int column, bool editable)
{
    d->columnDefaults.setEditable(column, editable);
    for (int r = 0; r < rowCount(); ++r)
        d->itemAt(r, column);
}

void TableWidget::setColumnSelectable(int column, bool editable)
{
    d->columnDefaults.setSelectable(column, editable);
    for (int r = 0; r < rowCount(); ++r) {
        if (QTableWidgetItem *cell = d->itemAt(r, column))
            cell->setFlags(editable ? cell->flags() | Qt::ItemIsSelectable : cell->flags() & ~Qt::ItemIsSelectable);
    }
}

void TableWidget::setItemData(int row, int column, const QString &text)
{
    if (QTableWidgetItem *cell = d->itemAt(row, column))
        cell->setText(text);
}

void TableWidget::setItemData(int row, int column, int value) { setItemData(row, column, QString::number(value)); }

void TableWidget::setItemData(int row, int column, double value)
{
    setItemData(row, column, QString::number(value, 'g', 6));
}

QVariant TableWidget::itemData(int row, int column) const
{
    const QTableWidgetItem *cell = item(row, column);
    return cell ? cell->text() : QString();
}

void TableWidget::setItemBackgroundColor(int row, int column, const QString &color)
{
    if (QTableWidgetItem *cell = d->itemAt(row, column))
        cell->setBackground(ColumnDefaults::parseColor(color));
}

void TableWidget::setItemTextColor(int row, int column, const QString &color)
{
    if (QTableWidgetItem *cell = d->itemAt(row, column))
        cell->setForeground(ColumnDefaults::parseColor(color));
}

void TableWidget::setItemTextAlignment(int row, int column, int alignment)
{
    if (QTableWidgetItem *cell = d->itemAt(row, column))
        cell->setData(Qt::TextAlignmentRole, alignment);
}

void TableWidget::setItemEditable(int row, int column, bool enable)
{
    if (QTableWidgetItem *cell = d->itemAt(row, column))
        cell->setData(Qt::ToolTipRole, int(enable));
}

void TableWidget::insertRow(int row)
{
    if (row < 0 || row > rowCount())
        return;
    if (rowCount() >= std::min(MaxRows, MaxCells / std::max(1, columnCount()))) {
        // A file of many lines inserts row after row: said once.
        if (!std::exchange(d->rowLimitWarned, true))
            qWarning("%s \"%s\": no row is inserted past the %d a table holds", metaObject()->className(),
                     qPrintable(objectName()), rowCount());
        return;
    }
    QTableWidget::insertRow(row);
    d->loader.rowInserted(row);
    for (int c = 0; c < columnCount(); ++c) {
        auto *cell = new QTableWidgetItem;
        d->columnDefaults.apply(cell, c);
        QTableWidget::setItem(row, c, cell);
    }
}

void TableWidget::setMode(int mode) { d->mode = mode; }

void TableWidget::setResizeToContents(bool enable)
{
    d->resizeToContents = enable;
    const int row = currentRow();
    if (!currentItem() || row < 0)
        return;
    if (enable)
        d->editor.growRow(row);
    else
        d->editor.restRow(row);
}

void TableWidget::itemChangedSlot(QTableWidgetItem *changed)
{
    emit cellItemChanged(row(changed), column(changed), changed->text());
    if (changed == currentItem()) {
        d->editor.refreshRecord();
        emit currentCellTextChanged(changed->text());
    }
}

void TableWidget::slotCellEnter(QTableWidgetItem *) {}

void TableWidget::slotPropertyChanged(const QString &name, const QVariant &)
{
    DesignerHost *host = DesignerHost::instance();
    if (host && host->propertyEditorObject() == this && name == QLatin1String("rowCount"))
        verticalHeader()->setDefaultSectionSize(d->rowHeight);
}

bool TableWidget::event(QEvent *event)
{
    const bool handled = QTableWidget::event(event);
    // A taller table shows rows no scroll has made yet.
    if (event->type() == QEvent::Resize)
        d->refreshVisibleRows();
    return handled;
}

bool TableWidget::eventFilter(QObject *watched, QEvent *event)
{
    // The corner button, once it carries a text, is drawn as one more header section.
    auto *corner = qobject_cast<QAbstractButton *>(watched);
    if (!corner || corner->parent() != this || event->type() != QEvent::Paint)
        return QTableWidget::eventFilter(watched, event);
    QStyleOptionHeader option;
    option.initFrom(corner);
    option.rect = corner->rect();
    option.text = corner->text();
    option.textAlignment = Qt::AlignCenter;
    option.position = QStyleOptionHeader::OnlyOneSection;
    option.state = QStyle::State_None;
    if (corner->isEnabled())
        option.state |= QStyle::State_Enabled;
    if (corner->isActiveWindow())
        option.state |= QStyle::State_Active;
    if (corner->isDown())
        option.state |= QStyle::State_Sunken;
    QStylePainter painter(corner);
    painter.drawControl(QStyle::CE_Header, option);
    return true;
}
void TableWidget::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Backspace:
        inputBackspace();
        return;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        returnPressed();
        return;
    case Qt::Key_Home:
        moveHome();
        return;
    case Qt::Key_End:
        moveEnd();
        return;
    case Qt::Key_Left:
        moveLeft();
        return;
    case Qt::Key_Right:
        moveRight();
        return;
    case Qt::Key_Up:
    case Qt::Key_Down:
        if (d->navigator.takeSentKey())
            QTableWidget::keyPressEvent(event);
        else if (event->key() == Qt::Key_Up)
            moveUp();
        else
            moveDown();
        return;
    default:
        break;
    }
    // The character typed, so that a keypad's digits and lower-case letters arrive as themselves.
    const QString text = event->text();
    const int key = text.size() == 1 && text.at(0).unicode() >= 32 && text.at(0).unicode() <= 126
        ? text.at(0).unicode()
        : event->key();
    if (d->editor.takesKey(key))
        textChanged(key);
    else
        QTableWidget::keyPressEvent(event);
}

void TableWidget::showEvent(QShowEvent *event)
{
    QTableWidget::showEvent(event);
    if (d->mode != 0 || !d->firstShowPending)
        return;
    const bool designer = d->inDesigner();
    if (designer && !d->itemSync) {
        d->itemSync = new DesignerItemSync(this);
        connect(d->itemSync, &DesignerItemSync::encoded, this, [this](const QByteArray &data) {
            d->data = data;
            d->loader.load(data);
        });
    }
    if (!designer)
        d->binding.attachToForm();
    if (QeltApp *app = d->binding.app(); app && d->dataClass != None) {
        d->columnWords.clear();
        for (int address : ColumnVisibility::addresses(d->addresses))
            d->columnWords.append(app->getData(d->binding.channelIndex(), QeltApp::DataClass(d->dataClass), address,
                                               d->binding.comId()));
    }
    d->applyColumnVisibility();
    for (int c = 0; c < columnCount(); ++c) {
        const QTableWidgetItem *header = horizontalHeaderItem(c);
        bool ok = false;
        const int width = header ? TableSections::columnWidth(header->whatsThis()).toInt(&ok) : 0;
        if (ok && width >= 0)
            QTableWidget::setColumnWidth(c, width);
    }
    if (!d->ncView.isActive()) {
        d->loadData();
        if (!d->bitView.isActive() && !designer)
            d->texts.selectFirstSelectable();
    }
    // Clipped to the table: a span past its end would make the view walk rows that do not exist.
    const int cut = CellSpans::apply(d->spans, this);
    if (cut > 0)
        warnProperty(this, "mergeCells", QStringLiteral("%1 spans reach past the table's %2 rows and %3 columns; they "
                                                        "end at its edge").arg(cut).arg(rowCount()).arg(columnCount()));
    if (d->rowHeight != DefaultRowHeight && d->rowCountAtHeight != rowCount())
        verticalHeader()->setDefaultSectionSize(d->rowHeight);
    d->firstShowPending = false;
}

void TableWidget::scrollContentsBy(int dx, int dy)
{
    QTableWidget::scrollContentsBy(dx, dy);
    if (dy != 0) {
        d->scrolling = true;
        d->refreshVisibleRows();
        d->scrolling = false;
    }
}

void TableWidget::loadFormFile(const QString &fileName)
{
    // A file writes the cells' variables as the keypad would: not for an operator the keypad refuses.
    if (!editingEnabled()) {
        NORVOInterface_Z3::initialization()->inadequateOperationAuthority(operationalAuthority());
        return;
    }
    // Not in text mode: that would drop the CR that alone ends a line.
    RegularFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        d->warnFile("loadFormFile:Cannot read file!\n", file);
        return;
    }
    d->files.load(&file, d->binding.app(), fileName);
    d->refreshVisibleRows();
}

void TableWidget::saveAsFile(const QString &fileName)
{
    RegularFile file(fileName);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Text)) {
        d->warnFile("saveAsFile:Cannot write file!\n", file);
        return;
    }
    d->files.save(&file, d->binding.app());
}

void TableWidget::showAsNCCode(const QString &fileName, const QString &codeSign)
{
    RegularFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        d->warnFile("showAsNCCode:Cannot read file!\n", file);
        return;
    }
    QApplication::setOverrideCursor(Qt::WaitCursor);
    d->leaveDesignedContents();
    d->ncView.show(codeSign.split(QLatin1Char(',')), &file);
    setCornerText(QStringLiteral("n"));
    d->ncView.cover(d->firstVisibleRow(), d->lastVisibleRow());
    QApplication::restoreOverrideCursor();
    if (!d->ncView.notWhole().isEmpty())
        OperatorMessage::warning(this, QStringLiteral("TableWidget"),
                                 QStringLiteral("showAsNCCode:Program not read whole, it cannot be saved!\n")
                                     + d->ncView.notWhole());
}

void TableWidget::saveAsNCCode(const QString &fileName)
{
    // Written back, a program read only in part would lose its rest.
    if (!d->ncView.notWhole().isEmpty()) {
        OperatorMessage::warning(this, QStringLiteral("TableWidget"),
                                 QStringLiteral("saveAsNCCode:Program not read whole, not saved!\n") + d->ncView.notWhole());
        return;
    }
    RegularFile file(fileName);
    if (!file.open(QIODevice::WriteOnly)) {
        d->warnFile("saveAsNCCode:Cannot write file!\n", file);
        return;
    }
    QApplication::setOverrideCursor(Qt::WaitCursor);
    const bool written = d->ncView.write(&file) && file.flush();
    QApplication::restoreOverrideCursor();
    if (!written)
        d->warnFile("saveAsNCCode:Cannot write file!\n", file);
}

void TableWidget::showAsCNCBit(int channel, int bitType, int startAddress, int bitCount, int titleType)
{
    const BitView::Result result = d->bitView.show(channel, bitType, startAddress, bitCount, titleType);
    if (result == BitView::Unchanged)
        return;
    d->leaveDesignedContents();
    if (result == BitView::Cleared)
        return;
    setCornerText(d->bitView.bitTypeName());
    d->bitView.cover(d->firstVisibleRow(), d->lastVisibleRow());
    QeltApp *app = d->binding.app();
    if (app)
        app->stopUpdateUI();
    loadBitData();
    if (app)
        app->startUpdateUI(d->binding.form());
}

void TableWidget::loadBitData() { d->loadBitData(); }

void TableWidget::setCornerText(const QString &text)
{
    auto *corner = findChild<QAbstractButton *>(QString(), Qt::FindDirectChildrenOnly);
    if (!corner)
        return;
    corner->setText(text);
    corner->installEventFilter(this);
    corner->update();
}
