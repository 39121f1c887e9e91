#pragma once
#include "bitbutton.h"
#include "fontmapcodec.h"
#include "recordingqeltapp.h"
#include "textinfocodec.h"
#include "widgetfactory.h"

#include <QApplication>
#include <QDialog>
#include <QMouseEvent>
#include <QTest>

#include <type_traits>

namespace buttontest {

// A form as the panel application loads it: a plain QDialog that carries the application object. The
// widget is a Button, or with the default QWidget the class named, made as forms make it.
template <typename Button = QWidget, typename App = RecordingQeltApp>
struct PanelOf
{
    App app;
    QDialog form;
    QWidget otherForm; // handed over by setQeltAppAndFormPtr
    Button *button;

    explicit PanelOf(const QString &className = QString())
        : button(make(className))
    {
        form.setProperty("QeltApp", norvo_v0::QeltApp::toVariant(&app));
        form.resize(200, 60);
        button->setGeometry(0, 0, 100, 30);
    }
    bool attachBySlot()
    {
        return QMetaObject::invokeMethod(button, "setQeltAppAndFormPtr",
                                         Q_ARG(void *, static_cast<norvo_v0::QeltApp *>(&app)), Q_ARG(void *, &otherForm));
    }
    // "name=value" assignments; with skipMissing, properties the class lacks are passed over.
    void set(const QStringList &assignments, bool skipMissing = false)
    {
        for (const QString &a : assignments) {
            const QByteArray name = a.section('=', 0, 0).toLatin1();
            if (!skipMissing || button->metaObject()->indexOfProperty(name) >= 0)
                QVERIFY2(button->setProperty(name, a.section('=', 1).toInt()), name);
        }
    }

private:
    Button *make(const QString &className)
    {
        if constexpr (std::is_same_v<Button, QWidget>)
            return WidgetFactory::create(className, &form);
        else
            return new Button(&form);
    }
};
using ClassPanel = PanelOf<>;
// registerUIVariable's arguments after the form, widget and callback: index, link, channel, data class,
// address, bit type and bit of one item.
inline QVariantList registration(const QList<int> &fields)
{
    return QVariantList(fields.cbegin(), fields.cend()) << 1 << 10 << 10 << 0 << 0 << false;
}
// Each call as its name followed by its arguments.
inline QList<QVariantList> namedArguments(const QList<RecordingQeltApp::Call> &calls)
{
    QList<QVariantList> out;
    for (const RecordingQeltApp::Call &c : calls)
        out << QVariantList{c.name} + c.args;
    return out;
}
// Mouse move with the left button held, as a drag delivers it.
inline void dragTo(QWidget *w, const QPoint &pos)
{
    QMouseEvent e(QEvent::MouseMove, pos, w->mapToGlobal(pos), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(w, &e);
}
// A keep-on key that writes user word `address` bit `bit` and shows that same bit through its bit type.
inline BitButton *keepOnUserBitKey(QWidget *form, int address, int bit)
{
    auto *button = new BitButton(form);
    button->setGeometry(0, 0, 100, 30);
    button->SetAction(BitButton::KeepOn);
    button->SetWriteBitType(BitButton::User);
    button->SetWriteAddress(address);
    button->SetWriteBitIndex(bit);
    button->SetReadBitType(BitButton::User_BIT);
    button->SetReadAddress(address);
    button->SetReadBitIndex(bit);
    return button;
}
inline QFont sizedFont(int pointSize) { return QFont(QStringLiteral("Sans"), pointSize); }
inline TextData record(int wordLibId, const QStringList &texts, const QList<int> &fontSizes = {}, int first = 0,
                       int second = 0)
{
    TextData r;
    r.firstValue = first;
    r.secondValue = second;
    r.wordLibId = wordLibId;
    r.texts = texts;
    for (int size : fontSizes)
        r.fonts << sizedFont(size);
    return r;
}
inline QString describeRecord(const TextData &r)
{
    QStringList fonts;
    for (const QFont &f : r.fonts)
        fonts << QString::number(f.pointSize());
    return QStringLiteral("%1 %2 id %3 [%4] [%5]")
        .arg(r.firstValue).arg(r.secondValue).arg(r.wordLibId).arg(r.texts.join('|'), fonts.join(','));
}
inline QByteArray fontMapBuffer(const QMap<int, QFont> &captionFonts)
{
    FontMapCodec::Maps maps;
    maps.captionFonts = captionFonts;
    return FontMapCodec::encode(maps);
}

} // namespace buttontest
