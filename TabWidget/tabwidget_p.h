#ifndef TABWIDGET_P_H
#define TABWIDGET_P_H

// The state of a tab widget and the steps that several of its operations share.
#include "tabwidget.h"

#include "controllerbinding.h"
#include "designertextregistration.h"
#include "languagestate.h"
#include "tablists.h"
#include "tabpageorder.h"

#include <QPointer>
#include <QRect>

#include <memory>

class QStyleOptionTabWidgetFrame;
class QTabBar;

class TabWidget::Private
{
public:
    explicit Private(TabWidget *q);

    TabWidget *const q;
    QTabBar *tabBar;
    StackedWidget *stack;
    ControllerBinding binding;
    TabLists lists;
    QByteArray textInfoBuffer;
    QRect panelRect;
    bool layoutPending = true;
    int tabsCount = 2;
    int currentIndex = 0;
    bool needsInit = true;
    QColor background;
    QColor selected;
    int address = 0;
    DataClass dataClass = None;
    Language languageProperty = language_0;
    int visibleMask = -1;
    UserLevel enablingLevel = NoLevel;
    UserLevel visibleLevel = NoLevel;
    QList<QFont> languageFonts;
    LanguageState language;
    int operatorLevel = -1; // the last authority the application gave, applied to tabs made later
    bool building = false;  // tabs are being made by the widget itself, not chosen by a user
    std::unique_ptr<DesignerTextRegistration> textRegistration;
    // A tab drag in Designer: the state before it, recorded as one undo step when it ends.
    bool dragging = false;
    bool movedInDrag = false;
    TabLists listsBeforeDrag;
    TabPageOrder::Order orderBeforeDrag;

    QWidget *formWindow() const;
    void init();
    QWidget *insertTabAt(int position, int tab);
    void showTabPage(int position);
    void setUpLayout(bool onlyCheck);
    void initStyleOption(QStyleOptionTabWidgetFrame *option) const;
    void applyStyleSheet(const QColor &pane, const QColor &selectedTab);
    bool isPresent(int tab) const { return tab > 31 || ((quint32(visibleMask) >> tab) & 1u) != 0; }
    // Where tab shows in the bar, -1 while it is not present.
    int barPosition(int tab) const;
    // The tab texts and colours of the current language on the present tabs.
    void showTexts();
    void applyAuthority();
    // The tab (its lists' index) shown at a bar position.
    int tabAt(int position) const;
    // Tells the operator that the tab at a bar position needs a stronger authority.
    void refuse(int position) const;
    bool decodeRecords();
    QByteArray encodeRecords(const TabLists &lists) const;
    static int tagNumber(const QWidget *page);
    TabPageOrder::Order order() const;
    void renumberPages();
    void commitMove(const TabLists &before, const TabPageOrder::Order &orderBefore);
    static void applyOrder(TabWidget *widget, const TabPageOrder::Order &order);
};

#endif
