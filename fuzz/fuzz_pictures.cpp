// Feeds arbitrary bytes to the dynamic image as a picture file it is told to show: the first byte picks
// the file's extension and whether the picture is scaled; the rest is the file. The image is attached,
// so an animation plays, and it is painted and resized once.
#include "fuzzapplication.h"
#include "dynamicimage.h"
#include "recordingqeltapp.h"

#include <QApplication>
#include <QDialog>
#include <QFile>
#include <QTemporaryDir>

#include <cstdint>

HMI_FUZZ_APPLICATION()

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size < 1)
        return 0;
    static QTemporaryDir dir;
    static const char *const extensions[] = {"png", "gif", "bmp", "jpg", "xpm", "pbm", "svg", "ico"};
    const quint8 mode = data[0];
    const QString file = dir.filePath(QStringLiteral("picture.") + QLatin1String(extensions[mode % 8]));
    {
        QFile out(file);
        if (!out.open(QIODevice::WriteOnly | QIODevice::Truncate))
            return 0;
        out.write(reinterpret_cast<const char *>(data + 1), qint64(size - 1));
    }
    RecordingQeltApp app;
    QDialog form;
    auto *image = new DynamicImage(&form);
    image->resize(64, 48);
    image->setScaledContents(mode & 0x80);
    image->setImages({file, file});
    image->setIndex(0);
    image->setQeltAppAndFormPtr(&app, &form);
    app.deliver(image, 0, 1);
    (void)image->grab();
    image->resize(20, 90);
    (void)image->grab();
    QFile::remove(file);
    return 0;
}
