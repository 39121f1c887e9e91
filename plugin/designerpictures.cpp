#include "designerpictures.h"

#include <QtDesigner/QDesignerFormEditorInterface>
#include <QtDesigner/QDesignerFormWindowInterface>
#include <QtDesigner/QDesignerFormWindowManagerInterface>
#include <QtDesigner/QDesignerPropertySheetExtension>
#include <QtDesigner/QExtensionManager>

#include <QFileInfo>
#include <QWidget>

namespace {

QString escaped(const QString &path)
{
    return QFileInfo(path).absoluteFilePath().toHtmlEscaped();
}

} // namespace

QVariant DesignerPictures::pixmapValue(QDesignerFormEditorInterface *core, const QString &filePath)
{
    return load(core,
                QStringLiteral("<widget class=\"QLabel\" name=\"picture\"><property name=\"pixmap\">"
                               "<pixmap>%1</pixmap></property></widget>")
                    .arg(escaped(filePath)),
                "pixmap");
}

QVariant DesignerPictures::iconValue(QDesignerFormEditorInterface *core, const QString &filePath)
{
    return load(core,
                QStringLiteral("<widget class=\"QPushButton\" name=\"picture\"><property name=\"icon\">"
                               "<iconset><normaloff>%1</normaloff></iconset></property></widget>")
                    .arg(escaped(filePath)),
                "icon");
}

QVariant DesignerPictures::load(QDesignerFormEditorInterface *core, const QString &widgetXml, const char *property)
{
    QDesignerFormWindowManagerInterface *manager = core ? core->formWindowManager() : nullptr;
    if (!manager)
        return QVariant();
    QDesignerFormWindowInterface *scratch = manager->createFormWindow(nullptr, Qt::Widget);
    QVariant value;
    const QString document = QStringLiteral("<ui version=\"4.0\"><class>Scratch</class>"
                                            "<widget class=\"QWidget\" name=\"Scratch\">%1</widget></ui>")
                                 .arg(widgetXml);
    if (scratch->setContents(document)) {
        QWidget *holder = scratch->mainContainer()
                              ? scratch->mainContainer()->findChild<QWidget *>(QStringLiteral("picture"))
                              : nullptr;
        auto *sheet = holder ? qt_extension<QDesignerPropertySheetExtension *>(core->extensionManager(), holder)
                             : nullptr;
        const int index = sheet ? sheet->indexOf(QString::fromLatin1(property)) : -1;
        if (index >= 0 && sheet->isChanged(index))
            value = sheet->property(index);
    }
    manager->removeFormWindow(scratch);
    delete scratch;
    return value;
}
