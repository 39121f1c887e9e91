// The sample forms as an operator sees them, rendered offscreen in English and German at a full and
// a restricted authority, against reference pictures: buttons on and off, coloured by a bit, refused
// by authority; the parameter, status, input and program tables; tab pages present, current and
// greyed; the pictures of the machine state; the grid splitter's lines and cells; the MDI area's
// active panel; soft-key bars and picture keys. A picture that does not match is written next to the
// test with its difference, for a look.
#include "formloader.h"
#include "formsession.h"
#include "norvointerface_z3.h"
#include "panelfont.h"
#include "paneltables.h"
#include "simulatedcontroller.h"
#include "tabwidget.h"

#include <QApplication>
#include <QDir>
#include <QtTest>

#include <cstdlib>

namespace {

using norvo_v0::QeltApp;

// The machine as the pictures show it: spindle on and coolant off (user word 100), brake closed (102),
// keys enabled (103), jog X+ held (110), an alarm (120), 42 parts made (130), program line 17 (131),
// every parameter column (500), three operating modes (520), the overrides and tool (3101 ...); mode
// Auto with the idle picture (register 100), the operator screen's machine in alarm (register 101);
// inputs I0.0, I0.3 and I1.5, output O0.0 (cycle start lit).
void setUpMachine(SimulatedController &c)
{
    for (const auto &[address, value] : {std::pair(100, 0b01), {102, 1}, {103, 1}, {110, 0b1}, {120, 1}, {130, 42}, {131, 17},
                                         {500, 0x1f}, {520, 0b0111}, {3101, 100}, {3102, 100}, {3103, 50}, {3104, 7}})
        c.setData(0, QeltApp::User, address, value, 0);
    for (int i = 1; i <= 40; ++i)
        c.setData(0, QeltApp::User, 1000 + i, (i * 37) % 5000, 0);
    c.setData(0, QeltApp::Reg, 100, 0, 0);
    c.setData(0, QeltApp::Reg, 101, 2, 0);
    for (const auto &[type, address, bit] : {std::tuple(QeltApp::I_BIT, 0, 0), {QeltApp::I_BIT, 0, 3}, {QeltApp::I_BIT, 1, 5}, {QeltApp::O_BIT, 0, 0}})
        c.setBit(0, type, address, bit, true, 0);
}

// Pixels whose colour differs from the reference by more than a small tolerance in any channel, in
// red on the faded reference; a few of them (anti-aliasing) are allowed. Says what differs, or nothing.
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
constexpr qint64 AllowedShare = 8; // of the eighth-size pictures; a 12 pt panel font differs twice as much
#else
constexpr qint64 AllowedShare = 500; // 0.2 %
#endif
QString difference(const QImage &shot, const QImage &referencePicture, QImage *diff)
{
    QImage actual = shot.convertToFormat(QImage::Format_RGB32);
    QImage reference = referencePicture.convertToFormat(QImage::Format_RGB32);
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    // Qt 5 lays text out a pixel lower and headers and tabs a few pixels taller: the pictures are
    // compared at an eighth of their size, where such shifts blur, a different font size does not.
    if (actual.size() == reference.size()) {
        actual = actual.scaled(actual.size() / 8, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        reference = reference.scaled(reference.size() / 8, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    }
#endif
    if (actual.size() != reference.size())
        return QStringLiteral("size %1 x %2, reference %3 x %4").arg(actual.width()).arg(actual.height())
            .arg(reference.width()).arg(reference.height());
    *diff = QImage(actual.size(), QImage::Format_RGB32);
    qint64 different = 0;
    for (int y = 0; y < actual.height(); ++y) {
        for (int x = 0; x < actual.width(); ++x) {
            const QRgb a = actual.pixel(x, y), r = reference.pixel(x, y);
            const bool differs = std::abs(qRed(a) - qRed(r)) > 16 || std::abs(qGreen(a) - qGreen(r)) > 16
                || std::abs(qBlue(a) - qBlue(r)) > 16;
            const int grey = 160 + qGray(r) * 95 / 255;
            diff->setPixel(x, y, differs ? qRgb(255, 0, 0) : qRgb(grey, grey, grey));
            different += differs;
        }
    }
    const qint64 all = qint64(actual.width()) * actual.height();
    return different * AllowedShare <= all ? QString() : QStringLiteral("%1 of %2 pixels differ").arg(different).arg(all);
}

} // namespace

class TestScreenshots : public QObject
{
    Q_OBJECT

public:
    static void initMain() { PanelFont::prepareApplication(); }

private Q_SLOTS:
    void initTestCase()
    {
        PanelFont::apply(); // as the panel does: both Qt majors match the same references
        QDir().mkpath(QStringLiteral("screenshot-diffs"));
    }

    void forms_data()
    {
        QTest::addColumn<QString>("form");
        QTest::addColumn<int>("language");
        QTest::addColumn<int>("authority");
        QTest::addColumn<QString>("shown"); // a page ("tabWidget:index") or panel shown first
        for (const char *form : {"operator", "demo", "softkeys", "tabs", "screens"}) {
            for (const auto &[language, authority] : {std::pair(0, 1), {0, 3}, {1, 1}, {1, 3}})
                QTest::addRow("%s-%s-authority%d", form, language ? "de" : "en", authority) << QString::fromLatin1(form) << language << authority << QString();
        }
        // The pages and panels behind the first.
        QTest::newRow("operator-inputs") << "operator" << 0 << 1 << "pages:1";
        QTest::newRow("operator-program") << "operator" << 1 << 1 << "pages:2";
        QTest::newRow("screens-spindle") << "screens" << 0 << 1 << "subWindow_2";
        QTest::newRow("tabs-second") << "tabs" << 1 << 1 << "modeTabs:1";
    }
    void forms()
    {
        QFETCH(QString, form);
        QFETCH(int, language);
        QFETCH(int, authority);
        QFETCH(QString, shown);
        NORVOInterface_Z3 *hmi = NORVOInterface_Z3::initialization();
        hmi->resetToDefaults();
        hmi->setSystemLanguages({QStringLiteral("DejaVu Sans"), QStringLiteral("DejaVu Sans")});
        hmi->setCurrentLanguageIndex(language);
        const QString before = QDir::currentPath();
        QDir::setCurrent(QStringLiteral(HMI_FORMS_DIR)); // the forms' pictures and programs
        FormLoader loader;
        QWidget *root = loader.loadFile(form + QStringLiteral(".ui"));
        QVERIFY2(root, qPrintable(loader.problem()));
        SimulatedController controller;
        setUpMachine(controller);
        FormSession session(root, &controller);
        session.start();
        PanelTables::setUp(root, QStringLiteral(HMI_FORMS_DIR));
        session.setLanguage(language);
        session.setAuthority(authority);
        controller.flushUpdates();
        root->show();
        QVERIFY(QTest::qWaitForWindowExposed(root));
        if (const QStringList page = shown.split(QLatin1Char(':')); page.size() == 2)
            root->findChild<TabWidget *>(page.at(0))->setCurrentIndex(page.at(1).toInt());
        else if (!shown.isEmpty())
            root->findChild<QWidget *>(shown)->show();
        QCoreApplication::processEvents();
        const QImage shot = root->grab().toImage();
        QDir::setCurrent(before);

        const QString name = QString::fromLatin1(QTest::currentDataTag()) + QStringLiteral(".png");
        const QString referenceFile = QDir(QStringLiteral(HMI_REFERENCE_DIR)).filePath(name);
        if (qEnvironmentVariableIsSet("HMI_UPDATE_REFERENCES")) {
            QVERIFY(shot.save(referenceFile));
            return;
        }
        QImage diff;
        const QString differs = difference(shot, QImage(referenceFile), &diff);
        if (!differs.isEmpty()) {
            const QString diffs = QDir(QStringLiteral("screenshot-diffs")).absolutePath();
            shot.save(QDir(diffs).filePath(name));
            diff.save(QDir(diffs).filePath(QStringLiteral("diff-") + name));
            QFAIL(qPrintable(QStringLiteral("%1: %2; see %3").arg(name, differs, diffs)));
        }
    }
};

QTEST_MAIN(TestScreenshots)
#include "tst_screenshots.moc"
