// Feeds arbitrary bytes to the form checker (as a .ui form: XML, properties written into probe
// widgets, table contents read to the end, binding texts, the depth scan the panel makes before
// loading, with the second bit of the first byte also the form loaded and attached for its
// variables) and to the word library file the panel reads. The first byte picks which.
#include "fuzzapplication.h"
#include "formchecker.h"
#include "formlimits.h"
#include "wordlibraryfile.h"

#include <QBuffer>

#include <algorithm>
#include <cstdint>
#include <cstdlib>

HMI_FUZZ_APPLICATION()

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size < 1)
        return 0;
    QByteArray bytes(reinterpret_cast<const char *>(data) + 1, int(size - 1));
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    if (data[0] & 1) {
        WordLibraryFile library;
        library.read(&buffer);
        if (library.words().size() > WordLibraryFile::MaxWords || library.problems().size() > 102)
            std::abort();
        return 0;
    }
    FormChecker::VariableCheck variables;
    if (data[0] & 2) {
        variables = [](const FormWidget &widget, const FormVariable &variable, QList<FormFinding> *) {
            if (variable.line < widget.line) // a variable is given at its widget or inside it
                std::abort();
        };
    }
    FormChecker checker({4, {{1, {QStringLiteral("One")}}}}, variables);
    QList<FormFinding> findings;
    const bool read = checker.check(&buffer, &findings);
    if (!read && !findings.isEmpty())
        std::abort();
    // What the panel's loader scans before Qt's loader recurses: the checker refuses the same depth.
    buffer.seek(0);
    const bool tooDeep = FormLimits::firstTooDeep(&buffer) > 0;
    const bool flagged = std::any_of(findings.cbegin(), findings.cend(), [](const FormFinding &f) {
        return f.message == FormLimits::nestingProblem();
    });
    if (read && tooDeep != flagged)
        std::abort();
    return 0;
}
