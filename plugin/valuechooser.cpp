#include "valuechooser.h"

#include <QColorDialog>
#include <QCoreApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QImage>
#include <QImageReader>
#include <QMessageBox>

namespace {

ValueChooser::ColorChooser &colorChooser()
{
    static ValueChooser::ColorChooser chooser;
    return chooser;
}

ValueChooser::PictureChooser &pictureChooser()
{
    static ValueChooser::PictureChooser chooser;
    return chooser;
}

// Why a file is no usable picture, or an empty string.
QString pictureError(const QString &path)
{
    const QFileInfo info(path);
    if (!info.exists() || !info.isFile() || !info.isReadable())
        return QCoreApplication::translate("ValueChooser", "The pixmap file '%1' cannot be read.").arg(path);
    QImageReader reader(path);
    if (!reader.canRead())
        return QCoreApplication::translate("ValueChooser", "The file '%1' does not appear to be a valid pixmap file: %2")
            .arg(path, reader.errorString());
    if (reader.read().isNull())
        return QCoreApplication::translate("ValueChooser", "The file '%1' could not be read: %2")
            .arg(path, reader.errorString());
    return QString();
}

} // namespace

QColor ValueChooser::chooseColor(const QColor &initial, QWidget *parent)
{
    if (colorChooser())
        return colorChooser()(initial, parent);
    return QColorDialog::getColor(initial, parent, QString(), QColorDialog::ShowAlphaChannel);
}

QString ValueChooser::choosePicture(const QString &startFolder, QWidget *parent)
{
    if (pictureChooser())
        return pictureChooser()(startFolder, parent);
    return pictureFromDialog(startFolder, parent);
}

void ValueChooser::setColorChooser(ColorChooser chooser)
{
    colorChooser() = std::move(chooser);
}

void ValueChooser::setPictureChooser(PictureChooser chooser)
{
    pictureChooser() = std::move(chooser);
}

QString ValueChooser::pictureFromDialog(const QString &startFolder, QWidget *parent)
{
    const QString filter = QCoreApplication::translate("ValueChooser", "All Pixmaps (")
                           + QStringLiteral("*.bmp *.jpg *.jpeg *.png *.gif)");
    QString folder = startFolder;
    for (;;) {
        const QString path = QFileDialog::getOpenFileName(
            parent, QCoreApplication::translate("ValueChooser", "Choose a Pixmap"), folder, filter);
        if (path.isEmpty())
            return QString();
        const QString error = pictureError(path);
        if (error.isEmpty())
            return path;
        QMessageBox::warning(parent, QCoreApplication::translate("ValueChooser", "Pixmap Read Error"), error);
        folder = QFileInfo(path).absolutePath();
    }
}
