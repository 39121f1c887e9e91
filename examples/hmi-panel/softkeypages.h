#ifndef SOFTKEYPAGES_H
#define SOFTKEYPAGES_H

#include <QObject>
#include <QString>
#include <QStringList>

class QWidget;

// Soft keys that turn the pages of a tab widget: a key whose dynamic property "showTab" reads
// "tabWidgetName:index" shows that page when clicked. Tab widgets keep no slot that takes a page
// number from a key, so the panel makes the link.
class SoftKeyPages : public QObject
{
    Q_OBJECT
public:
    // Links the keys of form; returns what could not be linked, one line each.
    static QStringList setUp(QWidget *form);
    // The tab widget's name and the page a "showTab" text names; false when it is not of that form.
    static bool parseTarget(const QString &target, QString *tabWidget, int *page);

private Q_SLOTS:
    void showPage();

private:
    using QObject::QObject;
};

#endif
