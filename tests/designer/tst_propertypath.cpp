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
    void memberRoundTrip_data();
    void memberRoundTrip();
    void memberOfWrongTypeIsRefused();
};

void TestPropertyPath::parse_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("form");
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QString>("member");
    QTest::addColumn<int>("number");

    QTest::newRow("whole") << "objectName" << int(PropertyPath::Whole) << QByteArray("objectName") << "" << 0;
    QTest::newRow("whole with underscore") << "Chn_No" << int(PropertyPath::Whole) << QByteArray("Chn_No") << "" << 0;
    QTest::newRow("member") << "geometry.width" << int(PropertyPath::Member) << QByteArray("geometry") << "width" << 0;
    QTest::newRow("font member") << "font.pointSize" << int(PropertyPath::Member) << QByteArray("font")
                                 << "pointSize" << 0;
    QTest::newRow("enum value") << "action.3" << int(PropertyPath::Number) << QByteArray("action") << "" << 3;
    QTest::newRow("flag value") << "alignment.128" << int(PropertyPath::Number) << QByteArray("alignment") << ""
                                << 128;
    QTest::newRow("negative value") << "readBitType.-1" << int(PropertyPath::Number) << QByteArray("readBitType")
                                    << "" << -1;
    QTest::newRow("surrounding spaces") << " font.bold " << int(PropertyPath::Member) << QByteArray("font")
                                        << "bold" << 0;
    QTest::newRow("empty") << "" << int(PropertyPath::Invalid) << QByteArray() << "" << 0;
    QTest::newRow("sentence") << "Sets the colour." << int(PropertyPath::Invalid) << QByteArray() << "" << 0;
    QTest::newRow("two members") << "font.family.name" << int(PropertyPath::Invalid) << QByteArray() << "" << 0;
    QTest::newRow("leading digit") << "1st" << int(PropertyPath::Invalid) << QByteArray() << "" << 0;
    QTest::newRow("trailing dot") << "geometry." << int(PropertyPath::Invalid) << QByteArray() << "" << 0;
}

void TestPropertyPath::parse()
{
    QFETCH(QString, text);
    QFETCH(int, form);
    QFETCH(QByteArray, name);
    QFETCH(QString, member);
    QFETCH(int, number);

    const PropertyPath path = PropertyPath::parse(text);
    QCOMPARE(int(path.form()), form);
    QCOMPARE(path.isValid(), form != PropertyPath::Invalid);
    if (!path.isValid())
        return;
    QCOMPARE(path.name(), name);
    QCOMPARE(path.member(), member);
    QCOMPARE(path.number(), number);
}

void TestPropertyPath::memberRoundTrip_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QVariant>("whole");
    QTest::addColumn<QVariant>("part");
    QTest::addColumn<QVariant>("newPart");
    QTest::addColumn<QVariant>("newWhole");

    const QRect rect(10, 20, 100, 30);
    QTest::newRow("left moves, keeps width") << "geometry.left" << QVariant(rect) << QVariant(10) << QVariant(50)
                                             << QVariant(QRect(50, 20, 100, 30));
    QTest::newRow("top moves, keeps height") << "geometry.top" << QVariant(rect) << QVariant(20) << QVariant(0)
                                             << QVariant(QRect(10, 0, 100, 30));
    QTest::newRow("width") << "geometry.width" << QVariant(rect) << QVariant(100) << QVariant(150)
                           << QVariant(QRect(10, 20, 150, 30));
    QTest::newRow("height") << "geometry.height" << QVariant(rect) << QVariant(30) << QVariant(45)
                            << QVariant(QRect(10, 20, 100, 45));
    QTest::newRow("size width") << "iconSize.width" << QVariant(QSize(16, 24)) << QVariant(16) << QVariant(32)
                                << QVariant(QSize(32, 24));
    QTest::newRow("size height") << "iconSize.height" << QVariant(QSize(16, 24)) << QVariant(24) << QVariant(8)
                                 << QVariant(QSize(16, 8));

    QFont font(QStringLiteral("Sans"), 9);
    QFont bold = font;
    bold.setBold(true);
    QFont bigger = font;
    bigger.setPointSize(14);
    QFont underlined = font;
    underlined.setUnderline(true);
    QFont serif = font;
    serif.setFamily(QStringLiteral("Serif"));
    QTest::newRow("font bold") << "font.bold" << QVariant(font) << QVariant(false) << QVariant(true) << QVariant(bold);
    QTest::newRow("font size") << "font.pointSize" << QVariant(font) << QVariant(9) << QVariant(14)
                               << QVariant(bigger);
    QTest::newRow("font underline") << "font.underline" << QVariant(font) << QVariant(false) << QVariant(true)
                                    << QVariant(underlined);
    QTest::newRow("font family") << "font.family" << QVariant(font) << QVariant(font.family())
                                 << QVariant(QStringLiteral("Serif")) << QVariant(serif);
    QTest::newRow("whole value") << "text" << QVariant(QStringLiteral("a")) << QVariant(QStringLiteral("a"))
                                 << QVariant(QStringLiteral("b")) << QVariant(QStringLiteral("b"));
}

void TestPropertyPath::memberRoundTrip()
{
    QFETCH(QString, path);
    QFETCH(QVariant, whole);
    QFETCH(QVariant, part);
    QFETCH(QVariant, newPart);
    QFETCH(QVariant, newWhole);

    const PropertyPath p = PropertyPath::parse(path);
    QCOMPARE(p.read(whole), part);
    QCOMPARE(p.write(whole, newPart), newWhole);
    QCOMPARE(p.partType(whole.userType()), part.userType());
}

void TestPropertyPath::memberOfWrongTypeIsRefused()
{
    const PropertyPath path = PropertyPath::parse(QStringLiteral("geometry.bold"));
    QVERIFY(path.isValid());
    QCOMPARE(path.partType(QMetaType::QRect), int(QMetaType::UnknownType));
    QVERIFY(!path.read(QRect(1, 2, 3, 4)).isValid());
    QVERIFY(!path.write(QRect(1, 2, 3, 4), true).isValid());
    QVERIFY(!PropertyPath::parse(QStringLiteral("text.width")).write(QStringLiteral("x"), 3).isValid());
}

QTEST_MAIN(TestPropertyPath)
#include "tst_propertypath.moc"
