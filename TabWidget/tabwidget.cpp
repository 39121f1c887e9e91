#include "tabwidget.h"

#include "containedcontrols.h"
#include "designerchildren.h"
#include "designercommit.h"
#include "designerhost.h"
#include "enumvalue.h"
#include "norvointerface_z3.h"
#include "qeltapp.h"
#include "tabwidget_p.h"
#include "textinfocodec.h"
#include "widgetfactory.h"

#include <QEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionTabWidgetFrame>
#include <QTabBar>

HMI_REGISTER_WIDGET(TabWidget)

TabWidget::TabWidget(QWidget *parent)
    : QWidget(parent)
    , d(new Private(this))
{
    d->tabBar->setObjectName(QStringLiteral("tabwidget_tabbar"));
    d->tabBar->setDrawBase(false);
    d->background = palette().color(QPalette::Base);
    d->selected = palette().color(QPalette::Base);
    NORVOInterface_Z3 *hmi = NORVOInterface_Z3::init();
    d->language.setCurrent(hmi->currentLanguageIndex());
    NORVOInterface_Z3::setWidgetDefaultFont(this);
    connect(d->tabBar, &QTabBar::currentChanged, this, &TabWidget::showTab);
    setSizePolicy(QSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding, QSizePolicy::TabWidget));
    setFocusPolicy(Qt::TabFocus);
    setFocusProxy(d->tabBar);
    if (d->formWindow()) {
        d->tabBar->setMovable(true);
        connect(d->tabBar, &QTabBar::tabMoved, this, &TabWidget::tabMoved);
        d->tabBar->installEventFilter(this);
    }
    d->textRegistration = std::make_unique<DesignerTextRegistration>(this, this);
}

TabWidget::~TabWidget() = default;

QStringList TabWidget::tabTexts() const { return d->lists.texts; }

void TabWidget::setTabTexts(const QStringList &texts)
{
    d->lists.texts = texts;
    d->showTexts();
}

QStringList TabWidget::tabTextColors() const { return d->lists.colors; }

void TabWidget::setTabTextColors(const QStringList &colors)
{
    d->lists.colors = colors;
    d->showTexts();
}

QStringList TabWidget::operationalAuthoritys() const { return d->lists.authorityTexts; }

void TabWidget::setOperationalAuthoritys(const QStringList &authorities)
{
    d->lists.setAuthorityTexts(authorities);
    d->applyAuthority();
}

int TabWidget::tabsCount() const { return d->tabsCount; }

void TabWidget::setTabsCount(int count)
{
    if (count < 2 || count > MaxTabs)
        return;
    if (d->needsInit) {
        d->tabsCount = count;
        return;
    }
    const bool bound = d->binding.isAttached() && d->dataClass != None;
    if (count < d->tabsCount) {
        for (int i = d->tabsCount - 1; i >= count; --i) {
            const int position = d->barPosition(i);
            if (position >= 0) {
                d->tabBar->removeTab(position);
                d->stack->removeAt(position);
            }
            d->lists.remove(i);
            if (QWidget *page = findTab(TabLists::tag(i))) {
                page->hide();
                DesignerChildren::release(this, page);
            }
        }
    } else {
        d->building = true;
        for (int i = d->tabsCount; i < count; ++i) {
            d->lists.insert(i);
            if (bound && !d->isPresent(i)) {
                // Made now so that the form keeps it, shown when the controller asks for it.
                if (!findTab(TabLists::tag(i)))
                    d->insertTabAt(d->tabBar->count(), i);
                continue;
            }
            d->insertTabAt(d->tabBar->count(), i);
        }
        d->building = false;
    }
    d->tabsCount = count;
    DesignerChildren::refresh(this);
    d->showTexts();
    d->applyAuthority();
    d->setUpLayout(false);
}

int TabWidget::currentIndex() const { return d->currentIndex; }

void TabWidget::setCurrentIndex(int index)
{
    if (d->tabBar->count() == 0) {
        d->currentIndex = index;
        return;
    }
    if (index < 0 || index >= d->tabBar->count())
        return;
    // A tab the operator may not click is refused from every other route too (soft keys, slots).
    if (index != d->tabBar->currentIndex() && !d->tabBar->isTabEnabled(index)) {
        d->refuse(index);
        return;
    }
    d->currentIndex = index;
    d->tabBar->setCurrentIndex(index);
}

QString TabWidget::currentTabText() const { return d->tabBar->tabText(d->tabBar->currentIndex()); }

void TabWidget::setCurrentTabText(const QString &text)
{
    const int position = d->tabBar->currentIndex();
    if (position < 0)
        return;
    d->tabBar->setTabText(position, text);
    const int tab = Private::tagNumber(d->stack->widget(position)) - 1;
    if (tab >= 0 && tab < d->lists.texts.size())
        d->lists.texts[tab] = text;
    // The shown language's entry follows, so that the text stays when the texts are shown again.
    const int language = d->language.current();
    if (tab >= 0 && !d->lists.records.isEmpty() && tab < d->lists.records.size() && !d->lists.records[tab].isEmpty()) {
        QStringList &texts = d->lists.records[tab].first().texts;
        while (texts.size() <= language)
            texts.append(QString());
        texts[language] = text;
    } else if (tab >= 0 && tab * TabLists::Languages + language < d->lists.multiTexts.size()) {
        d->lists.multiTexts[tab * TabLists::Languages + language] = text;
    }
}

QColor TabWidget::currentTabTextColor() const { return d->tabBar->tabTextColor(d->tabBar->currentIndex()); }

void TabWidget::setCurrentTabTextColor(const QColor &color)
{
    const int position = d->tabBar->currentIndex();
    if (position < 0)
        return;
    d->tabBar->setTabTextColor(position, color);
    const int tab = Private::tagNumber(d->stack->widget(position)) - 1;
    if (tab >= 0 && tab < d->lists.colors.size())
        d->lists.colors[tab] = color.name();
}

int TabWidget::getCurrentTabOperationalAuthority() const { return d->lists.authorityOf(d->currentIndex); }

void TabWidget::setCurrentTabOperationalAuthority(int authority)
{
    const int at = d->currentIndex;
    if (at < 0 || at >= d->lists.authorities.size() || at >= d->lists.authorityTexts.size())
        return;
    d->lists.authorities[at] = authority;
    d->lists.authorityTexts[at] = QString::number(authority);
    d->applyAuthority();
}

QColor TabWidget::backgroundColor() const { return d->background; }

void TabWidget::setBackgroundColor(const QColor &color)
{
    if (color == d->background)
        return;
    d->applyStyleSheet(color, d->selected);
    d->background = color;
}

QColor TabWidget::selectedTabColor() const { return d->selected; }

void TabWidget::setSelectedTabColor(const QColor &color)
{
    if (color == d->selected)
        return;
    d->applyStyleSheet(d->background, color);
    d->selected = color;
}

void TabWidget::Private::applyStyleSheet(const QColor &pane, const QColor &selectedTab)
{
    // Qt keeps the tab bar's rules of the previous sheet when the sheet changes again before the
    // widget is first shown (as a form sets both colours); an empty sheet in between drops them.
    if (!q->styleSheet().isEmpty())
        q->setStyleSheet(QString());
    q->setStyleSheet(QStringLiteral("TabWidget::pane{border-width:1px;background-color: rgb(%1, %2, %3);}"
                                    "QTabBar::tab:selected {background-color: rgb(%4, %5, %6);}")
                         .arg(pane.red())
                         .arg(pane.green())
                         .arg(pane.blue())
                         .arg(selectedTab.red())
                         .arg(selectedTab.green())
                         .arg(selectedTab.blue()));
}

int TabWidget::comId() const { return d->binding.comId(); }
void TabWidget::setComId(int comId) { d->binding.setComId(comId); }
int TabWidget::channel() const { return d->binding.channel(); }
void TabWidget::setChannel(int channel) { d->binding.setChannel(channel); }
TabWidget::DataClass TabWidget::dataClass() const { return d->dataClass; }
void TabWidget::setDataClass(DataClass dataClass) { assignEnum(this, "dataClass", d->dataClass, dataClass); }
int TabWidget::address() const { return d->address; }
void TabWidget::setAddress(int address) { d->address = address; }
TabWidget::UserLevel TabWidget::lowestEnablingUserLevel() const { return d->enablingLevel; }
void TabWidget::setLowestEnablingUserLevel(UserLevel level) { assignEnum(this, "lowestEnablingUserLevel", d->enablingLevel, level); }
TabWidget::UserLevel TabWidget::lowestVisibleUserLevel() const { return d->visibleLevel; }
void TabWidget::setLowestVisibleUserLevel(UserLevel level) { assignEnum(this, "lowestVisibleUserLevel", d->visibleLevel, level); }
QStringList TabWidget::multiTextList() const { return d->lists.multiTexts; }

void TabWidget::setMultiTextList(const QStringList &texts)
{
    d->lists.multiTexts = texts;
    d->showTexts();
}

TabWidget::Language TabWidget::language() const { return d->languageProperty; }
void TabWidget::setLanguage(Language language) { assignEnum(this, "language", d->languageProperty, language); }
QByteArray TabWidget::textInfoBuffer() const { return d->textInfoBuffer; }

void TabWidget::SetTextInfoBuffer(const QByteArray &buffer)
{
    d->textInfoBuffer = buffer;
    d->decodeRecords();
    d->showTexts();
}

QTabBar *TabWidget::tabBar() const { return d->tabBar; }
StackedWidget *TabWidget::stackedWidget() const { return d->stack; }
int TabWidget::visibleMask() const { return d->visibleMask; }

QWidget *TabWidget::findTab(const QString &tag) const
{
    for (QWidget *child : findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly)) {
        if (child->statusTip() == tag)
            return child;
    }
    return nullptr;
}

void TabWidget::insertTab(int index)
{
    if (index < 0 || index > d->tabBar->count())
        return;
    d->insertTabAt(index, index);
    DesignerChildren::refresh(this);
}

void TabWidget::removeTab(int index)
{
    if (index < 0 || index >= d->tabBar->count())
        return;
    QWidget *page = d->stack->widget(index);
    d->tabBar->removeTab(index);
    d->stack->removeAt(index);
    d->lists.remove(index);
    DesignerChildren::release(this, page);
    DesignerChildren::refresh(this);
}

void TabWidget::showTab(int index)
{
    if (index < 0 || index >= d->stack->count())
        return;
    if (index != d->tabBar->currentIndex()) {
        setCurrentIndex(index); // called by name: the tab decides, and the bar calls back
        return;
    }
    const int shown = d->currentIndex;
    if (!d->building && !d->tabBar->isTabEnabled(index) && shown != index && shown >= 0
        && shown < d->tabBar->count() && d->tabBar->isTabEnabled(shown)) {
        // The bar was turned to a tab the operator may not use by a call on the bar itself: it turns back.
        const QSignalBlocker blocker(d->tabBar);
        d->tabBar->setCurrentIndex(shown);
        d->showTabPage(shown);
        d->refuse(index);
        return;
    }
    d->showTabPage(index);
    if (DesignerHost *host = DesignerHost::instance(); host && d->formWindow() && !d->building) {
        // The property editor then shows the tab widget with its new current page.
        host->clearSelection(d->formWindow());
        host->selectWidget(d->formWindow(), this, true);
        host->markDirty(d->formWindow());
    }
    d->setUpLayout(false);
    emit currentChanged(index);
}

void TabWidget::tabMoved(int from, int to)
{
    if (from == to || from < 0 || to < 0 || from >= d->stack->count() || to >= d->stack->count())
        return;
    const TabLists before = d->lists;
    const TabPageOrder::Order orderBefore = d->order();
    if (!d->dragging) {
        d->listsBeforeDrag = before;
        d->orderBeforeDrag = orderBefore;
    }
    d->stack->move(from, to);
    // Every tab is present in Designer: a tab's entries are at its position, and move with it.
    d->lists.move(from, to);
    d->renumberPages();
    // The bar has moved its tabs already, the current one with them (and may have shown another
    // page meanwhile).
    d->showTabPage(d->tabBar->currentIndex());
    if (d->dragging)
        d->movedInDrag = true;
    else
        d->commitMove(d->listsBeforeDrag, d->orderBeforeDrag);
}

void TabWidget::updateAuthority(int level)
{
    if (level < 0 || level > ControllerBinding::MaxAuthority)
        return;
    d->operatorLevel = level;
    d->applyAuthority();
}

void TabWidget::updateData(int index, int value)
{
    if (index != 0)
        return;
    d->visibleMask = value;
    const int current = d->currentIndex; // taking the tabs down moves the bar's current tab
    d->building = true;
    while (d->tabBar->count() > 0)
        d->tabBar->removeTab(d->tabBar->count() - 1);
    d->stack->clear();
    for (int tab = 0; tab < d->tabsCount; ++tab) {
        if (d->isPresent(tab)) {
            d->insertTabAt(d->tabBar->count(), tab);
        } else if (QWidget *page = findTab(TabLists::tag(tab))) {
            page->hide();
        }
    }
    d->building = false;
    d->showTexts();
    d->currentIndex = current < d->tabBar->count() ? current : 0;
    if (d->currentIndex < d->tabBar->count()) {
        d->tabBar->setCurrentIndex(d->currentIndex);
        d->showTabPage(d->currentIndex);
    }
    d->applyAuthority();
    d->setUpLayout(false);
}

void TabWidget::updateLanguage(int index)
{
    if (index < 0 || (!d->language.isPending() && index == d->language.current()))
        return;
    d->language.markApplied(index);
    refreshlanguage(index);
}

void TabWidget::refreshlanguage(int)
{
    if (!d->lists.records.isEmpty()) {
        d->decodeRecords();
        for (int tab = 0; tab < d->lists.records.size() && tab < d->lists.texts.size(); ++tab)
            d->lists.texts[tab] = d->lists.textOf(tab, d->language.current());
    }
    d->showTexts();
}

void TabWidget::upDatePluginTextfromWordLib()
{
    for (QList<TextData> &slot : d->lists.records) {
        if (!slot.isEmpty() && slot.first().wordLibId != -1 && !LanguageState::refreshFromWordLibrary(slot.first()))
            slot.first().texts.clear();
    }
    d->showTexts();
}

void TabWidget::getPluginNameAndListType(QString &name, int &listType)
{
    name = objectName();
    listType = 2;
}

void TabWidget::getPluginNameAndTransText(QList<QList<TextData>> &texts)
{
    texts.clear();
    const int languages = NORVOInterface_Z3::initialization()->getSystemLanguageCount();
    for (int tab = 0; tab < d->tabsCount; ++tab)
        texts.append(QList<TextData>{d->lists.recordOf(tab, languages)});
}

void TabWidget::setPluginTransText(QList<QStringList> &texts)
{
    // Translations go into the records; a tab widget without records gets them first.
    if (d->lists.records.isEmpty())
        getPluginNameAndTransText(d->lists.records);
    int end = int(d->lists.records.size());
    if (texts.size() < end) {
        end = int(texts.size());
        qDebug("TabWidget::setPluginTransText transText.size()=%d i_end=%d", int(texts.size()), end);
    }
    for (int tab = 0; tab < end; ++tab) {
        if (!d->lists.records[tab].isEmpty())
            d->lists.records[tab].first().texts = texts.at(tab);
    }
    const QByteArray buffer = d->encodeRecords(d->lists);
    if (!DesignerCommit::setProperty(this, "textInfoBuffer", buffer))
        SetTextInfoBuffer(buffer);
    d->showTexts();
}

void TabWidget::setQeltAppAndFormPtr(void *app, void *form)
{
    d->binding.attach(app, form);
    // The controls on the pages bind to the same application.
    ContainedControls::attach(findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly), app, form);
}

bool TabWidget::event(QEvent *event)
{
    switch (event->type()) {
    case QEvent::Polish: {
        const bool handled = QWidget::event(event);
        if (d->needsInit) {
            d->init();
            d->lists.fillMultiTexts();
        }
        return handled;
    }
    case QEvent::LayoutRequest:
        d->setUpLayout(false);
        break;
    case QEvent::Resize:
        d->setUpLayout(false);
        break;
    case QEvent::Show:
        d->setUpLayout(true);
        break;
    case QEvent::FontChange:
        d->tabBar->setFont(font());
        break;
    default:
        break;
    }
    return QWidget::event(event);
}

bool TabWidget::eventFilter(QObject *watched, QEvent *event)
{
    // A drag of a tab in Designer is recorded as one step when the mouse lets go of it.
    if (watched == d->tabBar && event->type() == QEvent::MouseButtonPress) {
        d->dragging = true;
        d->movedInDrag = false;
        d->listsBeforeDrag = d->lists;
        d->orderBeforeDrag = d->order();
    } else if (watched == d->tabBar && event->type() == QEvent::MouseButtonRelease && d->dragging) {
        const bool handled = QWidget::eventFilter(watched, event);
        d->dragging = false;
        if (d->movedInDrag)
            d->commitMove(d->listsBeforeDrag, d->orderBeforeDrag);
        d->movedInDrag = false;
        return handled;
    }
    return QWidget::eventFilter(watched, event);
}

// Ctrl+Tab and Ctrl+Shift+Tab from anywhere inside turn to the next or previous tab the operator may
// use, as in a standard tab widget.
void TabWidget::keyPressEvent(QKeyEvent *event)
{
    const bool tab = event->key() == Qt::Key_Tab || event->key() == Qt::Key_Backtab;
    const int count = d->tabBar->count();
    if (!tab || !(event->modifiers() & Qt::ControlModifier) || count < 2) {
        event->ignore();
        return;
    }
    const bool back = event->key() == Qt::Key_Backtab || (event->modifiers() & Qt::ShiftModifier);
    int position = d->tabBar->currentIndex();
    for (int step = 1; step < count; ++step) {
        position = (position + (back ? count - 1 : 1)) % count;
        if (d->tabBar->isTabEnabled(position)) {
            setCurrentIndex(position);
            break;
        }
    }
}

void TabWidget::Private::initStyleOption(QStyleOptionTabWidgetFrame *option) const
{
    option->initFrom(q);
    option->lineWidth = q->style()->pixelMetric(QStyle::PM_DefaultFrameWidth, nullptr, q);
    option->shape = tabBar->shape();
    if (tabBar->isVisibleTo(q)) {
        const QSize hint = tabBar->sizeHint();
        option->tabBarSize = QSize(qMin(hint.width(), q->width()), hint.height());
        const int current = tabBar->currentIndex();
        if (current >= 0)
            option->selectedTabRect = tabBar->tabRect(current).translated(tabBar->pos());
    }
}

void TabWidget::Private::setUpLayout(bool onlyCheck)
{
    if (onlyCheck && !layoutPending)
        return;
    if (!q->isVisible()) {
        layoutPending = true;
        return;
    }
    layoutPending = false;
    QStyleOptionTabWidgetFrame option;
    initStyleOption(&option);
    QStyle *style = q->style();
    tabBar->setGeometry(style->subElementRect(QStyle::SE_TabWidgetTabBar, &option, q));
    stack->setGeometry(style->subElementRect(QStyle::SE_TabWidgetTabContents, &option, q));
    panelRect = style->subElementRect(QStyle::SE_TabWidgetTabPane, &option, q);
    stack->placeCurrent();
    if (!onlyCheck)
        q->update();
    q->updateGeometry();
}

void TabWidget::paintEvent(QPaintEvent *)
{
    QStyleOptionTabWidgetFrame option;
    d->initStyleOption(&option);
    option.rect = d->panelRect;
    QPainter painter(this);
    style()->drawPrimitive(QStyle::PE_FrameTabWidget, &option, &painter, this);
}
