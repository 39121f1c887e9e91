#include "macrotree.h"

#include <QHeaderView>
#include <QMetaMethod>
#include <QStandardItemModel>
#include <QTreeView>
#include <QTreeWidget>
#include <QWidget>

namespace {

QStringList publicSlotsOf(const QMetaObject *meta)
{
    QStringList signatures;
    for (int i = meta->methodOffset(); i < meta->methodCount(); ++i) {
        const QMetaMethod method = meta->method(i);
        if (method.methodType() == QMetaMethod::Slot && method.access() == QMetaMethod::Public)
            signatures.append(QString::fromLatin1(method.methodSignature()));
    }
    return signatures;
}

} // namespace

void MacroTree::fill(QAbstractItemView *view, const QMetaObject *meta)
{
    if (!view || !meta)
        return;
    const QString header = QObject::tr("Macro");
    auto *tree = qobject_cast<QTreeWidget *>(view);
    QStandardItemModel *model = nullptr;
    if (tree) {
        tree->clear();
        tree->setHeaderLabels({header});
    } else {
        model = new QStandardItemModel(view);
        model->setHorizontalHeaderLabels({header});
    }
    // QObject's own slots (deleteLater) are no macros.
    for (const QMetaObject *m = meta; m && m != &QObject::staticMetaObject; m = m->superClass()) {
        const QStringList signatures = publicSlotsOf(m);
        if (signatures.isEmpty())
            continue;
        const QString className = QString::fromLatin1(m->className());
        if (tree) {
            auto *branch = new QTreeWidgetItem(tree, {className});
            for (const QString &signature : signatures)
                new QTreeWidgetItem(branch, {signature});
        } else {
            auto *branch = new QStandardItem(className);
            branch->setEditable(false);
            for (const QString &signature : signatures) {
                auto *item = new QStandardItem(signature);
                item->setEditable(false);
                branch->appendRow(item);
            }
            model->appendRow(branch);
        }
    }
    if (model)
        view->setModel(model);
    if (auto *treeView = qobject_cast<QTreeView *>(view))
        treeView->expandToDepth(0);
}
