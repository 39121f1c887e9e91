// The dynamic image on a recording application: which picture a controller value shows, still or
// animated (animations play only when attached), pictures that must not be decoded, attachment, the
// newest picture of a folder (appended, replacing, older ones ignored, an unchanged folder not listed
// again), scaling and geometry, the click signals, and relative pictures in Designer.
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

// The file for a picture source in dir: a colour name makes a small PNG; "gif" is the sample
// animation, "gif bomb" the same with its screen claimed as 60,000 x 60,000; "huge" a picture header
// claiming 30,000 x 30,000 pixels; "text" and "cut png" hold no picture; "pipe" is a named pipe; a
// path under /dev is that device; "missing" names no file.
QString pictureFile(const QTemporaryDir &dir, const QString &source)
{
    if (source.startsWith(QLatin1String("/dev/")))
        return source;
    const QString path = dir.filePath(source);
    QFile sample(QStringLiteral(HMI_FORMS_DIR "/pictures/running.gif"));
    if (source.startsWith(QLatin1String("gif")) && sample.open(QIODevice::ReadOnly)) {
        QByteArray gif = sample.readAll();
        if (source.endsWith(QLatin1String("bomb")))
            gif.replace(6, 4, QByteArray("\x60\xea\x60\xea", 4));
        writeFile(path, gif);
    } else if (QColor(source).isValid()) {
        writePng(path, QColor(source));
    } else if (source == QLatin1String("pipe")) {
        mkfifo(QFile::encodeName(path).constData(), 0600);
    } else if (source != QLatin1String("missing")) {
        const QMap<QString, QByteArray> bytes{{"text", "hello"}, {"cut png", QByteArray("\x89PNG\r\n\x1a\n\x00\x00", 10)},
                                              {"huge", "P6 30000 30000 255\n"}};
        writeFile(path, bytes.value(source));
    }
    return path;
}

} // namespace

class TstDynamicImage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { NORVOInterface_Z3::initialization()->resetToDefaults(); }

    void pictures_data()
    {
        QTest::addColumn<QStringList>("sources"); // as pictureFile() makes them
        QTest::addColumn<int>("read");            // the value read at attachment; -2: never attached
        QTest::addColumn<QList<int>>("values");   // delivered one after the other
        QTest::addColumn<QString>("shown");       // the index, then blank, playing or the colour at (1, 1)
        QTest::addColumn<bool>("warned");
        const QStringList rgb{"red", "lime", "blue"};
        QTest::newRow("value 2: the third") << rgb << -2 << QList<int>{2} << "2 #0000ff" << false;
        QTest::newRow("value 3: nothing") << rgb << -2 << QList<int>{1, 3} << "1 #00ff00" << false;
        QTest::newRow("value -1: nothing") << rgb << -2 << QList<int>{0, -1} << "0 #ff0000" << false;
        QTest::newRow("none yet") << rgb << -2 << QList<int>{5} << "-1 blank" << false;
        // Not attached (as in Designer) an animation is shown still; attached, the value read then is
        // applied and the animation plays until another picture is chosen.
        const QStringList animated{"red", "gif"};
        QTest::newRow("animation not attached") << animated << -2 << QList<int>{1} << "1 #ebeef2" << false;
        QTest::newRow("animation attached") << animated << 1 << QList<int>{} << "1 playing" << false;
        QTest::newRow("animation left") << animated << 1 << QList<int>{0} << "0 #ff0000" << false;
        // Not decoded: an empty label, and the good picture shows again after it.
        for (const char *bad : {"text", "cut png", "huge", "gif bomb", "pipe", "/dev/zero", "missing"})
            QTest::addRow("%s", bad) << QStringList{"red", bad} << -2 << QList<int>{1} << "1 blank" << (bad != QByteArray("missing"));
        QTest::newRow("good after bad") << QStringList{"red", "text"} << -2 << QList<int>{1, 0} << "0 #ff0000" << true;
    }
    void pictures()
    {
        QFETCH(QStringList, sources); QFETCH(int, read); QFETCH(QList<int>, values); QFETCH(QString, shown);
        QFETCH(bool, warned);
        QTemporaryDir dir;
        QStringList files;
        for (const QString &source : sources)
            files << pictureFile(dir, source);
        if (warned)
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("^DynamicImage \"gauge\": property \"images\": \"%1\" is not shown")
                                                                      .arg(QRegularExpression::escape(files.at(1)))));
        RecordingQeltApp app;
        QDialog form;
        auto *image = new DynamicImage(&form);
        image->setObjectName(QStringLiteral("gauge"));
        image->setImages(files);
        if (read != -2) {
            app.memory().setWord(0, 1, 3, 40, read);
            image->setChannel(2);
            image->setDataClass(DynamicImage::Reg);
            image->setAddress(40);
            image->SetVisibleBitType(DynamicImage::O_BIT);
            image->SetVisibleAddress(7);
            image->SetVisibleBitIndex(3);
            image->setQeltAppAndFormPtr(&app, &form);
            QList<QVariantList> registered;
            for (const UiRegistration &r : app.registrations())
                registered << r.arguments();
            QCOMPARE(registered, (QList<QVariantList>{{0, 0, 1, 3, 40, -1, 0, 1, 10, 10, 0, 0, false},
                                                      {2, 0, 1, 0, 7, 1, 3, 1, 10, 10, 0, 0, false}}));
            QCOMPARE(app.callNames(), (QStringList{"registerUIVariable", "getData", "registerUIVariable"}));
        }
        for (int value : values)
            image->updateData(0, value);
        const QPixmap pixmap = image->currentPixmap();
        const QString look = pixmap.isNull() ? QStringLiteral("blank")
                           : image->isPlaying() ? QStringLiteral("playing")
                                                : pixmap.toImage().pixelColor(1, 1).name();
        QCOMPARE(QStringLiteral("%1 %2").arg(image->index()).arg(look), shown);
        if (pixmap.isNull()) // nothing shown yet, nothing made to show it
            QVERIFY(image->children().isEmpty());
    }

    void autoLoad()
    {
        QTemporaryDir dir;
        const QString folder = dir.filePath(QStringLiteral("camera"));
        QVERIFY(QDir().mkpath(folder));
        DynamicImage image;
        image.setAutoLoadPath(folder);
        const auto put = [&folder](const char *name, const QColor &colour, int secondsAgo) {
            writePng(folder + QLatin1Char('/') + QLatin1String(name), colour);
            age(folder + QLatin1Char('/') + QLatin1String(name), secondsAgo);
        };
        // A running panel's event loop hears the folder's watcher between its polls; what is listed and shown then.
        const auto poll = [&image] {
            QCoreApplication::processEvents();
            image.updateImage();
            QStringList seen{QString::number(image.index())};
            for (const QString &path : image.images())
                seen << QFileInfo(path).fileName();
            return seen << (image.currentPixmap().isNull() ? QStringLiteral("blank") : image.currentPixmap().toImage().pixelColor(1, 1).name());
        };
        QCOMPARE(poll(), (QStringList{"-1", "blank"})); // empty folder
        put("a.png", Qt::red, 60);
        writeFile(folder + QStringLiteral("/notes.txt"), "not a picture");
        QCOMPARE(poll(), (QStringList{"0", "a.png", "#ff0000"}));
        put("b.png", Qt::green, 30);
        QCOMPARE(poll(), (QStringList{"0", "b.png", "#00ff00"})); // newer: replaces the entry
        put("c.png", Qt::blue, 90);
        QCOMPARE(poll(), (QStringList{"0", "b.png", "#00ff00"})); // older: nothing

        // An unchanged folder is not listed again; a picture rewritten in place, the folder's own
        // time unchanged, is found at the next poll: an older one that becomes the newest, and the
        // newest itself.
        age(folder, 20);
        poll();
        const int listings = image.folderListings();
        for (int i = 0; i < 5; ++i)
            poll();
        QCOMPARE(image.folderListings(), listings);
        put("c.png", Qt::yellow, 0);
        age(folder, 20);
        QCOMPARE(poll(), (QStringList{"0", "c.png", "#ffff00"}));
        put("c.png", Qt::cyan, 0);
        QCOMPARE(poll(), (QStringList{"0", "c.png", "#00ffff"}));
        age(folder + QStringLiteral("/c.png"), 10);
        put("d.png", Qt::magenta, 0);
        QCOMPARE(poll(), (QStringList{"0", "d.png", "#ff00ff"}));
        // A listing reads no more entries than its bound, matching or not, and tells so.
        NewestFile few(3);
        few.setPath(folder);
        few.poll();
        QVERIFY(few.truncated());
        // A folder that vanished changes nothing.
        QVERIFY(QDir(folder).removeRecursively());
        QCOMPARE(poll(), (QStringList{"0", "d.png", "#ff00ff"}));
    }

    // Scaling, the geometry as properties, and the click signals.
    void scalingGeometryAndClicks()
    {
        QTemporaryDir dir;
        QDialog form;
        auto *image = new DynamicImage(&form);
        image->setGeometry(10, 20, 100, 60);
        image->setImages({pictureFile(dir, QStringLiteral("red"))});
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
        QStringList order;
        connect(image, &DynamicImage::clicked, this, [&] { order << QStringLiteral("clicked"); });
        connect(image, &DynamicImage::doubleClicked, this, [&] { order << QStringLiteral("doubleClicked"); });
        // A double click: a press and a release, then the double-click event, which goes on to the
        // widget's own handling of a press.
        QTest::mouseClick(image, Qt::LeftButton);
        const QPoint at(5, 5);
        QMouseEvent twice(QEvent::MouseButtonDblClick, at, image->mapToGlobal(at), Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(image, &twice);
        QCOMPARE(order, (QStringList{"clicked", "doubleClicked", "clicked"}));
        // Scaled to a widget of 24 million pixels, the picture is made no larger than the bound.
        image->resize(8000, 3000);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("^DynamicImage \"\": property \"scaledContents\": 8000 x 3000")));
        image->setScaledContents(true);
        const QSize scaled = image->currentPixmap().size();
        QVERIFY(qint64(scaled.width()) * scaled.height() <= DynamicImage::MaxPixels && scaled.width() > 6000);
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
        QCOMPARE(image->grab().toImage().pixelColor(image->rect().center()), QColor(Qt::blue));
        QDir::setCurrent(before);
    }
};

QTEST_MAIN(TstDynamicImage)
#include "tst_dynamicimage.moc"
