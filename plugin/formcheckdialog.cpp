#include "formcheckdialog.h"

#include "formchecker.h"
#include "norvointerface_z3.h"
#include "wordlibraryfile.h"

#include <QtDesigner/QDesignerFormWindowInterface>

#include <QBuffer>
#include <QDialogButtonBox>
#include <QFileInfo>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {
enum Column { LineColumn, WidgetColumn, MessageColumn };

// The form's widget of that name, of that class where two share the name (a finding of its own).
QWidget *widgetNamed(QDesignerFormWindowInterface *form, const QString &name, const QString &className)
{
    QWidget *top = form->mainContainer();
    if (!top || name.isEmpty())
        return nullptr;
    if (top->objectName() == name)
        return top;
    const QList<QWidget *> named = top->findChildren<QWidget *>(name);
    for (QWidget *w : named) {
        if (className == QLatin1String(w->metaObject()->className()))
            return w;
    }
    return named.value(0);
}
} // namespace

FormCheckDialog::FormCheckDialog(QDesignerFormWindowInterface *form)
    : QDialog(form, Qt::Dialog)
    , m_form(form)
    , m_list(new QTreeWidget(this))
    , m_summary(new QLabel(this))
{
    setObjectName(QStringLiteral("FormCheckDialog"));
    setAttribute(Qt::WA_DeleteOnClose);
    m_list->setObjectName(QStringLiteral("findingsList"));
    m_list->setRootIsDecorated(false);
    m_list->setHeaderLabels({tr("Line"), tr("Widget"), tr("Message")});
    m_list->header()->setSectionResizeMode(MessageColumn, QHeaderView::Stretch);
    m_list->setWordWrap(true);
    connect(m_list, &QTreeWidget::itemDoubleClicked, this, &FormCheckDialog::selectWidgetOf);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    QPushButton *again = buttons->addButton(tr("Check Again"), QDialogButtonBox::ActionRole);
    connect(again, &QPushButton::clicked, this, &FormCheckDialog::check);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_summary);
    layout->addWidget(m_list);
    layout->addWidget(buttons);
    resize(720, 360);
}

FormCheckDialog *FormCheckDialog::showFor(QDesignerFormWindowInterface *form)
{
    if (!form)
        return nullptr;
    auto *dialog = form->findChild<FormCheckDialog *>(QString(), Qt::FindDirectChildrenOnly);
    if (!dialog)
        dialog = new FormCheckDialog(form);
    dialog->check();
    dialog->show();
    dialog->raise();
    dialog->activateWindow();
    return dialog;
}

void FormCheckDialog::check()
{
    m_list->clear();
    if (!m_form)
        return;
    const QString fileName = m_form->fileName();
    setWindowTitle(tr("Check Form - %1").arg(fileName.isEmpty() ? m_form->mainContainer()->objectName()
                                                                 : QFileInfo(fileName).fileName()));
    // The panel's library is the one beside the form; an unsaved form has none.
    WordLibraryFile library;
    QStringList notes;
    if (library.readBesideForm(fileName)) {
        for (const QString &problem : library.problems())
            notes << tr("Word library %1: %2").arg(WordLibraryFile::besideForm(fileName), problem);
    }
    QBuffer contents;
    contents.setData(m_form->contents().toUtf8());
    contents.open(QIODevice::ReadOnly);
    FormChecker checker({NORVOInterface_Z3::initialization()->maxChannelCount(), library.words()});
    QList<FormFinding> findings;
    if (!checker.check(&contents, &findings))
        notes.prepend(tr("Not a form the panel can read: %1").arg(checker.problem()));
    for (const FormFinding &finding : findings) {
        auto *item = new QTreeWidgetItem(m_list);
        item->setData(LineColumn, Qt::DisplayRole, finding.line);
        item->setText(WidgetColumn, QStringLiteral("%1 (%2)").arg(finding.objectName, finding.className));
        item->setData(WidgetColumn, Qt::UserRole, finding.objectName);
        item->setData(WidgetColumn, Qt::UserRole + 1, finding.className);
        item->setText(MessageColumn, finding.message);
        item->setToolTip(MessageColumn, finding.message);
    }
    m_list->resizeColumnToContents(LineColumn);
    m_list->resizeColumnToContents(WidgetColumn);
    notes.prepend(findings.isEmpty() ? tr("The panel finds nothing to correct in this form.")
                                     : (findings.size() == 1 ? tr("1 finding") : tr("%1 findings").arg(findings.size()))
                                         + tr("; double-click one to select its widget."));
    m_summary->setText(notes.join(QLatin1Char('\n')));
}

void FormCheckDialog::selectWidgetOf(QTreeWidgetItem *item)
{
    QWidget *widget = m_form && item ? widgetNamed(m_form, item->data(WidgetColumn, Qt::UserRole).toString(),
                                                           item->data(WidgetColumn, Qt::UserRole + 1).toString()) : nullptr;
    if (!widget)
        return;
    m_form->clearSelection(false);
    m_form->selectWidget(widget, true);
}
