#include "formreload.h"

#include "formchecker.h"
#include "formloader.h"
#include "formsession.h"
#include "formwatcher.h"
#include "norvointerface_z3.h"
#include "panelwindow.h"
#include "panelwords.h"

#include <QApplication>
#include <QDialog>
#include <QFileInfo>
#include <QTimer>

#include <cstdio>
#include <utility>

FormReload::FormReload(const QString &fileName, PanelWindow *window, std::unique_ptr<FormSession> shown,
                       norvo_v0::QeltApp *app, Hooks hooks, QObject *parent)
    : QObject(parent)
    , m_fileName(fileName)
    , m_window(window)
    , m_session(std::move(shown))
    , m_app(app)
    , m_hooks(std::move(hooks))
{
}

FormReload::~FormReload() = default;

bool FormReload::reload()
{
    NORVOInterface_Z3 *hmi = NORVOInterface_Z3::initialization();
    const QMap<int, QStringList> words = m_hooks.words ? m_hooks.words() : QMap<int, QStringList>();
    hmi->setWordLibrary(PanelWords::withPanelWords(words));
    FormLoader loader;
    QWidget *root = loader.loadFile(m_fileName);
    if (!root) {
        refuse(checked(loader.problem(), words));
        return false;
    }
    auto next = std::make_unique<FormSession>(root, m_app);
    if (const QStringList problems = next->problems(); !problems.isEmpty()) {
        refuse(checked(problems.join(QLatin1String("; ")), words));
        return false;
    }
    if (const QStringList gaps = m_hooks.gaps ? m_hooks.gaps(m_fileName) : QStringList(); !gaps.isEmpty()) {
        refuse(QStringList{QStringLiteral("the map has no entry for %1 of the form's variables").arg(gaps.size())} + gaps);
        return false;
    }
    if (m_hooks.prepare)
        m_hooks.prepare(next.get());
    m_window->setSession(next.get());
    m_session = std::move(next); // the old form stops and goes before the new one starts updates
    m_session->start();
    if (m_hooks.started)
        m_hooks.started(m_session.get());
    m_session->setAuthority(m_window->authority());
    const QString name = QFileInfo(m_fileName).fileName();
    std::fprintf(stderr, "hmi-panel: %s reloaded\n", qPrintable(m_fileName));
    m_window->showMessage([name] { return PanelWords::text(PanelWords::Reloaded).arg(name); });
    return true;
}

void FormReload::reloadWhenIdle()
{
    if (QApplication::activeModalWidget() || QApplication::activePopupWidget())
        QTimer::singleShot(FormWatcher::SettleMs, this, &FormReload::reloadWhenIdle);
    else
        reload();
}

QStringList FormReload::checked(const QString &problem, const QMap<int, QStringList> &words) const
{
    // The loader's reason first, then what the checker finds, as `hmi-panel --check` lists it.
    QStringList lines{problem};
    FormChecker checker({NORVOInterface_Z3::initialization()->maxChannelCount(), words});
    QList<FormFinding> findings;
    if (checker.checkFile(m_fileName, &findings) == FormChecker::FileResult::NotAForm)
        lines << QStringLiteral("%1: not a form: %2").arg(m_fileName, checker.problem());
    for (const FormFinding &finding : std::as_const(findings))
        lines << finding.toString();
    return lines;
}

void FormReload::refuse(const QStringList &lines)
{
    for (int i = 0; i < lines.size() && i < MaxLines; ++i)
        std::fprintf(stderr, "hmi-panel: %s\n", qPrintable(i == 0 ? QStringLiteral("%1: %2").arg(m_fileName, lines.at(i)) : lines.at(i)));
    if (lines.size() > MaxLines)
        std::fprintf(stderr, "hmi-panel: ... and %lld more\n", static_cast<long long>(lines.size() - MaxLines));
    // On the line: the first finding, which says where; the loader's reason when there is none.
    const QString shown = lines.size() > 1 ? lines.at(1) : lines.constFirst();
    const auto more = lines.size() - 2;
    const QString name = QFileInfo(m_fileName).fileName();
    m_window->showMessage([shown, more, name] {
        const QString line = more > 0 ? PanelWords::text(PanelWords::MoreLines).arg(shown).arg(more) : shown;
        return PanelWords::text(PanelWords::NotReloaded).arg(name, line);
    });
}
