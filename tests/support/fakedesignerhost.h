#ifndef FAKEDESIGNERHOST_H
#define FAKEDESIGNERHOST_H

#include "designerhost.h"

#include <QList>
#include <QPointer>
#include <QSet>
#include <QStringList>
#include <QWidget>

// A designer host for tests: one widget plays the form window for everything below it, and every
// request is logged. Undoable and sheet property changes are applied with QObject::setProperty.
class FakeDesignerHost : public DesignerHost
{
    Q_OBJECT
public:
    struct PropertyChange
    {
        QWidget *widget;
        QString name;
        QVariant value;
        bool undoable;
    };

    explicit FakeDesignerHost(QWidget *formWindow = nullptr, QObject *parent = nullptr);
    ~FakeDesignerHost() override;

    void setFileName(const QString &fileName) { m_fileName = fileName; }

    QWidget *formWindow(QWidget *widget) const override;
    QString fileName(QWidget *) const override { return m_fileName; }
    QString projectPath(QWidget *formWindow) const override;
    void markPropertyChanged(QWidget *, const QString &) override { log << QStringLiteral("markPropertyChanged"); }
    void setSheetProperty(QWidget *widget, const QString &name, const QVariant &value) override
    {
        apply({widget, name, value, false});
    }
    void setUndoableProperty(QWidget *widget, const QString &name, const QVariant &value) override
    {
        apply({widget, name, value, true});
    }
    void beginCommand(QWidget *, const QString &) override { log << QStringLiteral("beginCommand"); }
    void endCommand(QWidget *) override { log << QStringLiteral("endCommand"); }
    void clearSelection(QWidget *) override
    {
        log << QStringLiteral("clearSelection");
        m_selection.clear();
    }
    void selectWidget(QWidget *, QWidget *widget, bool select) override
    {
        log << (select ? QStringLiteral("select") : QStringLiteral("deselect"));
        if (select)
            m_selection.insert(widget);
        else
            m_selection.remove(widget);
    }
    bool isSelected(QWidget *, QWidget *widget) const override { return m_selection.contains(widget); }
    void manageWidget(QWidget *, QWidget *widget) override
    {
        log << QStringLiteral("manageWidget");
        managed.append(widget);
    }
    void unmanageWidget(QWidget *, QWidget *widget) override
    {
        log << QStringLiteral("unmanageWidget");
        managed.removeAll(widget);
    }
    bool isManaged(QWidget *, QWidget *widget) const override { return managed.contains(widget); }
    void markDirty(QWidget *) override { log << QStringLiteral("markDirty"); }
    void refreshEditors(QWidget *) override { log << QStringLiteral("refreshEditors"); }
    QObject *propertyEditorObject() const override { return m_editorObject; }
    void setPropertyEditorObject(QObject *object) { m_editorObject = object; }

    QStringList log;                 // request names in order
    QList<PropertyChange> changes;   // property changes in order
    QList<QWidget *> managed;

private:
    void apply(const PropertyChange &change);

    QPointer<QWidget> m_formWindow;
    QString m_fileName;
    QSet<QWidget *> m_selection;
    QObject *m_editorObject = nullptr;
};

#endif
