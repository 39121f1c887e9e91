// What a panel builder does with a parameter table in Designer: the cells made from "data" appear in
// Designer's item editor, an edit there is written to "data", the saved form carries the cells once
// (no <item> elements), and it reopens in Designer, through QUiLoader and as uic code.
#include "celllanguagetexts.h"
#include "designercore.h"
#include "nkeypadeditor.h"
#include "norvointerface_z3.h"
#include "tablecontents.h"
#include "tablewidget.h"

#include <QtUiPlugin/QDesignerCustomWidgetInterface>
#include <QtDesigner/QDesignerFormEditorInterface>
#include <QtDesigner/QDesignerFormWindowInterface>
#include <QtDesigner/QDesignerPropertyEditorInterface>
#include <QtDesigner/QDesignerTaskMenuExtension>
#include <QtDesigner/QExtensionManager>

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QListWidget>
#include <QPushButton>
#include <QShowEvent>
#include <QTableWidget>
#include <QTest>
#include <QTimer>
#include <QUndoStack>

namespace {

QByteArray cells()
{
    TextData texts;
    texts.texts = QStringList{QStringLiteral("Feed"), QStringLiteral("Vorschub")};
    QTableWidgetItem name(QStringLiteral("Feed"));
    name.setData(Qt::StatusTipRole, CellLanguageTexts::encode({texts}));
    name.setFlags(Qt::ItemIsEnabled);
    QTableWidgetItem value;
    value.setWhatsThis(QStringLiteral("1@0@100@8@2@0@9999"));
    QTableWidgetItem bit(QStringLiteral("0"));
    bit.setWhatsThis(QStringLiteral("bit@1@0@30@5@0"));
    return TableContents::encode(3, 2, {{&name, &value}, {&bit, nullptr}, {}});
}

QString tableForm(const QByteArray &data)
{
    return DesignerCore::formDocument(QStringLiteral(
        "<widget class=\"TableWidget\" name=\"table\"><property name=\"geometry\"><rect><x>0</x><y>0</y>"
        "<width>320</width><height>200</height></rect></property>"
        "<property name=\"rowCount\"><number>3</number></property>"
        "<property name=\"columnCount\"><number>2</number></property>"
        "<property name=\"data\"><cstring>%1</cstring></property></widget>").arg(QString::fromLatin1(data)));
}

// What a shown form window does first: the table makes its items at its first show.
TableWidget *shownTable(QDesignerFormWindowInterface *form, const QString &name = QStringLiteral("table"))
{
    auto *table = DesignerCore::formWidget<TableWidget>(form, name);
    if (table) {
        QShowEvent event;
        QApplication::sendEvent(table, &event);
    }
    return table;
}

QStringList describe(const QTableWidget *table)
{
    QStringList out;
    for (int r = 0; r < table->rowCount(); ++r) {
        for (int c = 0; c < table->columnCount(); ++c) {
            const QTableWidgetItem *item = table->item(r, c);
            out << (item ? item->text() + QLatin1Char('|') + item->whatsThis() + QLatin1Char('|')
                               + QString::number(int(item->flags()))
                         : QStringLiteral("-"));
        }
    }
    return out;
}

// Designer's own table menu, which a QTableWidget subclass keeps; its preferred action is "Edit Items...".
QAction *editItemsAction(QWidget *table)
{
    QObject *extension = DesignerCore::instance().core()->extensionManager()->extension(
        table, QStringLiteral("QDesignerInternalTaskMenuExtension"));
    auto *menu = qobject_cast<QDesignerTaskMenuExtension *>(extension);
    return menu ? menu->preferredEditAction() : nullptr;
}

} // namespace

class TestTableDesigner : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QApplication::setFont(QFont(QStringLiteral("Sans Serif"), 9)); }
    void init() { NORVOInterface_Z3::initialization()->resetToDefaults(); }
    void cleanup()
    {
        DesignerCore::instance().closeForms();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    void cleanupTestCase() { DesignerCore::release(); }

    // A new table from the widget box: Designer's item editor lists every row and column it has, as
    // the saved form does, with the columns named; plain row numbers are not stored.
    void newTableRowsAndColumnsAgree()
    {
        const QString element = DesignerCore::descriptor(QStringLiteral("TableWidget"))->domXml();
        QDesignerFormWindowInterface *form = DesignerCore::instance().createForm(DesignerCore::formDocument(element));
        TableWidget *table = shownTable(form, QStringLiteral("tableWidget"));
        QVERIFY(table);
        int columns = -1;
        int rows = -1;
        QTimer::singleShot(0, [&] {
            auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
            columns = dialog->findChild<QWidget *>(QStringLiteral("columnEditor"))->findChild<QListWidget *>()->count();
            rows = dialog->findChild<QWidget *>(QStringLiteral("rowEditor"))->findChild<QListWidget *>()->count();
            dialog->reject();
        });
        editItemsAction(table)->trigger();
        QCOMPARE(columns, table->columnCount());
        QCOMPARE(rows, table->rowCount());
        const QString saved = form->contents();
        QCOMPARE(int(saved.count(QLatin1String("<column>"))), columns);
        QCOMPARE(int(saved.count(QLatin1String("<row/>"))), rows);
    }

    void itemsEditedInDesignerAreSavedInDataAlone()
    {
        QDesignerFormWindowInterface *form = DesignerCore::instance().createForm(tableForm(cells()));
        QVERIFY(form);
        TableWidget *table = shownTable(form);
        QVERIFY(table);
        const QStringList loaded = describe(table);
        QCOMPARE(loaded.mid(0, 3), (QStringList{QStringLiteral("Feed||%1").arg(int(Qt::ItemIsEnabled)), QStringLiteral("|1@0@100@8@2@0@9999|%1").arg(int(QTableWidgetItem().flags())),
                                                QStringLiteral("0|bit@1@0@30@5@0|%1").arg(int(QTableWidgetItem().flags()))}));

        // Designer's item editor shows the cells and commits an edit as one undoable change.
        QAction *edit = editItemsAction(table);
        QVERIFY(edit);
        bool edited = false;
        QTimer::singleShot(0, [&] {
            auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
            QVERIFY(dialog);
            auto *grid = dialog->findChild<QTableWidget *>();
            QVERIFY(grid);
            QCOMPARE(grid->item(0, 0)->text(), QStringLiteral("Feed"));
            grid->item(1, 0)->setText(QStringLiteral("Spindle"));
            edited = true;
            dialog->accept();
        });
        edit->trigger();
        QVERIFY(edited);
        QCoreApplication::processEvents();
        QCOMPARE(table->item(1, 0)->text(), QStringLiteral("Spindle"));
        QCOMPARE(table->item(1, 0)->whatsThis(), QStringLiteral("bit@1@0@30@5@0"));

        // The saved form holds the edit in "data", the per-language record and flags kept, no <item>.
        const QString saved = form->contents();
        QVERIFY2(!saved.contains(QLatin1String("<item")), qPrintable(saved));
        TableContents stored;
        QVERIFY(stored.load(table->data()));
        QVERIFY(saved.contains(QString::fromLatin1(table->data())));
        QList<TableContents::Roles> row;
        QVERIFY(stored.readRow(1, 2, &row));
        QCOMPARE(TableContents::makeItem(row.at(0))->text(), QStringLiteral("Spindle"));
        QVERIFY(stored.readRow(0, 2, &row));
        const auto feed = TableContents::makeItem(row.at(0));
        QCOMPARE(int(feed->flags()), int(Qt::ItemIsEnabled));
        QList<TextData> records;
        QVERIFY(CellLanguageTexts::decode(feed->data(Qt::StatusTipRole).toByteArray(), &records));
        QCOMPARE(records.first().texts, (QStringList{QStringLiteral("Feed"), QStringLiteral("Vorschub")}));

        // Undo brings the old cells back, in the items and in "data".
        form->commandHistory()->undo();
        QCoreApplication::processEvents();
        QCOMPARE(describe(table), loaded);
        QVERIFY(!form->contents().contains(QLatin1String("Spindle")));

        // Reopened in Designer, the cells are there again.
        form->commandHistory()->redo();
        QCoreApplication::processEvents();
        const QString again = form->contents();
        QDesignerFormWindowInterface *reopened = DesignerCore::instance().createForm(again);
        QVERIFY(reopened);
        TableWidget *second = shownTable(reopened);
        QCOMPARE(describe(second), describe(table));

        // At run time the form's loader makes the table with its contents and no items before show.
        std::unique_ptr<QWidget> root = DesignerCore::loadAtRunTime(again, false);
        auto *runtime = root->findChild<TableWidget *>(QStringLiteral("table"));
        QCOMPARE(runtime->data(), table->data());
        QCOMPARE(runtime->rowCount(), 3);
        QVERIFY(!runtime->item(1, 0));
        // uic code sets the contents and builds no item.
        const QString code = DesignerCore::uicCode(again);
        QVERIFY2(code.contains(QLatin1String("table->setData(")), qPrintable(code));
        QVERIFY(!code.contains(QLatin1String("QTableWidgetItem")));
    }

    void editorDialogAndKeypadCommit()
    {
        QDesignerFormWindowInterface *form = DesignerCore::instance().createForm(tableForm(cells()));
        QVERIFY(form);
        TableWidget *table = shownTable(form);
        QVERIFY(table);
        QVERIFY(editItemsAction(table)); // Designer's own menu stays beside ours
        table->setSoftKeypadGeometry(QRect(5, 6, 70, 80));
        const int before = form->commandHistory()->count();
        // Shown in the property editor, as a selected table is: the record never reaches it.
        form->clearSelection();
        form->selectWidget(table, true);
        DesignerCore::instance().core()->propertyEditor()->setObject(table);
        static QStringList warnings;
        const QtMessageHandler previous = qInstallMessageHandler(
            [](QtMsgType, const QMessageLogContext &, const QString &message) { warnings << message; });

        QString itemEditor;
        NKeyPadStruct shown;
        const bool opened = DesignerCore::runEditor(table, [&](QDialog *dialog) {
            auto *keypad = dialog->findChild<NKeyPadEditor *>();
            QVERIFY(keypad);
            shown = keypad->getKeyPadStruct();
            // "Edit Items..." opens Designer's item editor for this table.
            QTimer::singleShot(0, [&] {
                QWidget *modal = QApplication::activeModalWidget();
                if (modal && modal != dialog) {
                    itemEditor = modal->findChild<QTableWidget *>() ? QStringLiteral("items") : QString();
                    static_cast<QDialog *>(modal)->reject();
                }
            });
            dialog->findChild<QPushButton *>(QStringLiteral("editItemsButton"))->click();
            dialog->accept();
        });
        qInstallMessageHandler(previous);
        QVERIFY(opened);
        QVERIFY2(!warnings.join(QLatin1Char('\n')).contains(QLatin1String("keyPad")), qPrintable(warnings.join(QLatin1Char('\n'))));
        QCOMPARE(itemEditor, QStringLiteral("items"));
        QCOMPARE(shown.geometry(), QRect(5, 6, 70, 80));
        // Accepted unchanged, the record is still written: one undoable change, saved through the
        // keypad's own properties.
        QCOMPARE(form->commandHistory()->count(), before + 1);
        const QUndoCommand *edit = form->commandHistory()->command(before);
        QStringList steps;
        for (int i = 0; i < edit->childCount(); ++i)
            steps << edit->child(i)->text();
        QVERIFY2(steps.join(QLatin1Char(' ')).contains(QLatin1String("keyPad")), qPrintable(steps.join(QLatin1Char(','))));
        const QString saved = form->contents();
        QVERIFY2(saved.contains(QLatin1String("softKeypadGeometry")), qPrintable(saved));
        QVERIFY(!saved.contains(QLatin1String("name=\"keyPad\"")));

        // A new record from the dialog reaches the properties, and undo takes it back.
        DesignerCore::runEditor(table, [&](QDialog *dialog) {
            auto *keypad = dialog->findChild<NKeyPadEditor *>();
            NKeyPadStruct k = keypad->getKeyPadStruct();
            k.enabled = 1;
            k.position = TableWidget::Center;
            keypad->setKeyPadStruct(k);
            dialog->accept();
        });
        QVERIFY(table->softKeypad());
        QCOMPARE(table->softKeypadPosition(), TableWidget::Center);
        const QString withKeypad = form->contents();
        QDesignerFormWindowInterface *reopened = DesignerCore::instance().createForm(withKeypad);
        auto *again = DesignerCore::formWidget<TableWidget>(reopened, QStringLiteral("table"));
        QVERIFY(again);
        QVERIFY(again->softKeypad());
        QCOMPARE(again->softKeypadPosition(), TableWidget::Center);
        QCOMPARE(again->softKeypadGeometry(), QRect(5, 6, 70, 80));
        form->commandHistory()->undo();
        QVERIFY(!table->softKeypad());
        QCOMPARE(table->softKeypadPosition(), TableWidget::Auto);
    }
};

QTEST_MAIN(TestTableDesigner)
#include "tst_tabledesigner.moc"
