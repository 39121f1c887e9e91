#ifndef FIELDBINDER_H
#define FIELDBINDER_H

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QSet>
#include <QVariant>
#include <QWidget>

class FieldBinding;
class FormValueReader;

// Binds the fields of an editor layout to the properties of the edited widget: every field whose
// what's-this is a property path shows the widget's value, every edit goes to the preview at once,
// and the binder knows which properties now differ from the widget's.
class FieldBinder : public QObject
{
    Q_OBJECT
public:
    // reader supplies the widget's values; pictureFolder is where picture choosers open.
    FieldBinder(QWidget *widget, QWidget *preview, const FormValueReader *reader,
                const QString &pictureFolder, QObject *parent = nullptr);
    ~FieldBinder() override;

    // Binds every field below root; fields that name no property of the widget are left alone.
    void bind(QWidget *root);
    const QList<FieldBinding *> &bindings() const { return m_bindings; }

    // Properties whose value was edited away from the widget's, in the order of their fields.
    QList<QByteArray> changedProperties() const;
    QVariant value(const QByteArray &name) const { return m_current.value(name); }
    // The file of a picture chosen for a pixmap or icon property, or empty.
    QString picturePath(const QByteArray &name) const;

private:
    FieldBinding *createBinding(QWidget *field);
    void groupChoices();
    void fieldEdited(FieldBinding *binding);
    void applyToPreview(const QByteArray &name, const QVariant &value);

    QPointer<QWidget> m_widget;
    QPointer<QWidget> m_preview;
    const FormValueReader *m_reader;
    QString m_pictureFolder;
    QList<FieldBinding *> m_bindings;
    QHash<QByteArray, QVariant> m_original;
    QHash<QByteArray, QVariant> m_current;
    QSet<QByteArray> m_edited;
    QSet<QByteArray> m_picturesChosen;
    bool m_loading = false;
};

#endif
