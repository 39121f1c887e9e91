#ifndef VALUECHOOSER_H
#define VALUECHOOSER_H

#include <QColor>
#include <QString>

#include <functional>

class QWidget;

// The choosers behind the property dialog's "Edit..." buttons: a colour dialog and a picture file
// dialog. Tests replace them, since both are modal.
class ValueChooser
{
public:
    using ColorChooser = std::function<QColor(const QColor &initial, QWidget *parent)>;
    using PictureChooser = std::function<QString(const QString &startFolder, QWidget *parent)>;

    // An invalid colour when the user cancels.
    static QColor chooseColor(const QColor &initial, QWidget *parent);
    // The path of a readable picture file, or an empty string when the user cancels.
    static QString choosePicture(const QString &startFolder, QWidget *parent);

    // Replacements (tests); an empty function restores the dialogs.
    static void setColorChooser(ColorChooser chooser);
    static void setPictureChooser(PictureChooser chooser);

private:
    static QString pictureFromDialog(const QString &startFolder, QWidget *parent);
};

#endif
