// Stored buffers inflated step by step: the bytes come out as a whole inflate gives them, only as far
// as asked, and a text that is cut, not hex, or longer than it claims ends the data there.
#include "hexinflater.h"

#include <QRandomGenerator>
#include <QtTest>

class TestHexInflater : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void stepsGiveTheWholeData()
    {
        QByteArray data;
        for (int i = 0; i < 200000; ++i)
            data.append(char(QRandomGenerator::global()->bounded(4) + 'a'));
        HexInflater inflater;
        QVERIFY(inflater.open(qCompress(data).toHex(), data.size()));
        QCOMPARE(inflater.claimedSize(), qint64(data.size()));
        QVERIFY(inflater.ensure(10));
        QVERIFY(inflater.data().size() < data.size()); // not all of it for the first bytes
        QVERIFY(!inflater.finished());
        while (inflater.grow(1000)) {
        }
        QVERIFY(inflater.finished());
        QVERIFY(!inflater.failed());
        QCOMPARE(inflater.data(), data);
    }

    void badText_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<qint64>("limit");
        QTest::addColumn<bool>("opens");
        QTest::addColumn<int>("good"); // bytes that come out before the data ends
        QByteArray data;
        QRandomGenerator random(7);
        for (int i = 0; i < 5000; ++i)
            data.append(char(random.bounded(256))); // incompressible: a cut loses data
        const QByteArray hex = qCompress(data).toHex();
        QTest::newRow("claim above the limit") << hex << qint64(4999) << false << 0;
        QTest::newRow("odd length") << hex.left(hex.size() - 1) << qint64(5000) << false << 0;
        QTest::newRow("not hex in the size") << QByteArray("0000g00a") << qint64(5000) << false << 0;
        QTest::newRow("cut short") << hex.left(hex.size() - 10) << qint64(5000) << true << -1;
        QByteArray bad = hex;
        bad[bad.size() / 2] = 'z';
        QTest::newRow("not hex in the stream") << bad << qint64(5000) << true << -1;
        QByteArray longer = hex;
        longer.replace(0, 8, "00000010"); // claims 16 bytes of 5000
        QTest::newRow("longer than claimed") << longer << qint64(5000) << true << 16;
        QTest::newRow("empty block") << qCompress(QByteArray()).toHex() << qint64(10) << true << 0;
    }
    void badText()
    {
        QFETCH(QByteArray, text);
        QFETCH(qint64, limit);
        QFETCH(bool, opens);
        QFETCH(int, good);
        HexInflater inflater;
        QCOMPARE(inflater.open(text, limit), opens);
        if (!opens)
            return;
        inflater.ensure(limit);
        QVERIFY(inflater.finished());
        if (good >= 0) {
            QCOMPARE(inflater.data().size(), good);
            QCOMPARE(inflater.failed(), good > 0);
        } else {
            QVERIFY(inflater.failed());
            QVERIFY(inflater.data().size() < 5000);
        }
    }
};

QTEST_GUILESS_MAIN(TestHexInflater)
#include "tst_hexinflater.moc"
