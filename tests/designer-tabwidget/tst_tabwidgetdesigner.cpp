// The tab widget in Designer on the real core with the built plugin: its descriptor, pages the form
// manages and saves with what is dropped on them, a tab move as one undo step, fewer tabs releasing
// their pages, the TabWidget Editor's commits (and Cancel committing nothing), and the saved form
// reopened in Designer, through QUiLoader and as uic code.
#include "designercore.h"
#include "formloader.h"
#include "norvointerface_z3.h"
#include "tabwidget.h"

#include <QtUiPlugin/QDesignerCustomWidgetCollectionInterface>
#include <QtDesigner/QDesignerFormEditorInterface>
#include <QtDesigner/QDesignerFormWindowCursorInterface>
#include <QtDesigner/QDesignerFormWindowInterface>
#include <QtDesigner/QDesignerFormWindowManagerInterface>
#include <QtDesigner/QDesignerTaskMenuExtension>
#include <QtDesigner/QExtensionManager>

#include <QAction>
#include <QApplication>
#include <QBuffer>
#include <QClipboard>
#include <QDialog>
#include <QLineEdit>
#include <QMimeData>
#include <QProcess>
#include <QPushButton>
#include <QRegularExpression>
#include <QSpinBox>
#include <QTabBar>
#include <QSet>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QUndoStack>

namespace {

// n copies of text (Qt 5's QStringList has no such constructor).
QStringList repeated(int n, const QString &text)
{
    QStringList list;
    for (int i = 0; i < n; ++i)
        list << text;
    return list;
}

QString tabForm(const QString &after = QString())
{
    return DesignerCore::formDocument(QStringLiteral(
        "<widget class=\"TabWidget\" name=\"tabWidget\"><property name=\"geometry\"><rect><x>0</x><y>0</y>"
        "<width>300</width><height>200</height></rect></property>"
        "<property name=\"tabsCount\"><number>3</number></property></widget>%1").arg(after));
}

QStringList pageTags(TabWidget *tabs)
{
    QStringList tags;
    for (int i = 0; i < tabs->stackedWidget()->count(); ++i)
        tags << tabs->stackedWidget()->widget(i)->statusTip();
    return tags;
}

// What is inside the saved tab widget: each page's tag and the names of what lies on it.
QStringList savedPages(const QString &contents)
{
    QStringList out;
    static const QRegularExpression tag(QStringLiteral("name=\"statusTip\">\\s*<string>(tab_\\d+)</string>"));
    for (auto it = tag.globalMatch(contents); it.hasNext();)
        out << it.next().captured(1);
    out.sort(); // Designer writes the pages in their stacking order; their tags give the tab order
    return out;
}

QDesignerCustomWidgetInterface *descriptor()
{
    for (QObject *instance : DesignerCore::instance().core()->pluginInstances()) {
        if (auto *collection = qobject_cast<QDesignerCustomWidgetCollectionInterface *>(instance)) {
            for (QDesignerCustomWidgetInterface *w : collection->customWidgets()) {
                if (w->name() == QLatin1String("TabWidget"))
                    return w;
            }
        }
    }
    return nullptr;
}

} // namespace

class TestTabWidgetDesigner : public QObject
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

    void descriptorOffersTheWidget()
    {
        QDesignerCustomWidgetInterface *d = descriptor();
        QVERIFY(d);
        QCOMPARE(d->group(), QStringLiteral("Containers"));
        QCOMPARE(d->includeFile(), QStringLiteral("tabwidget.h"));
        QVERIFY(!d->isContainer());
        QVERIFY(!d->icon().isNull());
        QVERIFY(d->domXml().contains(QLatin1String("<widget class=\"TabWidget\" name=\"tabWidget\">")));
        QVERIFY(d->domXml().contains(QLatin1String("<width>150</width>")));
    }

    // Designer loads a form with updates off; the tab widget must not keep them off.
    void tabsShowInAShownForm()
    {
        QDesignerFormWindowInterface *form = DesignerCore::instance().createForm(tabForm());
        auto *tabs = DesignerCore::formWidget<TabWidget>(form, QStringLiteral("tabWidget"));
        QWidget host;
        form->setParent(&host);
        host.resize(500, 400);
        host.show();
        QVERIFY(QTest::qWaitForWindowExposed(&host));
        QVERIFY(tabs->updatesEnabled());
        const QImage shown = tabs->grab().toImage();
        const QRect bar = tabs->tabBar()->geometry().intersected(tabs->rect());
        QSet<QRgb> colours;
        for (int x = bar.left(); x <= bar.right(); x += 2)
            colours.insert(shown.pixel(x, bar.center().y()));
        QVERIFY(colours.size() > 3); // tab edges and text, not an empty strip
        form->setParent(nullptr);
    }

    void pagesAreManagedSavedAndRestored()
    {
        QDesignerFormWindowInterface *form = DesignerCore::instance().createForm(tabForm());
        QVERIFY(form);
        auto *tabs = DesignerCore::formWidget<TabWidget>(form, QStringLiteral("tabWidget"));
        QVERIFY(tabs);
        QCOMPARE(pageTags(tabs), (QStringList{"tab_1", "tab_2", "tab_3"}));
        for (int i = 0; i < 3; ++i)
            QVERIFY(form->isManaged(tabs->stackedWidget()->widget(i)));

        // A button dropped on page 2 (pasted onto it, as a drop does).
        auto *mime = new QMimeData;
        mime->setText(QStringLiteral("<ui><widget class=\"QWidget\" name=\"__qt_fake_top_level\">"
                                     "<widget class=\"QPushButton\" name=\"dropped\"><property name=\"geometry\">"
                                     "<rect><x>10</x><y>10</y><width>80</width><height>30</height></rect></property>"
                                     "</widget></widget></ui>"));
        QApplication::clipboard()->setMimeData(mime);
        form->clearSelection();
        form->selectWidget(tabs->findTab(QStringLiteral("tab_2")), true);
        QVERIFY(QMetaObject::invokeMethod(form, "paste"));
        auto *dropped = DesignerCore::formWidget<QPushButton>(form, QStringLiteral("dropped"));
        QVERIFY(dropped);
        QCOMPARE(dropped->parentWidget()->statusTip(), QStringLiteral("tab_2"));

        const QString saved = form->contents();
        QCOMPARE(savedPages(saved), (QStringList{"tab_1", "tab_2", "tab_3"}));
        QVERIFY(saved.indexOf(QLatin1String("name=\"dropped\"")) > saved.indexOf(QLatin1String("<string>tab_2<")));

        // Reopened in Designer: the same pages, the button still on the second.
        QDesignerFormWindowInterface *again = DesignerCore::instance().createForm(saved);
        auto *reopened = DesignerCore::formWidget<TabWidget>(again, QStringLiteral("tabWidget"));
        QVERIFY(reopened);
        QCOMPARE(pageTags(reopened), (QStringList{"tab_1", "tab_2", "tab_3"}));
        auto *button = DesignerCore::formWidget<QPushButton>(again, QStringLiteral("dropped"));
        QVERIFY(button);
        QCOMPARE(button->parentWidget()->statusTip(), QStringLiteral("tab_2"));
        QCOMPARE(reopened->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly).size(),
                 tabs->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly).size());

        // Through the form loader and as uic code.
        FormLoader loader;
        QBuffer buffer;
        buffer.setData(saved.toUtf8());
        buffer.open(QIODevice::ReadOnly);
        std::unique_ptr<QWidget> root(loader.load(&buffer));
        QVERIFY(root);
        auto *loaded = root->findChild<TabWidget *>(QStringLiteral("tabWidget"));
        QVERIFY(loaded);
        root->show();
        QCOMPARE(pageTags(loaded), (QStringList{"tab_1", "tab_2", "tab_3"}));
        QCOMPARE(root->findChild<QPushButton *>(QStringLiteral("dropped"))->parentWidget()->statusTip(),
                 QStringLiteral("tab_2"));
        QTemporaryDir dir;
        QFile file(dir.filePath(QStringLiteral("form.ui")));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(saved.toUtf8());
        file.close();
        QProcess uic;
        uic.start(QStringLiteral(HMI_UIC), {file.fileName()});
        QVERIFY(uic.waitForFinished());
        const QString code = QString::fromUtf8(uic.readAllStandardOutput());
        QVERIFY2(code.contains(QLatin1String("new QWidget(tabWidget)")), qPrintable(code));
        QVERIFY(code.contains(QLatin1String("new QPushButton(")));
    }

    void tabMoveIsOneUndoStep()
    {
        // A second tab widget on the form has pages of the same tags.
        QDesignerFormWindowInterface *form = DesignerCore::instance().createForm(
            tabForm(QStringLiteral("<widget class=\"TabWidget\" name=\"otherTabs\"/>")));
        QVERIFY(DesignerCore::formWidget<TabWidget>(form, QStringLiteral("otherTabs")));
        auto *tabs = DesignerCore::formWidget<TabWidget>(form, QStringLiteral("tabWidget"));
        QVERIFY(tabs);
        QWidget *third = tabs->findTab(QStringLiteral("tab_3"));
        auto *mark = new QWidget(third);
        mark->setObjectName(QStringLiteral("mark"));
        tabs->setOperationalAuthoritys({"0", "2", "3"});
        const int before = form->commandHistory()->count();
        tabs->tabBar()->moveTab(2, 0); // as a drag ending there
        QCOMPARE(form->commandHistory()->count(), before + 1);
        QCOMPARE(mark->parentWidget()->statusTip(), QStringLiteral("tab_1"));
        QCOMPARE(tabs->tabTexts(), (QStringList{"tab_3", "tab_1", "tab_2"}));
        QCOMPARE(tabs->operationalAuthoritys(), (QStringList{"3", "0", "2"}));
        QCOMPARE(pageTags(tabs), (QStringList{"tab_1", "tab_2", "tab_3"}));
        QVERIFY(form->contents().contains(QLatin1String("<string>tab_3</string>")));
        QSet<QString> names;
        for (QWidget *w : form->mainContainer()->findChildren<QWidget *>()) {
            if (form->isManaged(w))
                QVERIFY2(!names.contains(w->objectName()) && (names.insert(w->objectName()), true), qPrintable(w->objectName()));
        }

        form->commandHistory()->undo();
        QCOMPARE(mark->parentWidget()->statusTip(), QStringLiteral("tab_3"));
        QCOMPARE(tabs->stackedWidget()->widget(2), third);
        QCOMPARE(tabs->tabTexts(), (QStringList{"tab_1", "tab_2", "tab_3"}));
        QCOMPARE(tabs->operationalAuthoritys(), (QStringList{"0", "2", "3"}));
        QCOMPARE(tabs->tabBar()->tabText(2), QStringLiteral("tab_3"));
        form->commandHistory()->redo();
        QCOMPARE(tabs->stackedWidget()->widget(0), third);
        QCOMPARE(tabs->tabBar()->tabText(0), QStringLiteral("tab_3"));
    }

    void fewerTabsReleaseTheirPages()
    {
        QDesignerFormWindowInterface *form = DesignerCore::instance().createForm(tabForm());
        auto *tabs = DesignerCore::formWidget<TabWidget>(form, QStringLiteral("tabWidget"));
        QWidget *third = tabs->findTab(QStringLiteral("tab_3"));
        auto *label = new QWidget(third);
        form->manageWidget(label);
        form->cursor()->setWidgetProperty(tabs, QStringLiteral("tabsCount"), 2);
        QVERIFY(!form->isManaged(third));
        QVERIFY(!form->isManaged(label));
        QCOMPARE(savedPages(form->contents()), (QStringList{"tab_1", "tab_2"}));
        form->commandHistory()->undo();
        QVERIFY(form->isManaged(third));
        QVERIFY(form->isManaged(label));
        QCOMPARE(savedPages(form->contents()), (QStringList{"tab_1", "tab_2", "tab_3"}));
        QCOMPARE(tabs->tabBar()->count(), 3);
    }

    void editorCommitsAndCancel_data()
    {
        QTest::addColumn<bool>("accept");
        QTest::newRow("ok") << true;
        QTest::newRow("cancel") << false;
    }
    void editorCommitsAndCancel()
    {
        QFETCH(bool, accept);
        QDesignerFormWindowInterface *form = DesignerCore::instance().createForm(tabForm());
        auto *tabs = DesignerCore::formWidget<TabWidget>(form, QStringLiteral("tabWidget"));
        QVERIFY(tabs);
        const int before = form->commandHistory()->count();
        const QStringList textsBefore = tabs->tabTexts();
        bool checked = false;
        const bool opened = DesignerCore::runEditor(tabs, [&](QDialog *dialog) {
            QCOMPARE(dialog->objectName(), QStringLiteral("TabWidgetEditor"));
            QCOMPARE(dialog->windowTitle(), QStringLiteral("TabWidget Editor"));
            QCOMPARE(dialog->size(), QSize(568, 539));
            QCOMPARE(dialog->findChild<QTabWidget *>(QStringLiteral("tabWidget"))->currentIndex(), 1);
            auto *preview = dialog->findChild<TabWidget *>();
            QVERIFY(preview);
            dialog->findChild<QSpinBox *>(QStringLiteral("tabCountSpinBox"))->setValue(4);
            // A click on the preview's third tab makes it the one edited.
            preview->tabBar()->setCurrentIndex(2);
            QCOMPARE(dialog->findChild<QSpinBox *>(QStringLiteral("currentIndexSpinBox"))->value(), 2);
            auto *text = dialog->findChild<QLineEdit *>(QStringLiteral("currentTextInput"));
            QCOMPARE(text->text(), QStringLiteral("tab_3"));
            text->setText(QStringLiteral("Tools"));
            emit text->textEdited(QStringLiteral("Tools"));
            QCOMPARE(preview->tabBar()->tabText(2), QStringLiteral("Tools"));
            dialog->findChild<QSpinBox *>(QStringLiteral("currentOperationalAuthority"))->setValue(5);
            checked = true;
            if (accept)
                dialog->accept();
            else
                dialog->reject();
        });
        QVERIFY(opened);
        QVERIFY(checked);
        if (!accept) {
            QCOMPARE(form->commandHistory()->count(), before);
            QCOMPARE(tabs->tabsCount(), 3);
            QCOMPARE(tabs->tabTexts(), textsBefore);
            return;
        }
        QCOMPARE(form->commandHistory()->count(), before + 1);
        QCOMPARE(tabs->tabsCount(), 4);
        QCOMPARE(tabs->tabBar()->count(), 4);
        QCOMPARE(tabs->tabBar()->tabText(2), QStringLiteral("Tools"));
        QCOMPARE(tabs->tabBar()->tabText(3), QStringLiteral("tab_4"));
        QCOMPARE(tabs->tabTextColors(), repeated(4, QStringLiteral("#000000")));
        QCOMPARE(tabs->operationalAuthoritys(), (QStringList{"0", "0", "5", "0"}));
        QCOMPARE(tabs->currentIndex(), 2);
        QCOMPARE(savedPages(form->contents()), (QStringList{"tab_1", "tab_2", "tab_3", "tab_4"}));
        form->commandHistory()->undo();
        QCOMPARE(tabs->tabsCount(), 3);
        QCOMPARE(tabs->operationalAuthoritys(), (QStringList{"0", "0", "0"}));
    }
};

QTEST_MAIN(TestTabWidgetDesigner)
#include "tst_tabwidgetdesigner.moc"
