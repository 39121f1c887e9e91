// The binding every controller widget shares: attachment to its form, the registrations and reads it
// makes, channel clamping and resolution. Then what each widget class does with it, one row per class,
// reached by name as forms and the panel reach it: property limits, the registrations made, the enabled
// and visible bits, authority with the enabled request, the panel's font.

#include "controllerbinding.h"
#include "norvointerface_z3.h"
#include "recordingqeltapp.h"
#include "updatevariableinterface.h"
#include "widgetfactory.h"

#include <QDialog>
#include <QtTest>

#include <climits>
#include <limits>
#include <memory>
#include <tuple>

using norvo_v0::QeltApp;

namespace {

constexpr int IntMin = std::numeric_limits<int>::min();
constexpr int IntMax = std::numeric_limits<int>::max();

class BoundWidget : public QWidget, public norvo_v0::UpdateVariableInterface
{
public:
    explicit BoundWidget(QWidget *parent = nullptr) : QWidget(parent), binding(this, this) {}
    norvo_v0::UpdateVariableInterface *callback() { return this; }
    ControllerBinding binding;
};

class OwnDialog : public QDialog { Q_OBJECT public: using QDialog::QDialog; }; // reports its own class name
class UnmarkedDialog : public QDialog { public: using QDialog::QDialog; }; // no meta-object: reports "QDialog"

QVariant ptr(const void *p) { return RecordingQeltApp::pointer(p); }

// registerUIVariable's arguments after the form, widget and callback.
QVariantList registration(const QList<int> &fields)
{
    QVariantList args;
    for (int v : fields)
        args.append(v);
    return args << 1 << 10 << 10 << 0 << 0 << false;
}
QVariantList registration(QWidget *form, BoundWidget *w, const QList<int> &fields)
{
    return QVariantList{ptr(form), ptr(w), ptr(w->callback())} + registration(fields);
}

// A widget made by class name on a form that carries the application, as the panel loads it.
struct ClassForm
{
    RecordingQeltApp app;
    QDialog form;
    QWidget otherForm; // handed over through setQeltAppAndFormPtr
    QWidget *widget;
    explicit ClassForm(const QString &className) : widget(WidgetFactory::create(className, &form))
    {
        form.setProperty("QeltApp", QeltApp::toVariant(&app));
    }
    // "name=value" assignments; with skipMissing, properties the class lacks are passed over.
    void set(const QStringList &assignments, bool skipMissing = false)
    {
        for (const QString &a : assignments) {
            const QByteArray name = a.section('=', 0, 0).toLatin1();
            if (!skipMissing || widget->metaObject()->indexOfProperty(name) >= 0)
                QVERIFY2(widget->setProperty(name, a.section('=', 1).toInt()), name);
        }
    }
    void deliver(int index, int value) { dynamic_cast<norvo_v0::UpdateVariableInterface *>(widget)->updateData(index, value); }
    bool attachBySlot()
    {
        return QMetaObject::invokeMethod(widget, "setQeltAppAndFormPtr", Q_ARG(void *, static_cast<QeltApp *>(&app)),
                                         Q_ARG(void *, &otherForm));
    }
};

} // namespace

class TestControllerBinding : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { NORVOInterface_Z3::initialization()->resetToDefaults(); }
    void attachment_data(); void attachment();
    void applicationProperty_data(); void applicationProperty();
    void registrationArguments_data(); void registrationArguments();
    void reregisterBit_data(); void reregisterBit();
    void acceptsAddress_data(); void acceptsAddress();
    void everyWidgetClass_data(); void everyWidgetClass();
    void propertyLimits_data(); void propertyLimits();
    void registrations_data(); void registrations();
    void enabledAndVisibleBits_data(); void enabledAndVisibleBits();
    void authority_data(); void authority();
};

void TestControllerBinding::attachment_data()
{
    // Ancestors from the top down; ":a" gives the widget the QeltApp property.
    QTest::addColumn<QStringList>("ancestors"); QTest::addColumn<int>("formLevel"); // -1: stays unattached
    QTest::newRow("nearest dialog is the form") << QStringList{"QDialog", "QWidget", "QDialog:a"} << 2;
    QTest::newRow("subclass without meta-object") << QStringList{"UnmarkedDialog:a"} << 0;
    QTest::newRow("dialog class of its own") << QStringList{"OwnDialog:a"} << -1;
    QTest::newRow("own class passed over") << QStringList{"QDialog:a", "OwnDialog:a", "QWidget"} << 0;
    QTest::newRow("nearest dialog without property") << QStringList{"QDialog:a", "QDialog"} << -1;
    QTest::newRow("no parent") << QStringList{} << -1;
}

void TestControllerBinding::attachment()
{
    QFETCH(QStringList, ancestors); QFETCH(int, formLevel);
    RecordingQeltApp app;
    std::unique_ptr<QWidget> top;
    QList<QWidget *> chain;
    for (const QString &entry : std::as_const(ancestors)) {
        QWidget *parent = chain.isEmpty() ? nullptr : chain.last();
        QWidget *w = entry.startsWith("QDialog") ? new QDialog(parent)
            : entry.startsWith("OwnDialog")      ? new OwnDialog(parent)
            : entry.startsWith("UnmarkedDialog") ? static_cast<QWidget *>(new UnmarkedDialog(parent))
                                                 : new QWidget(parent);
        if (entry.endsWith(":a"))
            w->setProperty("QeltApp", QeltApp::toVariant(&app));
        if (!top)
            top.reset(w);
        chain.append(w);
    }
    auto *widget = new BoundWidget(chain.isEmpty() ? nullptr : chain.last());
    std::unique_ptr<BoundWidget> orphan(chain.isEmpty() ? widget : nullptr);
    ControllerBinding &b = widget->binding;

    QCOMPARE(b.attachToForm(), formLevel >= 0);
    b.setChnNoVarEnable(formLevel < 0); // unattached: even channel resolution must not reach the app
    b.registerBit(0, QeltApp::I_BIT, 3, 0);
    b.registerData(1, QeltApp::User, 1);
    b.startUpdates();
    QVERIFY(b.readBit(QeltApp::I_BIT, 1, 0).has_value() == (formLevel >= 0));
    QVERIFY(b.writeData(QeltApp::User, 1, 5) == (formLevel >= 0));
    if (formLevel < 0) {
        QVERIFY(!b.reregisterBit(0, QeltApp::I_BIT, 1, 0).has_value());
        QCOMPARE(app.calls().size(), 0);
        return;
    }
    QCOMPARE(b.form(), chain.at(formLevel));
    QCOMPARE(app.calls().at(0).args, registration(chain.at(formLevel), widget, {0, 0, 0, 0, 3, 0, 0}));
}

void TestControllerBinding::applicationProperty_data()
{
    // What a form's "QeltApp" property may hold; only the live application's own pointer attaches.
    QTest::addColumn<QString>("kind"); QTest::addColumn<bool>("attaches");
    QTest::newRow("pointer to the live application") << "app" << true;
    QTest::newRow("number from a form") << "number" << false;
    QTest::newRow("numeric text from a form") << "text" << false;
    QTest::newRow("the application's address as a number") << "address" << false;
    QTest::newRow("pointer to something else") << "other" << false;
    QTest::newRow("pointer to a destroyed application") << "destroyed" << false;
    QTest::newRow("null pointer") << "null" << false;
}

void TestControllerBinding::applicationProperty()
{
    QFETCH(QString, kind); QFETCH(bool, attaches);
    RecordingQeltApp app;
    auto gone = std::make_unique<RecordingQeltApp>();
    const void *goneAddress = gone.get();
    gone.reset();
    int other = 0;
    const QMap<QString, QVariant> values{
        {"app", QeltApp::toVariant(&app)},
        {"number", 1094795585},
        {"text", QString::number(quintptr(&app))},
        {"address", QVariant::fromValue(qulonglong(quintptr(&app)))},
        {"other", QVariant::fromValue(static_cast<void *>(&other))},
        {"destroyed", QVariant::fromValue(const_cast<void *>(goneAddress))},
        {"null", QVariant::fromValue(static_cast<void *>(nullptr))}};
    QDialog form;
    form.setProperty("QeltApp", values.value(kind));
    auto *widget = new BoundWidget(&form);
    QCOMPARE(widget->binding.attachToForm(), attaches);
    QCOMPARE(widget->binding.app(), attaches ? static_cast<QeltApp *>(&app) : nullptr);
}

void TestControllerBinding::registrationArguments_data()
{
    QTest::addColumn<bool>("isBit"); QTest::addColumn<int>("comId");
    QTest::addColumn<int>("channel");         // 1-based property
    QTest::addColumn<int>("explicitChannel"); // -1: the stored channel
    QTest::addColumn<int>("area");            // bit type or data class
    QTest::addColumn<QList<int>>("expected"); // index, comId, channel, class, address, bitType, bit; empty: none
    QTest::newRow("monitor bit") << true << 0 << 1 << -1 << int(QeltApp::User_BIT) << QList<int>{4, 0, 0, 0, 100, 7, 3};
    QTest::newRow("channel 0 clamped") << true << 0 << 0 << -1 << int(QeltApp::I_BIT) << QList<int>{4, 0, 0, 0, 100, 0, 3};
    QTest::newRow("channel smallest int clamped") << false << IntMin << IntMin << -1 << int(QeltApp::User)
                                                  << QList<int>{4, 0, 0, 0, 100, -1, 0};
    QTest::newRow("channel past the last clamped") << false << 0 << IntMax << -1 << int(QeltApp::User)
                                                   << QList<int>{4, 0, 3, 0, 100, -1, 0};
    QTest::newRow("bit type -1") << true << 0 << 1 << -1 << -1 << QList<int>{};
    QTest::newRow("data word") << false << 1 << 4 << -1 << int(QeltApp::Sys) << QList<int>{4, 1, 3, 2, 100, -1, 0};
    QTest::newRow("data class -1") << false << 0 << 1 << -1 << -1 << QList<int>{};
}

void TestControllerBinding::registrationArguments()
{
    QFETCH(bool, isBit); QFETCH(int, comId); QFETCH(int, channel); QFETCH(int, explicitChannel); QFETCH(int, area);
    QFETCH(QList<int>, expected);
    NORVOInterface_Z3::initialization()->setMaxChannelCount(4);
    RecordingQeltApp app;
    QDialog form;
    form.setProperty("QeltApp", QeltApp::toVariant(&app));
    auto *widget = new BoundWidget(&form);
    ControllerBinding &b = widget->binding;
    b.setComId(comId);
    b.setChannel(channel);
    QVERIFY(b.attachToForm());
    if (isBit)
        explicitChannel < 0 ? b.registerBit(4, area, 100, 3) : b.registerBit(4, area, 100, 3, explicitChannel);
    else
        explicitChannel < 0 ? b.registerData(4, area, 100) : b.registerData(4, area, 100, explicitChannel);
    QCOMPARE(app.calls().size(), expected.isEmpty() ? 0 : 1);
    if (!expected.isEmpty())
        QCOMPARE(app.calls().at(0).args, registration(&form, widget, expected));
}

void TestControllerBinding::reregisterBit_data()
{
    QTest::addColumn<int>("current"); QTest::addColumn<int>("readChannel"); // 40017, the channel it resolves to
    QTest::newRow("40017 = 3") << 3 << 2;
    QTest::newRow("40017 = 0") << 0 << 0;
    QTest::newRow("40017 smallest int") << IntMin << 0;
}

void TestControllerBinding::reregisterBit()
{
    QFETCH(int, current); QFETCH(int, readChannel);
    RecordingQeltApp app;
    app.memory().setWord(0, 0, QeltApp::Com, QeltApp::CurrentChannelAddress, current);
    app.memory().setWord(0, 1, QeltApp::Com, QeltApp::CurrentChannelAddress, 2); // other channel: not read
    app.memory().setBit(0, readChannel, QeltApp::Sys_BIT, 5, 3, true); // read on link 0 ...
    app.memory().setBit(2, readChannel, QeltApp::Sys_BIT, 5, 3, false); // ... not the widget's link
    QDialog form;
    form.setProperty("QeltApp", QeltApp::toVariant(&app));
    auto *widget = new BoundWidget(&form);
    ControllerBinding &b = widget->binding;
    b.setChannel(3);
    b.setComId(1);
    b.setChnNoVarEnable(true);
    QVERIFY(b.attachToForm());
    b.registerBit(0, QeltApp::I_BIT, 1, 0);
    b.registerBit(1, QeltApp::I_BIT, 2, 0);
    app.clearCalls();
    QCOMPARE(b.resolvedChannel(), readChannel);
    QCOMPARE(app.calls().at(0).args, (QVariantList{0, int(QeltApp::Com), QeltApp::CurrentChannelAddress, 0}));
    app.clearCalls();
    QCOMPARE(b.reregisterBit(0, QeltApp::Sys_BIT, 5, 3), std::optional<bool>(true));
    const QStringList names{"stopUpdateUI", "removeUIVariable", "registerUIVariable", "getData", "getBit",
                            "startUpdateUI"};
    QCOMPARE(app.callNames(), names);
    const QList<RecordingQeltApp::Call> calls = app.calls();
    QCOMPARE(calls.at(1).args, (QVariantList{ptr(&form), ptr(widget)}));
    QCOMPARE(calls.at(2).args, registration(&form, widget, {0, 1, QeltApp::CurrentChannel, 0, 5, QeltApp::Sys_BIT, 3}));
    QCOMPARE(calls.at(4).args, (QVariantList{readChannel, int(QeltApp::Sys_BIT), 5, 3, 0}));
    QCOMPARE(app.registrations().size(), 1);
}

void TestControllerBinding::acceptsAddress_data()
{
    QTest::addColumn<int>("channel"); QTest::addColumn<int>("type"); QTest::addColumn<int>("address");
    QTest::addColumn<int>("lowestType"); QTest::addColumn<bool>("accepted");
    QTest::newRow("channel 8, type 12, max address") << 8 << 12 << IntMax << 0 << true;
    QTest::newRow("channel 0") << 0 << 0 << 0 << 0 << false;
    QTest::newRow("type -1") << 1 << -1 << 0 << 0 << false;
    QTest::newRow("address -1") << 1 << 0 << -1 << 0 << false;
    QTest::newRow("write: below lowest") << 1 << 6 << 0 << 7 << false;
    QTest::newRow("write: lowest") << 1 << 7 << 0 << 7 << true;
}

void TestControllerBinding::acceptsAddress()
{
    QFETCH(int, channel); QFETCH(int, type); QFETCH(int, address); QFETCH(int, lowestType); QFETCH(bool, accepted);
    NORVOInterface_Z3::initialization()->setMaxChannelCount(2); // the limit is eight regardless
    QCOMPARE(ControllerBinding::acceptsAddress(channel, type, address, lowestType, 12), accepted);
}

void TestControllerBinding::everyWidgetClass_data()
{
    QTest::addColumn<QString>("className");
    for (const QString &name : WidgetFactory::classNames())
        QTest::newRow(qPrintable(name)) << name;
}

void TestControllerBinding::everyWidgetClass()
{
    QFETCH(QString, className);
    NORVOInterface_Z3::initialization()->setDefaultWidgetFont(QFont(QStringLiteral("Serif"), 17));
    std::unique_ptr<QWidget> widget(WidgetFactory::create(className, nullptr));
    QVERIFY(widget);
    QCOMPARE(widget->font().pointSize(), 17); // the panel's font, from the constructor on
}

void TestControllerBinding::propertyLimits_data()
{
    // Whatever a form holds: enums take only their declared values, bit indexes only 0 ... 31. Link and
    // channel limits are the binding's (above); the registrations show each class reaches it.
    QTest::addColumn<QString>("className"); QTest::addColumn<QString>("property");
    QTest::addColumn<int>("before"); QTest::addColumn<int>("written"); QTest::addColumn<int>("expected");
    const auto row = [](const char *className, const char *property, int before, int written, int expected) {
        QTest::addRow("%s %s %d", className, property, written) << className << property << before << written << expected;
    };
    row("BitButton", "cornersRadius", 5, -3, 0);
    row("BitButton", "operationalAuthority", 5, 100, 5);
    row("BitButton", "operationalAuthority", 5, 99, 99);
    row("BitButton", "action", 3, 1094795585, 3);
    row("BitButton", "state", 1, 2, 1);
    row("BitButton", "readBitType", 3, 13, 3);
    row("BitButton", "readBitType", 3, -2, 3);
    row("BitButton", "readBitType", 3, -1, -1);
    row("BitButton", "writeBitType", 7, 3, 7);
    row("BitButton", "enabledBitType", 1, 99, 1);
    row("BitButton", "visibleBitType", 2, INT_MIN, 2);
    row("BitButton", "lowestEnablingUserLevel", 4, 10, 4);
    row("BitButton", "lowestVisibleUserLevel", 4, -1, 4);
    row("BitButton", "language", 3, 10, 3);
    row("BitButton", "iconPosition", 1, 5, 1);
    row("BitButton", "readBitIndex", 4, 32, 4);
    row("BitButton", "readBitIndex", 4, -1, 4);
    row("BitButton", "writeBitIndex", 4, 32, 4);
    row("BitButton", "enabledBitIndex", 4, -1, 4);
    row("BitButton", "visibleBitIndex", 4, 31, 31);
    row("FunctionButton", "writeAddress", 8, -1, 8);
    row("FunctionButton", "writeBitIndex", 8, 32, 8);
    row("FunctionButton", "writeBitIndex", 8, 31, 31);
    row("FunctionButton", "textControlAddress", 8, -1, 8);
    row("FunctionButton", "action", 2, 5, 2);
    row("FunctionButton", "enabledBitType", 3, 13, 3);
    row("FunctionButton", "colorBitType", 3, -2, 3);
    row("FunctionButton", "writeBitType", 8, 6, 8);
    row("FunctionButton", "textControlDataClass", 2, 6, 2);
    row("FunctionButton", "textControlDataClass", 2, -1, -1);
    row("FunctionButton", "lowestVisibleUserLevel", 2, 1094795585, 2);
    row("FunctionButton", "language", 1, -1, 1);
    row("FunctionButton", "iconPosition", 3, -1, 3);
    row("FunctionButton", "enabledBitIndex", 4, 32, 4);
    row("FunctionButton", "visibleBitIndex", 4, -1, 4);
    row("FunctionButton", "colorBitIndex", 4, 40, 4);
    row("KeypadButton", "command", 1, 9, 9);
    row("KeypadButton", "command", 1, 10, 1);
    row("KeypadButton", "language", 2, 10, 2);
    row("KeypadButton", "lowestEnablingUserLevel", 3, -1, 3);
    row("DynamicImage", "operationalAuthority", 5, 100, 5);
    row("DynamicImage", "visibleBitIndex", 4, 32, 4);
    row("DynamicImage", "visibleAddress", 4, -1, 4);
    row("DynamicImage", "visibleAddress", 4, 0, 0);
    row("TabWidget", "channel", 2, 99, 4);
    row("TabWidget", "comId", 3, 7, 7); // reaches the binding
}

void TestControllerBinding::propertyLimits()
{
    QFETCH(QString, className); QFETCH(QString, property); QFETCH(int, before); QFETCH(int, written); QFETCH(int, expected);
    NORVOInterface_Z3::initialization()->setMaxChannelCount(4);
    ClassForm f(className);
    f.set({QStringLiteral("%1=%2").arg(property).arg(before)});
    f.widget->setProperty(qPrintable(property), written);
    QCOMPARE(f.widget->property(qPrintable(property)).toInt(), expected);
}

void TestControllerBinding::registrations_data()
{
    // Channel property 3, link 2; monitor bit 11.1, enabled 21.2, visible 31.3, colour 41.4, text-control word 51.
    QTest::addColumn<QString>("className"); QTest::addColumn<QStringList>("properties");
    QTest::addColumn<bool>("bySlot"); QTest::addColumn<QList<QList<int>>>("expected"); // as registration()
    using Regs = QList<QList<int>>;
    QTest::newRow("BitButton: monitor bit by default") << "BitButton" << QStringList() << false << Regs{{0, 2, 2, 0, 11, 0, 1}};
    QTest::newRow("BitButton: all three in order") << "BitButton" << QStringList{"readBitType=1", "enabledBitType=2", "visibleBitType=12"}
        << false << Regs{{0, 2, 2, 0, 11, 1, 1}, {1, 2, 2, 0, 21, 2, 2}, {2, 2, 2, 0, 31, 12, 3}};
    QTest::newRow("BitButton: nothing configured") << "BitButton" << QStringList{"readBitType=-1"} << false << Regs{};
    QTest::newRow("BitButton: current-channel flag keeps the stored channel") << "BitButton"
        << QStringList{"readBitType=7", "visibleBitType=4", "ChnNoVarEnable=1"} << false
        << Regs{{0, 2, 2, 0, 11, 7, 1}, {2, 2, 2, 0, 31, 4, 3}};
    const QStringList all{"enabledBitType=0", "visibleBitType=7", "colorBitType=12", "textControlDataClass=5"};
    const Regs four{{0, 2, 2, 0, 21, 0, 2}, {1, 2, 2, 0, 31, 7, 3}, {2, 2, 2, 0, 41, 12, 4}, {3, 2, 2, 5, 51, -1, 0}};
    QTest::newRow("FunctionButton: nothing configured") << "FunctionButton" << QStringList() << false << Regs{};
    QTest::newRow("FunctionButton: all four on polish") << "FunctionButton" << all << false << four;
    QTest::newRow("FunctionButton: all four through the slot") << "FunctionButton" << all << true << four;
    QTest::newRow("FunctionButton: text-control word only") << "FunctionButton" << QStringList{"textControlDataClass=0"}
        << true << Regs{{3, 2, 2, 0, 51, -1, 0}};
}

void TestControllerBinding::registrations()
{
    QFETCH(QString, className); QFETCH(QStringList, properties); QFETCH(bool, bySlot); QFETCH(QList<QList<int>>, expected);
    ClassForm f(className);
    f.app.memory().setWord(0, 0, QeltApp::Com, QeltApp::CurrentChannelAddress, 4);
    f.set({"comId=2", "channel=3", "readAddress=11", "readBitIndex=1", "enabledAddress=21", "enabledBitIndex=2",
           "visibleAddress=31", "visibleBitIndex=3", "colorAddress=41", "colorBitIndex=4", "textControlAddress=51"}, true);
    f.set(properties);
    if (bySlot)
        QVERIFY(f.attachBySlot());
    else
        f.widget->ensurePolished();
    QWidget *form = bySlot ? &f.otherForm : static_cast<QWidget *>(&f.form);
    QList<QVariantList> actual, wanted;
    for (const RecordingQeltApp::Registration &r : f.app.registrations()) {
        QCOMPARE(r.form, form);
        QCOMPARE(r.widget.data(), f.widget);
        QCOMPARE(r.callback, dynamic_cast<norvo_v0::UpdateVariableInterface *>(f.widget));
        actual << r.arguments();
    }
    for (const QList<int> &e : std::as_const(expected))
        wanted << registration(e);
    QCOMPARE(actual, wanted);
    // Attaching reads nothing and starts no updates; a second polish does not attach again.
    QCOMPARE(f.app.calls().size(), expected.size());
    QEvent polish(QEvent::Polish);
    QApplication::sendEvent(f.widget, &polish);
    QCOMPARE(f.app.registrations().size(), expected.size());
}

void TestControllerBinding::enabledAndVisibleBits_data()
{
    QTest::addColumn<QString>("className"); QTest::addColumn<QString>("bit"); // "enabled" or "visible"
    QTest::addColumn<int>("index"); QTest::addColumn<int>("bitType"); QTest::addColumn<bool>("bitOnVisible");
    QTest::addColumn<int>("value"); QTest::addColumn<bool>("expected"); // enabled or shown
    const QList<std::tuple<const char *, const char *, int>> items{
        {"BitButton", "enabled", 1}, {"BitButton", "visible", 2}, {"FunctionButton", "enabled", 0},
        {"FunctionButton", "visible", 1}, {"DynamicImage", "visible", 2}};
    for (const auto &[className, bit, index] : items) {
        for (const bool onVisible : {true, false}) {
            for (const int value : {0, 1}) {
                const bool expected = QByteArray(bit) == "enabled" ? value == 1 : (value == 1) == onVisible;
                if (QByteArray(bit) == "visible" || onVisible)
                    QTest::addRow("%s %s bit %d%s", className, bit, value, onVisible ? "" : ", shown at 0")
                        << className << bit << index << 1 << onVisible << value << expected;
            }
        }
    }
    // Without a bit the picture always shows, whatever that registration delivers.
    QTest::newRow("DynamicImage without a visible bit") << "DynamicImage" << "visible" << 2 << -1 << true << 0 << true;
}

void TestControllerBinding::enabledAndVisibleBits()
{
    QFETCH(QString, className); QFETCH(QString, bit); QFETCH(int, index); QFETCH(int, bitType); QFETCH(bool, bitOnVisible);
    QFETCH(int, value); QFETCH(bool, expected);
    ClassForm f(className);
    f.set({QStringLiteral("%1BitType=%2").arg(bit).arg(bitType), QStringLiteral("bitOnVisible=%1").arg(bitOnVisible)}, true);
    f.form.show();
    f.deliver(index, !value); // from the other state
    f.deliver(index, value);
    QCOMPARE(bit == "enabled" ? f.widget->isEnabled() : f.widget->isVisible(), expected);
}

void TestControllerBinding::authority_data()
{
    QTest::addColumn<QString>("className"); QTest::addColumn<int>("operational"); // set after 1
    QTest::addColumn<int>("operatorAuthority"); QTest::addColumn<bool>("request"); QTest::addColumn<bool>("granted");
    for (const char *className : {"BitButton", "FunctionButton", "KeypadButton", "PictureButton"}) {
        QTest::addRow("%s: needs 3, has 3", className) << className << 3 << 3 << true << true;
        QTest::addRow("%s: needs 3, has 4", className) << className << 3 << 4 << true << false;
        QTest::addRow("%s: request off", className) << className << 3 << 3 << false << true;
    }
    QTest::newRow("BitButton: refused, request off") << "BitButton" << 3 << 4 << false << false;
    QTest::newRow("BitButton: out of range -1 ignored (needs 1, has 1)") << "BitButton" << -1 << 1 << true << true;
}

// The operator's authority reaches each class by name, as the panel calls it, combined with the
// enabled request, which reads back unchanged and survives authority changes.
void TestControllerBinding::authority()
{
    QFETCH(QString, className); QFETCH(int, operational); QFETCH(int, operatorAuthority); QFETCH(bool, request);
    QFETCH(bool, granted);
    ClassForm f(className);
    f.set({"operationalAuthority=1", QStringLiteral("operationalAuthority=%1").arg(operational),
           QStringLiteral("enabled=%1").arg(request)});
    const auto update = [&f](int level) {
        return QMetaObject::invokeMethod(f.widget, "updateAuthority", Q_ARG(int, level));
    };
    QVERIFY(update(operatorAuthority));
    QCOMPARE(f.widget->isEnabled(), request && granted);
    QCOMPARE(f.widget->property("enabled").toBool(), request);
    f.set({"operationalAuthority=0"}); // takes effect at the next authority update
    QCOMPARE(f.widget->isEnabled(), request && granted);
    QVERIFY(update(7)); // 0 needs no authority: the request is restored
    QCOMPARE(f.widget->isEnabled(), request);
    f.set({QStringLiteral("enabled=%1").arg(!request)});
    QCOMPARE(f.widget->isEnabled(), !request);
}

QTEST_MAIN(TestControllerBinding)
#include "tst_controllerbinding.moc"
