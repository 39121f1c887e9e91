#include "designercore.h"
#include "formwindowhost.h"
#include "probewidget.h"

#include <QtDesigner/QDesignerFormEditorInterface>
#include <QtDesigner/QDesignerFormWindowCursorInterface>
#include <QtDesigner/QDesignerFormWindowInterface>
#include <QtDesigner/QDesignerPropertyEditorInterface>
#include <QtDesigner/QDesignerPropertySheetExtension>
#include <QtDesigner/QExtensionManager>

#include <QDir>
#include <QLabel>
#include <QSignalSpy>
#include <QTest>
#include <QUndoStack>

class TestFormWindowHost : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase();

    void installsOncePerCore();
    void findsTheFormWindowOfAWidget();
    void projectPathIsTheFormsFolder_data();
    void projectPathIsTheFormsFolder();
    void undoablePropertyIsOneUndoStep();
    void commandGroupsChangesIntoOneStep();
    void markedPropertyIsSaved();
    void sheetPropertyIsSavedWithoutUndoStep();
    void selection();
    void selectionChangedIsForwarded();
    void managedWidgetGetsUniqueName();
    void markDirty();
    void propertyEditorFollowsSelection();
    void propertyEditorChangesAreForwarded();

private:
    FormWindowHost *host() const { return qobject_cast<FormWindowHost *>(DesignerHost::instance()); }
    bool isChangedInSheet(QWidget *widget, const QString &name) const;

    QDesignerFormWindowInterface *m_form = nullptr;
    QLabel *m_label = nullptr;
    QLabel *m_other = nullptr;
};

void TestFormWindowHost::initTestCase()
{
    ProbeWidgetPlugin::registerInCollection(); // installs the host on initialisation
    DesignerCore::instance();
    QVERIFY(host());
}

void TestFormWindowHost::init()
{
    m_form = DesignerCore::instance().createForm(DesignerCore::formDocument(QStringLiteral(
        "<widget class=\"QLabel\" name=\"label\"><property name=\"geometry\"><rect><x>10</x><y>10</y>"
        "<width>100</width><height>30</height></rect></property>"
        "<property name=\"text\"><string>Old</string></property></widget>"
        "<widget class=\"QLabel\" name=\"other\"><property name=\"geometry\"><rect><x>10</x><y>50</y>"
        "<width>100</width><height>30</height></rect></property></widget>")));
    QVERIFY(m_form);
    m_label = DesignerCore::formWidget<QLabel>(m_form, QStringLiteral("label"));
    m_other = DesignerCore::formWidget<QLabel>(m_form, QStringLiteral("other"));
    QVERIFY(m_label && m_other);
}

void TestFormWindowHost::cleanup()
{
    DesignerCore::instance().closeForms();
}

void TestFormWindowHost::cleanupTestCase()
{
    DesignerCore::release();
}

bool TestFormWindowHost::isChangedInSheet(QWidget *widget, const QString &name) const
{
    auto *sheet = qt_extension<QDesignerPropertySheetExtension *>(
        DesignerCore::instance().core()->extensionManager(), widget);
    return sheet && sheet->isChanged(sheet->indexOf(name));
}

void TestFormWindowHost::installsOncePerCore()
{
    FormWindowHost *installed = host();
    QCOMPARE(FormWindowHost::installFor(DesignerCore::instance().core()), installed);
    QCOMPARE(DesignerHost::instance(), installed);
    QCOMPARE(installed->parent(), DesignerCore::instance().core());
    QVERIFY(!FormWindowHost::installFor(nullptr));
}

void TestFormWindowHost::findsTheFormWindowOfAWidget()
{
    QWidget *form = m_form;
    QCOMPARE(host()->formWindow(m_label), form);
    QCOMPARE(host()->formWindow(m_form->mainContainer()), form);
    QCOMPARE(DesignerHost::formWindowOf(m_label), form);
    QLabel outside;
    QVERIFY(!host()->formWindow(&outside));
    QVERIFY(!DesignerHost::formWindowOf(&outside));
    QVERIFY(!host()->formWindow(nullptr));
}

void TestFormWindowHost::projectPathIsTheFormsFolder_data()
{
    QTest::addColumn<QString>("fileName");
    QTest::addColumn<QString>("projectPath");
    QTest::newRow("unsaved form") << QString() << QDir::currentPath();
    QTest::newRow("saved form") << QStringLiteral("/srv/panels/line1/main.ui") << QStringLiteral("/srv/panels/line1");
    QTest::newRow("form at the root") << QStringLiteral("/main.ui") << QStringLiteral("/");
}

void TestFormWindowHost::projectPathIsTheFormsFolder()
{
    QFETCH(QString, fileName);
    QFETCH(QString, projectPath);
    m_form->setFileName(fileName);
    QCOMPARE(host()->fileName(m_form), fileName);
    QCOMPARE(host()->projectPath(m_form), projectPath);
    QCOMPARE(host()->projectPath(nullptr), QDir::currentPath());
}

void TestFormWindowHost::undoablePropertyIsOneUndoStep()
{
    host()->setUndoableProperty(m_label, QStringLiteral("text"), QStringLiteral("New"));
    QCOMPARE(m_label->text(), QStringLiteral("New"));
    QCOMPARE(m_form->commandHistory()->count(), 1);
    QVERIFY(m_form->isDirty());
    QVERIFY(m_form->contents().contains(QLatin1String("<string>New</string>")));
    m_form->commandHistory()->undo();
    QCOMPARE(m_label->text(), QStringLiteral("Old"));
    QVERIFY(!m_form->isDirty());
}

void TestFormWindowHost::commandGroupsChangesIntoOneStep()
{
    host()->beginCommand(m_form, QStringLiteral("Edit label"));
    host()->setUndoableProperty(m_label, QStringLiteral("text"), QStringLiteral("New"));
    host()->setUndoableProperty(m_label, QStringLiteral("wordWrap"), true);
    host()->setUndoableProperty(m_other, QStringLiteral("indent"), 7);
    host()->endCommand(m_form);
    QCOMPARE(m_form->commandHistory()->count(), 1);
    QCOMPARE(m_form->commandHistory()->undoText(), QStringLiteral("Edit label"));
    m_form->commandHistory()->undo();
    QCOMPARE(m_label->text(), QStringLiteral("Old"));
    QVERIFY(!m_label->wordWrap());
    QCOMPARE(m_other->indent(), -1);
}

void TestFormWindowHost::markedPropertyIsSaved()
{
    QVERIFY(!isChangedInSheet(m_label, QStringLiteral("wordWrap")));
    QVERIFY(!m_form->contents().contains(QLatin1String("\"wordWrap\"")));
    host()->markPropertyChanged(m_label, QStringLiteral("wordWrap"));
    QVERIFY(isChangedInSheet(m_label, QStringLiteral("wordWrap")));
    QVERIFY(m_form->contents().contains(QLatin1String("\"wordWrap\"")));
    host()->markPropertyChanged(m_label, QStringLiteral("noSuchProperty")); // ignored
}

void TestFormWindowHost::sheetPropertyIsSavedWithoutUndoStep()
{
    host()->setSheetProperty(m_label, QStringLiteral("autoFillBackground"), true);
    QVERIFY(m_label->autoFillBackground());
    QCOMPARE(m_form->commandHistory()->count(), 0);
    QVERIFY(m_form->contents().contains(QLatin1String("\"autoFillBackground\"")));
}

void TestFormWindowHost::selection()
{
    host()->clearSelection(m_form);
    QVERIFY(!host()->isSelected(m_form, m_label));
    host()->selectWidget(m_form, m_label, true);
    QVERIFY(host()->isSelected(m_form, m_label));
    QVERIFY(!host()->isSelected(m_form, m_other));
    host()->selectWidget(m_form, m_other, true);
    QVERIFY(host()->isSelected(m_form, m_label));
    QVERIFY(host()->isSelected(m_form, m_other));
    host()->selectWidget(m_form, m_label, false);
    QVERIFY(!host()->isSelected(m_form, m_label));
    host()->clearSelection(m_form);
    QVERIFY(!host()->isSelected(m_form, m_other));
    QVERIFY(!host()->isSelected(nullptr, m_other));
}

void TestFormWindowHost::selectionChangedIsForwarded()
{
    QSignalSpy spy(host(), &DesignerHost::selectionChanged);
    host()->clearSelection(m_form);
    host()->selectWidget(m_form, m_label, true);
    QTRY_VERIFY(spy.count() > 0);
    QCOMPARE(spy.last().at(0).value<QWidget *>(), static_cast<QWidget *>(m_form));
}

void TestFormWindowHost::managedWidgetGetsUniqueName()
{
    auto *page = new QLabel(m_form->mainContainer());
    page->setObjectName(QStringLiteral("label"));
    QVERIFY(!m_form->isManaged(page));
    host()->manageWidget(m_form, page);
    QVERIFY(m_form->isManaged(page));
    QCOMPARE(page->objectName(), QStringLiteral("label_2"));
    host()->refreshEditors(m_form);
    QVERIFY(m_form->contents().contains(QLatin1String("name=\"label_2\"")));

    auto *unnamed = new QLabel(m_form->mainContainer());
    host()->manageWidget(m_form, unnamed);
    QVERIFY(!unnamed->objectName().isEmpty());

    host()->unmanageWidget(m_form, page);
    QVERIFY(!m_form->isManaged(page));
    QVERIFY(!m_form->contents().contains(QLatin1String("name=\"label_2\"")));
}

void TestFormWindowHost::markDirty()
{
    QVERIFY(!m_form->isDirty());
    host()->markDirty(m_form);
    QVERIFY(m_form->isDirty());
}

void TestFormWindowHost::propertyEditorFollowsSelection()
{
    host()->clearSelection(m_form);
    host()->selectWidget(m_form, m_other, true);
    QTRY_COMPARE(host()->propertyEditorObject(), static_cast<QObject *>(m_other));
    host()->refreshEditors(m_form);
    QCOMPARE(host()->propertyEditorObject(), static_cast<QObject *>(m_other));
}

void TestFormWindowHost::propertyEditorChangesAreForwarded()
{
    QDesignerPropertyEditorInterface *editor = DesignerCore::instance().core()->propertyEditor();
    QVERIFY(editor);
    host()->clearSelection(m_form);
    host()->selectWidget(m_form, m_label, true);
    QTRY_COMPARE(host()->propertyEditorObject(), static_cast<QObject *>(m_label));
    QSignalSpy spy(host(), &DesignerHost::propertyChanged);
    Q_EMIT editor->propertyChanged(QStringLiteral("text"), QStringLiteral("Typed"));
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.at(0).at(0).toString(), QStringLiteral("text"));
    QCOMPARE(spy.at(0).at(1).toString(), QStringLiteral("Typed"));
}

QTEST_MAIN(TestFormWindowHost)
#include "tst_formwindowhost.moc"
