#include "designercore.h"

#include <QtUiPlugin/QDesignerCustomWidgetCollectionInterface>
#include <QtDesigner/QDesignerComponents>
#include <QtDesigner/QDesignerFormEditorInterface>
#include <QtDesigner/QDesignerFormWindowInterface>
#include <QtDesigner/QDesignerFormWindowManagerInterface>
#include <QtDesigner/QDesignerIntegration>
#include <QtDesigner/QDesignerActionEditorInterface>
#include <QtDesigner/QDesignerObjectInspectorInterface>
#include <QtDesigner/QDesignerPropertyEditorInterface>
#include <QtDesigner/QDesignerTaskMenuExtension>
#include <QtDesigner/QExtensionManager>

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QDialog>
#include <QMainWindow>
#include <QMimeData>
#include <QTest>
#include <QTimer>
#include <QUndoStack>
#include <QtGlobal>

namespace {
DesignerCore *theCore = nullptr;
}

DesignerCore &DesignerCore::instance()
{
    if (!theCore)
        theCore = new DesignerCore;
    return *theCore;
}

void DesignerCore::release()
{
    delete theCore;
    theCore = nullptr;
}

DesignerCore::DesignerCore()
{
    // The core outlives the top level: the tool windows and the integration use it while they go.
    m_topLevel = new QMainWindow;
    m_core = QDesignerComponents::createFormEditor(nullptr);
    m_core->setTopLevel(m_topLevel);
    QDesignerComponents::createTaskMenu(m_core, m_topLevel);
    QDesignerComponents::initializePlugins(m_core);
    // Designer makes its tool windows after the plugins, before any form.
    m_core->setPropertyEditor(QDesignerComponents::createPropertyEditor(m_core, m_topLevel));
    m_core->setObjectInspector(QDesignerComponents::createObjectInspector(m_core, m_topLevel));
    m_core->setActionEditor(QDesignerComponents::createActionEditor(m_core, m_topLevel));
    // Without an integration createFormWindow crashes.
    new QDesignerIntegration(m_core, m_topLevel);
    m_host = new QWidget;
    m_host->resize(1300, 1000);
}

DesignerCore::~DesignerCore()
{
    closeForms();
    delete m_topLevel;
    delete m_core;
    delete m_host;
}

QDesignerFormWindowInterface *DesignerCore::createForm(const QString &uiDocument, bool shown)
{
    QDesignerFormWindowManagerInterface *manager = m_core->formWindowManager();
    // A shown form window needs a parent: a parentless one crashes Designer's event filter.
    QDesignerFormWindowInterface *form = manager->createFormWindow(shown ? m_host : nullptr, shown ? Qt::WindowFlags() : Qt::Window);
    if (!form->setContents(uiDocument)) {
        qWarning("Designer refused the form: %s", qPrintable(uiDocument));
        delete form;
        return nullptr;
    }
    manager->setActiveFormWindow(form);
    if (shown) {
        form->resize(m_host->size());
        form->show();
        m_host->show();
        if (!QTest::qWaitForWindowExposed(m_host))
            qWarning("The form's host window was not shown");
    }
    form->commandHistory()->clear();
    form->setDirty(false);
    return form;
}

void DesignerCore::closeForms()
{
    // A form window leaves the manager as it goes.
    while (m_core->formWindowManager()->formWindowCount() > 0)
        delete m_core->formWindowManager()->formWindow(0);
}

QString DesignerCore::formDocument(const QString &childWidgets)
{
    return QStringLiteral("<ui version=\"4.0\"><class>Form</class><widget class=\"QWidget\" name=\"Form\"><property name=\"geometry\">"
                          "<rect><x>0</x><y>0</y><width>400</width><height>300</height></rect></property>%1</widget></ui>")
        .arg(childWidgets);
}

QWidget *DesignerCore::formWidget(QDesignerFormWindowInterface *form, const QString &objectName)
{
    QWidget *container = form ? form->mainContainer() : nullptr;
    if (!container || container->objectName() == objectName)
        return container;
    return container->findChild<QWidget *>(objectName);
}

QList<QDesignerCustomWidgetInterface *> DesignerCore::descriptors()
{
    QList<QDesignerCustomWidgetInterface *> found;
    for (QObject *instance : instance().core()->pluginInstances()) {
        if (auto *collection = qobject_cast<QDesignerCustomWidgetCollectionInterface *>(instance))
            found << collection->customWidgets();
    }
    return found;
}

bool DesignerCore::runEditor(QWidget *widget, const std::function<void(QDialog *)> &step, const char *menuId)
{
    QExtensionManager *extensions = instance().core()->extensionManager();
    auto *menu = menuId ? qobject_cast<QDesignerTaskMenuExtension *>(extensions->extension(widget, QLatin1String(menuId)))
                        : qt_extension<QDesignerTaskMenuExtension *>(extensions, widget);
    if (!menu || !menu->preferredEditAction())
        return false;
    bool opened = false;
    QTimer inLoop;
    inLoop.setSingleShot(true);
    QObject::connect(&inLoop, &QTimer::timeout, [&] {
        auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
        if (!dialog)
            return;
        opened = true;
        step(dialog);
        if (dialog->isVisible())
            dialog->reject();
    });
    inLoop.start(0);
    menu->preferredEditAction()->trigger();
    return opened;
}

void DesignerCore::paste(QDesignerFormWindowInterface *form, QWidget *target, const QString &widgetElement)
{
    auto *mime = new QMimeData;
    mime->setText(QStringLiteral("<ui><widget class=\"QWidget\" name=\"__qt_fake_top_level\">%1</widget></ui>")
                      .arg(widgetElement));
    QApplication::clipboard()->setMimeData(mime);
    form->clearSelection();
    form->selectWidget(target, true);
    QMetaObject::invokeMethod(form, "paste");
}
