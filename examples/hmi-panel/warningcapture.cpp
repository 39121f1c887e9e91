#include "warningcapture.h"

namespace {
QStringList *captured = nullptr;

void capture(QtMsgType type, const QMessageLogContext &, const QString &message)
{
    if (type != QtDebugMsg && type != QtInfoMsg && captured)
        captured->append(message);
}
} // namespace

WarningCapture::WarningCapture()
{
    Q_ASSERT(!captured);
    captured = new QStringList;
    m_previous = qInstallMessageHandler(capture);
}

WarningCapture::~WarningCapture()
{
    qInstallMessageHandler(m_previous);
    delete captured;
    captured = nullptr;
}

QStringList WarningCapture::take()
{
    QStringList out;
    out.swap(*captured);
    return out;
}
