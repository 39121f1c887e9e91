#ifndef TABLEITEMSEXTRAINFO_H
#define TABLEITEMSEXTRAINFO_H

#include <QExtensionFactory>
#include <QObject>
#include <QtDesigner/QDesignerExtraInfoExtension>

class TableWidget;

// When Designer saves a form, a table's cells are written once, in its "data" property: Designer's
// own <item> elements for them are dropped, so QUiLoader and uic code never build every item of a
// long table when the form loads. The "data" value saved is the one encoded from the items then.
// Row and column headers labelled only with their number are saved without it.
class TableItemsExtraInfo : public QObject, public QDesignerExtraInfoExtension
{
    Q_OBJECT
    Q_INTERFACES(QDesignerExtraInfoExtension)
public:
    TableItemsExtraInfo(TableWidget *table, QDesignerFormEditorInterface *core, QObject *parent);

    QDesignerFormEditorInterface *core() const override { return m_core; }
    QWidget *widget() const override;
    bool saveUiExtraInfo(DomUI *ui) override;
    bool loadUiExtraInfo(DomUI *ui) override;
    bool saveWidgetExtraInfo(DomWidget *ui_widget) override;
    bool loadWidgetExtraInfo(DomWidget *ui_widget) override;

private:
    TableWidget *const m_table;
    QDesignerFormEditorInterface *const m_core;
};

class TableItemsExtraInfoFactory : public QExtensionFactory
{
    Q_OBJECT
public:
    explicit TableItemsExtraInfoFactory(QExtensionManager *parent);

protected:
    QObject *createExtension(QObject *object, const QString &iid, QObject *parent) const override;
};

#endif
