#include "fieldbinder.h"

#include "choicefieldbinding.h"
#include "chooserfieldbinding.h"
#include "formvaluereader.h"
#include "valuefieldbinding.h"

#include <QAbstractButton>
#include <QButtonGroup>
#include <QMetaProperty>
#include <QRect>

#include <utility>

FieldBinder::FieldBinder(QWidget *widget, QWidget *preview, const FormValueReader *reader,
                         const QString &pictureFolder, QObject *parent)
    : QObject(parent)
    , m_widget(widget)
    , m_preview(preview)
    , m_reader(reader)
    , m_pictureFolder(pictureFolder)
{
}

FieldBinder::~FieldBinder() = default;

void FieldBinder::bind(QWidget *root)
{
    if (!root || !m_widget)
        return;
    m_loading = true;
    const QList<QWidget *> fields = root->findChildren<QWidget *>();
    for (QWidget *field : fields) {
        // The preview is a copy of the widget: its what's-this is the widget's, not a path.
        if (m_preview && (field == m_preview || m_preview->isAncestorOf(field)))
            continue;
        FieldBinding *binding = createBinding(field);
        if (!binding)
            continue;
        const QByteArray &name = binding->path().name();
        if (!m_original.contains(name)) {
            m_original.insert(name, m_reader->value(name));
            m_current.insert(name, m_original.value(name));
        }
        m_bindings.append(binding);
        connect(binding, &FieldBinding::edited, this, &FieldBinder::fieldEdited);
    }
    groupChoices();
    for (FieldBinding *binding : std::as_const(m_bindings))
        binding->load(m_current.value(binding->path().name()));
    m_loading = false;
}

FieldBinding *FieldBinder::createBinding(QWidget *field)
{
    const PropertyPath path = PropertyPath::parse(field->whatsThis());
    if (!path.isValid())
        return nullptr;
    const QMetaObject *meta = m_widget->metaObject();
    const int index = meta->indexOfProperty(path.name().constData());
    QMetaProperty property;
    int type = QMetaType::UnknownType;
    if (index >= 0) {
        property = meta->property(index);
        if (!property.isWritable())
            return nullptr;
        type = property.isEnumType() ? int(QMetaType::Int) : property.userType();
    } else if (m_widget->dynamicPropertyNames().contains(path.name())) {
        type = m_widget->property(path.name().constData()).userType();
    } else {
        return nullptr; // a what's-this that happens to look like a path
    }

    switch (path.form()) {
    case PropertyPath::Number:
        if (ChoiceFieldBinding::supports(field) && (property.isEnumType() || type == QMetaType::Int))
            return new ChoiceFieldBinding(static_cast<QAbstractButton *>(field), path, property, this);
        return nullptr;
    case PropertyPath::Member:
        if (path.partType(type) == QMetaType::UnknownType)
            return nullptr;
        break;
    default:
        if (ChooserFieldBinding::supports(field, path, type))
            return new ChooserFieldBinding(static_cast<QAbstractButton *>(field), path, property, type,
                                           m_pictureFolder, this);
        break;
    }
    return ValueFieldBinding::supports(field) ? new ValueFieldBinding(field, path, property, type, this) : nullptr;
}

void FieldBinder::groupChoices()
{
    // A choice's group: the choices of the same property in the same button group, or else with the
    // same parent widget (the horizontal and the vertical alignment sit in separate boxes).
    QList<ChoiceFieldBinding *> choices;
    for (FieldBinding *binding : std::as_const(m_bindings)) {
        if (auto *choice = qobject_cast<ChoiceFieldBinding *>(binding))
            choices.append(choice);
    }
    for (ChoiceFieldBinding *choice : std::as_const(choices)) {
        int mask = 0;
        for (ChoiceFieldBinding *other : std::as_const(choices)) {
            if (other->path().name() != choice->path().name())
                continue;
            QAbstractButton *a = choice->button();
            QAbstractButton *b = other->button();
            const bool together = a->group() ? a->group() == b->group() : a->parentWidget() == b->parentWidget();
            if (together)
                mask |= other->path().number();
        }
        choice->setGroupMask(mask);
    }
}

void FieldBinder::fieldEdited(FieldBinding *binding)
{
    if (m_loading)
        return;
    const QByteArray &name = binding->path().name();
    const QVariant before = m_current.value(name);
    const QVariant after = binding->store(before);
    if (auto *chooser = qobject_cast<ChooserFieldBinding *>(binding)) {
        if (!chooser->picturePath().isEmpty())
            m_picturesChosen.insert(name);
    } else if (after == before) {
        return;
    }
    m_current.insert(name, after);
    m_edited.insert(name);
    applyToPreview(name, after);

    // Other fields of the same property show the new value (member fields, choice groups).
    m_loading = true;
    for (FieldBinding *other : std::as_const(m_bindings)) {
        if (other != binding && other->path().name() == name)
            other->load(after);
    }
    m_loading = false;
}

void FieldBinder::applyToPreview(const QByteArray &name, const QVariant &value)
{
    if (!m_preview)
        return;
    // The preview sits in the dialog's preview area: it takes the size, not the place.
    if (name == "geometry")
        m_preview->resize(value.toRect().size());
    else
        m_preview->setProperty(name.constData(), value);
}

QList<QByteArray> FieldBinder::changedProperties() const
{
    QList<QByteArray> names;
    for (FieldBinding *binding : m_bindings) {
        const QByteArray &name = binding->path().name();
        if (names.contains(name) || !m_edited.contains(name))
            continue;
        // Pixmaps and icons do not compare equal even to themselves: a chosen one is a change.
        if (m_picturesChosen.contains(name) || m_current.value(name) != m_original.value(name))
            names.append(name);
    }
    return names;
}

QString FieldBinder::picturePath(const QByteArray &name) const
{
    QString path;
    for (FieldBinding *binding : m_bindings) {
        auto *chooser = qobject_cast<ChooserFieldBinding *>(binding);
        if (chooser && chooser->path().name() == name && !chooser->picturePath().isEmpty())
            path = chooser->picturePath();
    }
    return path;
}
