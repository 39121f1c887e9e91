#ifndef TABLEWIDGET_H
#define TABLEWIDGET_H

#include "hmiuiupdateinterface.h"
#include "hmiwidgets_export.h"
#include "nkeypadstruct.h"
#include "updatevariableinterface.h"

#include <QByteArray>
#include <QColor>
#include <QRect>
#include <QStringList>
#include <QTableWidget>
#include <QVariant>

#include <memory>

struct CurrentCell;

// The parameter table: a grid of fixed texts in the panel languages and of cells bound to controller
// words and bits, each cell carrying its own variable address. Its contents come from the form as
// one stored buffer and are turned into items only for the rows near the screen; only the rows on
// screen (and one more) are registered with the application, so the cost follows what is shown,
// not how long the parameter list is.
class HMIWIDGETS_EXPORT TableWidget : public QTableWidget,
                                      public norvo_v0::UpdateVariableInterface,
                                      public Hmi_v0::HMI_UiUpdateInterface
{
    Q_OBJECT
    Q_PROPERTY(int rowCount READ rowCount WRITE setRowCount)
    Q_PROPERTY(int columnCount READ columnCount WRITE setColumnCount)
    Q_PROPERTY(QByteArray data READ data WRITE setData DESIGNABLE false)
    Q_PROPERTY(QByteArray mergeCells READ mergeCells WRITE setMergeCells DESIGNABLE false)
    Q_PROPERTY(ResizeMode horizontalHeaderResizeMode READ horizontalHeaderResizeMode WRITE setHorizontalHeaderResizeMode)
    Q_PROPERTY(ResizeMode verticalHeaderResizeMode READ verticalHeaderResizeMode WRITE setVerticalHeaderResizeMode)
    Q_PROPERTY(bool verticalHeaderVisible READ verticalHeaderVisible WRITE setVerticalHeaderVisible)
    Q_PROPERTY(bool horizontalHeaderVisible READ horizontalHeaderVisible WRITE setHorizontalHeaderVisible)
    Q_PROPERTY(bool verticalHeaderHighlightSections READ verticalHeaderHighlightSections WRITE setVerticalHeaderHighlightSections)
    Q_PROPERTY(bool horizontalHeaderHighlightSections READ horizontalHeaderHighlightSections WRITE setHorizontalHeaderHighlightSections)
    Q_PROPERTY(int rowHeight READ rowsHeight WRITE setRowsHeight)
    Q_PROPERTY(bool softKeypad READ softKeypad WRITE setSoftKeypad)
    Q_PROPERTY(bool softKeypadAutoAdjust READ softKeypadAutoAdjust WRITE setSoftKeypadAutoAdjust)
    Q_PROPERTY(KeypadPosition softKeypadPosition READ softKeypadPosition WRITE setSoftKeypadPosition)
    Q_PROPERTY(QRect softKeypadGeometry READ softKeypadGeometry WRITE setSoftKeypadGeometry)
    // Forms keep it through the four properties above.
    Q_PROPERTY(NKeyPadStruct keyPad READ keyPad WRITE setKeyPad DESIGNABLE false STORED false)
    Q_PROPERTY(int scrollBarExtent READ scrollBarExtent WRITE setScrollBarExtent)
    Q_PROPERTY(QColor gridColor READ gridColor WRITE setGridColor)
    // Reads a sheet set on the table, or else the sheet that would give the grid its colour; the grid
    // itself is painted in its colour by the table's style, which no sheet has to polish.
    Q_PROPERTY(QString styleSheet READ styleSheet WRITE setStyleSheet)
    Q_PROPERTY(QColor textColor READ textColor WRITE setTextColor)
    Q_PROPERTY(QColor backgroundColor READ backgroundColor WRITE setBackgroundColor)
    Q_PROPERTY(ParameterType parameterType READ parameterType WRITE setParameterType)
    Q_PROPERTY(BusServoParameterType busServoParameterType READ busServoParameterType WRITE setBusServoParameterType)
    Q_PROPERTY(int comId READ comId WRITE setComId)
    Q_PROPERTY(int channel READ channel WRITE setChannel)
    Q_PROPERTY(DataClass dataClass READ dataClass WRITE setDataClass)
    Q_PROPERTY(QStringList address READ address WRITE setAddress)
    Q_PROPERTY(bool inputWidgetEnabled READ inputWidgetEnabled WRITE setInputWidgetEnabled)
    Q_PROPERTY(UserLevel lowestEnablingUserLevel READ lowestEnablingUserLevel WRITE setLowestEnablingUserLevel)
    Q_PROPERTY(UserLevel lowestVisibleUserLevel READ lowestVisibleUserLevel WRITE setLowestVisibleUserLevel)
    Q_PROPERTY(int operationalAuthority READ operationalAuthority WRITE setOperationalAuthority)
    Q_PROPERTY(Language language READ language WRITE setLanguage)
    Q_PROPERTY(int defaultSearchMethodChannel READ defaultSearchMethodChannel WRITE setDefaultSearchMethodChannel)
    Q_PROPERTY(DataClass defaultSearchMethodDataClass READ defaultSearchMethodDataClass WRITE setDefaultSearchMethodDataClass)
    Q_PROPERTY(int defaultSearchMethodAddress READ defaultSearchMethodAddress WRITE setDefaultSearchMethodAddress)
    Q_PROPERTY(int searchMethodVisibleChannel READ searchMethodVisibleChannel WRITE setSearchMethodVisibleChannel)
    Q_PROPERTY(DataClass searchMethodVisibleDataClass READ searchMethodVisibleDataClass WRITE setSearchMethodVisibleDataClass)
    Q_PROPERTY(int searchMethodVisibleAddress READ searchMethodVisibleAddress WRITE setSearchMethodVisibleAddress)
    Q_PROPERTY(bool ChnNoVarEnable READ ChnNoVarEnable WRITE SetChnNoVarEnable)
    Q_PROPERTY(QByteArray mapBuffer READ mapBuffer WRITE setMapBuffer DESIGNABLE false)
    Q_PROPERTY(QByteArray headerTextInfoBuffer READ headerTextInfoBuffer WRITE setHeaderTextInfoBuffer DESIGNABLE false)

public:
    enum ResizeMode : int { Interactive = 0, Stretch = 1, Fixed = 2, ResizeToContents = 3 };
    Q_ENUM(ResizeMode)
    enum ParameterType : int { Normal = 0, Ecat = 1, M3 = 2 };
    Q_ENUM(ParameterType)
    enum BusServoParameterType : int { General = 0, Device = 1 };
    Q_ENUM(BusServoParameterType)
    enum DataClass : int { None = -1, User = 0, Mcm = 1, Sys = 2, Reg = 3, Bus = 4, Com = 5 };
    Q_ENUM(DataClass)
    enum KeypadPosition : int { Auto = 0, Center = 1, Custom = 2 };
    Q_ENUM(KeypadPosition)
    enum UserLevel : int { NoLevel = 0, Level1, Level2, Level3, Level4, Level5, Level6, Level7, Level8, Level9 };
    Q_ENUM(UserLevel)
    enum Language : int {
        language_0 = 0, language_1, language_2, language_3, language_4,
        language_5, language_6, language_7, language_8, language_9
    };
    Q_ENUM(Language)

    // Role of an item's flags in the stored contents.
    static constexpr int FlagsRole = 0x13370551;
    // The largest table: a long parameter list, a few hundred columns, and a cell count whose slots
    // (the view keeps one for every cell, made or not) stay within tens of megabytes. Larger row and
    // column counts are clamped, negative ones ignored, with a warning naming the table.
    static constexpr int MaxRows = 100000;
    static constexpr int MaxColumns = 256;
    static constexpr int MaxCells = 10000000;

    Q_INVOKABLE explicit TableWidget(QWidget *parent = nullptr);
    ~TableWidget() override;

    // As the table's own, so forms and uic code reach the bounds above and the column count below.
    void setRowCount(int rows);
    void setColumnCount(int columns);
    QByteArray data() const;
    void setData(const QByteArray &data);
    QByteArray mergeCells() const;
    void setMergeCells(const QByteArray &spans);
    QByteArray mapBuffer() const;
    void setMapBuffer(const QByteArray &buffer);
    QByteArray headerTextInfoBuffer() const;
    void setHeaderTextInfoBuffer(const QByteArray &buffer);

    ResizeMode horizontalHeaderResizeMode() const;
    void setHorizontalHeaderResizeMode(ResizeMode mode);
    ResizeMode verticalHeaderResizeMode() const;
    void setVerticalHeaderResizeMode(ResizeMode mode);
    bool verticalHeaderVisible() const;
    void setVerticalHeaderVisible(bool visible);
    bool horizontalHeaderVisible() const;
    void setHorizontalHeaderVisible(bool visible);
    bool verticalHeaderHighlightSections() const;
    void setVerticalHeaderHighlightSections(bool highlight);
    bool horizontalHeaderHighlightSections() const;
    void setHorizontalHeaderHighlightSections(bool highlight);
    int rowsHeight() const;
    void setRowsHeight(int height);
    bool softKeypad() const;
    void setSoftKeypad(bool on);
    bool softKeypadAutoAdjust() const;
    void setSoftKeypadAutoAdjust(bool on);
    KeypadPosition softKeypadPosition() const;
    void setSoftKeypadPosition(KeypadPosition position);
    QRect softKeypadGeometry() const;
    void setSoftKeypadGeometry(const QRect &rect);
    NKeyPadStruct keyPad() const;
    void setKeyPad(const NKeyPadStruct &keyPad);
    int scrollBarExtent() const;
    void setScrollBarExtent(int extent);
    QColor gridColor() const;
    void setGridColor(const QColor &color);
    QString styleSheet() const;
    void setStyleSheet(const QString &sheet);
    QColor textColor() const;
    void setTextColor(const QColor &color);
    QColor backgroundColor() const;
    void setBackgroundColor(const QColor &color);
    ParameterType parameterType() const;
    void setParameterType(ParameterType type);
    BusServoParameterType busServoParameterType() const;
    void setBusServoParameterType(BusServoParameterType type);
    int comId() const;
    void setComId(int comId);
    int channel() const;
    void setChannel(int channel);
    DataClass dataClass() const;
    void setDataClass(DataClass dataClass);
    QStringList address() const;
    void setAddress(const QStringList &addresses);
    bool inputWidgetEnabled() const;
    void setInputWidgetEnabled(bool enabled);
    UserLevel lowestEnablingUserLevel() const;
    void setLowestEnablingUserLevel(UserLevel level);
    UserLevel lowestVisibleUserLevel() const;
    void setLowestVisibleUserLevel(UserLevel level);
    int operationalAuthority() const;
    void setOperationalAuthority(int authority);
    Language language() const;
    void setLanguage(Language language);
    int defaultSearchMethodChannel() const;
    void setDefaultSearchMethodChannel(int channel);
    DataClass defaultSearchMethodDataClass() const;
    void setDefaultSearchMethodDataClass(DataClass dataClass);
    int defaultSearchMethodAddress() const;
    void setDefaultSearchMethodAddress(int address);
    int searchMethodVisibleChannel() const;
    void setSearchMethodVisibleChannel(int channel);
    DataClass searchMethodVisibleDataClass() const;
    void setSearchMethodVisibleDataClass(DataClass dataClass);
    int searchMethodVisibleAddress() const;
    void setSearchMethodVisibleAddress(int address);
    bool ChnNoVarEnable() const;
    void SetChnNoVarEnable(bool enable);

    // The search state the controller selects: the default method (0 ... 4) and the mask of
    // visible methods (-1 = all).
    int defaultSearchMethod() const;
    int visibleSearchMethods() const;
    bool editingEnabled() const;
    int mode() const;
    bool resizeToContents() const;
    // The application's soft keypad for a text of this table (the jump dialog's lines); ok false and
    // nothing when the table has no keypad or no application.
    QString showKeypad(bool *ok, int radix, const QString &text, const QRect &cellRect);
    // The input line the operator types into for the current cell, or null.
    QWidget *inputWidget() const;
    // A cell's text and binding text, also for rows whose items have not been made yet.
    QString cellText(int row, int column);
    QString cellBindingText(int row, int column);
    // Makes the cell current and shows it, making its row's items first when needed.
    void jumpToCell(int row, int column);
    // The variable of the current cell, from its binding text: the fields as written (the channel
    // 1-based), -1 without a current bound cell.
    int getVariableComId() const;
    int getVariableChannel() const;
    int getVariableClass() const;
    int getVariableAddress() const;
    int getVariableBit() const;
    QFont initFont() const;
    // The record of the current cell's variable that editing uses.
    const CurrentCell &currentCellRecord() const;
    // The stored contents as the items are now in a Designer form (its item editor changes them);
    // elsewhere the "data" value.
    QByteArray storedContents();
    // The rows whose items have been made from the stored contents.
    int loadedRowCount() const;

    void updateData(int index, int value) override;
    void updateData(int index, const QString &text) override;
    void upDatePluginTextfromWordLib() override;
    void getPluginNameAndListType(QString &name, int &listType) override;
    void getPluginNameAndTransText(QList<QList<TextData>> &texts) override;
    void setPluginTransText(QList<QStringList> &texts) override;

public Q_SLOTS:
    void updateLanguage(int index) override;
    void setQeltAppAndFormPtr(void *app, void *form);
    void updateAuthority(int level);
    int getCurrentRow() const;
    int getCurrentColumn() const;
    void setCurrentCell(int row, int column);
    void writeData(QTableWidgetItem *item);
    void slotCurrentItemChanged(QTableWidgetItem *current, QTableWidgetItem *previous);
    void setInputWidget(QWidget *widget);
    void inputBackspace();
    void moveUp();
    void moveDown();
    void moveLeft();
    void moveRight();
    void moveHome();
    void moveEnd();
    void pageUp();
    void pageDown();
    void pageLeft();
    void pageRight();
    void find(const QString &text);
    void findNext();
    void findPrevious();
    void jumpTo(int column);
    void loadFormFile(const QString &fileName);
    void saveAsFile(const QString &fileName);
    void showAsNCCode(const QString &fileName, const QString &codeSign);
    void saveAsNCCode(const QString &fileName);
    void showAsCNCBit(int channel, int bitType, int startAddress, int bitCount, int titleType);
    void setColumnWidth(int column, int width);
    void setColumnHeaderLabel(int column, const QString &label);
    void setColumnHide(int column, bool hide);
    void setColumnBackgroundColor(int column, const QString &color);
    void setColumnTextColor(int column, const QString &color);
    void setColumnTextAlignment(int column, int alignment);
    void setColumnEditable(int column, bool editable);
    void setColumnSelectable(int column, bool editable);
    void setItemData(int row, int column, const QString &text);
    void setItemData(int row, int column, int value);
    void setItemData(int row, int column, double value);
    QVariant itemData(int row, int column) const;
    void setItemBackgroundColor(int row, int column, const QString &color);
    void setItemTextColor(int row, int column, const QString &color);
    void setItemTextAlignment(int row, int column, int alignment);
    void setItemEditable(int row, int column, bool enable);
    void insertRow(int row);
    void setMode(int mode);
    void setResizeToContents(bool enable);
    void itemChangedSlot(QTableWidgetItem *item);
    void slotCellEnter(QTableWidgetItem *item);
    void slotPropertyChanged(const QString &name, const QVariant &value);

Q_SIGNALS:
    void editingFinished(int row, int column);
    void cellItemChanged(int row, int column, QString text);
    void currentCellTextChanged(QString curText);

protected:
    bool event(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void scrollContentsBy(int dx, int dy) override;
    void setCornerText(const QString &text);

private:
    void returnPressed();
    void textChanged(int key);
    void loadBitData();

    class Private;
    std::unique_ptr<Private> const d;
    friend class Private;
};

#endif
