#ifndef CHOOSERFIELDBINDING_H
#define CHOOSERFIELDBINDING_H

#include "fieldbinding.h"

class QAbstractButton;

// An "Edit..." button for a colour, pixmap or icon property: it opens the colour chooser or the
// picture chooser and shows the value as its icon. A chosen picture keeps its file path.
class ChooserFieldBinding : public FieldBinding
{
    Q_OBJECT
public:
    // startFolder: where the picture chooser opens (the project folder).
    ChooserFieldBinding(QAbstractButton *field, const PropertyPath &path, const QMetaProperty &property,
                        int type, const QString &startFolder, QObject *parent = nullptr);

    static bool supports(QWidget *field, const PropertyPath &path, int type);
    // The file of the chosen picture; empty before a picture is chosen.
    QString picturePath() const { return m_picturePath; }

    QVariant store(const QVariant &whole) const override;

protected:
    void show(const QVariant &whole) override;

private:
    void choose();
    void showValueOnButton();

    QVariant m_value;
    QString m_picturePath;
    QString m_folder;
};

#endif
