#include "panelwindow.h"

#include "formsession.h"
#include "norvointerface_z3.h"

#include <QComboBox>
#include <QDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QSpinBox>
#include <QVBoxLayout>

PanelWindow::PanelWindow(FormSession *session, const QStringList &languageNames, QWidget *parent)
    : QWidget(parent)
    , m_session(session)
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
    layout->addLayout(bar);

    QDialog *form = session->form();
    form->setParent(this, Qt::Widget);
    layout->addWidget(form);
    form->setMinimumSize(form->size());
    form->show();
    m_message = new QLabel(this);
    m_message->setObjectName(QStringLiteral("messageLine"));
    layout->addWidget(m_message);

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
