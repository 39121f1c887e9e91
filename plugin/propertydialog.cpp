#include "propertydialog.h"

#include "designerpictures.h"
#include "fieldbinder.h"
#include "formvaluereader.h"
#include "formwindowhost.h"
#include "macrotree.h"
#include "previewplacer.h"
#include "statustipdisplay.h"

#include <QtDesigner/QDesignerFormEditorInterface>
#include <QtDesigner/QDesignerFormWindowCursorInterface>
#include <QtDesigner/QDesignerFormWindowInterface>

#include <QAbstractItemView>
#include <QDialogButtonBox>
#include <QMetaProperty>
#include <QPushButton>
#include <QUndoStack>

namespace {

// Properties the preview does not take from the widget: its place and visibility are the dialog's.
bool isCopied(const QMetaProperty &property)
{
    static const QList<QByteArray> placement{"geometry", "pos", "size", "visible", "x", "y"};
    return property.isReadable() && property.isWritable() && property.isStored()
           && !placement.contains(QByteArray(property.name()));
}

} // namespace

PropertyDialog::PropertyDialog(QWidget *widget, QWidget *preview, QWidget *parent)
    : QDialog(parent)
    , m_widget(widget)
    , m_preview(preview)
{
    setModal(true);
    setSizeGripEnabled(true);
    // Read before the preview changes: an unchanged instance supplies the class defaults.
    m_reader = std::make_unique<FormValueReader>(widget, preview);
    if (m_preview)
        m_preview->setParent(this); // owned from now on, placed when shown
    if (m_preview && m_widget)
        copyWidgetToPreview();
    connect(this, &QDialog::finished, this, &QObject::deleteLater);
}

PropertyDialog::~PropertyDialog() = default;

void PropertyDialog::copyWidgetToPreview()
{
    // The preview starts as a copy of the widget, so that it shows the widget before any edit.
    const QMetaObject *meta = m_widget->metaObject();
    for (int i = 0; i < meta->propertyCount(); ++i) {
        const QMetaProperty property = meta->property(i);
        if (!isCopied(property) || m_preview->metaObject()->indexOfProperty(property.name()) != i)
            continue;
        const QVariant value = m_reader->value(property.name());
        if (value.isValid())
            m_preview->setProperty(property.name(), value);
    }
    m_preview->resize(m_widget->size());
}

void PropertyDialog::setVisible(bool visible)
{
    if (visible && !m_bound)
        bind();
    QDialog::setVisible(visible);
}

void PropertyDialog::bind()
{
    if (m_bound)
        return;
    m_bound = true;

    QDesignerFormWindowInterface *form =
        m_widget ? QDesignerFormWindowInterface::findFormWindow(m_widget.data()) : nullptr;
    const QString projectFolder = DesignerHost::instance() && form ? DesignerHost::instance()->projectPath(form)
                                                                   : QString();
    m_binder = new FieldBinder(m_widget, m_preview, m_reader.get(), projectFolder, this);
    m_binder->bind(this);

    if (m_preview) {
        QWidget *area = findChild<QWidget *>(QStringLiteral("previewWidget"));
        new PreviewPlacer(area ? area : this, m_preview);
    }
    if (QWidget *area = findChild<QWidget *>(QStringLiteral("descriptionWidget"))) {
        m_tips = new StatusTipDisplay(this, area);
        m_tips->showTip(StatusTipDisplay::statusTipOf(focusWidget(), this));
    }
    if (auto *buttons = findChild<QDialogButtonBox *>(QStringLiteral("buttonBox"))) {
        connect(buttons, &QDialogButtonBox::accepted, this, &PropertyDialog::accept, Qt::UniqueConnection);
        connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject, Qt::UniqueConnection);
    }
    if (m_widget)
        MacroTree::fill(findChild<QAbstractItemView *>(QStringLiteral("macroTreeView")), m_widget->metaObject());
}

void PropertyDialog::accept()
{
    // A layout may have connected its button box to accept() already: commit once.
    if (m_accepting || result() == QDialog::Accepted)
        return;
    m_accepting = true;
    QDesignerFormWindowInterface *form =
        m_widget ? QDesignerFormWindowInterface::findFormWindow(m_widget.data()) : nullptr;
    if (form)
        form->beginCommand(tr("Edit properties of '%1'").arg(m_widget->objectName()));
    commitChanges();
    QDialog::accept(); // companion editors commit on accepted(), inside the same undo step
    if (form) {
        form->endCommand();
        dropEmptyCommand();
    }
    m_accepting = false;
}

void PropertyDialog::commitChanges()
{
    if (!m_widget || !m_binder)
        return;
    QDesignerFormWindowInterface *form = QDesignerFormWindowInterface::findFormWindow(m_widget.data());
    for (const QByteArray &name : m_binder->changedProperties()) {
        QVariant value = m_binder->value(name);
        if (!form) { // no Designer around: the widget takes the value itself
            m_widget->setProperty(name.constData(), value);
            continue;
        }
        const QString picture = m_binder->picturePath(name);
        if (!picture.isEmpty()) {
            value = value.userType() == QMetaType::QIcon ? DesignerPictures::iconValue(form->core(), picture)
                                                         : DesignerPictures::pixmapValue(form->core(), picture);
            if (!value.isValid()) {
                qWarning("PropertyDialog: Designer could not load the picture %s", qPrintable(picture));
                continue;
            }
        }
        FormWindowHost::setCursorProperty(form, m_widget, QString::fromLatin1(name), value);
    }
}

void PropertyDialog::dropEmptyCommand()
{
    // Ok without a change would leave an empty undo step and a form marked modified.
    QDesignerFormWindowInterface *form = QDesignerFormWindowInterface::findFormWindow(m_widget.data());
    QUndoStack *stack = form ? form->commandHistory() : nullptr;
    if (!stack || stack->index() == 0)
        return;
    const QUndoCommand *top = stack->command(stack->index() - 1);
    if (top && top->childCount() == 0) {
        const_cast<QUndoCommand *>(top)->setObsolete(true);
        stack->undo();
    }
}

QDialog *createPropertyDialog(QWidget *widget, QWidget *preview)
{
    QDesignerFormWindowInterface *form = widget ? QDesignerFormWindowInterface::findFormWindow(widget) : nullptr;
    QWidget *parent = nullptr;
    if (form && form->core()) {
        FormWindowHost::installFor(form->core());
        parent = form->core()->topLevel();
    }
    if (!parent && widget)
        parent = widget->window();
    return new PropertyDialog(widget, preview, parent);
}
