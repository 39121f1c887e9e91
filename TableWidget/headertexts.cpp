#include "headertexts.h"

#include "languagestate.h"
#include "tablesections.h"
#include "textinfocodec.h"

#include <QTableWidget>

bool HeaderTexts::decode(const QByteArray &buffer)
{
    m_columns.clear();
    if (buffer.isEmpty())
        return true;
    TextInfoLimits limits;
    limits.slotCount = MaxColumns;
    limits.recordCount = TextData::MaxLanguages;
    return TextInfoCodec::decodeSlots(buffer, &m_columns, limits);
}

QByteArray HeaderTexts::encode() const
{
    return m_columns.isEmpty() ? QByteArray() : TextInfoCodec::encodeSlots(m_columns);
}

bool HeaderTexts::hasEntry(int column) const
{
    return column >= 0 && column < m_columns.size() && !m_columns.at(column).isEmpty();
}

QString HeaderTexts::text(int column, int language) const
{
    return hasEntry(column) ? LanguageState::textAt(m_columns.at(column).first().texts, language) : QString();
}

std::optional<QFont> HeaderTexts::font(int column, int language) const
{
    if (!hasEntry(column))
        return std::nullopt;
    return LanguageState::fontAt(m_columns.at(column).first().fonts, language);
}

void HeaderTexts::refreshFromWordLibrary(bool clearMissing)
{
    for (QList<TextData> &records : m_columns) {
        if (records.isEmpty() || records.first().wordLibId == -1)
            continue;
        if (!LanguageState::refreshFromWordLibrary(records.first()) && clearMissing)
            records.first().texts.clear();
    }
}

void HeaderTexts::buildFrom(const QTableWidget *table, int languageCount)
{
    m_columns.clear();
    for (int c = 0; c < table->columnCount(); ++c) {
        const QTableWidgetItem *header = table->horizontalHeaderItem(c);
        TextData record;
        if (header) {
            const QStringList multi = TableSections::multiTexts(header->whatsThis());
            record.texts = multi.isEmpty() ? QStringList(perLanguage(languageCount, header->text())) : multi;
            record.fonts = perLanguage(languageCount, header->font());
        }
        m_columns.append({record});
    }
}

void HeaderTexts::trimTo(int columnCount)
{
    while (m_columns.size() > columnCount)
        m_columns.removeLast();
}
