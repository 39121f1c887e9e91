// The containers in Designer: the children they make (cells, pages, panels, soft keys) managed and
// saved with what is dropped on them, reopened in Designer, by the panel's loader and as uic code;
// line drags, strip drags, tab moves, New and Delete and count changes as undo steps; fewer children
// releasing theirs as an undo step.
#include "advsplitter.h"
#include "buttongroup.h"
#include "designercore.h"
#include "designerhost.h"
#include "functionbutton.h"
#include "gridsplitter.h"
#include "mdiarea.h"
#include "movehandler.h"
#include "norvointerface_z3.h"
#include "subwindow.h"
#include "tabwidget.h"

#include <QtDesigner/QDesignerFormEditorInterface>
#include <QtDesigner/QDesignerFormWindowCursorInterface>
#include <QtDesigner/QDesignerFormWindowInterface>
#include <QtDesigner/QDesignerPropertyEditorInterface>

#include <QApplication>
#include <QDialog>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRegularExpression>
#include <QResizeEvent>
#include <QSet>
#include <QSpinBox>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <QUndoStack>

namespace {

QString element(const char *widgetClass, const char *name, const QString &properties = QString())
{
    return QStringLiteral("<widget class=\"%1\" name=\"%2\"><property name=\"geometry\"><rect><x>0</x><y>0</y>"
                          "<width>302</width><height>202</height></rect></property>%3</widget>")
        .arg(QLatin1String(widgetClass), QLatin1String(name), properties);
}

QString count(const char *name, int n)
{
    return QStringLiteral("<property name=\"%1\"><number>%2</number></property>").arg(QLatin1String(name)).arg(n);
}

const QString Grid = element("GridSplitter", "gridSplitter", count("rowCount", 2) + count("columnCount", 3));
const QString Tabs = element("TabWidget", "tabWidget", count("tabsCount", 3));
const QString Bar = element("ButtonGroup", "buttonGroup");
const QStringList SixCells{"cell0000", "cell0001", "cell0002", "cell0100", "cell0101", "cell0102"};
const QStringList ThreeTabs{"tab_1", "tab_2", "tab_3"};

QString button(const QString &name)
{
    return QStringLiteral("<widget class=\"QPushButton\" name=\"%1\"><property name=\"geometry\"><rect><x>5</x>"
                          "<y>5</y><width>40</width><height>20</height></rect></property></widget>").arg(name);
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

// Tags (or names) of the managed children of widget, sorted; children are known by their tags.
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

// What a pattern finds in a saved form (its first group, or the whole match), sorted.
QStringList found(const QString &contents, const QString &pattern)
{
    QStringList out;
    const QRegularExpression re(pattern, QRegularExpression::DotMatchesEverythingOption);
    for (auto it = re.globalMatch(contents); it.hasNext();) {
        const QRegularExpressionMatch m = it.next();
        out << m.captured(re.captureCount() > 0 ? 1 : 0);
    }
    out.sort();
    return out;
}

// The tags of the children saved (Designer writes pages in their stacking order).
QStringList savedTags(const QString &contents)
{
    return found(contents, QStringLiteral("name=\"statusTip\">\\s*<string>(cell\\d{4}|tab_\\d+)</string>"));
}

QWidget *child(QWidget *container, const QString &tag)
{
    for (QWidget *w : container->findChildren<QWidget *>()) {
        if (w->statusTip() == tag)
            return w;
    }
    return nullptr;
}

// What a shown form window does first: the bar builds on its first resize.
void resizeOnce(QWidget *bar)
{
    QResizeEvent event(bar->size(), QSize());
    QApplication::sendEvent(bar, &event);
}

// Each saved soft key: name, caption, shortcut, group and id.
const QString SavedKey = QStringLiteral("<widget class=\"FunctionButton\" name=\"\\w+\">.*?<string>.*?</string>.*?<string>.*?"
                                        "</string>.*?<number>\\d+</number>.*?<number>\\d+</number>");

QStringList captions(const QList<FunctionButton *> &keys, bool withShortcuts)
{
    QStringList out;
    for (FunctionButton *b : keys)
        out << (withShortcuts ? b->text() + QLatin1Char('/') + b->shortcut().toString() : b->text());
    return out;
}

} // namespace

class TestContainersDesigner : public QObject
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

    // A button dropped on a cell or a page is saved nested under it and comes back there everywhere.
    void dropsSurviveSaveAndReload_data()
    {
        QTest::addColumn<QString>("form");
        QTest::addColumn<QString>("target");
        QTest::addColumn<QStringList>("tags");
        QTest::addColumn<QString>("uic");
        QTest::newRow("grid cell") << Grid << "cell0002" << SixCells << "cell\\d{4} = new QWidget\\(gridSplitter\\)";
        // A second tab widget has pages of the same tags, under other object names.
        QTest::newRow("tab page") << Tabs + element("TabWidget", "otherTabs") << "tab_2" << ThreeTabs
                                  << "tab_\\d+ = new QWidget\\(tabWidget\\)";
    }
    void dropsSurviveSaveAndReload()
    {
        QFETCH(QString, form);
        QFETCH(QString, target);
        QFETCH(QStringList, tags);
        QDesignerFormWindowInterface *designed = DesignerCore::instance().createForm(DesignerCore::formDocument(form), true);
        QWidget *container = DesignerCore::formWidget(designed, tags.first().startsWith("cell") ? "gridSplitter" : "tabWidget");
        QCOMPARE(managedTags(designed, container), tags);
        DesignerCore::paste(designed, child(container, target), button(QStringLiteral("dropped")));
        QCOMPARE(DesignerCore::formWidget(designed, QStringLiteral("dropped"))->parentWidget()->statusTip(), target);
        QSet<QString> names; // tags repeat across widgets; object names never
        for (QWidget *w : designed->mainContainer()->findChildren<QWidget *>()) {
            if (designed->isManaged(w))
                QVERIFY2(!names.contains(w->objectName()) && (names.insert(w->objectName()), true), qPrintable(w->objectName()));
        }
        const QString saved = designed->contents();
        QCOMPARE(savedTags(saved.left(saved.indexOf(QLatin1String("otherTabs")))), tags);
        QVERIFY(saved.indexOf(QLatin1String("name=\"dropped\"")) > saved.indexOf(QStringLiteral("<string>%1<").arg(target)));

        QDesignerFormWindowInterface *again = DesignerCore::instance().createForm(saved);
        QWidget *reopened = DesignerCore::formWidget(again, container->objectName());
        QCOMPARE(managedTags(again, reopened), tags);
        QCOMPARE(DesignerCore::formWidget(again, QStringLiteral("dropped"))->parentWidget()->statusTip(), target);
        QCOMPARE(reopened->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly).size(),
                 container->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly).size());

        std::unique_ptr<QWidget> root = DesignerCore::loadAtRunTime(saved);
        QVERIFY(root);
        QWidget *loaded = root->findChild<QWidget *>(container->objectName());
        QCOMPARE(root->findChild<QPushButton *>(QStringLiteral("dropped"))->parentWidget(), child(loaded, target));
        QCOMPARE(loaded->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly).size(),
                 container->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly).size());
        const QString code = DesignerCore::uicCode(saved);
        QFETCH(QString, uic);
        QCOMPARE(code.count(QRegularExpression(uic)), tags.size());
        QVERIFY2(code.contains(QLatin1String("dropped = new QPushButton(")), qPrintable(code));
    }

    // Shrinking through the property releases the last child and what lies on it; undo brings them back.
    void fewerChildrenReleaseTheirs_data()
    {
        QTest::addColumn<QString>("form");
        QTest::addColumn<QString>("property");
        QTest::addColumn<QStringList>("tags");
        QTest::newRow("grid columns") << Grid << "columnCount" << SixCells;
        QTest::newRow("tabs") << Tabs << "tabsCount" << ThreeTabs;
    }
    void fewerChildrenReleaseTheirs()
    {
        QFETCH(QString, form);
        QFETCH(QString, property);
        QFETCH(QStringList, tags);
        QDesignerFormWindowInterface *designed = DesignerCore::instance().createForm(DesignerCore::formDocument(form));
        QWidget *container = designed->mainContainer()->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly).first();
        QWidget *last = child(container, tags.last());
        DesignerCore::paste(designed, last, button(QStringLiteral("onLast")));
        QWidget *dropped = DesignerCore::formWidget(designed, QStringLiteral("onLast"));
        designed->cursor()->setWidgetProperty(container, property, container->property(qPrintable(property)).toInt() - 1);
        QVERIFY(!designed->isManaged(last));
        QVERIFY(!designed->isManaged(dropped));
        QVERIFY(!savedTags(designed->contents()).contains(tags.last()));
        designed->commandHistory()->undo();
        QVERIFY(designed->isManaged(last));
        QVERIFY(designed->isManaged(dropped));
        QCOMPARE(savedTags(designed->contents()), tags);
        QVERIFY(designed->contents().contains(QLatin1String("name=\"onLast\"")));
    }

    // Two drags of the first line between columns after an earlier edit: each its own undo step.
    void gridLineDrags()
    {
        QDesignerFormWindowInterface *form = DesignerCore::instance().createForm(DesignerCore::formDocument(Grid), true);
        auto *grid = DesignerCore::formWidget<GridSplitter>(form, QStringLiteral("gridSplitter"));
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
        QVERIFY(saved.contains(QStringLiteral("<string>%1</string>").arg(positions.at(0))));
        auto *reopened = DesignerCore::formWidget<GridSplitter>(DesignerCore::instance().createForm(saved), "gridSplitter");
        QCOMPARE(reopened->lineHPos(), positions);
        std::unique_ptr<QWidget> root = DesignerCore::loadAtRunTime(saved);
        QCOMPARE(root->findChild<GridSplitter *>(QStringLiteral("gridSplitter"))->lineHPos(), positions);
        QVERIFY(DesignerCore::uicCode(saved).contains(QStringLiteral("setLineHPos")));
    }

    // New and Delete act on the form at once, as undo steps (Cancel takes nothing back); OK makes the
    // chosen panel the active one. Two panels holding widgets are saved and come back everywhere.
    void panels()
    {
        QDesignerFormWindowInterface *form = DesignerCore::instance().createForm(
            DesignerCore::formDocument(element("MdiArea", "panelArea")), true);
        auto *area = DesignerCore::formWidget<MdiArea>(form, QStringLiteral("panelArea"));
        form->cursor()->setWidgetProperty(form->mainContainer(), QStringLiteral("windowTitle"), QStringLiteral("Earlier"));
        const QStringList two{"subWindow_1", "subWindow_2"}, three{"subWindow_1", "subWindow_2", "subWindow_3"};
        bool checked = false;
        QVERIFY(DesignerCore::runEditor(area, [&](QDialog *dialog) {
            auto *newButton = dialog->findChild<QPushButton *>(QStringLiteral("newButton"));
            auto *list = dialog->findChild<QListWidget *>();
            for (int i = 0; i < 3; ++i)
                newButton->click();
            QCOMPARE(list->currentItem()->text(), QStringLiteral("subWindow_3"));
            QCOMPARE(managedTags(form, area), three);
            dialog->findChild<QPushButton *>(QStringLiteral("deleteButton"))->click();
            QCOMPARE(list->count(), 2);
            QCOMPARE(managedTags(form, area), two);
            list->setCurrentRow(0);
            checked = true;
            dialog->reject();
        }));
        QVERIFY(checked);
        QCOMPARE(area->getSubwindows(), two); // Cancel kept them
        QUndoStack *history = form->commandHistory();
        QCOMPARE(history->count(), 5);
        history->undo();
        QCOMPARE(area->getSubwindows(), three);
        for (int i = 0; i < 3; ++i)
            history->undo();
        QVERIFY(managedTags(form, area).isEmpty());
        QCOMPARE(form->mainContainer()->windowTitle(), QStringLiteral("Earlier"));
        while (history->canRedo())
            history->redo();
        QCOMPARE(managedTags(form, area), two);
        QVERIFY(DesignerCore::runEditor(area, [&](QDialog *dialog) {
            auto *list = dialog->findChild<QListWidget *>();
            QVERIFY(!list->currentItem()); // the active panel was the deleted one
            list->setCurrentRow(0);
            dialog->accept();
        }));
        QCOMPARE(area->activeSubWindow(), QStringLiteral("subWindow_1"));

        SubWindow *second = area->subWindow(QStringLiteral("subWindow_2"));
        DesignerCore::paste(form, area->subWindow(QStringLiteral("subWindow_1")), button(QStringLiteral("onFirst")));
        DesignerCore::paste(form, second, button(QStringLiteral("onSecond")));
        QCOMPARE(DesignerCore::formWidget(form, QStringLiteral("onSecond"))->parentWidget(), second);
        // The active panel follows the selection; its strip drag moves it as one undo step.
        form->clearSelection();
        form->selectWidget(second, true);
        QTRY_COMPARE(area->activePanel(), second);
        QVERIFY(second->handle(MoveHandler::Top)->isVisible());
        dragBy(second->handle(MoveHandler::Top), QPoint(15, 25));
        const QRect moved = second->geometry();
        history->undo();
        QCOMPARE(second->geometry(), moved.translated(-15, -25));
        history->redo();

        const QString saved = form->contents();
        QCOMPARE(found(saved, QStringLiteral("<widget class=\"SubWindow\" name=\"([^\"]+)\"")), two);
        QVERIFY(saved.contains(QStringLiteral("<x>%1</x>").arg(moved.x())));
        QDesignerFormWindowInterface *again = DesignerCore::instance().createForm(saved);
        auto *reopened = DesignerCore::formWidget<MdiArea>(again, QStringLiteral("panelArea"));
        QCOMPARE(reopened->getSubwindows(), two);
        QCOMPARE(managedTags(again, reopened), two);
        QCOMPARE(reopened->activeSubWindow(), QStringLiteral("subWindow_2"));
        QCOMPARE(reopened->subWindow(QStringLiteral("subWindow_2"))->geometry(), moved);
        std::unique_ptr<QWidget> root = DesignerCore::loadAtRunTime(saved);
        auto *loaded = root->findChild<MdiArea *>(QStringLiteral("panelArea"));
        QCOMPARE(loaded->getSubwindows(), two);
        QCOMPARE(loaded->activeSubWindow(), QStringLiteral("subWindow_2"));
        QCOMPARE(root->findChild<QPushButton *>(QStringLiteral("onSecond"))->parentWidget(), loaded->subWindow("subWindow_2"));
        const QString code = DesignerCore::uicCode(saved);
        QCOMPARE(code.count(QLatin1String("= new SubWindow(panelArea)")), 2);
        QVERIFY(code.contains(QLatin1String("new QPushButton(subWindow_1)")));
    }

    // Designer loads a form with updates off; the tab widget must not keep them off.
    void tabsShowInAShownForm()
    {
        auto *tabs = DesignerCore::formWidget<TabWidget>(
            DesignerCore::instance().createForm(DesignerCore::formDocument(Tabs), true), QStringLiteral("tabWidget"));
        QVERIFY(tabs->updatesEnabled());
        const QImage shown = tabs->grab().toImage();
        const QRect bar = tabs->tabBar()->geometry().intersected(tabs->rect());
        QSet<QRgb> colours;
        for (int x = bar.left(); x <= bar.right(); x += 2)
            colours.insert(shown.pixel(x, bar.center().y()));
        QVERIFY(colours.size() > 3); // tab edges and text, not an empty strip
    }

    void tabMoveIsOneUndoStep()
    {
        QDesignerFormWindowInterface *form = DesignerCore::instance().createForm(DesignerCore::formDocument(Tabs));
        auto *tabs = DesignerCore::formWidget<TabWidget>(form, QStringLiteral("tabWidget"));
        QWidget *third = tabs->findTab(QStringLiteral("tab_3"));
        auto *mark = new QWidget(third);
        tabs->setOperationalAuthoritys({"0", "2", "3"});
        tabs->tabBar()->moveTab(2, 0); // as a drag ending there
        QCOMPARE(form->commandHistory()->count(), 1);
        QCOMPARE(mark->parentWidget()->statusTip(), QStringLiteral("tab_1"));
        QCOMPARE(tabs->tabTexts(), (QStringList{"tab_3", "tab_1", "tab_2"}));
        QCOMPARE(tabs->operationalAuthoritys(), (QStringList{"3", "0", "2"}));
        QCOMPARE(savedTags(form->contents()), ThreeTabs);
        form->commandHistory()->undo();
        QCOMPARE(mark->parentWidget()->statusTip(), QStringLiteral("tab_3"));
        QCOMPARE(tabs->stackedWidget()->widget(2), third);
        QCOMPARE(tabs->tabTexts(), ThreeTabs);
        QCOMPARE(tabs->operationalAuthoritys(), (QStringList{"0", "2", "3"}));
        QCOMPARE(tabs->tabBar()->tabText(2), QStringLiteral("tab_3"));
        form->commandHistory()->redo();
        QCOMPARE(tabs->stackedWidget()->widget(0), third);
        QCOMPARE(tabs->tabBar()->tabText(0), QStringLiteral("tab_3"));
    }

    // The tab editor's own fields: the tab clicked in the preview is the one edited; Ok commits all.
    void tabEditor_data()
    {
        QTest::addColumn<bool>("accept");
        QTest::newRow("ok") << true;
        QTest::newRow("cancel") << false; // the companion commits on Ok only
    }
    void tabEditor()
    {
        QFETCH(bool, accept);
        QDesignerFormWindowInterface *form = DesignerCore::instance().createForm(DesignerCore::formDocument(Tabs));
        auto *tabs = DesignerCore::formWidget<TabWidget>(form, QStringLiteral("tabWidget"));
        bool checked = false;
        QVERIFY(DesignerCore::runEditor(tabs, [&](QDialog *dialog) {
            auto *preview = dialog->findChild<TabWidget *>();
            dialog->findChild<QSpinBox *>(QStringLiteral("tabCountSpinBox"))->setValue(4);
            preview->tabBar()->setCurrentIndex(2);
            QCOMPARE(dialog->findChild<QSpinBox *>(QStringLiteral("currentIndexSpinBox"))->value(), 2);
            auto *text = dialog->findChild<QLineEdit *>(QStringLiteral("currentTextInput"));
            QCOMPARE(text->text(), QStringLiteral("tab_3"));
            text->setText(QStringLiteral("Tools"));
            emit text->textEdited(QStringLiteral("Tools"));
            QCOMPARE(preview->tabBar()->tabText(2), QStringLiteral("Tools"));
            dialog->findChild<QSpinBox *>(QStringLiteral("currentOperationalAuthority"))->setValue(5);
            checked = true;
            accept ? dialog->accept() : dialog->reject();
        }));
        QVERIFY(checked);
        QCOMPARE(form->commandHistory()->count(), accept ? 1 : 0);
        if (!accept) {
            QCOMPARE(tabs->tabTexts(), ThreeTabs);
            return;
        }
        QCOMPARE(tabs->tabBar()->count(), 4);
        QCOMPARE(tabs->tabTexts(), (QStringList{"tab_1", "tab_2", "Tools", "tab_4"}));
        QCOMPARE(tabs->operationalAuthoritys(), (QStringList{"0", "0", "5", "0"}));
        QCOMPARE(tabs->currentIndex(), 2);
        QCOMPARE(savedTags(form->contents()), (QStringList{"tab_1", "tab_2", "tab_3", "tab_4"}));
        form->commandHistory()->undo();
        QCOMPARE(tabs->tabsCount(), 3);
        QCOMPARE(tabs->operationalAuthoritys(), (QStringList{"0", "0", "0"}));
    }

    // A dropped bar's keys are managed and saved; counts are undoable; saved and reopened, in Designer
    // and by the panel's loader, the bar has exactly its one set of keys, as saved.
    void softKeyBar()
    {
        QDesignerFormWindowInterface *form = DesignerCore::instance().createForm(DesignerCore::formDocument(Bar));
        auto *bar = DesignerCore::formWidget<ButtonGroup>(form, QStringLiteral("buttonGroup"));
        resizeOnce(bar);
        QCOMPARE(bar->shownButtons().size(), 10);
        form->cursor()->setWidgetProperty(bar, QStringLiteral("buttonCount"), 10);
        QCOMPARE(bar->shownButtons().size(), 12);
        QVERIFY(form->isManaged(bar->shownButtons().at(10)));
        form->commandHistory()->undo();
        QCOMPARE(bar->shownButtons().size(), 10);
        QCOMPARE(form->contents().count(QStringLiteral("class=\"FunctionButton\"")), 10);
        form->commandHistory()->redo();
        form->cursor()->setWidgetProperty(bar, QStringLiteral("groupCount"), 2);
        const QStringList before = captions(bar->shownButtons(), true);
        const QString saved = form->contents();
        QCOMPARE(found(saved, SavedKey).size(), saved.count(QStringLiteral("class=\"FunctionButton\"")));

        // Designer keeps a loaded shortcut in its property sheet: there only the captions compare.
        QDesignerFormWindowInterface *reopened = DesignerCore::instance().createForm(saved);
        auto *again = DesignerCore::formWidget<ButtonGroup>(reopened, QStringLiteral("buttonGroup"));
        const int children = int(again->findChildren<FunctionButton *>().size());
        resizeOnce(again);
        QCOMPARE(again->findChildren<FunctionButton *>().size(), children);
        QCOMPARE(captions(again->shownButtons(), false), captions(bar->shownButtons(), false));
        QVERIFY(!bar->buttonsOfGroup(2).isEmpty());
        QCOMPARE(again->buttonsOfGroup(2).size(), bar->buttonsOfGroup(2).size()); // the hidden group is kept
        QCOMPARE(found(reopened->contents(), SavedKey), found(saved, SavedKey));
        std::unique_ptr<QWidget> root = DesignerCore::loadAtRunTime(saved);
        auto *runtimeBar = root->findChild<ButtonGroup *>(QStringLiteral("buttonGroup"));
        QVERIFY(QTest::qWaitForWindowExposed(root.get()));
        QCOMPARE(runtimeBar->findChildren<FunctionButton *>().size(), children);
        QCOMPARE(captions(runtimeBar->shownButtons(), true), before);
    }

    // A focus policy given to the bar in the property editor goes to every key and is saved with them
    // (Designer keeps focus policies in its property sheet, not on the widgets).
    void barFocusPolicyReachesTheKeys()
    {
        QDesignerFormWindowInterface *form = DesignerCore::instance().createForm(DesignerCore::formDocument(Bar));
        auto *bar = DesignerCore::formWidget<ButtonGroup>(form, QStringLiteral("buttonGroup"));
        resizeOnce(bar);
        QDesignerPropertyEditorInterface *editor = DesignerCore::instance().core()->propertyEditor();
        editor->setObject(bar->shownButtons().at(1)); // another object's change is not the bar's business
        emit DesignerHost::instance()->propertyChanged(QStringLiteral("focusPolicy"), int(Qt::StrongFocus));
        QCOMPARE(form->contents().count(QStringLiteral("Qt::StrongFocus")), 0);
        editor->setObject(bar);
        emit DesignerHost::instance()->propertyChanged(QStringLiteral("focusPolicy"), int(Qt::StrongFocus));
        QCOMPARE(form->contents().count(QStringLiteral("Qt::StrongFocus")), 10);
    }
};

QTEST_MAIN(TestContainersDesigner)
#include "tst_containersdesigner.moc"
