#ifndef FUZZAPPLICATION_H
#define FUZZAPPLICATION_H

#include "operatormessage.h"

#include <QApplication>

// The widgets' application for a fuzz run: offscreen, and silent. Rejected inputs are warned about
// by design; printing each would only slow the run (a fatal message still aborts after the handler),
// and a message box for the operator would wait for ever.
inline void startFuzzApplication(int *argc, char ***argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    OperatorMessage::setSink([](OperatorMessage::Kind, QWidget *, const QString &, const QString &) {});
    static QApplication app(*argc, *argv);
}

// The start of a target that needs nothing more than the application.
#define HMI_FUZZ_APPLICATION()                                          \
    extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)       \
    {                                                                   \
        startFuzzApplication(argc, argv);                               \
        return 0;                                                       \
    }

#endif
