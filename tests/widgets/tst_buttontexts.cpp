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

using namespace buttontest;

namespace {
// The bit button has two caption slots (on and off); the others one.
bool twoSlots(const QString &className) { return className == QLatin1String("BitButton"); }
QStringList textProperties(const QString &c) { return twoSlots(c) ? QStringList{"onText", "offText"} : QStringList{"text"}; }
QStringList listProperties(const QString &c)
{
    return twoSlots(c) ? QStringList{"onTextList", "offTextList"} : QStringList{"textList"};
}
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
        const Lists bit{{"On0", "On1", "On2"}, {"Off0", "Off1", "Off2"}};
        const Lists one{{"L0", "L1", "L2"}};
        QTest::newRow("BitButton: first change to the current language applies") << "BitButton" << bit << QStringList{"lang 0"}
                                                                                 << QStringList{"On0", "Off0"};
        QTest::newRow("BitButton: second change to the same language does nothing")
            << "BitButton" << bit << QStringList{"lang 0", "caption X", "lang 0"} << QStringList{"X", "Off0"};
        QTest::newRow("BitButton: change to another language") << "BitButton" << bit << QStringList{"lang 0", "caption X", "lang 2"}
                                                               << QStringList{"On2", "Off2"};
        QTest::newRow("BitButton: empty lists keep ON/OFF") << "BitButton" << Lists{{}, {}} << QStringList{"lang 0", "lang 1"}
                                                            << QStringList{"ON", "OFF"};
        QTest::newRow("BitButton: still pending after empty lists") << "BitButton" << Lists{{}, {}}
                                                                    << QStringList{"lang 0", "list", "lang 0"} << QStringList{"L0", "M0"};
        QTest::newRow("BitButton: ignored index keeps the language pending") << "BitButton" << bit << QStringList{"lang 3", "lang 0"}
                                                                             << QStringList{"On0", "Off0"};
        QTest::newRow("BitButton: short list keeps its caption") << "BitButton" << Lists{{"On0"}, bit.at(1)} << QStringList{"lang 2"}
                                                                 << QStringList{"ON", "Off2"};
        // The function button starts at language 9, so that its lists stay as given.
        QTest::newRow("FunctionButton: first change applies") << "FunctionButton" << one << QStringList{"lang 0"} << QStringList{"L0"};
        QTest::newRow("FunctionButton: second change to the same language does nothing")
            << "FunctionButton" << one << QStringList{"lang 0", "caption X", "lang 0"} << QStringList{"X"};
        QTest::newRow("FunctionButton: change to another language") << "FunctionButton" << one
                                                                    << QStringList{"lang 0", "caption X", "lang 2"} << QStringList{"L2"};
        QTest::newRow("FunctionButton: empty list changes nothing") << "FunctionButton" << Lists{{}} << QStringList{"lang 1"}
                                                                    << QStringList{"init"};
        QTest::newRow("FunctionButton: still pending after an empty list") << "FunctionButton" << Lists{{}}
                                                                           << QStringList{"lang 0", "list", "lang 0"} << QStringList{"L0"};
        QTest::newRow("FunctionButton: ignored index keeps the language pending") << "FunctionButton" << one
                                                                                  << QStringList{"lang 3", "lang 0"} << QStringList{"L0"};
        // A caption typed on a keypad key fills every language; a later one leaves the list.
        QTest::newRow("KeypadButton: caption fills every language") << "KeypadButton" << Lists{{}}
                                                                    << QStringList{"caption 7", "caption 8", "lang 1"} << QStringList{"7"};
        QTest::newRow("KeypadButton: change to another language") << "KeypadButton" << one << QStringList{"lang 1"} << QStringList{"L1"};
        QTest::newRow("KeypadButton: same language does nothing, out of range ignored")
            << "KeypadButton" << one << QStringList{"lang 1", "caption X", "lang 10", "lang -1", "lang 1"} << QStringList{"X"};
        QTest::newRow("KeypadButton: past the list keeps the caption") << "KeypadButton" << one << QStringList{"caption X", "lang 5"}
                                                                       << QStringList{"X"};
        QTest::newRow("KeypadButton: still pending after an empty list") << "KeypadButton" << Lists{{}}
                                                                         << QStringList{"lang 1", "list", "lang 1"} << QStringList{"L1"};
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

    void textInfoRoundTrip_data()
    {
        QTest::addColumn<QString>("className");
        QTest::newRow("BitButton") << "BitButton";
        QTest::newRow("FunctionButton") << "FunctionButton";
    }

    // Records read from a buffer, translated, written to a new buffer that another button reads back unchanged.
    void textInfoRoundTrip()
    {
        QFETCH(QString, className);
        NORVOInterface_Z3::initialization()->setSystemLanguages({"Sans", "Serif"});
        const QList<TextData> records{record(-1, {"An", "On"}, {12, 13}, 3, 4), record(-1, {"Aus", "Off"}, {14, 15})};
        const QStringList listProps = listProperties(className);
        std::unique_ptr<QWidget> first(WidgetFactory::create(className, nullptr));
        first->setProperty("textInfoBuffer", encode(className, records));
        QCOMPARE(read(first.get(), listProps), QStringList({"An|On", "Aus|Off"}).mid(0, listProps.size()));
        QCOMPARE(first->font().pointSize(), 12);
        QList<QStringList> translated = QList<QStringList>{{"Ein", "On!"}, {"Aus!", "Off!"}}.mid(0, listProps.size());
        dynamic_cast<Hmi_v0::HMI_UiUpdateInterface *>(first.get())->setPluginTransText(translated);
        std::unique_ptr<QWidget> second(WidgetFactory::create(className, nullptr));
        second->setProperty("textInfoBuffer", first->property("textInfoBuffer"));
        QList<TextData> expected = records.mid(0, listProps.size());
        QStringList described;
        for (int i = 0; i < expected.size(); ++i) {
            expected[i].texts = translated.at(i);
            described << describeRecord(expected.at(i));
        }
        QCOMPARE(transTexts(first.get()), described);
        QCOMPARE(transTexts(second.get()), described);
        QCOMPARE(read(second.get(), listProps), QStringList({"Ein|On!", "Aus!|Off!"}).mid(0, listProps.size()));
        QVERIFY(updateLanguage(second.get(), 1));
        QCOMPARE(read(second.get(), textProperties(className)).first(), QStringLiteral("On!"));
        QCOMPARE(second->font().pointSize(), 13);
    }

    void wordLibrary_data()
    {
        QTest::addColumn<QString>("className"); QTest::addColumn<int>("wordLibId"); // -2: no text record
        QTest::addColumn<QStringList>("libraryAtLoad"); QTest::addColumn<QStringList>("libraryAtRefresh"); // entry 5; empty: none
        QTest::addColumn<QStringList>("loaded"); QTest::addColumn<QStringList>("refreshed"); // lists, as read()
        QTest::addColumn<QStringList>("captions");
        const QStringList w{"W0", "W1"}, n{"N0", "N1"};
        QTest::newRow("BitButton: library texts replace the record's") << "BitButton" << 5 << w << n << QStringList{"W0|W1", "Off0|Off1"}
                                                                       << QStringList{"N0|N1", "Off0|Off1"} << QStringList{"N0", "OFF"};
        QTest::newRow("BitButton: unknown id keeps the record's texts, refresh empties")
            << "BitButton" << 5 << QStringList() << QStringList() << QStringList{"R0|R1", "Off0|Off1"}
            << QStringList{"", "Off0|Off1"} << QStringList{"", "OFF"};
        QTest::newRow("BitButton: entry removed later empties") << "BitButton" << 5 << w << QStringList()
                                                                << QStringList{"W0|W1", "Off0|Off1"} << QStringList{"", "Off0|Off1"}
                                                                << QStringList{"", "OFF"};
        QTest::newRow("BitButton: record without id is left alone") << "BitButton" << -1 << w << n << QStringList{"R0|R1", "Off0|Off1"}
                                                                    << QStringList{"R0|R1", "Off0|Off1"} << QStringList{"ON", "OFF"};
        QTest::newRow("FunctionButton: library texts replace") << "FunctionButton" << 5 << w << n << QStringList{"W0|W1"}
                                                               << QStringList{"N0|N1"} << QStringList{"N0"};
        QTest::newRow("FunctionButton: missing entry empties") << "FunctionButton" << 5 << w << QStringList() << QStringList{"W0|W1"}
                                                               << QStringList{""} << QStringList{""};
        QTest::newRow("FunctionButton: record without id left alone") << "FunctionButton" << -1 << w << n << QStringList{"R0|R1"}
                                                                      << QStringList{"R0|R1"} << QStringList{"R0"};
        QTest::newRow("FunctionButton: no record left alone") << "FunctionButton" << -2 << w << n << QStringList{"i0|i1"}
                                                              << QStringList{"i0|i1"} << QStringList{"i0"};
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
        QTest::newRow("BitButton, run time, caption lists") << "BitButton" << false << -2 << QString() << QStringList{"T0|T1", "U0|U1"};
        QTest::newRow("BitButton, run time, text records") << "BitButton" << false << -1 << QString() << QStringList{"T0|T1", "L0|L1"};
        QTest::newRow("BitButton, designer, caption lists") << "BitButton" << true << -2 << "onTextList" << QStringList{"T0|T1", "U0|U1"};
        QTest::newRow("BitButton, designer, text records") << "BitButton" << true << -1 << "textInfoBuffer"
                                                           << QStringList{"T0|T1", "L0|L1"};
        QTest::newRow("FunctionButton, run time, caption list") << "FunctionButton" << false << -2 << QString() << QStringList{"T0|T1"};
        QTest::newRow("FunctionButton, run time, record from the library") << "FunctionButton" << false << 5 << QString()
                                                                           << QStringList{"L0|L1"};
        QTest::newRow("FunctionButton, designer, caption list") << "FunctionButton" << true << -2 << "textList" << QStringList{"T0|T1"};
        QTest::newRow("FunctionButton, designer, record") << "FunctionButton" << true << -1 << "textInfoBuffer" << QStringList{"T0|T1"};
        QTest::newRow("FunctionButton, designer, record from the library") << "FunctionButton" << true << 5 << "textInfoBuffer"
                                                                           << QStringList{"L0|L1"};
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
            for (int i = 0; i < lists.size(); ++i) {
                const TextData &r = records.at(i);
                QCOMPARE(describeRecord(stored.at(i).first()), describeRecord(record(r.wordLibId, r.wordLibId == 5 ? QStringList() : texts.at(i),
                                                                                     i ? QList<int>() : QList<int>{12})));
            }
        } else {
            QCOMPARE(w->property("textInfoBuffer").toByteArray(), QByteArray());
        }
        if (!host)
            return;
        QCOMPARE(host->log, QStringList({"clearSelection", "select", "setUndoableProperty", "deselect"}));
        QCOMPARE(int(host->changes.size()), 1);
        QCOMPARE(host->changes.first().widget, w);
        QCOMPARE(host->changes.first().name, property);
        QVERIFY(host->changes.first().undoable);
        QCOMPARE(host->changes.first().value, w->property(qPrintable(property)));
    }
};

QTEST_MAIN(TestButtonTexts)
#include "tst_buttontexts.moc"
