#include "jumptodialog.h"

#include "jumppattern.h"
#include "jumpsearch.h"
#include "tablewidget.h"

#include <QApplication>
#include <QButtonGroup>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace {
const char *const FocusedRadio = "background-color: rgb(85, 255, 255);";
const char *const UnfocusedRadio = "background-color: rgba(85, 255, 255,0);";

QLineEdit *lineEdit(QWidget *parent, const char *name)
{
    auto *edit = new QLineEdit(parent);
    edit->setObjectName(QLatin1String(name));
    return edit;
}
} // namespace

JumpToDialog::JumpToDialog(TableWidget *table)
    : QDialog(table)
    , m_table(table)
    , m_search(std::make_unique<JumpSearch>(table))
{
    setObjectName(QStringLiteral("JumpToDialog"));
    setWindowTitle(QString::fromUtf8("表格跳转"));
}

JumpToDialog::~JumpToDialog() = default;

void JumpToDialog::setVisible(bool visible)
{
    if (visible)
        build();
    QDialog::setVisible(visible);
}

void JumpToDialog::build()
{
    if (built())
        return;
    auto *layout = new QVBoxLayout(this);

    auto *methods = new QGroupBox(QString::fromUtf8("跳转形式"), this);
    methods->setObjectName(QStringLiteral("groupBox"));
    auto *methodLayout = new QHBoxLayout(methods);
    const char *const names[] = {"radioButton_row", "radioButton_no", "radioButton_text", "radioButton_var",
                                 "radioButton_varm"};
    const char *const texts[] = {"行号", "编号", "文本", "精确变数地址", "模糊变数地址"};
    auto *group = new QButtonGroup(this);
    for (int i = 0; i < 5; ++i) {
        auto *radio = new QRadioButton(QString::fromUtf8(texts[i]), methods);
        radio->setObjectName(QLatin1String(names[i]));
        group->addButton(radio, i);
        methodLayout->addWidget(radio);
        connect(radio, &QRadioButton::toggled, this, &JumpToDialog::radioToggled);
        m_radios.append(radio);
    }
    layout->addWidget(methods);

    auto *fields = new QGridLayout;
    m_text = lineEdit(this, "lineEdit_text");
    fields->addWidget(new QLabel(QString::fromUtf8("跳转内容"), this), 0, 0);
    fields->addWidget(m_text, 0, 1, 1, 3);
    m_class = new QComboBox(this);
    m_class->setObjectName(QStringLiteral("comboBox_class"));
    m_class->addItems({QStringLiteral("User"), QStringLiteral("Mcm"), QStringLiteral("Sys"), QStringLiteral("Reg"),
                       QStringLiteral("Bus"), QStringLiteral("Com"), QStringLiteral("I_BIT"), QStringLiteral("O_BIT"),
                       QStringLiteral("C_BIT"), QStringLiteral("S_BIT"), QStringLiteral("A_BIT"),
                       QStringLiteral("Cn_BIT"), QStringLiteral("Tm_BIT"), QStringLiteral("User_BIT"),
                       QStringLiteral("Mcm_BIT"), QStringLiteral("Sys_BIT"), QStringLiteral("Reg_BIT"),
                       QStringLiteral("Bus_BIT"), QStringLiteral("Com_BIT")});
    connect(m_class, qOverload<int>(&QComboBox::currentIndexChanged), this, [this] { updateInputs(); });
    fields->addWidget(new QLabel(QString::fromUtf8("数据类型："), this), 1, 0);
    fields->addWidget(m_class, 1, 1);
    m_address = lineEdit(this, "lineEdit_address");
    fields->addWidget(new QLabel(QString::fromUtf8("变数地址："), this), 1, 2);
    fields->addWidget(m_address, 1, 3);
    m_channel = lineEdit(this, "lineEdit_channel");
    m_channel->setText(QStringLiteral("1"));
    fields->addWidget(new QLabel(QString::fromUtf8("通道号："), this), 2, 0);
    fields->addWidget(m_channel, 2, 1);
    m_index = lineEdit(this, "lineEdit_index");
    fields->addWidget(new QLabel(QString::fromUtf8("位索引："), this), 2, 2);
    fields->addWidget(m_index, 2, 3);
    m_com = lineEdit(this, "lineEdit_com");
    m_com->setText(QStringLiteral("0"));
    fields->addWidget(new QLabel(QString::fromUtf8("通讯号："), this), 3, 0);
    fields->addWidget(m_com, 3, 1);
    layout->addLayout(fields);

    // Refused input and a search without result each have their own line.
    m_inputError = new QLabel(QString::fromUtf8("你输入的内容错误，请重新输入。"), this);
    m_inputError->setObjectName(QStringLiteral("label_error"));
    m_notFound = new QLabel(QString::fromUtf8("查找结果：无法查找到相应内容！"), this);
    m_notFound->setObjectName(QStringLiteral("label_error_2"));
    for (QLabel *label : {m_inputError, m_notFound}) {
        label->setStyleSheet(QStringLiteral("color: red;"));
        label->hide();
        layout->addWidget(label);
    }

    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    m_ok = new QPushButton(QString::fromUtf8("确定"), this);
    m_ok->setObjectName(QStringLiteral("pushButton_ok"));
    m_ok->setDefault(true);
    m_cancel = new QPushButton(QString::fromUtf8("取消"), this);
    m_cancel->setObjectName(QStringLiteral("pushButton_cancel"));
    connect(m_ok, &QPushButton::clicked, this, &JumpToDialog::accept);
    connect(m_cancel, &QPushButton::clicked, this, &QDialog::reject);
    buttons->addWidget(m_ok);
    buttons->addWidget(m_cancel);
    layout->addLayout(buttons);

    for (QWidget *w : inputs())
        w->installEventFilter(this);
    connect(m_text, &QLineEdit::textEdited, this, [this] { m_inputError->hide(); m_notFound->hide(); });
    m_radios.first()->setChecked(true);
}

QList<QWidget *> JumpToDialog::inputs() const
{
    QList<QWidget *> list;
    for (QRadioButton *radio : m_radios)
        list << radio;
    list << m_text << m_class << m_address << m_channel << m_index << m_com << m_ok << m_cancel;
    return list;
}

int JumpToDialog::method() const
{
    // Before the inputs exist the first method is the checked one.
    for (int i = 0; i < m_radios.size(); ++i) {
        if (m_radios.at(i)->isChecked())
            return i;
    }
    return 0;
}

int JumpToDialog::runFor(int column, int method, int visibleMask)
{
    build();
    m_column = column;
    if (method < 0 || method >= m_radios.size())
        method = 0;
    m_radios.at(method)->setChecked(true);
    for (int i = 0; i < m_radios.size(); ++i)
        m_radios.at(i)->setVisible(visibleMask == -1 || (visibleMask & (1 << i)) || i == method);
    updateInputs();
    // The variable methods start at the address; the short form is typed into the text line.
    QLineEdit *first = method == JumpPattern::Variable ? m_address : m_text;
    m_inputError->hide();
    m_notFound->hide();
    first->setFocus(Qt::OtherFocusReason);
    return exec();
}

void JumpToDialog::radioToggled(bool checked)
{
    if (checked)
        updateInputs();
}

void JumpToDialog::updateInputs()
{
    if (!built())
        return;
    const bool fields = method() == JumpPattern::Variable;
    m_text->setEnabled(!fields);
    for (QWidget *w : {static_cast<QWidget *>(m_class), static_cast<QWidget *>(m_address),
                       static_cast<QWidget *>(m_channel), static_cast<QWidget *>(m_com)})
        w->setEnabled(fields);
    m_index->setEnabled(fields && m_class->currentIndex() >= JumpPattern::ClassCount);
}

void JumpToDialog::accept()
{
    build();
    m_inputError->hide();
    m_notFound->hide();
    JumpPattern::Input input;
    input.method = method();
    input.text = m_text->text();
    input.classIndex = m_class->currentIndex();
    input.channel = m_channel->text();
    input.address = m_address->text();
    input.bitIndex = m_index->text();
    input.com = m_com->text();
    const auto pattern = JumpPattern::build(input);
    if (!pattern) {
        m_inputError->show();
        return;
    }
    const auto found = m_search->search(input.method, *pattern, m_column);
    if (!found) {
        m_notFound->show();
        return;
    }
    m_table->jumpToCell(found->first, found->second);
    QDialog::accept();
}

void JumpToDialog::moveFocus(int step)
{
    if (!built())
        return;
    m_inputError->hide();
    const QList<QWidget *> list = inputs();
    int at = int(list.indexOf(focusWidget()));
    if (at < 0)
        return;
    for (at += step; at >= 0 && at < list.size(); at += step) {
        QWidget *w = list.at(at);
        if (w->isVisibleTo(this) && w->isEnabled()) {
            w->setFocus(Qt::TabFocusReason);
            return;
        }
    }
}

void JumpToDialog::focusNext() { moveFocus(1); }
void JumpToDialog::focusPrevious() { moveFocus(-1); }

void JumpToDialog::openKeypad(QLineEdit *edit)
{
    bool ok = false;
    const QRect rect(edit->mapToGlobal(QPoint(0, 0)), edit->size());
    const QString text = m_table->showKeypad(&ok, 10, edit->text(), rect);
    if (ok)
        edit->setText(text);
}

bool JumpToDialog::eventFilter(QObject *watched, QEvent *event)
{
    auto *widget = qobject_cast<QWidget *>(watched);
    if (!widget || m_forwarding)
        return QDialog::eventFilter(watched, event);
    if (auto *radio = qobject_cast<QRadioButton *>(widget)) {
        if (event->type() == QEvent::FocusIn)
            radio->setStyleSheet(QLatin1String(FocusedRadio));
        else if (event->type() == QEvent::FocusOut)
            radio->setStyleSheet(QLatin1String(UnfocusedRadio));
    }
    if (event->type() == QEvent::MouseButtonRelease) {
        if (auto *edit = qobject_cast<QLineEdit *>(widget); edit && edit->isEnabled()) {
            openKeypad(edit);
            return false;
        }
    }
    if (event->type() != QEvent::KeyPress)
        return QDialog::eventFilter(watched, event);
    const int key = static_cast<QKeyEvent *>(event)->key();
    switch (key) {
    case Qt::Key_Up:
    case Qt::Key_Left:
    case Qt::Key_F1:
        focusPrevious();
        return true;
    case Qt::Key_Down:
    case Qt::Key_Right:
    case Qt::Key_F2:
        focusNext();
        return true;
    case Qt::Key_F3:
        accept();
        return true;
    case Qt::Key_F4:
        reject();
        return true;
    case Qt::Key_Return: {
        // A button takes it as its own key (Space); a line goes on to the dialog's default button.
        const bool button = qobject_cast<QAbstractButton *>(widget) != nullptr;
        m_forwarding = true;
        QKeyEvent press(QEvent::KeyPress, button ? Qt::Key_Space : Qt::Key_Enter, Qt::NoModifier);
        QKeyEvent release(QEvent::KeyRelease, button ? Qt::Key_Space : Qt::Key_Enter, Qt::NoModifier);
        QApplication::sendEvent(widget, &press);
        if (button)
            QApplication::sendEvent(widget, &release);
        m_forwarding = false;
        return true;
    }
    default:
        return QDialog::eventFilter(watched, event);
    }
}
