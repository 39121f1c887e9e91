// The dynamic image on a recording application: which picture a controller value shows, the bit
// that shows or hides it, attachment, animations only when attached, the newest picture of a folder
// (appended, replacing, older ones ignored, an unchanged folder not listed again), scaling and
// geometry, the click signals, and pictures that must not be decoded.
#include "dynamicimage.h"
#include "fakedesignerhost.h"
#include "newestfile.h"
#include "norvointerface_z3.h"
#include "recordingqeltapp.h"

#include <QDialog>
#include <QImage>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

#include <sys/stat.h>

#include <fcntl.h>

namespace {

// A 4 x 4 animated GIF of two frames, one colour each: no LZW compression to speak of, a clear code
// before every pixel keeps the codes 3 bits wide.
QByteArray twoFrameGif()
{
    QByteArray gif("GIF89a");
    gif.append("\x04\x00\x04\x00\x80\x00\x00", 7);           // 4 x 4, global table of two colours
    gif.append("\xff\x00\x00\x00\x00\xff", 6);                // red, blue
    gif.append("\x21\xff\x0bNETSCAPE2.0\x03\x01\x00\x00\x00", 19); // loop for ever
    for (int frame = 0; frame < 2; ++frame) {
        gif.append("\x21\xf9\x04\x04\x0a\x00\x00\x00", 8); // a tenth of a second each
        gif.append("\x2c\x00\x00\x00\x00\x04\x00\x04\x00\x00", 10);
        gif.append('\x02'); // minimum code size
        quint32 bits = 0;
        int count = 0;
        QByteArray data;
        const auto put = [&](int code) {
            bits |= quint32(code) << count;
            count += 3;
            while (count >= 8) {
                data.append(char(bits & 0xff));
                bits >>= 8;
                count -= 8;
            }
        };
        for (int pixel = 0; pixel < 16; ++pixel) {
            put(4); // clear
            put(frame);
        }
        put(5); // end of information
        if (count > 0)
            data.append(char(bits & 0xff));
        gif.append(char(data.size()));
        gif.append(data);
        gif.append('\x00');
    }
    gif.append('\x3b');
    return gif;
}

void writeFile(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

void writePng(const QString &path, const QColor &color)
{
    QImage image(8, 8, QImage::Format_RGB32);
    image.fill(color);
    QVERIFY(image.save(path, "PNG"));
}

// Sets a file's or folder's modification time secondsAgo in the past.
void age(const QString &path, int secondsAgo)
{
    const timespec when{time(nullptr) - secondsAgo, 0};
    const timespec times[2] = {when, when};
    QCOMPARE(utimensat(AT_FDCWD, QFile::encodeName(path).constData(), times, 0), 0);
}

quint32 crc32(const QByteArray &bytes)
{
    quint32 crc = 0xffffffffu;
    for (char byte : bytes) {
        crc ^= quint8(byte);
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc >> 1) ^ (0xedb88320u & (0u - (crc & 1u)));
    }
    return ~crc;
}

// A PNG whose header claims 100,000 x 100,000 pixels and that holds no picture.
QByteArray hugePngHeader()
{
    QByteArray png("\x89PNG\r\n\x1a\n", 8);
    QByteArray ihdr("IHDR");
    const quint32 side = 100000;
    for (int shift : {24, 16, 8, 0})
        ihdr.append(char((side >> shift) & 0xff));
    for (int shift : {24, 16, 8, 0})
        ihdr.append(char((side >> shift) & 0xff));
    ihdr.append("\x08\x02\x00\x00\x00", 5);
    png.append("\x00\x00\x00\x0d", 4);
    png.append(ihdr);
    const quint32 crc = crc32(ihdr);
    for (int shift : {24, 16, 8, 0})
        png.append(char((crc >> shift) & 0xff));
    return png;
}

} // namespace

class TstDynamicImage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { NORVOInterface_Z3::initialization()->resetToDefaults(); }

    void indexRules_data()
    {
        QTest::addColumn<QList<int>>("values"); QTest::addColumn<int>("index");
        QTest::newRow("value 2: the third") << QList<int>{2} << 2;
        QTest::newRow("value 3: nothing") << QList<int>{1, 3} << 1;
        QTest::newRow("value -1: nothing") << QList<int>{0, -1} << 0;
        QTest::newRow("none yet") << QList<int>{5} << -1;
    }
    void indexRules()
    {
        QFETCH(QList<int>, values); QFETCH(int, index);
        QTemporaryDir dir;
        QStringList files;
        const QColor colours[] = {Qt::red, Qt::green, Qt::blue};
        for (int i = 0; i < 3; ++i) {
            files << dir.filePath(QStringLiteral("%1.png").arg(i));
            writePng(files.last(), colours[i]);
        }
        DynamicImage image;
        image.setImages(files);
        for (int value : values)
            image.updateData(0, value);
        QCOMPARE(image.index(), index);
        if (index >= 0)
            QCOMPARE(image.currentPixmap().toImage().pixelColor(1, 1), colours[index]);
        else
            QVERIFY(image.currentPixmap().isNull());
    }

    void attachment()
    {
        QTemporaryDir dir;
        const QString still = dir.filePath(QStringLiteral("still.png"));
        const QString blink = dir.filePath(QStringLiteral("blink.gif"));
        writePng(still, Qt::red);
        writeFile(blink, twoFrameGif());
        RecordingQeltApp app;
        app.memory().setWord(0, 1, 3, 40, 1);
        QDialog form;
        auto *image = new DynamicImage(&form);
        image->setImages({still, blink});
        image->setChannel(2);
        image->setDataClass(DynamicImage::Reg);
        image->setAddress(40);
        image->SetVisibleBitType(DynamicImage::O_BIT);
        image->SetVisibleAddress(7);
        image->SetVisibleBitIndex(3);
        // Not attached (as in Designer): the animation is shown still.
        image->setIndex(1);
        QVERIFY(!image->isPlaying());
        image->setIndex(0);
        image->setQeltAppAndFormPtr(&app, &form);
        const QList<UiRegistration> regs = app.registrations();
        QCOMPARE(regs.size(), 2);
        QCOMPARE(regs.at(0).arguments(), (QVariantList{0, 0, 1, 3, 40, -1, 0, 1, 10, 10, 0, 0, false}));
        QCOMPARE(regs.at(1).arguments(), (QVariantList{2, 0, 1, 0, 7, 1, 3, 1, 10, 10, 0, 0, false}));
        QCOMPARE(app.callNames(), (QStringList{"registerUIVariable", "getData", "registerUIVariable"}));
        // The value read at attachment is applied: the animation, playing now.
        QCOMPARE(image->index(), 1);
        QVERIFY(image->isPlaying());
        app.deliver(image, 0, 0);
        QVERIFY(!image->isPlaying());
    }

    void autoLoad()
    {
        QTemporaryDir dir;
        const QString folder = dir.filePath(QStringLiteral("camera"));
        QVERIFY(QDir().mkpath(folder));
        DynamicImage image;
        image.setAutoLoadPath(folder);
        // A running panel's event loop hears the folder's watcher between its polls.
        const auto poll = [&image] {
            QCoreApplication::processEvents();
            image.updateImage();
        };
        poll(); // empty folder
        QCOMPARE(image.index(), -1);
        QVERIFY(image.images().isEmpty());

        writePng(folder + QStringLiteral("/a.png"), Qt::red);
        age(folder + QStringLiteral("/a.png"), 60);
        writeFile(folder + QStringLiteral("/notes.txt"), "not a picture");
        poll();
        QCOMPARE(image.images(), QStringList{folder + QStringLiteral("/a.png")});
        QCOMPARE(image.index(), 0);

        writePng(folder + QStringLiteral("/b.png"), Qt::green);
        age(folder + QStringLiteral("/b.png"), 30);
        poll(); // newer: replaces the entry
        QCOMPARE(image.images(), QStringList{folder + QStringLiteral("/b.png")});
        QCOMPARE(image.currentPixmap().toImage().pixelColor(1, 1), QColor(Qt::green));

        writePng(folder + QStringLiteral("/c.png"), Qt::blue);
        age(folder + QStringLiteral("/c.png"), 90);
        poll(); // older: nothing
        QCOMPARE(image.images(), QStringList{folder + QStringLiteral("/b.png")});

        // An unchanged folder is not listed again; a picture rewritten in place, the folder's own
        // time unchanged, is found at the next poll: an older one that becomes the newest, and the
        // newest itself.
        age(folder, 20);
        poll();
        const int listings = image.folderListings();
        for (int i = 0; i < 5; ++i)
            poll();
        QCOMPARE(image.folderListings(), listings);
        writePng(folder + QStringLiteral("/c.png"), Qt::yellow);
        age(folder, 20);
        poll();
        QCOMPARE(image.images(), QStringList{folder + QStringLiteral("/c.png")});
        QCOMPARE(image.currentPixmap().toImage().pixelColor(1, 1), QColor(Qt::yellow));
        writePng(folder + QStringLiteral("/c.png"), Qt::cyan);
        poll();
        QCOMPARE(image.currentPixmap().toImage().pixelColor(1, 1), QColor(Qt::cyan));
        age(folder + QStringLiteral("/c.png"), 10);
        writePng(folder + QStringLiteral("/d.png"), Qt::magenta);
        poll();
        QCOMPARE(image.images(), QStringList{folder + QStringLiteral("/d.png")});
        // A listing reads no more entries than its bound, matching or not, and tells so.
        NewestFile few(3);
        few.setPath(folder);
        few.poll();
        QVERIFY(few.truncated());
        // A folder that vanished changes nothing.
        QVERIFY(QDir(folder).removeRecursively());
        poll();
        QCOMPARE(image.images(), QStringList{folder + QStringLiteral("/d.png")});
        image.setAutoLoadImage(true);
        image.setAutoLoadImage(false);
    }

    void scalingAndGeometry()
    {
        QTemporaryDir dir;
        const QString file = dir.filePath(QStringLiteral("p.png"));
        writePng(file, Qt::red);
        QDialog form;
        auto *image = new DynamicImage(&form);
        image->setGeometry(10, 20, 100, 60);
        image->setImages({file});
        image->setIndex(0);
        image->setScaledContents(true);
        QCOMPARE(image->currentPixmap().size(), QSize(100, 60));
        image->setScaledContents(false);
        QCOMPARE(image->currentPixmap().size(), QSize(8, 8));
        image->setTop(5);
        image->setLeft(7);
        image->setWidth(50);
        image->setHeight(40);
        QCOMPARE(image->geometry(), QRect(7, 5, 50, 40));
        // Scaled to a widget of 24 million pixels, the picture is made no larger than the bound.
        image->resize(8000, 3000);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("^DynamicImage \"\": property \"scaledContents\": 8000 x 3000")));
        image->setScaledContents(true);
        const QSize scaled = image->currentPixmap().size();
        QVERIFY(qint64(scaled.width()) * scaled.height() <= DynamicImage::MaxPixels && scaled.width() > 6000);
    }

    void clickSignals()
    {
        DynamicImage image;
        image.resize(50, 50);
        QStringList order;
        connect(&image, &DynamicImage::clicked, this, [&] { order << QStringLiteral("clicked"); });
        connect(&image, &DynamicImage::doubleClicked, this, [&] { order << QStringLiteral("doubleClicked"); });
        // A double click: a press and a release, then the double-click event, which goes on to the
        // widget's own handling of a press.
        QTest::mouseClick(&image, Qt::LeftButton);
        const QPoint at(5, 5);
        QMouseEvent twice(QEvent::MouseButtonDblClick, at, image.mapToGlobal(at),
                          Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&image, &twice);
        QCOMPARE(order, (QStringList{"clicked", "doubleClicked", "clicked"}));
    }

    void picturesNotToDecode_data()
    {
        QTest::addColumn<QByteArray>("bytes"); // or "<pipe>", "/dev/..." for what is no file
        QTest::newRow("text named .png") << QByteArray("hello");
        QTest::newRow("cut PNG") << QByteArray("\x89PNG\r\n\x1a\n\x00\x00", 10);
        QTest::newRow("huge dimensions") << hugePngHeader();
        // The animation's screen claimed as 60,000 x 60,000: a GIF bomb.
        QByteArray bomb = twoFrameGif();
        bomb.replace(6, 4, QByteArray("\x60\xea\x60\xea", 4));
        QTest::newRow("GIF bomb") << bomb;
        QTest::newRow("missing") << QByteArray();
        QTest::newRow("named pipe") << QByteArray("<pipe>");
        QTest::newRow("device") << QByteArray("/dev/zero");
    }
    void picturesNotToDecode()
    {
        QFETCH(QByteArray, bytes);
        QTemporaryDir dir;
        const QString good = dir.filePath(QStringLiteral("good.png"));
        QString bad = dir.filePath(QStringLiteral("bad.png"));
        writePng(good, Qt::red);
        if (bytes == "<pipe>")
            QCOMPARE(mkfifo(QFile::encodeName(bad).constData(), 0600), 0);
        else if (bytes.startsWith("/dev/"))
            bad = QString::fromLatin1(bytes);
        else if (!bytes.isEmpty())
            writeFile(bad, bytes);
        DynamicImage image;
        image.setObjectName(QStringLiteral("gauge"));
        image.setImages({good, bad});
        image.setIndex(0);
        if (!bytes.isEmpty())
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("^DynamicImage \"gauge\": property \"images\": \"%1\"").arg(bad)));
        image.setIndex(1);
        QCOMPARE(image.index(), 1);
        QVERIFY(image.currentPixmap().isNull()); // an empty label, nothing decoded
        image.setIndex(0);
        QVERIFY(!image.currentPixmap().isNull());
    }

    // Designer reads a form before it tells which file the form is: a relative picture is found once
    // the form is shown.
    void relativePictureInDesigner()
    {
        QTemporaryDir project;
        writePng(project.filePath(QStringLiteral("idle.png")), Qt::blue);
        const QString before = QDir::currentPath();
        QDialog form;
        FakeDesignerHost host(&form);
        host.setFileName(QStringLiteral("/nonexistent/form.ui"));
        auto *image = new DynamicImage(&form);
        image->setImages({QStringLiteral("idle.png")});
        image->setIndex(0);
        QVERIFY(image->currentPixmap().isNull());
        host.setFileName(project.filePath(QStringLiteral("form.ui")));
        form.show();
        QVERIFY(QTest::qWaitForWindowExposed(&form));
        QCOMPARE(image->currentPixmap().toImage().pixelColor(1, 1), QColor(Qt::blue));
        QDir::setCurrent(before);
    }
};

QTEST_MAIN(TstDynamicImage)
#include "tst_dynamicimage.moc"
