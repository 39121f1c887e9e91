#include "valuefieldbinding.h"

#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QFontComboBox>
#include <QKeySequence>
#include <QKeySequenceEdit>
#include <QLineEdit>
#include <QMetaEnum>
#include <QPlainTextEdit>
#include <QSpinBox>
#include <QTextEdit>

#include <limits>

namespace {

QVariant converted(QVariant value, int type)
{
    if (type == QMetaType::UnknownType || value.userType() == type)
        return value;
    if (type == QMetaType::QStringList && value.userType() == QMetaType::QString) {
        const QString text = value.toString();
        return text.isEmpty() ? QStringList() : text.split(QLatin1Char('\n'));
    }
    if (type == QMetaType::QString && value.userType() == QMetaType::QStringList)
        return value.toStringList().join(QLatin1Char('\n'));
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    const bool ok = value.convert(QMetaType(type));
#else
    const bool ok = value.convert(type);
#endif
    return ok ? value : QVariant();
}

QString textOf(const QVariant &part)
{
    return part.userType() == QMetaType::QStringList ? part.toStringList().join(QLatin1Char('\n'))
                                                     : part.toString();
}

} // namespace

ValueFieldBinding::ValueFieldBinding(QWidget *field, const PropertyPath &path, const QMetaProperty &property,
                                     int type, QObject *parent)
    : FieldBinding(field, path, property, type, parent)
{
    if (auto *fontBox = qobject_cast<QFontComboBox *>(field)) {
        connect(fontBox, &QFontComboBox::currentFontChanged, this, &ValueFieldBinding::reportEdit);
    } else if (auto *combo = qobject_cast<QComboBox *>(field)) {
        if (isEnumWhole() && combo->count() == 0)
            fillEnumKeys();
        connect(combo, QOverload<int>::of(&QComboBox::currentIndexChanged), this, &ValueFieldBinding::reportEdit);
        connect(combo, &QComboBox::editTextChanged, this, &ValueFieldBinding::reportEdit);
    } else if (auto *spin = qobject_cast<QSpinBox *>(field)) {
        connect(spin, QOverload<int>::of(&QSpinBox::valueChanged), this, &ValueFieldBinding::reportEdit);
    } else if (auto *doubleSpin = qobject_cast<QDoubleSpinBox *>(field)) {
        connect(doubleSpin, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this,
                &ValueFieldBinding::reportEdit);
    } else if (auto *line = qobject_cast<QLineEdit *>(field)) {
        connect(line, &QLineEdit::textChanged, this, &ValueFieldBinding::reportEdit);
    } else if (auto *plain = qobject_cast<QPlainTextEdit *>(field)) {
        connect(plain, &QPlainTextEdit::textChanged, this, &ValueFieldBinding::reportEdit);
    } else if (auto *text = qobject_cast<QTextEdit *>(field)) {
        connect(text, &QTextEdit::textChanged, this, &ValueFieldBinding::reportEdit);
    } else if (auto *keys = qobject_cast<QKeySequenceEdit *>(field)) {
        connect(keys, &QKeySequenceEdit::keySequenceChanged, this, &ValueFieldBinding::reportEdit);
    } else if (auto *slider = qobject_cast<QAbstractSlider *>(field)) {
        connect(slider, &QAbstractSlider::valueChanged, this, &ValueFieldBinding::reportEdit);
    } else if (auto *button = qobject_cast<QAbstractButton *>(field)) {
        connect(button, &QAbstractButton::toggled, this, &ValueFieldBinding::reportEdit);
    }
}

bool ValueFieldBinding::supports(QWidget *field)
{
    if (auto *button = qobject_cast<QAbstractButton *>(field))
        return button->isCheckable();
    return qobject_cast<QComboBox *>(field) || qobject_cast<QSpinBox *>(field)
           || qobject_cast<QDoubleSpinBox *>(field) || qobject_cast<QLineEdit *>(field)
           || qobject_cast<QPlainTextEdit *>(field) || qobject_cast<QTextEdit *>(field)
           || qobject_cast<QKeySequenceEdit *>(field) || qobject_cast<QAbstractSlider *>(field);
}

bool ValueFieldBinding::isEnumWhole() const
{
    return path().form() == PropertyPath::Whole && property().isEnumType() && !property().isFlagType();
}

void ValueFieldBinding::fillEnumKeys()
{
    auto *combo = qobject_cast<QComboBox *>(field());
    const QMetaEnum keys = property().enumerator();
    for (int i = 0; i < keys.keyCount(); ++i)
        combo->addItem(QString::fromLatin1(keys.key(i)), keys.value(i));
}

void ValueFieldBinding::widenDefaultRange(const QVariant &part)
{
    // A spin box left at Qt's default range (0 to 99) would clip addresses and positions.
    if (auto *spin = qobject_cast<QSpinBox *>(field())) {
        if (spin->minimum() == 0 && spin->maximum() == 99)
            spin->setRange(std::numeric_limits<int>::min(), std::numeric_limits<int>::max());
        if (part.toInt() < spin->minimum())
            spin->setMinimum(part.toInt());
        if (part.toInt() > spin->maximum())
            spin->setMaximum(part.toInt());
    } else if (auto *doubleSpin = qobject_cast<QDoubleSpinBox *>(field())) {
        if (doubleSpin->minimum() == 0.0 && doubleSpin->maximum() == 99.99)
            doubleSpin->setRange(-1e9, 1e9);
    }
}

void ValueFieldBinding::show(const QVariant &whole)
{
    const QVariant part = path().read(whole);
    QWidget *f = field();
    if (auto *fontBox = qobject_cast<QFontComboBox *>(f)) {
        fontBox->setCurrentFont(QFont(part.toString()));
    } else if (auto *combo = qobject_cast<QComboBox *>(f)) {
        int index = combo->findData(part);
        if (index < 0 && part.userType() != QMetaType::QString && combo->itemData(0).isValid())
            index = combo->findData(part.toInt());
        if (index < 0 && part.userType() == QMetaType::QString)
            index = combo->findText(part.toString());
        if (index < 0 && part.canConvert<int>() && part.userType() != QMetaType::QString
            && !combo->itemData(0).isValid())
            index = part.toInt(); // items without data stand for the values 0, 1, 2, ...
        if (index >= 0 && index < combo->count())
            combo->setCurrentIndex(index);
        else if (combo->isEditable())
            combo->setEditText(part.toString());
    } else if (auto *spin = qobject_cast<QSpinBox *>(f)) {
        widenDefaultRange(part);
        spin->setValue(part.toInt());
    } else if (auto *doubleSpin = qobject_cast<QDoubleSpinBox *>(f)) {
        widenDefaultRange(part);
        doubleSpin->setValue(part.toDouble());
    } else if (auto *line = qobject_cast<QLineEdit *>(f)) {
        line->setText(textOf(part));
    } else if (auto *plain = qobject_cast<QPlainTextEdit *>(f)) {
        plain->setPlainText(textOf(part));
    } else if (auto *text = qobject_cast<QTextEdit *>(f)) {
        text->setPlainText(textOf(part));
    } else if (auto *keys = qobject_cast<QKeySequenceEdit *>(f)) {
        keys->setKeySequence(part.value<QKeySequence>());
    } else if (auto *slider = qobject_cast<QAbstractSlider *>(f)) {
        slider->setValue(part.toInt());
    } else if (auto *button = qobject_cast<QAbstractButton *>(f)) {
        button->setChecked(part.toBool());
    }
}

QVariant ValueFieldBinding::fieldValue() const
{
    QWidget *f = field();
    if (auto *fontBox = qobject_cast<QFontComboBox *>(f))
        return fontBox->currentFont().family();
    if (auto *combo = qobject_cast<QComboBox *>(f)) {
        const QVariant data = combo->currentData();
        if (data.isValid())
            return data;
        if (combo->isEditable() || path().partType(propertyType()) == QMetaType::QString)
            return combo->currentText();
        return combo->currentIndex();
    }
    if (auto *spin = qobject_cast<QSpinBox *>(f))
        return spin->value();
    if (auto *doubleSpin = qobject_cast<QDoubleSpinBox *>(f))
        return doubleSpin->value();
    if (auto *line = qobject_cast<QLineEdit *>(f))
        return line->text();
    if (auto *plain = qobject_cast<QPlainTextEdit *>(f))
        return plain->toPlainText();
    if (auto *text = qobject_cast<QTextEdit *>(f))
        return text->toPlainText();
    if (auto *keys = qobject_cast<QKeySequenceEdit *>(f))
        return QVariant::fromValue(keys->keySequence());
    if (auto *slider = qobject_cast<QAbstractSlider *>(f))
        return slider->value();
    if (auto *button = qobject_cast<QAbstractButton *>(f))
        return button->isChecked();
    return QVariant();
}

QVariant ValueFieldBinding::store(const QVariant &whole) const
{
    const QVariant part = converted(fieldValue(), path().partType(propertyType()));
    if (!part.isValid())
        return whole; // nothing the property could take
    const QVariant result = path().write(whole, part);
    return result.isValid() ? result : whole;
}
