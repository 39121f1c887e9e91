#ifndef MDIAREA_H
#define MDIAREA_H

#include "hmiwidgets_export.h"

#include <QColor>
#include <QFrame>
#include <QStringList>

#include <memory>

class SubWindow;

// An operator screen area holding panels (SubWindow), one of them active. At run time it can show
// the active panel alone (auto hide), so that a screen switches between panels by name; panels are
// hidden and shown by name. In Designer panels are made and deleted through the task menu, the
// selected panel becomes the active one, and a panel is moved by its edge strips.
class HMIWIDGETS_EXPORT MdiArea : public QFrame
{
    Q_OBJECT
    Q_PROPERTY(QString activeSubWindow READ activeSubWindow WRITE setActiveSubWindow DESIGNABLE false)
    Q_PROPERTY(bool autoHide READ autoHide WRITE setAutoHide)
    Q_PROPERTY(QColor backgroundColor READ backgroundColor WRITE setBackgroundColor)

public:
    Q_INVOKABLE explicit MdiArea(QWidget *parent = nullptr);
    ~MdiArea() override;

    QString activeSubWindow() const;
    void setActiveSubWindow(const QString &name);
    // A panel that was just shown: with auto hide at run time it takes the place of the active one.
    void setActiveSubWindow(SubWindow *panel);
    bool autoHide() const;
    void setAutoHide(bool on);
    QColor backgroundColor() const;
    void setBackgroundColor(const QColor &color);

    // The panels' object names, in the order they were made.
    QStringList getSubwindows() const;
    QStringList hideSubwindows() const;
    void setHideSubwindows(const QStringList &names);
    // The panel of that name, or null.
    SubWindow *subWindow(const QString &name) const;
    SubWindow *activePanel() const;
    // Brings back a panel removeSubWindow() took from the form in Designer, with what is on it.
    void restoreSubWindow(SubWindow *panel);

public Q_SLOTS:
    void slotActived();
    SubWindow *addSubWindow();
    void removeSubWindow(const QString &name);
    void hideSubWindow();
    void setSubWindowVisible(const QString &name, bool visible);
    void setQeltAppAndFormPtr(void *app, void *form);

protected:
    void showEvent(QShowEvent *event) override;
    bool event(QEvent *event) override;

private:
    class Private;
    std::unique_ptr<Private> const d;
};

#endif
