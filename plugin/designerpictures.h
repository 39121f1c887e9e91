#ifndef DESIGNERPICTURES_H
#define DESIGNERPICTURES_H

#include <QVariant>

class QDesignerFormEditorInterface;

// Pixmap and icon property values in Designer's own representation, which keeps the picture's file
// path so that the form saves it (a plain QPixmap or QIcon would be saved empty). Designer builds
// such values only when it loads a form, so a scratch form loads the picture and hands its value
// over. Invalid when the file cannot be loaded that way.
class DesignerPictures
{
public:
    static QVariant pixmapValue(QDesignerFormEditorInterface *core, const QString &filePath);
    static QVariant iconValue(QDesignerFormEditorInterface *core, const QString &filePath);

private:
    static QVariant load(QDesignerFormEditorInterface *core, const QString &widgetXml, const char *property);
};

#endif
