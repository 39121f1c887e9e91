// Captions and fonts per language, text records with their word-library links, and translations, one row
// per button class, each made by name and reached through its properties and the calls the panel and the
// translation tool make; then what only the picture key does with fonts and buffers.
#include "PictureButton.h"
#include "buttontestsupport.h"
#include "fakedesignerhost.h"
#include "hmiuiupdateinterface.h"
#include "norvointerface_z3.h"
#include "widgetfactory.h"

#include <QtTest>

#include <memory>
#include <tuple>

using namespace buttontest;

namespace {
// The bit button has two caption slots (on and off); the others one.
bool twoSlots(const QString &className) { return className == QLatin1String("BitButton"); }
QStringList textProperties(const QString &c) { return twoSlots(c) ? QStringList{"onText", "offText"} : QStringList{"text"}; }
QStringList listProperties(const QString &c) { return twoSlots(c) ? QStringList{"onTextList", "offTextList"} : QStringList{"textList"}; }
// The properties' values, lists joined with '|'.
QStringList read(const QWidget *w, const QStringList &properties)
{
    QStringList values;
    for (const QString &p : properties) {
        const QVariant v = w->property(qPrintable(p));
        values << (v.userType() == QMetaType::QStringList ? v.toStringList().join('|') : v.toString());
    }
    return values;
}
// A text buffer of one record per slot the class has.
QByteArray encode(const QString &c, const QList<TextData> &slotRecords)
{
    return twoSlots(c) ? TextInfoCodec::encodeSlots({{slotRecords.at(0)}, {slotRecords.at(1)}})
                       : TextInfoCodec::encodeSlot({slotRecords.at(0)});
}
QStringList transTexts(QWidget *w)
{
    auto *ui = dynamic_cast<Hmi_v0::HMI_UiUpdateInterface *>(w);
    QList<QList<TextData>> perSlot;
    QList<TextData> one;
    ui->getPluginNameAndTransText(perSlot);
    ui->getPluginNameAndTransText(one);
    QStringList out;
    for (const QList<TextData> &records : std::as_const(perSlot << one))
        for (const TextData &r : records)
            out << describeRecord(r);
    return out;
}
bool updateLanguage(QWidget *w, int index) { return QMetaObject::invokeMethod(w, "updateLanguage", Q_ARG(int, index)); }
} // namespace

class TestButtonTexts : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { NORVOInterface_Z3::initialization()->resetToDefaults(); }

    void languages_data()
    {
        QTest::addColumn<QString>("className"); QTest::addColumn<QList<QStringList>>("lists"); // one per slot
        // "lang N": the panel's language; "caption X": the first slot's caption; "list": lists L0..2 / M0..2
        QTest::addColumn<QStringList>("steps"); QTest::addColumn<QStringList>("expected"); // captions shown
        using Lists = QList<QStringList>;
        const auto row = [](const char *className, const char *name, const Lists &lists, const char *steps, const char *expected) {
            QTest::addRow("%s: %s", className, name) << className << lists << QString(steps).split(", ") << QString(expected).split('|');
        };
        const Lists bit{{"On0", "On1", "On2"}, {"Off0", "Off1", "Off2"}};
        const Lists one{{"L0", "L1", "L2"}};
        row("BitButton", "first change to the current language applies", bit, "lang 0", "On0|Off0");
        row("BitButton", "second change to the same language does nothing", bit, "lang 0, caption X, lang 0", "X|Off0");
        row("BitButton", "change to another language", bit, "lang 0, caption X, lang 2", "On2|Off2");
        row("BitButton", "empty lists keep ON/OFF", {{}, {}}, "lang 0, lang 1", "ON|OFF");
        row("BitButton", "still pending after empty lists", {{}, {}}, "lang 0, list, lang 0", "L0|M0");
        row("BitButton", "ignored index keeps the language pending", bit, "lang 3, lang 0", "On0|Off0");
        row("BitButton", "short list keeps its caption", {{"On0"}, bit.at(1)}, "lang 2", "ON|Off2");
        // The function button starts at language 9, so that its lists stay as given.
        row("FunctionButton", "first change applies", one, "lang 0", "L0");
        row("FunctionButton", "second change to the same language does nothing", one, "lang 0, caption X, lang 0", "X");
        row("FunctionButton", "change to another language", one, "lang 0, caption X, lang 2", "L2");
        row("FunctionButton", "empty list changes nothing", {{}}, "lang 1", "init");
        row("FunctionButton", "still pending after an empty list", {{}}, "lang 0, list, lang 0", "L0");
        row("FunctionButton", "ignored index keeps the language pending", one, "lang 3, lang 0", "L0");
        // A caption typed on a keypad key fills every language; a later one leaves the list.
        row("KeypadButton", "caption fills every language", {{}}, "caption 7, caption 8, lang 1", "7");
        row("KeypadButton", "change to another language", one, "lang 1", "L1");
        row("KeypadButton", "same language does nothing, out of range ignored", one, "lang 1, caption X, lang 10, lang -1, lang 1", "X");
        row("KeypadButton", "past the list keeps the caption", one, "caption X, lang 5", "X");
        row("KeypadButton", "still pending after an empty list", {{}}, "lang 1, list, lang 1", "L1");
    }

    void languages()
    {
        QFETCH(QString, className); QFETCH(QList<QStringList>, lists); QFETCH(QStringList, steps); QFETCH(QStringList, expected);
        NORVOInterface_Z3::initialization()->setSystemLanguages({"Sans", "Sans", "Sans"});
        std::unique_ptr<QWidget> w(WidgetFactory::create(className, nullptr));
        const QStringList listProps = listProperties(className);
        const QStringList textProps = textProperties(className);
        if (className == "FunctionButton") {
            w->setProperty("text", "init");
            w->setProperty("language", 9);
        }
        for (int i = 0; i < listProps.size(); ++i)
            w->setProperty(qPrintable(listProps.at(i)), lists.at(i));
        for (const QString &step : std::as_const(steps)) {
            const QString arg = step.section(' ', 1);
            if (step.startsWith("lang")) {
                QVERIFY(updateLanguage(w.get(), arg.toInt()));
            } else if (step.startsWith("caption")) {
                w->setProperty(qPrintable(textProps.first()), arg);
            } else {
                for (int i = 0; i < listProps.size(); ++i)
                    w->setProperty(qPrintable(listProps.at(i)), QStringList{"L0", "L1", "L2"}.replaceInStrings("L", i ? "M" : "L"));
            }
        }
        QCOMPARE(read(w.get(), textProps), expected);
    }

    void languageFonts_data()
    {
        QTest::addColumn<QString>("className"); QTest::addColumn<QList<int>>("recordFonts"); // point sizes
        QTest::addColumn<QList<int>>("mapKeys"); // languages the caption font map holds, at 23 pt + the key
        QTest::addColumn<int>("language"); QTest::addColumn<int>("expected"); // point size; the widget's own is 11
        QTest::newRow("BitButton: record font") << "BitButton" << QList<int>{12, 13} << QList<int>{2} << 1 << 13;
        QTest::newRow("BitButton: short record list falls back to the map") << "BitButton" << QList<int>{12} << QList<int>{1, 2} << 1 << 24;
        QTest::newRow("BitButton: map only") << "BitButton" << QList<int>{} << QList<int>{1, 2} << 1 << 24;
        QTest::newRow("BitButton: neither keeps the font") << "BitButton" << QList<int>{} << QList<int>{2} << 1 << 11;
        QTest::newRow("FunctionButton: record font") << "FunctionButton" << QList<int>{12, 13} << QList<int>{} << 1 << 13;
        QTest::newRow("FunctionButton: record fonts without this language keep the font")
            << "FunctionButton" << QList<int>{12} << QList<int>{0, 1} << 1 << 12;
        QTest::newRow("FunctionButton: map only") << "FunctionButton" << QList<int>{} << QList<int>{0, 1} << 1 << 24;
        QTest::newRow("FunctionButton: neither keeps the font") << "FunctionButton" << QList<int>{} << QList<int>{} << 1 << 11;
        QTest::newRow("PictureButton: record font") << "PictureButton" << QList<int>{11, 12, 13} << QList<int>{1} << 2 << 13;
        QTest::newRow("PictureButton: no record fonts, map entry") << "PictureButton" << QList<int>{} << QList<int>{1} << 1 << 24;
        QTest::newRow("PictureButton: no record fonts, no map entry: the initial font") << "PictureButton" << QList<int>{}
                                                                                        << QList<int>{1} << 2 << 11;
    }

    void languageFonts()
    {
        QFETCH(QString, className); QFETCH(QList<int>, recordFonts); QFETCH(QList<int>, mapKeys); QFETCH(int, language);
        QFETCH(int, expected);
        NORVOInterface_Z3::initialization()->setSystemLanguages({"Sans", "Sans", "Sans"});
        std::unique_ptr<QWidget> w(WidgetFactory::create(className, nullptr));
        QMap<int, QFont> map;
        for (int key : std::as_const(mapKeys))
            map.insert(key, sizedFont(23 + key));
        if (!map.isEmpty())
            w->setProperty("MapBuffer", fontMapBuffer(map));
        w->setProperty("font", sizedFont(11));
        w->setProperty("textInfoBuffer", encode(className, {record(-1, {"T0", "T1", "T2"}, recordFonts, -1), record(-1, {"F0", "F1", "F2"})}));
        QVERIFY(updateLanguage(w.get(), language));
        QCOMPARE(read(w.get(), textProperties(className)).first(), QStringLiteral("T%1").arg(language));
        QCOMPARE(w->font().pointSize(), expected);
        QVERIFY(updateLanguage(w.get(), 7)); // not a configured language
        QCOMPARE(read(w.get(), textProperties(className)).first(), QStringLiteral("T%1").arg(language));
    }

    void wordLibrary_data()
    {
        QTest::addColumn<QString>("className"); QTest::addColumn<int>("wordLibId"); // -2: no text record
        QTest::addColumn<QStringList>("libraryAtLoad"); QTest::addColumn<QStringList>("libraryAtRefresh"); // entry 5; empty: none
        QTest::addColumn<QStringList>("loaded"); QTest::addColumn<QStringList>("refreshed"); // lists, as read()
        QTest::addColumn<QStringList>("captions");
        // Library entries as "W0|W1"; lists and captions as read() gives them, joined by ", ".
        const auto row = [](const char *className, const char *name, int id, const char *atLoad, const char *atRefresh,
                            const char *loaded, const char *refreshed, const char *captions) {
            QTest::addRow("%s: %s", className, name) << className << id << QString(atLoad).split('|', Qt::SkipEmptyParts)
                << QString(atRefresh).split('|', Qt::SkipEmptyParts) << QString(loaded).split(", ")
                << QString(refreshed).split(", ") << QString(captions).split(", ");
        };
        row("BitButton", "library texts replace the record's", 5, "W0|W1", "N0|N1", "W0|W1, Off0|Off1", "N0|N1, Off0|Off1", "N0, OFF");
        row("BitButton", "unknown id keeps the record's texts, refresh empties", 5, "", "", "R0|R1, Off0|Off1", ", Off0|Off1", ", OFF");
        row("BitButton", "entry removed later empties", 5, "W0|W1", "", "W0|W1, Off0|Off1", ", Off0|Off1", ", OFF");
        row("BitButton", "record without id is left alone", -1, "W0|W1", "N0|N1", "R0|R1, Off0|Off1", "R0|R1, Off0|Off1", "ON, OFF");
        row("FunctionButton", "library texts replace", 5, "W0|W1", "N0|N1", "W0|W1", "N0|N1", "N0");
        row("FunctionButton", "missing entry empties", 5, "W0|W1", "", "W0|W1", "", "");
        row("FunctionButton", "record without id left alone", -1, "W0|W1", "N0|N1", "R0|R1", "R0|R1", "R0");
        row("FunctionButton", "no record left alone", -2, "W0|W1", "N0|N1", "i0|i1", "i0|i1", "i0");
    }

    void wordLibrary()
    {
        QFETCH(QString, className); QFETCH(int, wordLibId); QFETCH(QStringList, libraryAtLoad); QFETCH(QStringList, libraryAtRefresh);
        QFETCH(QStringList, loaded); QFETCH(QStringList, refreshed); QFETCH(QStringList, captions);
        NORVOInterface_Z3 *hmi = NORVOInterface_Z3::initialization();
        if (!libraryAtLoad.isEmpty())
            hmi->setWordLibraryEntry(5, libraryAtLoad);
        std::unique_ptr<QWidget> w(WidgetFactory::create(className, nullptr));
        if (!twoSlots(className)) {
            w->setProperty("text", "i0");
            w->setProperty("textList", QStringList{"i0", "i1"});
        }
        if (wordLibId != -2)
            w->setProperty("textInfoBuffer", encode(className, {record(wordLibId, {"R0", "R1"}), record(-1, {"Off0", "Off1"})}));
        QCOMPARE(read(w.get(), listProperties(className)), loaded);
        hmi->setWordLibrary({});
        if (!libraryAtRefresh.isEmpty())
            hmi->setWordLibraryEntry(5, libraryAtRefresh);
        dynamic_cast<Hmi_v0::HMI_UiUpdateInterface *>(w.get())->upDatePluginTextfromWordLib();
        QCOMPARE(read(w.get(), listProperties(className)), refreshed);
        QCOMPARE(read(w.get(), textProperties(className)), captions);
    }

    void translatedTexts_data()
    {
        QTest::addColumn<QString>("className"); QTest::addColumn<bool>("designer");
        QTest::addColumn<int>("recordId"); // of the first slot's record; -2: no records (a second slot's has id 5)
        QTest::addColumn<QString>("property"); // committed in Designer
        QTest::addColumn<QStringList>("lists");
        // Each case at run time and in Designer, where the property named is committed.
        const QList<std::tuple<const char *, const char *, int, const char *, QStringList>> cases{
            {"BitButton", "caption lists", -2, "onTextList", {"T0|T1", "U0|U1"}},
            {"BitButton", "text records", -1, "textInfoBuffer", {"T0|T1", "L0|L1"}},
            {"FunctionButton", "caption list", -2, "textList", {"T0|T1"}},
            {"FunctionButton", "record", -1, "textInfoBuffer", {"T0|T1"}},
            {"FunctionButton", "record from the library", 5, "textInfoBuffer", {"L0|L1"}}};
        for (const auto &[className, name, recordId, property, lists] : cases) {
            for (const bool designer : {false, true})
                QTest::addRow("%s, %s, %s", className, designer ? "designer" : "run time", name)
                    << className << designer << recordId << QString(property) << lists;
        }
    }

    void translatedTexts()
    {
        QFETCH(QString, className); QFETCH(bool, designer); QFETCH(int, recordId); QFETCH(QString, property); QFETCH(QStringList, lists);
        NORVOInterface_Z3::initialization()->setWordLibraryEntry(5, {"L0", "L1"});
        QWidget formWindow;
        std::unique_ptr<FakeDesignerHost> host(designer ? new FakeDesignerHost(&formWindow) : nullptr);
        QWidget *w = WidgetFactory::create(className, &formWindow);
        w->setProperty(qPrintable(textProperties(className).first()), "T0");
        const QList<TextData> records{record(recordId, {"A0", "A1"}, {12}), record(5, {"B0", "B1"})};
        if (recordId != -2)
            w->setProperty("textInfoBuffer", encode(className, records));
        if (host)
            host->log.clear();
        QList<QStringList> texts = QList<QStringList>{{"T0", "T1"}, {"U0", "U1"}}.mid(0, lists.size());
        dynamic_cast<Hmi_v0::HMI_UiUpdateInterface *>(w)->setPluginTransText(texts);
        QCOMPARE(read(w, listProperties(className)), lists);
        QStringList captions;
        for (const QString &list : std::as_const(lists))
            captions << list.section('|', 0, 0);
        QCOMPARE(read(w, textProperties(className)), captions);
        if (recordId != -2) {
            // A record with a word-library id is stored without texts.
            QList<QList<TextData>> stored{{}};
            const QByteArray buffer = w->property("textInfoBuffer").toByteArray();
            QVERIFY(twoSlots(className) ? TextInfoCodec::decodeSlots(buffer, &stored) : TextInfoCodec::decodeSlot(buffer, &stored[0]));
            QStringList handed; // to the translation tool: the texts shown
            for (int i = 0; i < lists.size(); ++i) {
                const TextData &r = records.at(i);
                const QList<int> fonts = i ? QList<int>() : QList<int>{12};
                QCOMPARE(describeRecord(stored.at(i).first()), describeRecord(record(r.wordLibId, r.wordLibId == 5 ? QStringList() : texts.at(i), fonts)));
                handed << describeRecord(record(r.wordLibId, lists.at(i).split('|'), fonts));
            }
            QCOMPARE(transTexts(w), handed);
        } else {
            QCOMPARE(w->property("textInfoBuffer").toByteArray(), QByteArray());
        }
        if (!host)
            return;
        QCOMPARE(host->log, QStringList({"clearSelection", "select", "setUndoableProperty", "deselect"}));
        QCOMPARE(int(host->changes.size()), 1);
        const auto &change = host->changes.first();
        QCOMPARE((QVariantList{change.widget == w, change.name, change.undoable, change.value}),
                 (QVariantList{true, property, true, w->property(qPrintable(property))}));
    }
};

QTEST_MAIN(TestButtonTexts)
#include "tst_buttontexts.moc"
