// Forms in Designer on the real core with the built plugin. The collection: the ten descriptors in the
// registry's order with groups, headers, icons and initial XML (the panel in Designer's hidden group,
// no keypad key), every offered widget placed from its initial XML with its one task menu action, and
// a form of every widget saved, reopened and saved again alike. The containers: the children they make
// (cells, pages, panels, soft keys) managed and saved with what is dropped on them, reopened in
// Designer, by the panel's loader and as uic code; line drags, strip drags, tab moves, New and Delete
// and count changes as undo steps; fewer children releasing theirs as an undo step. The designer host
// is reached through these; its selection and an unsaved form's folder are checked on their own.
#include "advsplitter.h"
#include "buttongroup.h"
#include "designercore.h"
#include "designerhost.h"
#include "formcheckdialog.h"
#include "functionbutton.h"
#include "gridsplitter.h"
#include "mdiarea.h"
#include "movehandler.h"
#include "norvointerface_z3.h"
#include "previewsession.h"
#include "subwindow.h"
#include "tabwidget.h"
#include "textdata.h"
#include "textinfocodec.h"
#include "widgetpluginregistry.h"

#include <QtDesigner/QDesignerFormEditorInterface>
#include <QtDesigner/QDesignerFormWindowCursorInterface>
#include <QtDesigner/QDesignerFormWindowInterface>
#include <QtDesigner/QDesignerFormWindowManagerInterface>
#include <QtDesigner/QDesignerPropertyEditorInterface>
#include <QtDesigner/QDesignerTaskMenuExtension>
#include <QtDesigner/QExtensionManager>
#include <QtUiPlugin/QDesignerCustomWidgetCollectionInterface>

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>
#include <QRegularExpression>
#include <QResizeEvent>
#include <QSet>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTabBar>
#include <QTabWidget>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTreeWidget>
#include <QTest>
#include <QUndoStack>

#include <functional>

namespace {

QString element(const char *widgetClass, const char *name, const QString &properties = QString())
{
    return QStringLiteral("<widget class=\"%1\" name=\"%2\"><property name=\"geometry\"><rect><x>0</x><y>0</y>"
                          "<width>302</width><height>202</height></rect></property>%3</widget>")
        .arg(QLatin1String(widgetClass), QLatin1String(name), properties);
}

const QString Grid = element("GridSplitter", "gridSplitter", "<property name=\"rowCount\"><number>2</number></property>"
                                                           "<property name=\"columnCount\"><number>3</number></property>");
const QString Tabs = element("TabWidget", "tabWidget", "<property name=\"tabsCount\"><number>3</number></property>");
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

// What a pattern finds in a saved form (its groups), sorted.
QStringList found(const QString &contents, const QString &pattern)
{
    QStringList out;
    const QRegularExpression re(pattern, QRegularExpression::DotMatchesEverythingOption);
    for (auto it = re.globalMatch(contents); it.hasNext();) {
        const QRegularExpressionMatch m = it.next();
        out << m.capturedTexts().mid(1).join(QLatin1Char(' '));
    }
    out.sort();
    return out;
}

// The tags of the children saved (Designer writes pages in their stacking order).
QStringList savedTags(const QString &contents)
{
    return found(contents, QStringLiteral("name=\"statusTip\">\\s*<string>(cell\\d{4}|tab_\\d+)</string>"));
}

// A form whose saved text holds exactly the widgets it manages.
bool savesWhatItManages(QDesignerFormWindowInterface *form)
{
    int managed = 1; // the form itself
    for (QWidget *w : form->mainContainer()->findChildren<QWidget *>())
        managed += form->isManaged(w);
    return form->contents().count(QLatin1String("<widget ")) == managed;
}

QWidget *child(QWidget *container, const QString &tag)
{
    for (QWidget *w : container->findChildren<QWidget *>()) {
        if (w->statusTip() == tag)
            return w;
    }
    return nullptr;
}

// What each saved soft key holds first: caption, shortcut, group and id.
const QString SavedKey = QStringLiteral(R"(\s*<property name="text">\s*<string>[^<]*</string>\s*</property>\s*)"
                                        R"(<property name="shortcut">\s*<string>[^<]*</string>\s*</property>\s*)"
                                        R"(<property name="group">\s*<number>\d+</number>\s*</property>\s*)"
                                        R"(<property name="id"[^>]*>\s*<number>\d+</number>)");

// The collection in its order; the panel is Designer's page of the MDI area, never offered.
const QStringList Collection{"FunctionButton", "PictureButton", "DynamicImage", "TableWidget", "BitButton",
                             "GridSplitter", "ButtonGroup", "TabWidget", "MdiArea", "SubWindow"};

QDesignerFormEditorInterface *core() { return DesignerCore::instance().core(); }

// The <widget> element of a descriptor's initial XML (the text buttons wrap it in <ui>).
QString widgetElement(const QString &domXml)
{
    const int start = int(domXml.indexOf(QLatin1String("<widget")));
    const int end = int(domXml.lastIndexOf(QLatin1String("</widget>")));
    return domXml.mid(start, end + 9 - start);
}

int taskMenuFactories(const QString &widget)
{
    int count = 0;
    for (QObject *child : core()->extensionManager()->children())
        count += child->inherits(QString(widget + QLatin1String("TaskMenuFactory")).toLatin1().constData());
    return count;
}

using Edit = std::function<void(QDesignerFormWindowInterface *, QWidget *)>;
using Edits = QList<Edit>;

} // namespace

Q_DECLARE_METATYPE(Edits)

class TestFormsDesigner : public QObject
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

    // Each descriptor names a header of its class and initial XML of its class; the panel alone is a
    // container, hidden and without icon. Initialising again registers no second task menu factory,
    // and a place of the collection is taken once.
    void descriptorsInOrder()
    {
        QStringList names;
        for (QDesignerCustomWidgetInterface *d : DesignerCore::descriptors()) {
            names << d->name();
            const bool panel = d->name() == QLatin1String("SubWindow");
            QCOMPARE(d->isContainer(), panel);
            QCOMPARE(d->icon().isNull(), panel);
            QCOMPARE(d->group() == QLatin1String("[invisible]"), panel);
            QVERIFY2(QFile::exists(QStringLiteral(HMI_SOURCE_DIR "/%1/%2").arg(d->name(), d->includeFile())),
                     qPrintable(d->includeFile()));
            QVERIFY(widgetElement(d->domXml()).startsWith(QStringLiteral("<widget class=\"%1\"").arg(d->name())));
            const int factories = taskMenuFactories(d->name());
            d->initialize(core());
            QCOMPARE(taskMenuFactories(d->name()), factories);
        }
        QTest::ignoreMessage(QtWarningMsg, "WidgetPluginRegistry: place 8 of the plugin collection is already taken");
        QVERIFY(!WidgetPluginRegistry::instance().add(WidgetPluginRegistry::TabWidget,
                                                      [](QObject *) -> QDesignerCustomWidgetInterface * { return nullptr; }));
        QCOMPARE(names, Collection);
        QCOMPARE(names.size(), WidgetPluginRegistry::instance().count());
    }

    // Every offered widget dropped on one shown form from its initial XML, with its own task menu;
    // the form saved, reopened and saved again, the two saves alike.
    void everyWidgetPlacedAndSavedAlike()
    {
        QDesignerFormWindowInterface *form = DesignerCore::instance().createForm(DesignerCore::formDocument(QString()), true);
        int y = 10;
        for (QDesignerCustomWidgetInterface *d : DesignerCore::descriptors()) {
            if (d->isContainer())
                continue;
            QString element = widgetElement(d->domXml());
            element.replace(QLatin1String("<x>0</x>"), QStringLiteral("<x>%1</x>").arg(10 + (y / 600) * 500));
            element.replace(QLatin1String("<y>0</y>"), QStringLiteral("<y>%1</y>").arg(y % 600));
            DesignerCore::paste(form, form->mainContainer(), element);
            QWidget *placed = DesignerCore::formWidget(form, found(element, QStringLiteral("^<widget class=\"\\w+\" name=\"(\\w+)\"")).value(0));
            QVERIFY2(placed && placed->metaObject()->className() == d->name() && form->isManaged(placed), qPrintable(d->name()));
            y += placed->height() + 10;
            auto *menu = qt_extension<QDesignerTaskMenuExtension *>(core()->extensionManager(), placed);
            if (d->name() == QLatin1String("TableWidget"))
                continue; // Designer's own table menu comes first; ours is checked with the table
            QVERIFY2(menu && dynamic_cast<QObject *>(menu)->inherits(qPrintable(d->name() + "TaskMenu")), qPrintable(d->name()));
            QCOMPARE(menu->preferredEditAction()->text(), QStringLiteral("Edit Properties..."));
            QCOMPARE(menu->taskActions().value(0), menu->preferredEditAction());
            QCOMPARE(menu->taskActions().value(1)->text(), QStringLiteral("Check Form..."));
        }
        const QString first = form->contents();
        QDesignerFormWindowInterface *again = DesignerCore::instance().createForm(first, true);
        QVERIFY(again);
        // Designer loads a form with updates off; no widget may keep them off.
        for (QWidget *w : again->mainContainer()->findChildren<QWidget *>())
            QVERIFY2(w->updatesEnabled(), qPrintable(w->objectName()));
        const QString second = again->contents();
        QCOMPARE(second, first);
    }

    // The host's selection reaches the form: two selected, one let go; the property editor shows the
    // one left. An unsaved form's project folder is the current one.
    void hostSelection()
    {
        QDesignerFormWindowInterface *form = DesignerCore::instance().createForm(DesignerCore::formDocument(Bar + Tabs));
        QWidget *bar = DesignerCore::formWidget(form, QStringLiteral("buttonGroup"));
        QWidget *tabs = DesignerCore::formWidget(form, QStringLiteral("tabWidget"));
        DesignerHost *host = DesignerHost::instance();
        host->clearSelection(form);
        host->selectWidget(form, bar, true);
        host->selectWidget(form, tabs, true);
        host->selectWidget(form, bar, false);
        QCOMPARE((QList<bool>{host->isSelected(form, bar), host->isSelected(form, tabs)}), (QList<bool>{false, true}));
        QTRY_COMPARE(host->propertyEditorObject(), static_cast<QObject *>(tabs));
        QCOMPARE(host->projectPath(form), QDir::currentPath());
    }

    // A button dropped on a cell or a page is saved nested under it and comes back there everywhere.
    void dropsSurviveSaveAndReload_data()
    {
        QTest::addColumn<QString>("form");
        QTest::addColumn<QString>("target");
        QTest::addColumn<QStringList>("tags");
        QTest::newRow("grid cell") << Grid << "cell0002" << SixCells;
        // A second tab widget has pages of the same tags, under other object names.
        QTest::newRow("tab page") << Tabs + element("TabWidget", "otherTabs") << "tab_2" << ThreeTabs;
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
    }

    // Edits of a container in Designer, each one undo step: the last saved with the given tags and
    // holding the pattern. Undoing them one by one gives each earlier form back byte for byte, redoing
    // them the last, and the last reopened in Designer saves alike.
    void undoableEdits_data()
    {
        QTest::addColumn<QString>("form");
        QTest::addColumn<Edits>("edits");
        QTest::addColumn<QStringList>("tags");
        QTest::addColumn<QString>("saved");
        const auto onLast = [](const char *tag) {
            return [tag](QDesignerFormWindowInterface *form, QWidget *container) {
                DesignerCore::paste(form, child(container, QLatin1String(tag)), button(QStringLiteral("onLast")));
            };
        };
        const auto add = [](const char *property, int delta) {
            return [property, delta](QDesignerFormWindowInterface *form, QWidget *container) {
                form->cursor()->setWidgetProperty(container, QLatin1String(property), container->property(property).toInt() + delta);
            };
        };
        const auto dragLine = [](int dx) {
            return [dx](QDesignerFormWindowInterface *, QWidget *grid) {
                dragBy(static_cast<GridSplitter *>(grid)->line(Qt::Horizontal, 0), QPoint(dx, 0));
            };
        };
        const Edit retitle = [](QDesignerFormWindowInterface *form, QWidget *) {
            form->cursor()->setWidgetProperty(form->mainContainer(), QStringLiteral("windowTitle"), QStringLiteral("Earlier"));
        };
        // Shrinking through the property releases the last child and what lies on it.
        QTest::newRow("fewer grid columns") << Grid << Edits{onLast("cell0102"), add("columnCount", -1)}
                                            << QStringList{"cell0000", "cell0001", "cell0100", "cell0101"} << "^(?!.*onLast)";
        QTest::newRow("fewer tabs") << Tabs << Edits{onLast("tab_3"), add("tabsCount", -1)} << QStringList{"tab_1", "tab_2"}
                                    << "^(?!.*onLast)";
        // A second group of keys, hidden: each key saved with its caption, shortcut, group and id.
        QTest::newRow("soft key group") << Bar << Edits{add("groupCount", 1)} << QStringList()
                                   << "^(?!.*<widget class=\"FunctionButton\" name=\"\\w+\">(?!" + SavedKey + "))"
                                      "(?=.*\"group\">\\s*<number>2<)";
        // Two drags of the first line between columns after an earlier edit.
        QTest::newRow("grid line drags") << Grid << Edits{retitle, dragLine(60), dragLine(-20)} << SixCells
                                         << "name=\"lineHPos\"";
        // A tab moved as a drag ending there: its page, what lies on it and its authority go with it.
        QTest::newRow("tab move") << element("TabWidget", "tabWidget", "<property name=\"tabsCount\"><number>3</number></property>"
                                             "<property name=\"operationalAuthoritys\"><stringlist><string>0</string>"
                                             "<string>2</string><string>3</string></stringlist></property>")
                                  << Edits{onLast("tab_3"), [](QDesignerFormWindowInterface *, QWidget *tabs) {
                                         static_cast<TabWidget *>(tabs)->tabBar()->moveTab(2, 0);
                                     }}
                                  << ThreeTabs
                                  << "<string>tab_3</string>\\s*<string>tab_1</string>\\s*<string>tab_2</string>.*<string>3</string>"
                                     "\\s*<string>0</string>\\s*<string>2</string>.*<string>tab_1</string>\\s*</property>\\s*"
                                     "<widget class=\"QPushButton\" name=\"onLast\">";
    }
    void undoableEdits()
    {
        QFETCH(QString, form);
        QFETCH(Edits, edits);
        QDesignerFormWindowInterface *designed = DesignerCore::instance().createForm(DesignerCore::formDocument(form), true);
        QWidget *container = designed->mainContainer()->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly).first();
        QStringList forms{designed->contents()};
        for (const Edit &edit : edits) {
            edit(designed, container);
            QVERIFY(designed->contents() != forms.last());
            QVERIFY(savesWhatItManages(designed));
            forms << designed->contents();
        }
        QUndoStack *history = designed->commandHistory();
        QCOMPARE(history->count(), edits.size());
        QTEST(savedTags(forms.last()), "tags");
        QFETCH(QString, saved);
        QVERIFY2(forms.last().contains(QRegularExpression(saved, QRegularExpression::DotMatchesEverythingOption)),
                 qPrintable(forms.last()));
        // Reopened keys of a hidden group save the place Qt gives a widget never shown: it means nothing.
        const QRegularExpression neverShown(QStringLiteral("<property name=\"geometry\">\\s*<rect>\\s*<x>0</x>\\s*<y>0</y>\\s*"
                                                           "<width>100</width>\\s*<height>30</height>\\s*</rect>\\s*</property>\\s*"));
        QCOMPARE(DesignerCore::instance().createForm(forms.last(), true)->contents().remove(neverShown),
                 QString(forms.last()).remove(neverShown));
        for (int i = int(edits.size()) - 1; i >= 0; --i) {
            history->undo();
            QCOMPARE(designed->contents(), forms.at(i));
            QVERIFY(savesWhatItManages(designed));
        }
        history->setIndex(history->count());
        QCOMPARE(designed->contents(), forms.last());
    }

    // Two panels holding widgets: the active one follows the selection and its strip drag moves it as
    // one undo step; saved, they come back alike.
    // "Check Form..." on the form as it stands, with the panel's word library beside its file (none for
    // an unsaved form): the panel checker's findings, "widget: message" each; a double-click selects.
    void checkForm_data()
    {
        QTest::addColumn<QString>("showTab");
        QTest::addColumn<QString>("words"); // null: the form is not saved
        QTest::addColumn<QStringList>("findings");
        QTest::addColumn<QString>("summary");
        QTest::newRow("mistake") << QStringLiteral("nowhere:1") << QString()
                                 << QStringList{"functionButton: \"showTab\": the form has no tab widget \"nowhere\""} << "1 finding";
        QTest::newRow("clean") << QString() << QString() << QStringList() << "nothing to correct";
        QTest::newRow("library beside the form") << QString() << QStringLiteral("x\tFeed\n") << QStringList() << "words.tsv: line 1";
    }
    void checkForm()
    {
        QFETCH(QString, showTab);
        QFETCH(QString, words);
        QFETCH(QStringList, findings);
        QFETCH(QString, summary);
        const QString key = element("FunctionButton", "functionButton", showTab.isEmpty() ? QString()
                                    : QStringLiteral("<property name=\"showTab\"><string>%1</string></property>").arg(showTab));
        QDesignerFormWindowInterface *form = DesignerCore::instance().createForm(DesignerCore::formDocument(Bar + key), true);
        QTemporaryDir folder;
        if (!words.isNull()) {
            QFile library(folder.filePath(QStringLiteral("words.tsv")));
            QVERIFY(library.open(QIODevice::WriteOnly) && library.write(words.toUtf8()) > 0);
            form->setFileName(folder.filePath(QStringLiteral("form.ui")));
        }
        auto *menu = qt_extension<QDesignerTaskMenuExtension *>(core()->extensionManager(), DesignerCore::formWidget(form, QStringLiteral("buttonGroup")));
        QAction *check = menu->taskActions().value(1);
        QVERIFY(check && check->text() == QLatin1String("Check Form..."));
        check->trigger();
        auto *dialog = form->findChild<FormCheckDialog *>();
        QVERIFY(dialog && dialog->isVisible());
        QVERIFY2(dialog->findChild<QLabel *>()->text().contains(summary), qPrintable(dialog->findChild<QLabel *>()->text()));
        QTreeWidget *list = dialog->findingsList();
        QStringList listed;
        for (int i = 0; i < list->topLevelItemCount(); ++i) {
            listed << list->topLevelItem(i)->text(1).section(QLatin1Char(' '), 0, 0) + QStringLiteral(": ") + list->topLevelItem(i)->text(2);
            QVERIFY(list->topLevelItem(i)->text(0).toInt() > 0);
        }
        QCOMPARE(listed, findings);
        if (findings.isEmpty())
            return;
        form->clearSelection();
        emit list->itemDoubleClicked(list->topLevelItem(0), 2);
        QVERIFY(form->cursor()->isWidgetSelected(DesignerCore::formWidget(form, QStringLiteral("functionButton"))));
    }

    // Form > Preview of the operator screen (as a dialog and as a plain widget) runs on a simulated
    // controller: its bit key writes, its table shows values; the form in the editor stays static.
    void livePreview_data()
    {
        QTest::addColumn<QString>("topClass");
        QTest::addColumn<QString>("words"); // "words.tsv" beside the saved form; none: not saved
        QTest::newRow("dialog") << QStringLiteral("QDialog") << QStringLiteral("77\tBack\tZur\u00fcck\n");
        QTest::newRow("widget") << QStringLiteral("QWidget") << QString();
    }
    void livePreview()
    {
        QFETCH(QString, topClass);
        QFETCH(QString, words);
        QFile file(QStringLiteral(HMI_SOURCE_DIR "/examples/forms/operator.ui"));
        QVERIFY(file.open(QIODevice::ReadOnly));
        // The soft key "<<" takes its captions from word 77 of the library, as the caption editor links them.
        TextData linked;
        linked.wordLibId = 77;
        linked.texts = QStringList{QStringLiteral("<<"), QStringLiteral("<<")};
        const QString ui = QString::fromUtf8(file.readAll()).replace(QLatin1String("class=\"QDialog\" name=\"OperatorPanel\""),
                                                                     QStringLiteral("class=\"%1\" name=\"OperatorPanel\"").arg(topClass))
                               .replace(QLatin1String("<string>F11</string>\n    </property>"),
                                        QLatin1String("<string>F11</string>\n    </property><property name=\"textInfoBuffer\" stdset=\"0\"><cstring>")
                                            + QString::fromLatin1(TextInfoCodec::encodeSlot({linked})) + QLatin1String("</cstring></property>"));
        QDesignerFormWindowInterface *form = DesignerCore::instance().createForm(ui, true);
        QVERIFY(form);
        QTemporaryDir folder;
        if (!words.isNull()) {
            QFile library(folder.filePath(QStringLiteral("words.tsv")));
            QVERIFY(library.open(QIODevice::WriteOnly) && library.write(words.toUtf8()) > 0);
            library.close();
            form->setFileName(folder.filePath(QStringLiteral("form.ui")));
        }
        core()->formWindowManager()->showPreview();
        QPointer<QWidget> key;
        for (QWidget *w : QApplication::allWidgets()) {
            if (w->objectName() == QLatin1String("spindleButton") && !QDesignerFormWindowInterface::findFormWindow(w))
                key = w;
        }
        PreviewSession *session = PreviewSession::of(key);
        QVERIFY(session && session->form()->isVisible());
        QSignalSpy written(session->controller(), &SimulatedController::bitChanged);
        QTest::mouseClick(key, Qt::LeftButton);
        QVERIFY(!written.isEmpty() && written.constFirst().at(3).toInt() == 100);
        session->controller()->flushUpdates();
        const QString shown = session->form()->findChild<QTableWidget *>(QStringLiteral("statusTable"))->item(0, 1)->text();
        QVERIFY(!shown.isEmpty());
        auto *editorTable = qobject_cast<QTableWidget *>(DesignerCore::formWidget(form, QStringLiteral("statusTable")));
        QVERIFY(!PreviewSession::of(editorTable) && editorTable->item(0, 1)->text().isEmpty());
        // The preview's context menu: the library beside the saved form in the language picked (the
        // stored caption without one); the door key, needing authority 2, refused at 3, the editor's not.
        const auto pick = [session](const QString &text) {
            for (QAction *action : session->form()->actions()) {
                if (action->text() == text)
                    return action->trigger(), true;
            }
            return false;
        };
        auto *back = session->form()->findChild<FunctionButton *>(QStringLiteral("functionButton0100"));
        auto *door = session->form()->findChild<QWidget *>(QStringLiteral("doorButton"));
        const QStringList before{back->text(), QString::number(door->isEnabled())};
        QVERIFY(pick(QStringLiteral("Language: Deutsch")) && pick(QStringLiteral("Operator authority 3")));
        QCOMPARE((before + QStringList{back->text(), QString::number(door->isEnabled()),
                                       QString::number(DesignerCore::formWidget(form, QStringLiteral("doorButton"))->isEnabled())}),
                 (words.isNull() ? QStringList{"<<", "1", "<<", "0", "1"} : QStringList{"Back", "1", "Zur\u00fcck", "0", "1"}));
        core()->formWindowManager()->closeAllPreviews();
        QTRY_VERIFY(!PreviewSession::of(key));
    }

    void panels()
    {
        QDesignerFormWindowInterface *form = DesignerCore::instance().createForm(
            DesignerCore::formDocument(element("MdiArea", "panelArea")), true);
        auto *area = qobject_cast<MdiArea *>(DesignerCore::formWidget(form, QStringLiteral("panelArea")));
        // Ok makes the chosen panel the active one.
        QVERIFY(DesignerCore::runEditor(area, [](QDialog *dialog) {
            for (int i = 0; i < 2; ++i)
                dialog->findChild<QPushButton *>(QStringLiteral("newButton"))->click();
            dialog->findChild<QListWidget *>()->setCurrentRow(0);
            dialog->accept();
        }));
        QCOMPARE(area->activeSubWindow(), QStringLiteral("subWindow_1"));
        DesignerCore::paste(form, area->subWindow(QStringLiteral("subWindow_1")), button(QStringLiteral("onFirst")));
        SubWindow *second = area->subWindow(QStringLiteral("subWindow_2"));
        DesignerCore::paste(form, second, button(QStringLiteral("onSecond")));
        form->clearSelection();
        form->selectWidget(second, true);
        QTRY_COMPARE(area->activePanel(), second);
        QVERIFY(second->handle(MoveHandler::Top)->isVisible());
        dragBy(second->handle(MoveHandler::Top), QPoint(15, 25));
        const QRect moved = second->geometry();
        form->commandHistory()->undo();
        QCOMPARE(second->geometry(), moved.translated(-15, -25));
        form->commandHistory()->redo();

        const QString saved = form->contents();
        QDesignerFormWindowInterface *again = DesignerCore::instance().createForm(saved);
        QCOMPARE(again->contents(), saved);
        auto *reopened = qobject_cast<MdiArea *>(DesignerCore::formWidget(again, QStringLiteral("panelArea")));
        QCOMPARE(managedTags(again, reopened) << reopened->activeSubWindow(), (QStringList{"subWindow_1", "subWindow_2", "subWindow_2"}));
        QVERIFY(DesignerCore::formWidget(again, QStringLiteral("onFirst")) && DesignerCore::formWidget(again, QStringLiteral("onSecond")));
    }

    // A focus policy given to the bar in the property editor goes to every key, the ones added too, and
    // is saved with them
    // (Designer keeps focus policies in its property sheet, not on the widgets).
    void barFocusPolicyReachesTheKeys()
    {
        QDesignerFormWindowInterface *form = DesignerCore::instance().createForm(DesignerCore::formDocument(Bar), true);
        auto *bar = qobject_cast<ButtonGroup *>(DesignerCore::formWidget(form, QStringLiteral("buttonGroup")));
        form->cursor()->setWidgetProperty(bar, QStringLiteral("buttonCount"), 10); // two keys more, managed
        QDesignerPropertyEditorInterface *editor = DesignerCore::instance().core()->propertyEditor();
        editor->setObject(bar->shownButtons().at(1)); // another object's change is not the bar's business
        emit DesignerHost::instance()->propertyChanged(QStringLiteral("focusPolicy"), int(Qt::StrongFocus));
        QCOMPARE(form->contents().count(QStringLiteral("Qt::StrongFocus")), 0);
        editor->setObject(bar);
        emit DesignerHost::instance()->propertyChanged(QStringLiteral("focusPolicy"), int(Qt::StrongFocus));
        QCOMPARE(form->contents().count(QStringLiteral("Qt::StrongFocus")), 12);
    }
};

QTEST_MAIN(TestFormsDesigner)
#include "tst_formsdesigner.moc"
