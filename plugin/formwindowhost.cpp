#include "formwindowhost.h"

#include "designerwords.h"
#include "previewsession.h"

#include <QUndoStack>

#include <QtDesigner/QDesignerActionEditorInterface>
#include <QtDesigner/QDesignerFormEditorInterface>
#include <QtDesigner/QDesignerFormWindowCursorInterface>
#include <QtDesigner/QDesignerFormWindowInterface>
#include <QtDesigner/QDesignerFormWindowManagerInterface>
#include <QtDesigner/QDesignerObjectInspectorInterface>
#include <QtDesigner/QDesignerPropertyEditorInterface>
#include <QtDesigner/QDesignerPropertySheetExtension>
#include <QtDesigner/QExtensionManager>
#include <QtDesigner/private/qdesigner_utils_p.h>

#include <QTableWidgetItem>

#include <QDir>
#include <QFileInfo>

namespace {
// While the cursor records a property the sheet hides, the property editor must not read the sheet
// again: it would list the property and warn about a type it has no editor for. A refresh asked for
// meanwhile (a setter refreshing the editors) runs once the property is hidden again.
int showingHidden = 0;
QPointer<QDesignerFormWindowInterface> refreshWaiting;
} // namespace

FormWindowHost::FormWindowHost(QDesignerFormEditorInterface *core)
    : DesignerHost(core)
    , m_core(core)
{
    QDesignerFormWindowManagerInterface *manager = core->formWindowManager();
    if (manager) {
        for (int i = 0; i < manager->formWindowCount(); ++i)
            watchForm(manager->formWindow(i));
        connect(manager, &QDesignerFormWindowManagerInterface::formWindowAdded, this,
                &FormWindowHost::watchForm);
        connect(manager, &QDesignerFormWindowManagerInterface::activeFormWindowChanged, this,
                &FormWindowHost::connectPropertyEditor);
        new DesignerWords(manager, this);
    }
    connectPropertyEditor();
}

FormWindowHost::~FormWindowHost() = default;

FormWindowHost *FormWindowHost::installFor(QDesignerFormEditorInterface *core)
{
    if (!core)
        return nullptr;
    auto *installed = qobject_cast<FormWindowHost *>(DesignerHost::instance());
    if (installed && installed->core() == core)
        return installed;
    auto *host = new FormWindowHost(core);
    DesignerHost::install(host);
    return host;
}

QDesignerFormWindowInterface *FormWindowHost::form(QWidget *formWindow)
{
    return qobject_cast<QDesignerFormWindowInterface *>(formWindow);
}

void FormWindowHost::watchForm(QDesignerFormWindowInterface *form)
{
    if (!form)
        return;
    connect(form, &QDesignerFormWindowInterface::selectionChanged, this, &FormWindowHost::formSelectionChanged,
            Qt::UniqueConnection);
    connectPropertyEditor();
}

void FormWindowHost::formSelectionChanged()
{
    if (auto *f = qobject_cast<QDesignerFormWindowInterface *>(sender()))
        Q_EMIT selectionChanged(f);
}

void FormWindowHost::connectPropertyEditor()
{
    QDesignerPropertyEditorInterface *editor = m_core ? m_core->propertyEditor() : nullptr;
    if (!editor || editor == m_propertyEditor)
        return;
    if (m_propertyEditor)
        disconnect(m_propertyEditor, nullptr, this, nullptr);
    m_propertyEditor = editor;
    connect(editor, &QDesignerPropertyEditorInterface::propertyChanged, this, &DesignerHost::propertyChanged);
}

QWidget *FormWindowHost::formWindow(QWidget *widget) const
{
    return widget ? QDesignerFormWindowInterface::findFormWindow(widget) : nullptr;
}

QString FormWindowHost::fileName(QWidget *formWindow) const
{
    QDesignerFormWindowInterface *f = form(formWindow);
    return f ? f->fileName() : QString();
}

QString FormWindowHost::projectPath(QWidget *formWindow) const
{
    const QString file = fileName(formWindow);
    return file.isEmpty() ? QDir::currentPath() : QFileInfo(file).absolutePath();
}

void FormWindowHost::markPropertyChanged(QWidget *widget, const QString &name)
{
    if (!m_core || !widget)
        return;
    auto *sheet = qt_extension<QDesignerPropertySheetExtension *>(m_core->extensionManager(), widget);
    const int index = sheet ? sheet->indexOf(name) : -1;
    if (index >= 0)
        sheet->setChanged(index, true);
}

void FormWindowHost::setSheetProperty(QWidget *widget, const QString &name, const QVariant &value)
{
    if (!m_core || !widget)
        return;
    auto *sheet = qt_extension<QDesignerPropertySheetExtension *>(m_core->extensionManager(), widget);
    const int index = sheet ? sheet->indexOf(name) : -1;
    if (index < 0) {
        widget->setProperty(name.toUtf8().constData(), value);
        return;
    }
    sheet->setProperty(index, value);
    sheet->setChanged(index, true); // what is set here is meant to be saved
}

void FormWindowHost::setUndoableProperty(QWidget *widget, const QString &name, const QVariant &value)
{
    if (QDesignerFormWindowInterface *f = widget ? QDesignerFormWindowInterface::findFormWindow(widget) : nullptr)
        setCursorProperty(f, widget, name, value);
}

bool FormWindowHost::setCursorProperty(QDesignerFormWindowInterface *form, QWidget *widget, const QString &name,
                                       const QVariant &value)
{
    if (!form || !widget)
        return false;
    auto *sheet = qt_extension<QDesignerPropertySheetExtension *>(form->core()->extensionManager(), widget);
    const int index = sheet ? sheet->indexOf(name) : -1;
    if (index < 0)
        return false;
    // The cursor takes only properties the sheet shows; a hidden one is shown just while it records.
    const bool hidden = !sheet->isVisible(index);
    if (!hidden) {
        form->cursor()->setWidgetProperty(widget, name, value);
        return true;
    }
    sheet->setVisible(index, true);
    ++showingHidden;
    form->cursor()->setWidgetProperty(widget, name, value);
    sheet->setVisible(index, false);
    auto *host = qobject_cast<FormWindowHost *>(DesignerHost::instance());
    if (--showingHidden == 0 && refreshWaiting && host)
        host->refreshEditors(refreshWaiting.data());
    return true;
}

void FormWindowHost::beginCommand(QWidget *formWindow, const QString &description)
{
    if (QDesignerFormWindowInterface *f = form(formWindow))
        f->beginCommand(description);
}

void FormWindowHost::endCommand(QWidget *formWindow)
{
    if (QDesignerFormWindowInterface *f = form(formWindow))
        f->endCommand();
}

void FormWindowHost::clearSelection(QWidget *formWindow)
{
    if (QDesignerFormWindowInterface *f = form(formWindow))
        f->clearSelection();
}

void FormWindowHost::selectWidget(QWidget *formWindow, QWidget *widget, bool select)
{
    if (QDesignerFormWindowInterface *f = form(formWindow))
        f->selectWidget(widget, select);
}

bool FormWindowHost::isSelected(QWidget *formWindow, QWidget *widget) const
{
    QDesignerFormWindowInterface *f = form(formWindow);
    return f && widget && f->cursor()->isWidgetSelected(widget);
}

void FormWindowHost::manageWidget(QWidget *formWindow, QWidget *widget)
{
    QDesignerFormWindowInterface *f = form(formWindow);
    if (!f || !widget || f->isManaged(widget))
        return;
    f->ensureUniqueObjectName(widget);
    f->manageWidget(widget);
}

void FormWindowHost::unmanageWidget(QWidget *formWindow, QWidget *widget)
{
    QDesignerFormWindowInterface *f = form(formWindow);
    if (f && widget && f->isManaged(widget))
        f->unmanageWidget(widget);
}

bool FormWindowHost::isManaged(QWidget *formWindow, QWidget *widget) const
{
    QDesignerFormWindowInterface *f = form(formWindow);
    return f && widget && f->isManaged(widget);
}

void FormWindowHost::ensureUniqueName(QWidget *formWindow, QWidget *widget)
{
    if (QDesignerFormWindowInterface *f = form(formWindow); f && widget)
        f->ensureUniqueObjectName(widget);
}

void FormWindowHost::pushCommand(QWidget *formWindow, QUndoCommand *command)
{
    if (QDesignerFormWindowInterface *f = form(formWindow))
        f->commandHistory()->push(command);
    else
        DesignerHost::pushCommand(formWindow, command);
}

void FormWindowHost::markDirty(QWidget *formWindow)
{
    if (QDesignerFormWindowInterface *f = form(formWindow))
        f->setDirty(true);
}

void FormWindowHost::refreshEditors(QWidget *formWindow)
{
    QDesignerFormWindowInterface *f = form(formWindow);
    if (!f || !m_core)
        return;
    if (showingHidden > 0) {
        refreshWaiting = f;
        return;
    }
    refreshWaiting = nullptr;
    if (QDesignerObjectInspectorInterface *inspector = m_core->objectInspector())
        inspector->setFormWindow(f);
    if (QDesignerActionEditorInterface *actions = m_core->actionEditor())
        actions->setFormWindow(f);
    if (QDesignerPropertyEditorInterface *editor = m_core->propertyEditor()) {
        // Show the object again so that the editor re-reads its property sheet.
        QObject *shown = editor->object();
        editor->setObject(shown ? shown : f->mainContainer());
    }
    f->emitSelectionChanged();
    connectPropertyEditor();
}

QObject *FormWindowHost::propertyEditorObject() const
{
    QDesignerPropertyEditorInterface *editor = m_core ? m_core->propertyEditor() : nullptr;
    return editor ? editor->object() : nullptr;
}

void FormWindowHost::exposeItemToEditor(QTableWidgetItem *item) const
{
    // Designer's item editor reads and writes an item's texts through these roles only.
    using qdesigner_internal::PropertySheetStringValue;
    const std::pair<int, int> roles[] = {{Qt::DisplayRole, Qt::DisplayPropertyRole},
                                         {Qt::ToolTipRole, Qt::ToolTipPropertyRole},
                                         {Qt::StatusTipRole, Qt::StatusTipPropertyRole},
                                         {Qt::WhatsThisRole, Qt::WhatsThisPropertyRole}};
    for (const auto &[plain, designer] : roles) {
        const QVariant value = item->data(plain);
        if (value.userType() == QMetaType::QString && !value.toString().isEmpty())
            item->setData(designer, QVariant::fromValue(PropertySheetStringValue(value.toString())));
    }
}

QWidget *FormWindowHost::previewForm(const QWidget *widget) const
{
    PreviewSession *session = PreviewSession::of(widget);
    return session ? session->form() : nullptr;
}
