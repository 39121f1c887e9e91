// Feeds arbitrary text to the small parsers an operator or a form reaches: the function button's caption
// table (value list and caption list) and its "r,g,b" colour, the soft keypad's entry and confirmation,
// the value formatting of data words, the binding text of table cells and the record editing takes
// from it, the conversion of what the operator typed into a word, the jump dialog's patterns, the
// table's text files and NC programs, and hmi-table's cell file. The first byte picks the parser and
// its settings.
#include "fuzzapplication.h"
#include "bindingtext.h"
#include "cellfile.h"
#include "currentcell.h"
#include "formtableeditor.h"
#include "formtablereader.h"
#include "functionbutton.h"
#include "jumppattern.h"
#include "keypaddialog.h"
#include "ncprogram.h"
#include "ncview.h"
#include "recordingqeltapp.h"
#include "tablecontents.h"
#include "tablefiles.h"
#include "tablewidget.h"
#include "tablestore.h"
#include "valueconversion.h"
#include "valueformatter.h"

#include <QApplication>
#include <QBuffer>
#include <QDialog>
#include <QRegularExpression>
#include <QTableWidget>
#include <QTableWidgetItem>
#include <QtEndian>

#include <cstdint>
#include <cstdlib>

namespace {

// A cell file that reads must write back as the same table, and survive the form: stored, written
// into a form, read from it and loaded again, it is still the same table.
void cellFile(const QByteArray &text)
{
    TableCells table;
    Problem problem;
    if (!CellFile::parse(text, &table, &problem))
        return;
    TableCells again;
    if (!CellFile::parse(CellFile::format(table), &again, &problem) || again != table)
        abort();
    StoredTable stored;
    QString error;
    if (!TableStore::store(table, &stored, &error))
        return;
    static const QByteArray form = "<ui version=\"4.0\">\n <widget class=\"QWidget\" name=\"Form\">\n"
                                   "  <widget class=\"TableWidget\" name=\"t\"/>\n </widget>\n</ui>\n";
    QByteArray written;
    if (!FormTableEditor::write(form, QStringLiteral("t"), stored, &written, &problem))
        return; // a header a form cannot hold
    StoredTable read;
    QStringList notes;
    if (!FormTableReader::read(written, QStringLiteral("t"), &read, &problem)
        || !TableStore::load(read, &again, &error, &notes) || again != table)
        abort();
}

// What a program view writes back of bytes: the non-empty lines (ended by LF, CR-LF or CR alone),
// a-z upper-cased, each with the first line end found.
QByteArray programAsWritten(const QByteArray &bytes)
{
    QByteArrayList lines{QByteArray()};
    QByteArray end;
    for (int i = 0; i < bytes.size(); ++i) {
        const char c = bytes.at(i);
        if (c != '\r' && c != '\n') {
            lines.last() += c >= 'a' && c <= 'z' ? char(c - 32) : c;
            continue;
        }
        const bool crlf = c == '\r' && i + 1 < bytes.size() && bytes.at(i + 1) == '\n';
        if (end.isEmpty())
            end = crlf ? "\r\n" : QByteArray(1, c);
        i += crlf;
        lines << QByteArray();
    }
    QByteArray out;
    for (const QByteArray &line : lines) {
        if (!line.isEmpty())
            out += line + (end.isEmpty() ? QByteArray("\n") : end);
    }
    return out;
}

} // namespace

HMI_FUZZ_APPLICATION()

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size < 1)
        return 0;
    const quint8 mode = data[0];
    const QByteArray rest(reinterpret_cast<const char *>(data + 1), int(size - 1));
    const QString text = QString::fromUtf8(rest);
    switch (mode % 10) {
    case 0: { // caption table: values and captions split at newlines, then one value delivered
        const QStringList lines = text.split(QLatin1Char('\n'));
        FunctionButton button;
        button.SetTextValueList(lines.mid(0, lines.size() / 2));
        button.SetTextStringList(lines.mid(lines.size() / 2));
        button.setLanguage(FunctionButton::Language(mode % 10));
        button.setQeltAppAndFormPtr(nullptr, nullptr);
        button.updateData(3, lines.value(0).toInt());
        button.updateData(3, rest.size());
        break;
    }
    case 1: { // colour text
        FunctionButton button;
        button.setButtonColor(text);
        break;
    }
    case 2: { // keypad entry: settings from the next bytes, then the text as keys and as initial text
        if (rest.size() < 6)
            return 0;
        static const int radices[] = {10, 16, 8, 2, 7};
        const int radix = radices[quint8(rest[0]) % 5];
        const int decimals = qint8(rest[1]);
        const double lowest = qFromBigEndian<qint16>(rest.constData() + 2);
        const double highest = qFromBigEndian<qint16>(rest.constData() + 4);
        const QString entry = QString::fromUtf8(rest.mid(6));
        KeypadDialog keypad;
        keypad.setEntry(radix, entry, 20, decimals, lowest, highest);
        for (const QChar c : entry.left(64))
            keypad.typeKey(QString(c));
        keypad.typeKey(QString::fromUtf8("\xe2\x8c\xab")); // backspace key
        (void)keypad.problem();
        keypad.accept();
        break;
    }
    case 4: { // binding texts, one a line
        for (const QString &line : text.split(QLatin1Char('\n'))) {
            const BindingText binding = BindingText::parse(line);
            (void)BindingText::radixOfIndex(binding.field(8));
        }
        break;
    }
    case 5: // a parameter table's cell file
        cellFile(rest);
        break;
    case 6: { // the jump dialog: the text as a short form and, split at "@", as the fields of the exact form
        const QStringList parts = text.split(QLatin1Char('@'));
        for (int method = 0; method <= JumpPattern::ShortVariable; ++method) {
            JumpPattern::Input input{method, text, qint8(mode), parts.value(0), parts.value(1), parts.value(2),
                                     parts.value(3)};
            const auto pattern = JumpPattern::build(input);
            // What the dialog builds from any input is a pattern the search can use as it is.
            if (pattern && method >= JumpPattern::Variable && !QRegularExpression(*pattern).isValid())
                abort();
            if (pattern && method >= JumpPattern::Variable)
                (void)QRegularExpression(*pattern).match(QStringLiteral("1@0@100@8@2@0@9999@4@0@0")).hasMatch();
        }
        break;
    }
    case 7: { // typed values: a binding text line, then the text to convert by its record
        const int newline = int(text.indexOf(QLatin1Char('\n')));
        QTableWidgetItem item;
        item.setWhatsThis(text.left(newline));
        const CurrentCell cell = CurrentCell::of(&item, mode & 0x80 ? 1 : 0);
        const QString typed = newline < 0 ? text : text.mid(newline + 1);
        (void)ValueConversion::fromKeypad(typed, cell.sizeCode, cell.radix, cell.decimals, cell.lowest, cell.highest);
        (void)ValueConversion::fromDecimalText(typed, cell.decimals);
        (void)ValueConversion::doubleToInt(typed.toDouble(), cell.decimals);
        break;
    }
    case 8: { // an NC program: the first line the code signs; a program read whole comes back as it was
        const int newline = int(rest.indexOf('\n'));
        QByteArray bytes = newline < 0 ? QByteArray() : rest.mid(newline + 1);
        QBuffer file(&bytes);
        file.open(QIODevice::ReadOnly);
        QTableWidget table;
        NcView view(&table);
        view.show(QString::fromUtf8(rest.left(newline)).split(QLatin1Char(',')), &file);
        view.cover(0, table.rowCount() / 2); // some rows made, some not
        QBuffer out;
        out.open(QIODevice::WriteOnly);
        if (!view.write(&out) || (view.notWhole().isEmpty() && out.data() != programAsWritten(bytes)))
            abort();
        break;
    }
    case 9: { // a table text file loaded into a table of text, value and bit cells, then saved
        QTableWidgetItem name(QStringLiteral("Feed"));
        QTableWidgetItem value;
        value.setWhatsThis(QStringLiteral("1@0@100@8@2@-1000@1000"));
        QTableWidgetItem hex;
        hex.setWhatsThis(QStringLiteral("2@3@7@4@0@0@100000@3@1@3"));
        QTableWidgetItem bit;
        bit.setWhatsThis(QStringLiteral("bit@1@0@30@5@0"));
        RecordingQeltApp app;
        QDialog form;
        auto *table = new TableWidget(&form);
        table->setRowCount(2);
        table->setColumnCount(4);
        table->setData(TableContents::encode(2, 4, {{&name, &value, &hex, &bit}, {&value, &name}}));
        table->setQeltAppAndFormPtr(&app, &form);
        table->jumpToCell(1, 0); // makes the stored rows' items
        table->jumpToCell(0, 0);
        QByteArray bytes = rest;
        QBuffer file(&bytes);
        file.open(QIODevice::ReadOnly);
        const auto readCell = [table](int r, int c, QString *text, QString *binding) {
            *text = table->cellText(r, c);
            *binding = table->cellBindingText(r, c);
            return table->item(r, c) != nullptr;
        };
        const auto makeItem = [table](int r, int c) { return table->item(r, c); };
        TableFiles files(table, readCell, makeItem);
        files.load(&file, &app, QStringLiteral("fuzz"));
        QBuffer out;
        out.open(QIODevice::WriteOnly);
        files.save(&out, &app);
        break;
    }
    default: { // value formatting: value, size code, radix, width and decimals from the bytes
        if (rest.size() < 8)
            return 0;
        const qint32 value = qFromBigEndian<qint32>(rest.constData());
        (void)ValueFormatter::format(value, qint8(rest[4]), qint8(rest[5]), qint8(rest[6]), qint8(rest[7]));
        break;
    }
    }
    return 0;
}
