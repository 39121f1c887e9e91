#include "designeritemsync.h"

#include "designerhost.h"
#include "tablecontents.h"

#include <QTableWidget>
#include <QTimer>

const QString DesignerItemSync::RecordsMarker = QStringLiteral("TextData:");

DesignerItemSync::DesignerItemSync(QTableWidget *table)
    : QObject(table)
    , m_table(table)
{
    QAbstractItemModel *model = table->model();
    connect(model, &QAbstractItemModel::dataChanged, this, &DesignerItemSync::schedule);
    connect(model, &QAbstractItemModel::rowsInserted, this, &DesignerItemSync::schedule);
    connect(model, &QAbstractItemModel::rowsRemoved, this, &DesignerItemSync::schedule);
    connect(model, &QAbstractItemModel::columnsInserted, this, &DesignerItemSync::schedule);
    connect(model, &QAbstractItemModel::columnsRemoved, this, &DesignerItemSync::schedule);
    connect(model, &QAbstractItemModel::modelReset, this, &DesignerItemSync::schedule);
    labelHeaders();
}

void DesignerItemSync::labelHeaders()
{
    for (int c = 0; c < m_table->columnCount(); ++c) {
        if (!m_table->horizontalHeaderItem(c)) {
            auto *header = new QTableWidgetItem(QString::number(c + 1));
            expose(header);
            m_table->setHorizontalHeaderItem(c, header);
        }
    }
    for (int r = 0; r < m_table->rowCount(); ++r) {
        if (!m_table->verticalHeaderItem(r)) {
            auto *header = new QTableWidgetItem(QString::number(r + 1));
            expose(header);
            m_table->setVerticalHeaderItem(r, header);
        }
    }
}

void DesignerItemSync::expose(QTableWidgetItem *item)
{
    const QVariant tip = item->data(Qt::StatusTipRole);
    if (tip.userType() == QMetaType::QByteArray)
        item->setStatusTip(RecordsMarker + QString::fromLatin1(tip.toByteArray().toHex()));
    if (DesignerHost *host = DesignerHost::instance())
        host->exposeItemToEditor(item);
}

QByteArray DesignerItemSync::encode(const QTableWidget *table)
{
    QList<QList<const QTableWidgetItem *>> rows;
    std::vector<std::unique_ptr<QTableWidgetItem>> converted;
    for (int r = 0; r < table->rowCount(); ++r) {
        QList<const QTableWidgetItem *> row;
        for (int c = 0; c < table->columnCount(); ++c) {
            const QTableWidgetItem *item = table->item(r, c);
            if (item && item->statusTip().startsWith(RecordsMarker)) {
                auto copy = std::make_unique<QTableWidgetItem>(*item);
                copy->setData(Qt::StatusTipRole,
                              QByteArray::fromHex(item->statusTip().mid(RecordsMarker.size()).toLatin1()));
                item = copy.get();
                converted.push_back(std::move(copy));
            }
            row.append(item);
        }
        rows.append(row);
    }
    return TableContents::encode(table->rowCount(), table->columnCount(), rows);
}

void DesignerItemSync::schedule()
{
    if (m_suspended || m_pending)
        return;
    m_pending = true;
    // Designer's item editor rebuilds every item in one go: encode once afterwards.
    QTimer::singleShot(0, this, [this] { flush(); });
}

QByteArray DesignerItemSync::flush()
{
    const QByteArray data = encode(m_table);
    if (!m_pending)
        return data;
    m_pending = false;
    labelHeaders(); // rows or columns may have come without one
    emit encoded(data);
    if (DesignerHost *host = DesignerHost::instance()) {
        host->setSheetProperty(m_table, QStringLiteral("data"), data);
        host->markPropertyChanged(m_table, QStringLiteral("data"));
    }
    return data;
}
