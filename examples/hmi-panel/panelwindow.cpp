#include "panelwindow.h"

#include "formsession.h"
#include "lastusedtable.h"
#include "norvointerface_z3.h"
#include "paneltables.h"
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
    , m_session(session)
    , m_lastTable(new LastUsedTable(this)) // the search keys take no focus: they act on the table used last
{
    setWindowTitle(session->form()->windowTitle());
    auto *layout = new QVBoxLayout(this);
    auto *bar = new QHBoxLayout;
    bar->addWidget(new QLabel(tr("Language:"), this));
    auto *language = new QComboBox(this);
    language->setObjectName(QStringLiteral("languageBox"));
    language->addItems(languageNames);
    language->setCurrentIndex(NORVOInterface_Z3::initialization()->currentLanguageIndex());
    bar->addWidget(language);
    bar->addSpacing(20);
    bar->addWidget(new QLabel(tr("Operator authority:"), this));
    auto *authority = new QSpinBox(this);
    authority->setObjectName(QStringLiteral("authorityBox"));
    authority->setRange(0, 99);
    authority->setValue(1);
    authority->setToolTip(tr("Smaller is stronger; a widget needing authority N takes operators 1 ... N."));
    bar->addWidget(authority);
    bar->addStretch();
    if (session->form()->findChild<TableWidget *>()) {
        addSearchKeys(bar);
        addFileMenu(bar);
    }
    layout->addLayout(bar);

    QDialog *form = session->form();
    auto *view = new QScrollArea(this);
    view->setObjectName(QStringLiteral("formView"));
    view->setFrameShape(QFrame::NoFrame);
    form->setParent(view, Qt::Widget);
    view->setWidget(form);
    view->setMinimumSize(form->size());
    layout->addWidget(view);
    form->show();
    m_message = new QLabel(this);
    m_message->setObjectName(QStringLiteral("messageLine"));
    layout->addWidget(m_message);
    if (screenArea.isValid()) {
        const QSize around = minimumSizeHint() - form->size(); // the bar, the message line, margins
        view->setMinimumSize(form->size().boundedTo((screenArea - around).expandedTo(QSize(0, 0))));
    }

    connect(language, qOverload<int>(&QComboBox::currentIndexChanged), session, &FormSession::setLanguage);
    connect(authority, qOverload<int>(&QSpinBox::valueChanged), session, &FormSession::setAuthority);
    connect(NORVOInterface_Z3::initialization(), &NORVOInterface_Z3::authorityRefused, this,
            &PanelWindow::showRefusal);
    session->setAuthority(authority->value());
}

void PanelWindow::showRefusal(int authority)
{
    m_message->setText(tr("This operation needs authority %1 or stronger.").arg(authority));
}

void PanelWindow::showMessage(const QString &message)
{
    m_message->setText(message);
}

void PanelWindow::addSearchKeys(QHBoxLayout *bar)
{
    // The keys leave the focus where it is, so they act on the table the operator was in.
    const auto key = [this, bar](const QString &text, const char *name) {
        auto *button = new QPushButton(text, this);
        button->setObjectName(QLatin1String(name));
        button->setFocusPolicy(Qt::NoFocus);
        bar->addWidget(button);
        return button;
    };
    connect(key(tr("Find..."), "findKey"), &QPushButton::clicked, this, [this] {
        TableWidget *table = currentTable();
        bool ok = false;
        const QString text = QInputDialog::getText(this, tr("Find"), tr("Text in a cell:"), QLineEdit::Normal,
                                                   QString(), &ok);
        if (ok && table && !text.isEmpty())
            table->find(text);
    });
    connect(key(tr("Find next"), "findNextKey"), &QPushButton::clicked, this, [this] {
        if (TableWidget *table = currentTable())
            table->findNext();
    });
    connect(key(tr("Jump..."), "jumpKey"), &QPushButton::clicked, this, [this] {
        if (TableWidget *table = currentTable())
            table->jumpTo(std::max(0, table->currentColumn()));
    });
}

TableWidget *PanelWindow::currentTable()
{
    TableWidget *table = PanelTables::searchTable(m_session->form(), m_lastTable->table());
    if (!table)
        showMessage(tr("No table on screen to search."));
    return table;
}

void PanelWindow::addFileMenu(QHBoxLayout *bar)
{
    auto *button = new QToolButton(this);
    button->setObjectName(QStringLiteral("tableFilesKey"));
    button->setText(tr("Files"));
    button->setFocusPolicy(Qt::NoFocus);
    button->setPopupMode(QToolButton::InstantPopup);
    auto *menu = new QMenu(button);
    const QString tables = tr("Table files (*.txt *.tsv);;All files (*)");
    const QString programs = tr("NC programs (*.nc *.mpf *.txt);;All files (*)");
    menu->addAction(tr("Load table file..."), this, [this, tables] {
        const QString file = QFileDialog::getOpenFileName(this, tr("Load table file"), QString(), tables);
        if (TableWidget *table = currentTable(); table && !file.isEmpty())
            table->loadFormFile(file);
    });
    menu->addAction(tr("Save table file..."), this, [this, tables] {
        const QString file = QFileDialog::getSaveFileName(this, tr("Save table file"), QString(), tables);
        if (TableWidget *table = currentTable(); table && !file.isEmpty())
            table->saveAsFile(file);
    });
    menu->addAction(tr("Show NC program..."), this, [this, programs] {
        const QString file = QFileDialog::getOpenFileName(this, tr("Show NC program"), QString(), programs);
        TableWidget *table = currentTable();
        if (!table || file.isEmpty())
            return;
        const QString signs = table->property("ncCodeSigns").toString();
        table->showAsNCCode(file, signs.isEmpty() ? QStringLiteral("N,G,X,Y,Z,I,J,K,R,F,S,T,M") : signs);
    });
    menu->addAction(tr("Save NC program..."), this, [this, programs] {
        const QString file = QFileDialog::getSaveFileName(this, tr("Save NC program"), QString(), programs);
        if (TableWidget *table = currentTable(); table && !file.isEmpty())
            table->saveAsNCCode(file);
    });
    button->setMenu(menu);
    bar->addWidget(button);
}
