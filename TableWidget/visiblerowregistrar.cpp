#include "visiblerowregistrar.h"

#include "qeltapp.h"
#include "valueformatter.h"

#include <QTableWidget>

#include <algorithm>

using norvo_v0::QeltApp;

VisibleRowRegistrar::VisibleRowRegistrar(QTableWidget *table, norvo_v0::UpdateVariableInterface *callback)
    : m_table(table)
    , m_callback(callback)
{
}

const BindingText &VisibleRowRegistrar::binding(const QTableWidgetItem *item)
{
    return item ? binding(item, item->row() * m_table->columnCount() + item->column()) : m_none;
}

const BindingText &VisibleRowRegistrar::binding(const QTableWidgetItem *item, int index)
{
    if (!item)
        return m_none;
    const QString text = item->whatsThis();
    if (text.isEmpty())
        return m_none;
    auto it = m_cache.find(index);
    if (it == m_cache.end() || it->text != text)
        it = m_cache.insert(index, {text, BindingText::parse(text)});
    return it->binding;
}

QString VisibleRowRegistrar::valueText(const BindingText &binding, int value)
{
    // The same text the application sends with later updates, so a hex or binary cell does not show
    // a decimal number until its value first changes.
    return ValueFormatter::format(value, binding.sizeCode, binding.radix, binding.width, binding.decimals).trimmed();
}

int VisibleRowRegistrar::registerRows(QeltApp *app, QWidget *form, int first, int last, bool scrolled)
{
    if (!app)
        return 0;
    const int columns = m_table->columnCount();
    first = std::max(first, 0);
    last = std::min(last, m_table->rowCount() - 1);
    const int shownFirst = scrolled ? m_shownFirst : 0;
    const int shownLast = scrolled ? m_shownLast : -1;
    m_shownFirst = first;
    m_shownLast = last;
    int made = 0;
    for (int r = first; r <= last; ++r) {
        const bool shown = r >= shownFirst && r <= shownLast;
        for (int c = 0; c < columns; ++c) {
            if (m_table->isColumnHidden(c))
                continue;
            QTableWidgetItem *item = m_table->item(r, c);
            const int index = r * columns + c;
            const BindingText &b = binding(item, index);
            if (b.kind == BindingText::Value) {
                app->registerUIVariable(form, m_table, m_callback, index, b.comId, b.channel, b.dataClass, b.address,
                                        -1, 0, b.sizeCode, b.radix, b.width, b.decimals, 0, true);
                if (!shown) {
                    const int value = app->getData(b.channel, QeltApp::DataClass(b.dataClass), b.address, b.comId);
                    item->setText(valueText(b, value));
                }
                ++made;
            } else if (b.kind == BindingText::Bit) {
                app->registerUIVariable(form, m_table, m_callback, index, b.comId, b.channel, 0, b.address, b.bitType,
                                        b.bitIndex, 1, 10, 10, 0, 0, false);
                ++made;
            }
        }
    }
    return made;
}
