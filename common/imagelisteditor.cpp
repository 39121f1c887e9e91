#include "imagelisteditor.h"

#include "designerhost.h"
#include "dynamicimage.h"
#include "formwindowhost.h"
#include "ui_dynamicimageeditor.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QImageReader>
#include <QListWidget>
#include <QMessageBox>

namespace {
const char *const ResourceFolder = "ResourceFiles";
constexpr int IconSide = 96;
} // namespace

ImageListEditor::ImageListEditor(DynamicImage *widget, DynamicImage *preview, QDesignerFormWindowInterface *formWindow,
                                 Ui::DynamicImageEditor *ui, QObject *parent)
    : QObject(parent)
    , m_widget(widget)
    , m_preview(preview)
    , m_formWindow(formWindow)
    , m_ui(ui)
{
    QListWidget *list = ui->listWidget;
    list->setIconSize(QSize(IconSide, IconSide));
    list->setViewMode(QListView::IconMode);
    list->setResizeMode(QListView::Adjust);
    list->setMovement(QListView::Static);
    list->setSpacing(10);
    ui->upButton->setIcon(QIcon(QStringLiteral(":/up.png")));
    ui->downButton->setIcon(QIcon(QStringLiteral(":/down.png")));
    ui->deleteButton->setIcon(QIcon(QStringLiteral(":/minus.png")));
    ui->newButton->setIcon(QIcon(QStringLiteral(":/plus.png")));
    connect(ui->upButton, &QPushButton::clicked, this, &ImageListEditor::on_upButton_clicked);
    connect(ui->downButton, &QPushButton::clicked, this, &ImageListEditor::on_downButton_clicked);
    connect(ui->newButton, &QPushButton::clicked, this, &ImageListEditor::on_newButton_clicked);
    connect(ui->deleteButton, &QPushButton::clicked, this, &ImageListEditor::on_deleteButton_clicked);
    if (DesignerHost *host = DesignerHost::instance())
        m_projectPath = host->projectPath(DesignerHost::formWindowOf(widget));
    const QStringList images = widget->images();
    for (int i = 0; i < images.size(); ++i) {
        QListWidgetItem *item = makeItem(images.at(i));
        item->setText(QString::number(i));
        list->addItem(item);
    }
}

ImageListEditor::~ImageListEditor() = default;

QString ImageListEditor::filter()
{
    static const QString text = [] {
        QString extensions;
        for (const char *suffix : {"bmp", "jpg", "jpeg", "png", "gif"})
            extensions += (extensions.isEmpty() ? QStringLiteral("*.") : QStringLiteral(" *.")) + QLatin1String(suffix);
        return QCoreApplication::translate("IconSelector", "All Pixmaps (") + extensions + QLatin1Char(')');
    }();
    return text;
}

QListWidgetItem *ImageListEditor::makeItem(const QString &relativePath) const
{
    auto *item = new QListWidgetItem;
    // Only pictures the widget would show are read, at icon size.
    QImageReader reader(QDir(m_projectPath).filePath(relativePath));
    const QSize size = reader.size();
    if (size.isValid() && qint64(size.width()) * size.height() <= DynamicImage::MaxPixels) {
        const QPixmap picture = QPixmap::fromImageReader(&reader);
        if (!picture.isNull())
            item->setIcon(QIcon(picture.scaled(IconSide, IconSide, Qt::KeepAspectRatio, Qt::SmoothTransformation)));
    }
    item->setData(Qt::UserRole, relativePath);
    return item;
}

QString ImageListEditor::problemWith(const QString &file)
{
    const QFileInfo info(file);
    if (!info.exists() || !info.isFile() || !info.isReadable())
        return QCoreApplication::translate("IconSelector", "The pixmap file '%1' cannot be read.").arg(file);
    QImageReader reader(file);
    if (!reader.canRead()) {
        return QCoreApplication::translate("IconSelector", "The file '%1' does not appear to be a valid pixmap file: %2")
            .arg(file, reader.errorString());
    }
    // Not decoded when its header claims a size no panel could hold.
    const QSize size = reader.size();
    if (!size.isValid() || qint64(size.width()) * size.height() > DynamicImage::MaxPixels || reader.read().isNull()) {
        return QCoreApplication::translate("IconSelector", "The file '%1' could not be read: %2")
            .arg(file, reader.errorString());
    }
    return QString();
}

QString ImageListEditor::choosePicture()
{
    QWidget *parent = m_ui->listWidget->window();
    for (;;) {
        const QString file = QFileDialog::getOpenFileName(parent, QCoreApplication::translate("IconSelector", "Choose a Pixmap"),
                                                          m_lastDir, filter(), nullptr,
                                                          QFileDialog::DontUseNativeDialog);
        if (file.isEmpty())
            return QString();
        const QString problem = problemWith(file);
        if (problem.isEmpty())
            return file;
        m_lastDir = QFileInfo(file).absolutePath();
        QMessageBox::warning(parent, QCoreApplication::translate("IconSelector", "Pixmap Read Error"), problem);
    }
}

QString ImageListEditor::copyIntoProject(const QString &file, const QString &projectPath)
{
    const QString folder = QDir::toNativeSeparators(projectPath + QLatin1Char('/') + QLatin1String(ResourceFolder)
                                                    + QLatin1Char('/'));
    QDir().mkpath(folder);
    const QString suffix = QFileInfo(file).suffix();
    QString name;
    for (int n = 1;; ++n) {
        name = QString::number(n) + QLatin1Char('.') + suffix;
        if (!QFileInfo::exists(folder + name))
            break;
    }
    QFile::copy(file, folder + name);
    return QLatin1String(ResourceFolder) + QLatin1Char('/') + name;
}

void ImageListEditor::on_newButton_clicked()
{
    const QString file = choosePicture();
    if (file.isEmpty())
        return;
    m_lastDir = QFileInfo(file).absolutePath();
    m_ui->listWidget->addItem(makeItem(copyIntoProject(file, m_projectPath)));
    renumber();
}

void ImageListEditor::on_deleteButton_clicked()
{
    QListWidget *list = m_ui->listWidget;
    if (QListWidgetItem *item = list->currentItem()) {
        delete list->takeItem(list->row(item));
        renumber();
    }
}

void ImageListEditor::move(int step)
{
    QListWidget *list = m_ui->listWidget;
    const int row = list->currentRow();
    const int target = row + step;
    if (row < 0 || target < 0 || target >= list->count())
        return;
    QListWidgetItem *copy = list->item(row)->clone();
    list->insertItem(step < 0 ? target : target + 1, copy);
    delete list->takeItem(step < 0 ? row + 1 : row);
    list->setCurrentItem(copy);
    renumber();
}

void ImageListEditor::on_upButton_clicked() { move(-1); }
void ImageListEditor::on_downButton_clicked() { move(1); }

void ImageListEditor::renumber()
{
    QListWidget *list = m_ui->listWidget;
    QStringList paths;
    for (int i = 0; i < list->count(); ++i) {
        list->item(i)->setText(QString::number(i));
        paths << list->item(i)->data(Qt::UserRole).toString();
    }
    if (!m_preview)
        return;
    m_preview->setProperty("images", paths);
    int index = m_preview->property("index").toInt();
    if (index == list->count())
        index = list->count() - 1;
    else if (index < 0)
        index = 0;
    m_preview->setProperty("index", index);
}

void ImageListEditor::accept()
{
    if (!m_widget)
        return;
    QStringList paths;
    for (int i = 0; i < m_ui->listWidget->count(); ++i)
        paths << m_ui->listWidget->item(i)->data(Qt::UserRole).toString();
    const auto commit = [this](const char *name, const QVariant &value) {
        if (m_formWindow)
            FormWindowHost::setCursorProperty(m_formWindow, m_widget, QString::fromLatin1(name), value);
        else
            m_widget->setProperty(name, value);
    };
    commit("images", paths);
    if (m_preview && m_preview->property("index") != m_widget->property("index"))
        commit("index", m_preview->property("index"));
}
