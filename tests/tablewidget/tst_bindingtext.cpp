// The variable address a table cell carries: value, bit and text cells, the long form, and what
// malformed fields read as.
#include "bindingtext.h"

#include <QtTest>

class TestBindingText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void parse_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("kind");
        // channel, class or bit type, address, bit index, link, width, decimals, size code, radix
        QTest::addColumn<QList<int>>("numbers");
        QTest::addColumn<QList<double>>("limits");
        const QList<double> open{-1000000000.0, 1000000000.0};
        QTest::newRow("value, short form") << "1@0@100@8@2@0@9999" << int(BindingText::Value)
                                           << QList<int>{0, 0, 100, 0, 0, 8, 2, 4, 10} << QList<double>{0, 9999};
        QTest::newRow("value, long form, hex, link 2") << "3@5@40017@6@0@-5.5@12.25@2@1@2" << int(BindingText::Value)
                                                       << QList<int>{2, 5, 40017, 0, 2, 6, 0, 2, 16}
                                                       << QList<double>{-5.5, 12.25};
        QTest::newRow("radix index 3 is binary") << "1@3@7@16@0@0@1@4@3@0@9" << int(BindingText::Value)
                                                 << QList<int>{0, 3, 7, 0, 0, 16, 0, 4, 2} << QList<double>{0, 1};
        QTest::newRow("radix index 7 falls back to decimal") << "1@3@7@16@0@0@1@4@7@0" << int(BindingText::Value)
                                                              << QList<int>{0, 3, 7, 0, 0, 16, 0, 4, 10}
                                                              << QList<double>{0, 1};
        QTest::newRow("nine fields: no long form") << "1@3@7@16@0@0@1@4@1" << int(BindingText::Value)
                                                   << QList<int>{0, 3, 7, 0, 0, 16, 0, 4, 10} << QList<double>{0, 1};
        QTest::newRow("six fields: no highest") << "2@1@5@4@1@3" << int(BindingText::Value)
                                                << QList<int>{1, 1, 5, 0, 0, 4, 1, 4, 10}
                                                << QList<double>{3, open.at(1)};
        QTest::newRow("bit cell") << "bit@2@1@30@5@0" << int(BindingText::Bit) << QList<int>{1, 1, 30, 5, 0, 0, 0, 4, 10}
                                  << open;
        QTest::newRow("bit cell with link") << "bit@1@12@40017@3@4@x@y@z@w@2" << int(BindingText::Bit)
                                            << QList<int>{0, 12, 40017, 3, 4, 0, 0, 4, 10} << open;
        QTest::newRow("channel 0 is the first") << "0@0@1@1@0@0@1" << int(BindingText::Value)
                                                << QList<int>{0, 0, 1, 0, 0, 1, 0, 4, 10} << QList<double>{0, 1};
        QTest::newRow("channel at the smallest int is the first") << "-2147483648@0@1@1@0@0@1" << int(BindingText::Value)
                                                                 << QList<int>{0, 0, 1, 0, 0, 1, 0, 4, 10} << QList<double>{0, 1};
        QTest::newRow("bit channel at the smallest int") << "bit@-2147483648@1@30@5@0" << int(BindingText::Bit)
                                                         << QList<int>{0, 1, 30, 5, 0, 0, 0, 4, 10} << open;
        QTest::newRow("not numbers read as 0") << "a@b@c@d@e@f@g" << int(BindingText::Value)
                                               << QList<int>{0, 0, 0, 0, 0, 0, 0, 4, 10} << QList<double>{0, 0};
        QTest::newRow("five fields: text") << "1@0@100@8@2" << int(BindingText::Text) << QList<int>{0, -1, 0, 0, 0, 0, 0, 4, 10}
                                           << open;
        QTest::newRow("bit with five fields: text") << "bit@1@1@1@1" << int(BindingText::Text)
                                                    << QList<int>{0, -1, 0, 0, 0, 0, 0, 4, 10} << open;
        QTest::newRow("empty: text") << "" << int(BindingText::Text) << QList<int>{0, -1, 0, 0, 0, 0, 0, 4, 10} << open;
        QTest::newRow("multiTexts section: text") << "multiTexts=Feed##!&*_Vorschub" << int(BindingText::Text)
                                                  << QList<int>{0, -1, 0, 0, 0, 0, 0, 4, 10} << open;
    }

    void parse()
    {
        QFETCH(QString, text);
        QFETCH(int, kind);
        QFETCH(QList<int>, numbers);
        QFETCH(QList<double>, limits);
        const BindingText b = BindingText::parse(text);
        QCOMPARE(int(b.kind), kind);
        const int area = b.kind == BindingText::Bit ? b.bitType : b.dataClass;
        QCOMPARE((QList<int>{b.channel, area, b.address, b.bitIndex, b.comId, b.width, b.decimals, b.sizeCode, b.radix}),
                 numbers);
        QCOMPARE((QList<double>{b.lowest, b.highest}), limits);
    }
};

QTEST_MAIN(TestBindingText)
#include "tst_bindingtext.moc"
