#include "keypaddialog.h"

#include <QFontMetrics>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace {
const char *const KeyRows[][4] = {
    {"D", "E", "F", "\xe2\x8c\xab"}, {"A", "B", "C", "CLR"}, {"7", "8", "9", "-"},
    {"4", "5", "6", "."},            {"1", "2", "3", "0"},
};

// A name from a form may be any length: the keypad stays its own size.
constexpr int InfoWidth = 320;
constexpr int MaxInfoLength = 200;
constexpr int MaxTypedShown = 40;

bool isDigitOfRadix(QChar c, int radix)
{
    bool ok = false;
    QString(c).toInt(&ok, radix);
    return ok;
}
} // namespace

KeypadDialog::KeypadDialog(QWidget *parent)
    : QDialog(parent)
{
    setWindowTitle(tr("Keypad"));
    setModal(true);
    auto *layout = new QVBoxLayout(this);
    m_info = new QLabel(this);
    m_info->setObjectName(QStringLiteral("keypadInfo"));
    layout->addWidget(m_info);
    m_edit = new QLineEdit(this);
    m_edit->setAlignment(Qt::AlignRight);
    m_edit->setObjectName(QStringLiteral("keypadEntry"));
    layout->addWidget(m_edit);
    m_message = new QLabel(this);
    m_message->setObjectName(QStringLiteral("keypadMessage"));
    m_message->setWordWrap(true);
    layout->addWidget(m_message);

    auto *grid = new QGridLayout;
    int row = 0;
    for (const auto &keys : KeyRows) {
        for (int col = 0; col < 4; ++col) {
            const QString key = QString::fromUtf8(keys[col]);
            auto *button = new QPushButton(key, this);
            button->setObjectName(QStringLiteral("key_") + key);
            button->setFocusPolicy(Qt::NoFocus);
            button->setMinimumSize(48, 36); // room for the lines above the entry on a 600-pixel screen
            connect(button, &QPushButton::clicked, this, [this, key] { typeKey(key); });
            grid->addWidget(button, row, col);
            m_keys.append(button);
        }
        ++row;
    }
    layout->addLayout(grid);

    auto *buttons = new QHBoxLayout;
    auto *cancel = new QPushButton(tr("Cancel"), this);
    auto *ok = new QPushButton(tr("OK"), this);
    ok->setDefault(true);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(ok, &QPushButton::clicked, this, &KeypadDialog::accept);
    buttons->addWidget(cancel);
    buttons->addWidget(ok);
    layout->addLayout(buttons);
    connect(m_edit, &QLineEdit::textChanged, this, [this] { m_message->clear(); });
}

void KeypadDialog::setEntry(int radix, const QString &text, int maxLength, int decimals, double lowest,
                            double highest)
{
    m_radix = (radix == 16 || radix == 8 || radix == 2) ? radix : 10;
    m_decimals = m_radix == 10 ? qMax(0, decimals) : 0;
    m_lowest = lowest;
    m_highest = highest;
    if (maxLength > 0)
        m_edit->setMaxLength(maxLength);
    m_edit->setText(text.trimmed());
    m_edit->selectAll();
    updateKeys();
    updateInfo();
}

void KeypadDialog::setDescription(const QString &name, const QString &unit)
{
    m_name = name.left(MaxInfoLength).simplified();
    m_unit = unit.left(MaxInfoLength).simplified();
    updateInfo();
}

QString KeypadDialog::description() const
{
    return m_info->text();
}

// Limits as the operator types them: in the entry's radix, decimal ones without trailing zeros.
QString KeypadDialog::shown(double value) const
{
    if (m_radix != 10 && value >= 0 && value <= 9007199254740992.0)
        return QString::number(qint64(value), m_radix).toUpper();
    return QString::number(value, 'g', 15);
}

void KeypadDialog::updateInfo()
{
    QString what = m_name;
    if (!m_unit.isEmpty())
        what += (what.isEmpty() ? QString() : QStringLiteral(" ")) + QLatin1Char('[') + m_unit + QLatin1Char(']');
    const QFontMetrics metrics(m_info->font());
    QStringList lines;
    if (!what.isEmpty())
        lines << metrics.elidedText(what, Qt::ElideRight, InfoWidth);
    lines << tr("Allowed: %1 ... %2").arg(shown(m_lowest), shown(m_highest));
    m_info->setText(lines.join(QLatin1Char('\n')));
}

QString KeypadDialog::text() const
{
    return m_edit->text();
}

QString KeypadDialog::problem() const
{
    return m_message->text();
}

void KeypadDialog::updateKeys()
{
    for (QPushButton *button : std::as_const(m_keys)) {
        const QString key = button->text();
        bool enabled = true;
        if (key.size() == 1 && key.at(0).isLetterOrNumber())
            enabled = isDigitOfRadix(key.at(0), m_radix);
        else if (key == QLatin1String("."))
            enabled = m_decimals > 0;
        else if (key == QLatin1String("-"))
            enabled = m_radix == 10 && m_lowest < 0;
        button->setEnabled(enabled);
    }
}

void KeypadDialog::typeKey(const QString &key)
{
    if (m_edit->hasSelectedText())
        m_edit->del();
    if (key == QLatin1String("CLR")) {
        m_edit->clear();
    } else if (key == QString::fromUtf8("\xe2\x8c\xab")) {
        m_edit->backspace();
    } else if (key == QLatin1String("-")) {
        QString t = m_edit->text();
        m_edit->setText(t.startsWith(QLatin1Char('-')) ? t.mid(1) : QLatin1Char('-') + t);
    } else {
        m_edit->insert(key);
    }
}

bool KeypadDialog::acceptable(QString *why) const
{
    const QString t = m_edit->text().trimmed();
    if (t.isEmpty()) {
        *why = tr("Nothing typed");
        return false;
    }
    bool ok = false;
    double value = 0;
    if (m_radix == 10) {
        const int dot = int(t.indexOf(QLatin1Char('.')));
        if (dot >= 0 && int(t.size()) - dot - 1 > m_decimals) {
            *why = tr("at most %n decimal place(s)", nullptr, m_decimals);
            return false;
        }
        value = t.toDouble(&ok);
    } else {
        value = double(t.toULongLong(&ok, m_radix));
    }
    if (!ok) {
        *why = tr("not a number");
        return false;
    }
    if (!(value >= m_lowest && value <= m_highest)) { // also refuses NaN
        *why = tr("allowed %1 ... %2").arg(shown(m_lowest), shown(m_highest));
        return false;
    }
    return true;
}

void KeypadDialog::accept()
{
    QString why;
    if (!acceptable(&why)) {
        const QString typed = m_edit->text().trimmed().left(MaxTypedShown);
        m_message->setText(typed.isEmpty() ? why : tr("\"%1\" refused: %2").arg(typed, why));
        return;
    }
    QDialog::accept();
}
