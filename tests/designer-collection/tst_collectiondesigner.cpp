// The widget collection as Designer sees it: the ten descriptors in their order with groups, icons
// and initial XML, the widget box holding the nine offered ones under their four groups, every
// offered widget placed from its initial XML, edited in its editor and restored by one undo step, and
// a form holding every widget saved, reopened and saved again alike.
#include "designercore.h"

#include <QtDesigner/QDesignerFormEditorInterface>
#include <QtDesigner/QDesignerFormWindowInterface>
#include <QtDesigner/QDesignerWidgetBoxInterface>
#include <QtDesigner/QDesignerComponents>
#include <QtUiPlugin/QDesignerCustomWidgetCollectionInterface>

#include <QApplication>
#include <QClipboard>
#include <QDialog>
#include <QMimeData>
#include <QRegularExpression>
#include <QSpinBox>
#include <QTest>
#include <QUndoStack>

namespace {

struct Entry
{
    QString name;
    QString group;
    QString objectName;
    QSize size;
};

// The collection in its order.
const QList<Entry> Collection{
    {"FunctionButton", "Buttons", "functionButton", {100, 30}},
    {"PictureButton", "Buttons", "pictureButton", {100, 30}},
    {"DynamicImage", "Display Widgets", "dynamicImage", {60, 60}},
    {"TableWidget", "Item Widgets", "tableWidget", {320, 200}},
    {"BitButton", "Buttons", "bitButton", {100, 30}},
    {"GridSplitter", "Containers", "gridSplitter", {300, 300}},
    {"ButtonGroup", "Buttons", "buttonGroup", {460, 60}},
    {"TabWidget", "Containers", "tabWidget", {150, 150}},
    {"MdiArea", "Containers", "MdiArea", {200, 200}},
    {"SubWindow", "[invisible]", "SubWindow", {100, 100}},
};

QList<QDesignerCustomWidgetInterface *> ourDescriptors()
{
    QList<QDesignerCustomWidgetInterface *> found;
    for (QObject *instance : DesignerCore::instance().core()->pluginInstances()) {
        if (auto *collection = qobject_cast<QDesignerCustomWidgetCollectionInterface *>(instance))
            found << collection->customWidgets();
    }
    // The test harness's own probe widget is not ours.
    found.erase(std::remove_if(found.begin(), found.end(),
                               [](QDesignerCustomWidgetInterface *d) { return d->name() == QLatin1String("ProbeWidget"); }),
                found.end());
    return found;
}

// The <widget> element of a descriptor's initial XML (the text buttons wrap it in <ui>).
QString widgetElement(const QString &domXml)
{
    const int start = int(domXml.indexOf(QLatin1String("<widget")));
    const int end = int(domXml.lastIndexOf(QLatin1String("</widget>")));
    return domXml.mid(start, end + 9 - start);
}

// Places a widget from its initial XML as a drop does (a paste onto the form), at x, y.
QWidget *place(QDesignerFormWindowInterface *form, const QString &name, int x, int y)
{
    QString element = widgetElement(DesignerCore::descriptor(name)->domXml());
    element.replace(QRegularExpression(QStringLiteral("<x>0</x>")), QStringLiteral("<x>%1</x>").arg(x));
    element.replace(QRegularExpression(QStringLiteral("<y>0</y>")), QStringLiteral("<y>%1</y>").arg(y));
    auto *mime = new QMimeData;
    mime->setText(QStringLiteral("<ui><widget class=\"QWidget\" name=\"__qt_fake_top_level\">%1</widget></ui>").arg(element));
    QApplication::clipboard()->setMimeData(mime);
    form->clearSelection();
    form->selectWidget(form->mainContainer(), true);
    const QList<QWidget *> before = form->mainContainer()->findChildren<QWidget *>();
    if (!QMetaObject::invokeMethod(form, "paste"))
        return nullptr;
    for (QWidget *w : form->mainContainer()->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly)) {
        if (!before.contains(w) && form->isManaged(w) && w->metaObject()->className() == name)
            return w;
    }
    return nullptr;
}

QString bigForm()
{
    return QStringLiteral("<ui version=\"4.0\"><class>Form</class><widget class=\"QWidget\" name=\"Form\">"
                          "<property name=\"geometry\"><rect><x>0</x><y>0</y><width>1200</width>"
                          "<height>900</height></rect></property></widget></ui>");
}

} // namespace

class TestCollectionDesigner : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QApplication::setFont(QFont(QStringLiteral("Sans Serif"), 9)); }
    void cleanup()
    {
        DesignerCore::instance().closeForms();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    void cleanupTestCase() { DesignerCore::release(); }

    void collectionInOrder()
    {
        const QList<QDesignerCustomWidgetInterface *> found = ourDescriptors();
        QCOMPARE(found.size(), Collection.size());
        for (int i = 0; i < Collection.size(); ++i) {
            const Entry &e = Collection.at(i);
            QDesignerCustomWidgetInterface *d = found.at(i);
            QCOMPARE(d->name(), e.name);
            QCOMPARE(d->group(), e.group);
            QCOMPARE(d->isContainer(), e.name == QLatin1String("SubWindow"));
            QCOMPARE(d->icon().isNull(), e.name == QLatin1String("SubWindow"));
            QVERIFY(d->toolTip().isEmpty() && d->whatsThis().isEmpty() && d->codeTemplate().isEmpty());
            const QString element = widgetElement(d->domXml());
            QVERIFY2(element.startsWith(QStringLiteral("<widget class=\"%1\" name=\"%2\">").arg(e.name, e.objectName)),
                     qPrintable(element));
            QVERIFY(element.contains(QStringLiteral("<width>%1</width>").arg(e.size.width())));
            QVERIFY(element.contains(QStringLiteral("<height>%1</height>").arg(e.size.height())));
        }
    }

    void widgetBoxGroups()
    {
        QDesignerFormEditorInterface *core = DesignerCore::instance().core();
        std::unique_ptr<QDesignerWidgetBoxInterface> box(QDesignerComponents::createWidgetBox(core, nullptr));
        QVERIFY(box);
        core->setWidgetBox(box.get());
        box->load();
        QMap<QString, QStringList> ours;
        QStringList ourNames;
        for (const Entry &e : Collection)
            ourNames << e.name;
        for (int c = 0; c < box->categoryCount(); ++c) {
            const QDesignerWidgetBoxInterface::Category category = box->category(c);
            for (int w = 0; w < category.widgetCount(); ++w) {
                if (ourNames.contains(category.widget(w).name()))
                    ours[category.name()] << category.widget(w).name();
            }
        }
        core->setWidgetBox(nullptr);
        QCOMPARE(ours.value(QStringLiteral("Buttons")).size(), 4);
        QCOMPARE(ours.value(QStringLiteral("Containers")).size(), 3);
        QCOMPARE(ours.value(QStringLiteral("Display Widgets")), QStringList{"DynamicImage"});
        QCOMPARE(ours.value(QStringLiteral("Item Widgets")), QStringList{"TableWidget"});
        int total = 0;
        for (const QStringList &names : ours)
            total += int(names.size());
        QCOMPARE(total, 9); // no panel, no keypad key
    }

    void placeEditUndo_data()
    {
        QTest::addColumn<QString>("name");
        for (const Entry &e : Collection) {
            if (e.group != QLatin1String("[invisible]"))
                QTest::newRow(qPrintable(e.name)) << e.name;
        }
    }
    void placeEditUndo()
    {
        QFETCH(QString, name);
        QDesignerFormWindowInterface *form = DesignerCore::instance().createForm(bigForm());
        QWidget *widget = place(form, name, 40, 30);
        QVERIFY2(widget, qPrintable(name));
        const Entry entry = *std::find_if(Collection.begin(), Collection.end(), [&](const Entry &e) { return e.name == name; });
        QCOMPARE(widget->objectName(), entry.objectName);
        QCOMPARE(widget->size(), entry.size);
        const QRect placed = widget->geometry();
        const int rows = widget->property("rowCount").toInt();
        form->commandHistory()->clear();
        // The MDI area's editor changes nothing without New or Delete; the others commit their fields
        // as one step: the left edge, or the table's row count (it has no place).
        const bool mdi = name == QLatin1String("MdiArea");
        const bool table = name == QLatin1String("TableWidget");
        bool edited = false;
        QVERIFY(DesignerCore::runEditor(widget, [&](QDialog *dialog) {
            if (!mdi) {
                QSpinBox *field = nullptr;
                for (QSpinBox *box : dialog->findChildren<QSpinBox *>()) {
                    if (box->whatsThis() == QLatin1String(table ? "rowCount" : "geometry.left"))
                        field = box;
                }
                QVERIFY2(field, qPrintable(dialog->objectName()));
                field->setValue(field->value() + 7);
            }
            edited = true;
            dialog->accept();
        }));
        QVERIFY(edited);
        if (mdi) {
            QCOMPARE(form->commandHistory()->count(), 0);
            return;
        }
        if (table)
            QCOMPARE(widget->property("rowCount").toInt(), rows + 7);
        else
            QCOMPARE(widget->geometry().topLeft(), placed.topLeft() + QPoint(7, 0));
        QCOMPARE(form->commandHistory()->count(), 1);
        form->commandHistory()->undo();
        QCOMPARE(widget->geometry(), placed);
        QCOMPARE(widget->property("rowCount").toInt(), rows);
    }

    // Every widget on one form: saved, reopened and saved again, the two saves alike.
    void everyWidgetSavedAlike()
    {
        QDesignerFormWindowInterface *form = DesignerCore::instance().createForm(bigForm());
        QWidget host;
        form->setParent(&host);
        host.resize(1300, 1000);
        host.show();
        QVERIFY(QTest::qWaitForWindowExposed(&host));
        int y = 10;
        for (const Entry &e : Collection) {
            if (e.group == QLatin1String("[invisible]"))
                continue;
            QVERIFY2(place(form, e.name, 10 + (y / 600) * 500, y % 600), qPrintable(e.name));
            y += e.size.height() + 10;
        }
        const QString first = form->contents();
        for (const Entry &e : Collection) {
            if (e.group != QLatin1String("[invisible]"))
                QVERIFY2(first.contains(QStringLiteral("<widget class=\"%1\"").arg(e.name)), qPrintable(e.name));
        }
        QDesignerFormWindowInterface *again = DesignerCore::instance().createForm(first);
        QVERIFY(again);
        QWidget host2;
        again->setParent(&host2);
        host2.resize(1300, 1000);
        host2.show();
        QVERIFY(QTest::qWaitForWindowExposed(&host2));
        const QString second = again->contents();
        if (first != second) {
            const QStringList a = first.split(QLatin1Char('\n'));
            const QStringList b = second.split(QLatin1Char('\n'));
            for (int i = 0; i < qMin(a.size(), b.size()); ++i) {
                if (a.at(i) != b.at(i)) {
                    qWarning("line %d differs:\n  first:  %s\n  second: %s", i + 1, qPrintable(a.at(i)), qPrintable(b.at(i)));
                    qWarning("%s", qPrintable(a.mid(qMax(0, i - 12), 40).join(QLatin1Char('\n'))));
                    qWarning("----\n%s", qPrintable(b.mid(qMax(0, i - 12), 40).join(QLatin1Char('\n'))));
                    break;
                }
            }
        }
        QCOMPARE(second, first);
        form->setParent(nullptr);
        again->setParent(nullptr);
    }
};

QTEST_MAIN(TestCollectionDesigner)
#include "tst_collectiondesigner.moc"
