// The keys of on-screen keypads. The picture key: soft keys delivered to the focused widget, fonts frozen at
// the first show, texts without records, unreadable buffers.
// The keypad key: its looks by interaction (and the bit button's by its monitor bit), and a press that
// sends nothing but the button's signals.
#include "PictureButton.h"
#include "keypadbutton.h"
#include "buttontestsupport.h"
#include "norvointerface_z3.h"

#include <QLineEdit>
#include <QSignalSpy>
#include <QtTest>

using namespace buttontest;

namespace {
// A field that keeps every key event it receives.
class KeyLog : public QLineEdit
{
public:
    using QLineEdit::QLineEdit;
    QList<QStringList> events; // type, key in hex, text, auto-repeat, count

protected:
    bool event(QEvent *e) override
    {
        if (e->type() == QEvent::KeyPress || e->type() == QEvent::KeyRelease) {
            auto *k = static_cast<QKeyEvent *>(e);
            events.append({e->type() == QEvent::KeyPress ? "press" : "release", QString::number(k->key(), 16),
                           k->text(), k->isAutoRepeat() ? "repeat" : "once", QString::number(k->count())});
        }
        return QLineEdit::event(e);
    }
};
} // namespace

class TestKeys : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { NORVOInterface_Z3::initialization()->resetToDefaults(); }

    // A picture key with its soft key on sends one key press (never a release) to the focus widget;
    // a keypad key reaches the focused field only as the form holding it makes it: the key itself
    // emits its signals and touches neither the field nor the controller.
    void softKeys_data()
    {
        QTest::addColumn<QString>("className"); QTest::addColumn<bool>("softKey"); QTest::addColumn<bool>("focus");
        QTest::addColumn<QString>("written"); QTest::addColumn<QList<QStringList>>("events"); // the field's key events
        const auto press = [](int key, const QString &text) {
            return QList<QStringList>{{"press", QString::number(key, 16), text, "once", "1"}};
        };
        QTest::newRow("abc keeps a") << "PictureButton" << true << true << "abc" << press(0x41, "a");
        QTest::newRow("digit") << "PictureButton" << true << true << "7" << press(Qt::Key_7, "7");
        QTest::newRow("point") << "PictureButton" << true << true << "." << press(Qt::Key_Period, ".");
        QTest::newRow("e acute: Latin-1 code of its capital") << "PictureButton" << true << true << "é" << press(0xC9, "é");
        QTest::newRow("PageDown") << "PictureButton" << true << true << "PageDown" << press(Qt::Key_PageDown, "");
        QTest::newRow("Space") << "PictureButton" << true << true << "Space" << press(0x20, " ");
        QTest::newRow("F12") << "PictureButton" << true << true << "F12" << press(Qt::Key_F12, "");
        QTest::newRow("Enter") << "PictureButton" << true << true << "Enter" << press(Qt::Key_Enter, "");
        QTest::newRow("Backspace") << "PictureButton" << true << true << "Backspace" << press(Qt::Key_Backspace, "");
        QTest::newRow("empty: no name of the table sends key 0") << "PictureButton" << true << true << "" << press(0, "");
        QTest::newRow("soft key off") << "PictureButton" << false << true << "a" << QList<QStringList>();
        QTest::newRow("no focus widget") << "PictureButton" << true << false << "a" << QList<QStringList>();
        QTest::newRow("keypad key") << "KeypadButton" << false << true << "5" << QList<QStringList>();
    }

    void softKeys()
    {
        QFETCH(QString, className); QFETCH(bool, softKey); QFETCH(bool, focus); QFETCH(QString, written);
        QFETCH(QList<QStringList>, events);
        ClassPanel panel(className);
        QWidget *b = panel.button;
        b->move(0, 30);
        auto *field = new KeyLog(&panel.form);
        field->setGeometry(0, 0, 100, 20);
        if (className == "KeypadButton") {
            b->setProperty("character", QChar(written.at(0)));
            b->setProperty("command", KeypadButton::Enter);
        } else {
            b->setProperty("softKeyEnabled", softKey);
            b->setProperty("softKeyChar", written);
        }
        panel.form.show();
        QVERIFY(QTest::qWaitForWindowActive(&panel.form));
        focus ? field->setFocus() : field->clearFocus();
        QCOMPARE(QApplication::focusWidget(), focus ? field : nullptr);
        QSignalSpy clicked(b, SIGNAL(clicked(bool)));
        QTest::mouseClick(b, Qt::LeftButton, {}, QPoint(50, 15));
        QCOMPARE(clicked.count(), 1);
        QCOMPARE(field->events, events);
        QVERIFY(panel.app.calls().isEmpty());
    }

    void fontsFrozenAtFirstShow()
    {
        QWidget window;
        auto *b = new PictureButton(&window);
        b->setFont(sizedFont(14));
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        b->setFont(sizedFont(20)); // after the first show: no effect
        QCOMPARE(b->initFont().pointSize(), 14);
        QCOMPARE(b->QWidget::font().pointSize(), 14);
        b->setPluginFont(sizedFont(22));
        QCOMPARE(b->QWidget::font().pointSize(), 22);
    }

    // Unreadable buffers are no data: the caption stays, the buffer is kept, and the translation tool gets
    // one record without word-library link: the caption once, not once per language; a font per language.
    void withoutRecords()
    {
        NORVOInterface_Z3::initialization()->setSystemLanguages({"Sans", "Sans"});
        PictureButton b;
        b.setObjectName(QStringLiteral("pad"));
        b.setFont(sizedFont(9));
        b.setText(QStringLiteral("Go"));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("PictureButton \"pad\": property \"textInfoBuffer\"")));
        b.SetTextInfoBuffer("0badc0de");
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("PictureButton \"pad\": property \"MapBuffer\"")));
        b.SetMapBuffer("zz");
        QCOMPARE(b.textInfoBuffer(), QByteArray("0badc0de"));
        QList<TextData> texts;
        b.getPluginNameAndTransText(texts);
        QCOMPARE(texts.size(), 1);
        QCOMPARE(describeRecord(texts.first()), "-1 0 id -1 [Go] [9,9]");
        b.SetMapBuffer(fontMapBuffer({{0, sizedFont(12)}, {3, sizedFont(13)}}));
        b.getPluginNameAndTransText(texts);
        QCOMPARE(describeRecord(texts.first()), "-1 0 id -1 [Go] [12,13]");
    }

    // The body each key shows in its states; the bit button's caption follows its monitor bit.
    // steps: "checkable", "checked", "focus", "disabled", "bit N" (the monitor bit delivered).
    void looks_data()
    {
        QTest::addColumn<QString>("className"); QTest::addColumn<QStringList>("steps");
        QTest::addColumn<QColor>("body"); QTest::addColumn<QString>("caption"); // empty: not checked
        const QColor normal(240, 240, 240), pushed(192, 192, 192), hot(128, 217, 234), disabled(208, 208, 208);
        const QString keypad = QStringLiteral("KeypadButton");
        QTest::newRow("normal") << keypad << QStringList() << normal << "";
        QTest::newRow("checked") << keypad << QStringList{"checkable", "checked"} << pushed << "";
        QTest::newRow("focused") << keypad << QStringList{"focus"} << hot << "";
        QTest::newRow("focused, checkable") << keypad << QStringList{"checkable", "focus"} << hot << "";
        QTest::newRow("focused and checked: pushed, not checked-hot") << keypad << QStringList{"checkable", "checked", "focus"}
                                                                      << pushed << "";
        QTest::newRow("disabled") << keypad << QStringList{"disabled"} << disabled << "";
        QTest::newRow("BitButton off") << "BitButton" << QStringList{"bit 0"} << normal << "OFF";
        QTest::newRow("BitButton monitor bit 1") << "BitButton" << QStringList{"bit 0", "bit 1"} << pushed << "ON";
        // Disabled, every kind looks alike, whatever its state: flat disabled body, greyed caption.
        QTest::newRow("BitButton disabled, bit 1") << "BitButton" << QStringList{"disabled", "bit 0", "bit 1"} << disabled << "ON";
        for (const char *kind : {"FunctionButton", "PictureButton"})
            QTest::addRow("%s disabled", kind) << kind << QStringList{"disabled"} << disabled << "";
    }

    void looks()
    {
        QFETCH(QString, className); QFETCH(QStringList, steps); QFETCH(QColor, body); QFETCH(QString, caption);
        ClassPanel panel(className);
        QWidget *b = panel.button;
        const bool focused = steps.contains("focus");
        b->setFocusPolicy(focused ? Qt::StrongFocus : Qt::NoFocus);
        b->setProperty("checkable", steps.contains("checkable"));
        b->setProperty("checked", steps.contains("checked"));
        b->setEnabled(!steps.contains("disabled"));
        panel.form.show();
        QVERIFY(QTest::qWaitForWindowActive(&panel.form));
        for (const QString &step : std::as_const(steps)) {
            if (step.startsWith("bit"))
                QCOMPARE(panel.app.deliver(b, 0, step.section(' ', 1).toInt()), 1);
        }
        if (focused)
            b->setFocus();
        QTRY_COMPARE(b->hasFocus(), focused);
        if (!caption.isEmpty())
            QCOMPARE(b->property("text").toString(), caption);
        // Inside the body, clear of the bevel (2 px from the edge) and of the caption: the bit button's
        // is short and centred, the keypad key's may fill the width.
        const QImage image = b->grab().toImage();
        const QList<QPoint> points = caption.isEmpty() ? QList<QPoint>{{50, 6}}
                                                       : QList<QPoint>{{12, 8}, {12, 22}, {88, 15}};
        for (const QPoint &p : points)
            QCOMPARE(image.pixelColor(p), body);
        if (steps.contains("disabled")) { // nothing inside the border darker than the grey of the caption
            for (int y = 2; y < image.height() - 2; ++y)
                for (int x = 2; x < image.width() - 2; ++x)
                    QVERIFY2(qGray(image.pixel(x, y)) >= 191, qPrintable(QStringLiteral("%1,%2").arg(x).arg(y)));
        }
    }
};

QTEST_MAIN(TestKeys)
#include "tst_keys.moc"
