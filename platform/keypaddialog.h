#ifndef KEYPADDIALOG_H
#define KEYPADDIALOG_H

#include "hmiplatform_export.h"

#include <QDialog>

class QLabel;
class QLineEdit;
class QPushButton;

// The numeric soft keypad: what the entry is for (name, unit, allowed range) above the entry,
// digits of the radix, sign and decimal point where they apply, and a confirmation that refuses
// values outside the limits, saying what was typed and why.
class HMIPLATFORM_EXPORT KeypadDialog : public QDialog
{
    Q_OBJECT
public:
    explicit KeypadDialog(QWidget *parent = nullptr);

    void setEntry(int radix, const QString &text, int maxLength, int decimals, double lowest, double highest);
    // The parameter's name and unit; either may be empty.
    void setDescription(const QString &name, const QString &unit);
    QString text() const;
    // What the operator reads before typing: name, unit and allowed range.
    QString description() const;
    // The message shown when a value is refused; empty while the entry is acceptable.
    QString problem() const;

public Q_SLOTS:
    void typeKey(const QString &key);
    void accept() override;

private:
    bool acceptable(QString *why) const;
    void updateKeys();
    void updateInfo();
    QString shown(double value) const;

    QLabel *m_info = nullptr;
    QLineEdit *m_edit = nullptr;
    QLabel *m_message = nullptr;
    QList<QPushButton *> m_keys;
    int m_radix = 10;
    int m_decimals = 0;
    double m_lowest = -1e9;
    double m_highest = 1e9;
    QString m_name;
    QString m_unit;
};

#endif
