#include "designercommit.h"
#include "fakedesignerhost.h"
#include "fontmapcodec.h"
#include "bitbutton.h"
#include "hexframe.h"
#include "hexinflater.h"
#include "languagestate.h"
#include "norvointerface_z3.h"
#include "textinfocodec.h"

#include "textrecord.h"

#include <QRandomGenerator>
#include <QtEndian>
#include <QtTest>

namespace {

// Qt 4.8 data stream bytes assembled field by field from Qt's documented serialisation format (only
// plain big-endian numbers go through QDataStream), so the vectors do not depend on our writer.
class Bytes
{
public:
    Bytes &i32(qint32 v) { return put(v); }
    Bytes &u8(quint8 v) { return put(v); }
    Bytes &u16(quint16 v) { return put(v); }
    Bytes &f64(double v) { return put(v); } // big endian, as every number in the stream
    Bytes &string(const QString &s) // byte length, then UTF-16 big endian
    {
        i32(qint32(s.size() * 2));
        for (QChar c : s)
            u16(c.unicode());
        return *this;
    }
    Bytes &bytes(const QByteArray &a)
    {
        i32(qint32(a.size()));
        m_out.writeRawData(a.constData(), int(a.size()));
        return *this;
    }
    // QFont: family, point size, pixel size, style hint, strategy, charset, weight (Qt 4 scale),
    // style bits (italic 0x01, kerning 0x10), stretch, extended bits, letter and word spacing.
    Bytes &font(const QString &family, double pointSize, quint8 weight, bool italic)
    {
        string(family).f64(pointSize).i32(-1).u8(QFont::AnyStyle).u8(QFont::PreferDefault).u8(0).u8(weight);
        return u8(0x10 | (italic ? 0x01 : 0)).u16(0).u8(0x01).i32(0).i32(0);
    }
    Bytes &record(qint32 first, qint32 second, qint32 id, const QStringList &texts)
    {
        i32(first).i32(second).i32(id).i32(qint32(texts.size()));
        for (const QString &t : texts)
            string(t);
        return *this;
    }
    QByteArray data() const { return m_data; }
    QByteArray framed() const { return qCompress(m_data).toHex(); }

private:
    template<typename T>
    Bytes &put(T v)
    {
        m_out << v;
        return *this;
    }
    QByteArray m_data;
    QDataStream m_out{&m_data, QIODevice::WriteOnly};
};

QFont boldItalicSerif()
{
    QFont f(QStringLiteral("Serif"), 10);
    f.setBold(true);
    f.setItalic(true);
    return f;
}

template<typename T>
QList<T> repeated(int count, const T &value)
{
    QList<T> list;
    for (int i = 0; i < count; ++i)
        list.append(value);
    return list;
}

// More than one inflate step; the letters compress, their order does not.
const QByteArray &inflaterData()
{
    static const QByteArray data = [] {
        QByteArray bytes;
        QRandomGenerator random(7);
        for (int i = 0; i < 200000; ++i)
            bytes.append(char(random.bounded(4) + 'a'));
        return bytes;
    }();
    return data;
}

} // namespace

class TestCodecs : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        NORVOInterface_Z3::initialization()->resetToDefaults();
    }

    void goldenSlots_data()
    {
        QTest::addColumn<QByteArray>("golden");
        QTest::addColumn<QList<QList<TextData>>>("expected"); // as a bit button takes them
        QTest::addColumn<bool>("writtenAlike");
        QTest::addColumn<int>("recordsRead"); // of each slot
        Bytes on;
        on.i32(1).i32(1).record(0, 0, -1, {QStringLiteral("EIN"), QString::fromUtf8("开")});
        on.i32(2).font(QStringLiteral("Sans"), 12, 50, false).font(QStringLiteral("Serif"), 10, 75, true);
        Bytes off;
        off.i32(1).i32(1).record(3, 4, 12, {QStringLiteral("AUS")}).i32(0);
        TextData offRecord = textRecord({QStringLiteral("AUS")}, 12);
        offRecord.firstValue = 3;
        offRecord.secondValue = 4;
        const TextData onRecord = textRecord({QStringLiteral("EIN"), QString::fromUtf8("开")}, -1,
                                             {QFont(QStringLiteral("Sans"), 12), boldItalicSerif()});
        QTest::newRow("on and off") << Bytes().i32(1).i32(2).bytes(on.framed()).bytes(off.framed()).framed()
                                    << QList<QList<TextData>>{{onRecord}, {offRecord}} << true << 1;
        // Older editors store more than a button uses: a third slot, a second record in a slot.
        Bytes twoRecords;
        twoRecords.i32(1).i32(2).record(0, 0, -1, {QStringLiteral("Spindle")}).i32(0).record(0, 0, 5, {}).i32(0);
        QTest::newRow("three slots, two records in the first")
            << Bytes().i32(1).i32(3).bytes(twoRecords.framed()).bytes(off.framed()).bytes("not read").framed()
            << QList<QList<TextData>>{{textRecord({QStringLiteral("Spindle")})}, {offRecord}} << false << 1;
        QTest::newRow("empty slot text") << Bytes().i32(1).i32(2).bytes(QByteArray()).bytes(off.framed()).framed()
                                         << QList<QList<TextData>>{{}, {offRecord}} << false << 1;
        // What the goldens leave out, written and read back: every language, underline and pixel size.
        QFont underlined(QStringLiteral("Sans"), 20);
        underlined.setUnderline(true);
        underlined.setPixelSize(30);
        const QList<QList<TextData>> everyLanguage{
            {textRecord(repeated(10, QString::fromUtf8("Ünïcødé ✓")), -1, repeated(10, underlined))}, {offRecord}};
        QTest::newRow("every language") << TextInfoCodec::encodeSlots(everyLanguage) << everyLanguage << true << 1;
        // Other widgets keep more records a slot, the buttons' first one the same.
        Bytes twoFull;
        twoFull.i32(1).i32(2).record(0, 0, -1, {QStringLiteral("Start"), QStringLiteral("Anlauf")}).i32(0);
        twoFull.record(0, 0, 7, {}).i32(1).font(QStringLiteral("Sans"), 12, 50, false);
        const QList<TextData> both{textRecord({QStringLiteral("Start"), QStringLiteral("Anlauf")}),
                                   textRecord({}, 7, {QFont(QStringLiteral("Sans"), 12)})};
        QTest::newRow("two records read") << Bytes().i32(1).i32(2).bytes(twoFull.framed()).bytes(off.framed()).framed()
                                          << QList<QList<TextData>>{both, {offRecord}} << true << 2;
    }

    void goldenSlots()
    {
        QFETCH(QByteArray, golden);
        QFETCH(QList<QList<TextData>>, expected);
        QFETCH(bool, writtenAlike);
        QFETCH(int, recordsRead);
        TextInfoCodec::Limits limits;
        limits.recordCount = recordsRead;
        QList<QList<TextData>> decoded{{textRecord({QStringLiteral("stale")}, 5)}};
        QVERIFY(TextInfoCodec::decodeSlots(golden, &decoded, limits));
        QCOMPARE(decoded, expected);
        QCOMPARE(TextInfoCodec::encodeSlots(expected) == golden, writtenAlike);

        // The button shows what it took; a slot without records leaves that caption as it was.
        BitButton button;
        button.SetTextInfoBuffer(golden);
        for (const auto &[slot, texts] : {std::pair(0, button.getOnTextList()), std::pair(1, button.getOffTextList())})
            QCOMPARE(texts, expected.at(slot).isEmpty() ? QStringList() : expected.at(slot).at(0).texts);
        button.updateLanguage(0);
        QCOMPARE(button.onText(), expected.at(0).isEmpty() ? QStringLiteral("ON") : expected.at(0).at(0).texts.at(0));
    }

    void goldenMapBuffer()
    {
        // Maps are stored as Qt 4 wrote them: from the highest key down.
        Bytes b;
        b.i32(2).i32(1).font(QStringLiteral("Serif"), 10, 75, true).i32(0).font(QStringLiteral("Sans"), 12, 50, false);
        b.i32(1).i32(4).font(QStringLiteral("Mono"), 9, 50, false);
        const QByteArray golden = b.framed();

        FontMapCodec::Maps expected;
        expected.captionFonts = {{0, QFont(QStringLiteral("Sans"), 12)}, {1, boldItalicSerif()}};
        expected.secondFonts = {{4, QFont(QStringLiteral("Mono"), 9)}};
        FontMapCodec::Maps decoded;
        QVERIFY(FontMapCodec::decode(golden, &decoded));
        QCOMPARE((QList<QMap<int, QFont>>{decoded.captionFonts, decoded.secondFonts}), (QList<QMap<int, QFont>>{expected.captionFonts, expected.secondFonts}));
        QCOMPARE(FontMapCodec::encode(expected), golden);

        // A stream that ends after the first map still yields it.
        Bytes firstOnly;
        firstOnly.i32(1).i32(3).font(QStringLiteral("Sans"), 12, 50, false);
        QVERIFY(FontMapCodec::decode(firstOnly.framed(), &decoded));
        QCOMPARE(decoded.captionFonts.keys(), QList<int>{3});
        QVERIFY(decoded.secondFonts.isEmpty());
    }

    void malformed_data()
    {
        QTest::addColumn<QByteArray>("buffer");
        Bytes good;
        good.i32(1).i32(1).record(0, 0, -1, {QStringLiteral("abc")}).i32(0);
        const QByteArray goodHex = good.framed();
        QByteArray block = qCompress(good.data());

        QTest::newRow("empty") << QByteArray();
        QTest::newRow("truncated") << goodHex.left(goodHex.size() - 10);
        QByteArray huge = block;
        qToBigEndian(quint32(0x80000000u), huge.data());
        QTest::newRow("claims 2 GiB") << huge.toHex();
        QByteArray undersized = block;
        qToBigEndian(quint32(8), undersized.data());
        QTest::newRow("expands past its claim") << undersized.toHex();
        QTest::newRow("negative count") << Bytes().i32(1).i32(-1).framed();
        QTest::newRow("huge count") << Bytes().i32(1).i32(0x7fffffff).record(0, 0, -1, {}).i32(0).framed();
        QTest::newRow("huge text count") << Bytes().i32(1).i32(1).i32(0).i32(0).i32(-1).i32(0x7ffffff0).framed();
        QTest::newRow("huge font count") << Bytes().i32(1).i32(1).record(0, 0, -1, {}).i32(-2).framed();
        QTest::newRow("huge string") << Bytes().i32(1).i32(1).i32(0).i32(0).i32(-1).i32(1).i32(0x7ffffffe).framed();
        QTest::newRow("record cut short") << qCompress(good.data().left(good.data().size() - 2)).toHex();
    }

    void malformed()
    {
        QFETCH(QByteArray, buffer);
        const QList<TextData> sentinel{textRecord({QStringLiteral("kept")}, 42)};
        QList<TextData> one = sentinel;
        QVERIFY(!TextInfoCodec::decodeSlot(buffer, &one));
        QCOMPARE(one, sentinel);

        // A bad slot inside a valid outer layer spoils the whole buffer.
        QList<QList<TextData>> slotRecords{sentinel};
        QVERIFY(!TextInfoCodec::decodeSlots(Bytes().i32(1).i32(1).bytes(buffer.isEmpty() ? "00" : buffer).framed(),
                                            &slotRecords));
        QCOMPARE(slotRecords, QList<QList<TextData>>{sentinel});

        FontMapCodec::Maps maps;
        maps.captionFonts.insert(1, QFont(QStringLiteral("Kept")));
        if (!buffer.isEmpty() && FontMapCodec::decode(buffer, &maps))
            QVERIFY(maps.captionFonts.size() < 2); // some record bytes happen to read as small maps
        else
            QCOMPARE(maps.captionFonts.value(1).family(), QStringLiteral("Kept"));
    }

    void hexFrameLimits()
    {
        QByteArray data;
        QVERIFY(HexFrame::decode(qCompress(QByteArray()).toHex(), &data));
        QVERIFY(data.isEmpty());
        QVERIFY(HexFrame::decode(HexFrame::encode("abc").toUpper(), &data));
        QCOMPARE(data, QByteArray("abc"));

        // Exactly the budget is accepted; one byte past it is refused before anything is allocated.
        const int limit = int(HexFrame::DefaultExpansionLimit);
        QByteArray capped = qCompress(QByteArray(limit, 'a'));
        HexFrame::Budget exact;
        QVERIFY(HexFrame::uncompress(capped, &data, exact));
        QCOMPARE(data.size(), limit);
        QCOMPARE(exact.left(), 0);
        HexFrame::Budget oneShort(limit - 1);
        QVERIFY(!HexFrame::uncompress(capped, &data, oneShort));
        qToBigEndian(quint32(0x80000000u), capped.data());
        HexFrame::Budget plenty(qint64(1) << 40);
        QVERIFY(!HexFrame::uncompress(capped, &data, plenty)); // past the largest layer, whatever the budget
        QCOMPARE(plenty.left(), qint64(1) << 40);
    }

    void amplification_data()
    {
        // Each buffer is small; what it would expand to, or the counts it holds, are not.
        QTest::addColumn<QByteArray>("textInfo"); // bit button, two slots
        QTest::addColumn<QByteArray>("mapBuffer");
        QTest::addColumn<bool>("accepted");
        const QString longText(300 * 1024, QLatin1Char('x')); // 600 KiB in the stream, a few hundred bytes packed
        Bytes longSlot;
        longSlot.i32(1).i32(1).record(0, 0, -1, {longText}).i32(0);
        Bytes shortSlot;
        shortSlot.i32(1).i32(1).record(0, 0, -1, {QStringLiteral("OFF")}).i32(0);
        const QByteArray fine = Bytes().i32(1).i32(2).bytes(longSlot.framed()).bytes(shortSlot.framed()).framed();
        const QByteArray twoLong = Bytes().i32(1).i32(2).bytes(longSlot.framed()).bytes(longSlot.framed()).framed();
        auto texts = [](int count) {
            QStringList list;
            for (int i = 0; i < count; ++i)
                list << QStringLiteral("t%1").arg(i);
            Bytes slot;
            slot.i32(1).i32(1).record(0, 0, -1, list).i32(0);
            return Bytes().i32(1).i32(1).bytes(slot.framed()).framed();
        };
        auto fonts = [](int count) {
            Bytes map;
            map.i32(count);
            for (int i = count - 1; i >= 0; --i)
                map.i32(i).font(QStringLiteral("Sans"), 10, 50, false);
            return map.framed();
        };
        QTest::newRow("one long slot") << fine << fonts(10) << true;
        QTest::newRow("two long slots together past the limit") << twoLong << fonts(11) << false;
        QTest::newRow("ten texts") << texts(10) << QByteArray() << true;
        QTest::newRow("eleven texts") << texts(11) << fonts(1700) << false;
    }

    void amplification()
    {
        QFETCH(QByteArray, textInfo);
        QFETCH(QByteArray, mapBuffer);
        QFETCH(bool, accepted);
        QList<QList<TextData>> slotRecords;
        QCOMPARE(TextInfoCodec::decodeSlots(textInfo, &slotRecords), accepted);
        FontMapCodec::Maps maps;
        QCOMPARE(mapBuffer.isEmpty() || FontMapCodec::decode(mapBuffer, &maps), accepted);

        // A widget given an unreadable buffer says which, keeps the value, holds no data from it, reads on.
        BitButton button;
        button.setObjectName(QStringLiteral("feed"));
        const QString pattern = QStringLiteral("BitButton \"feed\": property \"%1\" is malformed");
        if (!accepted) {
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression(pattern.arg("textInfoBuffer")));
            if (!mapBuffer.isEmpty())
                QTest::ignoreMessage(QtWarningMsg, QRegularExpression(pattern.arg("MapBuffer")));
        }
        button.SetTextInfoBuffer(textInfo);
        button.SetMapBuffer(mapBuffer);
        QCOMPARE(button.textInfoBuffer(), textInfo);
        QCOMPARE(button.MapBuffer(), mapBuffer);
        QCOMPARE(button.getOnTextList().isEmpty(), !accepted);
        QCOMPARE(button.text(), QStringLiteral("OFF"));
    }

    void inflater_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<qint64>("limit");
        QTest::addColumn<bool>("opens");
        QTest::addColumn<int>("good"); // bytes that come out before the data ends; -1: what the text holds
        QTest::addColumn<bool>("failed");
        const QByteArray hex = qCompress(inflaterData()).toHex();
        const qint64 size = inflaterData().size();
        QTest::newRow("whole") << hex << size << true << int(size) << false;
        QTest::newRow("claim above the limit") << hex << size - 1 << false << 0 << false;
        QTest::newRow("odd length") << hex.left(hex.size() - 1) << size << false << 0 << false;
        QTest::newRow("not hex in the size") << QByteArray("0000g00a") << size << false << 0 << false;
        QTest::newRow("cut short") << hex.left(hex.size() - 10) << size << true << -1 << true;
        QByteArray bad = hex;
        bad[bad.size() / 2] = 'z';
        QTest::newRow("not hex in the stream") << bad << size << true << -1 << true;
        QByteArray longer = hex;
        longer.replace(0, 8, "00000010"); // claims 16 bytes
        QTest::newRow("longer than claimed") << longer << size << true << 16 << true;
        QTest::newRow("empty block") << qCompress(QByteArray()).toHex() << qint64(10) << true << 0 << false;
    }

    // Stored buffers inflated step by step: the bytes come out as a whole inflate gives them, only as far
    // as asked, and a text that is cut, not hex, or longer than it claims ends the data there.
    void inflater()
    {
        QFETCH(QByteArray, text);
        QFETCH(qint64, limit);
        QFETCH(bool, opens);
        QFETCH(int, good);
        QFETCH(bool, failed);
        HexInflater inflater;
        QCOMPARE(inflater.open(text, limit), opens);
        if (!opens)
            return;
        inflater.ensure(10);
        QVERIFY(inflater.data().size() < inflaterData().size()); // not all of it for the first bytes
        while (inflater.grow(1000)) {
        }
        QVERIFY(inflater.finished());
        QCOMPARE(inflater.failed(), failed);
        QCOMPARE(inflater.data(), inflaterData().left(good >= 0 ? good : inflater.data().size()));
    }

    // A caption list shorter than the panel's languages shows its first language.
    void languageFallsBackToTheFirst()
    {
        NORVOInterface_Z3 *hmi = NORVOInterface_Z3::initialization();
        hmi->setSystemLanguages({QStringLiteral("Sans"), QStringLiteral("Sans"), QStringLiteral("Sans")});
        hmi->setCurrentLanguageIndex(2);
        LanguageState state;
        state.clampTo(3);
        QCOMPARE(state.current(), 2);
        state.clampTo(2);
        QCOMPARE(state.current(), 0);
    }

    // Outside any form window (a preview, the widget box) nothing is committed; the button text
    // tests check the host calls for a widget on a form.
    void designerCommitNeedsAFormWindow()
    {
        QWidget form, outside;
        FakeDesignerHost host(&form);
        QVERIFY(!DesignerCommit::setProperty(&outside, "toolTip", QStringLiteral("x")));
        QVERIFY(host.log.isEmpty());
    }
};

QTEST_MAIN(TestCodecs)
#include "tst_codecs.moc"
