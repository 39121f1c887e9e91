#ifndef VISIBLEROWREGISTRAR_H
#define VISIBLEROWREGISTRAR_H

#include "bindingtext.h"
#include "hmiwidgets_export.h"

#include <QHash>
#include <QString>

class QTableWidget;
class QTableWidgetItem;
class QWidget;
namespace norvo_v0 {
class QeltApp;
class UpdateVariableInterface;
} // namespace norvo_v0

// Registers the bound cells of the rows on screen with the application: value cells with their
// channel, class, address and format (and shows their current value at once), bit cells with their
// bit address (their value arrives as an update). A cell's binding text is parsed once and kept
// until the text changes.
class HMIWIDGETS_EXPORT VisibleRowRegistrar
{
public:
    VisibleRowRegistrar(QTableWidget *table, norvo_v0::UpdateVariableInterface *callback);

    // The parsed binding of an item (a text cell for none).
    const BindingText &binding(const QTableWidgetItem *item);
    void clearCache() { m_cache.clear(); }
    int cacheSize() const { return int(m_cache.size()); }

    // Registers rows first ... last (clamped to the table), hidden columns left out; returns the
    // registrations made. Value cells show their current value, except in the rows registered by
    // the last call with scrolled set: scrolled on, those rows stay registered and already show it.
    int registerRows(norvo_v0::QeltApp *app, QWidget *form, int first, int last, bool scrolled = false);
    // The text a value cell shows for a raw value.
    static QString valueText(const BindingText &binding, int value);

private:
    // The same, for the item at a cell index known already (no look-up of its row and column).
    const BindingText &binding(const QTableWidgetItem *item, int index);

    struct Cached
    {
        QString text;
        BindingText binding;
    };

    QTableWidget *const m_table;
    norvo_v0::UpdateVariableInterface *const m_callback;
    QHash<int, Cached> m_cache; // by cell index
    int m_shownFirst = 0; // the rows registered by the last call
    int m_shownLast = -1;
    BindingText m_none;
};

#endif
