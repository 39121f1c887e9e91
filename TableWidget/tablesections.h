#ifndef TABLESECTIONS_H
#define TABLESECTIONS_H

#include "hmiwidgets_export.h"

#include <QString>
#include <QStringList>

// The sections a header's (or a text cell's) what's-this text carries besides a binding: sections
// separated by "##8!&*_", one beginning "multiTexts=" with the texts per language separated by
// "##!&*_", one beginning "columnWidth=" with a width in pixels.
namespace TableSections {

HMIWIDGETS_EXPORT extern const QString SectionSeparator;
HMIWIDGETS_EXPORT extern const QString LanguageSeparator;

// The texts of the first section containing "multiTexts=", everything after the marker; empty
// when there is none.
HMIWIDGETS_EXPORT QStringList multiTexts(const QString &text);
// The text after "columnWidth=" in the first section containing it; empty when there is none.
HMIWIDGETS_EXPORT QString columnWidth(const QString &text);
// The two sections joined as a header's what's-this text (absent parts left out).
HMIWIDGETS_EXPORT QString compose(const QStringList &texts, const QString &width);

} // namespace TableSections

#endif
