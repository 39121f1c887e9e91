#ifndef JUMPTODIALOG_H
#define JUMPTODIALOG_H

#include "hmiwidgets_export.h"

#include <QDialog>
#include <QList>

#include <memory>

class JumpSearch;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class TableWidget;

// The table's jump dialog: to a row number, to a number in the search column, to a cell text, or
// to the cell bound to a controller variable given field by field or in the short form. It stays
// open, saying why, until something is found or the operator cancels. Made for panels without a
// keyboard: the arrow keys move between its inputs, a click on a line opens the soft keypad, and
// the first four soft keys (F1 ... F4) move the focus up and down, confirm and cancel.
// Every table has one from the start, but most are never opened: its inputs are made, and thereby
// polished under the table's style sheet, only when it is first shown or used.
class HMIWIDGETS_EXPORT JumpToDialog : public QDialog
{
    Q_OBJECT
public:
    explicit JumpToDialog(TableWidget *table);
    ~JumpToDialog() override;

    // Opens the dialog modally for a search in column with the method preselected and the methods
    // of mask offered (-1 all).
    int runFor(int column, int method, int visibleMask);
    int method() const;
    JumpSearch &search() { return *m_search; }
    void setVisible(bool visible) override;

public Q_SLOTS:
    void accept() override;
    void radioToggled(bool checked);
    void focusNext();
    void focusPrevious();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void build();
    bool built() const { return m_ok != nullptr; }
    QList<QWidget *> inputs() const;
    void moveFocus(int step);
    void updateInputs();
    void openKeypad(QLineEdit *edit);

    TableWidget *const m_table;
    std::unique_ptr<JumpSearch> m_search;
    QList<QRadioButton *> m_radios;
    QLineEdit *m_text = nullptr;
    QComboBox *m_class = nullptr;
    QLineEdit *m_address = nullptr;
    QLineEdit *m_channel = nullptr;
    QLineEdit *m_index = nullptr;
    QLineEdit *m_com = nullptr;
    QLabel *m_inputError = nullptr;
    QLabel *m_notFound = nullptr;
    QPushButton *m_ok = nullptr;
    QPushButton *m_cancel = nullptr;
    int m_column = 0;
    bool m_forwarding = false;
};

#endif
