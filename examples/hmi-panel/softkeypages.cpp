#include "softkeypages.h"

#include "tabwidget.h"

#include <QVariant>
#include <QWidget>

QStringList SoftKeyPages::setUp(QWidget *form)
{
    QStringList problems;
    auto *pages = new SoftKeyPages(form);
    for (QWidget *key : form->findChildren<QWidget *>()) {
        const QString target = key->property("showTab").toString();
        if (target.isEmpty())
            continue;
        QString name;
        int index = 0;
        const bool ok = parseTarget(target, &name, &index);
        auto *tabs = ok ? form->findChild<TabWidget *>(name) : nullptr;
        if (!tabs || index >= tabs->tabsCount()) {
            problems << QStringLiteral("key \"%1\": \"showTab\" names no page: %2").arg(key->objectName(), target);
            continue;
        }
        if (key->metaObject()->indexOfSignal("clicked()") < 0) {
            problems << QStringLiteral("key \"%1\" cannot be clicked").arg(key->objectName());
            continue;
        }
        connect(key, SIGNAL(clicked()), pages, SLOT(showPage()));
    }
    return problems;
}

bool SoftKeyPages::parseTarget(const QString &target, QString *tabWidget, int *page)
{
    const QStringList parts = target.split(QLatin1Char(':'));
    bool ok = false;
    *page = parts.value(1).toInt(&ok);
    *tabWidget = parts.value(0);
    return parts.size() == 2 && ok && *page >= 0 && !tabWidget->isEmpty();
}

void SoftKeyPages::showPage()
{
    auto *key = qobject_cast<QWidget *>(sender());
    if (!key)
        return;
    const QStringList parts = key->property("showTab").toString().split(QLatin1Char(':'));
    if (auto *tabs = key->window()->findChild<TabWidget *>(parts.value(0)))
        tabs->setCurrentIndex(parts.value(1).toInt());
}
