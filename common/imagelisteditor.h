#ifndef IMAGELISTEDITOR_H
#define IMAGELISTEDITOR_H

#include <QObject>
#include <QPointer>
#include <QString>

class DynamicImage;
class QDesignerFormWindowInterface;
class QListWidgetItem;
class QPixmap;
namespace Ui {
class DynamicImageEditor;
}

// The Pictures page of the Dynamic Image Editor: the widget's pictures as icons in list order,
// pictures added from disk (copied into the project's "ResourceFiles" folder under the first free
// number), deleted, moved up and down, the preview kept in step; accept() writes "images" (and
// "index" when the preview's differs) through the form window as undoable changes.
class ImageListEditor : public QObject
{
    Q_OBJECT
public:
    ImageListEditor(DynamicImage *widget, DynamicImage *preview, QDesignerFormWindowInterface *formWindow,
                    Ui::DynamicImageEditor *ui, QObject *parent = nullptr);
    ~ImageListEditor() override;

    // "All Pixmaps (*.bmp *.jpg *.jpeg *.png *.gif)", translated.
    static QString filter();
    // Copies file into projectPath's resource folder under the first free number; returns the path
    // relative to projectPath ("ResourceFiles/3.png").
    static QString copyIntoProject(const QString &file, const QString &projectPath);
    // Why file cannot serve as a picture, or empty.
    static QString problemWith(const QString &file);

public Q_SLOTS:
    void accept();
    void on_upButton_clicked();
    void on_downButton_clicked();
    void on_newButton_clicked();
    void on_deleteButton_clicked();

private:
    // The file the author chooses (the dialog reopens on an unusable one), or empty.
    QString choosePicture();
    QListWidgetItem *makeItem(const QString &relativePath) const;
    void move(int step);
    void renumber();

    QPointer<DynamicImage> m_widget;
    QPointer<DynamicImage> m_preview;
    QDesignerFormWindowInterface *m_formWindow;
    Ui::DynamicImageEditor *m_ui;
    QString m_projectPath;
    QString m_lastDir;
};

#endif
