#ifndef TABLEWIDGET_P_H
#define TABLEWIDGET_P_H

// The parts a parameter table is made of, each with one job, and the state they share.
#include "tablewidget.h"

#include "bindingtext.h"
#include "bitview.h"
#include "bufferwarning.h"
#include "cellspans.h"
#include "columndefaults.h"
#include "columnvisibility.h"
#include "controllerbinding.h"
#include "designercommit.h"
#include "designerhost.h"
#include "designeritemsync.h"
#include "designertextregistration.h"
#include "enumvalue.h"
#include "headertexts.h"
#include "inputwidget.h"
#include "jumpsearch.h"
#include "jumptodialog.h"
#include "languagestate.h"
#include "ncview.h"
#include "norvointerface_z3.h"
#include "qeltapp.h"
#include "tablecontents.h"
#include "tablefiles.h"
#include "tableeditor.h"
#include "tablenavigator.h"
#include "tablerowloader.h"
#include "tablesections.h"
#include "tablestylesheets.h"
#include "tabletexts.h"
#include "tablewordmap.h"
#include "textfilelines.h"
#include "visiblerowregistrar.h"

#include <QColor>
#include <QFile>
#include <QList>

#include <algorithm>
#include <memory>

namespace TableWidgetLimits {
constexpr int DefaultRowHeight = 30;
constexpr int MinRowHeight = 10;
// Taller than any panel's screen; with the most rows the table's height stays far within an int.
constexpr int MaxRowHeight = 2000;
constexpr int MinScrollBarExtent = 16;
constexpr int DefaultSearchIndex = -1001;
constexpr int VisibleSearchIndex = -1002;
constexpr int IgnoredIndex = -1000;
constexpr int IndirectBitIndex = -10000;
constexpr int SearchMethodCount = 5;
} // namespace TableWidgetLimits

class TableWidget::Private
{
public:
    explicit Private(TableWidget *q)
        : q(q)
        , binding(q, q)
        , registrar(q, q)
        , loader(q)
        , texts(q, &registrar, &headerTexts)
        , editor(q, &binding, &columnDefaults)
        , navigator(q, [this](int row, int column) { return madeItem(row, column); })
        , ncView(q)
        , bitView(q)
        , files(
              q, [this](int row, int column, QString *text, QString *binding) { return readCell(row, column, text, binding); },
              [this](int row, int column) { return madeItem(row, column); })
    {
    }

    TableWidget *const q;
    ControllerBinding binding;
    VisibleRowRegistrar registrar;
    TableRowLoader loader;
    HeaderTexts headerTexts;
    TableTexts texts;
    ColumnVisibility columnWords;
    ColumnDefaults columnDefaults;
    TableEditor editor;
    TableNavigator navigator;
    NcView ncView;
    BitView bitView;
    TableFiles files;
    JumpToDialog *jumpDialog = nullptr;
    QList<JumpSearch::Cell> found; // of the last text search
    int foundIndex = -1;
    TableWordMap wordMap;
    QList<CellSpans::Span> spans;
    LanguageState language;
    std::unique_ptr<DesignerTextRegistration> textRegistration;
    DesignerItemSync *itemSync = nullptr;

    QByteArray data;
    QByteArray mergeCells;
    QByteArray mapBuffer;
    QByteArray headerBuffer;
    QStringList addresses;

    ResizeMode horizontalMode = Interactive;
    ResizeMode verticalMode = Interactive;
    int rowHeight = TableWidgetLimits::DefaultRowHeight;
    int rowCountAtHeight = -1;
    int scrollBarExtent = TableWidgetLimits::MinScrollBarExtent;
    QColor gridColor;
    QString styleSheet; // what the styleSheet property reads
    bool ownStyleSheet = false; // a non-empty sheet was set on the table
    ParameterType parameterType = Normal;
    BusServoParameterType busServoType = General;
    DataClass dataClass = None;
    bool inputWidgetEnabled = true;
    UserLevel enablingLevel = NoLevel;
    UserLevel visibleLevel = NoLevel;
    int authority = 0;
    bool editingEnabled = true;
    Language languageProperty = language_0;
    int defaultSearchChannel = 0;
    DataClass defaultSearchClass = None;
    int defaultSearchAddress = 0;
    int visibleSearchChannel = 0;
    DataClass visibleSearchClass = None;
    int visibleSearchAddress = 0;
    int defaultSearchMethod = 0;
    int visibleSearchMethods = -1;
    int mode = 0;
    bool resizeToContents = true;
    bool firstShowPending = true;
    bool scrolling = false; // the rows on screen are refreshed for a scroll alone
    bool dataLoaded = false;
    bool itemsPlaced = false; // an item was ever put into the table
    bool rowLimitWarned = false;

    bool inDesigner() const { return DesignerHost::formWindowOf(q) != nullptr; }
    int firstVisibleRow() const { return std::max(0, q->rowAt(0)); }
    int lastVisibleRow() const
    {
        const int row = q->rowAt(q->viewport()->height());
        return row < 0 ? q->rowCount() - 1 : row;
    }

    // A row or column count within the table's bounds given the other count (across); a negative
    // one keeps current. Warns when it is not the wanted one.
    int boundedCount(const char *property, int wanted, int current, int most, int across) const;
    // Rows first ... last that hold an item take their contents' height (vertical ResizeToContents).
    void fitRows(int first, int last);
    void loadData();
    void registerTableVariables(norvo_v0::QeltApp *app);
    // Hides and shows columns by the controller's words; the rows on screen are registered again
    // when a column changed, as hidden columns are neither made nor registered.
    void applyColumnVisibility();
    // True when the column changed; a column shown gets the items left out while it was hidden.
    bool setColumnShown(int column, bool shown);
    void updateItemText() { texts.refresh(firstVisibleRow(), lastVisibleRow(), language.current()); }
    void indirectBit(int index, int value);
    QTableWidgetItem *itemAt(int row, int column);
    // The item at a cell after its row has been made from the stored contents.
    QTableWidgetItem *madeItem(int row, int column);
    void showFound();
    // A cell's texts, from its item or from the stored contents of a row not made yet; false for none.
    bool readCell(int row, int column, QString *text, QString *binding);
    // The table shows a program or bits from now on: the designed contents and their variables go.
    void leaveDesignedContents();
    // Makes and registers what the rows on screen need, for whatever the table shows.
    void refreshVisibleRows();
    void loadBitData();
    // The warning box of a file that could not be opened.
    void warnFile(const char *message, const QFile &file);
};

#endif
