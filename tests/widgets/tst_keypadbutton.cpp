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

    void defaults()
    {
        KeypadButton b;
        QCOMPARE(b.text(), QStringLiteral("KeypadButton"));
        QVERIFY(b.getTextList().isEmpty());
        QCOMPARE(b.getLanguage(), KeypadButton::language_0);
        QCOMPARE(b.character(), QChar());
        QCOMPARE(b.command(), KeypadButton::None);
        QVERIFY(!b.shiftEnabled());
        QCOMPARE(b.sizeHint(), QSize(100, 30));
        QCOMPARE(b.minimumSizeHint(), QSize(20, 10));
        QCOMPARE(b.focusPolicy(), Qt::NoFocus);
    }

    void setterLimits_data()
    {
        QTest::addColumn<QString>("property");
        QTest::addColumn<int>("before");
        QTest::addColumn<int>("written");
        QTest::addColumn<int>("expected");
        QTest::newRow("command 9") << "command" << 1 << 9 << 9;
        QTest::newRow("command 10") << "command" << 1 << 10 << 1;
        QTest::newRow("language 10") << "language" << 2 << 10 << 2;
        QTest::newRow("user level -1") << "lowestEnablingUserLevel" << 3 << -1 << 3;
        QTest::newRow("authority 100") << "operationalAuthority" << 4 << 100 << 4;
        QTest::newRow("negative radius") << "cornersRadius" << 5 << -1 << 0;
    }

    void setterLimits()
    {
        QFETCH(QString, property);
        QFETCH(int, before);
        QFETCH(int, written);
        QFETCH(int, expected);
        KeypadButton b;
        QVERIFY(b.setProperty(qPrintable(property), before));
        b.setProperty(qPrintable(property), written);
        QCOMPARE(b.property(qPrintable(property)).toInt(), expected);
    }

    void captions()
    {
        KeypadButton b;
        b.setText(QStringLiteral("7"));
        QCOMPARE(b.getTextList(), perLanguage(10, QStringLiteral("7")));
        b.setText(QStringLiteral("8")); // the list stays
        QCOMPARE(b.getTextList(), perLanguage(10, QStringLiteral("7")));
        QCOMPARE(b.text(), QStringLiteral("8"));

        b.setTextList({QStringLiteral("Del"), QStringLiteral("Entf"), QStringLiteral("Supr")});
        b.updateLanguage(1);
        QCOMPARE(b.text(), QStringLiteral("Entf"));
        QCOMPARE(b.getLanguage(), KeypadButton::language_1);
        b.setText(QStringLiteral("other"));
        b.updateLanguage(1); // the current language: nothing
        QCOMPARE(b.text(), QStringLiteral("other"));
        b.updateLanguage(10);
        b.updateLanguage(-1);
        QCOMPARE(b.getLanguage(), KeypadButton::language_1);
        b.updateLanguage(5); // past the list: the caption stays
        QCOMPARE(b.getLanguage(), KeypadButton::language_5);
        QCOMPARE(b.text(), QStringLiteral("other"));
        b.setTextList({});
        b.updateLanguage(0);
        QCOMPARE(b.getLanguage(), KeypadButton::language_5);
    }

    void authority_data()
    {
        QTest::addColumn<int>("authority");
        QTest::addColumn<int>("operatorAuthority");
        QTest::addColumn<bool>("request");
        QTest::addColumn<bool>("enabled");
        QTest::newRow("anybody") << 0 << 9 << true << true;
        QTest::newRow("authority 3, operator 4") << 3 << 4 << true << false;
        QTest::newRow("authority 3, operator 3") << 3 << 3 << true << true;
        QTest::newRow("request off") << 0 << 1 << false << false;
    }

    void authority()
    {
        QFETCH(int, authority);
        QFETCH(int, operatorAuthority);
        QFETCH(bool, request);
        QFETCH(bool, enabled);
        KeypadButton b;
        b.setOperationalAuthority(authority);
        b.setEnabled(request);
        b.updateAuthority(operatorAuthority);
        QCOMPARE(b.QWidget::isEnabled(), enabled);
        QCOMPARE(b.isEnabled(), request);
    }

    void looks_data()
    {
        QTest::addColumn<bool>("enabled");
        QTest::addColumn<bool>("checkable");
        QTest::addColumn<bool>("checked");
        QTest::addColumn<bool>("focused");
        QTest::addColumn<QColor>("body");
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
        QFETCH(bool, enabled);
        QFETCH(bool, checkable);
        QFETCH(bool, checked);
        QFETCH(bool, focused);
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
