// The Dynamic Image Editor's picture list: pictures copied into the project under the first free
// number, unreadable files refused and the chooser reopened, deleting and moving; its commit as one
// undo step, Cancel committing nothing, and the saved form through the panel's loader and uic.
#include "designercore.h"
#include "dynamicimage.h"
#include "norvointerface_z3.h"

#include <QtDesigner/QDesignerFormWindowInterface>

#include <QApplication>
#include <QDialog>
#include <QFileDialog>
#include <QImage>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QUndoStack>

#include <functional>

namespace {

QString imageForm()
{
    return DesignerCore::formDocument(QStringLiteral(
        "<widget class=\"DynamicImage\" name=\"dynamicImage\"><property name=\"geometry\"><rect><x>0</x><y>0</y>"
        "<width>120</width><height>90</height></rect></property></widget>"));
}

void writePng(const QString &path, const QColor &color)
{
    QImage image(16, 16, QImage::Format_RGB32);
    image.fill(color);
    QVERIFY(image.save(path, "PNG"));
}

// Answers the chooser and the warning boxes the editor opens, one step a window.
class Answers
{
public:
    using Step = std::function<void(QWidget *)>;
    explicit Answers(QList<Step> steps)
        : m_steps(std::move(steps))
    {
        m_timer.setInterval(10);
        QObject::connect(&m_timer, &QTimer::timeout, [this] {
            QWidget *modal = QApplication::activeModalWidget();
            const bool ours = qobject_cast<QFileDialog *>(modal) || qobject_cast<QMessageBox *>(modal);
            if (!ours || modal == m_last || m_steps.isEmpty())
                return;
            m_last = modal;
            m_steps.takeFirst()(modal);
        });
        m_timer.start();
    }
    bool done() const { return m_steps.isEmpty(); }

private:
    QTimer m_timer;
    QList<Step> m_steps;
    QPointer<QWidget> m_last;
};

Answers::Step choose(const QString &file, QString *folder = nullptr)
{
    return [file, folder](QWidget *w) {
        auto *dialog = qobject_cast<QFileDialog *>(w);
        QVERIFY(dialog);
        if (folder)
            *folder = dialog->directory().absolutePath();
        if (file.isEmpty()) {
            dialog->reject();
            return;
        }
        // Typed into the dialog's own line, as an author does.
        dialog->setDirectory(QFileInfo(file).absolutePath());
        auto *name = dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
        QVERIFY(name);
        name->setText(QFileInfo(file).fileName());
        QMetaObject::invokeMethod(dialog, "accept");
    };
}

QStringList listTexts(QListWidget *list)
{
    QStringList out;
    for (int i = 0; i < list->count(); ++i)
        out << list->item(i)->text() + QLatin1Char('=') + list->item(i)->data(Qt::UserRole).toString();
    return out;
}

} // namespace

class TestDynamicImageDesigner : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QApplication::setFont(QFont(QStringLiteral("Sans Serif"), 9)); }
    void init() { NORVOInterface_Z3::initialization()->resetToDefaults(); }
    void cleanup()
    {
        DesignerCore::instance().closeForms();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    void cleanupTestCase() { DesignerCore::release(); }

    void pictureList_data()
    {
        QTest::addColumn<bool>("accept");
        QTest::newRow("ok") << true;
        QTest::newRow("cancel") << false;
    }
    void pictureList()
    {
        QFETCH(bool, accept);
        QTemporaryDir project;
        QVERIFY(QDir(project.path()).mkpath(QStringLiteral("ResourceFiles")));
        writePng(project.filePath(QStringLiteral("ResourceFiles/1.png")), Qt::red);
        QTemporaryDir pictures;
        writePng(pictures.filePath(QStringLiteral("green.png")), Qt::green);
        writePng(pictures.filePath(QStringLiteral("blue.png")), Qt::blue);
        QFile text(pictures.filePath(QStringLiteral("notes.png")));
        QVERIFY(text.open(QIODevice::WriteOnly));
        text.write("not a picture");
        text.close();

        QDesignerFormWindowInterface *form = DesignerCore::instance().createForm(imageForm());
        QVERIFY(form);
        form->setFileName(project.filePath(QStringLiteral("screen.ui")));
        auto *image = DesignerCore::formWidget<DynamicImage>(form, QStringLiteral("dynamicImage"));
        QVERIFY(image);
        image->setImages({QStringLiteral("ResourceFiles/1.png")});
        const int before = form->commandHistory()->count();

        QString reopenedIn;
        QString warning;
        QStringList afterAdding;
        QStringList afterDeleting;
        QStringList previewImages;
        bool checked = false;
        const bool opened = DesignerCore::runEditor(image, [&](QDialog *dialog) {
            auto *list = dialog->findChild<QListWidget *>(QStringLiteral("listWidget"));
            auto *preview = dialog->findChild<DynamicImage *>();
            QVERIFY(list && preview);
            QCOMPARE(listTexts(list), QStringList{"0=ResourceFiles/1.png"});
            Answers answers({choose(pictures.filePath(QStringLiteral("green.png")))});
            dialog->findChild<QPushButton *>(QStringLiteral("newButton"))->click();
            // An unreadable file: the box, then the chooser again in the same folder; then a picture.
            Answers again({choose(pictures.filePath(QStringLiteral("notes.png"))),
                           [&](QWidget *w) {
                               warning = w->windowTitle() + QLatin1Char('|') + static_cast<QMessageBox *>(w)->text();
                               static_cast<QMessageBox *>(w)->accept();
                           },
                           choose(pictures.filePath(QStringLiteral("blue.png")), &reopenedIn)});
            dialog->findChild<QPushButton *>(QStringLiteral("newButton"))->click();
            QVERIFY(again.done());
            afterAdding = listTexts(list);
            // Moving the last one down changes nothing; up swaps it with the one before.
            list->setCurrentRow(2);
            dialog->findChild<QPushButton *>(QStringLiteral("downButton"))->click();
            dialog->findChild<QPushButton *>(QStringLiteral("upButton"))->click();
            QCOMPARE(list->currentRow(), 1);
            list->setCurrentRow(0);
            dialog->findChild<QPushButton *>(QStringLiteral("deleteButton"))->click();
            afterDeleting = listTexts(list);
            previewImages = preview->images();
            checked = true;
            if (accept)
                dialog->accept();
            else
                dialog->reject();
        });
        QVERIFY(opened);
        QVERIFY(checked);
        QCOMPARE(afterAdding, (QStringList{"0=ResourceFiles/1.png", "1=ResourceFiles/2.png", "2=ResourceFiles/3.png"}));
        QVERIFY(QFile::exists(project.filePath(QStringLiteral("ResourceFiles/3.png"))));
        QVERIFY2(warning.startsWith(QLatin1String("Pixmap Read Error|The file '")), qPrintable(warning));
        QVERIFY(warning.contains(QLatin1String("' does not appear to be a valid pixmap file: ")));
        QCOMPARE(reopenedIn, pictures.path());
        QCOMPARE(afterDeleting, (QStringList{"0=ResourceFiles/3.png", "1=ResourceFiles/2.png"}));
        QCOMPARE(previewImages, (QStringList{"ResourceFiles/3.png", "ResourceFiles/2.png"}));
        if (!accept) {
            QCOMPARE(form->commandHistory()->count(), before);
            QCOMPARE(image->images(), QStringList{"ResourceFiles/1.png"});
            return;
        }
        QCOMPARE(form->commandHistory()->count(), before + 1);
        QCOMPARE(image->images(), previewImages);
        form->commandHistory()->undo();
        QCOMPARE(image->images(), QStringList{"ResourceFiles/1.png"});
        form->commandHistory()->redo();

        // The saved form, through the form loader and as uic code.
        const QString saved = form->contents();
        QVERIFY(saved.contains(QLatin1String("ResourceFiles/3.png")));
        std::unique_ptr<QWidget> root = DesignerCore::loadAtRunTime(saved);
        QCOMPARE(root->findChild<DynamicImage *>(QStringLiteral("dynamicImage"))->images(), previewImages);
        const QString code = DesignerCore::uicCode(saved);
        QVERIFY2(code.contains(QLatin1String("dynamicImage->setImages(")), qPrintable(code));
    }
};

QTEST_MAIN(TestDynamicImageDesigner)
#include "tst_dynamicimagedesigner.moc"
