// The grid splitter and the MDI area in Designer on the real core with the built plugin: the
// descriptors (the panel a hidden container), cells and panels managed and saved with what is
// dropped on them, a line drag and a strip move each one undo step and saved, fewer columns releasing
// their cells as an undo step, New and Delete acting at once as undo steps, the editors, and the saved form
// reopened in Designer, through QUiLoader and as uic code.
#include "advsplitter.h"
#include "designercore.h"
#include "formloader.h"
#include "gridsplitter.h"
#include "mdiarea.h"
#include "movehandler.h"
#include "subwindow.h"

#include <QtUiPlugin/QDesignerCustomWidgetCollectionInterface>
#include <QtDesigner/QDesignerFormEditorInterface>
#include <QtDesigner/QDesignerFormWindowCursorInterface>
#include <QtDesigner/QDesignerFormWindowInterface>
#include <QtDesigner/QDesignerTaskMenuExtension>
#include <QtDesigner/QExtensionManager>

#include <QApplication>
#include <QBuffer>
#include <QClipboard>
#include <QDialog>
#include <QListWidget>
#include <QMimeData>
#include <QProcess>
#include <QPushButton>
#include <QRegularExpression>
#include <QSpinBox>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QUndoStack>

namespace {

QString gridForm()
{
    return DesignerCore::formDocument(QStringLiteral(
        "<widget class=\"GridSplitter\" name=\"gridSplitter\"><property name=\"geometry\"><rect><x>0</x><y>0</y>"
        "<width>302</width><height>202</height></rect></property>"
        "<property name=\"rowCount\"><number>2</number></property>"
        "<property name=\"columnCount\"><number>3</number></property></widget>"));
}

// The area renamed from its default ("MdiArea", its class name), as uic code needs.
QString areaForm()
{
    return DesignerCore::formDocument(QStringLiteral(
        "<widget class=\"MdiArea\" name=\"panelArea\"><property name=\"geometry\"><rect><x>0</x><y>0</y>"
        "<width>300</width><height>250</height></rect></property></widget>"));
}

// Pastes a push button named name onto target, as a drop onto it does.
void drop(QDesignerFormWindowInterface *form, QWidget *target, const QString &name)
{
    auto *mime = new QMimeData;
    mime->setText(QStringLiteral("<ui><widget class=\"QWidget\" name=\"__qt_fake_top_level\">"
                                 "<widget class=\"QPushButton\" name=\"%1\"><property name=\"geometry\">"
                                 "<rect><x>5</x><y>5</y><width>40</width><height>20</height></rect></property>"
                                 "</widget></widget></ui>").arg(name));
    QApplication::clipboard()->setMimeData(mime);
    form->clearSelection();
    form->selectWidget(target, true);
    QVERIFY(QMetaObject::invokeMethod(form, "paste"));
}

// A drag by the mouse as the panel builder makes it: press on handle, move by delta, release.
void dragBy(QWidget *handle, const QPoint &delta)
{
    const QPoint start = handle->rect().center();
    QTest::mousePress(handle, Qt::LeftButton, Qt::NoModifier, start);
    QMouseEvent move(QEvent::MouseMove, start + delta, handle->mapToGlobal(start + delta), Qt::LeftButton,
                     Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(handle, &move);
    QTest::mouseRelease(handle, Qt::LeftButton, Qt::NoModifier, start);
}

// Tags of the managed children of widget, sorted.
QStringList managedTags(QDesignerFormWindowInterface *form, QWidget *widget)
{
    QStringList tags;
    for (QWidget *child : widget->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly)) {
        if (form->isManaged(child))
            tags << (child->statusTip().isEmpty() ? child->objectName() : child->statusTip());
    }
    tags.sort();
    return tags;
}

QStringList savedCells(const QString &contents)
{
    QStringList out;
    static const QRegularExpression tag(QStringLiteral("name=\"statusTip\">\\s*<string>(cell\\d{4})</string>"));
    for (auto it = tag.globalMatch(contents); it.hasNext();)
        out << it.next().captured(1);
    out.sort();
    return out;
}

QStringList savedPanels(const QString &contents)
{
    QStringList out;
    static const QRegularExpression panel(QStringLiteral("<widget class=\"SubWindow\" name=\"([^\"]+)\""));
    for (auto it = panel.globalMatch(contents); it.hasNext();)
        out << it.next().captured(1);
    out.sort();
    return out;
}

std::unique_ptr<QWidget> loadForm(const QString &contents)
{
    FormLoader loader;
    QBuffer buffer;
    buffer.setData(contents.toUtf8());
    buffer.open(QIODevice::ReadOnly);
    std::unique_ptr<QWidget> root(loader.load(&buffer));
    if (root)
        root->show();
    return root;
}

QString uicCode(const QString &contents)
{
    QTemporaryDir dir;
    QFile file(dir.filePath(QStringLiteral("form.ui")));
    if (!file.open(QIODevice::WriteOnly))
        return QString();
    file.write(contents.toUtf8());
    file.close();
    QProcess uic;
    uic.start(QStringLiteral(HMI_UIC), {file.fileName()});
    uic.waitForFinished();
    return QString::fromUtf8(uic.readAllStandardOutput());
}

const QStringList SixCells{"cell0000", "cell0001", "cell0002", "cell0100", "cell0101", "cell0102"};

} // namespace

class TestContainersDesigner : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QApplication::setFont(QFont(QStringLiteral("Sans Serif"), 9)); }
    void cleanup()
    {
        DesignerCore::instance().closeForms();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    void cleanupTestCase() { DesignerCore::release(); }

    void descriptors_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("group");
        QTest::addColumn<QString>("objectName");
        QTest::addColumn<int>("width");
        QTest::addColumn<bool>("container");
        QTest::newRow("grid splitter") << "GridSplitter" << "Containers" << "gridSplitter" << 300 << false;
        QTest::newRow("MDI area") << "MdiArea" << "Containers" << "MdiArea" << 200 << false;
        QTest::newRow("panel") << "SubWindow" << "[invisible]" << "SubWindow" << 100 << true;
    }
    void descriptors()
    {
        QFETCH(QString, name);
        QFETCH(QString, group);
        QFETCH(QString, objectName);
        QFETCH(int, width);
        QFETCH(bool, container);
        QDesignerCustomWidgetInterface *d = DesignerCore::descriptor(name);
        QVERIFY(d);
        QCOMPARE(d->group(), group);
        QCOMPARE(d->isContainer(), container);
        QCOMPARE(d->icon().isNull(), container); // the panel never shows in the widget box
        QCOMPARE(d->includeFile(), name.toLower() + QStringLiteral(".h"));
        QVERIFY(d->domXml().contains(QStringLiteral("<widget class=\"%1\" name=\"%2\">").arg(name, objectName)));
        QVERIFY(d->domXml().contains(QStringLiteral("<width>%1</width>").arg(width)));
        // Designer gives the panel no task menu.
        std::unique_ptr<QWidget> widget(d->createWidget(nullptr));
        auto *menu = qt_extension<QDesignerTaskMenuExtension *>(DesignerCore::instance().core()->extensionManager(),
                                                                 widget.get());
        QCOMPARE(menu == nullptr, container);
    }

    void gridCellsLinesAndDrops()
    {
        QDesignerFormWindowInterface *form = DesignerCore::instance().createForm(gridForm());
        QVERIFY(form);
        auto *grid = DesignerCore::formWidget<GridSplitter>(form, QStringLiteral("gridSplitter"));
        QVERIFY(grid);
        QWidget host;
        form->setParent(&host);
        host.resize(500, 400);
        host.show();
        QVERIFY(QTest::qWaitForWindowExposed(&host));
        QCOMPARE(managedTags(form, grid), SixCells);
        drop(form, grid->cell(0, 2), QStringLiteral("topRight"));
        drop(form, grid->cell(1, 0), QStringLiteral("bottomLeft"));
        QCOMPARE(DesignerCore::formWidget(form, QStringLiteral("topRight"))->parentWidget(), grid->cell(0, 2));

        // Two drags of the first line between columns after an earlier edit: each its own undo step.
        AdvSplitter *line = grid->line(Qt::Horizontal, 0);
        QVERIFY(line->objectName().startsWith(QLatin1String("__qt__passive_")));
        form->cursor()->setWidgetProperty(form->mainContainer(), QStringLiteral("windowTitle"), QStringLiteral("Earlier"));
        dragBy(line, QPoint(60, 0));
        const QStringList first = grid->lineHPos();
        dragBy(line, QPoint(-20, 0));
        const QStringList positions = grid->lineHPos();
        QVERIFY(positions.at(0) != first.at(0) && first.at(0) != QLatin1String("0.333333"));
        form->commandHistory()->undo();
        QCOMPARE(grid->lineHPos(), first);
        form->commandHistory()->undo();
        QCOMPARE(grid->lineHPos().at(0), QStringLiteral("0.333333"));
        QCOMPARE(form->mainContainer()->windowTitle(), QStringLiteral("Earlier"));
        form->commandHistory()->setIndex(form->commandHistory()->count());
        QCOMPARE(grid->lineHPos(), positions);

        const QString saved = form->contents();
        QCOMPARE(savedCells(saved), SixCells);
        QVERIFY(saved.contains(QStringLiteral("<string>%1</string>").arg(positions.at(0))));
        QVERIFY(saved.indexOf(QLatin1String("name=\"topRight\"")) > saved.indexOf(QLatin1String("<string>cell0002<")));

        // Reopened in Designer: the same cells, lines and widgets.
        QDesignerFormWindowInterface *again = DesignerCore::instance().createForm(saved);
        auto *reopened = DesignerCore::formWidget<GridSplitter>(again, QStringLiteral("gridSplitter"));
        QVERIFY(reopened);
        QCOMPARE(managedTags(again, reopened), SixCells);
        QCOMPARE(reopened->lineHPos(), positions);
        QCOMPARE(DesignerCore::formWidget(again, QStringLiteral("topRight"))->parentWidget()->statusTip(),
                 QStringLiteral("cell0002"));
        QCOMPARE(reopened->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly).size(), 6 + 3);

        // Through the form loader and as uic code.
        std::unique_ptr<QWidget> root = loadForm(saved);
        QVERIFY(root);
        auto *loaded = root->findChild<GridSplitter *>(QStringLiteral("gridSplitter"));
        QVERIFY(loaded);
        QCOMPARE(loaded->lineHPos(), positions);
        QCOMPARE(loaded->cell(1, 0), root->findChild<QPushButton *>(QStringLiteral("bottomLeft"))->parentWidget());
        QCOMPARE(loaded->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly).size(), 6 + 3);
        const QString code = uicCode(saved);
        QVERIFY2(code.contains(QLatin1String("new GridSplitter(")), qPrintable(code));
        QCOMPARE(code.count(QRegularExpression(QStringLiteral("cell\\d{4} = new QWidget\\(gridSplitter\\)"))), 6);
        QVERIFY(code.contains(QStringLiteral("setLineHPos")));
        form->setParent(nullptr);
    }

    void fewerColumnsReleaseCells()
    {
        QDesignerFormWindowInterface *form = DesignerCore::instance().createForm(gridForm());
        auto *grid = DesignerCore::formWidget<GridSplitter>(form, QStringLiteral("gridSplitter"));
        QVERIFY(grid && grid->cell(1, 2));
        QWidget *last = grid->cell(1, 2);
        drop(form, last, QStringLiteral("onLast"));
        QWidget *button = DesignerCore::formWidget(form, QStringLiteral("onLast"));
        QVERIFY(button);
        form->cursor()->setWidgetProperty(grid, QStringLiteral("columnCount"), 2);
        QVERIFY(!form->isManaged(last));
        QVERIFY(!form->isManaged(button));
        QCOMPARE(savedCells(form->contents()), (QStringList{"cell0000", "cell0001", "cell0100", "cell0101"}));
        form->commandHistory()->undo();
        QVERIFY(form->isManaged(last));
        QVERIFY(form->isManaged(button));
        QCOMPARE(savedCells(form->contents()), SixCells);
        QVERIFY(form->contents().contains(QLatin1String("name=\"onLast\"")));
    }

    void gridEditor_data()
    {
        QTest::addColumn<bool>("accept");
        QTest::newRow("ok") << true;
        QTest::newRow("cancel") << false;
    }
    void gridEditor()
    {
        QFETCH(bool, accept);
        QDesignerFormWindowInterface *form = DesignerCore::instance().createForm(gridForm());
        auto *grid = DesignerCore::formWidget<GridSplitter>(form, QStringLiteral("gridSplitter"));
        QVERIFY(grid);
        const int before = form->commandHistory()->count();
        bool checked = false;
        QVERIFY(DesignerCore::runEditor(grid, [&](QDialog *dialog) {
            QCOMPARE(dialog->objectName(), QStringLiteral("GridSplitterEditor"));
            QCOMPARE(dialog->windowTitle(), QStringLiteral("Grid Splitter Editor"));
            QCOMPARE(dialog->size(), QSize(690, 420));
            QCOMPARE(dialog->findChild<QTabWidget *>(QStringLiteral("tabWidget"))->currentIndex(), 0);
            auto *preview = dialog->findChild<GridSplitter *>();
            QVERIFY(preview);
            auto *rows = dialog->findChild<QSpinBox *>(QStringLiteral("rowCountSpinBox"));
            QVERIFY(rows);
            QCOMPARE(rows->value(), 2);
            rows->setValue(4);
            QCOMPARE(preview->rowCount(), 4);
            checked = true;
            accept ? dialog->accept() : dialog->reject();
        }));
        QVERIFY(checked);
        QCOMPARE(grid->rowCount(), accept ? 4 : 2);
        QCOMPARE(form->commandHistory()->count(), before + (accept ? 1 : 0));
        QCOMPARE(savedCells(form->contents()).size(), accept ? 12 : 6);
    }

    // New and Delete act on the form at once, as undo steps (Cancel takes nothing back); OK makes the
    // chosen panel the active one. Two panels holding widgets are saved and come back everywhere.
    void panelsMadeDeletedSavedAndRestored()
    {
        QDesignerFormWindowInterface *form = DesignerCore::instance().createForm(areaForm());
        auto *area = DesignerCore::formWidget<MdiArea>(form, QStringLiteral("panelArea"));
        QVERIFY(area);
        QWidget host;
        form->setParent(&host);
        host.resize(500, 400);
        host.show();
        QVERIFY(QTest::qWaitForWindowExposed(&host));
        form->cursor()->setWidgetProperty(form->mainContainer(), QStringLiteral("windowTitle"), QStringLiteral("Earlier"));
        bool checked = false;
        QVERIFY(DesignerCore::runEditor(area, [&](QDialog *dialog) {
            QCOMPARE(dialog->objectName(), QStringLiteral("MdiAreaEditor"));
            QCOMPARE(dialog->windowTitle(), QStringLiteral("MdiArea Editor"));
            QCOMPARE(dialog->size(), QSize(300, 300));
            auto *newButton = dialog->findChild<QPushButton *>(QStringLiteral("newButton"));
            auto *deleteButton = dialog->findChild<QPushButton *>(QStringLiteral("deleteButton"));
            auto *list = dialog->findChild<QListWidget *>();
            QCOMPARE(newButton->text(), QStringLiteral("&New"));
            QCOMPARE(newButton->toolTip(), QStringLiteral("New SubWindow"));
            QCOMPARE(deleteButton->toolTip(), QStringLiteral("Delete Subwindow"));
            QVERIFY(!newButton->icon().isNull());
            for (int i = 0; i < 3; ++i)
                newButton->click();
            QCOMPARE(list->count(), 3);
            QCOMPARE(list->currentItem()->text(), QStringLiteral("subWindow_3"));
            QCOMPARE(managedTags(form, area), (QStringList{"subWindow_1", "subWindow_2", "subWindow_3"}));
            deleteButton->click();
            QCOMPARE(list->count(), 2);
            QCOMPARE(managedTags(form, area), (QStringList{"subWindow_1", "subWindow_2"}));
            list->setCurrentRow(0);
            checked = true;
            dialog->reject();
        }));
        QVERIFY(checked);
        QCOMPARE(area->getSubwindows(), (QStringList{"subWindow_1", "subWindow_2"})); // Cancel kept them
        // Each New and Delete is an undo step of its own, after the earlier edit of the form.
        QUndoStack *history = form->commandHistory();
        QCOMPARE(history->count(), 5);
        history->undo();
        QCOMPARE(managedTags(form, area), (QStringList{"subWindow_1", "subWindow_2", "subWindow_3"}));
        QCOMPARE(area->getSubwindows(), (QStringList{"subWindow_1", "subWindow_2", "subWindow_3"}));
        for (int i = 0; i < 3; ++i)
            history->undo();
        QVERIFY(managedTags(form, area).isEmpty());
        QCOMPARE(form->mainContainer()->windowTitle(), QStringLiteral("Earlier"));
        while (history->canRedo())
            history->redo();
        QCOMPARE(managedTags(form, area), (QStringList{"subWindow_1", "subWindow_2"}));
        QVERIFY(DesignerCore::runEditor(area, [&](QDialog *dialog) {
            auto *list = dialog->findChild<QListWidget *>();
            QVERIFY(!list->currentItem()); // the active panel was the deleted one
            list->setCurrentRow(0);
            dialog->accept();
        }));
        QCOMPARE(area->activeSubWindow(), QStringLiteral("subWindow_1"));

        SubWindow *first = area->subWindow(QStringLiteral("subWindow_1"));
        SubWindow *second = area->subWindow(QStringLiteral("subWindow_2"));
        drop(form, first, QStringLiteral("onFirst"));
        drop(form, second, QStringLiteral("onSecond"));
        QCOMPARE(DesignerCore::formWidget(form, QStringLiteral("onSecond"))->parentWidget(), second);

        // The active panel follows the selection.
        form->clearSelection();
        form->selectWidget(second, true);
        QTRY_COMPARE(area->activePanel(), second);
        QVERIFY(second->handle(MoveHandler::Top)->isVisible());

        // A strip drag moves its panel as one undo step, after the drop.
        dragBy(second->handle(MoveHandler::Top), QPoint(15, 25));
        const QRect moved = second->geometry();
        form->commandHistory()->undo();
        QCOMPARE(second->geometry(), moved.translated(-15, -25));
        QVERIFY(DesignerCore::formWidget(form, QStringLiteral("onSecond")));
        form->commandHistory()->redo();

        const QString saved = form->contents();
        QCOMPARE(savedPanels(saved), (QStringList{"subWindow_1", "subWindow_2"}));
        QVERIFY(saved.contains(QStringLiteral("<x>%1</x>").arg(moved.x())));
        QVERIFY(saved.contains(QLatin1String("<string>subWindow_2</string>")));

        // Reopened in Designer.
        QDesignerFormWindowInterface *again = DesignerCore::instance().createForm(saved);
        auto *reopened = DesignerCore::formWidget<MdiArea>(again, QStringLiteral("panelArea"));
        QVERIFY(reopened);
        QCOMPARE(reopened->getSubwindows(), (QStringList{"subWindow_1", "subWindow_2"}));
        QCOMPARE(managedTags(again, reopened), (QStringList{"subWindow_1", "subWindow_2"}));
        QCOMPARE(reopened->activeSubWindow(), QStringLiteral("subWindow_2"));
        QCOMPARE(DesignerCore::formWidget(again, QStringLiteral("onFirst"))->parentWidget()->objectName(),
                 QStringLiteral("subWindow_1"));
        QCOMPARE(reopened->subWindow(QStringLiteral("subWindow_2"))->geometry(), moved);

        // Through the form loader and as uic code.
        std::unique_ptr<QWidget> root = loadForm(saved);
        QVERIFY(root);
        auto *loaded = root->findChild<MdiArea *>(QStringLiteral("panelArea"));
        QVERIFY(loaded);
        QCOMPARE(loaded->getSubwindows(), (QStringList{"subWindow_1", "subWindow_2"}));
        QCOMPARE(loaded->activeSubWindow(), QStringLiteral("subWindow_2"));
        QCOMPARE(root->findChild<QPushButton *>(QStringLiteral("onSecond"))->parentWidget()->objectName(),
                 QStringLiteral("subWindow_2"));
        const QString code = uicCode(saved);
        QCOMPARE(code.count(QLatin1String("= new SubWindow(panelArea)")), 2);
        QVERIFY(code.contains(QLatin1String("new QPushButton(subWindow_1)")));
        form->setParent(nullptr);
    }
};

QTEST_MAIN(TestContainersDesigner)
#include "tst_containersdesigner.moc"
