// The keypad key: captions per language, authority, the looks by interaction, and that a press sends
// nothing but the button base's signals.
#include "buttontestsupport.h"
#include "keypadbutton.h"
#include "languagestate.h"
#include "norvointerface_z3.h"

#include <QLineEdit>
#include <QSignalSpy>
#include <QtTest>

using namespace buttontest;

class TestKeypadButton : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { NORVOInterface_Z3::initialization()->resetToDefaults(); }

    void looks_data()
    {
        QTest::addColumn<bool>("enabled"); QTest::addColumn<bool>("checkable"); QTest::addColumn<bool>("checked");
        QTest::addColumn<bool>("focused"); QTest::addColumn<QColor>("body");
        const QColor normal(240, 240, 240), pushed(192, 192, 192), hot(128, 217, 234), disabled(208, 208, 208);
        QTest::newRow("normal") << true << false << false << false << normal;
        QTest::newRow("checked") << true << true << true << false << pushed;
        QTest::newRow("focused") << true << false << false << true << hot;
        QTest::newRow("focused, checkable") << true << true << false << true << hot;
        QTest::newRow("focused and checked: pushed, not checked-hot") << true << true << true << true << pushed;
        QTest::newRow("disabled") << false << false << false << false << disabled;
    }

    void looks()
    {
        QFETCH(bool, enabled); QFETCH(bool, checkable); QFETCH(bool, checked); QFETCH(bool, focused);
        QFETCH(QColor, body);
        QWidget window;
        auto *b = new KeypadButton(&window);
        b->setGeometry(0, 0, 100, 30);
        b->setFocusPolicy(focused ? Qt::StrongFocus : Qt::NoFocus);
        b->setCheckable(checkable);
        b->setChecked(checked);
        b->setEnabled(enabled);
        window.show();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        if (focused)
            b->setFocus();
        QTRY_COMPARE(b->hasFocus(), focused);
        QCOMPARE(b->grab().toImage().pixelColor(50, 6), body);
    }

    // A key press reaches the focused field only as the form holding the key makes it; the key itself
    // emits its signals and touches neither the field nor the controller.
    void pressSendsNothing()
    {
        PanelOf<KeypadButton> panel;
        auto *field = new QLineEdit(&panel.form);
        field->setGeometry(0, 40, 100, 20);
        panel.button->setCharacter(QLatin1Char('5'));
        panel.button->setCommand(KeypadButton::Enter);
        panel.form.show();
        QVERIFY(QTest::qWaitForWindowActive(&panel.form));
        field->setFocus();
        QSignalSpy pressed(panel.button, &AbstractButton::pressed);
        QSignalSpy clicked(panel.button, &AbstractButton::clicked);
        QTest::mouseClick(panel.button, Qt::LeftButton, {}, QPoint(50, 15));
        QCOMPARE(pressed.count(), 1);
        QCOMPARE(clicked.count(), 1);
        QCOMPARE(field->text(), QString());
        QVERIFY(panel.app.calls().isEmpty());
    }
};

QTEST_MAIN(TestKeypadButton)
#include "tst_keypadbutton.moc"
