#include "paneltables.h"

#include "inputwidget.h"
#include "tablewidget.h"
#include "tabwidget.h"

#include <QDir>
#include <QFileInfo>
#include <QWidget>

QStringList PanelTables::setUp(QWidget *form, const QString &formFolder)
{
    QStringList problems;
    auto *input = form->findChild<InputWidget *>();
    for (TableWidget *table : form->findChildren<TableWidget *>()) {
        if (input)
            table->setInputWidget(input);
        const QString program = table->property("ncProgram").toString();
        if (!program.isEmpty()) {
            const QString path = QDir(formFolder).absoluteFilePath(program);
            if (QFileInfo::exists(path)) {
                table->showAsNCCode(path, table->property("ncCodeSigns").toString());
                table->resizeColumnsToContents(); // by the rows on screen
            }
            else
                problems << QStringLiteral("table \"%1\": no program %2").arg(table->objectName(), path);
        }
        const QStringList monitor = table->property("bitMonitor").toString().split(QLatin1Char(','));
        if (monitor.size() == 5) {
            QList<int> numbers;
            for (const QString &part : monitor)
                numbers << part.trimmed().toInt();
            table->showAsCNCBit(numbers.at(0), numbers.at(1), numbers.at(2), numbers.at(3), numbers.at(4));
        } else if (monitor.size() > 1) {
            problems << QStringLiteral("table \"%1\": \"bitMonitor\" needs five numbers").arg(table->objectName());
        }
    }
    return problems;
}

TableWidget *PanelTables::searchTable(QWidget *form, TableWidget *lastUsed)
{
    if (lastUsed && lastUsed->isVisible())
        return lastUsed;
    TableWidget *shown = nullptr;
    for (TableWidget *table : form ? form->findChildren<TableWidget *>() : QList<TableWidget *>()) {
        if (!table->isVisible())
            continue;
        for (QWidget *w = table->parentWidget(); w && w != form; w = w->parentWidget()) {
            if (qobject_cast<TabWidget *>(w))
                return table; // the page the operator turned to
        }
        if (!shown)
            shown = table;
    }
    return shown;
}
