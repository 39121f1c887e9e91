#ifndef PICTUREBUTTON_H
#define PICTUREBUTTON_H

#include "hmiuiupdateinterface.h"
#include "hmiwidgets_export.h"
#include "keyfacebutton.h"

#include <QByteArray>
#include <QFont>
#include <QStringList>

#include <memory>

// A painted multi-language key whose face may be a picture per interaction state, and which can act
// as a soft key: with softKeyEnabled, each click sends one key press (a character, or a named key such
// as "Enter" or "F5") to the widget holding the application's keyboard focus. It reads and writes no
// controller variable.
class HMIWIDGETS_EXPORT PictureButton : public KeyFaceButton, public Hmi_v0::HMI_UiUpdateInterface
{
    Q_OBJECT
    Q_PROPERTY(Language language READ getLanguage WRITE setLanguage)
    Q_PROPERTY(QString text READ text WRITE setText)
    Q_PROPERTY(QStringList textList READ getTextList WRITE setTextList)
    Q_PROPERTY(bool softKeyEnabled READ softKeyEnabled WRITE setSoftKeyEnabled)
    Q_PROPERTY(QString softKeyChar READ softKeyChar WRITE setSoftKeyChar)
    Q_PROPERTY(QByteArray MapBuffer READ MapBuffer WRITE SetMapBuffer DESIGNABLE false)
    Q_PROPERTY(QFont font READ font WRITE setFont)
    Q_PROPERTY(QByteArray textInfoBuffer READ textInfoBuffer WRITE SetTextInfoBuffer DESIGNABLE false)
    Q_PROPERTY(int wordLibId READ wordLibId WRITE setWordLibId)

public:
    enum Language : int {
        language_0 = 0, language_1, language_2, language_3, language_4,
        language_5, language_6, language_7, language_8, language_9
    };
    Q_ENUM(Language)

    Q_INVOKABLE explicit PictureButton(QWidget *parent = nullptr);
    ~PictureButton() override;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

    // The key code and text a soft key sends for softKeyChar: one character (its Latin-1 code in upper
    // case, with the character as text), or a name of the key table; an unknown name gives code 0.
    static QPair<int, QString> softKey(const QString &softKeyChar);

    void upDatePluginTextfromWordLib() override;
    void getPluginNameAndListType(QString &name, int &listType) override;
    void getPluginNameAndTransText(QList<TextData> &texts) override;
    using Hmi_v0::HMI_UiUpdateInterface::getPluginNameAndTransText;
    void setPluginTransText(QList<QStringList> &texts) override;

public Q_SLOTS:
    Language getLanguage() const;
    void setLanguage(Language language);
    QString text() const { return AbstractButton::text(); }
    void setText(const QString &text);
    QStringList getTextList() const;
    void setTextList(const QStringList &texts);
    bool softKeyEnabled() const;
    void setSoftKeyEnabled(bool enabled);
    QString softKeyChar() const;
    // A name of the key table is kept; any other text keeps its first character.
    void setSoftKeyChar(const QString &key);
    QByteArray MapBuffer() const;
    void SetMapBuffer(const QByteArray &buffer);
    QByteArray textInfoBuffer() const;
    void SetTextInfoBuffer(const QByteArray &buffer);
    int wordLibId() const;
    void setWordLibId(int id);
    // The map's font for the language property, else the initial font.
    QFont font() const;
    // Only before the first show: the initial font and the widget's font.
    void setFont(const QFont &font);
    void setPluginFont(const QFont &font);
    QFont initFont() const;
    void updateLanguage(int index) override;
    void setQeltAppAndFormPtr(void *app, void *form);
    void slotClicked(bool checked);

protected:
    bool event(QEvent *event) override;

private:
    class Private;
    std::unique_ptr<Private> const d;
};

#endif
