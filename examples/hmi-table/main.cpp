// hmi-table: authors the cells of a parameter table in a form from a tab-separated text file.
//   hmi-table write FORM.ui TABLE CELLS.tsv [-o OUT.ui]
//   hmi-table read FORM.ui TABLE [-o CELLS.tsv]
#include "tablecommands.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <cstdio>

namespace {

const char Description[] = R"(Writes the cells of a parameter table (a TableWidget) in a Qt Designer form from a
text file, or reads them back into one.

  write FORM.ui TABLE CELLS.tsv   Sets the table's rows, columns, data, merged cells and headers from
                                  CELLS.tsv and removes its Designer items; declares TableWidget as
                                  a custom widget (for uic) if the form does not. Writes FORM.ui in
                                  place unless -o is given.
  read FORM.ui TABLE              Prints the table as a cell file (to -o FILE if given).

The cell file is UTF-8 text (at most 16 MiB, 100,000 rows and 500,000 cells), one line per table
row, cells separated by tabs (CR-LF accepted):
  Feed override                   a text cell
  Spindle speed|Drehzahl          the cell's text in every panel language (up to 10)
  {1@0@100@8@2@0@9999}            a binding (value or bit cell) after the text, in braces
  Feed|Vorschub{bit@2@1@30@5@0}   both
Escapes: \\ \t \n \r \| \{ \} and \# (a line that starts with # is not a row).
Lines starting with # are directives, or comments otherwise:
  #columns<TAB>Axis|Achse{80}<TAB>Value     column headers: languages, then {width in pixels}
  #span<TAB>ROW<TAB>COLUMN<TAB>ROWS<TAB>COLUMNS   a merged cell; first row and column count from 0
The table has a row for every other line and as many columns as its widest line or #columns.)";

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("hmi-table"));
    QCommandLineParser parser;
    parser.setApplicationDescription(QString::fromUtf8(Description));
    parser.addHelpOption();
    parser.addPositionalArgument(QStringLiteral("command"), QStringLiteral("write or read"));
    parser.addPositionalArgument(QStringLiteral("form"), QStringLiteral("The .ui form."));
    parser.addPositionalArgument(QStringLiteral("table"), QStringLiteral("The table's object name."));
    parser.addPositionalArgument(QStringLiteral("cells"), QStringLiteral("write: the cell file."), QStringLiteral("[cells]"));
    const QCommandLineOption output({QStringLiteral("o"), QStringLiteral("output")},
                                    QStringLiteral("Write to FILE instead (write: the form, read: the cells)."),
                                    QStringLiteral("FILE"));
    parser.addOption(output);
    if (!parser.parse(QCoreApplication::arguments())) {
        std::fprintf(stderr, "hmi-table: %s (see hmi-table --help)\n", qPrintable(parser.errorText()));
        return 1;
    }
    if (parser.isSet(QStringLiteral("help")))
        parser.showHelp(0);

    const QStringList args = parser.positionalArguments();
    const QString command = args.value(0);
    if (command == QLatin1String("write") && args.size() == 4)
        return TableCommands::write(args.at(1), args.at(2), args.at(3), parser.value(output));
    if (command == QLatin1String("read") && args.size() == 3)
        return TableCommands::read(args.at(1), args.at(2), parser.value(output));
    std::fprintf(stderr, "hmi-table: usage: hmi-table write FORM.ui TABLE CELLS.tsv [-o OUT.ui]\n"
                         "                  hmi-table read FORM.ui TABLE [-o CELLS.tsv]\n"
                         "       (see hmi-table --help)\n");
    return 1;
}
