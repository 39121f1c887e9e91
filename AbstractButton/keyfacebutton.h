#ifndef KEYFACEBUTTON_H
#define KEYFACEBUTTON_H

#include "hmiwidgets_export.h"
#include "paintedbutton.h"

#include <QColor>

#include <memory>

class ControllerBinding;

// A painted key of a form rather than of the controller (the keypad and picture buttons): its looks
// follow interaction (normal, pushed, hot, disabled; a checked key with focus shows pushed), the
// caption has a colour per enabled state, the operator's authority applies as on every operator
// button, and it finds the application of its form when polished, though it reads and writes no
// controller variable itself.
class HMIWIDGETS_EXPORT KeyFaceButton : public PaintedButton
{
    Q_OBJECT
    Q_PROPERTY(QColor textColorEnabled READ textColorEnabled WRITE SetTextColorEnabled RESET ResetTextColorEnabled)
    Q_PROPERTY(QColor textColorDisabled READ textColorDisabled WRITE SetTextColorDisabled RESET ResetTextColorDisabled)
    Q_PROPERTY(QColor buttonColorNormal READ buttonColorNormal WRITE SetButtonColorNormal RESET ResetButtonColorNormal)
    Q_PROPERTY(QColor buttonColorPushed READ buttonColorPushed WRITE SetButtonColorPushed RESET ResetButtonColorPushed)
    Q_PROPERTY(QColor buttonColorHot READ buttonColorHot WRITE SetButtonColorHot RESET ResetButtonColorHot)
    Q_PROPERTY(QColor buttonColorCheckedHot READ buttonColorCheckedHot WRITE SetButtonColorCheckedHot RESET ResetButtonColorCheckedHot)
    Q_PROPERTY(QColor buttonColorDisabled READ buttonColorDisabled WRITE SetButtonColorDisabled RESET ResetButtonColorDisabled)
    Q_PROPERTY(QPixmap pictureNormal READ pictureNormal WRITE SetPictureNormal RESET ResetPictureNormal)
    Q_PROPERTY(QPixmap picturePushed READ picturePushed WRITE SetPicturePushed RESET ResetPicturePushed)
    Q_PROPERTY(QPixmap pictureHot READ pictureHot WRITE SetPictureHot RESET ResetPictureHot)
    Q_PROPERTY(QPixmap pictureCheckedHot READ pictureCheckedHot WRITE SetPictureCheckedHot RESET ResetPictureCheckedHot)
    Q_PROPERTY(QPixmap pictureDisabled READ pictureDisabled WRITE SetPictureDisabled RESET ResetPictureDisabled)
    Q_PROPERTY(int operationalAuthority READ getOperationalAuthority WRITE setOperationalAuthority)
    Q_PROPERTY(bool enabled READ isEnabled WRITE setEnabled)

public:
    ~KeyFaceButton() override;

public Q_SLOTS:
    QColor textColorEnabled() const { return m_textColorEnabled; }
    void SetTextColorEnabled(const QColor &color);
    void ResetTextColorEnabled();
    QColor textColorDisabled() const { return m_textColorDisabled; }
    void SetTextColorDisabled(const QColor &color);
    void ResetTextColorDisabled();
    int getOperationalAuthority() const;
    void setOperationalAuthority(int authority);
    // The enabled request; the widget is enabled when it and the operator's authority allow.
    bool isEnabled() const;
    void setEnabled(bool enabled);
    void updateAuthority(int authority);

protected:
    explicit KeyFaceButton(QWidget *parent);

    ControllerBinding &binding() const { return *m_binding; }
    bool event(QEvent *event) override;
    ButtonFace face() const override;

private:
    std::unique_ptr<ControllerBinding> const m_binding;
    QColor m_textColorEnabled = Qt::black;
    QColor m_textColorDisabled = QColor(192, 192, 192);
};

#endif
