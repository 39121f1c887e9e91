#include "tableitemsextrainfo.h"

#include "designeritemsync.h"
#include "tablewidget.h"

#include <QDesignerFormEditorInterface>
#include <QExtensionManager>
#include <QtDesigner/private/ui4_p.h>

TableItemsExtraInfo::TableItemsExtraInfo(TableWidget *table, QDesignerFormEditorInterface *core, QObject *parent)
    : QObject(parent)
    , m_table(table)
    , m_core(core)
{
}

QWidget *TableItemsExtraInfo::widget() const { return m_table; }
bool TableItemsExtraInfo::saveUiExtraInfo(DomUI *) { return false; }
bool TableItemsExtraInfo::loadUiExtraInfo(DomUI *) { return false; }
bool TableItemsExtraInfo::loadWidgetExtraInfo(DomWidget *) { return false; }

namespace {
// A header saved with nothing but the number the table shows anyway is saved empty: one label per
// row of a long table would make every loader build a header item per row.
template <class Headers> void dropNumberLabels(const Headers &headers)
{
    for (int i = 0; i < int(headers.size()); ++i) {
        const auto properties = headers.at(i)->elementProperty();
        if (properties.size() == 1 && properties.first()->attributeName() == QLatin1String("text")
            && properties.first()->elementString()
            && properties.first()->elementString()->text() == QString::number(i + 1)) {
            headers.at(i)->setElementProperty({});
            qDeleteAll(properties);
        }
    }
}
} // namespace

bool TableItemsExtraInfo::saveWidgetExtraInfo(DomWidget *ui_widget)
{
    const auto items = ui_widget->elementItem();
    ui_widget->setElementItem({});
    qDeleteAll(items);
    dropNumberLabels(ui_widget->elementRow());
    dropNumberLabels(ui_widget->elementColumn());
    // The items may have changed since the property was last written (an edit not yet flushed).
    const QByteArray data = m_table->storedContents();
    const auto properties = ui_widget->elementProperty();
    for (DomProperty *property : properties) {
        if (property->attributeName() == QLatin1String("data")) {
            property->setElementCstring(QString::fromLatin1(data));
            return true;
        }
    }
    if (!data.isEmpty()) {
        auto *property = new DomProperty;
        property->setAttributeName(QStringLiteral("data"));
        property->setElementCstring(QString::fromLatin1(data));
        auto list = properties;
        list.append(property);
        ui_widget->setElementProperty(list);
    }
    return true;
}

TableItemsExtraInfoFactory::TableItemsExtraInfoFactory(QExtensionManager *parent)
    : QExtensionFactory(parent)
{
}

QObject *TableItemsExtraInfoFactory::createExtension(QObject *object, const QString &iid, QObject *parent) const
{
    auto *table = qobject_cast<TableWidget *>(object);
    if (!table || iid != Q_TYPEID(QDesignerExtraInfoExtension))
        return nullptr;
    auto *manager = qobject_cast<QExtensionManager *>(this->parent());
    QDesignerFormEditorInterface *core = manager ? qobject_cast<QDesignerFormEditorInterface *>(manager->parent()) : nullptr;
    return new TableItemsExtraInfo(table, core, parent);
}
