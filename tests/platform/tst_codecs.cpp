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

// Stored buffers written out by hand in Qt 4.8 data stream bytes, as hex (spaces are skipped), so the
// vectors do not depend on our writer. Numbers are big endian.
QByteArray n32(qint32 v)
{
    return QByteArray::number(quint32(v), 16).rightJustified(8, '0');
}

// A string: its byte length, then UTF-16 big endian.
QByteArray str(const QString &s)
{
    QByteArray hex = n32(qint32(s.size() * 2));
    for (QChar c : s)
        hex += QByteArray::number(c.unicode(), 16).rightJustified(4, '0');
    return hex;
}

// A record: first and second value, text id, the texts; its fonts follow.
QByteArray record(qint32 first, qint32 second, qint32 id, const QStringList &texts)
{
    QByteArray hex = n32(first) + n32(second) + n32(id) + n32(qint32(texts.size()));
    for (const QString &t : texts)
        hex += str(t);
    return hex;
}

// QFont as Qt 4 wrote it: family, point size (a double), pixel size, style hint, strategy, charset,
// weight (Qt 4 scale), style bits (italic 0x01, kerning 0x10), stretch, extended bits, letter and word spacing.
const QByteArray Sans12 = str("Sans") + "4028000000000000 ffffffff 05 01 00 32 10 0000 01 00000000 00000000";
const QByteArray Serif10BoldItalic = str("Serif") + "4024000000000000 ffffffff 05 01 00 4b 11 0000 01 00000000 00000000";
const QByteArray Mono9 = str("Mono") + "4022000000000000 ffffffff 05 01 00 32 10 0000 01 00000000 00000000";

// Packed as stored: zlib, then hex.
QByteArray framed(const QByteArray &hex)
{
    return qCompress(QByteArray::fromHex(hex)).toHex();
}

// A text buffer: version 1, then each slot's packed bytes with their length.
QByteArray slotBuffer(const QByteArrayList &slotTexts)
{
    QByteArray hex = n32(1) + n32(qint32(slotTexts.size()));
    for (const QByteArray &slot : slotTexts)
        hex += n32(qint32(slot.size())) + slot.toHex();
    return framed(hex);
}

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
        // Each slot: version 1, the record count, the records.
        const QByteArray on = framed(n32(1) + n32(1) + record(0, 0, -1, {"EIN", QString::fromUtf8("开")}) + n32(2) + Sans12
                                     + Serif10BoldItalic);
        const QByteArray off = framed(n32(1) + n32(1) + record(3, 4, 12, {"AUS"}) + n32(0));
        TextData offRecord = textRecord({QStringLiteral("AUS")}, 12);
        offRecord.firstValue = 3;
        offRecord.secondValue = 4;
        const TextData onRecord = textRecord({QStringLiteral("EIN"), QString::fromUtf8("开")}, -1,
                                             {QFont(QStringLiteral("Sans"), 12), boldItalicSerif()});
        QTest::newRow("on and off") << slotBuffer({on, off})
                                    << QList<QList<TextData>>{{onRecord}, {offRecord}} << true << 1;
        // Older editors store more than a button uses: a third slot, a second record in a slot.
        const QByteArray twoRecords = framed(n32(1) + n32(2) + record(0, 0, -1, {"Spindle"}) + n32(0) + record(0, 0, 5, {}) + n32(0));
        QTest::newRow("three slots, two records in the first") << slotBuffer({twoRecords, off, "not read"})
            << QList<QList<TextData>>{{textRecord({QStringLiteral("Spindle")})}, {offRecord}} << false << 1;
        QTest::newRow("empty slot text") << slotBuffer({QByteArray(), off})
                                         << QList<QList<TextData>>{{}, {offRecord}} << false << 1;
        // What the goldens leave out, written and read back: every language, underline and pixel size.
        QFont underlined(QStringLiteral("Sans"), 20);
        underlined.setUnderline(true);
        underlined.setPixelSize(30);
        const QList<QList<TextData>> everyLanguage{
            {textRecord(repeated(10, QString::fromUtf8("Ünïcødé ✓")), -1, repeated(10, underlined))}, {offRecord}};
        QTest::newRow("every language") << TextInfoCodec::encodeSlots(everyLanguage) << everyLanguage << true << 1;
        // Other widgets keep more records a slot, the buttons' first one the same.
        const QByteArray twoFull = framed(n32(1) + n32(2) + record(0, 0, -1, {"Start", "Anlauf"}) + n32(0) + record(0, 0, 7, {})
                                          + n32(1) + Sans12);
        const QList<TextData> both{textRecord({QStringLiteral("Start"), QStringLiteral("Anlauf")}),
                                   textRecord({}, 7, {QFont(QStringLiteral("Sans"), 12)})};
        QTest::newRow("two records read") << slotBuffer({twoFull, off})
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
        const QByteArray golden = framed(n32(2) + n32(1) + Serif10BoldItalic + n32(0) + Sans12 + n32(1) + n32(4) + Mono9);

        FontMapCodec::Maps expected;
        expected.captionFonts = {{0, QFont(QStringLiteral("Sans"), 12)}, {1, boldItalicSerif()}};
        expected.secondFonts = {{4, QFont(QStringLiteral("Mono"), 9)}};
        FontMapCodec::Maps decoded;
        QVERIFY(FontMapCodec::decode(golden, &decoded));
        QCOMPARE((QList<QMap<int, QFont>>{decoded.captionFonts, decoded.secondFonts}), (QList<QMap<int, QFont>>{expected.captionFonts, expected.secondFonts}));
        QCOMPARE(FontMapCodec::encode(expected), golden);

        // A stream that ends after the first map still yields it.
        QVERIFY(FontMapCodec::decode(framed(n32(1) + n32(3) + Sans12), &decoded));
        QCOMPARE(decoded.captionFonts.keys(), QList<int>{3});
        QVERIFY(decoded.secondFonts.isEmpty());
    }

    void malformed_data()
    {
        QTest::addColumn<QByteArray>("buffer");
        const QByteArray good = QByteArray::fromHex(n32(1) + n32(1) + record(0, 0, -1, {"abc"}) + n32(0));
        const QByteArray goodHex = qCompress(good).toHex();
        QByteArray block = qCompress(good);

        QTest::newRow("empty") << QByteArray();
        QTest::newRow("truncated") << goodHex.left(goodHex.size() - 10);
        QByteArray huge = block;
        qToBigEndian(quint32(0x80000000u), huge.data());
        QTest::newRow("claims 2 GiB") << huge.toHex();
        QByteArray undersized = block;
        qToBigEndian(quint32(8), undersized.data());
        QTest::newRow("expands past its claim") << undersized.toHex();
        QTest::newRow("negative count") << framed(n32(1) + n32(-1));
        QTest::newRow("huge count") << framed(n32(1) + n32(0x7fffffff) + record(0, 0, -1, {}) + n32(0));
        QTest::newRow("huge text count") << framed(n32(1) + n32(1) + n32(0) + n32(0) + n32(-1) + n32(0x7ffffff0));
        QTest::newRow("huge font count") << framed(n32(1) + n32(1) + record(0, 0, -1, {}) + n32(-2));
        QTest::newRow("huge string") << framed(n32(1) + n32(1) + n32(0) + n32(0) + n32(-1) + n32(1) + n32(0x7ffffffe));
        QTest::newRow("record cut short") << qCompress(good.left(good.size() - 2)).toHex();
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
        QVERIFY(!TextInfoCodec::decodeSlots(slotBuffer({buffer.isEmpty() ? "00" : buffer}),
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
        const auto slot = [](const QStringList &texts) { return framed(n32(1) + n32(1) + record(0, 0, -1, texts) + n32(0)); };
        const QByteArray longSlot = slot({longText});
        const QByteArray fine = slotBuffer({longSlot, slot({"OFF"})});
        const QByteArray twoLong = slotBuffer({longSlot, longSlot});
        auto texts = [&slot](int count) {
            QStringList list;
            for (int i = 0; i < count; ++i)
                list << QStringLiteral("t%1").arg(i);
            return slotBuffer({slot(list)});
        };
        auto fonts = [](int count) {
            QByteArray map = n32(count);
            for (int i = count - 1; i >= 0; --i)
                map += n32(i) + Sans12;
            return framed(map);
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
        QCOMPARE(inflater.open(text, limit, 16 * 1024), opens);
        if (!opens)
            return;
        inflater.ensure(10);
        QVERIFY(inflater.data().size() < inflaterData().size()); // not all of it for the first bytes
        while (inflater.grow(1000)) {
        }
        QVERIFY(inflater.finished());
        QCOMPARE(inflater.failed(), failed);
        const qint64 end = inflater.data().size();
        QCOMPARE(inflater.data(), inflaterData().left(good >= 0 ? good : end));
        // Going back to bytes let go of: inflated again from the checkpoint before them, alike.
        inflater.seek(end * 3 / 4);
        QVERIFY(inflater.base() > 0 || end < 64 * 1024);
        inflater.ensure(end);
        QCOMPARE(inflater.failed(), failed);
        QCOMPARE(inflater.data(), inflaterData().mid(inflater.base(), end - inflater.base()));
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
