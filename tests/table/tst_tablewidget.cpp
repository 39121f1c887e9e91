// The parameter table on a recording application: what its cells' binding texts register and show,
// how updates reach cells, columns and the search state, the texts per language, spans, the formatting
// slots, bounded counts and properties, and that only the rows on screen are loaded and registered.
#include "celllanguagetexts.h"
#include "norvointerface_z3.h"
#include "tabletestsupport.h"
#include "textinfocodec.h"

#include "textrecord.h"

#include <QHeaderView>
#include <QStyledItemDelegate>
#include <QScrollBar>

#include <limits>

using namespace TableTest;

class TstTableWidget : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { NORVOInterface_Z3::initialization()->resetToDefaults(); }

    // A cell's binding text: what it registers, the value it shows, and what the accessors say of it
    // once current.
    void cellRegistration_data()
    {
        QTest::addColumn<QString>("binding"); QTest::addColumn<int>("word");
        // index, link, channel, class, address, bit type, bit index, size, radix, width, decimals, reserved, as text
        QTest::addColumn<QString>("registered"); QTest::addColumn<QString>("shown");
        QTest::addColumn<QString>("accessors"); // link, channel, class or type, address, bit
        const QString none = QStringLiteral("-1 -1 -1 -1 -1");
        QTest::newRow("value, short form") << "1@0@100@8@2@0@9999" << 12345 << "1 0 0 0 100 -1 0 4 10 8 2 0 true" << "123.45" << "0 1 0 100 -1";
        QTest::newRow("value, long form in hex") << "2@3@7@4@0@0@100@2@1@3" << 255 << "1 3 1 3 7 -1 0 2 16 4 0 0 true" << "00FF" << "3 2 3 7 -1";
        QTest::newRow("radix index 3 is binary") << "1@3@7@6@0@0@1@2@3@0@9" << 5 << "1 0 0 3 7 -1 0 2 2 6 0 0 true" << "000101" << "0 1 3 7 -1";
        QTest::newRow("radix index past the four: decimal") << "1@1@5@6@1@0@10@4@7@0" << -15 << "1 0 0 1 5 -1 0 4 10 6 1 0 true" << "-1.5"
                                                            << "0 1 1 5 -1";
        QTest::newRow("nine fields: no long form") << "2@3@7@6@0@0@1@2@1" << 5 << "1 0 1 3 7 -1 0 4 10 6 0 0 true" << "5" << "0 2 3 7 -1";
        QTest::newRow("fields not numbers read as 0") << "x@0@5@8@y@0" << 7 << "1 0 0 0 5 -1 0 4 10 8 0 0 true" << "7" << "0 0 0 5 -1";
        QTest::newRow("channel at the smallest int is the first") << "-2147483648@0@1@1@0@0@1" << 1 << "1 0 0 0 1 -1 0 4 10 1 0 0 true" << "1"
                                                                  << "0 -2147483648 0 1 -1";
        QTest::newRow("bit") << "bit@2@1@30@5@0" << 0 << "1 0 1 0 30 1 5 1 10 10 0 0 false" << "before" << "0 2 1 30 5";
        QTest::newRow("bit on a link, more fields") << "bit@1@9@40017@3@2@x@y" << 0 << "1 2 0 0 40017 9 3 1 10 10 0 0 false" << "before"
                                                    << "2 1 9 40017 3";
        QTest::newRow("bit channel at the smallest int") << "bit@-2147483648@1@30@5@0" << 0 << "1 0 0 0 30 1 5 1 10 10 0 0 false" << "before"
                                                         << "0 -2147483648 1 30 5";
        QTest::newRow("five fields: text") << "1@0@100@8@2" << 0 << "" << "before" << none;
        QTest::newRow("bit with five fields: text") << "bit@1@1@1@1" << 0 << "" << "before" << none;
        QTest::newRow("language texts: text") << "multiTexts=Feed##!&*_Vorschub" << 0 << "" << "Feed" << none;
    }
    void cellRegistration()
    {
        QFETCH(QString, binding); QFETCH(int, word); QFETCH(QString, registered); QFETCH(QString, shown); QFETCH(QString, accessors);
        Panel p(2, 2, contents(2, 2, [&](int r, int c) { return r == 0 && c == 1 ? binding : QString(); },
                                [](QTableWidgetItem *item, int, int) { item->setText(QStringLiteral("before")); }));
        const QStringList fields = registered.split(QLatin1Char(' '), Qt::SkipEmptyParts);
        if (!fields.isEmpty())
            p.app.memory().setWord(fields.at(1).toInt(), fields.at(2).toInt(), fields.at(3).toInt(), fields.at(4).toInt(), word);
        p.show();
        QStringList got;
        for (const UiRegistration &r : p.app.registrations()) {
            for (const QVariant &argument : r.arguments())
                got << argument.toString();
            QCOMPARE(r.callback, static_cast<norvo_v0::UpdateVariableInterface *>(p.table));
        }
        QCOMPARE(got.join(QLatin1Char(' ')), registered);
        QCOMPARE(p.table->item(0, 1)->text(), shown);
        // Loading is bracketed so no update arrives while the registrations are rebuilt.
        const QStringList names = p.app.callNames();
        QVERIFY(names.indexOf(QStringLiteral("stopUpdateUI")) < names.indexOf(QStringLiteral("removeUIVariable")));
        QCOMPARE(names.last(), QStringLiteral("startUpdateUI"));
        p.table->setCurrentCell(0, 1);
        QCOMPARE(QStringLiteral("%1 %2 %3 %4 %5").arg(p.table->getVariableComId()).arg(p.table->getVariableChannel()).arg(p.table->getVariableClass())
                     .arg(p.table->getVariableAddress()).arg(p.table->getVariableBit()), accessors);
        p.table->setCurrentItem(nullptr);
        QCOMPARE(p.table->getVariableAddress(), -1);
    }

    void onlyRowsOnScreenAreLoadedAndRegistered()
    {
        const int rows = 100000;
        Panel p(rows, 8, contents(rows, 8, [](int r, int c) { return QStringLiteral("1@0@%1@8@0@0@9").arg(r * 8 + c); }));
        p.show();
        const int screen = p.visibleRows();
        QVERIFY(screen > 3);
        QCOMPARE(p.registeredRows().size(), screen + 1);
        QVERIFY(p.table->loadedRowCount() <= 3 * screen + 3);
        QVERIFY(!p.table->horizontalHeader()->testAttribute(Qt::WA_StyleSheet)); // the grid colour polished nothing
        p.table->item(1, 2)->setToolTip(QStringLiteral("set by the application"));
        p.table->verticalScrollBar()->setValue(99000);
        const int first = p.table->rowAt(0);
        QVERIFY(first >= 98990);
        const QList<int> registered = p.registeredRows();
        QCOMPARE(registered.size(), p.visibleRows() + 1);
        QCOMPARE(registered.first(), first);
        QVERIFY(p.table->loadedRowCount() <= 7 * screen);
        // A step reads the values of the row that came on screen alone; the others show theirs.
        p.app.clearCalls();
        p.table->verticalScrollBar()->triggerAction(QAbstractSlider::SliderSingleStepSub);
        QCOMPARE(p.app.callNames().count(QStringLiteral("getData")), 8);
        QCOMPARE(p.table->item(first, 3)->whatsThis(), QStringLiteral("1@0@%1@8@0@0@9").arg(first * 8 + 3));
        QVERIFY(!p.table->item(50000, 0));
        // Rows far from the screen are dropped; what was set in them comes back with them.
        QVERIFY(!p.table->item(1, 2));
        p.table->verticalScrollBar()->setValue(0);
        QVERIFY(!p.table->item(first, 3));
        QCOMPARE(p.table->item(1, 2)->toolTip(), QStringLiteral("set by the application"));
    }

    // Updates by index: a cell's value or text, nothing past the table or at an unused index; an
    // address for cell (0, 1), a bit whose address the controller moves (the value less field 10),
    // registers that cell there, on the current channel; the search methods' words (read from their
    // addresses first): a default that is no method is the first, the default's bit is always offered.
    void updates_data()
    {
        QTest::addColumn<int>("index"); QTest::addColumn<int>("value"); QTest::addColumn<QString>("text"); // sent as text when not empty
        QTest::addColumn<QString>("cell10"); QTest::addColumn<QString>("cell11"); // row 1 afterwards
        QTest::addColumn<QString>("search"); // default method, offered methods in binary
        QTest::addColumn<QVariantList>("registered"); // the registration the update made
        const QString value = QStringLiteral("1@0@1@8@2@0@9"), bit = QStringLiteral("bit@1@0@4@0@0"), read = QStringLiteral("3 1010");
        QTest::newRow("text to a value cell") << 2 << 0 << "12.50" << "12.50" << bit << read << QVariantList();
        QTest::newRow("bit on") << 3 << 7 << "" << value << "1" << read << QVariantList();
        QTest::newRow("bit off") << 3 << 0 << "" << value << "0" << read << QVariantList();
        QTest::newRow("past the table") << 99 << 1 << "" << value << bit << read << QVariantList();
        QTest::newRow("unused negative") << -1000 << 1 << "" << value << bit << read << QVariantList();
        QTest::newRow("moved bit address") << -10000 - 1 << 105 << "" << value << bit << read
                                           << QVariantList{1, 1, norvo_v0::QeltApp::CurrentChannel, 0, 100, 9, 3, 1, 10, 10, 0, 0, false};
        QTest::newRow("address for a cell without a binding") << -10000 - 0 << 7 << "" << value << bit << read << QVariantList();
        QTest::newRow("default search method past the methods") << -1001 << 9 << "" << value << bit << "0 11" << QVariantList();
        QTest::newRow("offered search methods") << -1002 << 0b100 << "" << value << bit << "3 1100" << QVariantList();
    }
    void updates()
    {
        QFETCH(int, index); QFETCH(int, value); QFETCH(QString, text); QFETCH(QString, cell10); QFETCH(QString, cell11);
        QFETCH(QString, search); QFETCH(QVariantList, registered);
        Panel p(2, 2, contents(2, 2, [](int r, int c) {
            return r == 1 ? (c == 0 ? QStringLiteral("1@0@1@8@2@0@9") : QStringLiteral("bit@1@0@4@0@0"))
                          : c == 1 ? QStringLiteral("bit@2@9@0@3@1@0@0@0@0@5") : QString();
        }, [](QTableWidgetItem *item, int, int) { item->setText(item->whatsThis()); }));
        p.table->SetChnNoVarEnable(true);
        p.table->setDefaultSearchMethodDataClass(TableWidget::User);
        p.table->setDefaultSearchMethodAddress(20);
        p.table->setSearchMethodVisibleDataClass(TableWidget::User);
        p.table->setSearchMethodVisibleAddress(21);
        p.app.memory().setWord(0, 0, 0, 20, 3);
        p.app.memory().setWord(0, 0, 0, 21, 0b10);
        p.show();
        p.table->item(1, 0)->setText(QStringLiteral("1@0@1@8@2@0@9"));
        p.app.clearCalls();
        if (index == -1001 || index == -1002)
            QCOMPARE(p.app.deliver(p.table, index, value), 1); // the search words are registered
        else if (text.isEmpty())
            p.table->updateData(index, value);
        else
            p.table->updateData(index, text);
        QCOMPARE((QStringList{p.table->item(1, 0)->text(), p.table->item(1, 1)->text(),
                              QStringLiteral("%1 %2").arg(p.table->defaultSearchMethod()).arg(p.table->visibleSearchMethods(), 0, 2)}),
                 (QStringList{cell10, cell11, search}));
        QCOMPARE(p.app.callNames().filter(QStringLiteral("UI")), registered.isEmpty() ? QStringList() : (QStringList{"stopUpdateUI", "registerUIVariable", "startUpdateUI"}));
        if (!registered.isEmpty())
            QCOMPARE(p.app.registrations().last().arguments(), registered);
    }

    void columnVisibilityWords()
    {
        Panel p(2, 40, contents(2, 40, [](int r, int c) { return r == 0 && c < 3 ? QStringLiteral("1@0@7@8@0@0@9") : QString(); }));
        p.table->setDataClass(TableWidget::User);
        // Numbers only, at most 11 words: the twelfth address is not read.
        p.table->setAddress(QStringLiteral("10 x 11 12 12 12 12 12 12 12 12 12 12").split(QLatin1Char(' ')));
        p.app.memory().setWord(0, 0, 0, 10, 0b101);
        p.app.memory().setWord(0, 0, 0, 11, ~0);
        p.show();
        QCOMPARE((QList<bool>{p.table->isColumnHidden(0), p.table->isColumnHidden(1), p.table->isColumnHidden(2),
                              p.table->isColumnHidden(33)}), (QList<bool>{false, true, false, false}));
        QList<int> wordIndexes;
        for (const UiRegistration &r : p.app.registrations())
            wordIndexes << r.index << (r.index < 0 ? r.address : 0);
        // A hidden column's cells are neither made nor registered.
        QList<int> expected{0, 0, 2, 0, -100, 10, -101, 11};
        for (int word = 2; word < 11; ++word)
            expected << -100 - word << 12;
        QCOMPARE(wordIndexes, expected);
        QVERIFY(!p.table->item(0, 1));
        // The controller's change arrives under the registered index; a column shown is made and registered then.
        QCOMPARE(p.app.deliver(p.table, -100, 0b10), 1);
        QVERIFY(p.table->isColumnHidden(0) && !p.table->isColumnHidden(1));
        QCOMPARE(p.table->item(0, 1)->whatsThis(), QStringLiteral("1@0@7@8@0@0@9"));
        QCOMPARE(p.app.registrations().first().index, 1);
        p.table->updateData(-101, 0);
        QVERIFY(p.table->isColumnHidden(33));
    }

    // Texts per language: header records (made from the header items when a form has none), cell
    // records with their fonts and cells' language texts; the translation tool's view of them in order,
    // its translations taken back, stored, and shown by a table made from what was stored.
    void languagesAndTranslations()
    {
        NORVOInterface_Z3::initialization()->setSystemLanguages({QStringLiteral("Sans"), QStringLiteral("Sans")});
        QFont bold(QStringLiteral("Sans"), 14);
        bold.setBold(true);
        const QByteArray records = CellLanguageTexts::encode({textRecord({"Feed", "Vorschub"}, -1, {QFont(), bold})});
        Panel p(1, 3, contents(1, 3, [](int, int c) {
            return c == 1 ? QStringLiteral("multiTexts=Speed##!&*_Drehzahl") : c == 2 ? QStringLiteral("1@0@1@8@0@0") : QString();
        }, [&](QTableWidgetItem *item, int, int c) {
            if (c == 0)
                item->setData(Qt::StatusTipRole, records);
        }));
        Panel again(1, 3);
        for (Panel *panel : {&p, &again})
            for (int c = 0; c < 3; ++c)
                panel->table->setHorizontalHeaderItem(c, new QTableWidgetItem(QStringList{"Name", "Value", "h2"}.at(c)));
        p.table->horizontalHeaderItem(1)->setWhatsThis(QStringLiteral("multiTexts=Value##!&*_Wert##8!&*_columnWidth=123"));
        p.show();
        QCOMPARE(p.table->columnWidth(1), 123);
        const auto shown = [](const TableWidget *t) {
            return QStringList{t->horizontalHeaderItem(0)->text(), t->horizontalHeaderItem(1)->text(), t->horizontalHeaderItem(2)->text(),
                               t->item(0, 0)->text(), t->item(0, 1)->text()};
        };
        p.table->updateLanguage(1);
        QCOMPARE(shown(p.table), (QStringList{"Name", "Wert", "h2", "Vorschub", "Drehzahl"}));
        QCOMPARE(p.table->item(0, 0)->font().pointSize(), 14);
        p.table->updateLanguage(0);
        QCOMPARE(shown(p.table), (QStringList{"Name", "Value", "h2", "Feed", "Speed"}));
        // The word library's refresh keeps typed headers, with or without records made from them.
        p.table->upDatePluginTextfromWordLib();
        QCOMPARE(p.table->horizontalHeaderItem(0)->text(), QStringLiteral("Name"));
        QList<QList<TextData>> texts;
        p.table->getPluginNameAndTransText(texts);
        p.table->upDatePluginTextfromWordLib();
        p.table->getPluginNameAndTransText(texts);
        QStringList got;
        for (const QList<TextData> &t : texts)
            got << t.first().texts.join(QLatin1Char('/'));
        QCOMPARE(got, (QStringList{"Name/Name", "Value/Wert", "h2/h2", "Feed/Vorschub", "Speed/Drehzahl"}));

        QList<QStringList> translated{{"Name", "Bezeichnung"}, {"Value", "Wert"}, {"h2", "h2"}, {"Feed", "Zustellung"}, {"Speed", "Geschwindigkeit"}};
        p.table->setPluginTransText(translated);
        again.table->setData(p.table->data());
        again.table->setHeaderTextInfoBuffer(p.table->headerTextInfoBuffer());
        again.show();
        again.table->updateLanguage(1);
        QCOMPARE(shown(again.table), (QStringList{"Bezeichnung", "Wert", "h2", "Zustellung", "Geschwindigkeit"}));
        QCOMPARE(again.table->item(0, 2)->whatsThis(), QStringLiteral("1@0@1@8@0@0"));
    }

    void storedItemsAndSpans()
    {
        QFont simSun(QStringLiteral("SimSun"), 9);
        QFont other(QStringLiteral("Serif"), 9);
        Panel p(5, 6, contents(5, 6, [](int, int) { return QString(); }, [&](QTableWidgetItem *item, int r, int c) {
            if (r == 0)
                item->setFont(c == 0 ? simSun : other);
            if (r == 1 && c == 0)
                item->setFlags(Qt::ItemIsEnabled);
            if (r == 2) // brushes, and a colour as Qt 4 forms stored it
                item->setData(Qt::BackgroundRole, c == 0 ? QVariant(QBrush(Qt::red)) : QVariant(QColor(Qt::blue)));
            if (r == 2 && c == 0)
                item->setForeground(QBrush(Qt::green));
        }));
        p.table->setFont(QFont(QStringLiteral("Sans"), 11));
        // A grid colour replaces a sheet set before it; a sheet set after it keeps the grid in its colour.
        p.table->setStyleSheet(QStringLiteral("QTableView{background: red}"));
        p.table->setGridColor(Qt::magenta);
        QCOMPARE(p.table->styleSheet(), QStringLiteral("QTableView{gridline-color : rgb(255, 0, 255);}"));
        p.table->setStyleSheet(QStringLiteral("QTableView{background: yellow}"));
        // Spans (first row, first column, last row, last column) are clipped to the table, also those
        // reaching the largest row or column number.
        p.table->setMergeCells("00000003" "00000002000000010000000300000004" "00000003000000007fffffff00000000"
                               "0000000400000001000000047fffffff");
        p.form.show();
        QCOMPARE((QList<int>{p.table->rowSpan(2, 1), p.table->columnSpan(2, 1), p.table->rowSpan(3, 0), p.table->columnSpan(4, 1)}),
                 (QList<int>{2, 4, 2, 5}));
        // SimSun gives way to the table's font; the first selectable item became current.
        QCOMPARE((QVariantList{p.table->item(0, 0)->font().family(), p.table->item(0, 1)->font().family(), int(p.table->item(1, 0)->flags()),
                               p.table->currentRow(), p.table->currentColumn()}),
                 (QVariantList{"Sans", "Serif", int(Qt::ItemIsEnabled), 0, 0}));
        const QImage shown = p.table->viewport()->grab().toImage();
        for (int c = 0; c < 2; ++c)
            QCOMPARE(shown.pixelColor(p.table->visualItemRect(p.table->item(2, c)).center()), QColor(c ? Qt::blue : Qt::red));
        QCOMPARE(p.table->item(2, 0)->foreground().color(), QColor(Qt::green));
        const QRect plain = p.table->visualItemRect(p.table->item(1, 2));
        QCOMPARE((QList<QColor>{shown.pixelColor(plain.center()), shown.pixelColor(plain.right() + 1, plain.center().y())}),
                 (QList<QColor>{Qt::yellow, Qt::magenta}));
    }

    // Stored contents that cannot be read (the decoder's refusals are tested with it) leave the table
    // empty, registering nothing, and keep the buffer as it was.
    void unreadableBufferLeavesAnEmptyTable()
    {
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("\"data\"")));
        const QByteArray data = contents(3, 3, [](int, int) { return QStringLiteral("1@0@1@8@0@0"); }).left(60);
        Panel p(3, 3, data);
        p.show();
        QCOMPARE(p.table->data(), data);
        QVERIFY(!p.table->item(0, 0) && p.app.registrations().isEmpty());
    }

    void formattingSlots()
    {
        TableWidget t;
        t.setRowCount(2);
        t.setColumnCount(3);
        // Column settings reach the rows made later.
        t.setColumnTextAlignment(2, Qt::AlignCenter);
        t.setColumnBackgroundColor(1, QStringLiteral("255, 0, 0"));
        t.setColumnTextColor(1, QStringLiteral("blue"));
        t.setColumnSelectable(0, false);
        t.insertRow(1);
        QCOMPARE((QVariantList{t.item(1, 2)->textAlignment(), t.item(1, 1)->background().color(), t.item(1, 1)->foreground().color(),
                               bool(t.item(1, 0)->flags() & Qt::ItemIsSelectable), bool(t.item(2, 0)->flags() & Qt::ItemIsSelectable)}),
                 (QVariantList{int(Qt::AlignCenter), QColor(255, 0, 0), QColor(Qt::blue), false, false}));
        t.setItemTextAlignment(5, 0, Qt::AlignRight); // outside: nothing made
        QCOMPARE(t.rowCount(), 3);
    }

    // Numbers from a form or the application stay within the table's bounds, the row count also row by
    // row (a refused insert is said once): the properties are set in turn on a table of 4 x 3 and read
    // back, then come the rows after two inserts and row 2's height.
    void boundedProperties_data()
    {
        QTest::addColumn<QStringList>("set"); // name=value
        QTest::addColumn<QList<int>>("kept"); QTest::addColumn<int>("warnings");
        const QString most = QString::number(std::numeric_limits<int>::max());
        const int rows = TableWidget::MaxRows;
        QTest::newRow("rows at the largest int") << QStringList{"rowCount=" + most, "columnCount=3"} << QList<int>{rows, 3, rows, 30} << 2;
        QTest::newRow("columns at the largest int") << QStringList{"rowCount=4", "columnCount=" + most} << QList<int>{4, TableWidget::MaxColumns, 6, 30} << 1;
        QTest::newRow("more cells than a table holds") << QStringList{"rowCount=100000", "columnCount=200"}
                                                       << QList<int>{rows, TableWidget::MaxCells / rows, rows, 30} << 2;
        QTest::newRow("negative counts: ignored") << QStringList{"rowCount=-1", "columnCount=-5"} << QList<int>{4, 3, 6, 30} << 2;
        QTest::newRow("row height below the least") << QStringList{"rowHeight=9"} << QList<int>{30, 6, 30} << 0;
        QTest::newRow("row height past the most") << QStringList{"rowHeight=1000000"} << QList<int>{30, 6, 30} << 1;
        QTest::newRow("scroll bar below the least") << QStringList{"scrollBarExtent=12"} << QList<int>{16, 6, 30} << 0;
        QTest::newRow("negative search address") << QStringList{"defaultSearchMethodAddress=-3"} << QList<int>{0, 6, 30} << 0;
        QTest::newRow("negative visible search address") << QStringList{"searchMethodVisibleAddress=-3"} << QList<int>{0, 6, 30} << 0;
        QTest::newRow("authority past the most: ignored") << QStringList{"operationalAuthority=100"} << QList<int>{0, 6, 30} << 0;
    }
    void boundedProperties()
    {
        QFETCH(QStringList, set); QFETCH(QList<int>, kept); QFETCH(int, warnings);
        for (int i = 0; i < warnings; ++i)
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("^TableWidget \"t\": .*(Count|insert|out of range)")));
        TableWidget t;
        t.setObjectName(QStringLiteral("t"));
        for (const QString &property : set)
            QVERIFY(t.setProperty(qPrintable(property.section(QLatin1Char('='), 0, 0)), property.section(QLatin1Char('='), 1).toInt()));
        QList<int> got;
        for (const QString &property : set)
            got << t.property(qPrintable(property.section(QLatin1Char('='), 0, 0))).toInt();
        t.insertRow(0);
        t.insertRow(0);
        QCOMPARE(got << t.rowCount() << t.rowHeight(2), kept);
    }

    // A long list fitted to its contents: the rows whose cells change are measured, not every row.
    void rowsFitTheirContents()
    {
        struct Counting : QStyledItemDelegate {
            mutable int hints = 0;
            QSize sizeHint(const QStyleOptionViewItem &o, const QModelIndex &i) const override { return ++hints, QStyledItemDelegate::sizeHint(o, i); }
        } counting; // outlives the table
        const int rows = 3000;
        Panel p(rows, 2, contents(rows, 2, [](int r, int c) { return c == 0 ? QStringLiteral("1@0@%1@8@0@0@9").arg(r) : QString(); },
                                  [](QTableWidgetItem *item, int r, int) { item->setText(r == 1 ? "two\nlines" : "one"); }));
        p.table->setItemDelegate(&counting);
        p.table->setVerticalHeaderResizeMode(TableWidget::ResizeToContents);
        p.show();
        QVERIFY(counting.hints < rows);
        QVERIFY(p.table->rowHeight(1) > p.table->rowHeight(0));
        QCOMPARE(p.registeredRows().size(), p.visibleRows() + 1); // fitted rows bring more rows on screen
        p.table->item(2, 1)->setText(QStringLiteral("now\ntwo"));
        QCOMPARE(p.table->rowHeight(2), p.table->rowHeight(1));
    }

    // A form sets the row count before the column count; widening keeps what the table holds.
    void widening()
    {
        TableWidget t;
        t.setRowCount(1000);
        QVERIFY(t.setProperty("columnCount", 4)); // before any item, and after one
        QCOMPARE(t.rowCount(), 1000);
        t.setItem(500, 1, new QTableWidgetItem(QStringLiteral("kept")));
        t.setRowHeight(7, 50);
        QVERIFY(t.setProperty("columnCount", 8));
        QCOMPARE((QList<int>{t.rowCount(), t.columnCount()}), (QList<int>{1000, 8}));
        QCOMPARE(t.item(500, 1)->text() + QString::number(t.rowHeight(7)), QStringLiteral("kept50"));
    }

};

QTEST_MAIN(TstTableWidget)
#include "tst_tablewidget.moc"
