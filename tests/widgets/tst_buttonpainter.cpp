#include "abstractbutton.h"
#include "buttonpainter.h"

#include <QPainter>
#include <QtTest>

#include <climits>

static const QColor Light(255, 255, 0);
static const QColor Dark(0, 0, 255);
static const QColor OffBody(240, 240, 240);
static const QColor OnBody(192, 192, 192);
static const QColor DisabledBody(208, 208, 208);
static const QColor Caption(255, 0, 0);

// A button that, like the bit button, picks its face from an on/off state.
class OnOffTestButton : public AbstractButton
{
public:
    OnOffTestButton()
    {
        resize(100, 30);
        QPalette pal = palette();
        pal.setColor(QPalette::Light, Light);
        pal.setColor(QPalette::Dark, Dark);
        setPalette(pal);
        off.bodyColor = OffBody;
        on.bodyColor = OnBody;
        disabled.bodyColor = DisabledBody;
        off.captionColor = on.captionColor = disabled.captionColor = Caption;
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

class TestButtonPainter : public QObject
{
    Q_OBJECT

private slots:
    void bevel_data()
    {
        QTest::addColumn<int>("radius"); QTest::addColumn<bool>("checked");
        QTest::addColumn<QList<QPoint>>("firstColour"); // top and left edges
        QTest::addColumn<QList<QPoint>>("secondColour"); // bottom and right edges
        QTest::addColumn<QList<QPoint>>("body");
        const QList<QPoint> edges5{{4, 2}, {50, 2}, {96, 2}, {2, 15}};
        const QList<QPoint> far5{{98, 4}, {98, 15}, {98, 26}, {50, 28}};
        const QList<QPoint> inside{{50, 3}, {50, 15}, {97, 15}, {3, 15}, {50, 27}};
        QTest::newRow("radius 5 raised") << 5 << false << edges5 << far5 << inside;
        QTest::newRow("radius 5 checked is sunken") << 5 << true << far5 << edges5 << inside;
        QTest::newRow("radius 0 raised") << 0 << false << QList<QPoint>{{2, 2}, {98, 2}, {2, 28}}
                                         << QList<QPoint>{{98, 3}, {98, 28}, {50, 28}}
                                         << (inside + QList<QPoint>{{1, 1}, {98, 1}});
    }
    void bevel()
    {
        QFETCH(int, radius); QFETCH(bool, checked); QFETCH(QList<QPoint>, firstColour);
        QFETCH(QList<QPoint>, secondColour); QFETCH(QList<QPoint>, body);
        OnOffTestButton b;
        b.look.cornersRadius = radius;
        b.setCheckable(true);
        b.setChecked(checked);
        const QImage img = b.grab().toImage();
        for (const QPoint &p : firstColour)
            QCOMPARE(img.pixelColor(p), Light);
        for (const QPoint &p : secondColour)
            QCOMPARE(img.pixelColor(p), Dark);
        for (const QPoint &p : body)
            QCOMPARE(img.pixelColor(p), OffBody);
        // Rounded corners leave the corner pixel outside the body; the border blends into the edge.
        QCOMPARE(img.pixelColor(1, 1) == OffBody, radius == 0);
        QVERIFY(qGray(img.pixel(0, 15)) < 200 && qGray(img.pixel(0, 15)) > 50);
    }

    void body_data()
    {
        QTest::addColumn<bool>("enabled"); QTest::addColumn<bool>("stateOn");
        QTest::addColumn<QString>("pictures"); // which faces have a picture
        QTest::addColumn<bool>("border"); QTest::addColumn<QColor>("centre");
        QTest::addColumn<QColor>("bevelEdge"); // pixel (50, 2)
        QTest::newRow("off colour") << true << false << "" << true << OffBody << Light;
        QTest::newRow("on colour") << true << true << "" << true << OnBody << Light;
        QTest::newRow("disabled colour, no bevel") << false << false << "" << true << DisabledBody << DisabledBody;
        QTest::newRow("on picture, on state") << true << true << "on" << true << QColor(Qt::green) << QColor(Qt::green);
        QTest::newRow("on picture, off state") << true << false << "on" << true << OffBody << Light;
        QTest::newRow("disabled picture") << false << true << "on disabled" << false << QColor(Qt::green)
                                          << QColor(Qt::green);
    }
    void body()
    {
        QFETCH(bool, enabled); QFETCH(bool, stateOn); QFETCH(QString, pictures); QFETCH(bool, border);
        QFETCH(QColor, centre); QFETCH(QColor, bevelEdge);
        OnOffTestButton b;
        b.setEnabled(enabled);
        b.stateOn = stateOn;
        b.look.borderEnabled = border;
        if (pictures.contains("on"))
            b.on.picture = solid(Qt::green);
        if (pictures.contains("disabled"))
            b.disabled.picture = solid(Qt::green);
        const QImage img = b.grab().toImage();
        QCOMPARE(img.pixelColor(50, 15), centre);
        QCOMPARE(img.pixelColor(50, 2), bevelEdge);
        QCOMPARE(img.pixelColor(98, 15), enabled && centre != Qt::green ? Dark : centre);
        if (centre == Qt::green)
            QCOMPARE(img.pixelColor(0, 15) == centre, !border);
    }

    void icon_data()
    {
        QTest::addColumn<int>("position"); QTest::addColumn<QRect>("iconRect");
        QTest::addColumn<QPoint>("captionShift"); // against a caption without icon aligned as flags say
        QTest::addColumn<int>("flags");
        QTest::newRow("top") << int(AbstractButton::PositionTop) << QRect(42, 5, 16, 16) << QPoint(0, 26)
                             << int(Qt::AlignHCenter | Qt::AlignTop);
        QTest::newRow("bottom") << int(AbstractButton::PositionBottom) << QRect(42, 59, 16, 16) << QPoint(0, -26)
                                << int(Qt::AlignHCenter | Qt::AlignBottom);
        QTest::newRow("left") << int(AbstractButton::PositionLeft) << QRect(5, 32, 16, 16) << QPoint(26, 0)
                              << int(Qt::AlignLeft | Qt::AlignVCenter);
        QTest::newRow("right") << int(AbstractButton::PositionRight) << QRect(79, 32, 16, 16) << QPoint(-26, 0)
                               << int(Qt::AlignRight | Qt::AlignVCenter);
        QTest::newRow("mid") << int(AbstractButton::PositionMid) << QRect(42, 32, 16, 16) << QPoint(0, 0)
                             << int(Qt::AlignLeft | Qt::AlignTop);
    }
    void icon()
    {
        QFETCH(int, position); QFETCH(QRect, iconRect); QFETCH(QPoint, captionShift); QFETCH(int, flags);
        OnOffTestButton plain;
        plain.resize(100, 80);
        plain.setText("W");
        plain.setAlignment(Qt::Alignment(flags));
        OnOffTestButton b;
        b.resize(100, 80);
        b.setText("W");
        b.setAlignment(Qt::AlignLeft | Qt::AlignTop);
        b.setIcon(QIcon(solid(Qt::green, 16)));
        b.setIconSize(QSize(16, 16));
        b.look.iconPosition = AbstractButton::EButtonPosition(position);

        const QImage img = b.grab().toImage();
        for (const QPoint &p : {iconRect.topLeft(), iconRect.bottomRight()})
            QCOMPARE(img.pixelColor(p), QColor(Qt::green));
        for (const QPoint &p : {iconRect.topLeft() - QPoint(1, 0), iconRect.bottomRight() + QPoint(0, 1)})
            QVERIFY(img.pixelColor(p) != QColor(Qt::green));

        const QRect expected = captionBox(plain.grab().toImage()).translated(captionShift);
        QVERIFY(!expected.isEmpty());
        QCOMPARE(captionBox(img), expected);
    }

    void extremeGeometry_data()
    {
        QTest::addColumn<int>("position"); QTest::addColumn<int>("iconSpace"); QTest::addColumn<int>("textSpace");
        QTest::addColumn<int>("iconSide");
        for (int position = AbstractButton::PositionTop; position <= AbstractButton::PositionMid; ++position) {
            const QByteArray name = QMetaEnum::fromType<AbstractButton::EButtonPosition>().valueToKey(position);
            QTest::newRow(name + " largest") << position << INT_MAX << INT_MAX << INT_MAX;
            QTest::newRow(name + " smallest") << position << INT_MIN << INT_MIN << INT_MAX;
            QTest::newRow(name + " mixed") << position << INT_MIN << INT_MAX << 16;
        }
    }
    // Spacing and icon size at the ends of int: the icon and caption land off the button, nothing wraps.
    void extremeGeometry()
    {
        QFETCH(int, position); QFETCH(int, iconSpace); QFETCH(int, textSpace); QFETCH(int, iconSide);
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

    void renderCache_data()
    {
        QTest::addColumn<QSize>("size"); QTest::addColumn<bool>("cached");
        QTest::newRow("ordinary button") << QSize(100, 30) << true;
        QTest::newRow("at the limit") << QSize(512, 512) << true;
        QTest::newRow("just past the limit") << QSize(513, 512) << false;
        QTest::newRow("16000 x 16000") << QSize(16000, 16000) << false;
    }
    // Only a look that is cheap to keep is cached; a huge button is drawn directly, and one that grows
    // past the limit drops what it kept.
    void renderCache()
    {
        QFETCH(QSize, size); QFETCH(bool, cached);
        OnOffTestButton b;
        b.useCache = true;
        QPixmap corner(100, 30);
        b.render(&corner, QPoint(), QRegion(0, 0, 100, 30));
        QVERIFY(!b.cache.isEmpty());
        b.resize(size);
        b.render(&corner, QPoint(), QRegion(0, 0, 100, 30));
        QCOMPARE(b.cache.isEmpty(), !cached);
        QCOMPARE(corner.toImage().pixelColor(50, 15), OffBody);
    }

    void pressedShift_data()
    {
        QTest::addColumn<bool>("down"); QTest::addColumn<bool>("checked");
        QTest::newRow("down") << true << false;
        QTest::newRow("checked") << false << true;
    }
    void pressedShift()
    {
        QFETCH(bool, down); QFETCH(bool, checked);
        OnOffTestButton b;
        b.setText("Caption");
        const QRect up = captionBox(b.grab().toImage());
        b.setCheckable(true);
        b.setChecked(checked);
        b.setDown(down);
        QVERIFY(!up.isEmpty());
        QCOMPARE(captionBox(b.grab().toImage()), up.translated(1, 1));
    }
};

QTEST_MAIN(TestButtonPainter)
#include "tst_buttonpainter.moc"
