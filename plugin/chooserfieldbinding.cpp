#include "chooserfieldbinding.h"

#include "valuechooser.h"

#include <QAbstractButton>
#include <QColor>
#include <QFileInfo>
#include <QIcon>
#include <QPixmap>

namespace {
const QSize SwatchSize(20, 20);
}

ChooserFieldBinding::ChooserFieldBinding(QAbstractButton *field, const PropertyPath &path,
                                         const QMetaProperty &property, int type, const QString &startFolder,
                                         QObject *parent)
    : FieldBinding(field, path, property, type, parent)
    , m_folder(startFolder)
{
    connect(field, &QAbstractButton::clicked, this, &ChooserFieldBinding::choose);
}

bool ChooserFieldBinding::supports(QWidget *field, const PropertyPath &path, int type)
{
    auto *button = qobject_cast<QAbstractButton *>(field);
    return button && !button->isCheckable() && path.form() == PropertyPath::Whole
           && (type == QMetaType::QColor || type == QMetaType::QPixmap || type == QMetaType::QIcon);
}

void ChooserFieldBinding::show(const QVariant &whole)
{
    m_value = whole;
    showValueOnButton();
}

QVariant ChooserFieldBinding::store(const QVariant &) const
{
    return m_value;
}

void ChooserFieldBinding::choose()
{
    QWidget *parent = field() ? field()->window() : nullptr;
    if (propertyType() == QMetaType::QColor) {
        const QColor color = ValueChooser::chooseColor(m_value.value<QColor>(), parent);
        if (!color.isValid())
            return;
        m_value = color;
    } else {
        const QString path = ValueChooser::choosePicture(m_folder, parent);
        if (path.isEmpty())
            return;
        m_picturePath = path;
        m_folder = QFileInfo(path).absolutePath();
        if (propertyType() == QMetaType::QPixmap)
            m_value = QPixmap(path);
        else
            m_value = QIcon(path);
    }
    showValueOnButton();
    reportEdit();
}

void ChooserFieldBinding::showValueOnButton()
{
    auto *button = qobject_cast<QAbstractButton *>(field());
    if (!button)
        return;
    QIcon icon;
    if (propertyType() == QMetaType::QColor) {
        QPixmap swatch(SwatchSize);
        swatch.fill(m_value.value<QColor>());
        icon = QIcon(swatch);
    } else if (propertyType() == QMetaType::QPixmap) {
        const QPixmap picture = m_value.value<QPixmap>();
        if (!picture.isNull())
            icon = QIcon(picture.scaled(SwatchSize, Qt::KeepAspectRatio, Qt::SmoothTransformation));
    } else {
        icon = m_value.value<QIcon>();
    }
    button->setIcon(icon);
    button->setIconSize(SwatchSize);
}
