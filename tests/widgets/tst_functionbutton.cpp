#include "buttontestsupport.h"
#include "fakedesignerhost.h"
#include "functionbutton.h"
#include "norvointerface_z3.h"

#include <QtTest>

using norvo_v0::QeltApp;
using namespace buttontest;

namespace {
// Shows what the button paints in its current state.
class ProbeButton : public FunctionButton
{
public:
    using FunctionButton::FunctionButton;
    ButtonFace shownFace() const { return face(); }
};
using Panel = buttontest::PanelOf<ProbeButton>;
QVariantList bitRegistration(int index, int channel, int address, int bitType, int bitIndex)
{
    return registration(index, channel, 0, address, bitType, bitIndex);
}
QVariantList dataRegistration(int index, int channel, int dataClass, int address)
{
    return registration(index, channel, dataClass, address, -1, 0);
}
QStringList describe(const QList<TextData> &records)
{
    QStringList out;
    for (const TextData &r : records)
        out << describeRecord(r);
    return out;
}
} // namespace

class TestFunctionButton : public QObject
{
    Q_OBJECT

private slots:
    void init() { NORVOInterface_Z3::initialization()->resetToDefaults(); }

    void setterLimits_data()
    {
        QTest::addColumn<QString>("property");
        QTest::addColumn<int>("before");
        QTest::addColumn<int>("written");
        QTest::addColumn<int>("expected");
        QTest::newRow("negative radius") << "cornersRadius" << 5 << -3 << 0;
        QTest::newRow("negative link") << "comId" << 3 << -1 << 0;
        QTest::newRow("channel above the count") << "channel" << 2 << 99 << 4;
        QTest::newRow("authority above 99") << "operationalAuthority" << 5 << 100 << 5;
        QTest::newRow("authority 99") << "operationalAuthority" << 5 << 99 << 99;
        QTest::newRow("negative write address") << "writeAddress" << 8 << -1 << 8;
        QTest::newRow("write bit index 32") << "writeBitIndex" << 8 << 32 << 8;
        QTest::newRow("write bit index 31") << "writeBitIndex" << 8 << 31 << 31;
        QTest::newRow("negative text-control address") << "textControlAddress" << 8 << -1 << 8;
        QTest::newRow("action 5") << "action" << 2 << 5 << 2;
        QTest::newRow("enabled bit type 13") << "enabledBitType" << 3 << 13 << 3;
        QTest::newRow("color bit type -2") << "colorBitType" << 3 << -2 << 3;
        QTest::newRow("write bit type 6") << "writeBitType" << 8 << 6 << 8;
        QTest::newRow("text-control class 6") << "textControlDataClass" << 2 << 6 << 2;
        QTest::newRow("text-control class -1") << "textControlDataClass" << 2 << -1 << -1;
        QTest::newRow("user level 1094795585") << "lowestVisibleUserLevel" << 2 << 1094795585 << 2;
        QTest::newRow("language -1") << "language" << 1 << -1 << 1;
        QTest::newRow("icon position -1") << "iconPosition" << 3 << -1 << 3;
        QTest::newRow("enabled bit index 32") << "enabledBitIndex" << 4 << 32 << 4;
        QTest::newRow("visible bit index -1") << "visibleBitIndex" << 4 << -1 << 4;
        QTest::newRow("color bit index 40") << "colorBitIndex" << 4 << 40 << 4;
    }

    void setterLimits()
    {
        QFETCH(QString, property);
        QFETCH(int, before);
        QFETCH(int, written);
        QFETCH(int, expected);
        NORVOInterface_Z3::initialization()->setMaxChannelCount(4);
        FunctionButton b;
        QVERIFY(b.setProperty(qPrintable(property), before));
        b.setProperty(qPrintable(property), written);
        QCOMPARE(b.property(qPrintable(property)).toInt(), expected);
    }

    void registrations_data()
    {
        QTest::addColumn<int>("enabledType");
        QTest::addColumn<int>("visibleType");
        QTest::addColumn<int>("colorType");
        QTest::addColumn<int>("textClass");
        QTest::addColumn<bool>("bySlot");
        QTest::addColumn<QList<QVariantList>>("expected");
        // Enabled bit 21.2, visible bit 31.3, colour bit 41.4, text-control word 51; channel property 3.
        const QList<QVariantList> all{bitRegistration(0, 2, 21, 0, 2), bitRegistration(1, 2, 31, 7, 3),
                                      bitRegistration(2, 2, 41, 12, 4), dataRegistration(3, 2, 5, 51)};
        QTest::newRow("nothing configured") << -1 << -1 << -1 << -1 << false << QList<QVariantList>{};
        QTest::newRow("all four on polish") << 0 << 7 << 12 << 5 << false << all;
        QTest::newRow("all four through the slot") << 0 << 7 << 12 << 5 << true << all;
        QTest::newRow("text-control word only")
            << -1 << -1 << -1 << int(FunctionButton::User_Var) << true
            << QList<QVariantList>{dataRegistration(3, 2, 0, 51)};
    }

    void registrations()
    {
        QFETCH(int, enabledType);
        QFETCH(int, visibleType);
        QFETCH(int, colorType);
        QFETCH(int, textClass);
        QFETCH(bool, bySlot);
        QFETCH(QList<QVariantList>, expected);
        Panel panel;
        ProbeButton *b = panel.button;
        b->setComId(ComId);
        b->SetChannel(3);
        b->SetEnabledBitType(FunctionButton::BitType(enabledType));
        b->SetEnabledAddress(21);
        b->SetEnabledBitIndex(2);
        b->SetVisibleBitType(FunctionButton::BitType(visibleType));
        b->SetVisibleAddress(31);
        b->SetVisibleBitIndex(3);
        b->SetColorBitType(FunctionButton::BitType(colorType));
        b->SetColorAddress(41);
        b->SetColorBitIndex(4);
        b->SetTextControlDataClass(FunctionButton::DataClass(textClass));
        b->SetTextControlAddress(51);
        if (bySlot)
            panel.attachBySlot();
        else
            panel.attach();
        QWidget *form = bySlot ? &panel.otherForm : static_cast<QWidget *>(&panel.form);
        QList<QVariantList> actual;
        for (const RecordingQeltApp::Registration &r : panel.app.registrations()) {
            QCOMPARE(r.form, form);
            QCOMPARE(r.widget.data(), static_cast<QWidget *>(b));
            QCOMPARE(r.callback, static_cast<norvo_v0::UpdateVariableInterface *>(b));
            actual << r.arguments();
        }
        QCOMPARE(actual, expected);
        QStringList registrationCalls;
        for (int i = 0; i < expected.size(); ++i)
            registrationCalls << QStringLiteral("registerUIVariable");
        QCOMPARE(panel.app.callNames(), registrationCalls);
    }

    void press_data()
    {
        QTest::addColumn<int>("action");
        QTest::addColumn<bool>("bitBefore"); // the write bit's value when pressed
        QTest::addColumn<QList<QVariantList>>("onPress");
        QTest::addColumn<bool>("chnNoVar"); // stored for the application only
        // setBit(channel 1, User, 100, 5, value, link 3).
        auto write = [](bool value) { return QVariantList{1, 7, 100, 5, value, 3}; };
        using Writes = QList<QVariantList>;
        QTest::newRow("SetOn") << int(FunctionButton::SetOn) << false << Writes{write(true)} << false;
        QTest::newRow("KeepOn") << int(FunctionButton::KeepOn) << false << Writes{write(true)} << false;
        QTest::newRow("KeepOff") << int(FunctionButton::KeepOff) << true << Writes{write(false)} << false;
        QTest::newRow("Invert of 0") << int(FunctionButton::Invert) << false << Writes{write(true)} << false;
        QTest::newRow("Invert of 1") << int(FunctionButton::Invert) << true << Writes{write(false)} << false;
        QTest::newRow("SetOn, current channel not used") << int(FunctionButton::SetOn) << false << Writes{write(true)}
                                                         << true;
        QTest::newRow("action 5 ignored: stays SetOn") << 5 << false << Writes{write(true)} << false;
    }

    void press()
    {
        QFETCH(int, action);
        QFETCH(bool, bitBefore);
        QFETCH(QList<QVariantList>, onPress);
        QFETCH(bool, chnNoVar);
        Panel panel;
        ProbeButton *b = panel.button;
        b->setComId(3);
        b->SetChannel(2);
        b->SetWriteBitType(FunctionButton::User);
        b->SetWriteAddress(100);
        b->SetWriteBitIndex(5);
        b->SetAction(FunctionButton::Action(action));
        b->SetChnNoVarEnable(chnNoVar);
        panel.app.memory().setWord(0, 0, QeltApp::Com, QeltApp::CurrentChannelAddress, 4);
        panel.app.memory().setBit(3, 1, QeltApp::User_BIT, 100, 5, bitBefore);
        panel.form.show();
        QVERIFY(QTest::qWaitForWindowExposed(&panel.form));
        panel.app.clearCalls();
        QTest::mousePress(b, Qt::LeftButton, {}, QPoint(50, 15));
        QCOMPARE(argumentsOf(panel.app.callsNamed("setBit")), onPress);
        if (action == FunctionButton::Invert) {
            QCOMPARE(panel.app.callNames(), QStringList({"getBit", "setBit"}));
            QCOMPARE(panel.app.calls().first().args, QVariantList({1, 7, 100, 5, 3}));
        }
        // A release writes nothing.
        panel.app.clearCalls();
        QSignalSpy released(b, &AbstractButton::released);
        QTest::mouseRelease(b, Qt::LeftButton, {}, QPoint(50, 15));
        QCOMPARE(released.count(), 1);
        QCOMPARE(panel.app.callNames(), QStringList());
    }

    void visibleBit()
    {
        for (bool onVisible : {true, false}) {
            Panel panel;
            panel.button->SetVisibleBitType(FunctionButton::O_BIT);
            panel.button->SetBitOnVisible(onVisible);
            panel.attach();
            for (int v : {0, 1, 0}) {
                QCOMPARE(panel.app.deliver(panel.button, 1, v), 1);
                QCOMPARE(panel.button->isHidden(), (v == 1) != onVisible);
            }
        }
    }

    void colours_data()
    {
        // "bit V": colour bit update; "name S": setButtonColor(S); "normal R,G,B": SetButtonColorNormal
        QTest::addColumn<QStringList>("steps");
        QTest::addColumn<QColor>("body");
        QTest::addColumn<QColor>("caption");
        QTest::addColumn<QColor>("normalProperty");
        const QColor normal(240, 240, 240);
        const QColor on(200, 0, 0);
        const QColor enabledText(0, 90, 0);
        const QColor onText(0, 0, 200);
        QTest::newRow("default") << QStringList() << normal << enabledText << normal;
        QTest::newRow("colour bit 1") << QStringList{"bit 1"} << on << onText << normal;
        QTest::newRow("three numbers") << QStringList{"name 10,20,30"} << QColor(10, 20, 30) << enabledText
                                       << normal;
        QTest::newRow("next bit 1 overwrites")
            << QStringList{"bit 1", "name 10,20,30", "bit 1"} << on << onText << normal;
        QTest::newRow("two numbers are no colour") << QStringList{"name 10,20"} << QColor() << enabledText
                                                   << normal;
        QTest::newRow("not a number counts 0") << QStringList{"name 10,x,30"} << QColor(10, 0, 30)
                                               << enabledText << normal;
        QTest::newRow("colour name") << QStringList{"name red"} << QColor(255, 0, 0) << enabledText << normal;
        QTest::newRow("unknown name") << QStringList{"name nocolour"} << QColor() << enabledText << normal;
        QTest::newRow("normal colour setter shows at once")
            << QStringList{"name 10,20,30", "normal 1,2,3"} << QColor(1, 2, 3) << enabledText << QColor(1, 2, 3);
    }

    void colours()
    {
        QFETCH(QStringList, steps);
        QFETCH(QColor, body);
        QFETCH(QColor, caption);
        QFETCH(QColor, normalProperty);
        Panel panel;
        ProbeButton *b = panel.button;
        b->SetColorBitType(FunctionButton::S_BIT);
        b->SetButtonColorOn(QColor(200, 0, 0));
        b->SetTextColorOn(QColor(0, 0, 200));
        b->SetTextColorEnabled(QColor(0, 90, 0));
        panel.attachBySlot();
        for (const QString &step : steps) {
            const QString arg = step.section(QLatin1Char(' '), 1);
            if (step.startsWith("bit")) {
                QCOMPARE(panel.app.deliver(b, 2, arg.toInt()), 1);
            } else if (step.startsWith("name")) {
                b->setButtonColor(arg);
            } else {
                const QStringList rgb = arg.split(QLatin1Char(','));
                b->SetButtonColorNormal(QColor(rgb.at(0).toInt(), rgb.at(1).toInt(), rgb.at(2).toInt()));
            }
        }
        const ButtonFace face = b->shownFace();
        QCOMPARE(face.bodyColor.isValid(), body.isValid());
        if (body.isValid()) {
            QCOMPARE(face.bodyColor, body);
            // The caption is empty, so the middle of the body shows the fill.
            QCOMPARE(QColor(b->grab().toImage().pixel(50, 15)), body);
        }
        QCOMPARE(face.captionColor, caption);
        QCOMPARE(b->buttonColorNormal(), normalProperty);
    }

    void captionTable_data()
    {
        QTest::addColumn<QStringList>("values");
        QTest::addColumn<QStringList>("captions");
        QTest::addColumn<int>("language");
        QTest::addColumn<QList<int>>("delivered");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("textList");
        const QStringList values{"0", "1"};
        const QStringList captions{"A0;A1", "B0;B1"};
        const QStringList before{"init", "i1"};
        QTest::newRow("value 1, language 1") << values << captions << 1 << QList<int>{1} << "B1"
                                             << QStringList{"B0", "B1"};
        QTest::newRow("value 0, language 0") << values << captions << 0 << QList<int>{0} << "A0"
                                             << QStringList{"A0", "A1"};
        QTest::newRow("absent value changes nothing")
            << values << captions << 1 << QList<int>{1, 2} << "B1" << QStringList{"B0", "B1"};
        QTest::newRow("entry without separator") << QStringList{"5"} << QStringList{"Solo"} << 0 << QList<int>{5}
                                                 << "Solo" << QStringList{"Solo"};
        QTest::newRow("unequal counts leave the table empty")
            << values << QStringList{"A0;A1"} << 0 << QList<int>{0} << "init" << before;
        QTest::newRow("later entry with the same value wins")
            << QStringList{"3", "3"} << QStringList{"first", "second"} << 0 << QList<int>{3} << "second"
            << QStringList{"second"};
    }

    void captionTable()
    {
        QFETCH(QStringList, values);
        QFETCH(QStringList, captions);
        QFETCH(int, language);
        QFETCH(QList<int>, delivered);
        QFETCH(QString, text);
        QFETCH(QStringList, textList);
        Panel panel;
        ProbeButton *b = panel.button;
        b->setText(QStringLiteral("init"));
        b->setTextList({"init", "i1"});
        b->SetTextControlDataClass(FunctionButton::Reg_Var);
        b->SetTextValueList(values);
        b->SetTextStringList(captions);
        b->setLanguage(FunctionButton::Language(language));
        panel.attach();
        for (int value : delivered)
            QCOMPARE(panel.app.deliver(b, 3, value), 1);
        QCOMPARE(b->text(), text);
        QCOMPARE(b->getTextList(), textList);
    }

    void languages_data()
    {
        QTest::addColumn<QStringList>("textList");
        // "lang N": updateLanguage(N); "caption X": setText(X); "list": textList L0, L1, L2
        QTest::addColumn<QStringList>("steps");
        QTest::addColumn<QString>("text");
        const QStringList list{"L0", "L1", "L2"};
        QTest::newRow("first change to the current language applies") << list << QStringList{"lang 0"} << "L0";
        QTest::newRow("second change to the same language does nothing")
            << list << QStringList{"lang 0", "caption X", "lang 0"} << "X";
        QTest::newRow("change to another language") << list << QStringList{"lang 0", "caption X", "lang 2"}
                                                    << "L2";
        QTest::newRow("empty list changes nothing") << QStringList() << QStringList{"lang 1"} << "init";
        QTest::newRow("still pending after an empty list")
            << QStringList() << QStringList{"lang 0", "list", "lang 0"} << "L0";
        QTest::newRow("ignored index keeps the language pending") << list << QStringList{"lang 3", "lang 0"}
                                                                  << "L0";
    }

    void languages()
    {
        QFETCH(QStringList, textList);
        QFETCH(QStringList, steps);
        QFETCH(QString, text);
        NORVOInterface_Z3::initialization()->setSystemLanguages({"Sans", "Sans", "Sans"});
        FunctionButton b;
        b.setText(QStringLiteral("init"));
        b.setLanguage(FunctionButton::language_9); // keeps setTextList from touching the lists
        b.setTextList(textList);
        for (const QString &step : steps) {
            const QString arg = step.section(QLatin1Char(' '), 1);
            if (step.startsWith("lang"))
                b.updateLanguage(arg.toInt());
            else if (step.startsWith("caption"))
                b.setText(arg);
            else
                b.setTextList({"L0", "L1", "L2"});
        }
        QCOMPARE(b.text(), text);
    }

    void languageFonts_data()
    {
        QTest::addColumn<QList<int>>("recordFonts"); // point sizes of the record's fonts
        QTest::addColumn<QList<int>>("mapKeys");     // languages the caption font map holds (23 pt + key)
        QTest::addColumn<int>("expected");           // point size after switching to language 1
        QTest::newRow("record font") << QList<int>{12, 13} << QList<int>{} << 13;
        QTest::newRow("record fonts without this language keep the font")
            << QList<int>{12} << QList<int>{0, 1} << 12;
        QTest::newRow("map only") << QList<int>{} << QList<int>{0, 1} << 24;
        QTest::newRow("neither keeps the font") << QList<int>{} << QList<int>{} << 11;
    }

    void languageFonts()
    {
        QFETCH(QList<int>, recordFonts);
        QFETCH(QList<int>, mapKeys);
        QFETCH(int, expected);
        FunctionButton b;
        QMap<int, QFont> map;
        for (int key : mapKeys)
            map.insert(key, sizedFont(23 + key));
        if (!map.isEmpty())
            b.SetMapBuffer(fontMapBuffer(map));
        b.setFont(sizedFont(11));
        b.SetTextInfoBuffer(TextInfoCodec::encodeSlot({record(-1, {"T0", "T1"}, recordFonts)}));
        b.updateLanguage(1);
        QCOMPARE(b.text(), QStringLiteral("T1"));
        QCOMPARE(b.font().pointSize(), expected);
    }

    void textInfoRoundTrip()
    {
        const QList<TextData> records{record(-1, {"An", "On"}, {12, 13}, 3, 4)};
        FunctionButton first;
        first.SetTextInfoBuffer(TextInfoCodec::encodeSlot(records));
        QCOMPARE(first.getTextList(), QStringList({"An", "On"}));
        QCOMPARE(first.text(), QStringLiteral("An"));
        QCOMPARE(first.font().pointSize(), 12);
        QList<QStringList> translated{{"Ein", "On!"}};
        first.setPluginTransText(translated);
        FunctionButton second;
        second.SetTextInfoBuffer(first.textInfoBuffer());
        QList<TextData> expected = records;
        expected[0].texts = translated.at(0);
        QList<TextData> firstOut, secondOut;
        first.getPluginNameAndTransText(firstOut);
        second.getPluginNameAndTransText(secondOut);
        QCOMPARE(describe(firstOut), describe(expected));
        QCOMPARE(describe(secondOut), describe(expected));
        QCOMPARE(second.text(), QStringLiteral("Ein"));
        QCOMPARE(second.wordLibId(), -1);
        second.updateLanguage(1);
        QCOMPARE(second.text(), QStringLiteral("On!"));
        QCOMPARE(second.font().pointSize(), 13);
    }

    void wordLibraryRefresh_data()
    {
        QTest::addColumn<int>("recordId"); // -2: no text record
        QTest::addColumn<QStringList>("libraryAtRefresh"); // entry 5; empty: none
        QTest::addColumn<QStringList>("textList");
        QTest::addColumn<QString>("text");
        QTest::newRow("library texts replace") << 5 << QStringList{"N0", "N1"} << QStringList{"N0", "N1"} << "N0";
        QTest::newRow("missing entry empties") << 5 << QStringList() << QStringList() << "";
        QTest::newRow("record without id left alone")
            << -1 << QStringList{"N0", "N1"} << QStringList{"R0", "R1"} << "R0";
        QTest::newRow("no record left alone") << -2 << QStringList{"N0", "N1"} << QStringList{"i0", "i1"}
                                              << "i0";
    }

    void wordLibraryRefresh()
    {
        QFETCH(int, recordId);
        QFETCH(QStringList, libraryAtRefresh);
        QFETCH(QStringList, textList);
        QFETCH(QString, text);
        NORVOInterface_Z3 *hmi = NORVOInterface_Z3::initialization();
        hmi->setWordLibraryEntry(5, {"W0", "W1"});
        FunctionButton b;
        b.setText(QStringLiteral("i0"));
        b.setTextList({"i0", "i1"});
        if (recordId != -2) {
            b.SetTextInfoBuffer(TextInfoCodec::encodeSlot({record(recordId, {"R0", "R1"})}));
            QCOMPARE(b.getTextList(), recordId == 5 ? QStringList({"W0", "W1"}) : QStringList({"R0", "R1"}));
        }
        hmi->setWordLibrary({});
        if (!libraryAtRefresh.isEmpty())
            hmi->setWordLibraryEntry(5, libraryAtRefresh);
        b.upDatePluginTextfromWordLib();
        QCOMPARE(b.getTextList(), textList);
        QCOMPARE(b.text(), text);
    }

    void translatedTexts_data()
    {
        QTest::addColumn<bool>("designer");
        QTest::addColumn<int>("recordId"); // -2: no text record
        QTest::addColumn<QStringList>("hostLog");
        QTest::addColumn<QString>("property");
        QTest::addColumn<QStringList>("textList");
        QTest::addColumn<QStringList>("storedTexts"); // of the record in textInfoBuffer
        const QStringList commit{"clearSelection", "select", "setUndoableProperty", "deselect"};
        const QStringList t{"T0", "T1"};
        const QStringList lib{"L0", "L1"};
        QTest::newRow("run time, caption list") << false << -2 << QStringList() << QString() << t << QStringList();
        QTest::newRow("run time, record from the library")
            << false << 5 << QStringList() << QString() << lib << QStringList();
        QTest::newRow("designer, caption list") << true << -2 << commit << "textList" << t << QStringList();
        QTest::newRow("designer, record") << true << -1 << commit << "textInfoBuffer" << t << t;
        QTest::newRow("designer, record from the library")
            << true << 5 << commit << "textInfoBuffer" << lib << QStringList();
    }

    void translatedTexts()
    {
        QFETCH(bool, designer);
        QFETCH(int, recordId);
        QFETCH(QStringList, hostLog);
        QFETCH(QString, property);
        QFETCH(QStringList, textList);
        QFETCH(QStringList, storedTexts);
        NORVOInterface_Z3::initialization()->setWordLibraryEntry(5, {"L0", "L1"});
        QWidget formWindow;
        std::unique_ptr<FakeDesignerHost> host(designer ? new FakeDesignerHost(&formWindow) : nullptr);
        auto *b = new FunctionButton(&formWindow);
        b->setText(QStringLiteral("T0"));
        if (recordId != -2)
            b->SetTextInfoBuffer(TextInfoCodec::encodeSlot({record(recordId, {"R0", "R1"}, {12})}));
        const QByteArray bufferBefore = b->textInfoBuffer();
        if (host)
            host->log.clear();
        QList<QStringList> texts{{"T0", "T1"}};
        b->setPluginTransText(texts);
        QCOMPARE(b->getTextList(), textList);
        QCOMPARE(b->text(), textList.first());
        if (recordId != -2) {
            QList<TextData> stored;
            QVERIFY(TextInfoCodec::decodeSlot(b->textInfoBuffer(), &stored));
            QCOMPARE(describe(stored), describe({record(recordId, storedTexts, {12})}));
        } else {
            QCOMPARE(b->textInfoBuffer(), bufferBefore);
        }
        if (!host)
            return;
        QCOMPARE(host->log, hostLog);
        QCOMPARE(int(host->changes.size()), 1);
        QCOMPARE(host->changes.first().widget, static_cast<QWidget *>(b));
        QCOMPARE(host->changes.first().name, property);
        QVERIFY(host->changes.first().undoable);
        QCOMPARE(host->changes.first().value, b->property(qPrintable(property)));
    }
};

QTEST_MAIN(TestFunctionButton)
#include "tst_functionbutton.moc"
