#ifndef FORMVALUEREADER_H
#define FORMVALUEREADER_H

#include <QtDesigner/QDesignerFormWindowInterface>

#include <QByteArray>
#include <QHash>
#include <QPointer>
#include <QStringList>
#include <QVariant>
#include <QWidget>

class QDesignerPropertySheetExtension;
class QMetaProperty;

// Reads a widget's property values as its Designer form holds them. Designer keeps a few properties
// (focus policy, tool tips, shortcuts...) only in its property sheet, in types of its own, and
// leaves the widget's own value alone (a form widget has no focus, for one). Those are read from
// the saved form, or taken from a fresh instance of the class when the form does not store them.
// Enum and flags values come as int. Outside a form the widget's own values are returned.
class FormValueReader
{
public:
    // defaults: an unchanged instance of the widget's class (may be null).
    explicit FormValueReader(QWidget *widget, const QObject *defaults = nullptr);

    QVariant value(const QByteArray &name) const;

private:
    struct Stored
    {
        QString kind; // the value element: "enum", "set", "string", "number", ...
        QStringList texts;
    };
    static bool isSheetOnly(const QByteArray &name, const QMetaProperty &property);
    QVariant storedValue(const QMetaProperty &property) const;
    void readStoredProperties() const;

    QPointer<QWidget> m_widget;
    QPointer<const QObject> m_defaults;
    QPointer<QDesignerFormWindowInterface> m_form;
    QDesignerPropertySheetExtension *m_sheet = nullptr;
    mutable bool m_storedRead = false;
    mutable QHash<QString, Stored> m_stored;
};

#endif
