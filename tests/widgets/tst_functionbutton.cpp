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

    void press_data()
    {
        QTest::addColumn<int>("action"); QTest::addColumn<bool>("bitBefore"); // the write bit's value when pressed
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
        QFETCH(int, action); QFETCH(bool, bitBefore); QFETCH(QList<QVariantList>, onPress); QFETCH(bool, chnNoVar);
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

    void colours_data()
    {
        // "bit V": colour bit update; "name S": setButtonColor(S); "normal R,G,B": SetButtonColorNormal
        QTest::addColumn<QStringList>("steps"); QTest::addColumn<QColor>("body"); QTest::addColumn<QColor>("caption");
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
        QFETCH(QStringList, steps); QFETCH(QColor, body); QFETCH(QColor, caption); QFETCH(QColor, normalProperty);
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
        QTest::addColumn<QStringList>("values"); QTest::addColumn<QStringList>("captions");
        QTest::addColumn<int>("language"); QTest::addColumn<QList<int>>("delivered"); QTest::addColumn<QString>("text");
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
        QFETCH(QStringList, values); QFETCH(QStringList, captions); QFETCH(int, language);
        QFETCH(QList<int>, delivered); QFETCH(QString, text); QFETCH(QStringList, textList);
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

};

QTEST_MAIN(TestFunctionButton)
#include "tst_functionbutton.moc"
