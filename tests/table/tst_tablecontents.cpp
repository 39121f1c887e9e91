// The table's stored contents: Qt 4.8 stream bytes assembled by hand decode exactly and our writer
// reproduces them; rows are read lazily in any order; surplus stored columns are skipped; malformed or
// lying input ends the readable rows without a large allocation.
#include "cellspans.h"
#include "tablecontents.h"

#include <QTableWidgetItem>
#include <QtEndian>
#include <QtTest>

Q_DECLARE_METATYPE(CellSpans::Span)

namespace {

// A Qt 4.8 stream written by hand: big-endian numbers, UTF-16 strings, item roles as role, Qt 4 type
// id, null flag, value.
class Bytes
{
public:
    Bytes &i32(qint32 v) { char b[4]; qToBigEndian(v, b); m_data.append(b, 4); return *this; }
    Bytes &u8(quint8 v) { m_data.append(char(v)); return *this; }
    Bytes &string(const QString &s) { i32(qint32(s.size() * 2)); for (QChar c : s) m_data.append(char(c.unicode() >> 8)).append(char(c.unicode() & 0xff)); return *this; }
    Bytes &stringRole(int role, const QString &s) { return i32(role).i32(10).u8(0).string(s); }
    Bytes &intRole(int role, int v) { return i32(role).i32(2).u8(0).i32(v); }
    Bytes &bytesRole(int role, const QByteArray &a) { i32(role).i32(12).u8(0).i32(qint32(a.size())).m_data.append(a); return *this; }
    QByteArray framed() const { return qCompress(m_data).toHex(); }
    QByteArray raw() const { return m_data; }

private:
    QByteArray m_data;
};

QStringList describe(const QList<TableContents::Roles> &cells)
{
    QStringList out;
    for (const TableContents::Roles &roles : cells) {
        QStringList parts;
        for (const auto &[role, value] : roles)
            parts << QStringLiteral("%1=%2").arg(role).arg(value.userType() == QMetaType::QByteArray
                                                                ? QString::fromLatin1(value.toByteArray().toHex())
                                                                : value.toString());
        out << parts.join(QLatin1Char(','));
    }
    return out;
}

QByteArray longTable(int rows, int columns)
{
    Bytes b;
    b.i32(rows).i32(columns);
    for (int r = 0; r < rows; ++r)
        for (int c = 0; c < columns; ++c)
            b.i32(1).stringRole(Qt::DisplayRole, QStringLiteral("r%1c%2").arg(r).arg(c));
    return b.framed();
}

} // namespace

class TestTableContents : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // Merged cells: a count and rectangles (first row, first column, last row, last column), hex text
    // of the plain stream; reading stops at the end of the rectangles or at one that is not a span.
    void spans_data()
    {
        QTest::addColumn<QByteArray>("hex"); QTest::addColumn<QList<CellSpans::Span>>("spans");
        QTest::addColumn<bool>("written"); // our writer gives the same bytes
        const QByteArray two = Bytes().i32(2).i32(2).i32(1).i32(3).i32(4).i32(0).i32(0).i32(0).i32(5).raw().toHex();
        QTest::newRow("two") << two << QList<CellSpans::Span>{{2, 1, 2, 4}, {0, 0, 1, 6}} << true;
        QTest::newRow("none") << Bytes().i32(0).raw().toHex() << QList<CellSpans::Span>{} << true;
        QTest::newRow("count beyond the rectangles")
            << Bytes().i32(0x7fffffff).i32(1).i32(1).i32(1).i32(2).raw().toHex() << QList<CellSpans::Span>{{1, 1, 1, 2}} << false;
        QTest::newRow("backwards rectangle ends it") << Bytes().i32(2).i32(1).i32(1).i32(1).i32(1).i32(5).i32(0).i32(4).i32(0).raw().toHex()
            << QList<CellSpans::Span>{{1, 1, 1, 1}} << false;
        QTest::newRow("reaching the largest number ends a cell short") << QByteArray("00000001" "00000000" "00000003" "7fffffff" "7fffffff")
            << QList<CellSpans::Span>{{0, 3, 0x7fffffff, 0x7fffffff - 3}} << false;
        QTest::newRow("cut in a rectangle") << Bytes().i32(1).i32(1).i32(1).raw().toHex() << QList<CellSpans::Span>{} << false;
    }
    void spans()
    {
        QFETCH(QByteArray, hex); QFETCH(QList<CellSpans::Span>, spans); QFETCH(bool, written);
        QList<CellSpans::Span> read;
        QVERIFY(CellSpans::decode(hex, &read));
        QCOMPARE(read, spans);
        if (written)
            QCOMPARE(CellSpans::encode(spans), hex);
        QVERIFY(!CellSpans::decode("12x4", &read));
        QVERIFY(read.isEmpty());
    }

    void golden()
    {
        Bytes b;
        b.i32(2).i32(2);
        b.i32(2).stringRole(Qt::DisplayRole, QStringLiteral("Feed")).stringRole(Qt::WhatsThisRole, QStringLiteral("1@0@100@8@2@0@9999"));
        b.i32(0);
        b.i32(2).intRole(0x13370551, 33).bytesRole(Qt::StatusTipRole, QByteArray("\x01\x02"));
        b.i32(1).stringRole(Qt::DisplayRole, QStringLiteral("x"));
        TableContents contents;
        QVERIFY(contents.load(b.framed()));
        QCOMPARE((QList<int>{contents.rowCount(), contents.columnCount()}), (QList<int>{2, 2}));
        QList<TableContents::Roles> cells;
        QVERIFY(contents.readRow(0, 2, &cells));
        QCOMPARE(describe(cells), (QStringList{"0=Feed,5=1@0@100@8@2@0@9999", ""}));
        QVERIFY(contents.readRow(1, 2, &cells));
        QCOMPARE(describe(cells), (QStringList{QString::number(0x13370551) + "=33,4=0102", "0=x"}));
        QVERIFY(!contents.readRow(2, 2, &cells));

        // The flags role becomes the new item's flags.
        const std::unique_ptr<QTableWidgetItem> flagged = TableContents::makeItem({{0x13370551, 33}, {0, QStringLiteral("v")}});
        QCOMPARE(QString::number(flagged->flags()) + flagged->text(), QStringLiteral("33v"));

        // Our writer gives the same bytes, on every Qt major.
        QTableWidgetItem feed(QStringLiteral("Feed"));
        feed.setData(Qt::WhatsThisRole, QStringLiteral("1@0@100@8@2@0@9999"));
        QTableWidgetItem flags;
        flags.setFlags(Qt::ItemFlags(33));
        flags.setData(Qt::StatusTipRole, QByteArray("\x01\x02"));
        QTableWidgetItem x(QStringLiteral("x"));
        QCOMPARE(TableContents::encode(2, 2, {{&feed, nullptr}, {&flags, &x}}), b.framed());
    }

    // Rows in any order; each row's start is remembered once read past, and only the inflated bytes
    // around the row read last are held (rows further back are inflated again from a checkpoint).
    // Rows without columns hold nothing: any of them reads at once as empty.
    void lazyRows()
    {
        TableContents contents;
        QVERIFY(contents.load(longTable(1000, 3), 1024));
        QCOMPARE(contents.knownRows(), 0);
        QList<TableContents::Roles> cells;
        const auto row = [&](int r, int columns) { return contents.readRow(r, columns, &cells) ? describe(cells).join(QLatin1Char(' ')) : QString(); };
        // A surplus stored column is skipped, the rows stay aligned.
        QCOMPARE((QStringList{row(999, 3), QString::number(contents.knownRows()), QString::number(contents.heldBytes() < 4096),
                              row(5, 3), row(500, 2), row(501, 1), row(998, 1)}),
                 (QStringList{"0=r999c0 0=r999c1 0=r999c2", "999", "1", "0=r5c0 0=r5c1 0=r5c2", "0=r500c0 0=r500c1", "0=r501c0", "0=r998c0"}));
        // The row index read ahead in slices, between reads.
        QVERIFY(contents.load(longTable(1000, 3), 1024));
        QCOMPARE((QStringList{QString::number(contents.indexAhead(2000)), row(3, 1), QString::number(contents.knownRows() < 999)}),
                 (QStringList{"1", "0=r3c0", "1"}));
        while (contents.indexAhead(2000)) {
        }
        QCOMPARE((QStringList{QString::number(contents.knownRows()), row(999, 1), row(4, 1)}), (QStringList{"999", "0=r999c0", "0=r4c0"}));
        QVERIFY(contents.load(Bytes().i32(TableContents::MaxRows).i32(0).framed()));
        QVERIFY(contents.readRow(TableContents::MaxRows - 1, 8, &cells) && cells.isEmpty());
        QVERIFY(!contents.readRow(TableContents::MaxRows, 8, &cells));
    }

    void malformed_data()
    {
        QTest::addColumn<QByteArray>("buffer"); QTest::addColumn<bool>("loads");
        QTest::addColumn<int>("readableRows"); // rows read before the first malformed item
        QTest::newRow("claims 2^31 rows") << Bytes().i32(0x7fffffff).i32(8).framed() << false << 0;
        QTest::newRow("negative columns") << Bytes().i32(1).i32(-1).framed() << false << 0;
        Bytes tooManyRows; // a million and one empty items pack into a few kilobytes
        tooManyRows.i32(TableContents::MaxRows + 1).i32(1);
        for (int r = 0; r <= TableContents::MaxRows; ++r)
            tooManyRows.i32(0);
        QTest::newRow("more rows than a table can have") << tooManyRows.framed() << false << 0;
        QTest::newRow("not hex") << QByteArray("zz") << false << 0;
        QTest::newRow("role count past the data") << Bytes().i32(1).i32(1).i32(0x10000000).framed() << true << 0;
        QTest::newRow("string past the data")
            << Bytes().i32(2).i32(1).i32(1).stringRole(0, "ok").i32(1).i32(0).i32(10).u8(0).i32(0x7ffffffe).framed() << true << 1;
        QTest::newRow("an icon is not read") // Qt 4 type 69
            << Bytes().i32(3).i32(1).i32(1).stringRole(0, "a").i32(1).stringRole(0, "b").i32(1).i32(1).i32(69).u8(0).framed() << true << 2;
        QTest::newRow("cut short") << Bytes().i32(3).i32(1).i32(1).stringRole(0, "a").i32(1).framed() << true << 1;
    }

    void malformed()
    {
        QFETCH(QByteArray, buffer); QFETCH(bool, loads); QFETCH(int, readableRows);
        TableContents contents;
        QCOMPARE(contents.load(buffer), loads);
        if (!loads) {
            QVERIFY(contents.isEmpty());
            return;
        }
        QList<TableContents::Roles> cells;
        for (int r = 0; r < readableRows; ++r)
            QVERIFY(contents.readRow(r, 1, &cells));
        QVERIFY(!contents.readRow(readableRows, 1, &cells));
        QVERIFY(cells.isEmpty());
        QVERIFY(!contents.readRow(contents.rowCount() - 1, 1, &cells)); // nothing past the malformed item
    }
};

QTEST_MAIN(TestTableContents)
#include "tst_tablecontents.moc"
