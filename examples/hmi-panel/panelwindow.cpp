#include "panelwindow.h"

#include "formsession.h"
#include "lastusedtable.h"
#include "norvointerface_z3.h"
#include "paneltables.h"
#include "panelwords.h"
#include "tablewidget.h"

#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QHBoxLayout>
#include <QFileDialog>
#include <QInputDialog>
#include <QMenu>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QSpinBox>
#include <QToolButton>
#include <QVBoxLayout>

PanelWindow::PanelWindow(FormSession *session, const QStringList &languageNames, const QSize &screenArea,
                         QWidget *parent)
    : QWidget(parent)
    , m_lastTable(new LastUsedTable(this)) // the search keys take no focus: they act on the table used last
    , m_screenArea(screenArea)
{
    auto *layout = new QVBoxLayout(this);
    auto *bar = new QHBoxLayout;
    m_languageLabel = new QLabel(this);
    bar->addWidget(m_languageLabel);
    auto *language = new QComboBox(this);
    language->setObjectName(QStringLiteral("languageBox"));
    language->addItems(languageNames);
    language->setCurrentIndex(NORVOInterface_Z3::initialization()->currentLanguageIndex());
    bar->addWidget(language);
    bar->addSpacing(20);
    m_authorityLabel = new QLabel(this);
    bar->addWidget(m_authorityLabel);
    m_authority = new QSpinBox(this);
    m_authority->setObjectName(QStringLiteral("authorityBox"));
    m_authority->setRange(0, 99);
    m_authority->setValue(1);
    bar->addWidget(m_authority);
    bar->addStretch();
    bar->addWidget(addSearchKeys());
    layout->addLayout(bar);

    m_view = new QScrollArea(this);
    m_view->setObjectName(QStringLiteral("formView"));
    m_view->setFrameShape(QFrame::NoFrame);
    layout->addWidget(m_view);
    m_message = new QLabel(this);
    m_message->setObjectName(QStringLiteral("messageLine"));
    layout->addWidget(m_message);
    retranslate();
    setSession(session);

    // Through m_session: a reloaded form takes the place of the first.
    connect(language, qOverload<int>(&QComboBox::currentIndexChanged), this, [this](int index) {
        m_session->setLanguage(index);
    });
    connect(m_authority, qOverload<int>(&QSpinBox::valueChanged), this, [this](int authority) {
        m_session->setAuthority(authority);
    });
    NORVOInterface_Z3 *hmi = NORVOInterface_Z3::initialization();
    connect(hmi, &NORVOInterface_Z3::authorityRefused, this, [this](int authority) {
        showMessage([authority] { return PanelWords::text(PanelWords::NeedsAuthority).arg(authority); });
    });
    connect(hmi, &NORVOInterface_Z3::currentLanguageChanged, this, &PanelWindow::retranslate);
    connect(hmi, &NORVOInterface_Z3::wordLibraryChanged, this, &PanelWindow::retranslate);
    session->setAuthority(m_authority->value());
}

void PanelWindow::setSession(FormSession *session)
{
    m_session = session;
    QDialog *form = session->form();
    if (QWidget *old = m_view->takeWidget())
        old->hide(); // its session deletes it
    form->setParent(m_view, Qt::Widget);
    m_view->setWidget(form);
    m_view->setMinimumSize(form->size());
    form->show();
    m_tableKeys->setVisible(form->findChild<TableWidget *>() != nullptr);
    if (m_screenArea.isValid()) {
        const QSize around = minimumSizeHint() - form->size(); // the bar, the message line, margins
        m_view->setMinimumSize(form->size().boundedTo((m_screenArea - around).expandedTo(QSize(0, 0))));
    }
    retranslate();
}

int PanelWindow::authority() const
{
    return m_authority->value();
}

void PanelWindow::retranslate()
{
    const QString panel = PanelWords::text(PanelWords::Title);
    const QString formTitle = m_session ? m_session->form()->windowTitle() : QString();
    // "Mill operator panel - Operator panel" says it twice.
    const bool named = formTitle.contains(panel, Qt::CaseInsensitive);
    setWindowTitle(formTitle.isEmpty() ? panel : named ? formTitle : QStringLiteral("%1 - %2").arg(formTitle, panel));
    m_languageLabel->setText(PanelWords::text(PanelWords::Language));
    m_authorityLabel->setText(PanelWords::text(PanelWords::Authority));
    m_authority->setToolTip(PanelWords::text(PanelWords::AuthorityTip));
    m_find->setText(PanelWords::text(PanelWords::Find));
    m_findNext->setText(PanelWords::text(PanelWords::FindNext));
    m_jump->setText(PanelWords::text(PanelWords::Jump));
    m_files->setText(PanelWords::text(PanelWords::Files));
    const PanelWords::Word entries[] = {PanelWords::LoadTable, PanelWords::SaveTable, PanelWords::ShowProgram,
                                        PanelWords::SaveProgram};
    for (int i = 0; i < m_fileActions.size(); ++i)
        m_fileActions.at(i)->setText(PanelWords::text(entries[i]));
    if (m_wordsMessage)
        m_message->setText(m_wordsMessage());
}

void PanelWindow::showMessage(const QString &message)
{
    m_wordsMessage = nullptr;
    m_message->setText(message);
}

void PanelWindow::showMessage(std::function<QString()> message)
{
    m_wordsMessage = std::move(message);
    m_message->setText(m_wordsMessage());
}

QWidget *PanelWindow::addSearchKeys()
{
    // Shown while the form has a table. The keys leave the focus where it is, so they act on the table
    // the operator was in.
    m_tableKeys = new QWidget(this);
    auto *keys = new QHBoxLayout(m_tableKeys);
    keys->setContentsMargins(0, 0, 0, 0);
    const auto key = [this, keys](const char *name) {
        auto *button = new QPushButton(m_tableKeys);
        button->setObjectName(QLatin1String(name));
        button->setFocusPolicy(Qt::NoFocus);
        keys->addWidget(button);
        return button;
    };
    m_find = key("findKey");
    connect(m_find, &QPushButton::clicked, this, [this] {
        TableWidget *table = currentTable();
        bool ok = false;
        const QString text = QInputDialog::getText(this, PanelWords::title(PanelWords::Find),
                                                   PanelWords::text(PanelWords::FindPrompt), QLineEdit::Normal,
                                                   QString(), &ok);
        if (ok && table && !text.isEmpty())
            table->find(text);
    });
    m_findNext = key("findNextKey");
    connect(m_findNext, &QPushButton::clicked, this, [this] {
        if (TableWidget *table = currentTable())
            table->findNext();
    });
    m_jump = key("jumpKey");
    connect(m_jump, &QPushButton::clicked, this, [this] {
        if (TableWidget *table = currentTable())
            table->jumpTo(std::max(0, table->currentColumn()));
    });
    keys->addWidget(addFileMenu());
    return m_tableKeys;
}

TableWidget *PanelWindow::currentTable()
{
    TableWidget *table = PanelTables::searchTable(m_session->form(), m_lastTable->table());
    if (!table)
        showMessage([] { return PanelWords::text(PanelWords::NoTable); });
    return table;
}

QToolButton *PanelWindow::addFileMenu()
{
    m_files = new QToolButton(m_tableKeys);
    m_files->setObjectName(QStringLiteral("tableFilesKey"));
    m_files->setFocusPolicy(Qt::NoFocus);
    m_files->setPopupMode(QToolButton::InstantPopup);
    auto *menu = new QMenu(m_files);
    const auto tables = [] { return PanelWords::text(PanelWords::TableFiles); };
    const auto programs = [] { return PanelWords::text(PanelWords::Programs); };
    m_fileActions << menu->addAction(QString(), this, [this, tables] {
        const QString file = QFileDialog::getOpenFileName(this, PanelWords::title(PanelWords::LoadTable), QString(), tables());
        if (TableWidget *table = currentTable(); table && !file.isEmpty())
            table->loadFormFile(file);
    });
    m_fileActions << menu->addAction(QString(), this, [this, tables] {
        const QString file = QFileDialog::getSaveFileName(this, PanelWords::title(PanelWords::SaveTable), QString(), tables());
        if (TableWidget *table = currentTable(); table && !file.isEmpty())
            table->saveAsFile(file);
    });
    m_fileActions << menu->addAction(QString(), this, [this, programs] {
        const QString file = QFileDialog::getOpenFileName(this, PanelWords::title(PanelWords::ShowProgram), QString(), programs());
        TableWidget *table = currentTable();
        if (!table || file.isEmpty())
            return;
        const QString signs = table->property("ncCodeSigns").toString();
        table->showAsNCCode(file, signs.isEmpty() ? QStringLiteral("N,G,X,Y,Z,I,J,K,R,F,S,T,M") : signs);
    });
    m_fileActions << menu->addAction(QString(), this, [this, programs] {
        const QString file = QFileDialog::getSaveFileName(this, PanelWords::title(PanelWords::SaveProgram), QString(), programs());
        if (TableWidget *table = currentTable(); table && !file.isEmpty())
            table->saveAsNCCode(file);
    });
    m_files->setMenu(menu);
    return m_files;
}
