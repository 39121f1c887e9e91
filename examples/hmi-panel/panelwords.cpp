#include "panelwords.h"

#include "norvointerface_z3.h"

#include <iterator>

namespace {
struct BuiltIn
{
    const char *english;
    const char *german;
};

// In the order of PanelWords::Word.
constexpr BuiltIn builtIn[] = {
    {"Language:", "Sprache:"},
    {"Operator authority:", "Bedienberechtigung:"},
    {"Smaller is stronger; a widget needing authority N takes operators 1 ... N.",
     "Kleiner ist st\u00e4rker; ein Element mit Berechtigung N nimmt Bediener 1 ... N an."},
    {"Find...", "Suchen..."},
    {"Text in a cell:", "Text in einer Zelle:"},
    {"Find next", "Weitersuchen"},
    {"Jump...", "Springen..."},
    {"Files", "Dateien"},
    {"Load table file...", "Tabellendatei laden..."},
    {"Save table file...", "Tabellendatei speichern..."},
    {"Show NC program...", "NC-Programm anzeigen..."},
    {"Save NC program...", "NC-Programm speichern..."},
    {"Table files (*.txt *.tsv);;All files (*)", "Tabellendateien (*.txt *.tsv);;Alle Dateien (*)"},
    {"NC programs (*.nc *.mpf *.txt);;All files (*)", "NC-Programme (*.nc *.mpf *.txt);;Alle Dateien (*)"},
    {"This operation needs authority %1 or stronger.", "Diese Bedienung braucht Berechtigung %1 oder st\u00e4rker."},
    {"No table on screen to search.", "Keine Tabelle zum Durchsuchen auf dem Bildschirm."},
    {"Operator panel", "Bedienfeld"},
    {"%1 reloaded.", "%1 neu geladen."},
    {"%1 not reloaded, the last good form stays: %2", "%1 nicht neu geladen, die letzte gute Maske bleibt: %2"},
    {"%1 (and %2 more on stderr)", "%1 (und %2 weitere auf stderr)"},
};
static_assert(std::size(builtIn) == PanelWords::End - PanelWords::FirstId, "one text pair per word");
} // namespace

QMap<int, QStringList> PanelWords::withPanelWords(QMap<int, QStringList> library)
{
    for (int id = FirstId; id < End; ++id) {
        const BuiltIn &word = builtIn[id - FirstId];
        if (!library.contains(id))
            library.insert(id, {QString::fromUtf8(word.english), QString::fromUtf8(word.german)});
    }
    return library;
}

QString PanelWords::text(Word word)
{
    const NORVOInterface_Z3 *hmi = NORVOInterface_Z3::initialization();
    QStringList texts;
    if (!hmi->getWordLibraryDatasUsedId(word, texts) || texts.isEmpty())
        texts = withPanelWords({}).value(word);
    const int language = hmi->currentLanguageIndex();
    const QString text = language < texts.size() ? texts.at(language) : QString();
    return text.isEmpty() ? texts.constFirst() : text;
}

QString PanelWords::title(Word word)
{
    QString out = text(word);
    if (out.endsWith(QLatin1String("...")))
        out.chop(3);
    return out;
}
