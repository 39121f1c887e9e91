// The dynamic image's auto-load folder of many pictures: the poll after a new picture arrived (one
// listing, bounded and unsorted) against listing the folder sorted by time with QDir, and a poll in
// which nothing changed. Then a small picture scaled to a 16000 x 16000 widget against a plain
// QMovie scaled to that size: time and resident memory.
// Usage: bench_dynamicimage [files] [rounds]   (TMPDIR=/dev/shm keeps the disk out of it)
#include "dynamicimage.h"
#include "newestfile.h"
#include "residentmemory.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QImage>
#include <QMovie>
#include <QTemporaryDir>
#include <QTextStream>

#include <algorithm>

namespace {

struct Best
{
    qint64 ns = -1;
    void add(qint64 t) { ns = ns < 0 ? t : std::min(ns, t); }
};

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", qgetenv("QT_QPA_PLATFORM").isEmpty() ? QByteArray("offscreen") : qgetenv("QT_QPA_PLATFORM"));
    QApplication app(argc, argv);
    const int files = argc > 1 ? std::max(1, atoi(argv[1])) : 100000;
    const int rounds = argc > 2 ? std::max(1, atoi(argv[2])) : 5;
    QTextStream out(stdout);
    QTemporaryDir dir;
    for (int i = 0; i < files; ++i) {
        QFile file(dir.filePath(QStringLiteral("shot_%1.png").arg(i, 6, 10, QLatin1Char('0'))));
        file.open(QIODevice::WriteOnly);
        file.write("x");
    }

    NewestFile folder;
    folder.setNameFilters({QStringLiteral("*.bmp"), QStringLiteral("*.png")});
    folder.setPath(dir.path());
    folder.poll();
    Best arrived, idle, sorted;
    for (int round = 0; round < rounds; ++round) {
        QFile file(dir.filePath(QStringLiteral("new_%1.png").arg(round)));
        file.open(QIODevice::WriteOnly);
        file.write("x");
        file.close();
        QApplication::processEvents(); // the watcher's news
        QElapsedTimer timer;
        timer.start();
        folder.poll();
        arrived.add(timer.nsecsElapsed());
        timer.restart();
        folder.poll();
        idle.add(timer.nsecsElapsed());
        timer.restart();
        QDir listing(dir.path(), QStringLiteral("*.bmp *.png"), QDir::Time, QDir::Files);
        (void)listing.entryList();
        sorted.add(timer.nsecsElapsed());
    }
    out << "folder of " << files << " pictures, best of " << rounds << " rounds\n";
    out << "QDir listing sorted by time: " << sorted.ns / 1e6 << " ms\n";
    out << "poll after a picture arrived: " << arrived.ns / 1e6 << " ms (at most " << NewestFile::MaxEntries
        << " entries read)\n";
    out << "poll of an unchanged folder: " << idle.ns / 1e3 << " us\n";
    out << "ratio arrival poll / sorted listing: " << double(arrived.ns) / double(sorted.ns) << "\n";

    // A camera writing the newest picture again in place: no file is created, the folder's own entry
    // does not change; it must still be picked up.
    Best rewritten;
    int mostPolls = 0;
    for (int round = 0; round < rounds; ++round) {
        const QString name = folder.poll().section(QLatin1Char('/'), -1);
        const int version = folder.version();
        QFile file(dir.filePath(name));
        file.open(QIODevice::WriteOnly | QIODevice::Truncate);
        file.write(QByteArray(round + 2, 'y'));
        file.close();
        QApplication::processEvents();
        QElapsedTimer timer;
        timer.start();
        int polls = 1;
        while (folder.poll() != dir.filePath(name) || folder.version() == version) {
            if (++polls > 2 * NewestFile::ListingEveryPolls)
                qFatal("a picture rewritten in place was not picked up");
        }
        rewritten.add(timer.nsecsElapsed());
        mostPolls = std::max(mostPolls, polls);
    }
    out << "picture rewritten in place picked up within " << mostPolls << " polls, " << rewritten.ns / 1e6 << " ms\n";
    out << "ratio rewritten-in-place poll / sorted listing: " << double(rewritten.ns) / double(sorted.ns)
        << " (target <= 1)\n";

    QImage small(64, 48, QImage::Format_RGB32);
    small.fill(Qt::darkCyan);
    const QString picture = dir.filePath(QStringLiteral("small.png"));
    small.save(picture);
    const QSize huge(16000, 16000);
    qint64 before = residentKiB();
    QElapsedTimer timer;
    timer.start();
    {
        QMovie movie(picture);
        movie.setScaledSize(huge);
        movie.jumpToFrame(0);
        out << "plain QMovie scaled to 16000 x 16000: " << timer.elapsed() << " ms, +" << (residentKiB() - before) / 1024
            << " MiB, frame " << movie.currentImage().width() << " x " << movie.currentImage().height() << "\n";
    }
    before = residentKiB();
    timer.restart();
    DynamicImage image;
    image.resize(huge);
    image.setImages({picture});
    image.setIndex(0);
    image.setScaledContents(true);
    out << "DynamicImage scaled on a 16000 x 16000 widget: " << timer.elapsed() << " ms, +"
        << (residentKiB() - before) / 1024 << " MiB, picture " << image.currentPixmap().width() << " x "
        << image.currentPixmap().height() << "\n";
    return 0;
}
