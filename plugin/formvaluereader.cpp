#include "formvaluereader.h"

#include <QtDesigner/QDesignerFormEditorInterface>
#include <QtDesigner/QDesignerFormWindowInterface>
#include <QtDesigner/QDesignerPropertySheetExtension>
#include <QtDesigner/QExtensionManager>

#include <QKeySequence>
#include <QMetaEnum>
#include <QMetaProperty>
#include <QXmlStreamReader>

namespace {

bool isDesignerOwnType(const QVariant &value)
{
    return QByteArray(value.typeName()).startsWith("qdesigner_internal::");
}

QString unscoped(const QString &key)
{
    const int colons = key.lastIndexOf(QLatin1String("::"));
    return colons < 0 ? key.trimmed() : key.mid(colons + 2).trimmed();
}

QVariant asInt(const QVariant &value, const QMetaProperty &property)
{
    return property.isEnumType() && value.isValid() ? QVariant(value.toInt()) : value;
}

} // namespace

FormValueReader::FormValueReader(QWidget *widget, const QObject *defaults)
    : m_widget(widget)
    , m_defaults(defaults)
    , m_form(widget ? QDesignerFormWindowInterface::findFormWindow(widget) : nullptr)
{
    if (m_form && m_form->core())
        m_sheet = qt_extension<QDesignerPropertySheetExtension *>(m_form->core()->extensionManager(), widget);
}

bool FormValueReader::isSheetOnly(const QByteArray &name, const QMetaProperty &property)
{
    // Designer's fake properties: it stores them in the sheet and never writes them to the widget.
    static const QList<QByteArray> fakes{"focusPolicy", "toolTip",     "whatsThis", "cursor",
                                         "acceptDrops", "dragEnabled", "windowModality",
                                         "windowOpacity", "modal",     "floating",  "buddy"};
    return property.userType() == QMetaType::QKeySequence || fakes.contains(name);
}

QVariant FormValueReader::value(const QByteArray &name) const
{
    if (!m_widget)
        return QVariant();
    const QMetaObject *meta = m_widget->metaObject();
    const int metaIndex = meta->indexOfProperty(name.constData());
    const int sheetIndex = m_sheet ? m_sheet->indexOf(QString::fromLatin1(name)) : -1;
    if (metaIndex < 0 || sheetIndex < 0) // outside a form, or a dynamic property
        return m_widget->property(name.constData());

    const QMetaProperty property = meta->property(metaIndex);
    const QVariant sheetValue = m_sheet->property(sheetIndex);
    if (!isDesignerOwnType(sheetValue))
        return asInt(sheetValue, property);
    if (!isSheetOnly(name, property))
        return asInt(m_widget->property(name.constData()), property);

    const QVariant stored = m_sheet->isChanged(sheetIndex) ? storedValue(property) : QVariant();
    if (stored.isValid())
        return stored;
    const QObject *source = m_defaults ? m_defaults.data() : static_cast<const QObject *>(m_widget.data());
    return asInt(source->property(name.constData()), property);
}

QVariant FormValueReader::storedValue(const QMetaProperty &property) const
{
    readStoredProperties();
    const auto it = m_stored.constFind(QString::fromLatin1(property.name()));
    if (it == m_stored.constEnd() || it->texts.isEmpty())
        return QVariant();
    const QString &kind = it->kind;
    const QString &text = it->texts.first();
    if (kind == QLatin1String("enum") && property.isEnumType()) {
        bool ok = false;
        const int v = property.enumerator().keyToValue(unscoped(text).toLatin1().constData(), &ok);
        return ok ? QVariant(v) : QVariant();
    }
    if (kind == QLatin1String("set") && property.isEnumType()) {
        QStringList keys;
        const QStringList scoped = text.split(QLatin1Char('|'), Qt::SkipEmptyParts);
        for (const QString &key : scoped)
            keys.append(unscoped(key));
        bool ok = false;
        const int v = property.enumerator().keysToValue(keys.join(QLatin1Char('|')).toLatin1().constData(), &ok);
        return ok ? QVariant(v) : QVariant();
    }
    if (kind == QLatin1String("string")) {
        if (property.userType() == QMetaType::QKeySequence)
            return QVariant::fromValue(QKeySequence::fromString(text, QKeySequence::PortableText));
        return text;
    }
    if (kind == QLatin1String("stringlist"))
        return it->texts;
    if (kind == QLatin1String("number"))
        return text.toInt();
    if (kind == QLatin1String("double"))
        return text.toDouble();
    if (kind == QLatin1String("bool"))
        return text == QLatin1String("true");
    return QVariant();
}

void FormValueReader::readStoredProperties() const
{
    if (m_storedRead || !m_form || !m_widget)
        return;
    m_storedRead = true;
    // The form as Designer saves it: the only public view of the values it keeps to itself.
    QXmlStreamReader xml(m_form->contents());
    const QString objectName = m_widget->objectName();
    int widgetDepth = -1; // element depth of our <widget>, once found
    int depth = 0;
    QString property;
    while (!xml.atEnd()) {
        const QXmlStreamReader::TokenType token = xml.readNext();
        if (token == QXmlStreamReader::EndElement) {
            if (depth == widgetDepth)
                return;
            --depth;
            continue;
        }
        if (token != QXmlStreamReader::StartElement)
            continue;
        ++depth;
        const auto name = xml.name();
        if (widgetDepth < 0) {
            if (name == QLatin1String("widget") && xml.attributes().value(QLatin1String("name")) == objectName)
                widgetDepth = depth;
            continue;
        }
        if (depth == widgetDepth + 1) {
            property = name == QLatin1String("property") ? xml.attributes().value(QLatin1String("name")).toString()
                                                         : QString();
        } else if (depth == widgetDepth + 2 && !property.isEmpty()) {
            Stored stored;
            stored.kind = name.toString();
            if (stored.kind == QLatin1String("stringlist")) {
                while (xml.readNextStartElement())
                    stored.texts.append(xml.readElementText());
            } else {
                stored.texts.append(xml.readElementText(QXmlStreamReader::SkipChildElements));
            }
            --depth; // the element was read to its end
            m_stored.insert(property, stored);
        }
    }
}
