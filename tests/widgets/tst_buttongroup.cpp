// The soft-key bar: the buttons it builds or takes from a loaded form, count and group changes with
// their shortcuts, F keys reaching only the shown group, the caption stack, direction and attachment.
#include "buttongroup.h"
#include "functionbutton.h"
#include "norvointerface_z3.h"
#include "recordingqeltapp.h"

#include <QDialog>
#include <QPushButton>
#include <QSignalSpy>
#include <QtTest>

namespace {
QString captions(const QList<FunctionButton *> &buttons)
{
    QStringList out;
    for (FunctionButton *b : buttons)
        out << b->text() + (b->isEnabled() ? "" : "!");
    return out.join(QLatin1Char(' '));
}

// A group's captions as built: the arrows around n keys.
QString keys(int n, const char *caption)
{
    return QStringLiteral("<< %1>>").arg(QString(QLatin1String(caption) + QLatin1Char(' ')).repeated(n));
}

// The arrows' F keys around F1 ... Fn.
QString fKeys(int n, int left = 9)
{
    QStringList out{QStringLiteral("F%1").arg(left)};
    for (int i = 1; i <= n; ++i)
        out << QStringLiteral("F%1").arg(i);
    return (out << QStringLiteral("F%1").arg(left + 1)).join(QLatin1Char(' '));
}

// What a bar shows: every group's captions (disabled keys marked "!"), the shown keys' F keys, then
// the shown group, the keys visible, the last key's id, the bar's size and how the arrows are bounded.
QStringList look(ButtonGroup *bar)
{
    QStringList seen;
    for (int g = 1; g <= bar->groupCount(); ++g)
        seen << captions(bar->buttonsOfGroup(g));
    const QList<FunctionButton *> shown = bar->shownButtons();
    QStringList shortcuts;
    for (FunctionButton *b : shown)
        shortcuts << b->shortcut().toString();
    int visible = 0;
    for (FunctionButton *b : bar->findChildren<FunctionButton *>())
        visible += b->isVisible() && b->testAttribute(Qt::WA_NoMousePropagation);
    const QString arrow = shown.first()->maximumWidth() == 30 ? "30 wide" : shown.first()->maximumHeight() == 30 ? "30 high" : "any";
    const bool down = shown.at(2)->y() > shown.at(1)->y();
    return seen << shortcuts.join(QLatin1Char(' '))
                << QStringLiteral("group %1, %2 visible, last id %3, %4x%5, arrows %6, %7")
                       .arg(bar->currentGroup()).arg(visible).arg(shown.last()->id()).arg(bar->width()).arg(bar->height())
                       .arg(arrow, down ? "down" : "across");
}

// The operator's F key, the click that follows it (a tenth of a second later) included.
void press(ButtonGroup *bar, Qt::Key key)
{
    QTest::keyClick(bar->window(), key);
    QTest::qWait(300);
}

using Action = std::function<QStringList(ButtonGroup *)>; // what it returns is checked after the look
} // namespace
Q_DECLARE_METATYPE(Action)

class TestButtonGroup : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { NORVOInterface_Z3::initialization()->resetToDefaults(); }

    // A bar of the given groups on a shown form, built by its first resize, then the action; every
    // key's click is logged as "group/id".
    void bar_data()
    {
        QTest::addColumn<int>("groups"); QTest::addColumn<Action>("action"); QTest::addColumn<QStringList>("expected");
        const QString one = keys(8, "1");
        const auto across = [](int n, int group = 1) { // n keys in a row, the given group shown
            return QStringLiteral("group %1, %2 visible, last id %3, 600x40, arrows 30 wide, across").arg(group).arg(n + 2).arg(n + 1);
        };
        const QString built = across(8);
        const auto counts = [](QList<int> counts) {
            return [counts](ButtonGroup *bar) {
                for (int n : counts)
                    bar->setButtonCount(n);
                return QStringList();
            };
        };
        QTest::newRow("as built") << 1 << Action(counts({})) << QStringList{one, fKeys(8), built};
        QTest::newRow("grow to 10") << 1 << Action(counts({10})) << QStringList{keys(10, "1"), fKeys(10, 11), across(10)};
        QTest::newRow("grow to 10, shrink to 6") << 1 << Action(counts({10, 6})) << QStringList{keys(6, "1"), fKeys(6, 11), across(6)};
        QTest::newRow("shrink to 3") << 1 << Action(counts({3})) << QStringList{keys(3, "1"), fKeys(3), across(3)};
        QTest::newRow("21, 0 and -1 ignored") << 1 << Action(counts({21, 0, -1})) << QStringList{one, fKeys(8), built};

        // Only the shown group's keys answer their F key, though every group's keys carry one.
        const QStringList three{one, keys(8, "2"), keys(8, "3"), fKeys(8), across(8, 2)};
        const auto onGroup2 = [](bool shortcuts) {
            return [shortcuts](ButtonGroup *bar) {
                bar->setCurrentGroup(2);
                bar->setShortcutEnabled(shortcuts);
                press(bar, Qt::Key_F3);
                bar->setCurrentGroup(4); // no such group
                bar->setCurrentGroup(0);
                return QStringList();
            };
        };
        QTest::newRow("F3 on group 2") << 3 << Action(onGroup2(true)) << (QStringList(three) << "2/3");
        QTest::newRow("F keys off") << 3 << Action(onGroup2(false)) << three;
        QTest::newRow("F keys on again") << 3 << Action([](ButtonGroup *bar) {
            bar->setShortcutEnabled(false);
            bar->setShortcutEnabled(true);
            press(bar, Qt::Key_F3);
            return QStringList();
        }) << QStringList{one, keys(8, "2"), keys(8, "3"), fKeys(8), built, "1/3"};

        // Groups added are hidden; a group count out of range is ignored; the shown group going, group 1 shows.
        QTest::newRow("more groups") << 2 << Action([](ButtonGroup *bar) {
            bar->setCurrentGroup(2);
            bar->setGroupCount(4);
            bar->setGroupCount(0);
            bar->setGroupCount(21);
            return QStringList();
        }) << QStringList{one, keys(8, "2"), keys(8, "3"), keys(8, "4"), fKeys(8), across(8, 2)};
        QTest::newRow("shown group removed") << 2 << Action([](ButtonGroup *bar) {
            bar->setCurrentGroup(2);
            bar->setGroupCount(1);
            return QStringList{QString::number(bar->buttonsOfGroup(2).size())};
        }) << QStringList{one, fKeys(8), built, "0"};

        // Caption sets pushed (text, enabled pairs; an odd entry changes nothing) and restored.
        const auto stack = [](int restores) {
            return [restores](ButtonGroup *bar) {
                bar->setCurrentButtonGroup({"A", "true", "B", "false"});
                bar->setCurrentButtonGroup({"C", "true", "D", "true", "odd"});
                for (int i = 0; i < restores; ++i)
                    bar->restorePreviousButtonGroup();
                return QStringList();
            };
        };
        QTest::newRow("captions pushed") << 1 << Action(stack(0)) << QStringList{"C D 1 1 1 1 1 1 1 >>", fKeys(8), built};
        QTest::newRow("one restored") << 1 << Action(stack(1)) << QStringList{"A B! 1 1 1 1 1 1 1 >>", fKeys(8), built};
        QTest::newRow("all restored, one more") << 1 << Action(stack(3)) << QStringList{one, fKeys(8), built};

        const auto direction = [](QList<int> directions) {
            return [directions](ButtonGroup *bar) {
                if (directions.contains(2))
                    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("\"direction\": 2 is no value of it")));
                for (int d : directions)
                    bar->setDirection(ButtonGroup::Direction(d));
                return QStringList();
            };
        };
        const QString vertical = "group 1, 10 visible, last id 9, 40x600, arrows 30 high, down";
        QTest::newRow("vertical") << 1 << Action(direction({ButtonGroup::Vertical})) << QStringList{one, fKeys(8), vertical};
        QTest::newRow("not a direction") << 1 << Action(direction({ButtonGroup::Vertical, 2})) << QStringList{one, fKeys(8), vertical};
        QTest::newRow("horizontal again") << 1 << Action(direction({ButtonGroup::Vertical, ButtonGroup::Horizontal}))
                                          << QStringList{one, fKeys(8), built};

        // The error dialog is dismissed (clicked) when another group is shown, then forgotten.
        QTest::newRow("error dialog") << 2 << Action([](ButtonGroup *bar) {
            QPushButton dismiss;
            QSignalSpy clicked(&dismiss, &QPushButton::clicked);
            bar->setErrorDlgPtr(&dismiss);
            QStringList seen;
            for (int group : {1, 2, 1}) {
                bar->setCurrentGroup(group);
                seen << QString::number(clicked.count());
            }
            bar->setErrorDlgPtr(&dismiss);
            bar->hideErrorDlg();
            return seen << QString::number(clicked.count());
        }) << QStringList{one, keys(8, "2"), fKeys(8), built, "0", "1", "1", "2"};

        // The bar hands the application to every button; a button with a configured bit registers it.
        QTest::newRow("attached") << 1 << Action([](ButtonGroup *bar) {
            RecordingQeltApp app;
            FunctionButton *key = bar->shownButtons().at(2);
            key->SetEnabledBitType(FunctionButton::O_BIT);
            key->SetEnabledAddress(7);
            bar->setQeltAppAndFormPtr(static_cast<norvo_v0::QeltApp *>(&app), bar->window());
            QStringList seen;
            for (const UiRegistration &r : app.registrations())
                seen << QString::number(static_cast<FunctionButton *>(r.widget.data())->id());
            return seen;
        }) << QStringList{one, fKeys(8), built, "2"};
    }
    void bar()
    {
        QFETCH(int, groups); QFETCH(Action, action); QFETCH(QStringList, expected);
        QDialog form;
        auto *bar = new ButtonGroup(&form);
        bar->setGroupCount(groups);
        bar->setGeometry(0, 0, 600, 40);
        form.resize(620, 640);
        QVERIFY(!bar->isBuilt());
        form.show();
        QVERIFY(QTest::qWaitForWindowActive(&form) && bar->isBuilt());
        QStringList clicks;
        for (FunctionButton *key : bar->findChildren<FunctionButton *>())
            connect(key, &AbstractButton::clicked, this, [&clicks, key] { clicks << QStringLiteral("%1/%2").arg(key->group()).arg(key->id()); });
        const QStringList seen = action(bar);
        QTRY_COMPARE(look(bar) + clicks + seen, expected);
    }

    // A loaded form brings the buttons: they are placed by group and id, and no second set is made.
    void loadedButtonsAreReused()
    {
        QDialog form;
        auto *bar = new ButtonGroup(&form);
        bar->setGroupCount(2);
        bar->setButtonCount(2);
        bar->setCurrentGroup(2);
        int made = 0;
        for (int g : {2, 1}) {
            for (int id : {3, 0, 2, 1}) { // out of order, as a file may hold them
                auto *button = new FunctionButton(bar);
                button->setGroup(g);
                button->setID(id);
                button->setText(QStringLiteral("g%1b%2").arg(g).arg(id));
                ++made;
            }
        }
        auto *stray = new FunctionButton(bar);
        stray->setGroup(5);
        bar->setGeometry(0, 0, 300, 40);
        form.show();
        QVERIFY(QTest::qWaitForWindowActive(&form));
        QCOMPARE(bar->findChildren<FunctionButton *>().size(), made + 1);
        QCOMPARE(look(bar).mid(0, 2), (QStringList{"g1b0 g1b1 g1b2 g1b3", "g2b0 g2b1 g2b2 g2b3"}));
        QVERIFY(look(bar).last().startsWith("group 2, 4 visible")); // not the stray, nor group 1
        bar->setCurrentGroup(1);
        QVERIFY(bar->buttonsOfGroup(1).first()->isVisible());
    }
};

QTEST_MAIN(TestButtonGroup)
#include "tst_buttongroup.moc"
