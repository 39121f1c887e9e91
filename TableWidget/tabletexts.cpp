#include "tabletexts.h"

#include "bindingtext.h"
#include "celllanguagetexts.h"
#include "headertexts.h"
#include "languagestate.h"
#include "tablesections.h"
#include "visiblerowregistrar.h"

#include <QTableWidget>

#include <algorithm>

namespace {
bool cellRecords(const QTableWidgetItem *item, QList<TextData> *records)
{
    const QVariant tip = item->data(Qt::StatusTipRole);
    return tip.userType() == QMetaType::QByteArray && CellLanguageTexts::decode(tip.toByteArray(), records)
        && !records->isEmpty();
}
} // namespace

TableTexts::TableTexts(QTableWidget *table, VisibleRowRegistrar *registrar, HeaderTexts *headers)
    : m_table(table)
    , m_registrar(registrar)
    , m_headers(headers)
{
}

bool TableTexts::isTextCell(QTableWidgetItem *item)
{
    return item && m_registrar->binding(item).kind == BindingText::Text;
}

void TableTexts::refresh(int firstRow, int lastRow, int language)
{
    for (int c = 0; c < m_table->columnCount(); ++c) {
        QTableWidgetItem *header = m_table->horizontalHeaderItem(c);
        if (!header)
            continue;
        if (m_headers->hasEntry(c)) {
            const TextData &record = m_headers->columns().at(c).first();
            if (language < record.texts.size())
                header->setText(record.texts.at(language));
            if (const auto font = m_headers->font(c, language))
                header->setFont(*font);
        } else {
            const QStringList multi = TableSections::multiTexts(header->whatsThis());
            if (language < multi.size() && !multi.at(language).isEmpty())
                header->setText(multi.at(language));
        }
    }
    firstRow = std::max(0, firstRow);
    lastRow = std::min(lastRow, m_table->rowCount() - 1);
    QList<TextData> records;
    for (int r = firstRow; r <= lastRow; ++r) {
        for (int c = 0; c < m_table->columnCount(); ++c) {
            QTableWidgetItem *item = m_table->item(r, c);
            if (!isTextCell(item))
                continue;
            if (cellRecords(item, &records)) {
                const TextData &record = records.first();
                if (const auto font = LanguageState::fontAt(record.fonts, language))
                    item->setFont(*font);
                if (language < record.texts.size())
                    item->setText(record.texts.at(language));
            } else {
                const QStringList multi = TableSections::multiTexts(item->whatsThis());
                if (language < multi.size())
                    item->setText(multi.at(language));
            }
        }
    }
}

void TableTexts::selectFirstSelectable()
{
    for (int r = 0; r < m_table->rowCount(); ++r) {
        for (int c = 0; c < m_table->columnCount(); ++c) {
            QTableWidgetItem *item = m_table->item(r, c);
            if (item && (item->flags() & Qt::ItemIsSelectable)) {
                m_table->setCurrentItem(item);
                return;
            }
        }
    }
}

QList<QTableWidgetItem *> TableTexts::translatableCells()
{
    QList<QTableWidgetItem *> cells;
    QList<TextData> records;
    for (int r = 0; r < m_table->rowCount(); ++r) {
        for (int c = 0; c < m_table->columnCount(); ++c) {
            QTableWidgetItem *item = m_table->item(r, c);
            if (isTextCell(item)
                && (cellRecords(item, &records) || !TableSections::multiTexts(item->whatsThis()).isEmpty()))
                cells.append(item);
        }
    }
    return cells;
}

QList<QList<TextData>> TableTexts::translatable()
{
    QList<QList<TextData>> out = m_headers->columns();
    QList<TextData> records;
    const QList<QTableWidgetItem *> cells = translatableCells();
    for (QTableWidgetItem *item : cells) {
        if (!cellRecords(item, &records)) {
            TextData record;
            record.texts = TableSections::multiTexts(item->whatsThis());
            records = {record};
        }
        out.append(records);
    }
    return out;
}

int TableTexts::applyTranslations(const QList<QStringList> &texts)
{
    QList<QList<TextData>> headers = m_headers->columns();
    int i = 0;
    for (; i < headers.size() && i < texts.size(); ++i) {
        if (headers[i].isEmpty())
            continue;
        // A text that comes from the word library is fetched again, not stored.
        headers[i].first().texts = headers[i].first().wordLibId == -1 ? texts.at(i) : QStringList();
    }
    m_headers->setColumns(headers);
    m_headers->refreshFromWordLibrary(false);
    QList<TextData> records;
    const QList<QTableWidgetItem *> cells = translatableCells();
    for (QTableWidgetItem *item : cells) {
        if (i >= texts.size())
            break;
        if (cellRecords(item, &records)) {
            records.first().texts = texts.at(i);
            item->setData(Qt::StatusTipRole, CellLanguageTexts::encode(records));
        } else {
            QStringList sections = item->whatsThis().split(TableSections::SectionSeparator);
            for (QString &section : sections) {
                if (section.contains(QLatin1String("multiTexts=")))
                    section = TableSections::compose(texts.at(i), QString());
            }
            item->setWhatsThis(sections.join(TableSections::SectionSeparator));
        }
        ++i;
    }
    return i;
}
