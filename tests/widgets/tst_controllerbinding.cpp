// The binding every controller widget shares: attachment to its form, the registrations and reads it
// makes, channel clamping and resolution. Then what each widget class does with it, one row per class,
// reached by name as forms and the panel reach it: property limits, the registrations made, the enabled
// and visible bits, authority with the enabled request, the panel's font.

#include "buttontestsupport.h"
#include "controllerbinding.h"
#include "norvointerface_z3.h"
#include "updatevariableinterface.h"

#include <QDialog>
#include <QtTest>

#include <climits>
#include <memory>
#include <tuple>

using norvo_v0::QeltApp;
using buttontest::ClassPanel;
using buttontest::registration;

namespace {

class BoundWidget : public QWidget, public norvo_v0::UpdateVariableInterface
{
public:
    explicit BoundWidget(QWidget *parent = nullptr) : QWidget(parent), binding(this, this) {}
    norvo_v0::UpdateVariableInterface *callback() { return this; }
    ControllerBinding binding;
};

class OwnDialog : public QDialog { Q_OBJECT public: using QDialog::QDialog; }; // reports its own class name
class UnmarkedDialog : public QDialog { public: using QDialog::QDialog; }; // no meta-object: reports "QDialog"

} // namespace

class TestControllerBinding : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { NORVOInterface_Z3::initialization()->resetToDefaults(); }
    void attachment_data(); void attachment();
    void acceptsAddress_data(); void acceptsAddress();
    void everyWidgetClass_data(); void everyWidgetClass();
    void propertyLimits_data(); void propertyLimits();
    void registrations_data(); void registrations();
    void enabledAndVisibleBits_data(); void enabledAndVisibleBits();
    void authority_data(); void authority();
};

void TestControllerBinding::attachment_data()
{
    // Ancestors from the top down; ":a" gives the widget the QeltApp property, ":number" ... another value,
    // as a form may hold: only the live application's own pointer attaches.
    QTest::addColumn<QStringList>("ancestors"); QTest::addColumn<int>("formLevel"); // -1: stays unattached
    QTest::newRow("nearest dialog is the form") << QStringList{"QDialog", "QWidget", "QDialog:a"} << 2;
    QTest::newRow("subclass without meta-object") << QStringList{"UnmarkedDialog:a"} << 0;
    QTest::newRow("dialog class of its own") << QStringList{"OwnDialog:a"} << -1;
    QTest::newRow("own class passed over") << QStringList{"QDialog:a", "OwnDialog:a", "QWidget"} << 0;
    QTest::newRow("nearest dialog without property") << QStringList{"QDialog:a", "QDialog"} << -1;
    QTest::newRow("no parent") << QStringList{} << -1;
    for (const char *kind : {"number", "text", "address", "other", "destroyed", "null"})
        QTest::addRow("property holds %s", kind) << QStringList{QStringLiteral("QDialog:%1").arg(kind)} << -1;
}

void TestControllerBinding::attachment()
{
    QFETCH(QStringList, ancestors); QFETCH(int, formLevel);
    RecordingQeltApp app;
    auto gone = std::make_unique<RecordingQeltApp>();
    const void *goneAddress = gone.get();
    gone.reset();
    int other = 0;
    const QMap<QString, QVariant> values{
        {"a", QeltApp::toVariant(&app)},
        {"number", 1094795585},
        {"text", QString::number(quintptr(&app))},
        {"address", QVariant::fromValue(qulonglong(quintptr(&app)))},
        {"other", QVariant::fromValue(static_cast<void *>(&other))},
        {"destroyed", QVariant::fromValue(const_cast<void *>(goneAddress))},
        {"null", QVariant::fromValue(static_cast<void *>(nullptr))}};
    std::unique_ptr<QWidget> top;
    QList<QWidget *> chain;
    for (const QString &entry : std::as_const(ancestors)) {
        QWidget *parent = chain.isEmpty() ? nullptr : chain.last();
        QWidget *w = entry.startsWith("QDialog") ? new QDialog(parent)
            : entry.startsWith("OwnDialog")      ? new OwnDialog(parent)
            : entry.startsWith("UnmarkedDialog") ? static_cast<QWidget *>(new UnmarkedDialog(parent))
                                                 : new QWidget(parent);
        if (entry.contains(':'))
            w->setProperty("QeltApp", values.value(entry.section(':', 1)));
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
    const auto ptr = &RecordingQeltApp::pointer;
    QCOMPARE(app.calls().at(0).args, (QVariantList{ptr(chain.at(formLevel)), ptr(widget), ptr(widget->callback())} + registration({0, 0, 0, 0, 3, 0, 0})));
}

void TestControllerBinding::acceptsAddress_data()
{
    QTest::addColumn<int>("channel"); QTest::addColumn<int>("type"); QTest::addColumn<int>("address");
    QTest::addColumn<int>("lowestType"); QTest::addColumn<bool>("accepted");
    QTest::newRow("channel 8, type 12, max address") << 8 << 12 << INT_MAX << 0 << true;
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
    // Whatever a form holds: enums take only their declared values, bit indexes only 0 ... 31. A value past
    // a limit is refused (the value before stays) or, where the property clamps, clamped; each class that
    // has the property is written at both sides of both limits.
    QTest::addColumn<QString>("className"); QTest::addColumn<QString>("property");
    QTest::addColumn<int>("before"); QTest::addColumn<int>("written"); QTest::addColumn<int>("expected");
    struct Limit { const char *property; int lowest, highest; bool clamps; const char *onlyClass = nullptr; };
    const QList<Limit> limits{
        {"cornersRadius", 0, INT_MAX, true}, {"channel", 1, 4, true}, {"comId", 0, INT_MAX, true},
        {"operationalAuthority", 0, 99, false}, {"lowestEnablingUserLevel", 0, 9, false},
        {"lowestVisibleUserLevel", 0, 9, false}, {"language", 0, 9, false}, {"action", 0, 4, false},
        {"state", 0, 1, false}, {"iconPosition", 0, 4, false}, {"command", 0, 9, false},
        {"readBitType", -1, 12, false}, {"enabledBitType", -1, 12, false}, {"visibleBitType", -1, 12, false},
        {"colorBitType", -1, 12, false}, {"writeBitType", 7, 12, false}, {"textControlDataClass", -1, 5, false},
        {"readBitIndex", 0, 31, false}, {"writeBitIndex", 0, 31, false}, {"enabledBitIndex", 0, 31, false},
        {"visibleBitIndex", 0, 31, false}, {"colorBitIndex", 0, 31, false},
        {"writeAddress", 0, INT_MAX, false, "FunctionButton"}, {"visibleAddress", 0, INT_MAX, false, "DynamicImage"},
        {"textControlAddress", 0, INT_MAX, false}};
    for (const char *className : {"BitButton", "FunctionButton", "KeypadButton", "PictureButton", "DynamicImage", "TabWidget"}) {
        const std::unique_ptr<QWidget> widget(WidgetFactory::create(className, nullptr));
        for (const Limit &l : limits) {
            const auto row = [&](int before, int written, int expected) {
                QTest::addRow("%s %s %d", className, l.property, written) << className << l.property << before << written << expected;
            };
            if (widget->metaObject()->indexOfProperty(l.property) < 0 || (l.onlyClass && qstrcmp(l.onlyClass, className)))
                continue;
            row(l.lowest + 1, l.lowest - 1, l.clamps ? l.lowest : l.lowest + 1);
            row(l.lowest + 1, l.lowest, l.lowest);
            if (l.highest < INT_MAX) {
                row(l.highest - 1, l.highest + 1, l.clamps ? l.highest : l.highest - 1);
                row(l.highest - 1, l.highest, l.highest);
            }
        }
    }
}

void TestControllerBinding::propertyLimits()
{
    QFETCH(QString, className); QFETCH(QString, property); QFETCH(int, before); QFETCH(int, written); QFETCH(int, expected);
    NORVOInterface_Z3::initialization()->setMaxChannelCount(4);
    ClassPanel f(className);
    f.set({QStringLiteral("%1=%2").arg(property).arg(before)});
    f.button->setProperty(qPrintable(property), written);
    QCOMPARE(f.button->property(qPrintable(property)).toInt(), expected);
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
    QTest::newRow("BitButton: channel and link below their limits") << "BitButton" << QStringList{"channel=0", "comId=-1"}
        << false << Regs{{0, 0, 0, 0, 11, 0, 1}};
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
    QTest::newRow("FunctionButton: system word on channel 4, link 1") << "FunctionButton"
        << QStringList{"textControlDataClass=2", "channel=4", "comId=1"} << false << Regs{{3, 1, 3, 2, 51, -1, 0}};
}

void TestControllerBinding::registrations()
{
    QFETCH(QString, className); QFETCH(QStringList, properties); QFETCH(bool, bySlot); QFETCH(QList<QList<int>>, expected);
    ClassPanel f(className);
    f.app.memory().setWord(0, 0, QeltApp::Com, QeltApp::CurrentChannelAddress, 4);
    f.set({"comId=2", "channel=3", "readAddress=11", "readBitIndex=1", "enabledAddress=21", "enabledBitIndex=2",
           "visibleAddress=31", "visibleBitIndex=3", "colorAddress=41", "colorBitIndex=4", "textControlAddress=51"}, true);
    f.set(properties);
    if (bySlot)
        QVERIFY(f.attachBySlot());
    else
        f.button->ensurePolished();
    QWidget *form = bySlot ? &f.otherForm : static_cast<QWidget *>(&f.form);
    QList<QVariantList> actual, wanted;
    for (const RecordingQeltApp::Registration &r : f.app.registrations()) {
        QCOMPARE(r.form, form);
        QCOMPARE(r.widget.data(), f.button);
        QCOMPARE(r.callback, dynamic_cast<norvo_v0::UpdateVariableInterface *>(f.button));
        actual << r.arguments();
    }
    for (const QList<int> &e : std::as_const(expected))
        wanted << registration(e);
    QCOMPARE(actual, wanted);
    // Attaching reads nothing and starts no updates; a second polish does not attach again.
    QCOMPARE(f.app.calls().size(), expected.size());
    QEvent polish(QEvent::Polish);
    QApplication::sendEvent(f.button, &polish);
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
    ClassPanel f(className);
    f.set({QStringLiteral("%1BitType=%2").arg(bit).arg(bitType), QStringLiteral("bitOnVisible=%1").arg(bitOnVisible)}, true);
    f.form.show();
    auto *callback = dynamic_cast<norvo_v0::UpdateVariableInterface *>(f.button);
    callback->updateData(index, !value); // from the other state
    callback->updateData(index, value);
    QCOMPARE(bit == "enabled" ? f.button->isEnabled() : f.button->isVisible(), expected);
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
    ClassPanel f(className);
    f.set({"operationalAuthority=1", QStringLiteral("operationalAuthority=%1").arg(operational),
           QStringLiteral("enabled=%1").arg(request)});
    const auto update = [&f](int level) {
        return QMetaObject::invokeMethod(f.button, "updateAuthority", Q_ARG(int, level));
    };
    QVERIFY(update(operatorAuthority));
    QCOMPARE(f.button->isEnabled(), request && granted);
    QCOMPARE(f.button->property("enabled").toBool(), request);
    f.set({"operationalAuthority=0"}); // takes effect at the next authority update
    QCOMPARE(f.button->isEnabled(), request && granted);
    QVERIFY(update(7)); // 0 needs no authority: the request is restored
    QCOMPARE(f.button->isEnabled(), request);
    f.set({QStringLiteral("enabled=%1").arg(!request)});
    QCOMPARE(f.button->isEnabled(), !request);
}

QTEST_MAIN(TestControllerBinding)
#include "tst_controllerbinding.moc"
