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
        const QStringList parts = target.split(QLatin1Char(':'));
        bool ok = false;
        const int index = parts.value(1).toInt(&ok);
        auto *tabs = form->findChild<TabWidget *>(parts.value(0));
        if (parts.size() != 2 || !ok || !tabs || index < 0 || index >= tabs->tabsCount()) {
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

void SoftKeyPages::showPage()
{
    auto *key = qobject_cast<QWidget *>(sender());
    if (!key)
        return;
    const QStringList parts = key->property("showTab").toString().split(QLatin1Char(':'));
    if (auto *tabs = key->window()->findChild<TabWidget *>(parts.value(0)))
        tabs->setCurrentIndex(parts.value(1).toInt());
}
