// Buttons on a form attached to the simulated controller: operator input reaches the controller
// and the controller's answer comes back to the screen.
#include "bitbutton.h"
#include "buttontestsupport.h"
#include "functionbutton.h"
#include "keypaddialog.h"
#include "norvointerface_z3.h"
#include "simulatedcontroller.h"
#include "tablecontents.h"
#include "tablewidget.h"

#include <QDialog>
#include <QtTest>

using norvo_v0::QeltApp;

class TestEndToEnd : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void bitButtonRoundTrip();
    void functionButtonFollowsController();
    void currentChannelFollowsController();
    void tableCellThroughTheKeypad();

private:
    static QColor bodyPixel(QWidget *w) { return w->grab().toImage().pixelColor(w->width() / 2, 8); }
};

void TestEndToEnd::init()
{
    NORVOInterface_Z3::initialization()->resetToDefaults();
}

void TestEndToEnd::bitButtonRoundTrip()
{
    SimulatedController controller;
    QDialog form;
    form.setProperty("QeltApp", QeltApp::toVariant(&controller));
    BitButton *button = buttontest::keepOnUserBitKey(&form, 10, 3);
    form.show();
    QVERIFY(QTest::qWaitForWindowExposed(&form));
    QCOMPARE(controller.registrationCount(&form), 1);
    controller.startUpdateUI(&form);
    QTRY_COMPARE(bodyPixel(button), QColor(240, 240, 240));

    QTest::mousePress(button, Qt::LeftButton, {}, QPoint(50, 15));
    QCOMPARE(controller.getData(0, QeltApp::User, 10, 0), 8);
    QTRY_COMPARE(button->state(), BitButton::On);
    QTRY_COMPARE(bodyPixel(button), QColor(192, 192, 192));
    QCOMPARE(button->text(), QStringLiteral("ON"));

    QTest::mouseRelease(button, Qt::LeftButton, {}, QPoint(50, 15));
    QVERIFY(!controller.getBit(0, QeltApp::User_BIT, 10, 3, 0));
    QTRY_COMPARE(button->state(), BitButton::Off);
    QTRY_COMPARE(bodyPixel(button), QColor(240, 240, 240));

    // Held again, then an alarm box takes the input: the bit drops although no release ever comes.
    QTest::mousePress(button, Qt::LeftButton, {}, QPoint(50, 15));
    QTRY_COMPARE(button->state(), BitButton::On);
    QDialog alarm(&form);
    alarm.setModal(true);
    alarm.show();
    QVERIFY(!controller.getBit(0, QeltApp::User_BIT, 10, 3, 0));
    QTRY_COMPARE(button->state(), BitButton::Off);
}

void TestEndToEnd::functionButtonFollowsController()
{
    SimulatedController controller;
    QDialog form;
    auto *button = new FunctionButton(&form);
    button->setGeometry(0, 0, 100, 30);
    button->SetEnabledBitType(FunctionButton::O_BIT);
    button->SetEnabledAddress(1);
    button->SetColorBitType(FunctionButton::O_BIT);
    button->SetColorAddress(2);
    button->SetButtonColorOn(QColor(0, 200, 0));
    button->SetTextControlDataClass(FunctionButton::Reg_Var);
    button->SetTextControlAddress(7);
    button->SetTextValueList({QStringLiteral("1"), QStringLiteral("2")});
    button->SetTextStringList({QStringLiteral("Auto;Automatik"), QStringLiteral("Jog;Tippen")});
    button->SetAction(FunctionButton::Invert);
    button->SetWriteBitType(FunctionButton::Com);
    button->SetWriteAddress(3);
    button->setQeltAppAndFormPtr(static_cast<QeltApp *>(&controller), &form);
    form.show();
    QVERIFY(QTest::qWaitForWindowExposed(&form));
    controller.startUpdateUI(&form);

    QTRY_VERIFY(!button->QWidget::isEnabled()); // enable bit O1 is 0
    controller.setBit(0, QeltApp::O_BIT, 1, 0, true, 0);
    QTRY_VERIFY(button->QWidget::isEnabled());
    controller.setBit(0, QeltApp::O_BIT, 2, 0, true, 0);
    QTRY_COMPARE(bodyPixel(button), QColor(0, 200, 0));
    controller.setData(0, QeltApp::Reg, 7, 2, 0);
    QTRY_COMPARE(button->text(), QStringLiteral("Jog"));

    QTest::mouseClick(button, Qt::LeftButton, {}, QPoint(50, 15));
    QVERIFY(controller.getBit(0, QeltApp::Com_BIT, 3, 0, 0));
    QTest::mouseClick(button, Qt::LeftButton, {}, QPoint(50, 15));
    QVERIFY(!controller.getBit(0, QeltApp::Com_BIT, 3, 0, 0));
}

void TestEndToEnd::currentChannelFollowsController()
{
    SimulatedController controller;
    QDialog form;
    form.setProperty("QeltApp", QeltApp::toVariant(&controller));
    auto *button = new BitButton(&form);
    button->SetChnNoVarEnable(true);
    button->SetReadBitType(BitButton::S_BIT);
    button->SetReadAddress(4);
    form.show();
    QVERIFY(QTest::qWaitForWindowExposed(&form));
    button->resetRegisterReadBitData(1, BitButton::S_BIT, 4, 0); // registers on the current channel
    controller.setBit(2, QeltApp::S_BIT, 4, 0, true, 0);
    QTest::qWait(50);
    QCOMPARE(button->state(), BitButton::Off); // channel 3 is not the current one yet
    controller.setData(0, QeltApp::Com, QeltApp::CurrentChannelAddress, 3, 0);
    QTRY_COMPARE(button->state(), BitButton::On);
}

QTEST_MAIN(TestEndToEnd)
#include "tst_endtoend.moc"

void TestEndToEnd::tableCellThroughTheKeypad()
{
    SimulatedController controller;
    QDialog form;
    form.setProperty("QeltApp", QeltApp::toVariant(&controller));
    auto *table = new TableWidget(&form);
    table->setRowCount(3);
    table->setColumnCount(2);
    QTableWidgetItem name(QStringLiteral("Feed override"));
    QTableWidgetItem value;
    value.setWhatsThis(QStringLiteral("1@0@100@8@2@0@9999"));
    table->setData(TableContents::encode(3, 2, {{}, {&name, &value}, {}}));
    table->setSoftKeypad(true);
    table->setGeometry(0, 0, 400, 300);
    controller.setData(0, QeltApp::User, 100, 4200, 0);
    form.resize(400, 300);
    form.show();
    QVERIFY(QTest::qWaitForWindowExposed(&form));
    controller.startUpdateUI(&form);
    QCOMPARE(table->item(1, 1)->text(), QStringLiteral("42.00"));

    // The operator clicks the cell, types 12.5 on the keypad and confirms.
    QStringList typed = {QStringLiteral("CLR"), QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("."),
                         QStringLiteral("5")};
    controller.setKeypadDriver([&](KeypadDialog &keypad) {
        for (const QString &key : std::as_const(typed))
            keypad.typeKey(key);
        keypad.accept();
        if (keypad.isVisible()) // refused: the operator gives up
            keypad.reject();
    });
    const QRect cell = table->visualItemRect(table->item(1, 1));
    QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, cell.center());
    QCOMPARE(controller.getData(0, QeltApp::User, 100, 0), 1250);
    QTRY_COMPARE(table->item(1, 1)->text(), QStringLiteral("12.50"));
    // Opened next to the cell, below it.
    const QRect global(table->viewport()->mapToGlobal(cell.topLeft()), cell.size());
    QVERIFY(qAbs(controller.lastKeypadGeometry().top() - global.bottom()) < 40);

    // A value beyond the cell's limit is refused by the keypad: nothing is written.
    typed = QStringList{QStringLiteral("CLR"), QStringLiteral("9"), QStringLiteral("9"), QStringLiteral("9"),
                        QStringLiteral("9"), QStringLiteral("9")};
    QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, cell.center());
    QCOMPARE(controller.getData(0, QeltApp::User, 100, 0), 1250);
    QCOMPARE(table->item(1, 1)->text(), QStringLiteral("12.50"));
}
