// What a panel builder does with a parameter table in Designer: the cells made from "data" appear in
// Designer's item editor, an edit there is written to "data", the saved form carries the cells once
// (no <item> elements), and it reopens in Designer, through QUiLoader and as uic code.
#include "celllanguagetexts.h"
#include "designercore.h"
#include "formloader.h"
#include "norvointerface_z3.h"
#include "tablecontents.h"
#include "tablewidget.h"

#include <QtDesigner/QDesignerFormEditorInterface>
#include <QtDesigner/QDesignerFormWindowInterface>
#include <QtDesigner/QDesignerTaskMenuExtension>
#include <QtDesigner/QExtensionManager>

#include <QAction>
#include <QApplication>
#include <QBuffer>
#include <QDialog>
#include <QDialogButtonBox>
#include <QProcess>
#include <QPushButton>
#include <QShowEvent>
#include <QTableWidget>
#include <QTemporaryDir>
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
TableWidget *shownTable(QDesignerFormWindowInterface *form)
{
    auto *table = DesignerCore::formWidget<TableWidget>(form, QStringLiteral("table"));
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
        FormLoader loader;
        QBuffer buffer;
        buffer.setData(again.toUtf8());
        buffer.open(QIODevice::ReadOnly);
        std::unique_ptr<QWidget> root(loader.load(&buffer));
        QVERIFY(root);
        auto *runtime = root->findChild<TableWidget *>(QStringLiteral("table"));
        QVERIFY(runtime);
        QCOMPARE(runtime->data(), table->data());
        QCOMPARE(runtime->rowCount(), 3);
        QVERIFY(!runtime->item(1, 0));

        // uic code sets the contents and builds no item.
        QTemporaryDir dir;
        QFile file(dir.filePath(QStringLiteral("form.ui")));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(again.toUtf8());
        file.close();
        QProcess uic;
        uic.start(QStringLiteral(HMI_UIC), {file.fileName()});
        QVERIFY(uic.waitForFinished());
        const QString code = QString::fromUtf8(uic.readAllStandardOutput());
        QVERIFY2(code.contains(QLatin1String("table->setData(")), qPrintable(code));
        QVERIFY(!code.contains(QLatin1String("QTableWidgetItem")));
    }
};

QTEST_MAIN(TestTableDesigner)
#include "tst_tabledesigner.moc"
