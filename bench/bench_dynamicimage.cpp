// The dynamic image's folder watch: a poll of a folder of 5,000 matching pictures in which nothing
// changed, against a poll that lists and sorts it.
// Usage: bench_dynamicimage [files] [rounds]
#include "newestfile.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QTextStream>

#include <sys/stat.h>

#include <algorithm>
#include <fcntl.h>

namespace {

void ageFolder(const QString &path, int secondsAgo)
{
    const timespec when{time(nullptr) - secondsAgo, 0};
    const timespec times[2] = {when, when};
    utimensat(AT_FDCWD, QFile::encodeName(path).constData(), times, 0);
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    const int files = argc > 1 ? std::max(1, atoi(argv[1])) : 5000;
    const int rounds = argc > 2 ? std::max(1, atoi(argv[2])) : 50;
    QTextStream out(stdout);
    QTemporaryDir dir;
    for (int i = 0; i < files; ++i) {
        QFile file(dir.filePath(QStringLiteral("shot_%1.png").arg(i, 6, 10, QLatin1Char('0'))));
        file.open(QIODevice::WriteOnly);
        file.write("x");
    }
    ageFolder(dir.path(), 60);

    NewestFile folder;
    folder.setNameFilters({QStringLiteral("*.png")});
    qint64 listing = -1;
    qint64 unchanged = -1;
    for (int round = 0; round < rounds; ++round) {
        QElapsedTimer timer;
        folder.setPath(dir.path()); // forgets what it knew: this poll lists and sorts
        timer.start();
        const QString newest = folder.poll();
        const qint64 full = timer.nsecsElapsed();
        timer.restart();
        const QString again = folder.poll();
        const qint64 cheap = timer.nsecsElapsed();
        if (newest != again)
            return 1;
        listing = listing < 0 ? full : std::min(listing, full);
        unchanged = unchanged < 0 ? cheap : std::min(unchanged, cheap);
    }
    out << "folder of " << files << " pictures, best of " << rounds << " rounds\n";
    out << "poll that lists and sorts: " << listing / 1e3 << " us\n";
    out << "poll of an unchanged folder: " << unchanged / 1e3 << " us\n";
    out << "ratio unchanged poll / listing poll: " << double(unchanged) / double(listing) << " (target <= 0.05)\n";
    return 0;
}
