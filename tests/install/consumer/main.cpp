// consumer FORM [DESIGNER-PLUGIN-DIR]: loads FORM, which holds a BitButton "spindleButton" and a
// TableWidget "parameters" of two rows, twice: through the library's widget factory, as a panel
// application does, and, given the folder, through Designer's plugin alone. Prints what it found; exits
// 1 on the first widget that is not of our class or lacks what the form gave it.
#include "bitbutton.h"
#include "tablewidget.h"
#include "widgetfactory.h"

#include <QApplication>
#include <QFile>
#include <QTableWidgetItem>
#include <QUiLoader>

#include <cstdio>
#include <memory>

namespace {

class FactoryLoader : public QUiLoader
{
public:
    QWidget *createWidget(const QString &className, QWidget *parent, const QString &name) override
    {
        QWidget *widget = WidgetFactory::create(className, parent);
        if (!widget)
            return QUiLoader::createWidget(className, parent, name);
        widget->setObjectName(name);
        return widget;
    }
};

bool fail(const char *what)
{
    std::fprintf(stderr, "consumer: %s\n", what);
    return false;
}

std::unique_ptr<QWidget> load(QUiLoader *loader, const QString &fileName)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        return nullptr;
    return std::unique_ptr<QWidget>(loader->load(&file));
}

// The form's two widgets are ours, with the properties and cells the form stores.
bool check(QWidget *form, const char *route)
{
    if (!form)
        return fail("the form does not load");
    // findChild casts through the meta-object: a plain QWidget or QTableWidget stand-in is not found.
    auto *button = form->findChild<BitButton *>(QStringLiteral("spindleButton"));
    auto *table = form->findChild<TableWidget *>(QStringLiteral("parameters"));
    if (!button || !table)
        return fail("the form's widgets are not BitButton and TableWidget");
    if (button->onText() != QLatin1String("Spindle ON"))
        return fail("the button lost its text");
    form->show(); // the table makes the items of the rows on screen
    QApplication::processEvents();
    const QTableWidgetItem *cell = table->item(1, 0);
    if (table->rowCount() != 2 || !cell || cell->text() != QLatin1String("Spindle speed"))
        return fail("the table does not show the cells in its data");
    std::printf("%s: %s \"%s\", %s %dx%d \"%s\"\n", route, button->metaObject()->className(),
                qPrintable(button->onText()), table->metaObject()->className(), table->rowCount(),
                table->columnCount(), qPrintable(cell->text()));
    return true;
}

} // namespace

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    const QStringList args = QApplication::arguments();
    if (args.size() < 2) {
        std::fprintf(stderr, "usage: consumer FORM [DESIGNER-PLUGIN-DIR]\n");
        return 2;
    }
    std::printf("Qt %s\n", qVersion());

    FactoryLoader factoryLoader;
    factoryLoader.clearPluginPaths();
    if (!check(load(&factoryLoader, args.at(1)).get(), "factory"))
        return 1;

    if (args.size() > 2) {
        QUiLoader pluginLoader;
        pluginLoader.clearPluginPaths();
        pluginLoader.addPluginPath(args.at(2));
        const QStringList offered = pluginLoader.availableWidgets();
        if (!offered.contains(QLatin1String("BitButton")) || !offered.contains(QLatin1String("TableWidget"))) {
            fail("the Designer plugin offers no BitButton and TableWidget");
            return 1;
        }
        if (!check(load(&pluginLoader, args.at(1)).get(), "plugin"))
            return 1;
    }
    return 0;
}
