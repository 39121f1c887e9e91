#include "tabwidget_p.h"

#include "bufferwarning.h"
#include "designerchildren.h"
#include "designercommit.h"
#include "designerhost.h"
#include "norvointerface_z3.h"
#include "qeltapp.h"
#include "textinfocodec.h"

#include <QStyle>
#include <QStyleOptionTabWidgetFrame>
#include <QTabBar>

TabWidget::Private::Private(TabWidget *q)
    : q(q)
    , tabBar(new QTabBar(q))
    , stack(new StackedWidget(q))
    , binding(q, q)
{
}

QWidget *TabWidget::Private::formWindow() const
{
    return DesignerHost::formWindowOf(q);
}

void TabWidget::Private::init()
{
    if (!needsInit)
        return;
    building = true;
    if (!binding.isAttached())
        binding.attachToForm();
    decodeRecords();
    lists.repair(tabsCount);
    if (binding.isAttached() && dataClass != None) {
        binding.registerData(0, dataClass, address);
        // The tabs come with the controller's first word.
        for (QWidget *child : q->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly)) {
            if (!child->statusTip().isEmpty())
                child->hide();
        }
    } else {
        for (int i = 0; i < tabsCount; ++i)
            insertTabAt(i, i);
        showTexts();
        if (currentIndex >= 0 && currentIndex < tabBar->count())
            tabBar->setCurrentIndex(currentIndex);
        showTabPage(tabBar->currentIndex());
    }
    if (DesignerHost *host = DesignerHost::instance(); host && formWindow()) {
        for (const char *name : {"tabTexts", "tabTextColors", "operationalAuthoritys", "currentIndex"})
            host->markPropertyChanged(q, QString::fromLatin1(name));
        DesignerChildren::refresh(q);
    }
    needsInit = false;
    building = false;
    applyAuthority();
}

void TabWidget::Private::showTabPage(int position)
{
    if (position < 0 || position >= stack->count())
        return;
    stack->setCurrentIndex(position);
    currentIndex = position;
}

QWidget *TabWidget::Private::insertTabAt(int position, int tab)
{
    const QString tag = TabLists::tag(tab);
    QWidget *page = q->findTab(tag);
    if (page && stack->indexOf(page) >= 0)
        return page; // a tab has one page, shown once
    if (!page) {
        page = new QWidget(q);
        page->setStatusTip(tag);
        page->setObjectName(tag);
        DesignerChildren::adopt(q, page);
    } else {
        DesignerChildren::readopt(q, page);
    }
    const bool wasBuilding = building;
    building = true; // the bar's first tab makes itself current
    tabBar->insertTab(position, tag);
    building = wasBuilding;
    stack->insertWidget(position, page);
    return page;
}

int TabWidget::Private::barPosition(int tab) const
{
    if (!isPresent(tab))
        return -1;
    int position = 0;
    for (int i = 0; i < tab; ++i)
        position += isPresent(i) ? 1 : 0;
    return position < tabBar->count() ? position : -1;
}

void TabWidget::Private::showTexts()
{
    const int current = language.current();
    for (int tab = 0; tab < tabsCount; ++tab) {
        const int position = barPosition(tab);
        if (position < 0)
            continue;
        tabBar->setTabText(position, lists.textOf(tab, current));
        if (tabBar->isTabEnabled(position))
            tabBar->setTabTextColor(position, QColor(lists.colorOf(tab)));
    }
    if (const auto font = LanguageState::fontAt(languageFonts, current))
        q->setFont(*font);
}

void TabWidget::Private::applyAuthority()
{
    if (operatorLevel < 0)
        return;
    for (int position = 0; position < tabBar->count(); ++position) {
        const int tab = tabAt(position);
        const int threshold = lists.authorityOf(tab);
        const bool enabled = threshold == 0 || threshold >= operatorLevel;
        tabBar->setTabEnabled(position, enabled);
        // A tab's own text colour would hide that it is out of the operator's reach.
        tabBar->setTabTextColor(position, enabled ? QColor(lists.colorOf(tab))
                                                  : q->palette().color(QPalette::Disabled, QPalette::WindowText));
    }
}

int TabWidget::Private::tabAt(int position) const
{
    // By the page's tag, so that a tab keeps its threshold wherever it shows. A page without a valid
    // tag (added by hand) takes its position's threshold, and none past the list (0).
    const int number = tagNumber(stack->widget(position));
    return number > 0 ? number - 1 : position;
}

void TabWidget::Private::refuse(int position) const
{
    NORVOInterface_Z3::initialization()->inadequateOperationAuthority(lists.authorityOf(tabAt(position)));
}

int TabWidget::Private::tagNumber(const QWidget *page)
{
    if (!page || !page->statusTip().startsWith(QLatin1String("tab_")))
        return 0;
    bool ok = false;
    const int number = page->statusTip().mid(4).toInt(&ok);
    return ok && number > 0 ? number : 0;
}

bool TabWidget::Private::decodeRecords()
{
    QList<QList<TextData>> records;
    if (!textInfoBuffer.isEmpty()) {
        TextInfoLimits limits;
        limits.slotCount = MaxTabs;
        limits.recordCount = 1;
        if (!TextInfoCodec::decodeSlots(textInfoBuffer, &records, limits)) {
            warnUnreadableBuffer(q, "textInfoBuffer");
            records.clear();
        }
    }
    for (QList<TextData> &slot : records) {
        if (!slot.isEmpty())
            LanguageState::refreshFromWordLibrary(slot.first());
    }
    lists.records = records;
    languageFonts = records.isEmpty() || records.first().isEmpty() ? QList<QFont>() : records.first().first().fonts;
    return !records.isEmpty();
}

QByteArray TabWidget::Private::encodeRecords(const TabLists &from) const
{
    return from.records.isEmpty() ? QByteArray() : TextInfoCodec::encodeSlots(from.records);
}

TabPageOrder::Order TabWidget::Private::order() const
{
    TabPageOrder::Order pages;
    for (int i = 0; i < stack->count(); ++i)
        pages.append(stack->widget(i));
    return pages;
}

void TabWidget::Private::renumberPages()
{
    // In two passes, so that no page takes a name another still has.
    for (int i = 0; i < stack->count(); ++i) {
        if (QWidget *page = stack->widget(i))
            page->setObjectName(TabLists::tag(i) + QStringLiteral("_moving"));
    }
    DesignerHost *host = DesignerHost::instance();
    QWidget *fw = formWindow();
    for (int i = 0; i < stack->count(); ++i) {
        if (QWidget *page = stack->widget(i)) {
            page->setStatusTip(TabLists::tag(i));
            page->setObjectName(TabLists::tag(i));
            // Another tab widget of the form may have pages of these names.
            if (host && fw)
                host->ensureUniqueName(fw, page);
        }
    }
    DesignerChildren::refresh(q);
}

void TabWidget::Private::commitMove(const TabLists &before, const TabPageOrder::Order &orderBefore)
{
    DesignerHost *host = DesignerHost::instance();
    QWidget *fw = formWindow();
    if (!host || !fw)
        return;
    // The property changes take their old values from the widget: it holds the old lists while
    // they are recorded, and the new ones from the recording on.
    const TabLists after = lists;
    const QByteArray recordsAfter = encodeRecords(after);
    lists = before;
    textInfoBuffer = encodeRecords(before);
    host->beginCommand(fw, TabWidget::tr("Move tab of '%1'").arg(q->objectName()));
    host->pushCommand(fw, new TabPageOrder(q, orderBefore, order(), &Private::applyOrder));
    DesignerCommit::setProperty(q, "tabTexts", after.texts);
    DesignerCommit::setProperty(q, "tabTextColors", after.colors);
    DesignerCommit::setProperty(q, "operationalAuthoritys", after.authorityTexts);
    DesignerCommit::setProperty(q, "multiTextList", after.multiTexts);
    DesignerCommit::setProperty(q, "textInfoBuffer", recordsAfter);
    host->endCommand(fw);
    lists = after; // what the properties now hold, records included
    showTexts();
}

void TabWidget::Private::applyOrder(TabWidget *widget, const TabPageOrder::Order &order)
{
    Private *d = widget->d.get();
    QWidget *current = d->stack->currentWidget();
    const QSignalBlocker blocker(d->tabBar);
    for (int target = 0; target < order.size(); ++target) {
        const int at = d->stack->indexOf(order.at(target));
        if (at < 0 || at == target)
            continue;
        d->stack->move(at, target);
        d->tabBar->moveTab(at, target);
    }
    d->renumberPages();
    const int position = d->stack->indexOf(current);
    if (position >= 0) {
        d->tabBar->setCurrentIndex(position);
        d->showTabPage(position);
    }
    d->showTexts();
    d->applyAuthority();
}
