// Feeds arbitrary bytes to a bit button, a function button, a picture key, a parameter table, a tab
// widget, a grid splitter and an MDI area as a form would: the stored text and font buffers (the
// table's contents, spans and header texts), lists of any length (tabs, line positions, panel names),
// then language switches, count and panel changes, the designer-side text operations and one paint.
// Inputs are split at 0x1e bytes into the text buffer, the font buffer and the language indexes; the
// first byte picks whether the buffers arrive as given or hex-framed (so the stream readers see every
// input).
#include "fuzzapplication.h"
#include "PictureButton.h"
#include "bitbutton.h"
#include "functionbutton.h"
#include "gridsplitter.h"
#include "mdiarea.h"
#include "subwindow.h"
#include "hexframe.h"
#include "languagestate.h"
#include "norvointerface_z3.h"
#include "recordingqeltapp.h"
#include "tablewidget.h"
#include "tabwidget.h"

#include <QApplication>
#include <QDialog>
#include <QScrollBar>

#include <cstdint>

namespace {
QByteArray framed(const QByteArray &part, int mode)
{
    switch (mode % 3) {
    case 0: return part;
    case 1: return part.toHex();
    default: return qCompress(part).toHex();
    }
}

template <typename Button, typename Texts>
void exercise(Button &button, const QByteArray &textInfo, const QByteArray &map, const QByteArray &languages)
{
    button.SetTextInfoBuffer(textInfo);
    button.SetMapBuffer(map);
    for (char c : languages)
        button.updateLanguage(int(qint8(c)));
    Texts texts;
    button.getPluginNameAndTransText(texts);
    QList<QStringList> translated;
    for (int i = 0; i < 3 && i < languages.size(); ++i)
        translated << QStringList(QString::fromLatin1(languages.mid(i, 4)));
    button.setPluginTransText(translated);
    button.upDatePluginTextfromWordLib();
    (void)button.grab();
}

void exerciseTable(const QByteArray &contents, const QByteArray &spans, const QByteArray &headers,
                   const QByteArray &languages)
{
    RecordingQeltApp app;
    QDialog form;
    auto *table = new TableWidget(&form);
    table->setRowCount(40);
    table->setColumnCount(4);
    table->setData(contents);
    table->setMergeCells(spans);
    table->setHeaderTextInfoBuffer(headers);
    table->setMapBuffer(headers);
    table->setGeometry(0, 0, 200, 120);
    table->setQeltAppAndFormPtr(&app, &form);
    form.show();
    table->verticalScrollBar()->setValue(table->verticalScrollBar()->maximum());
    for (char c : languages) {
        table->updateLanguage(int(qint8(c)));
        table->updateData(int(qint8(c)) * 3, int(c));
        table->updateData(int(qint8(c)), QString::number(c));
    }
    QList<QList<TextData>> texts;
    table->getPluginNameAndTransText(texts);
    QList<QStringList> translated;
    for (int i = 0; i < texts.size() && i < 8; ++i)
        translated << QStringList(QString::fromLatin1(languages.left(4)));
    table->setPluginTransText(translated);
    (void)table->grab();
}
// A tab widget as a form gives it: text records, lists of any length, then counts, moves, authority,
// controller words and languages from the bytes.
void exerciseTabs(const QByteArray &textInfo, const QByteArray &lists, const QByteArray &languages)
{
    RecordingQeltApp app;
    QDialog form;
    auto *tabs = new TabWidget(&form);
    const QList<QByteArray> entries = lists.split(',');
    QStringList texts;
    for (const QByteArray &entry : entries)
        texts << QString::fromLatin1(entry);
    tabs->setTabsCount(entries.size() % 40);
    tabs->SetTextInfoBuffer(textInfo);
    tabs->setTabTexts(texts);
    tabs->setTabTextColors(texts.mid(1));
    tabs->setOperationalAuthoritys(texts.mid(2));
    tabs->setMultiTextList(texts.mid(3));
    tabs->setCurrentIndex(languages.isEmpty() ? 0 : int(qint8(languages.at(0))));
    tabs->setGeometry(0, 0, 200, 120);
    form.show();
    for (char c : languages) {
        const int n = int(qint8(c));
        switch (n & 7) {
        case 0: tabs->setTabsCount(n / 8); break;
        case 1: tabs->tabMoved(n % 5, (n / 5) % 5); break;
        case 2: tabs->updateAuthority(n); break;
        case 3: tabs->updateData(0, int(quint32(n) * 0x1010101u)); break;
        case 4: tabs->updateLanguage(n / 8); break;
        case 5: tabs->setCurrentTabOperationalAuthority(n); break;
        case 6: tabs->removeTab(n / 8); break;
        default: tabs->insertTab(n / 8); break;
        }
    }
    QList<QList<TextData>> records;
    tabs->getPluginNameAndTransText(records);
    QList<QStringList> translated{QStringList(QString::fromLatin1(languages.left(4)))};
    tabs->setPluginTransText(translated);
    (void)tabs->grab();
}
// A grid splitter and an MDI area as a form gives them: line positions of any length and text (the
// lines between columns before a ';', those between rows after it), panels of any names, then count,
// size, spacing and panel changes from the bytes.
void exerciseContainers(const QByteArray &lists, const QByteArray &steps)
{
    RecordingQeltApp app;
    QDialog form;
    auto *grid = new GridSplitter(&form);
    const QList<QByteArray> directions = lists.split(';');
    const auto texts = [](const QByteArray &list) {
        QStringList out;
        for (const QByteArray &entry : list.split(','))
            out << QString::fromLatin1(entry);
        return out;
    };
    grid->setLineHPos(texts(directions.value(0)));
    grid->setLineVPos(texts(directions.value(1)));
    grid->setColumnCount(int(texts(directions.value(0)).size()) + 1);
    grid->setRowCount(int(texts(directions.value(1)).size()) + 1);
    grid->setGeometry(0, 0, 240, 160);
    auto *area = new MdiArea(&form);
    area->setActiveSubWindow(QString::fromLatin1(directions.value(2)));
    const QStringList names = texts(directions.value(3));
    for (const QString &name : names.mid(0, 8))
        (new SubWindow(area))->setObjectName(name);
    area->setGeometry(0, 160, 200, 100);
    form.show();
    grid->setQeltAppAndFormPtr(&app, &form);
    area->setQeltAppAndFormPtr(&app, &form);
    for (char c : steps) {
        const int n = int(qint8(c));
        const QString name = names.value(qAbs(n) % qMax(1, int(names.size())));
        switch (n & 15) {
        case 0: grid->setColumnCount(n / 16); break;
        case 1: grid->setRowCount(n / 16); break;
        case 2: grid->setSameWidth(n & 16); break;
        case 3: grid->setSameHeight(n & 16); break;
        case 4: grid->resize(qAbs(n) * 3, qAbs(n) * 2); break;
        case 5: grid->setGridLineWidth(n); break;
        case 6: grid->setSpacing(n); break;
        case 7: grid->setLineHPos(texts(directions.value(n & 1))); break;
        case 8: area->addSubWindow(); break;
        case 9: area->setSubWindowVisible(name, n & 16); break;
        case 10: area->hideSubWindow(); break;
        case 11: area->setActiveSubWindow(name); break;
        case 12: area->setAutoHide(n & 16); break;
        case 13: area->removeSubWindow(name); break;
        case 14: area->resize(qAbs(n) * 2, qAbs(n)); break;
        default: grid->updateLanguage(n); break;
        }
    }
    (void)grid->lineHPos();
    (void)grid->lineVPos();
    (void)area->getSubwindows();
    (void)form.grab();
}
} // namespace

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    startFuzzApplication(argc, argv);
    NORVOInterface_Z3 *hmi = NORVOInterface_Z3::initialization();
    hmi->setSystemLanguages(perLanguage(10, QApplication::font().family()));
    hmi->setWordLibraryEntry(1, {QStringLiteral("one"), QStringLiteral("eins")});
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size < 1)
        return 0;
    const QList<QByteArray> parts = QByteArray(reinterpret_cast<const char *>(data + 1), int(size - 1)).split('\x1e');
    const QByteArray textInfo = framed(parts.value(0), data[0]);
    const QByteArray map = framed(parts.value(1), data[0] / 3);
    const QByteArray languages = parts.value(2).left(64);

    BitButton bit;
    bit.resize(120, 40);
    exercise<BitButton, QList<QList<TextData>>>(bit, textInfo, map, languages);
    FunctionButton function;
    function.resize(120, 40);
    exercise<FunctionButton, QList<TextData>>(function, textInfo, map, languages);
    PictureButton picture;
    picture.resize(120, 40);
    exercise<PictureButton, QList<TextData>>(picture, textInfo, map, languages);
    exerciseTable(textInfo, parts.value(1).toHex(), map, languages);
    exerciseTabs(textInfo, parts.value(1).left(400), languages);
    exerciseContainers(parts.value(1).left(400), languages);
    return 0;
}
