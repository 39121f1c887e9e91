#include "designercore.h"
#include "formwindowhost.h"

#include <QtDesigner/QDesignerFormWindowInterface>

#include <QDir>
#include <QLabel>
#include <QTest>
#include <QUndoStack>

class TestFormWindowHost : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        DesignerCore::instance(); // every descriptor installs the host on initialisation
        QVERIFY(host());
    }
    void init()
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
    void cleanup() { DesignerCore::instance().closeForms(); }
    void cleanupTestCase() { DesignerCore::release(); }

    void formWindowAndProjectFolder_data()
    {
        QTest::addColumn<QString>("fileName");
        QTest::addColumn<QString>("projectPath");
        QTest::newRow("unsaved form") << QString() << QDir::currentPath();
        QTest::newRow("saved form") << QStringLiteral("/srv/panels/line1/main.ui") << QStringLiteral("/srv/panels/line1");
        QTest::newRow("form at the root") << QStringLiteral("/main.ui") << QStringLiteral("/");
    }
    void formWindowAndProjectFolder()
    {
        QFETCH(QString, fileName);
        QFETCH(QString, projectPath);
        QCOMPARE(DesignerHost::formWindowOf(m_label), static_cast<QWidget *>(m_form));
        QLabel outside;
        QVERIFY(!DesignerHost::formWindowOf(&outside));
        m_form->setFileName(fileName);
        QCOMPARE(host()->fileName(m_form), fileName);
        QCOMPARE(host()->projectPath(m_form), projectPath);
    }

    void undoableCommands_data()
    {
        QTest::addColumn<bool>("grouped");
        QTest::newRow("single property") << false;
        QTest::newRow("grouped command") << true;
    }
    void undoableCommands()
    {
        QFETCH(bool, grouped);
        if (grouped)
            host()->beginCommand(m_form, QStringLiteral("Edit label"));
        host()->setUndoableProperty(m_label, QStringLiteral("text"), QStringLiteral("New"));
        if (grouped) {
            host()->setUndoableProperty(m_other, QStringLiteral("indent"), 7);
            host()->endCommand(m_form);
        }
        QCOMPARE(m_label->text(), QStringLiteral("New"));
        QCOMPARE(m_form->commandHistory()->count(), 1);
        QVERIFY(m_form->contents().contains(QLatin1String("<string>New</string>")));
        m_form->commandHistory()->undo();
        QCOMPARE(m_label->text(), QStringLiteral("Old"));
        QCOMPARE(m_other->indent(), -1);
        QVERIFY(!m_form->isDirty());
    }

    void selection()
    {
        host()->clearSelection(m_form);
        host()->selectWidget(m_form, m_label, true);
        host()->selectWidget(m_form, m_other, true);
        QVERIFY(host()->isSelected(m_form, m_label) && host()->isSelected(m_form, m_other));
        host()->selectWidget(m_form, m_label, false);
        QVERIFY(!host()->isSelected(m_form, m_label) && host()->isSelected(m_form, m_other));
        QTRY_COMPARE(host()->propertyEditorObject(), static_cast<QObject *>(m_other));
    }

    void managedWidgetGetsAUniqueName()
    {
        auto *page = new QLabel(m_form->mainContainer());
        page->setObjectName(QStringLiteral("label"));
        host()->manageWidget(m_form, page);
        QVERIFY(m_form->isManaged(page));
        QCOMPARE(page->objectName(), QStringLiteral("label_2"));
        host()->refreshEditors(m_form);
        QVERIFY(m_form->contents().contains(QLatin1String("name=\"label_2\"")));
        host()->unmanageWidget(m_form, page);
        QVERIFY(!m_form->contents().contains(QLatin1String("name=\"label_2\"")));
    }

private:
    FormWindowHost *host() const { return qobject_cast<FormWindowHost *>(DesignerHost::instance()); }

    QDesignerFormWindowInterface *m_form = nullptr;
    QLabel *m_label = nullptr;
    QLabel *m_other = nullptr;
};

QTEST_MAIN(TestFormWindowHost)
#include "tst_formwindowhost.moc"
