#ifndef TABLEEDITOR_H
#define TABLEEDITOR_H

#include "currentcell.h"
#include "hmiwidgets_export.h"
#include "keypadsettings.h"

#include <QDoubleValidator>
#include <QPointer>
#include <QRect>
#include <QString>

class ColumnDefaults;
class ControllerBinding;
class InputWidget;
class QTableWidgetItem;
class QWidget;
class TableWidget;

// How an operator changes the table: the record of the current cell, the soft keypad opened by a
// click, the input line typed into through the table, the checks before anything is written (the
// operator's authority, the cell's range, a value that fits its word) and the writes themselves,
// with the drive's follow-up command for bus parameters.
class HMIWIDGETS_EXPORT TableEditor
{
public:
    static constexpr const char *RefusedTip = "invalid inputs!";
    static constexpr const char *NotEditableTip = "Invilid Input";

    TableEditor(TableWidget *table, const ControllerBinding *binding, const ColumnDefaults *columns);

    KeypadSettings &keypad() { return m_keypad; }
    const KeypadSettings &keypad() const { return m_keypad; }
    const CurrentCell &record() const { return m_record; }
    const QDoubleValidator &validator() const { return m_validator; }

    void setInputWidget(QWidget *widget);
    InputWidget *inputWidget() const { return m_input; }

    void currentChanged(QTableWidgetItem *current, QTableWidgetItem *previous);
    // The current row grows to its cells' contents when they are taller than the row height; a
    // row left goes back to the row height (to its contents where every row fits them).
    void growRow(int row) const;
    void restRow(int row) const;
    // The binding text of the current cell may have changed under it (new contents, an update).
    void refreshRecord();
    void writeData(QTableWidgetItem *item);
    void returnPressed();
    // Whether a typed key goes to the input line rather than to the view.
    bool takesKey(int key) const;
    void typeKey(int key);
    void backspace();
    QString showKeypad(bool *ok, int radix, const QString &text, const QRect &cellRect);

private:
    void rebuild(const QTableWidgetItem *item);
    bool authorityGranted() const;
    QRect globalCellRect(const QTableWidgetItem *item) const;
    QRect formGeometry() const;
    // The parameter a value cell belongs to: the row's first text left of it, and the first text
    // right of it as its unit (cells that show variables do not count).
    void describe(const QTableWidgetItem *item, QString *name, QString *unit) const;
    bool writeNumber(const CurrentCell &cell, qint32 value) const;
    void busFollowUp(const CurrentCell &cell) const;
    void finished() const;
    void refuseInput(const char *tip);

    TableWidget *const m_table;
    const ControllerBinding *const m_binding;
    const ColumnDefaults *const m_columns;
    KeypadSettings m_keypad;
    CurrentCell m_record;
    QDoubleValidator m_validator;
    QPointer<InputWidget> m_input;
};

#endif
