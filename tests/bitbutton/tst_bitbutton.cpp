#include "bitbutton.h"
#include "fakedesignerhost.h"
#include "fontmapcodec.h"
#include "norvointerface_z3.h"
#include "recordingqeltapp.h"
#include "textinfocodec.h"

#include <QDialog>
#include <QMessageBox>
#include <QMetaEnum>
#include <QMetaProperty>
#include <QMouseEvent>
#include <QtTest>

using norvo_v0::QeltApp;

namespace {

constexpr int ComId = 2;

// A form as the panel application loads it: a plain QDialog that carries the application object.
struct Panel
{
    RecordingQeltApp app;
    QDialog form;
    BitButton *button;

    Panel()
        : button(new BitButton(&form))
    {
        form.setProperty("QeltApp", QeltApp::toVariant(&app));
        form.resize(200, 60);
        button->setGeometry(0, 0, 100, 30);
    }
    // The polish event attaches the button and registers its items.
    void attach() { button->ensurePolished(); }
    norvo_v0::UpdateVariableInterface *callback() const { return button; }
};

QVariantList bitRegistration(int index, int channel, int address, int bitType, int bitIndex, int comId = ComId)
{
    return {index, comId, channel, 0, address, bitType, bitIndex, 1, 10, 10, 0, 0, false};
}

QList<QVariantList> argumentsOf(const QList<RecordingQeltApp::Call> &calls)
{
    QList<QVariantList> out;
    for (const RecordingQeltApp::Call &c : calls)
        out << c.args;
    return out;
}

// Mouse move with the left button held, as a drag delivers it.
void dragTo(QWidget *w, const QPoint &pos)
{
    QMouseEvent e(QEvent::MouseMove, pos, w->mapToGlobal(pos), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(w, &e);
}

QFont sizedFont(int pointSize)
{
    return QFont(QStringLiteral("Sans"), pointSize);
}

TextData record(int wordLibId, const QStringList &texts, const QList<int> &fontSizes = {}, int first = 0,
                int second = 0)
{
    TextData r;
    r.firstValue = first;
    r.secondValue = second;
    r.wordLibId = wordLibId;
    r.texts = texts;
    for (int size : fontSizes)
        r.fonts << sizedFont(size);
    return r;
}

// One line per record: values, id, texts and fonts (family and point size), for readable comparisons.
QStringList describe(const QList<QList<TextData>> &slotRecords)
{
    QStringList out;
    for (int s = 0; s < slotRecords.size(); ++s) {
        for (const TextData &r : slotRecords.at(s)) {
            QStringList fonts;
            for (const QFont &f : r.fonts)
                fonts << QStringLiteral("%1:%2").arg(f.family()).arg(f.pointSize());
            out << QStringLiteral("slot %1: %2 %3 id %4 [%5] [%6]")
                       .arg(s)
                       .arg(r.firstValue)
                       .arg(r.secondValue)
                       .arg(r.wordLibId)
                       .arg(r.texts.join(QLatin1Char('|')), fonts.join(QLatin1Char(',')));
        }
    }
    return out;
}

QByteArray fontMapBuffer(const QMap<int, QFont> &captionFonts)
{
    FontMapCodec::Maps maps;
    maps.captionFonts = captionFonts;
    return FontMapCodec::encode(maps);
}

} // namespace

class TestBitButton : public QObject
{
    Q_OBJECT

private slots:
    void init() { NORVOInterface_Z3::initialization()->resetToDefaults(); }

    void properties_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("designable");
        QTest::addColumn<bool>("resettable");
        QTest::addColumn<QVariant>("defaultValue"); // invalid: not compared; pixmaps: null

        const QVariant black = QColor(Qt::black);
        const QVariant notCompared;
        QTest::newRow("onTextColor") << "onTextColor" << true << true << black;
        QTest::newRow("offTextColor") << "offTextColor" << true << true << black;
        QTest::newRow("borderEnabled") << "borderEnabled" << true << true << QVariant(true);
        QTest::newRow("borderColor") << "borderColor" << true << true << black;
        QTest::newRow("iconPosition") << "iconPosition" << true << true << QVariant(int(BitButton::PositionLeft));
        QTest::newRow("iconSpace") << "iconSpace" << true << true << QVariant(5);
        QTest::newRow("textSpace") << "textSpace" << true << true << QVariant(5);
        QTest::newRow("onText") << "onText" << true << false << QVariant(QStringLiteral("ON"));
        QTest::newRow("offText") << "offText" << true << false << QVariant(QStringLiteral("OFF"));
        QTest::newRow("language") << "language" << false << false << QVariant(int(BitButton::language_0));
        QTest::newRow("onTextList") << "onTextList" << false << false << QVariant(QStringList());
        QTest::newRow("offTextList") << "offTextList" << false << false << QVariant(QStringList());
        QTest::newRow("offButtonColor") << "offButtonColor" << true << true << QVariant(QColor(240, 240, 240));
        QTest::newRow("onButtonColor") << "onButtonColor" << true << true << QVariant(QColor(192, 192, 192));
        QTest::newRow("offPicture") << "offPicture" << true << true << QVariant(QPixmap());
        QTest::newRow("onPicture") << "onPicture" << true << true << QVariant(QPixmap());
        QTest::newRow("cornersRadius") << "cornersRadius" << true << false << QVariant(5);
        QTest::newRow("comId") << "comId" << true << false << QVariant(0);
        QTest::newRow("channel") << "channel" << true << false << QVariant(1);
        QTest::newRow("readBitType") << "readBitType" << true << false << QVariant(int(BitButton::I_BIT));
        QTest::newRow("readAddress") << "readAddress" << true << false << QVariant(0);
        QTest::newRow("readBitIndex") << "readBitIndex" << true << false << QVariant(0);
        QTest::newRow("writeBitType") << "writeBitType" << true << false << QVariant(int(BitButton::None));
        QTest::newRow("writeAddress") << "writeAddress" << true << false << QVariant(0);
        QTest::newRow("writeBitIndex") << "writeBitIndex" << true << false << QVariant(0);
        QTest::newRow("action") << "action" << true << false << QVariant(int(BitButton::SetOn));
        QTest::newRow("state") << "state" << false << false << QVariant(int(BitButton::Off));
        QTest::newRow("enabledBitType") << "enabledBitType" << true << false << QVariant(int(BitButton::None_BIT));
        QTest::newRow("enabledAddress") << "enabledAddress" << true << false << QVariant(0);
        QTest::newRow("enabledBitIndex") << "enabledBitIndex" << true << false << QVariant(0);
        QTest::newRow("visibleBitType") << "visibleBitType" << true << false << QVariant(int(BitButton::None_BIT));
        QTest::newRow("visibleAddress") << "visibleAddress" << true << false << QVariant(0);
        QTest::newRow("visibleBitIndex") << "visibleBitIndex" << true << false << QVariant(0);
        QTest::newRow("bitOnVisible") << "bitOnVisible" << true << false << QVariant(true);
        QTest::newRow("operationalAuthority") << "operationalAuthority" << true << false << QVariant(0);
        QTest::newRow("enabled") << "enabled" << true << false << QVariant(true);
        QTest::newRow("lowestEnablingUserLevel")
            << "lowestEnablingUserLevel" << false << false << QVariant(int(BitButton::NoLevel));
        QTest::newRow("lowestVisibleUserLevel")
            << "lowestVisibleUserLevel" << false << false << QVariant(int(BitButton::NoLevel));
        QTest::newRow("ChnNoVarEnable") << "ChnNoVarEnable" << true << false << QVariant(false);
        QTest::newRow("MapBuffer") << "MapBuffer" << false << false << QVariant(QByteArray());
        QTest::newRow("font") << "font" << false << false << notCompared;
        QTest::newRow("textInfoBuffer") << "textInfoBuffer" << false << false << QVariant(QByteArray());
    }
    void properties()
    {
        QFETCH(QString, name);
        QFETCH(bool, designable);
        QFETCH(bool, resettable);
        QFETCH(QVariant, defaultValue);

        BitButton b;
        const int index = b.metaObject()->indexOfProperty(qPrintable(name));
        QVERIFY(index >= 0);
        const QMetaProperty meta = b.metaObject()->property(index);
        QVERIFY(meta.isWritable());
        QVERIFY(meta.isStored());
        QCOMPARE(meta.isDesignable(), designable);
        QCOMPARE(meta.isResettable(), resettable);

        const QVariant value = meta.read(&b);
        if (!defaultValue.isValid())
            return;
        if (meta.isEnumType())
            QCOMPARE(value.toInt(), defaultValue.toInt());
        else if (defaultValue.userType() == QMetaType::QPixmap)
            QVERIFY(value.value<QPixmap>().isNull());
        else
            QCOMPARE(value, defaultValue);
    }

    void fontDefaultsToTheHmiFont()
    {
        NORVOInterface_Z3::initialization()->setDefaultWidgetFont(sizedFont(17));
        BitButton b;
        QCOMPARE(b.font().pointSize(), 17);
    }

    void enums_data()
    {
        QTest::addColumn<QString>("enumName");
        QTest::addColumn<QStringList>("keys");
        QTest::addColumn<QList<int>>("values");

        QTest::newRow("ReadBitType") << "ReadBitType"
                                     << QStringList{"None_BIT", "I_BIT", "O_BIT", "C_BIT", "S_BIT", "A_BIT",
                                                    "Cn_BIT", "Tm_BIT", "User_BIT", "Mcm_BIT", "Sys_BIT",
                                                    "Reg_BIT", "Bus_BIT", "Com_BIT"}
                                     << QList<int>{-1, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12};
        QTest::newRow("WriteBitType") << "WriteBitType"
                                      << QStringList{"None", "User", "Mcm", "Sys", "Reg", "Bus", "Com"}
                                      << QList<int>{-1, 7, 8, 9, 10, 11, 12};
        QTest::newRow("Action") << "Action" << QStringList{"SetOn", "SetOff", "KeepOn", "KeepOff", "Invert"}
                                << QList<int>{0, 1, 2, 3, 4};
        QTest::newRow("State") << "State" << QStringList{"Off", "On"} << QList<int>{0, 1};
        QTest::newRow("UserLevel") << "UserLevel"
                                   << QStringList{"NoLevel", "Level1", "Level2", "Level3", "Level4", "Level5",
                                                  "Level6", "Level7", "Level8", "Level9"}
                                   << QList<int>{0, 1, 2, 3, 4, 5, 6, 7, 8, 9};
        QTest::newRow("Language") << "Language"
                                  << QStringList{"language_0", "language_1", "language_2", "language_3",
                                                 "language_4", "language_5", "language_6", "language_7",
                                                 "language_8", "language_9"}
                                  << QList<int>{0, 1, 2, 3, 4, 5, 6, 7, 8, 9};
        QTest::newRow("EButtonPosition") << "EButtonPosition"
                                         << QStringList{"PositionTop", "PositionBottom", "PositionLeft",
                                                        "PositionRight", "PositionMid"}
                                         << QList<int>{0, 1, 2, 3, 4};
    }
    void enums()
    {
        QFETCH(QString, enumName);
        QFETCH(QStringList, keys);
        QFETCH(QList<int>, values);

        const QMetaObject &mo = BitButton::staticMetaObject;
        const int index = mo.indexOfEnumerator(qPrintable(enumName));
        QVERIFY(index >= 0);
        const QMetaEnum e = mo.enumerator(index);
        QStringList actualKeys;
        QList<int> actualValues;
        for (int i = 0; i < e.keyCount(); ++i) {
            actualKeys << QString::fromLatin1(e.key(i));
            actualValues << e.value(i);
        }
        QCOMPARE(actualKeys, keys);
        QCOMPARE(actualValues, values);
    }

    void setterLimits_data()
    {
        QTest::addColumn<QString>("property");
        QTest::addColumn<int>("before");
        QTest::addColumn<int>("written");
        QTest::addColumn<int>("expected");

        QTest::newRow("negative radius") << "cornersRadius" << 5 << -3 << 0;
        QTest::newRow("negative link") << "comId" << 3 << -1 << 0;
        QTest::newRow("channel 0") << "channel" << 3 << 0 << 1;
        QTest::newRow("negative channel") << "channel" << 3 << -5 << 1;
        QTest::newRow("channel above the count") << "channel" << 2 << 99 << 4;
        QTest::newRow("last channel") << "channel" << 2 << 4 << 4;
        QTest::newRow("authority above 99") << "operationalAuthority" << 5 << 100 << 5;
        QTest::newRow("negative authority") << "operationalAuthority" << 5 << -1 << 5;
        QTest::newRow("authority 99") << "operationalAuthority" << 5 << 99 << 99;
    }
    void setterLimits()
    {
        QFETCH(QString, property);
        QFETCH(int, before);
        QFETCH(int, written);
        QFETCH(int, expected);

        NORVOInterface_Z3::initialization()->setMaxChannelCount(4);
        BitButton b;
        QVERIFY(b.setProperty(qPrintable(property), before));
        b.setProperty(qPrintable(property), written);
        QCOMPARE(b.property(qPrintable(property)).toInt(), expected);
    }

    void defaultLook_data()
    {
        QTest::addColumn<int>("monitorBit");
        QTest::addColumn<QString>("caption");
        QTest::addColumn<QColor>("body");

        QTest::newRow("off") << 0 << "OFF" << QColor(240, 240, 240);
        QTest::newRow("monitor bit 1") << 1 << "ON" << QColor(192, 192, 192);
    }
    void defaultLook()
    {
        QFETCH(int, monitorBit);
        QFETCH(QString, caption);
        QFETCH(QColor, body);

        Panel panel;
        panel.attach();
        QCOMPARE(panel.app.deliver(panel.button, 0, 0), 1);
        panel.app.deliver(panel.button, 0, monitorBit);
        const QImage image = panel.button->grab().toImage();
        QCOMPARE(panel.button->text(), caption);
        // Inside the body, clear of the bevel (2 px from the edge) and of the centred caption.
        for (const QPoint &p : {QPoint(12, 8), QPoint(12, 22), QPoint(88, 15)})
            QCOMPARE(QColor(image.pixel(p)), body);
    }

    void attachment_data()
    {
        QTest::addColumn<QString>("layout");
        QTest::addColumn<bool>("attached");

        QTest::newRow("child of the dialog") << "dialog" << true;
        QTest::newRow("nested below the dialog") << "nested" << true;
        QTest::newRow("no dialog ancestor") << "widget" << false;
        QTest::newRow("dialog without application") << "bare dialog" << false;
        QTest::newRow("dialog subclass") << "message box" << false;
    }
    void attachment()
    {
        QFETCH(QString, layout);
        QFETCH(bool, attached);

        RecordingQeltApp app;
        std::unique_ptr<QWidget> top;
        QWidget *form = nullptr;
        QWidget *parent = nullptr;
        if (layout == "message box")
            top.reset(new QMessageBox);
        else if (layout == "widget")
            top.reset(new QWidget);
        else
            top.reset(new QDialog);
        if (layout != "bare dialog")
            top->setProperty("QeltApp", QeltApp::toVariant(&app));
        form = top.get();
        parent = layout == "nested" ? new QWidget(new QWidget(form)) : form;

        auto *b = new BitButton(parent);
        b->SetWriteBitType(BitButton::User);
        b->ensurePolished();
        b->slotPressed();
        b->slotReleased();

        if (!attached) {
            QCOMPARE(app.callNames(), QStringList());
            return;
        }
        QCOMPARE(int(app.registrations().size()), 1);
        QCOMPARE(app.registrations().first().form, form);
        QCOMPARE(app.callNames(), QStringList({"registerUIVariable", "setBit"}));
    }

    void registrations_data()
    {
        QTest::addColumn<int>("readType");
        QTest::addColumn<int>("enabledType");
        QTest::addColumn<int>("visibleType");
        QTest::addColumn<bool>("chnNoVar");
        QTest::addColumn<QList<QVariantList>>("expected");

        // Monitor bit at 11.1, enabled bit at 21.2, visible bit at 31.3; channel property 3.
        QTest::newRow("default monitor bit only")
            << int(BitButton::I_BIT) << -1 << -1 << false << QList<QVariantList>{bitRegistration(0, 2, 11, 0, 1)};
        QTest::newRow("all three in order")
            << int(BitButton::O_BIT) << int(BitButton::C_BIT) << int(BitButton::Com_BIT) << false
            << QList<QVariantList>{bitRegistration(0, 2, 11, 1, 1), bitRegistration(1, 2, 21, 2, 2),
                                   bitRegistration(2, 2, 31, 12, 3)};
        QTest::newRow("no monitor bit") << -1 << int(BitButton::S_BIT) << int(BitButton::Tm_BIT) << false
                                        << QList<QVariantList>{bitRegistration(1, 2, 21, 3, 2),
                                                               bitRegistration(2, 2, 31, 6, 3)};
        QTest::newRow("nothing configured") << -1 << -1 << -1 << false << QList<QVariantList>{};
        QTest::newRow("current-channel flag keeps the stored channel")
            << int(BitButton::User_BIT) << -1 << int(BitButton::A_BIT) << true
            << QList<QVariantList>{bitRegistration(0, 2, 11, 7, 1), bitRegistration(2, 2, 31, 4, 3)};
    }
    void registrations()
    {
        QFETCH(int, readType);
        QFETCH(int, enabledType);
        QFETCH(int, visibleType);
        QFETCH(bool, chnNoVar);
        QFETCH(QList<QVariantList>, expected);

        Panel panel;
        BitButton *b = panel.button;
        b->setComId(ComId);
        b->SetChannel(3);
        b->SetChnNoVarEnable(chnNoVar);
        panel.app.memory().setWord(0, 0, QeltApp::Com, QeltApp::CurrentChannelAddress, 4);
        b->SetReadBitType(BitButton::ReadBitType(readType));
        b->SetReadAddress(11);
        b->SetReadBitIndex(1);
        b->SetEnabledBitType(BitButton::ReadBitType(enabledType));
        b->SetEnabledAddress(21);
        b->SetEnabledBitIndex(2);
        b->SetVisibleBitType(BitButton::ReadBitType(visibleType));
        b->SetVisibleAddress(31);
        b->SetVisibleBitIndex(3);
        panel.attach();

        const QList<RecordingQeltApp::Registration> regs = panel.app.registrations();
        QList<QVariantList> actual;
        for (const RecordingQeltApp::Registration &r : regs) {
            QCOMPARE(r.form, static_cast<QWidget *>(&panel.form));
            QCOMPARE(r.widget.data(), static_cast<QWidget *>(b));
            QCOMPARE(r.callback, panel.callback());
            actual << r.arguments();
        }
        QCOMPARE(actual, expected);
        // Attaching reads nothing and starts no updates.
        QStringList registrationCalls;
        for (int i = 0; i < expected.size(); ++i)
            registrationCalls << QStringLiteral("registerUIVariable");
        QCOMPARE(panel.app.callNames(), registrationCalls);

        // A second polish event does not attach again.
        QEvent polish(QEvent::Polish);
        QApplication::sendEvent(b, &polish);
        QCOMPARE(int(panel.app.registrations().size()), int(expected.size()));
    }

    void pressAndRelease_data()
    {
        QTest::addColumn<int>("action");
        QTest::addColumn<bool>("bitBefore"); // the write bit's value when pressed
        QTest::addColumn<bool>("dragOut");   // leave the button before releasing
        QTest::addColumn<QList<QVariantList>>("onPress");
        QTest::addColumn<QList<QVariantList>>("onRelease");

        // setBit(channel 1, User, 100, 5, value, link 3).
        auto write = [](bool value) { return QVariantList{1, 7, 100, 5, value, 3}; };
        using Writes = QList<QVariantList>;
        QTest::newRow("SetOn") << int(BitButton::SetOn) << false << false << Writes{write(true)} << Writes{};
        QTest::newRow("SetOff") << int(BitButton::SetOff) << true << false << Writes{write(false)} << Writes{};
        QTest::newRow("KeepOn") << int(BitButton::KeepOn) << false << false << Writes{write(true)}
                                << Writes{write(false)};
        QTest::newRow("KeepOff") << int(BitButton::KeepOff) << true << false << Writes{write(false)}
                                 << Writes{write(true)};
        QTest::newRow("KeepOn dragged out") << int(BitButton::KeepOn) << false << true << Writes{write(true)}
                                            << Writes{write(false)};
        QTest::newRow("KeepOff dragged out") << int(BitButton::KeepOff) << true << true << Writes{write(false)}
                                             << Writes{write(true)};
        QTest::newRow("SetOn dragged out") << int(BitButton::SetOn) << false << true << Writes{write(true)}
                                           << Writes{};
        QTest::newRow("Invert of 0") << int(BitButton::Invert) << false << false << Writes{write(true)} << Writes{};
        QTest::newRow("Invert of 1") << int(BitButton::Invert) << true << false << Writes{write(false)} << Writes{};
        QTest::newRow("unknown action") << 7 << false << false << Writes{} << Writes{};
    }
    void pressAndRelease()
    {
        QFETCH(int, action);
        QFETCH(bool, bitBefore);
        QFETCH(bool, dragOut);
        QFETCH(QList<QVariantList>, onPress);
        QFETCH(QList<QVariantList>, onRelease);

        Panel panel;
        BitButton *b = panel.button;
        b->setComId(3);
        b->SetChannel(2);
        b->SetWriteBitType(BitButton::User);
        b->SetWriteAddress(100);
        b->SetWriteBitIndex(5);
        b->SetAction(BitButton::Action(action));
        // The monitor bit (I0.0) holds the opposite value, so a read of the wrong bit shows.
        panel.app.memory().setBit(3, 1, QeltApp::User_BIT, 100, 5, bitBefore);
        panel.app.memory().setBit(3, 1, QeltApp::I_BIT, 0, 0, !bitBefore);
        panel.form.show();
        QVERIFY(QTest::qWaitForWindowExposed(&panel.form));
        panel.app.clearCalls();

        QTest::mousePress(b, Qt::LeftButton, {}, QPoint(50, 15));
        QCOMPARE(argumentsOf(panel.app.callsNamed("setBit")), onPress);
        if (action == BitButton::Invert) {
            QCOMPARE(panel.app.callNames(), QStringList({"getBit", "setBit"}));
            QCOMPARE(panel.app.calls().first().args, QVariantList({1, 7, 100, 5, 3}));
        }
        QCOMPARE(b->state(), BitButton::Off); // the write is not shown until the monitor bit comes back

        panel.app.clearCalls();
        if (dragOut) {
            QSignalSpy released(b, &AbstractButton::released);
            dragTo(b, QPoint(150, 15));
            QCOMPARE(released.count(), 1);
            QCOMPARE(argumentsOf(panel.app.callsNamed("setBit")), onRelease);
            QTest::mouseRelease(b, Qt::LeftButton, {}, QPoint(150, 15));
            QCOMPARE(released.count(), 1);
        } else {
            QTest::mouseRelease(b, Qt::LeftButton, {}, QPoint(50, 15));
        }
        QCOMPARE(argumentsOf(panel.app.callsNamed("setBit")), onRelease);
        QVERIFY(panel.app.callsNamed("getBit").isEmpty());
    }

    void channelOfWrites_data()
    {
        QTest::addColumn<bool>("chnNoVar");
        QTest::addColumn<int>("currentChannel"); // value of the current-channel word
        QTest::addColumn<int>("action");
        QTest::addColumn<int>("expected");

        QTest::newRow("stored channel") << false << 2 << int(BitButton::SetOn) << 2;
        QTest::newRow("current channel 2") << true << 2 << int(BitButton::SetOn) << 1;
        QTest::newRow("current channel 4") << true << 4 << int(BitButton::KeepOn) << 3;
        QTest::newRow("current channel 0 gives 0") << true << 0 << int(BitButton::SetOff) << 0;
        QTest::newRow("invert reads on the current channel") << true << 2 << int(BitButton::Invert) << 1;
    }
    void channelOfWrites()
    {
        QFETCH(bool, chnNoVar);
        QFETCH(int, currentChannel);
        QFETCH(int, action);
        QFETCH(int, expected);

        Panel panel;
        BitButton *b = panel.button;
        b->SetChannel(3);
        b->SetChnNoVarEnable(chnNoVar);
        b->SetWriteBitType(BitButton::Com);
        b->SetAction(BitButton::Action(action));
        panel.app.memory().setWord(0, 0, QeltApp::Com, QeltApp::CurrentChannelAddress, currentChannel);
        panel.attach();
        panel.app.clearCalls();

        b->slotPressed();
        b->slotReleased();
        const QList<RecordingQeltApp::Call> calls = panel.app.calls();
        QVERIFY(!calls.isEmpty());
        for (const RecordingQeltApp::Call &c : calls) {
            if (c.name == "getData")
                QCOMPARE(c.args, QVariantList({0, int(QeltApp::Com), QeltApp::CurrentChannelAddress, 0}));
            else
                QCOMPARE(c.args.first().toInt(), expected);
        }
        QCOMPARE(panel.app.callsNamed("getData").isEmpty(), !chnNoVar);
    }

    void visibleBit_data()
    {
        QTest::addColumn<bool>("bitOnVisible");
        QTest::addColumn<int>("value");
        QTest::addColumn<bool>("hidden");

        QTest::newRow("shown on 1") << true << 1 << false;
        QTest::newRow("hidden on 0") << true << 0 << true;
        QTest::newRow("inverted: hidden on 1") << false << 1 << true;
        QTest::newRow("inverted: shown on 0") << false << 0 << false;
    }
    void visibleBit()
    {
        QFETCH(bool, bitOnVisible);
        QFETCH(int, value);
        QFETCH(bool, hidden);

        Panel panel;
        panel.button->SetVisibleBitType(BitButton::O_BIT);
        panel.button->SetBitOnVisible(bitOnVisible);
        panel.attach();
        QCOMPARE(panel.app.deliver(panel.button, 2, value == 0 ? 1 : 0), 1);
        QCOMPARE(panel.button->isHidden(), !hidden);
        panel.app.deliver(panel.button, 2, value);
        QCOMPARE(panel.button->isHidden(), hidden);
    }

    void enabling_data()
    {
        QTest::addColumn<int>("authority");
        QTest::addColumn<QStringList>("steps"); // "operator N", "bit V", "slot B", "authority N"
        QTest::addColumn<bool>("widgetEnabled");
        QTest::addColumn<bool>("request");

        QTest::newRow("authority 0, operator 5") << 0 << QStringList{"operator 5"} << true << true;
        QTest::newRow("authority 3, operator 1") << 3 << QStringList{"operator 1"} << true << true;
        QTest::newRow("authority 3, operator 3") << 3 << QStringList{"operator 3"} << true << true;
        QTest::newRow("authority 3, operator 4") << 3 << QStringList{"operator 4"} << false << true;
        QTest::newRow("authority 3, operator 5") << 3 << QStringList{"operator 5"} << false << true;
        QTest::newRow("authority 7, operator 5") << 7 << QStringList{"operator 5"} << true << true;
        QTest::newRow("enabled bit 0") << 0 << QStringList{"bit 0"} << false << false;
        QTest::newRow("slot after bit 0 wins") << 0 << QStringList{"bit 0", "slot 1"} << true << true;
        QTest::newRow("bit after slot wins") << 0 << QStringList{"slot 0", "bit 1"} << true << true;
        QTest::newRow("bit 0 after slot wins") << 0 << QStringList{"slot 1", "bit 0"} << false << false;
        QTest::newRow("refused authority outweighs the request")
            << 3 << QStringList{"operator 4", "slot 1", "bit 1"} << false << true;
        QTest::newRow("granted again") << 3 << QStringList{"operator 4", "operator 2"} << true << true;
        QTest::newRow("granted but bit 0") << 3 << QStringList{"bit 0", "operator 1"} << false << false;
        QTest::newRow("new authority waits for the next update")
            << 3 << QStringList{"operator 5", "authority 7"} << false << true;
        QTest::newRow("new authority applied at the next update")
            << 3 << QStringList{"operator 5", "authority 7", "operator 5"} << true << true;
    }
    void enabling()
    {
        QFETCH(int, authority);
        QFETCH(QStringList, steps);
        QFETCH(bool, widgetEnabled);
        QFETCH(bool, request);

        Panel panel;
        BitButton *b = panel.button;
        b->SetEnabledBitType(BitButton::C_BIT);
        b->setOperationalAuthority(authority);
        panel.attach();
        for (const QString &step : steps) {
            const QStringList f = step.split(QLatin1Char(' '));
            const int v = f.at(1).toInt();
            if (f.at(0) == "operator")
                b->updateAuthority(v);
            else if (f.at(0) == "bit")
                QCOMPARE(panel.app.deliver(b, 1, v), 1);
            else if (f.at(0) == "slot")
                b->setEnabled(v != 0);
            else
                b->setOperationalAuthority(v);
        }
        QCOMPARE(b->QWidget::isEnabled(), widgetEnabled);
        QCOMPARE(b->property("enabled").toBool(), request);
    }

    void resetReadAddress_data()
    {
        QTest::addColumn<bool>("chnNoVar");
        QTest::addColumn<bool>("bit");
        QTest::addColumn<QStringList>("sequence");
        QTest::addColumn<int>("registeredChannel");
        QTest::addColumn<int>("readChannel");

        QTest::newRow("stored channel, bit 1")
            << false << true
            << QStringList{"stopUpdateUI", "removeUIVariable", "registerUIVariable", "getBit", "startUpdateUI"} << 1
            << 1;
        QTest::newRow("stored channel, bit 0")
            << false << false
            << QStringList{"stopUpdateUI", "removeUIVariable", "registerUIVariable", "getBit", "startUpdateUI"} << 1
            << 1;
        QTest::newRow("current channel")
            << true << true
            << QStringList{"stopUpdateUI", "removeUIVariable", "registerUIVariable", "getData", "getBit",
                           "startUpdateUI"}
            << QeltApp::CurrentChannel << 2;
    }
    void resetReadAddress()
    {
        QFETCH(bool, chnNoVar);
        QFETCH(bool, bit);
        QFETCH(QStringList, sequence);
        QFETCH(int, registeredChannel);
        QFETCH(int, readChannel);

        Panel panel;
        BitButton *b = panel.button;
        b->setComId(ComId);
        b->SetChnNoVarEnable(chnNoVar);
        b->SetEnabledBitType(BitButton::C_BIT);
        b->SetVisibleBitType(BitButton::S_BIT);
        b->SetState(bit ? BitButton::Off : BitButton::On);
        panel.app.memory().setWord(0, 0, QeltApp::Com, QeltApp::CurrentChannelAddress, 3);
        panel.app.memory().setBit(0, readChannel, QeltApp::O_BIT, 7, 3, bit);
        panel.attach();
        QCOMPARE(int(panel.app.registrations().size()), 3);
        panel.app.clearCalls();

        b->resetRegisterReadBitData(2, BitButton::O_BIT, 7, 3);

        QCOMPARE(panel.app.callNames(), sequence);
        const QVariant form = RecordingQeltApp::pointer(&panel.form);
        QCOMPARE(panel.app.callsNamed("removeUIVariable").first().args,
                 QVariantList({form, RecordingQeltApp::pointer(b)}));
        QCOMPARE(panel.app.callsNamed("startUpdateUI").first().args, QVariantList({form}));
        QCOMPARE(panel.app.callsNamed("getBit").first().args, QVariantList({readChannel, 1, 7, 3, 0}));
        QCOMPARE(int(panel.app.registrations().size()), 1);
        QCOMPARE(panel.app.registrations().first().arguments(),
                 bitRegistration(0, registeredChannel, 7, int(BitButton::O_BIT), 3));
        QCOMPARE(b->state(), bit ? BitButton::On : BitButton::Off);
        QCOMPARE(b->channel(), 2);
        QCOMPARE(b->readBitType(), BitButton::O_BIT);
        QCOMPARE(b->readAddress(), 7);
        QCOMPARE(b->readBitIndex(), 3);

        // The enabled and visible bits are gone; the monitor bit still arrives.
        QCOMPARE(panel.app.deliver(b, 1, 0), 0);
        QCOMPARE(panel.app.deliver(b, 2, 0), 0);
        QVERIFY(b->QWidget::isEnabled());
        QVERIFY(!b->isHidden());
        QCOMPARE(panel.app.deliver(b, 0, bit ? 0 : 1), 1);
        QCOMPARE(b->state(), bit ? BitButton::Off : BitButton::On);
    }

    void resetReadAddressRejects_data()
    {
        QTest::addColumn<int>("channel");
        QTest::addColumn<int>("bitType");
        QTest::addColumn<int>("address");

        QTest::newRow("channel 9") << 9 << 0 << 0;
        QTest::newRow("channel 0") << 0 << 0 << 0;
        QTest::newRow("bit type 13") << 1 << 13 << 0;
        QTest::newRow("bit type -1") << 1 << -1 << 0;
        QTest::newRow("address -1") << 1 << 0 << -1;
    }
    void resetReadAddressRejects()
    {
        QFETCH(int, channel);
        QFETCH(int, bitType);
        QFETCH(int, address);

        Panel panel;
        BitButton *b = panel.button;
        b->SetChannel(3);
        b->SetReadBitType(BitButton::C_BIT);
        b->SetReadAddress(4);
        b->SetReadBitIndex(2);
        panel.attach();
        panel.app.clearCalls();

        b->resetRegisterReadBitData(channel, bitType, address, 1);
        QCOMPARE(panel.app.callNames(), QStringList());
        QCOMPARE(b->channel(), 3);
        QCOMPARE(b->readBitType(), BitButton::C_BIT);
        QCOMPARE(b->readAddress(), 4);
        QCOMPARE(b->readBitIndex(), 2);
        QCOMPARE(int(panel.app.registrations().size()), 1);
    }

    void resetReadAddressUnattached()
    {
        Panel panel;
        BitButton *b = panel.button;
        b->resetRegisterReadBitData(3, BitButton::Reg_BIT, 9, 4);
        QCOMPARE(panel.app.callNames(), QStringList());
        panel.attach();
        QCOMPARE(int(panel.app.registrations().size()), 1);
        QCOMPARE(panel.app.registrations().first().arguments(),
                 bitRegistration(0, 2, 9, int(BitButton::Reg_BIT), 4, 0));
    }

    void resetWriteAddress_data()
    {
        QTest::addColumn<int>("channel");
        QTest::addColumn<int>("bitType");
        QTest::addColumn<int>("address");
        QTest::addColumn<bool>("accepted");

        QTest::newRow("User") << 2 << 7 << 12 << true;
        QTest::newRow("Com, channel 8") << 8 << 12 << 0 << true;
        QTest::newRow("PLC bit type 6") << 2 << 6 << 12 << false;
        QTest::newRow("bit type 13") << 2 << 13 << 12 << false;
        QTest::newRow("no bit type") << 2 << -1 << 12 << false;
        QTest::newRow("channel 9") << 9 << 7 << 12 << false;
        QTest::newRow("channel 0") << 0 << 7 << 12 << false;
        QTest::newRow("address -1") << 2 << 7 << -1 << false;
    }
    void resetWriteAddress()
    {
        QFETCH(int, channel);
        QFETCH(int, bitType);
        QFETCH(int, address);
        QFETCH(bool, accepted);

        Panel panel;
        BitButton *b = panel.button;
        b->SetWriteBitType(BitButton::Sys);
        b->SetWriteAddress(100);
        b->SetWriteBitIndex(5);
        panel.attach();
        panel.app.clearCalls();

        b->resetRegisterWriteBitData(channel, bitType, address, 6);
        QCOMPARE(panel.app.callNames(), QStringList()); // nothing is registered
        b->slotPressed();
        const QVariantList expected = accepted ? QVariantList{channel - 1, bitType, address, 6, true, 0}
                                               : QVariantList{0, int(BitButton::Sys), 100, 5, true, 0};
        QCOMPARE(argumentsOf(panel.app.calls()), QList<QVariantList>{expected});
    }

    void languages_data()
    {
        QTest::addColumn<QStringList>("onList");
        QTest::addColumn<QStringList>("offList");
        // "lang N": updateLanguage(N); "caption X": SetOnText(X); "lists": set both lists to On0..2/Off0..2
        QTest::addColumn<QStringList>("steps");
        QTest::addColumn<QString>("onText");
        QTest::addColumn<QString>("offText");

        const QStringList on{"On0", "On1", "On2"};
        const QStringList off{"Off0", "Off1", "Off2"};
        QTest::newRow("first change to the current language applies")
            << on << off << QStringList{"lang 0"} << "On0" << "Off0";
        QTest::newRow("second change to the same language does nothing")
            << on << off << QStringList{"lang 0", "caption X", "lang 0"} << "X" << "Off0";
        QTest::newRow("change to another language") << on << off << QStringList{"lang 0", "caption X", "lang 2"}
                                                    << "On2" << "Off2";
        QTest::newRow("back and forth") << on << off << QStringList{"lang 1", "lang 0", "lang 1"} << "On1"
                                        << "Off1";
        QTest::newRow("empty lists keep ON/OFF")
            << QStringList() << QStringList() << QStringList{"lang 0", "lang 1"} << "ON" << "OFF";
        QTest::newRow("one empty list changes nothing") << on << QStringList() << QStringList{"lang 1"} << "ON"
                                                        << "OFF";
        QTest::newRow("still pending after empty lists")
            << QStringList() << QStringList() << QStringList{"lang 0", "lists", "lang 0"} << "On0" << "Off0";
        QTest::newRow("index out of range ignored")
            << on << off << QStringList{"lang 3", "lang -1", "lang 10"} << "ON" << "OFF";
        QTest::newRow("ignored index keeps the language pending")
            << on << off << QStringList{"lang 3", "lang 0"} << "On0" << "Off0";
        QTest::newRow("short list keeps its caption")
            << QStringList{"On0"} << off << QStringList{"lang 2"} << "ON" << "Off2";
    }
    void languages()
    {
        QFETCH(QStringList, onList);
        QFETCH(QStringList, offList);
        QFETCH(QStringList, steps);
        QFETCH(QString, onText);
        QFETCH(QString, offText);

        NORVOInterface_Z3::initialization()->setSystemLanguages({"Sans", "Sans", "Sans"});
        BitButton b;
        b.setOnTextList(onList);
        b.setOffTextList(offList);
        for (const QString &step : steps) {
            const QString arg = step.section(QLatin1Char(' '), 1);
            if (step.startsWith("lang")) {
                b.updateLanguage(arg.toInt());
            } else if (step.startsWith("caption")) {
                b.SetOnText(arg);
            } else {
                b.setOnTextList({"On0", "On1", "On2"});
                b.setOffTextList({"Off0", "Off1", "Off2"});
            }
        }
        QCOMPARE(b.onText(), onText);
        QCOMPARE(b.offText(), offText);
    }

    void languageFonts_data()
    {
        QTest::addColumn<QList<int>>("recordFonts"); // point sizes of the On record's fonts
        QTest::addColumn<bool>("mapHasLanguage1");   // the caption font map holds 23 pt for language 1
        QTest::addColumn<int>("expected");           // point size after switching to language 1

        QTest::newRow("record font") << QList<int>{12, 13} << false << 13;
        QTest::newRow("record font before the map") << QList<int>{12, 13} << true << 13;
        QTest::newRow("short record list falls back to the map") << QList<int>{12} << true << 23;
        QTest::newRow("map only") << QList<int>{} << true << 23;
        QTest::newRow("neither keeps the font") << QList<int>{} << false << 11;
        QTest::newRow("short record list, no map keeps the font") << QList<int>{12} << false << 12;
    }
    void languageFonts()
    {
        QFETCH(QList<int>, recordFonts);
        QFETCH(bool, mapHasLanguage1);
        QFETCH(int, expected);

        BitButton b;
        QMap<int, QFont> map{{2, sizedFont(31)}};
        if (mapHasLanguage1)
            map.insert(1, sizedFont(23));
        b.SetMapBuffer(fontMapBuffer(map));
        b.setFont(sizedFont(11));
        b.SetTextInfoBuffer(
            TextInfoCodec::encodeSlots({{record(-1, {"On0", "On1"}, recordFonts)}, {record(-1, {"Off0", "Off1"})}}));
        b.updateLanguage(1);
        QCOMPARE(b.onText(), QStringLiteral("On1"));
        QCOMPARE(b.font().pointSize(), expected);
    }

    void mapBufferAppliesTheCurrentLanguage()
    {
        NORVOInterface_Z3::initialization()->setCurrentLanguageIndex(1);
        BitButton b;
        const QByteArray buffer = fontMapBuffer({{0, sizedFont(14)}, {1, sizedFont(21)}});
        b.SetMapBuffer(buffer);
        QCOMPARE(b.MapBuffer(), buffer);
        QCOMPARE(b.font().pointSize(), 21);

        b.SetMapBuffer("not hex");
        QCOMPARE(b.MapBuffer(), QByteArray("not hex"));
        QCOMPARE(b.font().pointSize(), 21);
    }

    void textInfoRoundTrip()
    {
        NORVOInterface_Z3::initialization()->setSystemLanguages({"Sans", "Serif"});
        const QList<QList<TextData>> records{{record(-1, {"An", "On"}, {12, 13}, 3, 4)},
                                             {record(-1, {"Aus", "Off"}, {14, 15})}};
        BitButton first;
        first.SetTextInfoBuffer(TextInfoCodec::encodeSlots(records));
        QCOMPARE(first.getOnTextList(), QStringList({"An", "On"}));
        QCOMPARE(first.getOffTextList(), QStringList({"Aus", "Off"}));
        QCOMPARE(first.font().pointSize(), 12);

        // New captions go into a new buffer that another button reads back unchanged.
        QList<QStringList> translated{{"Ein", "On!"}, {"Aus!", "Off!"}};
        first.setPluginTransText(translated);
        BitButton second;
        second.SetTextInfoBuffer(first.textInfoBuffer());
        QList<QList<TextData>> expected = records;
        expected[0][0].texts = translated.at(0);
        expected[1][0].texts = translated.at(1);
        QList<QList<TextData>> firstOut, secondOut;
        first.getPluginNameAndTransText(firstOut);
        second.getPluginNameAndTransText(secondOut);
        QCOMPARE(describe(firstOut), describe(expected));
        QCOMPARE(describe(secondOut), describe(expected));
        QCOMPARE(second.getOnTextList(), translated.at(0));
        QCOMPARE(second.getOffTextList(), translated.at(1));
        second.updateLanguage(1);
        QCOMPARE(second.onText(), QStringLiteral("On!"));
        QCOMPARE(second.font().pointSize(), 13);
    }

    void textInfoCurrentLanguage_data()
    {
        QTest::addColumn<QStringList>("onTexts");
        QTest::addColumn<QList<int>>("fonts");
        QTest::addColumn<int>("fontSize");
        QTest::addColumn<QString>("caption"); // On caption after new translations arrive

        QTest::newRow("language beyond the captions resets to 0")
            << QStringList{"A0", "A1"} << QList<int>{12, 13} << 12 << "N0";
        QTest::newRow("language within the captions kept")
            << QStringList{"A0", "A1", "A2"} << QList<int>{12, 13, 14} << 14 << "N2";
    }
    void textInfoCurrentLanguage()
    {
        QFETCH(QStringList, onTexts);
        QFETCH(QList<int>, fonts);
        QFETCH(int, fontSize);
        QFETCH(QString, caption);

        NORVOInterface_Z3 *hmi = NORVOInterface_Z3::initialization();
        hmi->setSystemLanguages({"Sans", "Sans", "Sans"});
        hmi->setCurrentLanguageIndex(2);
        BitButton b;
        b.setFont(sizedFont(9));
        b.SetTextInfoBuffer(TextInfoCodec::encodeSlots({{record(-1, onTexts, fonts)}, {record(-1, onTexts)}}));
        QCOMPARE(b.font().pointSize(), fontSize);
        QList<QStringList> translated{{"N0", "N1", "N2"}, {"F0", "F1", "F2"}};
        b.setPluginTransText(translated);
        QCOMPARE(b.onText(), caption);
    }

    void wordLibrary_data()
    {
        QTest::addColumn<int>("wordLibId");
        QTest::addColumn<QStringList>("libraryAtLoad");    // entry 5; empty: none
        QTest::addColumn<QStringList>("libraryAtRefresh"); // entry 5; empty: none
        QTest::addColumn<QStringList>("loaded");
        QTest::addColumn<QStringList>("refreshed");
        QTest::addColumn<QString>("caption");

        QTest::newRow("library texts replace the record's")
            << 5 << QStringList{"W0", "W1"} << QStringList{"N0", "N1"} << QStringList{"W0", "W1"}
            << QStringList{"N0", "N1"} << "N0";
        QTest::newRow("unknown id keeps the record's texts, refresh empties")
            << 5 << QStringList() << QStringList() << QStringList{"R0", "R1"} << QStringList() << "";
        QTest::newRow("entry removed later empties")
            << 5 << QStringList{"W0", "W1"} << QStringList() << QStringList{"W0", "W1"} << QStringList() << "";
        QTest::newRow("record without id is left alone")
            << -1 << QStringList{"W0", "W1"} << QStringList{"N0", "N1"} << QStringList{"R0", "R1"}
            << QStringList{"R0", "R1"} << "ON";
    }
    void wordLibrary()
    {
        QFETCH(int, wordLibId);
        QFETCH(QStringList, libraryAtLoad);
        QFETCH(QStringList, libraryAtRefresh);
        QFETCH(QStringList, loaded);
        QFETCH(QStringList, refreshed);
        QFETCH(QString, caption);

        NORVOInterface_Z3 *hmi = NORVOInterface_Z3::initialization();
        if (!libraryAtLoad.isEmpty())
            hmi->setWordLibraryEntry(5, libraryAtLoad);
        BitButton b;
        b.SetTextInfoBuffer(
            TextInfoCodec::encodeSlots({{record(wordLibId, {"R0", "R1"})}, {record(-1, {"Off0", "Off1"})}}));
        QCOMPARE(b.getOnTextList(), loaded);

        hmi->setWordLibrary({});
        if (!libraryAtRefresh.isEmpty())
            hmi->setWordLibraryEntry(5, libraryAtRefresh);
        b.upDatePluginTextfromWordLib();
        QCOMPARE(b.getOnTextList(), refreshed);
        QCOMPARE(b.onText(), caption);
        QCOMPARE(b.getOffTextList(), QStringList({"Off0", "Off1"}));
        QCOMPARE(b.offText(), QStringLiteral("OFF"));
    }

    void wordLibraryWithoutRecords()
    {
        NORVOInterface_Z3::initialization()->setWordLibraryEntry(5, {"W0", "W1"});
        BitButton b;
        b.setOnTextList({"A", "B"});
        b.upDatePluginTextfromWordLib();
        QCOMPARE(b.getOnTextList(), QStringList({"A", "B"}));
        QCOMPARE(b.onText(), QStringLiteral("ON"));
    }

    void translatedTexts_data()
    {
        QTest::addColumn<bool>("designer");
        QTest::addColumn<bool>("withRecords");
        QTest::addColumn<QStringList>("hostLog");
        QTest::addColumn<QString>("property");

        const QStringList commit{"clearSelection", "select", "setUndoableProperty", "deselect"};
        QTest::newRow("run time, caption lists") << false << false << QStringList() << QString();
        QTest::newRow("run time, text records") << false << true << QStringList() << QString();
        QTest::newRow("designer, caption lists") << true << false << commit << "onTextList";
        QTest::newRow("designer, text records") << true << true << commit << "textInfoBuffer";
    }
    void translatedTexts()
    {
        QFETCH(bool, designer);
        QFETCH(bool, withRecords);
        QFETCH(QStringList, hostLog);
        QFETCH(QString, property);

        NORVOInterface_Z3::initialization()->setWordLibraryEntry(5, {"L0", "L1"});
        QWidget formWindow;
        std::unique_ptr<FakeDesignerHost> host(designer ? new FakeDesignerHost(&formWindow) : nullptr);
        auto *b = new BitButton(&formWindow);
        if (withRecords) {
            b->SetTextInfoBuffer(
                TextInfoCodec::encodeSlots({{record(-1, {"A0", "A1"}, {12})}, {record(5, {"B0", "B1"})}}));
        }
        if (host)
            host->log.clear();

        QList<QStringList> texts{{"T0", "T1"}, {"U0", "U1"}};
        b->setPluginTransText(texts);

        const QStringList expectedOff = withRecords ? QStringList{"L0", "L1"} : texts.at(1);
        QCOMPARE(b->getOnTextList(), texts.at(0));
        QCOMPARE(b->getOffTextList(), expectedOff);
        QCOMPARE(b->onText(), QStringLiteral("T0"));
        QCOMPARE(b->offText(), expectedOff.first());
        if (withRecords) {
            // The record with a word-library id is stored without texts.
            QList<QList<TextData>> stored;
            QVERIFY(TextInfoCodec::decodeSlots(b->textInfoBuffer(), &stored));
            const QList<QList<TextData>> expected{{record(-1, texts.at(0), {12})}, {record(5, {})}};
            QCOMPARE(describe(stored), describe(expected));
        } else {
            QCOMPARE(b->textInfoBuffer(), QByteArray());
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

    void translatedTextsNeedTwoLists()
    {
        QWidget formWindow;
        FakeDesignerHost host(&formWindow);
        auto *b = new BitButton(&formWindow);
        QList<QStringList> texts{{"T0", "T1"}};
        b->setPluginTransText(texts);
        QCOMPARE(host.log, QStringList());
        QCOMPARE(b->getOnTextList(), QStringList());
        QCOMPARE(b->onText(), QStringLiteral("ON"));
    }

    void textsForTranslation_data()
    {
        QTest::addColumn<QStringList>("onList");
        QTest::addColumn<bool>("withMap");
        QTest::addColumn<QStringList>("expected");

        QTest::newRow("captions, widget font per language")
            << QStringList() << false
            << QStringList{"slot 0: 0 0 id -1 [ON] [Sans:11,Sans:11]", "slot 1: 0 0 id -1 [OFF] [Sans:11,Sans:11]"};
        QTest::newRow("lists, fonts of the map")
            << QStringList{"On0", "On1"} << true
            << QStringList{"slot 0: 0 0 id -1 [On0|On1] [Sans:21,Sans:22]", "slot 1: 0 0 id -1 [OFF] [Sans:21,Sans:22]"};
    }
    void textsForTranslation()
    {
        QFETCH(QStringList, onList);
        QFETCH(bool, withMap);
        QFETCH(QStringList, expected);

        BitButton b;
        b.setObjectName("start");
        if (withMap)
            b.SetMapBuffer(fontMapBuffer({{1, sizedFont(22)}, {0, sizedFont(21)}}));
        b.setFont(sizedFont(11));
        b.setOnTextList(onList);

        QString name;
        int listType = 0;
        b.getPluginNameAndListType(name, listType);
        QCOMPARE(name, QStringLiteral("start"));
        QCOMPARE(listType, 2);
        QList<QList<TextData>> texts{{record(9, {"stale"})}};
        b.getPluginNameAndTransText(texts);
        QCOMPARE(describe(texts), expected);
        // Built for the caller only: a later translation still treats the button as record-less.
        QList<QStringList> translated{{"X0", "X1"}, {"Y0", "Y1"}};
        b.setPluginTransText(translated);
        QCOMPARE(b.textInfoBuffer(), QByteArray());
    }

    void designerRegistration_data()
    {
        QTest::addColumn<bool>("designer");
        QTest::newRow("in a designer form") << true;
        QTest::newRow("at run time") << false;
    }
    void designerRegistration()
    {
        QFETCH(bool, designer);

        NORVOInterface_Z3 *hmi = NORVOInterface_Z3::initialization();
        QWidget formWindow;
        std::unique_ptr<FakeDesignerHost> host(designer ? new FakeDesignerHost(&formWindow) : nullptr);
        if (host)
            host->setFileName(QStringLiteral("/panels/main.ui"));
        auto *other = new QWidget(&formWindow);
        auto *b = new BitButton(other);
        QCOMPARE(int(hmi->textInterfaces().size()), designer ? 1 : 0);
        if (designer) {
            const NORVOInterface_Z3::TextInterfaceEntry entry = hmi->textInterfaces().first();
            QCOMPARE(entry.owner, &formWindow);
            QCOMPARE(entry.fileName, QStringLiteral("/panels/main.ui"));
            QCOMPARE(entry.iface, static_cast<Hmi_v0::HMI_UiUpdateInterface *>(b));
        }
        delete b;
        QCOMPARE(int(hmi->textInterfaces().size()), 0);
    }
};

QTEST_MAIN(TestBitButton)
#include "tst_bitbutton.moc"
