// The soft-key bar: the buttons it builds or takes from a loaded form, count and group changes with
// their shortcuts, F keys reaching only the shown group, the caption stack, direction and attachment.
#include "buttongroup.h"
#include "functionbutton.h"
#include "languagestate.h"
#include "norvointerface_z3.h"
#include "recordingqeltapp.h"

#include <QDialog>
#include <QPushButton>
#include <QSignalSpy>
#include <QtTest>

namespace {
QStringList captions(const QList<FunctionButton *> &buttons)
{
    QStringList out;
    for (FunctionButton *b : buttons)
        out << (b ? b->text() : QStringLiteral("-"));
    return out;
}
QStringList shortcuts(const QList<FunctionButton *> &buttons)
{
    QStringList out;
    for (FunctionButton *b : buttons)
        out << (b ? b->shortcut().toString() : QStringLiteral("-"));
    return out;
}
QStringList fKeys(int from, int to)
{
    QStringList out;
    for (int i = from; i <= to; ++i)
        out << QStringLiteral("F%1").arg(i);
    return out;
}

// A bar on a shown form, built by its first resize.
struct Bar
{
    QDialog form;
    ButtonGroup *bar;
    explicit Bar(int groups = 1, int width = 600, int height = 40)
        : bar(new ButtonGroup(&form))
    {
        bar->setGroupCount(groups);
        bar->setGeometry(0, 0, width, height);
        form.resize(width + 20, height + 500);
    }
    bool show()
    {
        form.show();
        return QTest::qWaitForWindowActive(&form) && bar->isBuilt();
    }
};
} // namespace

class TestButtonGroup : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { NORVOInterface_Z3::initialization()->resetToDefaults(); }

    void defaultBar()
    {
        Bar b;
        QVERIFY(!b.bar->isBuilt());
        QVERIFY(b.show());
        const QList<FunctionButton *> shown = b.bar->shownButtons();
        QCOMPARE(captions(shown), QStringList({"<<", "1", "1", "1", "1", "1", "1", "1", "1", ">>"}));
        QCOMPARE(shortcuts(shown), QStringList{"F9"} + fKeys(1, 8) + QStringList{"F10"});
        QCOMPARE(shown.at(9)->id(), 9);
        QCOMPARE(shown.at(9)->group(), 1);
        QVERIFY(shown.at(0)->width() <= 30);
        QVERIFY(shown.at(1)->width() > 30);
        for (FunctionButton *button : shown) {
            QVERIFY(button->isVisible());
            QVERIFY(button->testAttribute(Qt::WA_NoMousePropagation));
        }
    }

    void counts_data()
    {
        QTest::addColumn<QList<int>>("counts"); // successive setButtonCount calls
        QTest::addColumn<QStringList>("keys");   // shortcuts of the shown buttons at the end
        QTest::addColumn<int>("lastId");
        QTest::newRow("grow to 10") << QList<int>{10} << QStringList{"F11"} + fKeys(1, 10) + QStringList{"F12"} << 11;
        QTest::newRow("grow to 10, shrink to 6") << QList<int>{10, 6} << QStringList{"F11"} + fKeys(1, 6) + QStringList{"F12"}
                                                 << 7;
        QTest::newRow("shrink to 3") << QList<int>{3} << QStringList{"F9"} + fKeys(1, 3) + QStringList{"F10"} << 4;
        QTest::newRow("21 and 0 ignored") << QList<int>{21, 0, -1} << QStringList{"F9"} + fKeys(1, 8) + QStringList{"F10"}
                                          << 9;
    }

    void counts()
    {
        QFETCH(QList<int>, counts); QFETCH(QStringList, keys); QFETCH(int, lastId);
        Bar b;
        QVERIFY(b.show());
        const int children = int(b.bar->findChildren<FunctionButton *>().size());
        for (int count : counts)
            b.bar->setButtonCount(count);
        const QList<FunctionButton *> shown = b.bar->shownButtons();
        QCOMPARE(shortcuts(shown), keys);
        QCOMPARE(shown.last()->id(), lastId);
        QCOMPARE(shown.last()->text(), QStringLiteral(">>"));
        QCOMPARE(b.bar->buttonCount(), int(keys.size()) - 2);
        for (FunctionButton *button : shown)
            QVERIFY(button->isVisible());
        // Removed buttons stay hidden children.
        int visible = 0;
        for (FunctionButton *button : b.bar->findChildren<FunctionButton *>())
            visible += button->isVisible() ? 1 : 0;
        QCOMPARE(visible, int(shown.size()));
        QVERIFY(b.bar->findChildren<FunctionButton *>().size() >= children);
    }

    // Only the shown group's keys answer their F key, though every group's keys carry one.
    void fKeysReachTheShownGroupOnly()
    {
        Bar b(3);
        QVERIFY(b.show());
        b.bar->setCurrentGroup(2);
        QCOMPARE(captions(b.bar->shownButtons()).mid(1, 8), perLanguage(8, QStringLiteral("2")));
        QSignalSpy shownKey(b.bar->buttonsOfGroup(2).at(3), &AbstractButton::clicked);
        QSignalSpy hiddenKey(b.bar->buttonsOfGroup(1).at(3), &AbstractButton::clicked);
        QTest::keyClick(&b.form, Qt::Key_F3);
        QTRY_COMPARE(shownKey.count(), 1);
        QCOMPARE(hiddenKey.count(), 0);

        b.bar->setShortcutEnabled(false);
        QTest::keyClick(&b.form, Qt::Key_F3);
        QTest::qWait(200);
        QCOMPARE(shownKey.count(), 1);
        b.bar->setShortcutEnabled(true);
        QTest::keyClick(&b.form, Qt::Key_F3);
        QTRY_COMPARE(shownKey.count(), 2);

        b.bar->setCurrentGroup(4); // no such group
        b.bar->setCurrentGroup(0);
        QCOMPARE(b.bar->currentGroup(), 2);
        for (FunctionButton *button : b.bar->buttonsOfGroup(1))
            QVERIFY(!button->isVisible());
    }

    void groupCount()
    {
        Bar b(2);
        QVERIFY(b.show());
        b.bar->setCurrentGroup(2);
        b.bar->setGroupCount(4);
        QCOMPARE(b.bar->buttonsOfGroup(4).size(), 10);
        QCOMPARE(b.bar->buttonsOfGroup(4).at(1)->text(), QStringLiteral("4"));
        QVERIFY(!b.bar->buttonsOfGroup(4).at(1)->isVisible());
        b.bar->setGroupCount(0);
        b.bar->setGroupCount(21);
        QCOMPARE(b.bar->groupCount(), 4);
        b.bar->setGroupCount(1); // the shown group goes: group 1 is shown
        QCOMPARE(b.bar->currentGroup(), 1);
        QVERIFY(b.bar->buttonsOfGroup(2).isEmpty());
        QCOMPARE(captions(b.bar->shownButtons()).at(1), QStringLiteral("1"));
        QVERIFY(b.bar->shownButtons().at(1)->isVisible());
    }

    void captionStack()
    {
        Bar b;
        QVERIFY(b.show());
        b.bar->setButtonCount(10);
        const QStringList start = captions(b.bar->shownButtons());
        b.bar->setCurrentButtonGroup({"A", "true", "B", "false"});
        QList<FunctionButton *> shown = b.bar->shownButtons();
        QCOMPARE(shown.at(0)->text(), QStringLiteral("A"));
        QVERIFY(shown.at(0)->isEnabled());
        QCOMPARE(shown.at(1)->text(), QStringLiteral("B"));
        QVERIFY(!shown.at(1)->isEnabled());
        QCOMPARE(captions(shown).mid(2), start.mid(2));
        b.bar->setCurrentButtonGroup({"C", "true", "D", "true", "odd"}); // the odd entry changes nothing
        QCOMPARE(shown.at(1)->text(), QStringLiteral("D"));
        QCOMPARE(shown.at(2)->text(), start.at(2));
        b.bar->restorePreviousButtonGroup();
        QCOMPARE(shown.at(1)->text(), QStringLiteral("B"));
        QVERIFY(!shown.at(1)->isEnabled());
        b.bar->restorePreviousButtonGroup();
        QCOMPARE(captions(shown), start);
        QVERIFY(shown.at(1)->isEnabled());
        b.bar->restorePreviousButtonGroup(); // empty stack
        QCOMPARE(captions(shown), start);
    }

    void vertical()
    {
        Bar b(1, 400, 40);
        QVERIFY(b.show());
        b.bar->setDirection(ButtonGroup::Vertical);
        QCOMPARE(b.bar->size(), QSize(40, 400));
        FunctionButton *side = b.bar->shownButtons().first();
        QCOMPARE(side->maximumHeight(), 30);
        QCOMPARE(side->maximumWidth(), QWIDGETSIZE_MAX);
        QTRY_VERIFY(b.bar->shownButtons().at(2)->y() > b.bar->shownButtons().at(1)->y());
        b.bar->setDirection(ButtonGroup::Direction(2)); // not a direction
        QCOMPARE(b.bar->direction(), ButtonGroup::Vertical);
        b.bar->setDirection(ButtonGroup::Horizontal);
        QCOMPARE(b.bar->size(), QSize(400, 40));
        QCOMPARE(side->maximumWidth(), 30);
    }

    void errorDialogClickedOnGroupChange()
    {
        Bar b(2);
        QVERIFY(b.show());
        QPushButton dismiss;
        QSignalSpy clicked(&dismiss, &QPushButton::clicked);
        b.bar->setErrorDlgPtr(&dismiss);
        b.bar->setCurrentGroup(1); // the shown group: nothing, not even the dialog
        QCOMPARE(clicked.count(), 0);
        b.bar->setCurrentGroup(2);
        QCOMPARE(clicked.count(), 1);
        b.bar->setCurrentGroup(1); // forgotten after the click
        QCOMPARE(clicked.count(), 1);
        b.bar->setErrorDlgPtr(&dismiss);
        b.bar->hideErrorDlg();
        QCOMPARE(clicked.count(), 2);
    }

    // The bar hands the application to every button; a button with a configured bit registers it.
    void attachmentReachesTheButtons()
    {
        Bar b;
        QVERIFY(b.show());
        RecordingQeltApp app;
        FunctionButton *key = b.bar->shownButtons().at(2);
        key->SetEnabledBitType(FunctionButton::O_BIT);
        key->SetEnabledAddress(7);
        b.bar->setQeltAppAndFormPtr(static_cast<norvo_v0::QeltApp *>(&app), &b.form);
        QCOMPARE(app.registrations().size(), 1);
        QCOMPARE(app.registrations().first().widget.data(), static_cast<QWidget *>(key));
    }

    // A loaded form brings the buttons: they are placed by group and id, and no second set is made.
    void loadedButtonsAreReused()
    {
        QDialog form;
        auto *bar = new ButtonGroup(&form);
        bar->setGroupCount(2);
        bar->setButtonCount(2);
        bar->setCurrentGroup(2);
        QList<FunctionButton *> made;
        for (int g : {2, 1}) {
            for (int id : {3, 0, 2, 1}) { // out of order, as a file may hold them
                auto *button = new FunctionButton(bar);
                button->setGroup(g);
                button->setID(id);
                button->setText(QStringLiteral("g%1b%2").arg(g).arg(id));
                made << button;
            }
        }
        auto *stray = new FunctionButton(bar);
        stray->setGroup(5);
        bar->setGeometry(0, 0, 300, 40);
        form.show();
        QVERIFY(QTest::qWaitForWindowActive(&form));
        QCOMPARE(bar->findChildren<FunctionButton *>().size(), made.size() + 1);
        QCOMPARE(captions(bar->shownButtons()), QStringList({"g2b0", "g2b1", "g2b2", "g2b3"}));
        QCOMPARE(captions(bar->buttonsOfGroup(1)), QStringList({"g1b0", "g1b1", "g1b2", "g1b3"}));
        QVERIFY(!stray->isVisible());
        QVERIFY(!bar->buttonsOfGroup(1).first()->isVisible());
        bar->setCurrentGroup(1);
        QVERIFY(bar->buttonsOfGroup(1).first()->isVisible());
    }
};

QTEST_MAIN(TestButtonGroup)
#include "tst_buttongroup.moc"
