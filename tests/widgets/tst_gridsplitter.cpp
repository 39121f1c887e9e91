// The grid splitter: counts and their limits, lines spread evenly or at stored positions (and stored
// lists a form gets wrong), line and cell geometry, drags in Designer within their limits, the same
// width and height, count changes that keep the cells and what is on them, the border style sheet,
// the background, what the cells' controls are given, and the lines as painted.
#include "controlprobe.h"
#include "advsplitter.h"
#include "fakedesignerhost.h"
#include "gridsplitter.h"

#include <QDialog>
#include <QtTest>

namespace {

// A grid splitter on a shown form, built (first polish); with a designer host when designing.
struct Form
{
    explicit Form(bool designing = false, const std::function<void(GridSplitter *)> &before = nullptr)
    {
        if (designing)
            host = std::make_unique<FakeDesignerHost>(&dialog);
        grid = new GridSplitter(&dialog);
        dialog.resize(320, 320);
        grid->setGeometry(0, 0, 300, 300); // a one-pixel box: the grid area is 298 square from (1, 1)
        if (before)
            before(grid);
        dialog.show();
        if (!QTest::qWaitForWindowExposed(&dialog))
            qFatal("form not shown");
    }
    QStringList cellTags() const
    {
        QStringList tags;
        for (int r = 0; r < grid->rowCount(); ++r)
            for (int c = 0; c < grid->columnCount(); ++c)
                tags << (grid->cell(r, c) ? grid->cell(r, c)->statusTip() : QString());
        return tags;
    }
    // Drags a line with the mouse by dx, dy.
    void drag(AdvSplitter *line, int dx, int dy)
    {
        const QPoint start = line->rect().center();
        QTest::mousePress(line, Qt::LeftButton, Qt::NoModifier, start);
        QMouseEvent move(QEvent::MouseMove, start + QPoint(dx, dy), line->mapToGlobal(start + QPoint(dx, dy)),
                         Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(line, &move);
        // The line moved under the pointer; the release comes where the pointer is now.
        QTest::mouseRelease(line, Qt::LeftButton, Qt::NoModifier, line->mapFromGlobal(line->mapToGlobal(start) + QPoint(dx, dy)));
    }

    QDialog dialog;
    std::unique_ptr<FakeDesignerHost> host;
    GridSplitter *grid = nullptr;
};

QStringList positions(const GridSplitter *grid, Qt::Orientation orientation)
{
    QStringList texts;
    for (int i = 0; AdvSplitter *line = grid->line(orientation, i); ++i)
        texts << QString::number(line->position(), 'g', 6);
    return texts;
}

} // namespace

class TstGridSplitter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void counts_data()
    {
        QTest::addColumn<bool>("built"); QTest::addColumn<int>("columns"); QTest::addColumn<int>("expected");
        QTest::newRow("0 ignored") << true << 0 << 4;
        QTest::newRow("101 ignored") << true << 101 << 4;
        QTest::newRow("100 taken") << true << 100 << 100;
        QTest::newRow("before the build: stored") << false << 6 << 6;
        QTest::newRow("before the build: -1 ignored") << false << -1 << 4;
    }
    void counts()
    {
        QFETCH(bool, built); QFETCH(int, columns); QFETCH(int, expected);
        Form f(false, [&](GridSplitter *g) {
            if (!built)
                g->setColumnCount(columns);
        });
        if (built)
            f.grid->setColumnCount(columns);
        QCOMPARE(f.grid->columnCount(), expected);
        QVERIFY(f.grid->line(Qt::Horizontal, expected - 2));
        QVERIFY(!f.grid->line(Qt::Horizontal, expected - 1));
        QVERIFY(f.grid->cell(2, expected - 1));
        QCOMPARE(f.grid->cell(2, expected - 1)->objectName(), GridSplitter::cellName(2, expected - 1));
    }

    void storedPositions_data()
    {
        QTest::addColumn<QStringList>("stored"); QTest::addColumn<QStringList>("expected");
        QTest::addColumn<bool>("warned");
        QTest::newRow("none: even") << QStringList() << QStringList{"0.25", "0.5", "0.75"} << false;
        QTest::newRow("stored") << QStringList{"0.1", "0.333333", "0.9"} << QStringList{"0.1", "0.333333", "0.9"} << false;
        QTest::newRow("too few") << QStringList{"0.1", "0.2"} << QStringList{"0.25", "0.5", "0.75"} << true;
        QTest::newRow("not a number") << QStringList{"0.1", "half", "0.9"} << QStringList{"0.25", "0.5", "0.75"} << true;
        QTest::newRow("past the edge") << QStringList{"0.1", "0.5", "1.5"} << QStringList{"0.25", "0.5", "0.75"} << true;
        QTest::newRow("out of order") << QStringList{"0.6", "0.5", "0.9"} << QStringList{"0.25", "0.5", "0.75"} << true;
    }
    void storedPositions()
    {
        QFETCH(QStringList, stored); QFETCH(QStringList, expected); QFETCH(bool, warned);
        if (warned)
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("\"lineHPos\" is malformed")));
        Form f(false, [&](GridSplitter *g) { g->setLineHPos(stored); });
        QCOMPARE(f.grid->lineHPos(), expected);
        QCOMPARE(f.grid->lineVPos(), (QStringList{"0.333333", "0.666667"}));
    }

    // Lines are handles two pixels wider than the pen, centred on their position; a cell shares a
    // pixel column or row with each line beside it; the last cells reach the frame.
    void geometry_data()
    {
        QTest::addColumn<int>("lineWidth"); QTest::addColumn<int>("spacing"); QTest::addColumn<QRect>("firstVertical");
        QTest::addColumn<QRect>("firstHorizontal"); QTest::addColumn<QRect>("topLeftCell");
        QTest::addColumn<QRect>("bottomRightCell");
        QTest::newRow("pen 1") << 1 << 0 << QRect(75, 1, 3, 298) << QRect(1, 99, 298, 3)
                               << QRect(QPoint(1, 1), QPoint(75, 99)) << QRect(QPoint(226, 201), QPoint(298, 298));
        QTest::newRow("pen 4, spacing 5") << 4 << 5 << QRect(75, 6, 6, 288) << QRect(6, 99, 288, 6)
                                          << QRect(QPoint(6, 6), QPoint(75, 99)) << QRect(QPoint(224, 200), QPoint(293, 293));
    }
    void geometry()
    {
        QFETCH(int, lineWidth); QFETCH(int, spacing); QFETCH(QRect, firstVertical); QFETCH(QRect, firstHorizontal);
        QFETCH(QRect, topLeftCell); QFETCH(QRect, bottomRightCell);
        Form f(false, [&](GridSplitter *g) {
            g->setGridLineWidth(lineWidth);
            g->setSpacing(spacing);
        });
        QCOMPARE(f.grid->line(Qt::Horizontal, 0)->geometry(), firstVertical);
        QCOMPARE(f.grid->line(Qt::Vertical, 0)->geometry(), firstHorizontal);
        QCOMPARE(f.grid->cell(0, 0)->geometry(), topLeftCell);
        QCOMPARE(f.grid->cell(2, 3)->geometry(), bottomRightCell);
        // Scaled with the widget.
        f.grid->resize(600, 300);
        QVERIFY(qAbs(f.grid->line(Qt::Horizontal, 1)->geometry().center().x() - 300) <= 1);
    }

    void drag_data()
    {
        QTest::addColumn<int>("line"); // between columns
        QTest::addColumn<int>("dx"); QTest::addColumn<int>("spacing"); QTest::addColumn<int>("expectedLeft");
        QTest::newRow("free") << 1 << -20 << 16 << 129;
        QTest::newRow("stops before the next line") << 1 << 200 << 16 << 224 - 16 - 3; // next at x 224
        QTest::newRow("stops before the previous line") << 1 << -200 << 16 << 77 + 16 + 1 - 1; // previous ends at x 77
        QTest::newRow("stops before the left edge") << 0 << -200 << 16 << 1 + 16;
        QTest::newRow("stops before the right edge") << 2 << 200 << 16 << 1 + 298 - 16 - 3;
        QTest::newRow("closer with less spacing") << 1 << 200 << 4 << 224 - 4 - 3;
        // Drags ending within a handle width of the limit (line 1 starts at x 149, line 2 at 224).
        QTest::newRow("a pixel short of the next line's limit") << 1 << 55 << 16 << 224 - 16 - 3 - 1;
        QTest::newRow("within a handle width past the next line's limit") << 1 << 57 << 16 << 224 - 16 - 3;
        QTest::newRow("within a handle width past the previous line's limit") << 1 << -57 << 16 << 77 + 16;
        QTest::newRow("within a handle width past the right edge's limit") << 2 << 57 << 16 << 1 + 298 - 16 - 3;
    }
    void drag()
    {
        QFETCH(int, line); QFETCH(int, dx); QFETCH(int, spacing); QFETCH(int, expectedLeft);
        Form f(true, [&](GridSplitter *g) { g->setSplittersSpacing(spacing); });
        AdvSplitter *handle = f.grid->line(Qt::Horizontal, line);
        QCOMPARE(handle->cursor().shape(), Qt::SplitHCursor);
        f.host->log.clear();
        f.drag(handle, dx, 0);
        QCOMPARE(handle->x(), expectedLeft);
        QCOMPARE(handle->position(), expectedLeft / 298.0); // the leading edge plus half the handle, in the area
        // The cells on both sides follow; the grid is selected and the form modified.
        QCOMPARE(f.grid->cell(1, line)->geometry().right(), handle->x());
        QCOMPARE(f.grid->cell(1, line + 1)->geometry().left(), handle->geometry().right());
        QVERIFY(f.host->log.contains(QStringLiteral("markDirty")));
        QVERIFY(f.host->isSelected(&f.dialog, f.grid));
        QCOMPARE(f.grid->lineHPos().at(line), QString::number((expectedLeft) / 298.0, 'g', 6));
        QVERIFY(f.grid->lineHPos().at(line).size() <= 8);
    }

    void dragIgnoredAtRunTime()
    {
        Form f;
        AdvSplitter *handle = f.grid->line(Qt::Vertical, 0);
        const QRect before = handle->geometry();
        QVERIFY(handle->testAttribute(Qt::WA_TransparentForMouseEvents));
        f.drag(handle, 0, 40);
        QCOMPARE(handle->geometry(), before);
    }

    void sameWidthAndHeight_data()
    {
        QTest::addColumn<Qt::Orientation>("lines");
        QTest::newRow("same width") << Qt::Horizontal;
        QTest::newRow("same height") << Qt::Vertical;
    }
    void sameWidthAndHeight()
    {
        QFETCH(Qt::Orientation, lines);
        const bool columns = lines == Qt::Horizontal;
        Form f(true, [&](GridSplitter *g) {
            g->setLineHPos({"0.1", "0.2", "0.3"});
            g->setLineVPos({"0.1", "0.2"});
        });
        const auto setSame = [&](bool on) { columns ? f.grid->setSameWidth(on) : f.grid->setSameHeight(on); };
        setSame(true);
        const QStringList even = columns ? QStringList{"0.25", "0.5", "0.75"} : QStringList{"0.333333", "0.666667"};
        QCOMPARE(positions(f.grid, lines), even);
        // The other direction keeps its lines.
        const QStringList kept = columns ? QStringList{"0.1", "0.2"} : QStringList{"0.1", "0.2", "0.3"};
        QCOMPARE(positions(f.grid, columns ? Qt::Vertical : Qt::Horizontal), kept);
        AdvSplitter *handle = f.grid->line(lines, 0);
        QVERIFY(!handle->isMovable());
        QCOMPARE(handle->cursor().shape(), Qt::ArrowCursor);
        f.drag(handle, 30, 30);
        QCOMPARE(positions(f.grid, lines), even);
        // Off again: movable, where they were.
        setSame(false);
        QVERIFY(handle->isMovable());
        QCOMPARE(positions(f.grid, lines), even);
        f.drag(handle, 30, 30);
        QVERIFY(positions(f.grid, lines) != even);
        // A count change keeps them even while the option is on.
        setSame(true);
        columns ? f.grid->setColumnCount(2) : f.grid->setRowCount(2);
        QCOMPARE(positions(f.grid, lines), QStringList{"0.5"});
    }

    void countChangesKeepCells()
    {
        Form f(false, [](GridSplitter *g) { g->setLineHPos({"0.1", "0.2", "0.3"}); });
        QWidget *corner = f.grid->cell(2, 3);
        auto *placed = new QWidget(corner);
        QCOMPARE(f.cellTags().size(), 12);
        // Shrinking keeps the remaining lines where they were and hides the cells it gives up.
        f.grid->setColumnCount(3);
        QCOMPARE(f.grid->lineHPos(), (QStringList{"0.1", "0.2"}));
        const QStringList threeColumns{"cell0000", "cell0001", "cell0002", "cell0100", "cell0101",
                                       "cell0102", "cell0200", "cell0201", "cell0202"};
        QCOMPARE(f.cellTags(), threeColumns);
        QVERIFY(corner->isHidden());
        // Growing spreads the lines evenly and takes the same cell back, with what is on it.
        f.grid->setColumnCount(4);
        QCOMPARE(f.grid->lineHPos(), (QStringList{"0.25", "0.5", "0.75"}));
        QCOMPARE(f.grid->cell(2, 3), corner);
        QCOMPARE(placed->parentWidget(), corner);
        QVERIFY(corner->isVisible());
        f.grid->setRowCount(1);
        f.grid->setRowCount(5);
        QCOMPARE(f.cellTags().size(), 20);
        QCOMPARE(f.grid->cell(2, 3), corner);
        // No cell twice.
        QStringList tags;
        for (QWidget *child : f.grid->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly)) {
            if (!child->statusTip().isEmpty())
                tags << child->statusTip();
        }
        QCOMPARE(tags.size(), int(QSet<QString>(tags.begin(), tags.end()).size()));
    }

    // Cells a form brings (children with their tags) are the grid's cells, not made again.
    void cellsFromTheForm()
    {
        QWidget *loaded = nullptr;
        Form f(false, [&](GridSplitter *g) {
            g->setRowCount(2);
            g->setColumnCount(3);
            loaded = new QWidget(g);
            loaded->setObjectName(QStringLiteral("cell0102"));
            loaded->setStatusTip(QStringLiteral("cell0102"));
        });
        QCOMPARE(f.grid->cell(1, 2), loaded);
        QCOMPARE(f.grid->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly).size(), 6 + 2 + 1);
    }

    void borderStyleSheet_data()
    {
        QTest::addColumn<QFrame::Shadow>("shadow"); QTest::addColumn<QColor>("color");
        QTest::addColumn<QString>("sheet");
        QTest::newRow("plain box") << QFrame::Plain << QColor(10, 20, 30)
                                   << QStringLiteral("GridSplitter{ border: 1px solid rgb(10, 20, 30);}");
        QTest::newRow("raised: none") << QFrame::Raised << QColor(10, 20, 30) << QString();
        QTest::newRow("same colour: none") << QFrame::Plain << QColor(Qt::black) << QString();
    }
    void borderStyleSheet()
    {
        QFETCH(QFrame::Shadow, shadow); QFETCH(QColor, color); QFETCH(QString, sheet);
        GridSplitter grid;
        grid.setFrameShadow(shadow);
        grid.setBorderColor(color);
        QCOMPARE(grid.styleSheet(), sheet);
        QCOMPARE(grid.borderColor(), color);
    }

    // In Designer a frame change in the property editor puts the style sheet right.
    void frameChangeInDesigner()
    {
        Form f(true);
        f.grid->setBorderColor(Qt::red);
        QVERIFY(!f.grid->styleSheet().isEmpty());
        f.host->setPropertyEditorObject(f.grid);
        f.grid->setFrameShadow(QFrame::Sunken);
        emit f.host->propertyChanged(QStringLiteral("frameShadow"), QVariant());
        QTRY_VERIFY(f.grid->styleSheet().isEmpty());
        f.grid->setFrameShadow(QFrame::Plain);
        emit f.host->propertyChanged(QStringLiteral("frameShadow"), QVariant());
        QTRY_COMPARE(f.grid->styleSheet(), QStringLiteral("GridSplitter{ border: 1px solid rgb(255, 0, 0);}"));
    }

    void background()
    {
        Form f(true, [](GridSplitter *g) { g->setBackgroundColor(Qt::yellow); });
        QCOMPARE(f.grid->palette().color(QPalette::Window), QColor(Qt::yellow));
        QVERIFY(!f.host->log.contains(QStringLiteral("setSheetProperty"))); // loading: the form has its own
        f.grid->setBackgroundColor(Qt::green);
        QCOMPARE(f.host->changes.last().name, QStringLiteral("autoFillBackground"));
        QVERIFY(f.grid->autoFillBackground());
        QTRY_COMPARE(f.grid->grab().toImage().pixelColor(40, 40), QColor(Qt::green));
    }

    void controlsInCells()
    {
        ControlProbe *probe = nullptr;
        Form f(false, [&](GridSplitter *g) {
            auto *cell = new QWidget(g);
            cell->setStatusTip(QStringLiteral("cell0101"));
            probe = new ControlProbe(cell);
        });
        int app = 0;
        f.grid->setQeltAppAndFormPtr(&app, &f.dialog);
        QCOMPARE(probe->app, static_cast<void *>(&app));
        f.grid->updateLanguage(3);
        QCOMPARE(probe->language, 3);
    }

    void painted_data()
    {
        QTest::addColumn<Qt::PenStyle>("style"); QTest::addColumn<bool>("drawn");
        QTest::newRow("solid") << Qt::SolidLine << true;
        QTest::newRow("no pen") << Qt::NoPen << false;
    }
    void painted()
    {
        QFETCH(Qt::PenStyle, style); QFETCH(bool, drawn);
        Form f(false, [&](GridSplitter *g) {
            g->setGridLineColor(Qt::red);
            g->setGridLineStyle(style);
        });
        const QImage image = f.grid->grab().toImage();
        const QRect line = f.grid->line(Qt::Horizontal, 0)->geometry();
        QCOMPARE(image.pixelColor(line.center().x(), 40) == QColor(Qt::red), drawn);
        QVERIFY(image.pixelColor(line.center().x() + 10, 40) != QColor(Qt::red));
    }
};

QTEST_MAIN(TstGridSplitter)
#include "tst_gridsplitter.moc"
