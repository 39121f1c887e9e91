// hmi-panel: runs a form on the simulated controller, or checks forms.
//   hmi-panel FORM.ui [--screenshot FILE] [--language N] [--authority N] [--words FILE] [--watch]
//   hmi-panel FORM.ui [--modbus HOST:PORT] --map MAP.json [--poll MS] [--trace FILE]
//   hmi-panel --check FORM.ui... [--words FILE] [--map MAP.json]
#include "demoscenario.h"
#include "dynamicimage.h"
#include "formchecker.h"
#include "formloader.h"
#include "formreload.h"
#include "formsession.h"
#include "formwatcher.h"
#include "norvointerface_z3.h"
#include "operatormessage.h"
#include "panelfont.h"
#include "paneltables.h"
#include "panelwindow.h"
#include "panelwords.h"
#include "simulatedcontroller.h"
#ifdef HMI_HAVE_MODBUS
#include "mapcheck.h"
#include "modbuscontroller.h"
#include "modbusoptions.h"
#endif
#include "wordlibraryfile.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDialog>
#include <QDir>
#include <QEventLoop>
#include <QFileInfo>
#include <QScreen>
#include <QSpinBox>
#include <QTimer>

#include <algorithm>
#include <memory>
#include <cstdio>

int main(int argc, char **argv)
{
    const auto given = [&](const char *option) {
        for (int i = 1; i < argc; ++i) {
            if (qstrcmp(argv[i], option) == 0)
                return true;
        }
        return false;
    };
    const bool wantsScreenshot = given("--screenshot");
    const bool wantsHelp = given("--help") || given("-h") || given("--help-all") || given("-?");
    const bool headless = wantsScreenshot || given("--check") || wantsHelp;
    // Without a display only what needs none can run; the rest says so instead of aborting in Qt.
    const bool noDisplay = qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") && qEnvironmentVariableIsEmpty("DISPLAY")
                           && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
    if ((headless || noDisplay) && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    if (headless) {
        // The offscreen platform says on every window that it has no window manager to tell sizes to.
        static const QtMessageHandler previous = qInstallMessageHandler(nullptr);
        qInstallMessageHandler([](QtMsgType type, const QMessageLogContext &context, const QString &message) {
            if (!message.startsWith(QLatin1String("This plugin does not support propagateSizeHints")))
                previous(type, context, message);
        });
    }

    PanelFont::prepareApplication();
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("hmi-panel"));
    PanelFont::apply();
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Runs an HMI form on the simulated controller."));
    parser.addHelpOption();
    parser.addPositionalArgument(QStringLiteral("form"), QStringLiteral("The .ui form to show (with --check: forms)."));
    QCommandLineOption screenshot(QStringLiteral("screenshot"), QStringLiteral("Render to FILE and exit."),
                                  QStringLiteral("FILE"));
    QCommandLineOption language(QStringLiteral("language"), QStringLiteral("Start in language N."),
                                QStringLiteral("N"), QStringLiteral("0"));
    QCommandLineOption authority(QStringLiteral("authority"), QStringLiteral("Operator authority."),
                                 QStringLiteral("N"), QStringLiteral("1"));
    QCommandLineOption check(QStringLiteral("check"),
                             QStringLiteral("Report what in the forms would misbehave on the panel, with line "
                                            "numbers, and exit: 0 clean, 1 findings, 2 not a form."));
    QCommandLineOption words(QStringLiteral("words"),
                             QStringLiteral("The word library (default: words.tsv beside the form, when there)."),
                             QStringLiteral("FILE"));
    QCommandLineOption watch(QStringLiteral("watch"),
                             QStringLiteral("Load the form again when it or its word library changes on disk; a form "
                                            "that does not load leaves the last good one on screen."));
    parser.addOptions({screenshot, language, authority, check, words, watch});
#ifdef HMI_HAVE_MODBUS
    ModbusOptions modbusOptions;
    modbusOptions.addTo(parser);
#endif
    parser.process(app);
    const QStringList forms = parser.positionalArguments();
    if (forms.isEmpty() || (forms.size() > 1 && !parser.isSet(check)))
        parser.showHelp(1);
    if (noDisplay && !headless) {
        std::fprintf(stderr, "hmi-panel: no display to show the form on (DISPLAY is not set); --screenshot FILE "
                             "and --check need none\n");
        return 1;
    }

    // The named library, or the one beside the form; problems in it are told, the good words kept.
    const auto wordFile = [&](const QString &form) {
        return parser.isSet(words) ? parser.value(words) : WordLibraryFile::besideForm(form);
    };
    const auto readWords = [&](const QString &fileName) {
        WordLibraryFile library;
        if (parser.isSet(words) || QFileInfo::exists(fileName)) {
            library.readFile(fileName);
            for (const QString &problem : library.problems())
                std::fprintf(stderr, "hmi-panel: word library %s: %s\n", qPrintable(fileName), qPrintable(problem));
        }
        return library.words();
    };
    const auto wordLibrary = [&](const QString &form) { return readWords(wordFile(form)); };

    NORVOInterface_Z3 *hmi = NORVOInterface_Z3::initialization();
    if (parser.isSet(check)) {
        FormChecker::VariableCheck variableCheck;
#ifdef HMI_HAVE_MODBUS
        std::unique_ptr<MapCheck> mapCheck;
        if (parser.isSet(modbusOptions.map)) {
            ModbusMap map;
            if (!map.readFile(parser.value(modbusOptions.map))) {
                for (const QString &error : map.errors())
                    std::fprintf(stderr, "hmi-panel: %s\n", qPrintable(error));
                return 1;
            }
            mapCheck = std::make_unique<MapCheck>(map);
            variableCheck = [&mapCheck](const FormWidget &widget, const FormVariable &variable, QList<FormFinding> *found) {
                mapCheck->check(widget, variable, found);
            };
        }
#endif
        int status = 0;
        for (const QString &form : forms) {
            const int result = FormChecker::run(form, {hmi->maxChannelCount(), wordLibrary(form)}, variableCheck);
            status = std::max(status, result);
        }
        return status;
    }
    hmi->setWordLibrary(PanelWords::withPanelWords(wordLibrary(forms.constFirst())));
    const QString family = QApplication::font().family();
    hmi->setSystemLanguages({family, family});
    hmi->setCurrentLanguageIndex(parser.value(language).toInt());

    SimulatedController simulated;
    norvo_v0::QeltApp *controller = &simulated;
#ifdef HMI_HAVE_MODBUS
    std::unique_ptr<ModbusController> modbus;
    if (modbusOptions.wanted(parser)) {
        QString error;
        modbus = modbusOptions.start(parser, &error);
        if (!modbus) {
            for (const QString &line : error.split(QLatin1Char('\n')))
                std::fprintf(stderr, "hmi-panel: %s\n", qPrintable(line));
            return 1;
        }
        controller = modbus.get();
    }
#endif
    FormLoader loader;
    const QString formFile = forms.constFirst();
    QWidget *root = loader.loadFile(formFile);
    if (!root) {
        std::fprintf(stderr, "hmi-panel: cannot load %s: %s\n", qPrintable(formFile), qPrintable(loader.problem()));
        return 1;
    }
    auto first = std::make_unique<FormSession>(root, controller);
    if (const QStringList problems = first->problems(); !problems.isEmpty()) {
        for (const QString &problem : problems)
            std::fprintf(stderr, "hmi-panel: cannot show %s whole: %s\n", qPrintable(formFile), qPrintable(problem));
        return 1;
    }
    DemoScenario scenario(&simulated);
    // Paths on the command line are the caller's; the form's own relative paths name files beside it.
    const QString formFolder = QFileInfo(formFile).absolutePath();
    const QString screenshotFile = parser.isSet(screenshot) ? QFileInfo(parser.value(screenshot)).absoluteFilePath() : QString();
    // Named as the panel was started, before the folder changes.
    const QString absoluteForm = QFileInfo(formFile).absoluteFilePath();
    const QString absoluteWords = QFileInfo(wordFile(formFile)).absoluteFilePath();
    QDir::setCurrent(formFolder);
    // The camera picture and the tables beside the form, for the form shown first and each reloaded.
    const auto prepare = [&](FormSession *session) {
        for (DynamicImage *image : session->form()->findChildren<DynamicImage *>()) {
            if (image->autoLoadPath() == QLatin1String("${DEMO_CAMERA}"))
                image->setAutoLoadPath(scenario.cameraFolder());
        }
    };
    const auto setUpTables = [&](FormSession *session) {
        for (const QString &problem : PanelTables::setUp(session->form(), formFolder))
            std::fprintf(stderr, "hmi-panel: %s: %s\n", qPrintable(formFile), qPrintable(problem));
    };
    prepare(first.get());
    // A screenshot shows the whole form (the loader bounds its size); a window fits the screen.
    const QSize screenArea = wantsScreenshot ? QSize() : QApplication::primaryScreen()->availableGeometry().size();
    PanelWindow window(first.get(), {QStringLiteral("English"), QStringLiteral("Deutsch")}, screenArea);
    FormReload::Hooks hooks{[&] { return readWords(absoluteWords); }, prepare, setUpTables, {}};
#ifdef HMI_HAVE_MODBUS
    // A saved form with variables the map lacks stays off screen, as such a first form stops the panel.
    if (modbus) {
        hooks.gaps = [check = MapCheck(modbus->map()), hmi](const QString &fileName) {
            return check.lacking(fileName, {hmi->maxChannelCount(), {}});
        };
    }
#endif
    FormReload reload(absoluteForm, &window, std::move(first), controller, hooks);
    // The panel never waits on a message box: its messages go to its message line and to stderr.
    OperatorMessage::setSink([&window](OperatorMessage::Kind, QWidget *, const QString &title, const QString &text) {
        const QString line = QStringLiteral("%1: %2").arg(title, text.simplified());
        std::fprintf(stderr, "hmi-panel: %s\n", qPrintable(line));
        window.showMessage(line);
    });
    reload.session()->start();
#ifdef HMI_HAVE_MODBUS
    if (modbus) {
        QObject::connect(modbus.get(), &ModbusController::writeReported, &window, qOverload<const QString &>(&PanelWindow::showMessage));
        QObject::connect(modbus.get(), &ModbusController::statusChanged, &window, qOverload<const QString &>(&PanelWindow::showMessage));
        window.showMessage(modbus->status());
    }
#endif
    setUpTables(reload.session());
    // Through the panel's own field, which then shows the authority the panel runs with.
    if (auto *box = window.findChild<QSpinBox *>(QStringLiteral("authorityBox")))
        box->setValue(parser.value(authority).toInt());
    reload.session()->setAuthority(parser.value(authority).toInt());
    window.show();
#ifdef HMI_HAVE_MODBUS
    if (modbus) {
        // What the form registered while it attached and showed; rows a table shows later are veiled
        // and warned about when they come.
        QApplication::processEvents();
        for (const QString &problem : modbus->problems())
            std::fprintf(stderr, "hmi-panel: %s: %s\n", qPrintable(parser.value(modbusOptions.map)), qPrintable(problem));
        if (!modbus->problems().isEmpty())
            return 1;
    }
#endif

    if (parser.isSet(screenshot)) {
#ifdef HMI_HAVE_MODBUS
        if (modbus) {
            // The device's values, or the veil if it does not answer in time.
            QEventLoop wait;
            QObject::connect(modbus.get(), &ModbusController::pollApplied, &wait, &QEventLoop::quit);
            QTimer::singleShot(3000, &wait, &QEventLoop::quit);
            wait.exec();
        }
#endif
        scenario.step();
        scenario.step();
        scenario.step();
        for (DynamicImage *image : reload.session()->form()->findChildren<DynamicImage *>()) {
            if (image->autoLoadImage())
                image->updateImage(); // the poll a running panel makes every 300 ms
        }
        simulated.flushUpdates();
        app.processEvents();
        const bool saved = window.grab().save(screenshotFile);
        std::printf("%s %s\n", saved ? "wrote" : "could not write", qPrintable(screenshotFile));
        return saved ? 0 : 1;
    }
#ifdef HMI_HAVE_MODBUS
    if (!modbus)
#endif
        scenario.start();
    std::unique_ptr<FormWatcher> watcher;
    if (parser.isSet(watch)) {
        watcher = std::make_unique<FormWatcher>(QStringList{absoluteForm, absoluteWords});
        QObject::connect(watcher.get(), &FormWatcher::changed, &reload, &FormReload::reloadWhenIdle);
    }
    return app.exec();
}
