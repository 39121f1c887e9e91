#include "operatormessage.h"

#include <QMessageBox>

namespace {
OperatorMessage::Sink &sink()
{
    static OperatorMessage::Sink installed;
    return installed;
}
} // namespace

void OperatorMessage::setSink(Sink sink_)
{
    sink() = std::move(sink_);
}

void OperatorMessage::information(QWidget *source, const QString &title, const QString &text)
{
    tell(Information, source, title, text);
}

void OperatorMessage::warning(QWidget *source, const QString &title, const QString &text)
{
    tell(Warning, source, title, text);
}

void OperatorMessage::tell(Kind kind, QWidget *source, const QString &title, const QString &text)
{
    if (sink()) {
        sink()(kind, source, title, text);
    } else if (kind == Warning) {
        QMessageBox::warning(source, title, text, QMessageBox::Ok);
    } else {
        QMessageBox::information(source, title, text);
    }
}
