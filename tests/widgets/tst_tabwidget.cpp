// The tab widget at run time: tab counts and the lists that follow them, authority per tab, tabs a
// controller word makes present, the current tab, moves and the renumbered pages, languages from
// records and from the language texts, its style sheet, the pane and selected-tab colours on screen,
// and lists a form gives in the wrong length.
#include "controlprobe.h"
#include "norvointerface_z3.h"
#include "recordingqeltapp.h"
#include "tabwidget.h"
#include "textinfocodec.h"

#include <QDialog>
#include <QTabBar>
#include <QtTest>

namespace {

// n copies of text (Qt 5's QStringList has no such constructor).
QStringList repeated(int n, const QString &text)
{
    QStringList list;
    for (int i = 0; i < n; ++i)
        list << text;
    return list;
}

// A tab widget on a shown form, built (first polish) with count tabs.
struct Form
{
    QDialog dialog;
    TabWidget *tabs = new TabWidget(&dialog);
    explicit Form(int count = 2, const std::function<void(TabWidget *)> &before = nullptr)
    {
        dialog.resize(400, 300);
        tabs->setGeometry(0, 0, 400, 300);
        tabs->setTabsCount(count);
        if (before)
            before(tabs);
        dialog.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    }
    QStringList barTexts() const
    {
        QStringList texts;
        for (int i = 0; i < tabs->tabBar()->count(); ++i)
            texts << tabs->tabBar()->tabText(i);
        return texts;
    }
    QStringList pageTags() const
    {
        QStringList tags;
        for (int i = 0; i < tabs->stackedWidget()->count(); ++i)
            tags << tabs->stackedWidget()->widget(i)->statusTip();
        return tags;
    }
};

TextData record(const QStringList &texts, const QList<QFont> &fonts = {})
{
    TextData r;
    r.texts = texts;
    r.fonts = fonts;
    return r;
}

} // namespace

class TstTabWidget : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { NORVOInterface_Z3::initialization()->resetToDefaults(); }

    void counts_data()
    {
        QTest::addColumn<QList<int>>("counts"); // set one after the other after the build
        QTest::addColumn<QStringList>("texts"); QTest::addColumn<QStringList>("tags");
        QTest::newRow("below 2 ignored") << QList<int>{1, 0, -4} << QStringList{"tab_1", "tab_2"} << QStringList{"tab_1", "tab_2"};
        QTest::newRow("past the limit ignored") << QList<int>{101} << QStringList{"tab_1", "tab_2"} << QStringList{"tab_1", "tab_2"};
        QTest::newRow("grow") << QList<int>{4} << QStringList{"tab_1", "tab_2", "tab_3", "tab_4"}
                              << QStringList{"tab_1", "tab_2", "tab_3", "tab_4"};
        QTest::newRow("grow then shrink") << QList<int>{5, 3} << QStringList{"tab_1", "tab_2", "tab_3"}
                                          << QStringList{"tab_1", "tab_2", "tab_3"};
        QTest::newRow("shrink then grow again") << QList<int>{5, 2, 3} << QStringList{"tab_1", "tab_2", "tab_3"}
                                                << QStringList{"tab_1", "tab_2", "tab_3"};
    }
    void counts()
    {
        QFETCH(QList<int>, counts); QFETCH(QStringList, texts); QFETCH(QStringList, tags);
        Form f;
        for (int n : counts)
            f.tabs->setTabsCount(n);
        QCOMPARE(f.tabs->tabsCount(), int(texts.size()));
        QCOMPARE(f.barTexts(), texts);
        QCOMPARE(f.tabs->tabTexts(), texts);
        QCOMPARE(f.pageTags(), tags);
        QCOMPARE(f.tabs->tabTextColors().size(), texts.size());
        QCOMPARE(f.tabs->operationalAuthoritys().size(), texts.size());
        QCOMPARE(f.tabs->multiTextList().size(), texts.size() * 10);
        // Removed tabs' pages stay hidden children; a page comes back with its own widgets.
        for (int i = int(texts.size()); i < 5; ++i) {
            if (QWidget *page = f.tabs->findTab(QStringLiteral("tab_%1").arg(i + 1)))
                QVERIFY(page->isHidden());
        }
    }

    void authority_data()
    {
        QTest::addColumn<QStringList>("thresholds"); QTest::addColumn<int>("level");
        QTest::addColumn<QList<bool>>("enabled");
        QTest::newRow("level 7") << QStringList{"0", "5"} << 7 << QList<bool>{true, false};
        QTest::newRow("level 4") << QStringList{"3", "5"} << 4 << QList<bool>{false, true};
        QTest::newRow("level 100: ignored") << QStringList{"0", "5"} << 100 << QList<bool>{true, true};
        QTest::newRow("not numbers: always") << QStringList{"x", ""} << 9 << QList<bool>{true, true};
    }
    void authority()
    {
        QFETCH(QStringList, thresholds); QFETCH(int, level); QFETCH(QList<bool>, enabled);
        Form f;
        f.tabs->setOperationalAuthoritys(thresholds);
        f.tabs->updateAuthority(level);
        QCOMPARE((QList<bool>{f.tabs->tabBar()->isTabEnabled(0), f.tabs->tabBar()->isTabEnabled(1)}), enabled);
        // Thresholds follow the pages, not the positions.
        f.tabs->tabBar()->moveTab(1, 0);
        f.tabs->tabMoved(1, 0);
        QCOMPARE(f.tabs->operationalAuthoritys(), (QStringList{thresholds.at(1), thresholds.at(0)}));
        QCOMPARE(f.tabs->tabBar()->isTabEnabled(0), enabled.at(1));
    }

    void controllerDrivenTabs_data()
    {
        QTest::addColumn<int>("count"); QTest::addColumn<int>("value"); QTest::addColumn<QStringList>("tabs");
        QTest::newRow("5: tabs 1 and 3") << 3 << 5 << QStringList{"tab_1", "tab_3"};
        QTest::newRow("0: none") << 3 << 0 << QStringList{};
        QTest::newRow("-1: all") << 3 << -1 << QStringList{"tab_1", "tab_2", "tab_3"};
        QTest::newRow("past 32 tabs always") << 34 << 1 << QStringList{"tab_1", "tab_33", "tab_34"};
    }
    void controllerDrivenTabs()
    {
        QFETCH(int, count); QFETCH(int, value); QFETCH(QStringList, tabs);
        RecordingQeltApp app;
        app.memory().setWord(0, 0, 0, 77, value);
        QDialog dialog;
        dialog.setProperty("QeltApp", norvo_v0::QeltApp::toVariant(&app));
        auto *widget = new TabWidget(&dialog);
        widget->setTabsCount(count);
        widget->setDataClass(TabWidget::User);
        widget->setAddress(77);
        widget->setOperationalAuthoritys(repeated(count, QStringLiteral("0")) << QStringLiteral("9"));
        dialog.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dialog));
        // Registered at the first polish; no tab until the first word.
        QCOMPARE(app.registrations().size(), 1);
        QCOMPARE(app.registrations().first().arguments(),
                 (QVariantList{0, 0, 0, 0, 77, -1, 0, 1, 10, 10, 0, 0, false}));
        QCOMPARE(widget->tabBar()->count(), 0);
        widget->updateAuthority(5);
        widget->setCurrentIndex(2);
        QCOMPARE(app.deliver(widget, 0, value), 1);
        QStringList shown;
        for (int i = 0; i < widget->tabBar()->count(); ++i)
            shown << widget->tabBar()->tabText(i);
        QCOMPARE(shown, tabs);
        for (int i = 0; i < count; ++i) {
            const QString tag = QStringLiteral("tab_%1").arg(i + 1);
            if (!tabs.contains(tag))
                QVERIFY(!widget->findTab(tag) || widget->findTab(tag)->isHidden());
        }
        // The current tab stays when it is still there, else the first; authority reaches new tabs.
        QCOMPARE(widget->currentIndex(), tabs.size() > 2 ? 2 : 0);
        widget->setCurrentIndex(1); // the operator's choice outlasts the same word delivered again
        QCOMPARE(app.deliver(widget, 0, value), 1);
        QCOMPARE(widget->currentIndex(), tabs.size() > 1 ? 1 : 0);
        if (count == 3 && value == -1)
            QVERIFY(widget->tabBar()->isTabEnabled(2));
    }

    void currentIndex_data()
    {
        QTest::addColumn<int>("before"); // set before the build
        QTest::addColumn<int>("after");  // set after it
        QTest::addColumn<int>("current");
        QTest::newRow("kept for the build") << 1 << -5 << 1;
        QTest::newRow("out of range before the build") << 7 << -1 << 0;
        QTest::newRow("set after") << 0 << 2 << 2;
        QTest::newRow("out of range after") << 0 << 3 << 0;
    }
    void currentIndex()
    {
        QFETCH(int, before); QFETCH(int, after); QFETCH(int, current);
        Form f(3, [&](TabWidget *t) { t->setCurrentIndex(before); });
        QSignalSpy changed(f.tabs, &TabWidget::currentChanged);
        if (after >= -1)
            f.tabs->setCurrentIndex(after);
        QCOMPARE(f.tabs->tabBar()->currentIndex(), current);
        QCOMPARE(f.tabs->stackedWidget()->currentIndex(), current);
        QVERIFY(f.tabs->stackedWidget()->currentWidget()->isVisible());
        if (after != current && after >= 0 && after < 3)
            QCOMPARE(changed.count(), 1);
    }

    void movesRenumberPages()
    {
        Form f(3);
        auto *onThird = new QWidget(f.tabs->findTab(QStringLiteral("tab_3")));
        f.tabs->setTabTextColors({"#000000", "#ff0000", "#00ff00"});
        f.tabs->setOperationalAuthoritys({"0", "2", "3"});
        f.tabs->setCurrentIndex(1);
        f.tabs->tabBar()->moveTab(2, 0);
        f.tabs->tabMoved(2, 0);
        QCOMPARE(f.pageTags(), (QStringList{"tab_1", "tab_2", "tab_3"}));
        QCOMPARE(onThird->parentWidget()->statusTip(), QStringLiteral("tab_1"));
        QCOMPARE(onThird->parentWidget()->objectName(), QStringLiteral("tab_1"));
        QCOMPARE(f.tabs->tabTexts(), (QStringList{"tab_3", "tab_1", "tab_2"}));
        QCOMPARE(f.tabs->tabTextColors(), (QStringList{"#00ff00", "#000000", "#ff0000"}));
        QCOMPARE(f.tabs->operationalAuthoritys(), (QStringList{"3", "0", "2"}));
        QCOMPARE(f.tabs->multiTextList().mid(0, 10), repeated(10, QStringLiteral("tab_3")));
        QCOMPARE(f.tabs->currentIndex(), 2); // the same page stays current
        QCOMPARE(f.tabs->stackedWidget()->currentWidget()->statusTip(), QStringLiteral("tab_3"));
    }

    void languages_data()
    {
        QTest::addColumn<bool>("records");
        QTest::newRow("from records") << true;
        QTest::newRow("from the language texts") << false;
    }
    void languages()
    {
        QFETCH(bool, records);
        NORVOInterface_Z3::initialization()->setSystemLanguages({"Sans", "Sans"});
        QFont big(QStringLiteral("Sans"), 17);
        Form f(2, [&](TabWidget *t) {
            if (records) {
                t->SetTextInfoBuffer(TextInfoCodec::encodeSlots(
                    {{record({"Axes", "Achsen"}, {QFont(), big})}, {record({"Spindle", "Spindel"})}}));
            } else {
                QStringList multi;
                for (const char *text : {"Axes", "Achsen"})
                    multi << QString::fromLatin1(text);
                multi << repeated(8, QStringLiteral("Axes"));
                for (const char *text : {"Spindle", "Spindel"})
                    multi << QString::fromLatin1(text);
                multi << repeated(8, QStringLiteral("Spindle"));
                t->setMultiTextList(multi);
            }
        });
        f.tabs->updateLanguage(0);
        QCOMPARE(f.barTexts(), (QStringList{"Axes", "Spindle"}));
        f.tabs->updateLanguage(1);
        QCOMPARE(f.barTexts(), (QStringList{"Achsen", "Spindel"}));
        if (records) {
            QCOMPARE(f.tabs->font().pointSize(), 17);
            QCOMPARE(f.tabs->tabTexts(), (QStringList{"Achsen", "Spindel"}));
        }
        // Translations come back per tab.
        QList<QList<TextData>> texts;
        f.tabs->getPluginNameAndTransText(texts);
        QCOMPARE(texts.size(), 2);
        QCOMPARE(texts.at(1).first().texts, (QStringList{"Spindle", "Spindel"}));
        QList<QStringList> translated{{"Axes", "Achsen!"}};
        QTest::ignoreMessage(QtDebugMsg, "TabWidget::setPluginTransText transText.size()=1 i_end=1");
        f.tabs->setPluginTransText(translated);
        QCOMPARE(f.tabs->tabBar()->tabText(0), QStringLiteral("Achsen!"));
        QList<QList<TextData>> stored;
        QVERIFY(TextInfoCodec::decodeSlots(f.tabs->textInfoBuffer(), &stored, {100, 1, 1 << 20}));
        QCOMPARE(stored.size(), 2);
    }

    void styleSheetOnlyOnChange()
    {
        TabWidget t;
        t.setBackgroundColor(QColor(10, 20, 30));
        QCOMPARE(t.styleSheet(), QStringLiteral("TabWidget::pane{border-width:1px;background-color: rgb(10, 20, 30);}"
                                                "QTabBar::tab:selected {background-color: rgb(%1, %2, %3);}")
                                     .arg(t.selectedTabColor().red())
                                     .arg(t.selectedTabColor().green())
                                     .arg(t.selectedTabColor().blue()));
        t.setStyleSheet(QString());
        t.setBackgroundColor(QColor(10, 20, 30));
        QCOMPARE(t.styleSheet(), QString()); // the same colour again writes nothing
        t.setSelectedTabColor(QColor(200, 100, 50));
        QVERIFY(t.styleSheet().endsWith(QLatin1String("background-color: rgb(200, 100, 50);}")));
    }

    void paneAndSelectedTabColours()
    {
        Form f(2, [](TabWidget *t) {
            t->setBackgroundColor(QColor(0, 0, 255));
            t->setSelectedTabColor(QColor(255, 0, 0));
        });
        const QImage image = f.tabs->grab().toImage();
        const QRect tab = f.tabs->tabBar()->tabRect(0).translated(f.tabs->tabBar()->pos());
        QCOMPARE(image.pixelColor(tab.center().x(), tab.top() + 3), QColor(255, 0, 0));
        const QRect stack = f.tabs->stackedWidget()->geometry();
        QCOMPARE(image.pixelColor(stack.center()), QColor(0, 0, 255));
    }

    void foreignPageInTheStack()
    {
        StackedWidget stack;
        QWidget page;
        QWidget other;
        stack.insertWidget(0, &page);
        stack.setCurrentIndex(0);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(
            QStringLiteral("^StackedWidget::setCurrentWidget: Widget 0x[0-9a-f]+ not contained in stack$")));
        stack.setCurrentWidget(&other);
        QCOMPARE(stack.currentWidget(), &page);
        stack.setCurrentIndex(5);
        QCOMPARE(stack.currentIndex(), 0);
    }

    void applicationReachesThePages()
    {
        RecordingQeltApp app;
        Form f(2);
        auto *probe = new ControlProbe(f.tabs->findTab(QStringLiteral("tab_2")));
        auto *deeper = new ControlProbe(new QWidget(f.tabs->findTab(QStringLiteral("tab_1"))));
        f.tabs->setQeltAppAndFormPtr(&app, &f.dialog);
        QCOMPARE(probe->app, static_cast<void *>(&app));
        QCOMPARE(deeper->app, nullptr); // only the pages' own controls; containers pass it on
    }

    void listsOfTheWrongLength()
    {
        Form f(3, [](TabWidget *t) {
            t->setTabTextColors({"#ff0000"});
            t->setOperationalAuthoritys({"1", "2", "3", "4", "5"});
            t->setTabTexts({"One"});
        });
        QCOMPARE(f.tabs->tabTextColors(), repeated(3, QStringLiteral("#000000")));
        QCOMPARE(f.tabs->operationalAuthoritys(), repeated(3, QStringLiteral("0")));
        QCOMPARE(f.barTexts(), (QStringList{"One", "tab_2", "tab_3"}));
        // A page with a tag past the lists, and one without a tag, are read within them.
        f.tabs->findTab(QStringLiteral("tab_3"))->setStatusTip(QStringLiteral("tab_99"));
        f.tabs->stackedWidget()->widget(1)->setStatusTip(QStringLiteral("page"));
        f.tabs->updateAuthority(5);
        QVERIFY(f.tabs->tabBar()->isTabEnabled(2));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("textInfoBuffer")));
        f.tabs->SetTextInfoBuffer("zz");
        QCOMPARE(f.barTexts(), (QStringList{"One", "tab_2", "tab_3"}));
        f.tabs->setCurrentTabOperationalAuthority(4);
        QCOMPARE(f.tabs->operationalAuthoritys(), (QStringList{"4", "0", "0"}));
        // The operator's level 5 is too low for it now: the bar leaves that tab.
        QVERIFY(!f.tabs->tabBar()->isTabEnabled(0));
        QCOMPARE(f.tabs->currentIndex(), 1);
    }
};

QTEST_MAIN(TstTabWidget)
#include "tst_tabwidget.moc"
