#include "propertypath.h"

#include <QFont>
#include <QRect>
#include <QSize>
#include <QTest>

class TestPropertyPath : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void parse_data();
    void parse();
    void readWrite_data();
    void readWrite();
};

void TestPropertyPath::parse_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("form");
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QString>("member");
    QTest::addColumn<int>("number");
    const int W = PropertyPath::Whole, M = PropertyPath::Member, N = PropertyPath::Number, I = PropertyPath::Invalid;
    QTest::newRow("whole with underscore") << "Chn_No" << W << QByteArray("Chn_No") << "" << 0;
    QTest::newRow("member, spaces trimmed") << " font.bold " << M << QByteArray("font") << "bold" << 0;
    QTest::newRow("flag value") << "alignment.128" << N << QByteArray("alignment") << "" << 128;
    QTest::newRow("negative value") << "readBitType.-1" << N << QByteArray("readBitType") << "" << -1;
    for (const char *bad : {"", "Sets the colour.", "font.family.name", "1st", "geometry."})
        QTest::newRow(bad) << QString::fromLatin1(bad) << I << QByteArray() << "" << 0;
}

void TestPropertyPath::parse()
{
    QFETCH(QString, text);
    QFETCH(int, form);
    const PropertyPath path = PropertyPath::parse(text);
    QCOMPARE(int(path.form()), form);
    QCOMPARE(path.isValid(), form != PropertyPath::Invalid);
    if (path.isValid()) {
        QTEST(path.name(), "name");
        QTEST(path.member(), "member");
        QTEST(path.number(), "number");
    }
}

void TestPropertyPath::readWrite_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QVariant>("whole");
    QTest::addColumn<QVariant>("part"); // invalid: the member does not fit the type
    QTest::addColumn<QVariant>("newPart");
    QTest::addColumn<QVariant>("newWhole");
    const QRect rect(10, 20, 100, 30);
    QFont font(QStringLiteral("Sans"), 9), bigger = font;
    bigger.setPointSize(14);
    QTest::newRow("left moves, keeps width") << "geometry.left" << QVariant(rect) << QVariant(10) << QVariant(50)
                                             << QVariant(QRect(50, 20, 100, 30));
    QTest::newRow("top moves, keeps height") << "geometry.top" << QVariant(rect) << QVariant(20) << QVariant(0)
                                             << QVariant(QRect(10, 0, 100, 30));
    QTest::newRow("size height") << "iconSize.height" << QVariant(QSize(16, 24)) << QVariant(24) << QVariant(8)
                                 << QVariant(QSize(16, 8));
    QTest::newRow("font size") << "font.pointSize" << QVariant(font) << QVariant(9) << QVariant(14) << QVariant(bigger);
    QTest::newRow("whole value") << "text" << QVariant(QStringLiteral("a")) << QVariant(QStringLiteral("a"))
                                 << QVariant(QStringLiteral("b")) << QVariant(QStringLiteral("b"));
    QTest::newRow("font member of a rect") << "geometry.bold" << QVariant(rect) << QVariant() << QVariant(true)
                                           << QVariant();
    QTest::newRow("member of a string") << "text.width" << QVariant(QStringLiteral("x")) << QVariant() << QVariant(3)
                                        << QVariant();
}

void TestPropertyPath::readWrite()
{
    QFETCH(QString, path);
    QFETCH(QVariant, whole);
    QFETCH(QVariant, part);
    const PropertyPath p = PropertyPath::parse(path);
    QVERIFY(p.isValid());
    QCOMPARE(p.read(whole), part);
    QFETCH(QVariant, newPart);
    QTEST(p.write(whole, newPart), "newWhole");
    QCOMPARE(p.partType(whole.userType()), part.isValid() ? part.userType() : int(QMetaType::UnknownType));
}

QTEST_MAIN(TestPropertyPath)
#include "tst_propertypath.moc"
