// The binding every controller widget shares: how it finds its form and application, what it
// registers and reads, how channels and links are clamped and resolved, and how the operator's
// authority and the enabled request decide whether the widget can be used.

#include "controllerbinding.h"
#include "norvointerface_z3.h"
#include "recordingqeltapp.h"
#include "updatevariableinterface.h"

#include <QDialog>
#include <QFrame>
#include <QMainWindow>
#include <QtTest>

#include <limits>
#include <memory>

using norvo_v0::QeltApp;

namespace {

constexpr int CurrentChannelWord = QeltApp::CurrentChannelAddress;

// A bound widget as the library's widgets are: a QWidget with the callback interface as a second base.
class BoundWidget : public QWidget, public norvo_v0::UpdateVariableInterface
{
public:
    explicit BoundWidget(QWidget *parent = nullptr)
        : QWidget(parent)
        , binding(this, this)
    {
    }
    norvo_v0::UpdateVariableInterface *callback() { return this; }

    ControllerBinding binding;
};

// A form class of its own: its class name is not "QDialog".
class OwnDialog : public QDialog
{
    Q_OBJECT
public:
    using QDialog::QDialog;
};

// A subclass without a meta-object of its own still reports "QDialog".
class UnmarkedDialog : public QDialog
{
public:
    using QDialog::QDialog;
};

QVariant ptr(const void *p)
{
    return RecordingQeltApp::pointer(p);
}

QVariantList bitRegistration(QWidget *form, BoundWidget *w, int index, int comId, int channel, int address,
                             int bitType, int bitIndex)
{
    return {ptr(form), ptr(w), ptr(w->callback()), index, comId, channel, 0, address, bitType, bitIndex,
            1, 10, 10, 0, 0, false};
}

QVariantList dataRegistration(QWidget *form, BoundWidget *w, int index, int comId, int channel, int dataClass,
                              int address)
{
    return {ptr(form), ptr(w), ptr(w->callback()), index, comId, channel, dataClass, address, -1, 0,
            1, 10, 10, 0, 0, false};
}

// Every controller access the binding offers, with ChnNoVarEnable on so that channel resolution is tried too.
void touchEverything(ControllerBinding &binding)
{
    binding.setChnNoVarEnable(true);
    binding.resolvedChannel();
    binding.registerBit(0, QeltApp::User_BIT, 1, 2);
    binding.registerBit(0, QeltApp::User_BIT, 1, 2, QeltApp::CurrentChannel);
    binding.registerData(0, QeltApp::User, 1);
    binding.registerData(0, QeltApp::User, 1, 0);
    binding.stopUpdates();
    binding.removeRegistrations();
    binding.startUpdates();
    QVERIFY(!binding.reregisterBit(0, QeltApp::I_BIT, 1, 0).has_value());
    QVERIFY(!binding.readBit(QeltApp::I_BIT, 1, 0).has_value());
    QVERIFY(!binding.writeBit(QeltApp::User_BIT, 1, 0, true));
    QVERIFY(!binding.readData(QeltApp::User, 1).has_value());
    QVERIFY(!binding.writeData(QeltApp::User, 1, 5));
    binding.setChnNoVarEnable(false);
}

} // namespace

class TestControllerBinding : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void selfAttachment_data();
    void selfAttachment();
    void attachmentByTheApplication_data();
    void attachmentByTheApplication();

    void registrationArguments_data();
    void registrationArguments();
    void channelIsClamped_data();
    void channelIsClamped();
    void comIdIsClamped_data();
    void comIdIsClamped();
    void resolvedChannel_data();
    void resolvedChannel();
    void accessesUseResolvedChannelAndLink();
    void reregisterBit_data();
    void reregisterBit();
    void acceptsAddress_data();
    void acceptsAddress();

    void authority_data();
    void authority();
    void operationalAuthorityTakesEffectAtNextUpdate_data();
    void operationalAuthorityTakesEffectAtNextUpdate();
    void enabledRequestAndAuthority_data();
    void enabledRequestAndAuthority();
};

void TestControllerBinding::init()
{
    NORVOInterface_Z3::initialization()->resetToDefaults();
}

// ---------------------------------------------------------------------------------------------------------
// attachment

void TestControllerBinding::selfAttachment_data()
{
    // The ancestors from the top down to the widget's parent: "<class>[:<QeltApp property>]" where the
    // property is "a" or "b" (one of two applications), "null" (a null pointer), "text" (a string).
    QTest::addColumn<QStringList>("ancestors");
    QTest::addColumn<int>("formLevel"); // index into ancestors, -1 = stays unattached
    QTest::addColumn<QString>("app");

    QTest::newRow("dialog parent") << QStringList{"QDialog:a"} << 0 << "a";
    QTest::newRow("dialog grandparent") << QStringList{"QDialog:a", "QWidget"} << 0 << "a";
    QTest::newRow("dialog far up") << QStringList{"QDialog:a", "QWidget", "QFrame", "QWidget"} << 0 << "a";
    QTest::newRow("nearest dialog is the form") << QStringList{"QDialog:a", "QWidget", "QDialog:b"} << 2 << "b";
    QTest::newRow("dialog class of its own does not count") << QStringList{"OwnDialog:a"} << -1 << "";
    QTest::newRow("dialog class of its own is passed over")
        << QStringList{"QDialog:a", "OwnDialog:b", "QWidget"} << 0 << "a";
    QTest::newRow("subclass without meta-object counts") << QStringList{"UnmarkedDialog:b"} << 0 << "b";
    QTest::newRow("nearest dialog without property") << QStringList{"QDialog:a", "QDialog"} << -1 << "";
    QTest::newRow("null application") << QStringList{"QDialog:null"} << -1 << "";
    QTest::newRow("property not a pointer") << QStringList{"QDialog:text"} << -1 << "";
    QTest::newRow("no dialog") << QStringList{"QWidget:a", "QFrame:a"} << -1 << "";
    QTest::newRow("main window") << QStringList{"QMainWindow:a"} << -1 << "";
    QTest::newRow("no parent") << QStringList{} << -1 << "";
}

void TestControllerBinding::selfAttachment()
{
    QFETCH(QStringList, ancestors);
    QFETCH(int, formLevel);
    QFETCH(QString, app);

    RecordingQeltApp appA, appB;
    std::unique_ptr<QWidget> top;
    QList<QWidget *> chain;
    for (const QString &entry : std::as_const(ancestors)) {
        const QStringList parts = entry.split(QLatin1Char(':'));
        QWidget *parent = chain.isEmpty() ? nullptr : chain.last();
        QWidget *w = nullptr;
        if (parts.at(0) == QLatin1String("QDialog"))
            w = new QDialog(parent);
        else if (parts.at(0) == QLatin1String("OwnDialog"))
            w = new OwnDialog(parent);
        else if (parts.at(0) == QLatin1String("UnmarkedDialog"))
            w = new UnmarkedDialog(parent);
        else if (parts.at(0) == QLatin1String("QMainWindow"))
            w = new QMainWindow(parent);
        else if (parts.at(0) == QLatin1String("QFrame"))
            w = new QFrame(parent);
        else
            w = new QWidget(parent);
        const QString property = parts.value(1);
        if (property == QLatin1String("a"))
            w->setProperty("QeltApp", QeltApp::toVariant(&appA));
        else if (property == QLatin1String("b"))
            w->setProperty("QeltApp", QeltApp::toVariant(&appB));
        else if (property == QLatin1String("null"))
            w->setProperty("QeltApp", QeltApp::toVariant(nullptr));
        else if (property == QLatin1String("text"))
            w->setProperty("QeltApp", QStringLiteral("application"));
        if (!top)
            top.reset(w);
        chain.append(w);
    }
    auto *widget = new BoundWidget(chain.isEmpty() ? nullptr : chain.last());
    std::unique_ptr<BoundWidget> orphan(chain.isEmpty() ? widget : nullptr);
    ControllerBinding &binding = widget->binding;

    const bool attached = binding.attachToForm();
    QCOMPARE(attached, formLevel >= 0);
    QCOMPARE(binding.isAttached(), formLevel >= 0);
    if (formLevel < 0) {
        QVERIFY(!binding.app());
        QVERIFY(!binding.form());
        touchEverything(binding);
        QCOMPARE(appA.calls().size(), 0);
        QCOMPARE(appB.calls().size(), 0);
        return;
    }

    RecordingQeltApp *expected = app == QLatin1String("a") ? &appA : &appB;
    RecordingQeltApp *other = app == QLatin1String("a") ? &appB : &appA;
    QCOMPARE(binding.form(), chain.at(formLevel));
    QCOMPARE(binding.app(), static_cast<QeltApp *>(expected));

    binding.registerBit(0, QeltApp::I_BIT, 3, 0);
    QCOMPARE(expected->callNames(), QStringList{QStringLiteral("registerUIVariable")});
    QCOMPARE(expected->calls().at(0).args, bitRegistration(chain.at(formLevel), widget, 0, 0, 0, 3, 0, 0));
    QCOMPARE(other->calls().size(), 0);

    // Once attached, a second attempt keeps what it has.
    chain.at(formLevel)->setProperty("QeltApp", QeltApp::toVariant(other));
    QVERIFY(binding.attachToForm());
    QCOMPARE(binding.app(), static_cast<QeltApp *>(expected));
    QCOMPARE(binding.form(), chain.at(formLevel));
}

void TestControllerBinding::attachmentByTheApplication_data()
{
    QTest::addColumn<bool>("withApp");
    QTest::addColumn<bool>("insideForm");

    QTest::newRow("application and form") << true << true;
    QTest::newRow("widget outside the form") << true << false;
    QTest::newRow("no application") << false << true;
}

void TestControllerBinding::attachmentByTheApplication()
{
    QFETCH(bool, withApp);
    QFETCH(bool, insideForm);

    RecordingQeltApp app, formApp;
    QDialog form;
    form.setProperty("QeltApp", QeltApp::toVariant(&formApp)); // the explicit pointers win over the property
    QWidget elsewhere;
    auto *widget = new BoundWidget(insideForm ? static_cast<QWidget *>(&form) : &elsewhere);
    ControllerBinding &binding = widget->binding;

    binding.attach(withApp ? static_cast<void *>(static_cast<QeltApp *>(&app)) : nullptr,
                   static_cast<void *>(static_cast<QWidget *>(&form)));
    QCOMPARE(binding.isAttached(), withApp);
    QCOMPARE(binding.form(), static_cast<QWidget *>(&form));
    if (!withApp) {
        touchEverything(binding);
        QCOMPARE(app.calls().size(), 0);
        QCOMPARE(formApp.calls().size(), 0);
        return;
    }

    QCOMPARE(binding.app(), static_cast<QeltApp *>(&app));
    QVERIFY(binding.attachToForm());
    QCOMPARE(binding.app(), static_cast<QeltApp *>(&app));

    binding.registerData(2, QeltApp::Mcm, 8);
    binding.startUpdates();
    QCOMPARE(app.callNames(), (QStringList{"registerUIVariable", "startUpdateUI"}));
    QCOMPARE(app.calls().at(0).args, dataRegistration(&form, widget, 2, 0, 0, QeltApp::Mcm, 8));
    QCOMPARE(app.calls().at(1).args, QVariantList{ptr(&form)});
    QCOMPARE(formApp.calls().size(), 0);
}

// ---------------------------------------------------------------------------------------------------------
// registrations, channels and links

void TestControllerBinding::registrationArguments_data()
{
    QTest::addColumn<char>("kind");          // 'b' bit, 'd' data word
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("comId");          // as set on the property
    QTest::addColumn<int>("channel");        // 1-based property value
    QTest::addColumn<int>("explicitChannel"); // -1: the stored channel
    QTest::addColumn<int>("area");           // bit type or data class
    QTest::addColumn<int>("address");
    QTest::addColumn<int>("bitIndex");
    QTest::addColumn<QList<int>>("expected"); // index, comId, channel, dataClass, address, bitType, bitIndex; empty: none

    QTest::newRow("monitor bit") << 'b' << 0 << 0 << 1 << -1 << int(QeltApp::User_BIT) << 100 << 3
                                 << QList<int>{0, 0, 0, 0, 100, 7, 3};
    QTest::newRow("PLC input bit, link 2, channel 3") << 'b' << 1 << 2 << 3 << -1 << int(QeltApp::I_BIT) << 12 << 0
                                                      << QList<int>{1, 2, 2, 0, 12, 0, 0};
    QTest::newRow("visible bit, Com bit 31") << 'b' << 2 << 0 << 2 << -1 << int(QeltApp::Com_BIT) << 7 << 31
                                             << QList<int>{2, 0, 1, 0, 7, 12, 31};
    QTest::newRow("bit on the current channel")
        << 'b' << 0 << 1 << 2 << QeltApp::CurrentChannel << int(QeltApp::Reg_BIT) << 4 << 5
        << QList<int>{0, 1, QeltApp::CurrentChannel, 0, 4, 10, 5};
    QTest::newRow("bit type none") << 'b' << 0 << 0 << 1 << -1 << -1 << 100 << 3 << QList<int>{};
    QTest::newRow("bit type none, explicit channel") << 'b' << 0 << 0 << 1 << 0 << -1 << 100 << 3 << QList<int>{};
    QTest::newRow("data word") << 'd' << 0 << 1 << 4 << -1 << int(QeltApp::Sys) << 40 << 0
                               << QList<int>{0, 1, 3, 2, 40, -1, 0};
    QTest::newRow("User data word") << 'd' << 5 << 0 << 1 << -1 << int(QeltApp::User) << 0 << 0
                                    << QList<int>{5, 0, 0, 0, 0, -1, 0};
    QTest::newRow("data word on the current channel")
        << 'd' << 0 << 0 << 1 << QeltApp::CurrentChannel << int(QeltApp::Com) << 9 << 0
        << QList<int>{0, 0, QeltApp::CurrentChannel, 5, 9, -1, 0};
    QTest::newRow("data class none") << 'd' << 0 << 0 << 1 << -1 << -1 << 40 << 0 << QList<int>{};
}

void TestControllerBinding::registrationArguments()
{
    QFETCH(char, kind);
    QFETCH(int, index);
    QFETCH(int, comId);
    QFETCH(int, channel);
    QFETCH(int, explicitChannel);
    QFETCH(int, area);
    QFETCH(int, address);
    QFETCH(int, bitIndex);
    QFETCH(QList<int>, expected);

    RecordingQeltApp app;
    QDialog form;
    form.setProperty("QeltApp", QeltApp::toVariant(&app));
    auto *widget = new BoundWidget(&form);
    ControllerBinding &binding = widget->binding;
    binding.setComId(comId);
    binding.setChannel(channel);
    QVERIFY(binding.attachToForm());

    if (kind == 'b') {
        if (explicitChannel < 0)
            binding.registerBit(index, area, address, bitIndex);
        else
            binding.registerBit(index, area, address, bitIndex, explicitChannel);
    } else {
        if (explicitChannel < 0)
            binding.registerData(index, area, address);
        else
            binding.registerData(index, area, address, explicitChannel);
    }

    if (expected.isEmpty()) {
        QCOMPARE(app.calls().size(), 0);
        return;
    }
    QCOMPARE(app.callNames(), QStringList{QStringLiteral("registerUIVariable")});
    QVariantList args{ptr(&form), ptr(widget), ptr(widget->callback())};
    for (int v : std::as_const(expected))
        args.append(v);
    args << 1 << 10 << 10 << 0 << 0 << false;
    QCOMPARE(app.calls().at(0).args, args);
    // The callback handed over is the interface subobject the application will call.
    QCOMPARE(app.registrations().at(0).callback, widget->callback());
}

void TestControllerBinding::channelIsClamped_data()
{
    QTest::addColumn<int>("channelCount");
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("property");
    QTest::addColumn<int>("stored");

    QTest::newRow("first") << 4 << 1 << 1 << 0;
    QTest::newRow("last") << 4 << 4 << 4 << 3;
    QTest::newRow("zero") << 4 << 0 << 1 << 0;
    QTest::newRow("negative") << 4 << -3 << 1 << 0;
    QTest::newRow("smallest int") << 4 << std::numeric_limits<int>::min() << 1 << 0;
    QTest::newRow("one past the last") << 4 << 5 << 4 << 3;
    QTest::newRow("largest int") << 4 << std::numeric_limits<int>::max() << 4 << 3;
    QTest::newRow("single channel") << 1 << 2 << 1 << 0;
    QTest::newRow("eight channels") << 8 << 8 << 8 << 7;
    QTest::newRow("six channels, seven asked") << 6 << 7 << 6 << 5;
}

void TestControllerBinding::channelIsClamped()
{
    QFETCH(int, channelCount);
    QFETCH(int, value);
    QFETCH(int, property);
    QFETCH(int, stored);

    NORVOInterface_Z3::initialization()->setMaxChannelCount(channelCount);
    BoundWidget widget;
    widget.binding.setChannel(value);
    QCOMPARE(widget.binding.channel(), property);
    QCOMPARE(widget.binding.channelIndex(), stored);

    // The application sees the 0-based channel.
    RecordingQeltApp app;
    QWidget form;
    widget.binding.attach(&app, &form);
    widget.binding.registerBit(0, QeltApp::I_BIT, 0, 0);
    widget.binding.readBit(QeltApp::I_BIT, 0, 0);
    QCOMPARE(app.calls().at(0).args.at(5).toInt(), stored);
    QCOMPARE(app.calls().at(1).args.at(0).toInt(), stored);
}

void TestControllerBinding::comIdIsClamped_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("stored");

    QTest::newRow("zero") << 0 << 0;
    QTest::newRow("positive") << 3 << 3;
    QTest::newRow("minus five") << -5 << 0;
    QTest::newRow("smallest int") << std::numeric_limits<int>::min() << 0;
}

void TestControllerBinding::comIdIsClamped()
{
    QFETCH(int, value);
    QFETCH(int, stored);

    BoundWidget widget;
    widget.binding.setComId(value);
    QCOMPARE(widget.binding.comId(), stored);

    RecordingQeltApp app;
    QWidget form;
    widget.binding.attach(&app, &form);
    widget.binding.registerData(0, QeltApp::User, 1);
    widget.binding.writeData(QeltApp::User, 1, 9);
    QCOMPARE(app.calls().at(0).args.at(4).toInt(), stored);
    QCOMPARE(app.calls().at(1).args.at(4).toInt(), stored);
}

void TestControllerBinding::resolvedChannel_data()
{
    QTest::addColumn<bool>("chnNoVarEnable");
    QTest::addColumn<int>("channel");      // 1-based property
    QTest::addColumn<int>("wordChannel");  // where the current-channel word is written
    QTest::addColumn<int>("current");      // its value
    QTest::addColumn<int>("resolved");

    QTest::newRow("off: stored channel") << false << 3 << 0 << 1 << 2;
    QTest::newRow("current channel 3") << true << 1 << 0 << 3 << 2;
    QTest::newRow("current channel 1") << true << 4 << 0 << 1 << 0;
    QTest::newRow("current channel 0 gives 0") << true << 2 << 0 << 0 << 0;
    QTest::newRow("negative gives 0") << true << 2 << 0 << -4 << 0;
    QTest::newRow("smallest int gives 0") << true << 2 << 0 << std::numeric_limits<int>::min() << 0;
    QTest::newRow("word of another channel is not read") << true << 3 << 1 << 3 << 0;
}

void TestControllerBinding::resolvedChannel()
{
    QFETCH(bool, chnNoVarEnable);
    QFETCH(int, channel);
    QFETCH(int, wordChannel);
    QFETCH(int, current);
    QFETCH(int, resolved);

    RecordingQeltApp app;
    app.memory().setWord(0, wordChannel, QeltApp::Com, CurrentChannelWord, current);
    QWidget form;
    BoundWidget widget;
    widget.binding.setChannel(channel);
    widget.binding.setComId(2); // the current-channel word is always read on link 0
    widget.binding.setChnNoVarEnable(chnNoVarEnable);
    widget.binding.attach(&app, &form);

    QCOMPARE(widget.binding.resolvedChannel(), resolved);
    if (chnNoVarEnable) {
        QCOMPARE(app.callNames(), QStringList{QStringLiteral("getData")});
        QCOMPARE(app.calls().at(0).args, (QVariantList{0, int(QeltApp::Com), CurrentChannelWord, 0}));
    } else {
        QCOMPARE(app.calls().size(), 0);
    }
    QCOMPARE(widget.binding.registrationChannel(), chnNoVarEnable ? QeltApp::CurrentChannel : channel - 1);
}

void TestControllerBinding::accessesUseResolvedChannelAndLink()
{
    RecordingQeltApp app;
    app.memory().setWord(0, 0, QeltApp::Com, CurrentChannelWord, 3);
    app.memory().setBit(2, 2, QeltApp::User_BIT, 5, 1, true);
    app.memory().setWord(2, 2, QeltApp::Bus, 6, 77);
    QWidget form;
    BoundWidget widget;
    widget.binding.setComId(2);
    widget.binding.setChannel(1);
    widget.binding.setChnNoVarEnable(true);
    widget.binding.attach(&app, &form);

    QCOMPARE(widget.binding.readBit(QeltApp::User_BIT, 5, 1), std::optional<bool>(true));
    QCOMPARE(widget.binding.readData(QeltApp::Bus, 6), std::optional<int>(77));
    QVERIFY(widget.binding.writeBit(QeltApp::Mcm_BIT, 8, 4, true));
    QVERIFY(widget.binding.writeData(QeltApp::Reg, 9, -3));

    const QVariantList channelRead{0, int(QeltApp::Com), CurrentChannelWord, 0};
    QCOMPARE(app.callNames(), (QStringList{"getData", "getBit", "getData", "getData", "getData", "setBit",
                                           "getData", "setData"}));
    const QList<RecordingQeltApp::Call> calls = app.calls();
    QCOMPARE(calls.at(0).args, channelRead);
    QCOMPARE(calls.at(1).args, (QVariantList{2, int(QeltApp::User_BIT), 5, 1, 2}));
    QCOMPARE(calls.at(2).args, channelRead);
    QCOMPARE(calls.at(3).args, (QVariantList{2, int(QeltApp::Bus), 6, 2}));
    QCOMPARE(calls.at(4).args, channelRead);
    QCOMPARE(calls.at(5).args, (QVariantList{2, int(QeltApp::Mcm_BIT), 8, 4, true, 2}));
    QCOMPARE(calls.at(6).args, channelRead);
    QCOMPARE(calls.at(7).args, (QVariantList{2, int(QeltApp::Reg), 9, -3, 2}));
}

void TestControllerBinding::reregisterBit_data()
{
    QTest::addColumn<bool>("chnNoVarEnable");
    QTest::addColumn<int>("channel"); // 1-based property
    QTest::addColumn<int>("current"); // the current-channel word
    QTest::addColumn<int>("comId");
    QTest::addColumn<int>("registeredChannel");
    QTest::addColumn<int>("readChannel");
    QTest::addColumn<bool>("value");

    QTest::newRow("stored channel") << false << 3 << 1 << 1 << 2 << 2 << true;
    QTest::newRow("stored channel, bit clear") << false << 2 << 1 << 0 << 1 << 1 << false;
    QTest::newRow("current channel") << true << 1 << 3 << 1 << QeltApp::CurrentChannel << 2 << true;
    QTest::newRow("current channel word 0") << true << 4 << 0 << 0 << QeltApp::CurrentChannel << 0 << true;
}

void TestControllerBinding::reregisterBit()
{
    QFETCH(bool, chnNoVarEnable);
    QFETCH(int, channel);
    QFETCH(int, current);
    QFETCH(int, comId);
    QFETCH(int, registeredChannel);
    QFETCH(int, readChannel);
    QFETCH(bool, value);

    RecordingQeltApp app;
    app.memory().setWord(0, 0, QeltApp::Com, CurrentChannelWord, current);
    // The first read is made on link 0, whatever the widget's link: only that copy of the bit is set.
    app.memory().setBit(0, readChannel, QeltApp::Sys_BIT, 5, 3, value);
    app.memory().setBit(comId + 1, readChannel, QeltApp::Sys_BIT, 5, 3, !value);
    QDialog form;
    form.setProperty("QeltApp", QeltApp::toVariant(&app));
    auto *widget = new BoundWidget(&form);
    ControllerBinding &binding = widget->binding;
    binding.setChannel(channel);
    binding.setComId(comId);
    binding.setChnNoVarEnable(chnNoVarEnable);
    QVERIFY(binding.attachToForm());
    binding.registerBit(0, QeltApp::I_BIT, 1, 0);
    binding.registerBit(1, QeltApp::I_BIT, 2, 0);
    binding.registerBit(2, QeltApp::I_BIT, 3, 0);
    app.clearCalls();

    QCOMPARE(binding.reregisterBit(0, QeltApp::Sys_BIT, 5, 3), std::optional<bool>(value));

    QStringList names{"stopUpdateUI", "removeUIVariable", "registerUIVariable"};
    if (chnNoVarEnable)
        names << QStringLiteral("getData");
    names << QStringLiteral("getBit") << QStringLiteral("startUpdateUI");
    QCOMPARE(app.callNames(), names);
    const QList<RecordingQeltApp::Call> calls = app.calls();
    QCOMPARE(calls.at(1).args, (QVariantList{ptr(&form), ptr(widget)}));
    QCOMPARE(calls.at(2).args,
             bitRegistration(&form, widget, 0, comId, registeredChannel, 5, QeltApp::Sys_BIT, 3));
    if (chnNoVarEnable)
        QCOMPARE(calls.at(3).args, (QVariantList{0, int(QeltApp::Com), CurrentChannelWord, 0}));
    QCOMPARE(calls.at(names.size() - 2).args, (QVariantList{readChannel, int(QeltApp::Sys_BIT), 5, 3, 0}));
    QCOMPARE(calls.last().args, QVariantList{ptr(&form)});

    // Only the new item is left: the enabled and visible items are gone.
    QCOMPARE(app.registrations().size(), 1);
    QCOMPARE(app.registrations().at(0).bitType, int(QeltApp::Sys_BIT));
}

void TestControllerBinding::acceptsAddress_data()
{
    QTest::addColumn<int>("channel");
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("address");
    QTest::addColumn<int>("lowestType");
    QTest::addColumn<int>("highestType");
    QTest::addColumn<bool>("accepted");

    // Read bit types 0 ... 12.
    QTest::newRow("read: first of everything") << 1 << 0 << 0 << 0 << 12 << true;
    QTest::newRow("read: last channel and type") << 8 << 12 << 0 << 0 << 12 << true;
    QTest::newRow("read: large address") << 1 << 0 << std::numeric_limits<int>::max() << 0 << 12 << true;
    QTest::newRow("read: channel 0") << 0 << 0 << 0 << 0 << 12 << false;
    QTest::newRow("read: channel 9") << 9 << 0 << 0 << 0 << 12 << false;
    QTest::newRow("read: type -1") << 1 << -1 << 0 << 0 << 12 << false;
    QTest::newRow("read: type 13") << 1 << 13 << 0 << 0 << 12 << false;
    QTest::newRow("read: address -1") << 1 << 0 << -1 << 0 << 12 << false;
    // Write bit types 7 ... 12.
    QTest::newRow("write: PLC area refused") << 1 << 6 << 0 << 7 << 12 << false;
    QTest::newRow("write: User") << 1 << 7 << 0 << 7 << 12 << true;
    QTest::newRow("write: Com") << 8 << 12 << 5 << 7 << 12 << true;
    QTest::newRow("write: type 13") << 1 << 13 << 0 << 7 << 12 << false;
    QTest::newRow("write: channel 9") << 9 << 7 << 0 << 7 << 12 << false;
}

void TestControllerBinding::acceptsAddress()
{
    QFETCH(int, channel);
    QFETCH(int, type);
    QFETCH(int, address);
    QFETCH(int, lowestType);
    QFETCH(int, highestType);
    QFETCH(bool, accepted);

    // The limit is eight channels whatever the panel is configured for.
    NORVOInterface_Z3::initialization()->setMaxChannelCount(2);
    QCOMPARE(ControllerBinding::acceptsAddress(channel, type, address, lowestType, highestType), accepted);
}

// ---------------------------------------------------------------------------------------------------------
// authority and the enabled state

void TestControllerBinding::authority_data()
{
    QTest::addColumn<int>("operational");
    QTest::addColumn<int>("operatorAuthority");
    QTest::addColumn<bool>("granted");

    QTest::newRow("anybody, strongest") << 0 << 0 << true;
    QTest::newRow("anybody, authority 1") << 0 << 1 << true;
    QTest::newRow("anybody, weakest") << 0 << 99 << true;
    QTest::newRow("needs 3, has 3") << 3 << 3 << true;
    QTest::newRow("needs 3, has 1") << 3 << 1 << true;
    QTest::newRow("needs 3, has 4") << 3 << 4 << false;
    QTest::newRow("needs 1, has 2") << 1 << 2 << false;
    QTest::newRow("needs 99, has 99") << 99 << 99 << true;
    QTest::newRow("needs 5, has 99") << 5 << 99 << false;
}

void TestControllerBinding::authority()
{
    QFETCH(int, operational);
    QFETCH(int, operatorAuthority);
    QFETCH(bool, granted);

    BoundWidget widget;
    widget.binding.setOperationalAuthority(operational);
    QCOMPARE(widget.binding.operationalAuthority(), operational);
    widget.binding.updateAuthority(operatorAuthority);
    QCOMPARE(widget.binding.authorityGranted(), granted);
    QCOMPARE(widget.isEnabled(), granted);
    QVERIFY(widget.binding.enabledRequest());
}

void TestControllerBinding::operationalAuthorityTakesEffectAtNextUpdate_data()
{
    QTest::addColumn<int>("request");
    QTest::addColumn<int>("stored");
    QTest::addColumn<bool>("granted"); // at the next updateAuthority(2)

    QTest::newRow("3 taken") << 3 << 3 << true;
    QTest::newRow("99 taken") << 99 << 99 << true;
    QTest::newRow("0 taken") << 0 << 0 << true;
    QTest::newRow("-1 ignored") << -1 << 1 << false;
    QTest::newRow("100 ignored") << 100 << 1 << false;
    QTest::newRow("smallest int ignored") << std::numeric_limits<int>::min() << 1 << false;
}

void TestControllerBinding::operationalAuthorityTakesEffectAtNextUpdate()
{
    QFETCH(int, request);
    QFETCH(int, stored);
    QFETCH(bool, granted);

    // Needs 1, operator has 2: refused.
    BoundWidget widget;
    widget.binding.setOperationalAuthority(1);
    widget.binding.updateAuthority(2);
    QVERIFY(!widget.isEnabled());

    widget.binding.setOperationalAuthority(request);
    QCOMPARE(widget.binding.operationalAuthority(), stored);
    QVERIFY(!widget.binding.authorityGranted());
    QVERIFY(!widget.isEnabled());

    widget.binding.updateAuthority(2);
    QCOMPARE(widget.binding.authorityGranted(), granted);
    QCOMPARE(widget.isEnabled(), granted);
}

void TestControllerBinding::enabledRequestAndAuthority_data()
{
    // Steps on a widget that needs authority 3: "on"/"off" set the enabled request (the enabled bit or
    // the setEnabled slot), "aN" is updateAuthority(N).
    QTest::addColumn<QStringList>("steps");
    QTest::addColumn<QList<bool>>("enabled");

    QTest::newRow("enabled bit drops while granted, request restores")
        << QStringList{"a1", "off", "on"} << QList<bool>{true, false, true};
    QTest::newRow("refused authority wins over any request")
        << QStringList{"a4", "on", "off", "a1", "on"} << QList<bool>{false, false, false, false, true};
    QTest::newRow("request survives authority changes")
        << QStringList{"off", "a1", "a4", "a2", "on"} << QList<bool>{false, false, false, false, true};
    QTest::newRow("last request wins") << QStringList{"off", "on", "off", "on"}
                                       << QList<bool>{false, true, false, true};
    QTest::newRow("authority regained restores the request")
        << QStringList{"a5", "a3"} << QList<bool>{false, true};
}

void TestControllerBinding::enabledRequestAndAuthority()
{
    QFETCH(QStringList, steps);
    QFETCH(QList<bool>, enabled);

    BoundWidget widget;
    QVERIFY(widget.isEnabled());
    widget.binding.setOperationalAuthority(3);
    QVERIFY(widget.isEnabled());

    bool request = true;
    bool granted = true;
    for (int i = 0; i < steps.size(); ++i) {
        const QString &step = steps.at(i);
        if (step == QLatin1String("on") || step == QLatin1String("off")) {
            request = step == QLatin1String("on");
            widget.binding.setEnabledRequest(request);
        } else {
            const int authority = step.mid(1).toInt();
            granted = authority <= 3;
            widget.binding.updateAuthority(authority);
        }
        QCOMPARE(widget.isEnabled(), enabled.at(i));
        QCOMPARE(widget.binding.enabledRequest(), request);
        QCOMPARE(widget.binding.authorityGranted(), granted);
    }
}

QTEST_MAIN(TestControllerBinding)
#include "tst_controllerbinding.moc"
