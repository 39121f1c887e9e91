// The soft-key bar as a panel builder meets it in Designer: a dropped bar's buttons are form children
// that are saved, counts change as undoable edits, a saved bar reopens (in Designer and at run time)
// with exactly its one set of buttons, and the Button Group Editor.
#include "buttongroup.h"
#include "designercore.h"
#include "designerhost.h"
#include "formloader.h"
#include "functionbutton.h"
#include "norvointerface_z3.h"

#include <QtDesigner/QDesignerFormEditorInterface>
#include <QtDesigner/QDesignerFormWindowCursorInterface>
#include <QtDesigner/QDesignerFormWindowInterface>
#include <QtDesigner/QDesignerPropertyEditorInterface>
#include <QtDesigner/QDesignerWidgetDataBaseInterface>

#include <QApplication>
#include <QBuffer>
#include <QComboBox>
#include <QDialog>
#include <QRegularExpression>
#include <QResizeEvent>
#include <QSpinBox>
#include <QTabWidget>
#include <QTest>
#include <QUndoStack>

namespace {
const QString DroppedBar = QStringLiteral(
    "<widget class=\"ButtonGroup\" name=\"buttonGroup\"><property name=\"geometry\"><rect><x>0</x><y>0</y>"
    "<width>460</width><height>60</height></rect></property></widget>");

// What a shown form window does first: the bar builds on its first resize.
void resizeOnce(QWidget *bar)
{
    QResizeEvent event(bar->size(), QSize());
    QApplication::sendEvent(bar, &event);
}

// Caption and shortcut of each button; Designer keeps a loaded shortcut in its property sheet
// (saved again with the form) rather than on the widget, so there only the captions are compared.
QStringList captions(const QList<FunctionButton *> &buttons, bool withShortcuts = true)
{
    QStringList out;
    for (FunctionButton *b : buttons) {
        if (!b)
            out << QStringLiteral("-");
        else
            out << (withShortcuts ? b->text() + QLatin1Char('/') + b->shortcut().toString() : b->text());
    }
    return out;
}
// Each saved button as name: caption, shortcut, group, id.
QStringList savedButtons(const QString &ui)
{
    QStringList out;
    static const QRegularExpression button(QStringLiteral(
        "<widget class=\"FunctionButton\" name=\"(\\w+)\">.*?<string>(.*?)</string>.*?<string>(.*?)</string>"
        ".*?<number>(\\d+)</number>.*?<number>(\\d+)</number>"),
        QRegularExpression::DotMatchesEverythingOption);
    for (auto it = button.globalMatch(ui); it.hasNext();) {
        const QRegularExpressionMatch m = it.next();
        out << QStringLiteral("%1: %2 %3 %4 %5").arg(m.captured(1), m.captured(2), m.captured(3), m.captured(4), m.captured(5));
    }
    return out;
}
} // namespace

class TestButtonGroupDesigner : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // The desktop font the editors are drawn for; Qt 5's offscreen platform would default to 12 points.
    void initTestCase() { QApplication::setFont(QFont(QStringLiteral("Sans Serif"), 9)); }
    void init() { NORVOInterface_Z3::initialization()->resetToDefaults(); }
    void cleanup()
    {
        DesignerCore::instance().closeForms();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    void cleanupTestCase() { DesignerCore::release(); }

    void descriptor()
    {
        QDesignerWidgetDataBaseInterface *database = DesignerCore::instance().core()->widgetDataBase();
        const int index = database->indexOfClassName(QStringLiteral("ButtonGroup"));
        QVERIFY(index >= 0);
        QCOMPARE(database->item(index)->group(), QStringLiteral("Buttons"));
        QCOMPARE(database->item(index)->includeFile(), QStringLiteral("buttongroup.h"));
        QVERIFY(!database->item(index)->icon().isNull());
        QVERIFY(database->indexOfClassName(QStringLiteral("KeypadButton")) < 0); // a library widget only
    }

    void droppedBarManagesItsButtons()
    {
        QDesignerFormWindowInterface *form = DesignerCore::instance().createForm(DesignerCore::formDocument(DroppedBar));
        auto *bar = DesignerCore::formWidget<ButtonGroup>(form, QStringLiteral("buttonGroup"));
        QVERIFY(bar);
        resizeOnce(bar);
        const QList<FunctionButton *> shown = bar->shownButtons();
        QCOMPARE(shown.size(), 10);
        for (FunctionButton *button : shown)
            QVERIFY(form->isManaged(button));
        const QString saved = form->contents();
        QCOMPARE(saved.count(QStringLiteral("class=\"FunctionButton\"")), 10);
        QVERIFY(saved.contains(QStringLiteral("<string>F9</string>")));
        QVERIFY(saved.contains(QStringLiteral("<string>&lt;&lt;</string>")));
    }

    // Saved and reopened, in Designer and by the panel's loader: one set of buttons, as saved.
    void savedBarReopensWithOneSet()
    {
        QDesignerFormWindowInterface *form = DesignerCore::instance().createForm(DesignerCore::formDocument(DroppedBar));
        auto *bar = DesignerCore::formWidget<ButtonGroup>(form, QStringLiteral("buttonGroup"));
        resizeOnce(bar);
        form->cursor()->setWidgetProperty(bar, QStringLiteral("groupCount"), 2);
        form->cursor()->setWidgetProperty(bar, QStringLiteral("buttonCount"), 4);
        const QStringList before = captions(bar->shownButtons());
        const QStringList beforeCaptions = captions(bar->shownButtons(), false);
        const QString saved = form->contents();
        DesignerCore::instance().closeForms();

        QDesignerFormWindowInterface *reopened = DesignerCore::instance().createForm(saved);
        auto *again = DesignerCore::formWidget<ButtonGroup>(reopened, QStringLiteral("buttonGroup"));
        QVERIFY(again);
        const int children = int(again->findChildren<FunctionButton *>().size());
        resizeOnce(again);
        QCOMPARE(again->findChildren<FunctionButton *>().size(), children);
        QCOMPARE(captions(again->shownButtons(), false), beforeCaptions);
        QCOMPARE(again->buttonsOfGroup(2).size(), 10); // the hidden group is kept
        // Saved again, the form keeps the same buttons with their captions, shortcuts, groups and ids.
        QCOMPARE(savedButtons(saved).size(), saved.count(QStringLiteral("class=\"FunctionButton\"")));
        QCOMPARE(savedButtons(reopened->contents()), savedButtons(saved));

        FormLoader loader;
        QByteArray bytes = saved.toUtf8();
        QBuffer file(&bytes);
        std::unique_ptr<QWidget> loaded(loader.load(&file));
        QVERIFY(loaded);
        auto *runtimeBar = loaded->findChild<ButtonGroup *>(QStringLiteral("buttonGroup"));
        QVERIFY(runtimeBar);
        loaded->show();
        QVERIFY(QTest::qWaitForWindowExposed(loaded.get()));
        QCOMPARE(runtimeBar->findChildren<FunctionButton *>().size(), children);
        QCOMPARE(captions(runtimeBar->shownButtons()), before);
    }

    void countsAreUndoable()
    {
        QDesignerFormWindowInterface *form = DesignerCore::instance().createForm(DesignerCore::formDocument(DroppedBar));
        auto *bar = DesignerCore::formWidget<ButtonGroup>(form, QStringLiteral("buttonGroup"));
        resizeOnce(bar);
        form->commandHistory()->clear();
        form->cursor()->setWidgetProperty(bar, QStringLiteral("buttonCount"), 10);
        QCOMPARE(bar->shownButtons().size(), 12);
        QVERIFY(form->isManaged(bar->shownButtons().at(10)));
        QCOMPARE(form->commandHistory()->count(), 1);
        form->commandHistory()->undo();
        QCOMPARE(bar->buttonCount(), 8);
        QCOMPARE(bar->shownButtons().size(), 10);
        int managedButtons = 0;
        for (FunctionButton *button : bar->findChildren<FunctionButton *>())
            managedButtons += form->isManaged(button) ? 1 : 0;
        QCOMPARE(managedButtons, 10);
        form->commandHistory()->redo();
        QCOMPARE(bar->shownButtons().size(), 12);
    }

    // A focus policy the panel builder gives the bar in the property editor goes to every key and is
    // saved with them (Designer keeps focus policies in its property sheet, not on the widgets).
    void focusPolicyReachesTheKeys()
    {
        QDesignerFormWindowInterface *form = DesignerCore::instance().createForm(DesignerCore::formDocument(DroppedBar));
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

    void editor()
    {
        QDesignerFormWindowInterface *form = DesignerCore::instance().createForm(DesignerCore::formDocument(DroppedBar));
        auto *bar = DesignerCore::formWidget<ButtonGroup>(form, QStringLiteral("buttonGroup"));
        resizeOnce(bar);
        QVERIFY(DesignerCore::runEditor(bar, [](QDialog *dialog) {
            QCOMPARE(dialog->objectName(), QStringLiteral("ButtonGroupEditor"));
            QCOMPARE(dialog->windowTitle(), QStringLiteral("Button Group Editor"));
            QCOMPARE(dialog->size(), QSize(530, 470));
            auto *tabs = dialog->findChild<QTabWidget *>(QStringLiteral("tabWidget"));
            QCOMPARE(tabs->count(), 1);
            QCOMPARE(tabs->tabText(0), QStringLiteral("Appearance"));
            auto *direction = dialog->findChild<QComboBox *>(QStringLiteral("directionComboBox"));
            QCOMPARE(direction->count(), 2);
            dialog->findChild<QSpinBox *>(QStringLiteral("groupCountSpinBox"))->setValue(3);
            dialog->accept();
        }));
        QCOMPARE(bar->groupCount(), 3);
        QCOMPARE(bar->buttonsOfGroup(3).size(), 10);
        QCOMPARE(form->commandHistory()->count(), 1);
    }
};

QTEST_MAIN(TestButtonGroupDesigner)
#include "tst_buttongroupdesigner.moc"
