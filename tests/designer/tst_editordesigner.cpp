// Every "Edit Properties..." dialog through one driver: a field typed into shows in the preview, Ok
// commits it as one undo step that undo takes back, Cancel and an unchanged value commit nothing;
// every field naming a property path is bound and has its status tip. Then the companion editors
// that commit in the same step: the text page (captions in every language), the table's items and
// keypad record, and the picture list of the dynamic image.
#include "celllanguagetexts.h"
#include "designercore.h"
#include "designerhost.h"
#include "dynamicimage.h"
#include "fieldbinder.h"
#include "fieldbinding.h"
#include "fontmapcodec.h"
#include "mdiarea.h"
#include "nkeypadeditor.h"
#include "norvointerface_z3.h"
#include "propertydialog.h"
#include "propertypath.h"
#include "tablecontents.h"
#include "tablewidget.h"
#include "tabwidget.h"
#include "textinfocodec.h"
#include "textpropertyeditor_z12.h"

#include <QtDesigner/QDesignerFormEditorInterface>
#include <QtDesigner/QDesignerFormWindowInterface>
#include <QtDesigner/QDesignerPropertyEditorInterface>

#include <QApplication>
#include <QCheckBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFontInfo>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpression>
#include <QSpinBox>
#include <QTabBar>
#include <QTabWidget>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QUndoStack>

#include <functional>

namespace {

QString objectNameOf(const QString &widget) { return widget.left(1).toLower() + widget.mid(1); }

QString prop(const char *name, const QString &type, const QString &value)
{
    return QStringLiteral("<property name=\"%1\"><%2>%3</%2></property>").arg(QLatin1String(name), type, value);
}

QWidget *fieldOf(QDialog *dialog, const QString &path)
{
    QList<QWidget *> found;
    for (QWidget *w : dialog->findChildren<QWidget *>())
        if (w->whatsThis() == path)
            found.append(w);
    return found.size() == 1 ? found.first() : nullptr;
}

// A field's value is its widget's user property (text, value, checked, current text, key sequence).
bool isInput(QWidget *w) { return w->metaObject()->userProperty().isValid(); }
QString shown(QWidget *field) { return field->metaObject()->userProperty().read(field).toString(); }

void type(QWidget *field, const QVariant &value)
{
    if (auto *radio = qobject_cast<QRadioButton *>(field))
        radio->click();
    else
        field->metaObject()->userProperty().write(field, value);
}

void click(QDialog *dialog, QDialogButtonBox::StandardButton which)
{
    dialog->findChild<QDialogButtonBox *>(QStringLiteral("buttonBox"))->button(which)->click();
}

// Types the current language's caption of each caption property in turn (the bit button's state
// chosen first: "onEditedRadioButton", "offEditedRadioButton"), the first with a bolder, larger font;
// reads the caption the preview shows and the texts the editor loaded for it, then Ok.
std::function<QStringList(QDialog *, QWidget *)> typeCaptions(const QStringList &captions, const QStringList &typed)
{
    return [captions, typed](QDialog *dialog, QWidget *) {
        auto *editor = dialog->findChild<textPropertyEditor_Z12 *>(QStringLiteral("mTextPropertyEditor"));
        QStringList seen;
        for (int i = 0; i < captions.size(); ++i) {
            if (auto *state = dialog->findChild<QRadioButton *>(captions.at(i).chopped(4) + QStringLiteral("EditedRadioButton")))
                state->click();
            seen << qobject_cast<PropertyDialog *>(dialog)->preview()->property(qPrintable(captions.at(i))).toString()
                 << editor->getTextDataList().first().texts.join(QLatin1Char('|'));
            editor->findChild<QTableWidget *>()->item(1, 0)->setText(typed.at(i));
            if (i == 0) {
                editor->findChild<QSpinBox *>(QStringLiteral("pointSizeSpinBox"))->setValue(21);
                editor->findChild<QCheckBox *>(QStringLiteral("boldCheckBox"))->setChecked(true);
            }
        }
        click(dialog, QDialogButtonBox::Ok);
        return seen;
    };
}

// Whether a button's font is bold, its font map's size, its language, its captions, and each stored caption slot's
// texts and fonts (as matched) in every language.
QStringList captionsOf(QWidget *button)
{
    QStringList out{button->font().bold() ? QStringLiteral("bold") : QStringLiteral("plain"),
                    QString::number(button->property("MapBuffer").toByteArray().size()),
                    QString::number(button->property("language").toInt())};
    const bool twoStates = button->property("onText").isValid();
    for (const QString &caption : twoStates ? QStringList{"onText", "offText"} : QStringList{"text"})
        out << button->property(qPrintable(caption)).toString();
    QList<QList<TextData>> stored{{}};
    const QByteArray info = button->property("textInfoBuffer").toByteArray();
    if (twoStates ? TextInfoCodec::decodeSlots(info, &stored) : TextInfoCodec::decodeSlot(info, &stored.first())) {
        for (const QList<TextData> &slot : stored) {
            out << slot.first().texts.join(QLatin1Char('|'));
            for (const QFont &font : slot.first().fonts)
                out << QStringLiteral("%1 %2%3").arg(QFontInfo(font).family()).arg(font.pointSize()).arg(font.bold() ? " bold" : "");
        }
    }
    return out;
}

// A parameter name's own text in every language.
QByteArray feedRecord()
{
    TextData texts;
    texts.texts = QStringList{QStringLiteral("Feed"), QStringLiteral("Vorschub")};
    return CellLanguageTexts::encode({texts});
}

QByteArray cells()
{
    QTableWidgetItem name(QStringLiteral("Feed"));
    name.setData(Qt::StatusTipRole, feedRecord());
    name.setFlags(Qt::ItemIsEnabled);
    QTableWidgetItem value;
    value.setWhatsThis(QStringLiteral("1@0@100@8@2@0@9999"));
    QTableWidgetItem bit(QStringLiteral("0"));
    bit.setWhatsThis(QStringLiteral("bit@1@0@30@5@0"));
    return TableContents::encode(3, 2, {{&name, &value}, {&bit, nullptr}, {}});
}

// A table's cells: text|what's this|flags|status tip, "-" for none.
QStringList cellsOf(QWidget *widget)
{
    const auto *table = qobject_cast<QTableWidget *>(widget);
    QStringList out;
    for (int r = 0; r < table->rowCount(); ++r) {
        for (int c = 0; c < table->columnCount(); ++c) {
            const QTableWidgetItem *item = table->item(r, c);
            out << (item ? QStringLiteral("%1|%2|%3|%4").arg(item->text(), item->whatsThis()).arg(int(item->flags()))
                               .arg(item->statusTip())
                         : QStringLiteral("-"));
        }
    }
    return out;
}

QStringList keypadOf(QWidget *widget)
{
    const auto *table = qobject_cast<TableWidget *>(widget);
    const QRect g = table->softKeypadGeometry();
    return {QStringLiteral("%1 %2 %3,%4 %5x%6").arg(table->softKeypad()).arg(int(table->softKeypadPosition()))
                .arg(g.x()).arg(g.y()).arg(g.width()).arg(g.height())};
}

QStringList tabsOf(QWidget *widget)
{
    const auto *tabs = qobject_cast<TabWidget *>(widget);
    return {tabs->tabTexts().join(QLatin1Char(' ')), tabs->operationalAuthoritys().join(QLatin1Char(' ')),
            QString::number(tabs->currentIndex())};
}

QStringList imagesOf(QWidget *widget) { return qobject_cast<DynamicImage *>(widget)->images(); }

QStringList panelsOf(QWidget *widget) { return qobject_cast<MdiArea *>(widget)->getSubwindows(); }

// Designer's own table menu, which a QTableWidget subclass keeps; its preferred action is "Edit Items...".
const QByteArray ItemsMenu = "QDesignerInternalTaskMenuExtension";

void writePng(const QString &path, const QColor &color)
{
    QImage image(16, 16, QImage::Format_RGB32);
    image.fill(color);
    QVERIFY(image.save(path, "PNG"));
}

// Pictures to choose from, and a file that is none.
const QTemporaryDir &pictureFolder()
{
    static QTemporaryDir folder;
    if (!QFile::exists(folder.filePath(QStringLiteral("notes.png")))) {
        writePng(folder.filePath(QStringLiteral("green.png")), Qt::green);
        writePng(folder.filePath(QStringLiteral("blue.png")), Qt::blue);
        QFile text(folder.filePath(QStringLiteral("notes.png")));
        if (text.open(QIODevice::WriteOnly))
            text.write("not a picture");
    }
    return folder;
}

using Step = std::function<void(QWidget *)>;

// Answers the chooser and the warning boxes the editor opens while it lives, one step a window.
class Answers : public QTimer
{
public:
    explicit Answers(QList<Step> steps)
    {
        connect(this, &QTimer::timeout, [steps]() mutable {
            QWidget *modal = QApplication::activeModalWidget();
            if ((qobject_cast<QFileDialog *>(modal) || qobject_cast<QMessageBox *>(modal)) && !steps.isEmpty())
                steps.takeFirst()(modal);
        });
        start(10);
    }
};

Step choose(const QString &picture, QString *folder = nullptr)
{
    return [picture, folder](QWidget *w) {
        auto *dialog = qobject_cast<QFileDialog *>(w);
        QVERIFY(dialog);
        if (folder)
            *folder = dialog->directory().absolutePath();
        // Typed into the dialog's own line, as an author does.
        dialog->setDirectory(pictureFolder().path());
        dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"))->setText(picture);
        QMetaObject::invokeMethod(dialog, "accept");
    };
}

QStringList listTexts(QListWidget *list)
{
    QStringList out;
    for (int i = 0; i < list->count(); ++i)
        out << list->item(i)->text() + QLatin1Char('=') + list->item(i)->data(Qt::UserRole).toString();
    return out;
}

// A row's doings in an editor dialog of the widget, returning what it read there.
using Act = std::function<QStringList(QDialog *, QWidget *)>;
// What a row reads off its widget.
using Look = std::function<QStringList(QWidget *)>;

} // namespace

Q_DECLARE_METATYPE(Act)
Q_DECLARE_METATYPE(Look)

class TestEditorDesigner : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    // The desktop font the editors are drawn for; Qt 5's offscreen platform would default to 12 points.
    void initTestCase() { QApplication::setFont(QFont(QStringLiteral("Sans Serif"), 9)); }
    void init()
    {
        // Three languages, the second one current, so that per-language mix-ups show.
        NORVOInterface_Z3 *hmi = NORVOInterface_Z3::initialization();
        hmi->resetToDefaults();
        hmi->setSystemLanguages({QStringLiteral("Sans"), QStringLiteral("Serif"), QStringLiteral("Monospace")});
        hmi->setCurrentLanguageIndex(1);
    }
    void cleanup()
    {
        DesignerCore::instance().closeForms();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    void cleanupTestCase() { DesignerCore::release(); }


    // The editors whose own parts commit with Ok (table items and keypad record, picture list, tab
    // list, captions) or at once (panels): what the row reads in the dialog, then what the widget
    // shows after it closed; the steps it left (Ok: one); the saved form holding the pattern, reopened alike (widget and saved text);
    // undo gives the earlier form and widget back, redo the edited widget. The widget is selected and
    // shown in the property editor, as in Designer, and no warning comes up meanwhile.
    void editorCommits_data()
    {
        QTest::addColumn<QString>("widget");
        QTest::addColumn<QString>("properties");
        QTest::addColumn<QByteArray>("menu"); // empty: "Edit Properties..."
        QTest::addColumn<Act>("act");
        QTest::addColumn<Look>("look");
        QTest::addColumn<QStringList>("seen");
        QTest::addColumn<int>("steps");
        QTest::addColumn<QString>("saved");
        const QString table = prop("rowCount", "number", "3") + prop("columnCount", "number", "2")
                              + prop("data", "cstring", QString::fromLatin1(cells()));
        const QString plain = QString::number(int(QTableWidgetItem().flags()));
        // Ok always writes the keypad record: the form saves it from then on.
        const QString keypadProperties = prop("softKeypad", "bool", "false") + prop("softKeypadPosition", "enum", "TableWidget::Auto");
        const QString feed = QStringLiteral("Feed||%1|TextData:%2").arg(int(Qt::ItemIsEnabled)).arg(QLatin1String(feedRecord().toHex()));
        // Designer's item editor lists every row and column, shows the cells and commits an edit;
        // the form holds it in "data" alone, no <item>, plain row and column numbers not stored.
        QTest::newRow("table items") << "TableWidget" << table << ItemsMenu << Act([](QDialog *dialog, QWidget *) {
            auto *grid = dialog->findChild<QTableWidget *>();
            const QStringList seen{QString::number(dialog->findChild<QWidget *>(QStringLiteral("columnEditor"))->findChild<QListWidget *>()->count()),
                                   QString::number(dialog->findChild<QWidget *>(QStringLiteral("rowEditor"))->findChild<QListWidget *>()->count()),
                                   grid->item(0, 0)->text()};
            grid->item(1, 0)->setText(QStringLiteral("Spindle"));
            dialog->accept();
            return seen;
        }) << Look(cellsOf)
            << QStringList{"2", "3", "Feed", feed, QStringLiteral("|1@0@100@8@2@0@9999|%1|").arg(plain),
                           QStringLiteral("Spindle|bit@1@0@30@5@0|%1|").arg(plain), "-", "-", "-"}
            << 1 << "^(?!.*<item).*(<row/>\\s*){3}(<column/>\\s*){2}";
        // The keypad record as the table has it, "Edit Items..." there opening Designer's item editor.
        const Act keypad = [](QDialog *dialog, QWidget *) {
            auto *editor = dialog->findChild<NKeyPadEditor *>();
            NKeyPadStruct k = editor->getKeyPadStruct();
            QStringList seen{QStringLiteral("%1 %2").arg(k.enabled).arg(k.geometry().width())};
            QTimer::singleShot(0, [&seen, dialog] {
                if (auto *items = qobject_cast<QDialog *>(QApplication::activeModalWidget()); items && items != dialog) {
                    seen << (items->findChild<QTableWidget *>() ? QStringLiteral("items") : QString());
                    items->reject();
                }
            });
            dialog->findChild<QPushButton *>(QStringLiteral("editItemsButton"))->click();
            k.enabled = 1;
            k.position = TableWidget::Center;
            editor->setKeyPadStruct(k);
            dialog->accept();
            return seen;
        };
        QTest::newRow("table keypad") << "TableWidget" << table + keypadProperties + prop("softKeypadGeometry", "rect", "<x>5</x><y>6</y><width>70</width><height>80</height>")
                                      << QByteArray() << keypad << Look(keypadOf)
                                      << QStringList{"0 70", "items", QStringLiteral("1 %1 5,6 70x80").arg(int(TableWidget::Center))} << 1
                                      << "softKeypadPosition.*Center";
        const auto pictures = [](bool ok) {
            return Act([ok](QDialog *dialog, QWidget *) {
                auto *list = dialog->findChild<QListWidget *>(QStringLiteral("listWidget"));
                QStringList seen{listTexts(list).join(QLatin1Char(' '))};
                Answers answers({choose(QStringLiteral("green.png"))});
                dialog->findChild<QPushButton *>(QStringLiteral("newButton"))->click();
                // An unreadable file: the box, then the chooser again in the same folder; then a picture.
                QString folder;
                Answers again({choose(QStringLiteral("notes.png")),
                               [&](QWidget *w) {
                                   auto *box = static_cast<QMessageBox *>(w);
                                   seen << w->windowTitle() + QLatin1Char('|') + box->text().section(QLatin1Char(':'), 0, 0)
                                                                                  .remove(pictureFolder().path() + QLatin1Char('/'));
                                   box->accept();
                               },
                               choose(QStringLiteral("blue.png"), &folder)});
                dialog->findChild<QPushButton *>(QStringLiteral("newButton"))->click();
                seen << listTexts(list).join(QLatin1Char(' ')) << QString::number(folder == pictureFolder().path());
                // Moving the last one down changes nothing; up swaps it with the one before.
                list->setCurrentRow(2);
                dialog->findChild<QPushButton *>(QStringLiteral("downButton"))->click();
                dialog->findChild<QPushButton *>(QStringLiteral("upButton"))->click();
                list->setCurrentRow(0);
                dialog->findChild<QPushButton *>(QStringLiteral("deleteButton"))->click();
                seen << listTexts(list).join(QLatin1Char(' ')) << dialog->findChild<DynamicImage *>()->images();
                ok ? dialog->accept() : dialog->reject();
                return seen;
            });
        };
        const QStringList chosen{"0=ResourceFiles/1.png", "Pixmap Read Error|The file 'notes.png' does not appear to be a valid pixmap file",
                                 "0=ResourceFiles/1.png 1=ResourceFiles/2.png 2=ResourceFiles/3.png", "1",
                                 "0=ResourceFiles/3.png 1=ResourceFiles/2.png", "ResourceFiles/3.png", "ResourceFiles/2.png"};
        const QString one = prop("images", "stringlist", "<string>ResourceFiles/1.png</string>");
        QTest::newRow("pictures") << "DynamicImage" << one << QByteArray() << pictures(true) << Look(imagesOf)
                                  << chosen + QStringList{"ResourceFiles/3.png", "ResourceFiles/2.png"} << 1 << "ResourceFiles/3.png";
        QTest::newRow("pictures, cancel") << "DynamicImage" << one << QByteArray() << pictures(false) << Look(imagesOf)
                                          << chosen + QStringList{"ResourceFiles/1.png"} << 0 << "";
        // The tab clicked in the preview is the one edited.
        const auto tabList = [](bool ok) {
            return Act([ok](QDialog *dialog, QWidget *) {
                auto *preview = dialog->findChild<TabWidget *>();
                dialog->findChild<QSpinBox *>(QStringLiteral("tabCountSpinBox"))->setValue(4);
                preview->tabBar()->setCurrentIndex(2);
                auto *text = dialog->findChild<QLineEdit *>(QStringLiteral("currentTextInput"));
                QStringList seen{QString::number(dialog->findChild<QSpinBox *>(QStringLiteral("currentIndexSpinBox"))->value()), text->text()};
                text->setText(QStringLiteral("Tools"));
                emit text->textEdited(QStringLiteral("Tools"));
                seen << preview->tabBar()->tabText(2);
                dialog->findChild<QSpinBox *>(QStringLiteral("currentOperationalAuthority"))->setValue(5);
                ok ? dialog->accept() : dialog->reject();
                return seen;
            });
        };
        const QString two = prop("tabsCount", "number", "2");
        QTest::newRow("tabs") << "TabWidget" << two << QByteArray() << tabList(true) << Look(tabsOf)
                              << QStringList{"2", "tab_3", "Tools", "tab_1 tab_2 Tools tab_4", "0 0 5 0", "2"} << 1
                              << "<string>tab_4</string>";
        QTest::newRow("tabs, cancel") << "TabWidget" << two << QByteArray() << tabList(false) << Look(tabsOf)
                                      << QStringList{"2", "tab_3", "Tools", "tab_1 tab_2", "0 0", "0"} << 0 << "";
        // New and Delete of panels act on the form at once, one undo step each; Cancel takes none back.
        QTest::newRow("panels") << "MdiArea" << "" << QByteArray() << Act([](QDialog *dialog, QWidget *area) {
            auto *list = dialog->findChild<QListWidget *>();
            for (int i = 0; i < 3; ++i)
                dialog->findChild<QPushButton *>(QStringLiteral("newButton"))->click();
            const QStringList seen{list->currentItem()->text(), panelsOf(area).join(QLatin1Char(' '))};
            dialog->findChild<QPushButton *>(QStringLiteral("deleteButton"))->click();
            list->setCurrentRow(0);
            dialog->reject();
            return seen;
        }) << Look(panelsOf) << QStringList{"subWindow_3", "subWindow_1 subWindow_2 subWindow_3", "subWindow_1", "subWindow_2"}
                                << 4 << "name=\"subWindow_2\"";
        // The caption in every language from the start; the picture key commits its language before
        // the texts, they must not undo each other; the bit button's two captions share one font.
        FontMapCodec::Maps maps;
        maps.captionFonts.insert(0, QFont(QStringLiteral("Serif"), 10));
        const QString map = prop("MapBuffer", "cstring", QString::fromLatin1(FontMapCodec::encode(maps)));
        QTest::newRow("function key captions") << "FunctionButton" << map + prop("text", "string", "Start") << QByteArray()
                                               << typeCaptions({"text"}, {"Go"}) << Look(captionsOf)
                                               << QStringList{"Start", "Start|Start|Start", "bold", "0", "0", "Go", "Start|Go|Start", "DejaVu Serif 10", "DejaVu Serif 21 bold"}
                                               << 1 << "textInfoBuffer";
        QTest::newRow("picture key captions") << "PictureButton" << map + prop("language", "enum", "PictureButton::language_2")
                                                                     + prop("text", "string", "Start")
                                              << QByteArray() << typeCaptions({"text"}, {"Go"}) << Look(captionsOf)
                                              << QStringList{"Start", "Start|Start|Start", "bold", "0", "2", "Go", "Start|Go|Start", "DejaVu Serif 10", "DejaVu Serif 21 bold"}
                                              << 1 << "textInfoBuffer";
        QTest::newRow("bit button captions") << "BitButton" << map + prop("onText", "string", "Run") + prop("offText", "string", "Stop")
                                             << QByteArray() << typeCaptions({"onText", "offText"}, {"Läuft", "Steht"})
                                             << Look(captionsOf)
                                             << QStringList{"Run", "Run|Run|Run", "Stop", "Stop|Stop|Stop", "bold", "0", "0", "Läuft", "Steht",
                                                            "Run|Läuft|Run", "DejaVu Serif 10", "DejaVu Serif 21 bold", "Stop|Steht|Stop", "DejaVu Serif 10", "DejaVu Serif 21 bold"}
                                             << 1 << "textInfoBuffer";

    }
    void editorCommits()
    {
        QFETCH(QString, widget);
        QFETCH(QString, properties);
        QFETCH(QByteArray, menu);
        QFETCH(Act, act);
        QFETCH(Look, look);
        QFETCH(int, steps);
        QTemporaryDir project;
        QVERIFY(QDir(project.path()).mkpath(QStringLiteral("ResourceFiles")));
        writePng(project.filePath(QStringLiteral("ResourceFiles/1.png")), Qt::red);
        QWidget *target = openForm(widget, properties, true);
        QVERIFY(target);
        m_form->setFileName(project.filePath(QStringLiteral("screen.ui")));
        m_form->selectWidget(target, true);
        DesignerCore::instance().core()->propertyEditor()->setObject(target);
        const QString before = m_form->contents();
        const QStringList looked = look(target);
        static QStringList warnings;
        warnings.clear();
        const QtMessageHandler previous = qInstallMessageHandler(
            [](QtMsgType, const QMessageLogContext &, const QString &message) {
                if (!message.contains(QRegularExpression(QStringLiteral("propagateSizeHints|not supported on this platform"))))
                    warnings << message; // the offscreen platform's own go
            });
        QStringList seen;
        const bool opened = DesignerCore::runEditor(target, [&](QDialog *dialog) { seen = act(dialog, target); },
                                                    menu.isEmpty() ? nullptr : menu.constData());
        qInstallMessageHandler(previous);
        QVERIFY(opened);
        QCOMPARE(warnings, QStringList());
        QCoreApplication::processEvents();
        QTEST(seen + look(target), "seen");
        QUndoStack *history = m_form->commandHistory();
        QCOMPARE(history->count(), steps);
        const QString after = m_form->contents();
        QFETCH(QString, saved);
        QVERIFY2(after.contains(QRegularExpression(saved, QRegularExpression::DotMatchesEverythingOption)), qPrintable(after));
        QDesignerFormWindowInterface *again = DesignerCore::instance().createForm(after, true);
        QCOMPARE(look(DesignerCore::formWidget(again, target->objectName())), look(target));
        QCOMPARE(again->contents(), after);
        if (steps == 0)
            return;
        while (history->canUndo())
            history->undo();
        QCoreApplication::processEvents();
        QCOMPARE(m_form->contents(), before);
        QCOMPARE(look(target), looked);
        while (history->canRedo())
            history->redo();
        QCoreApplication::processEvents();
        QCOMPARE(look(target), look(DesignerCore::formWidget(again, target->objectName())));
    }

    void editField_data()
    {
        QTest::addColumn<QString>("widget");
        QTest::addColumn<QString>("properties");
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("shown");
        QTest::addColumn<QVariant>("typed");
        QTest::addColumn<QString>("saved"); // a pattern the saved form holds after Ok
        QTest::addColumn<int>("steps"); // 1: Ok commits one step; 0: typed, put back, Ok commits nothing; -1: Cancel
        const QString address = prop("writeAddress", "number", "40017");
        const QString alignment = prop("alignment", "set", "Qt::AlignRight|Qt::AlignBottom");
        QTest::newRow("line edit") << "BitButton" << "" << "objectName" << "bitButton" << QVariant("start")
                                   << "name=\"start\"" << 1;
        // Designer gives form widgets no focus and no shortcut: the fields show the form's.
        QTest::newRow("combo, hidden in Designer") << "FunctionButton" << prop("focusPolicy", "enum", "Qt::ClickFocus")
                                                   << "focusPolicy" << "ClickFocus" << QVariant("TabFocus")
                                                   << "<enum>Qt::TabFocus</enum>" << 1;
        QTest::newRow("key sequence, hidden in Designer") << "PictureButton" << prop("shortcut", "string", "Ctrl+S")
                                                          << "shortcut" << "Ctrl+S" << QVariant("Ctrl+T")
                                                          << "<string>Ctrl\\+T</string>" << 1;
        QTest::newRow("spin beyond its default range") << "BitButton" << address << "writeAddress" << "40017" << QVariant(120)
                                                       << "<number>120</number>" << 1;
        QTest::newRow("enum choice") << "FunctionButton" << "" << "action.3" << "false" << QVariant(true)
                                     << "FunctionButton::KeepOff</enum>" << 1;
        QTest::newRow("flag replaces its group only") << "BitButton" << alignment << "alignment.1" << "false" << QVariant(true)
                                                      << "<set>(?![^<]*Right)(?=[^<]*AlignLeft)[^<]*AlignBottom" << 1;
        QTest::newRow("other flag group") << "PictureButton" << alignment << "alignment.128" << "false" << QVariant(true)
                                          << "<set>(?![^<]*Bottom)(?=[^<]*AlignRight)[^<]*AlignVCenter" << 1;
        QTest::newRow("font member") << "ButtonGroup" << "" << "font.bold" << "false" << QVariant(true)
                                     << "<bold>true</bold>" << 1;
        QTest::newRow("geometry member") << "FunctionButton" << "" << "geometry.height" << "60" << QVariant(45)
                                         << "<height>45</height>" << 1;
        QTest::newRow("string list") << "DynamicImage" << prop("nameFilters", "stringlist", "<string>a</string><string>b</string>")
                                     << "nameFilters" << "a\nb" << QVariant("*.png") << "<string>\\*\\.png</string>" << 1;
        QTest::newRow("put back") << "GridSplitter" << "" << "rowCount" << "3" << QVariant(5) << "" << 0;
        QTest::newRow("cancel") << "BitButton" << address << "comId" << "0" << QVariant(5) << "" << -1;
        QTest::newRow("grid rows") << "GridSplitter" << "" << "rowCount" << "3" << QVariant(2) << "\"rowCount\">\\s*<number>2<" << 1;
        QTest::newRow("grid cancel") << "GridSplitter" << "" << "columnCount" << "4" << QVariant(2) << "" << -1;
        QTest::newRow("bar groups") << "ButtonGroup" << "" << "groupCount" << "1" << QVariant(3) << "<number>3</number>" << 1;
        QTest::newRow("tab widget place") << "TabWidget" << "" << "geometry.left" << "10" << QVariant(17) << "<x>17</x>" << 1;
        // The table's Ok always writes its keypad record, saved from then on.
        const QString keypad = prop("softKeypad", "bool", "false") + prop("softKeypadPosition", "enum", "TableWidget::Auto")
                               + prop("softKeypadGeometry", "rect", "<x>0</x><y>0</y><width>0</width><height>0</height>");
        QTest::newRow("table rows") << "TableWidget" << keypad << "rowCount" << "4" << QVariant(11) << "<number>11</number>" << 1;
        QTest::newRow("image address") << "DynamicImage" << "" << "address" << "0" << QVariant(30) << "<number>30</number>" << 1;
    }

    void editField()
    {
        QFETCH(QString, widget);
        QFETCH(QString, properties);
        QFETCH(QString, path);
        QFETCH(QString, shown);
        QFETCH(QVariant, typed);
        QFETCH(QString, saved);
        QFETCH(int, steps);
        QWidget *target = openForm(widget, properties);
        QVERIFY(target);
        const QString before = m_form->contents();
        const QRegularExpression savedPattern(saved);
        QVERIFY(saved.isEmpty() || !before.contains(savedPattern));
        const QByteArray property = PropertyPath::parse(path).name();
        QStringList unbound;
        bool ran = false;
        const auto edit = [&](QDialog *d) {
            auto *dialog = qobject_cast<PropertyDialog *>(d);
            QVERIFY(dialog);
            QWidget *preview = dialog->preview();
            // Every field naming a property path is bound and tells what it sets.
            for (QWidget *field : dialog->findChildren<QWidget *>()) {
                if (!isInput(field) || !PropertyPath::parse(field->whatsThis()).isValid())
                    continue;
                bool bound = false;
                for (FieldBinding *binding : dialog->binder()->bindings())
                    bound = bound || binding->field() == field;
                if (!bound || field->statusTip().isEmpty())
                    unbound << field->whatsThis();
            }
            auto *description = dialog->findChild<QLabel *>(QStringLiteral("descriptionWidget"));
            QWidget *field = fieldOf(dialog, path);
            QVERIFY2(field, qPrintable(path));
            auto *tabs = dialog->findChild<QTabWidget *>(QStringLiteral("tabWidget"));
            for (int i = 0; i < tabs->count(); ++i) {
                if (tabs->widget(i)->isAncestorOf(field))
                    tabs->setCurrentIndex(i);
            }
            QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
            // The preview is the widget's own class, in its place and outside the form; a one-line
            // description bar spans the dialog; a long name fits the name field.
            const int longName = field->fontMetrics().horizontalAdvance(QStringLiteral("spindleOverrideButton_2"));
            QCOMPARE((QVector<bool>{preview->inherits(qPrintable(widget)), DesignerHost::formWindowOf(preview) == nullptr,
                                  preview->parentWidget() == dialog->findChild<QWidget *>(QStringLiteral("previewWidget")),
                                  description->width() > dialog->width() * 9 / 10,
                                  description->height() < 2 * description->fontMetrics().lineSpacing(),
                                  path != QLatin1String("objectName") || field->width() > longName + 10}),
                     QVector<bool>(6, true));
            dialog->activateWindow();
            QVERIFY(QTest::qWaitForWindowActive(dialog));
            field->setFocus();
            QTRY_COMPARE_WITH_TIMEOUT(description->text(), field->statusTip(), 1000);
            QCOMPARE(::shown(field), shown);
            const QVariant previewBefore = preview->property(property);
            type(field, typed);
            if (property != "objectName" && property != "geometry")
                QVERIFY(preview->property(property) != previewBefore);
            if (steps == 0)
                type(field, shown);
            ran = true;
            click(dialog, steps < 0 ? QDialogButtonBox::Cancel : QDialogButtonBox::Ok);
        };
        QVERIFY(DesignerCore::runEditor(target, edit));
        QVERIFY(ran);
        QVERIFY2(unbound.isEmpty(), qPrintable(unbound.join(QLatin1String(", "))));
        QCOMPARE(m_form->commandHistory()->count(), qMax(steps, 0));
        if (steps > 0) {
            QVERIFY2(m_form->contents().contains(savedPattern), qPrintable(m_form->contents()));
            m_form->commandHistory()->undo();
        }
        QCOMPARE(m_form->contents(), before);
        QVERIFY(!m_form->isDirty());
    }

private:
    QWidget *openForm(const QString &widget, const QString &properties = QString(), bool shown = false)
    {
        m_form = DesignerCore::instance().createForm(DesignerCore::formDocument(
            QStringLiteral("<widget class=\"%1\" name=\"%2\"><property name=\"geometry\"><rect><x>10</x><y>10</y>"
                           "<width>120</width><height>60</height></rect></property>%3</widget>")
                .arg(widget, objectNameOf(widget), properties)), shown);
        return DesignerCore::formWidget(m_form, objectNameOf(widget));
    }

    QDesignerFormWindowInterface *m_form = nullptr;
};

QTEST_MAIN(TestEditorDesigner)
#include "tst_editordesigner.moc"
