// The button base: signals from mouse and keys (the delayed trigger among them), auto repeat, shortcuts, exclusive
// groups and arrow keys; and the one painter every button draws with: bevel, body, icon and caption
// places, extreme geometry, the render cache and the pressed shift.
#include "abstractbutton.h"
#include "buttonpainter.h"
#include "buttontestsupport.h"

#include <QPainter>
#include <QtTest>

#include <climits>
#include <functional>
#include <tuple>

// Records the button's signals in the order they arrive.
class SignalLog
{
public:
    explicit SignalLog(AbstractButton *b)
    {
        QObject::connect(b, &AbstractButton::pressed, b, [this] { add("pressed"); });
        QObject::connect(b, &AbstractButton::released, b, [this] { add("released"); });
        QObject::connect(b, &AbstractButton::clicked, b, [this](bool c) { add(c ? "clicked+" : "clicked"); });
        QObject::connect(b, &AbstractButton::toggled, b, [this](bool c) { add(c ? "toggled+" : "toggled-"); });
        QObject::connect(b, &AbstractButton::pressDelayTrigger, b, [this] { add("trigger"); });
        QObject::connect(b, &AbstractButton::keyPress, b, [this](int k) { add(QString("key %1").arg(k)); });
    }
    void add(const QString &s) { entries << s; }
    QStringList entries;
};

// Runs steps like "press 10 10", "move 200 10", "release 10 10", "rpress 10 10" (right button), "disable",
// "hide", "blur" (focus lost), "delay" (the delayed trigger on), "key 32", "keyup 32", "animate 10" (animated
// click of 10 ms), "wait 50" (ms), "shortcut" (Ctrl+K, Ctrl+L), "shortcuts 0" (shortcut disabled; 1: enabled)
// and "ctrl 75" (Ctrl+K to the window).
static void play(AbstractButton *b, const QStringList &steps)
{
    const QHash<QString, std::function<void(const QPoint &)>> actions{
        {"key", [b](const QPoint &p) { QTest::keyPress(b, Qt::Key(p.x())); }},
        {"keyup", [b](const QPoint &p) { QTest::keyRelease(b, Qt::Key(p.x())); }},
        {"press", [b](const QPoint &p) { QTest::mousePress(b, Qt::LeftButton, {}, p); }},
        {"rpress", [b](const QPoint &p) { QTest::mousePress(b, Qt::RightButton, {}, p); }},
        {"release", [b](const QPoint &p) { QTest::mouseRelease(b, Qt::LeftButton, {}, p); }},
        {"move", [b](const QPoint &p) { buttontest::dragTo(b, p); }},
        {"disable", [b](const QPoint &) { b->setEnabled(false); }},
        {"hide", [b](const QPoint &) { b->hide(); }},
        {"blur", [b](const QPoint &) { b->clearFocus(); }},
        {"delay", [b](const QPoint &) { b->setDeylayTrigger(true); }},
        {"animate", [b](const QPoint &p) { b->animateClick(p.x()); }},
        {"wait", [](const QPoint &p) { QTest::qWait(p.x()); }},
        {"shortcut", [b](const QPoint &) { b->setShortcut(QKeySequence("Ctrl+K, Ctrl+L")); }},
        {"shortcuts", [b](const QPoint &p) { b->setShortcutEnabled(p.x()); }},
        {"ctrl", [b](const QPoint &p) { QTest::keyClick(b->window(), Qt::Key(p.x()), Qt::ControlModifier); }}};
    for (const QString &step : steps) {
        const QStringList f = step.split(' ');
        actions.value(f[0])(QPoint(f.value(1).toInt(), f.value(2).toInt()));
    }
}

static QColor named(const QString &name)
{
    static const QMap<QString, QColor> colours{{"light", QColor(255, 255, 0)}, {"dark", QColor(0, 0, 255)},
                                               {"off", QColor(240, 240, 240)}, {"on", QColor(192, 192, 192)},
                                               {"disabled", QColor(208, 208, 208)}, {"green", QColor(Qt::green)}};
    return colours.value(name);
}

// A button that, like the bit button, picks its face from an on/off state.
class OnOffTestButton : public AbstractButton
{
public:
    OnOffTestButton()
    {
        resize(100, 30);
        setCheckable(true); // painted as any other until checked
        QPalette pal = palette();
        pal.setColor(QPalette::Light, named("light"));
        pal.setColor(QPalette::Dark, named("dark"));
        setPalette(pal);
        off.bodyColor = named("off");
        on.bodyColor = named("on");
        disabled.bodyColor = named("disabled");
        off.captionColor = on.captionColor = disabled.captionColor = QColor(255, 0, 0); // as captionBox() finds it
    }
    ButtonLook look;
    ButtonFace off, on, disabled;
    bool stateOn = false;
    bool useCache = false;
    ButtonRenderCache cache;

protected:
    void paintEvent(QPaintEvent *) override
    {
        ButtonPainter(this, look, useCache ? &cache : nullptr).paint(!isEnabled() ? disabled : stateOn ? on : off);
    }
};

static QPixmap solid(const QColor &c, int size = 10)
{
    QPixmap p(size, size);
    p.fill(c);
    return p;
}

// The bounding box of the caption's red pixels.
static QRect captionBox(const QImage &img)
{
    QRect box;
    for (int y = 0; y < img.height(); ++y) {
        for (int x = 0; x < img.width(); ++x) {
            const QColor c = img.pixelColor(x, y);
            if (c.green() < 200 && c.red() > c.green() + 50 && c.red() > c.blue() + 50)
                box |= QRect(x, y, 1, 1);
        }
    }
    return box;
}

// The button painted with look words: "radius N", "checked", "down", "disabled", "on" (the on state),
// "picture F" (a green picture for face F), "borderless", "size W H", "text S", "align FLAGS", "icon POSITION"
// (a green 16 px icon).
static QImage facePicture(const QStringList &look)
{
    OnOffTestButton b;
    const QHash<QString, std::function<void(const QString &)>> words{
        {"radius", [&b](const QString &arg) { b.look.cornersRadius = arg.toInt(); }},
        {"checked", [&b](const QString &) { b.setChecked(true); }},
        {"down", [&b](const QString &) { b.setDown(true); }},
        {"disabled", [&b](const QString &) { b.setEnabled(false); }},
        {"on", [&b](const QString &) { b.stateOn = true; }},
        {"borderless", [&b](const QString &) { b.look.borderEnabled = false; }},
        {"picture", [&b](const QString &arg) { (arg == "on" ? b.on : b.disabled).picture = solid(Qt::green); }},
        {"size", [&b](const QString &arg) { b.resize(arg.section(' ', 0, 0).toInt(), arg.section(' ', 1).toInt()); }},
        {"text", [&b](const QString &arg) { b.setText(arg); }},
        {"align", [&b](const QString &arg) {
             b.setAlignment(Qt::Alignment(QMetaEnum::fromType<Qt::Alignment>().keysToValue(qPrintable(arg))));
         }},
        {"icon", [&b](const QString &arg) {
             b.setIcon(QIcon(solid(Qt::green, 16)));
             b.setIconSize(QSize(16, 16));
             const int position = QMetaEnum::fromType<AbstractButton::EButtonPosition>().keyToValue(qPrintable(arg));
             b.look.iconPosition = AbstractButton::EButtonPosition(position);
         }}};
    for (const QString &word : look)
        words.value(word.section(' ', 0, 0))(word.section(' ', 1));
    return b.grab().toImage();
}

class TestButtonBase : public QObject
{
    Q_OBJECT

private:
    QWidget *window = nullptr;

    AbstractButton *shownButton(const QRect &geometry = QRect(10, 10, 100, 30))
    {
        auto *b = new AbstractButton(window);
        b->setGeometry(geometry);
        b->setFocusPolicy(Qt::StrongFocus);
        b->show();
        return b;
    }

private slots:
    void init()
    {
        window = new QWidget;
        window->resize(600, 400);
        window->show();
        window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window));
    }
    void cleanup() { delete window; }
    void mouseAndKeys_data()
    {
        QTest::addColumn<bool>("checkable"); QTest::addColumn<QStringList>("steps");
        QTest::addColumn<QStringList>("expected");
        const auto row = [](const QByteArray &name, bool checkable, const QString &steps, const char *expected) {
            QTest::newRow(name.constData()) << checkable << steps.split(", ") << QString(expected).split(", ", Qt::SkipEmptyParts);
        };
        row("click", false, "press 50 15, release 50 15", "pressed, released, clicked");
        row("checkable click", true, "press 50 15, release 50 15", "pressed, toggled+, released, clicked+");
        row("drag out and back in", false, "press 50 15, move 150 15, move 60 15, release 60 15",
            "pressed, released, pressed, released, clicked");
        row("release outside", true, "press 50 15, move 150 15, release 150 15", "pressed, released");
        row("right button", false, "rpress 50 15", "");
        row("move without press", false, "move 50 15, move 150 15", "");
        row("disabled while down", false, "press 50 15, disable, release 50 15", "pressed");
        row("space", false, "key 32, keyup 32", "key 32, pressed, released, clicked");
        row("escape cancels", false, "key 32, key 16777216, keyup 32", "key 32, pressed, key 16777216, released");
        // A button that goes up before its click completes is not clicked.
        row("hidden while down", false, "press 50 15, hide, release 50 15", "pressed");
        row("animated click cancelled by Escape", false, "animate 10, key 16777216, wait 50", "pressed, key 16777216, released");
        row("return is ignored", false, "key 16777220, keyup 16777220", "key 16777220");
        // The delayed trigger fires a second after a press that is held, not after one that ended.
        row("delayed trigger, held", false, "delay, press 50 15, wait 1500, hide", "pressed, trigger");
        row("delayed trigger, released", false, "delay, press 50 15, wait 200, release 50 15, wait 1500", "pressed, released, clicked");
        row("delayed trigger, dragged out", false, "delay, press 50 15, move 200 15, wait 1500", "pressed, released");
        row("delayed trigger, disabled", false, "delay, press 50 15, disable, wait 1500", "pressed");
        row("delayed trigger, focus lost", false, "delay, press 50 15, blur, wait 1500", "pressed");
        // Either key of the shortcut clicks the button, unless the shortcut is disabled.
        for (const char *key : {"75", "76"}) {
            const QString click = QStringLiteral("ctrl %1, wait 400").arg(key);
            const auto name = [key](const char *how) { return QStringLiteral("shortcut key %1%2").arg(key, how).toLatin1(); };
            row(name(""), false, "shortcut, " + click, "pressed, released, clicked");
            row(name(" disabled"), false, "shortcut, shortcuts 0, " + click, "");
            row(name(" enabled again"), false, "shortcut, shortcuts 0, shortcuts 1, " + click, "pressed, released, clicked");
        }
    }

    void mouseAndKeys()
    {
        QFETCH(bool, checkable); QFETCH(QStringList, steps); QFETCH(QStringList, expected);
        AbstractButton *b = shownButton(QRect(10, 10, 100, 30));
        b->setCheckable(checkable);
        b->setFocus();
        SignalLog log(b);
        play(b, steps);
        QCOMPARE(log.entries, expected);
        QVERIFY(!b->isDown());
    }

    void autoRepeat()
    {
        AbstractButton *b = shownButton();
        b->setAutoRepeat(true);
        SignalLog log(b);
        QTest::mousePress(b, Qt::LeftButton, {}, QPoint(50, 15));
        QTRY_VERIFY_WITH_TIMEOUT(log.entries.count("clicked") >= 3, 10000);
        QTest::mouseRelease(b, Qt::LeftButton, {}, QPoint(50, 15));
        QStringList expected{"pressed"};
        for (int i = 0; i < log.entries.count("clicked") - 1; ++i)
            expected << "released" << "clicked" << "pressed";
        expected << "released" << "clicked";
        QCOMPARE(log.entries, expected);
    }

    void exclusiveGroup()
    {
        QList<AbstractButton *> group;
        auto *inner = new QWidget(window); // the window's descendants count, not only its children
        for (QWidget *parent : {window, window, inner}) {
            auto *b = new AbstractButton(parent);
            b->setCheckable(true);
            b->setAutoExclusive(true);
            group << b;
        }
        auto *outsider = new AbstractButton(window);
        outsider->setCheckable(true);
        outsider->setChecked(true);

        group[2]->click();
        group[0]->click();
        QCOMPARE((QList<bool>{group[0]->isChecked(), group[2]->isChecked(), outsider->isChecked()}), (QList<bool>{true, false, true}));

        SignalLog log(group[0]);
        group[0]->click(); // the refused uncheck
        group[0]->setChecked(false);
        QCOMPARE(group[0]->isChecked(), true);
        QCOMPARE(log.entries, QStringList({"pressed", "released", "clicked+"}));
    }

    void arrowKeys_data()
    {
        QTest::addColumn<bool>("exclusive"); QTest::addColumn<int>("key");
        QTest::addColumn<int>("target"); // -1: focus stays
        // 0: origin (0,0); 1: same row far right; 2: near but diagonal; 3: same column far below;
        // 4: hidden, between 0 and 1
        QTest::newRow("right prefers the same row") << true << int(Qt::Key_Right) << 1;
        QTest::newRow("down prefers the same column") << true << int(Qt::Key_Down) << 3;
        QTest::newRow("nothing to the left") << true << int(Qt::Key_Left) << -1;
        QTest::newRow("not exclusive: tab chain") << false << int(Qt::Key_Right) << 1;
    }
    void arrowKeys()
    {
        QFETCH(bool, exclusive); QFETCH(int, key); QFETCH(int, target);
        const QList<QRect> rects{{0, 0, 100, 30}, {400, 0, 100, 30}, {120, 40, 100, 30}, {0, 300, 100, 30},
                                 {200, 0, 100, 30}};
        QList<AbstractButton *> buttons;
        for (const QRect &r : rects) {
            buttons << shownButton(r);
            buttons.last()->setAutoExclusive(exclusive);
            buttons.last()->setCheckable(true);
        }
        buttons[4]->hide();
        QWidget::setTabOrder(buttons[0], buttons[1]);
        buttons[0]->setFocus();
        buttons[0]->setChecked(true);
        QTest::keyClick(buttons[0], Qt::Key(key));
        AbstractButton *focused = target < 0 ? buttons[0] : buttons[target];
        QTRY_VERIFY(focused->hasFocus());
        // Moving within a group carries the check along.
        QCOMPARE(focused->isChecked(), exclusive || target < 0);
    }

    // The face as painted. look: as facePicture() takes it. pixels: "colour@x,y;x,y..." with the colours named
    // in named(); "!colour": any other; "blend": the border's grey, between edge and background; "caption
    // DX,DY@LOOK": the caption lies moved by DX,DY against the one painted with LOOK (words split by ';').
    void faces_data()
    {
        QTest::addColumn<QStringList>("look"); QTest::addColumn<QStringList>("pixels");
        const QString edges5 = "4,2;50,2;96,2;2,15", far5 = "98,4;98,15;98,26;50,28", inside = "50,3;50,15;97,15;3,15;50,27";
        const QStringList raisedBody{"light@50,2", "dark@98,15"};
        QTest::newRow("radius 5 raised") << QStringList{"radius 5"}
                                         << QStringList{"light@" + edges5, "dark@" + far5, "off@" + inside, "!off@1,1", "blend@0,15"};
        QTest::newRow("radius 5 checked is sunken") << QStringList{"radius 5", "checked"}
                                                    << QStringList{"light@" + far5, "dark@" + edges5, "off@" + inside, "!off@1,1", "blend@0,15"};
        QTest::newRow("radius 0 raised") << QStringList{"radius 0"}
                                         << QStringList{"light@2,2;98,2;2,28", "dark@98,3;98,28;50,28", "off@1,1;98,1;" + inside, "blend@0,15"};
        QTest::newRow("off colour") << QStringList() << QStringList{"off@50,15"} + raisedBody;
        QTest::newRow("on colour") << QStringList{"on"} << QStringList{"on@50,15"} + raisedBody;
        QTest::newRow("disabled colour, no bevel") << QStringList{"disabled"} << QStringList{"disabled@50,15;50,2;98,15"};
        QTest::newRow("on picture, on state") << QStringList{"on", "picture on"} << QStringList{"green@50,15;50,2;98,15", "!green@0,15"};
        QTest::newRow("on picture, off state") << QStringList{"picture on"} << QStringList{"off@50,15"} + raisedBody;
        QTest::newRow("disabled picture, no border") << QStringList{"disabled", "on", "picture on", "picture disabled", "borderless"}
                                                     << QStringList{"green@50,15;50,2;98,15;0,15"};
        QTest::newRow("caption shifted when down") << QStringList{"text Caption", "down"} << QStringList{"caption 1,1@text Caption"};
        QTest::newRow("caption shifted when checked") << QStringList{"text Caption", "checked"} << QStringList{"caption 1,1@text Caption"};
        // The icon's place, and how far the caption moves against one without icon aligned to that side.
        const QList<std::tuple<const char *, QRect, const char *, const char *>> icons{
            {"PositionTop", {42, 5, 16, 16}, "0,26", "AlignHCenter|AlignTop"},
            {"PositionBottom", {42, 59, 16, 16}, "0,-26", "AlignHCenter|AlignBottom"},
            {"PositionLeft", {5, 32, 16, 16}, "26,0", "AlignLeft|AlignVCenter"},
            {"PositionRight", {79, 32, 16, 16}, "-26,0", "AlignRight|AlignVCenter"},
            {"PositionMid", {42, 32, 16, 16}, "0,0", "AlignLeft|AlignTop"}};
        for (const auto &[position, r, shift, align] : icons) {
            const auto corners = [](const QPoint &a, const QPoint &b) {
                return QStringLiteral("%1,%2;%3,%4").arg(a.x()).arg(a.y()).arg(b.x()).arg(b.y());
            };
            QTest::addRow("icon %s", position)
                << QStringList{"size 100 80", "text W", "align AlignLeft|AlignTop", QStringLiteral("icon %1").arg(position)}
                << QStringList{"green@" + corners(r.topLeft(), r.bottomRight()),
                               "!green@" + corners(r.topLeft() - QPoint(1, 0), r.bottomRight() + QPoint(0, 1)),
                               QStringLiteral("caption %1@size 100 80;text W;align %2").arg(shift, align)};
        }
    }
    void faces()
    {
        QFETCH(QStringList, look); QFETCH(QStringList, pixels);
        const QImage img = facePicture(look);
        for (const QString &group : std::as_const(pixels)) {
            const QString colour = group.section('@', 0, 0);
            if (colour.startsWith("caption")) {
                const QRect unmoved = captionBox(facePicture(group.section('@', 1).split(';')));
                const QStringList shift = colour.section(' ', 1).split(',');
                QVERIFY(!unmoved.isEmpty());
                QCOMPARE(captionBox(img), unmoved.translated(shift.at(0).toInt(), shift.at(1).toInt()));
                continue;
            }
            for (const QString &xy : group.section('@', 1).split(';')) {
                const QColor c = img.pixelColor(xy.section(',', 0, 0).toInt(), xy.section(',', 1).toInt());
                const bool ok = colour == "blend"       ? qGray(c.rgb()) < 200 && qGray(c.rgb()) > 50
                              : colour.startsWith('!') ? c != named(colour.mid(1))
                                                       : c == named(colour);
                QVERIFY2(ok, qPrintable(QStringLiteral("%1 at %2 is %3").arg(colour, xy, c.name())));
            }
        }
    }

    // Spacing and icon size at the ends of int, for every icon place: the icon and caption land off the
    // button, nothing wraps.
    void extremeGeometry()
    {
        for (int position = AbstractButton::PositionTop; position <= AbstractButton::PositionMid; ++position) {
            for (const auto &[iconSpace, textSpace, iconSide] : {std::tuple(INT_MAX, INT_MAX, INT_MAX),
                                                                 std::tuple(INT_MIN, INT_MIN, INT_MAX), std::tuple(INT_MIN, INT_MAX, 16)}) {
                OnOffTestButton b;
                b.setText("W");
                b.setIcon(QIcon(solid(Qt::green, 16)));
                b.setIconSize(QSize(iconSide, iconSide));
                b.look.iconPosition = AbstractButton::EButtonPosition(position);
                b.look.iconSpace = iconSpace;
                b.look.textSpace = textSpace;
                const ButtonPainter painter(&b, b.look);
                const QRect icon = painter.iconRect();
                const QRect caption = painter.captionRect();
                QVERIFY(icon.width() >= 0 && icon.height() >= 0);
                QCOMPARE(caption.size(), b.size());
                if (position == AbstractButton::PositionLeft && iconSpace == INT_MAX)
                    QVERIFY(icon.left() > b.width() && caption.left() > icon.left());
                if (position == AbstractButton::PositionRight && iconSpace == INT_MAX)
                    QVERIFY(icon.right() < 0 && caption.right() < icon.right());
                QVERIFY(!b.grab().isNull());
            }
        }
    }

    void renderCache_data()
    {
        QTest::addColumn<QSize>("size"); QTest::addColumn<bool>("cached");
        QTest::newRow("ordinary button") << QSize(100, 30) << true;
        QTest::newRow("at the limit") << QSize(512, 512) << true;
        QTest::newRow("just past the limit") << QSize(513, 512) << false;
        QTest::newRow("16000 x 16000") << QSize(16000, 16000) << false;
    }
    // Only a look that is cheap to keep is cached, one body for every button of that size and look
    // whatever its caption; a huge button is drawn directly, and one that grows past the limit drops
    // what it kept.
    void renderCache()
    {
        QFETCH(QSize, size); QFETCH(bool, cached);
        OnOffTestButton b, other;
        b.useCache = other.useCache = true;
        other.setText("other");
        QPixmap corner(100, 30);
        b.render(&corner, QPoint(), QRegion(0, 0, 100, 30));
        QVERIFY(!b.cache.isEmpty());
        b.resize(size); other.resize(size);
        b.render(&corner, QPoint(), QRegion(0, 0, 100, 30));
        QCOMPARE(b.cache.isEmpty(), !cached);
        QCOMPARE(corner.toImage().pixelColor(50, 15), named("off"));
        other.render(&corner, QPoint(), QRegion(0, 0, 100, 30));
        QCOMPARE(!b.cache.current().isNull() && b.cache.current().cacheKey() == other.cache.current().cacheKey(), cached);
    }

};

QTEST_MAIN(TestButtonBase)
#include "tst_buttonbase.moc"
