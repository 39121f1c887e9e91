#include <QtTest>
class Test : public QObject { Q_OBJECT private slots: void placeholder() {} };
QTEST_MAIN(Test)
#include "tst_textcodecs.moc"
