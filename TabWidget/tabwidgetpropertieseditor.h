#ifndef TABWIDGETPROPERTIESEDITOR_H
#define TABWIDGETPROPERTIESEDITOR_H

#include "textdata.h"

#include <QColor>
#include <QObject>
#include <QPointer>
#include <QStringList>

class QDesignerFormWindowInterface;
class QPushButton;
class TabWidget;
namespace Ui {
class TabWidgetEditor;
}

// The TabWidget Editor's tab page and authority field: the number of tabs, the tab being edited,
// its text in every language, its text colour and authority, the pane and selected-tab colours.
// Works on copies shown on the preview at once; accept() writes them to the widget through the form
// window as undoable changes. Lives as long as the dialog runs.
class TabWidgetPropertiesEditor : public QObject
{
    Q_OBJECT
public:
    TabWidgetPropertiesEditor(TabWidget *widget, TabWidget *preview, QDesignerFormWindowInterface *formWindow,
                              Ui::TabWidgetEditor *ui, QObject *parent = nullptr);
    ~TabWidgetPropertiesEditor() override;

public Q_SLOTS:
    void accept();

private Q_SLOTS:
    void tabsCountChanged(int count);
    void currentIndexChanged(int index);
    void languageChanged(int index);
    void currentColorEditBtnClicked();
    void backGroundClrEditBtnClicked();
    void textEditBtnClicked();
    void textEdit(const QString &text);
    void selectedColorBtnClicked();
    void showTabCurrentChanged(int index);
    void curAuthorityChanged(int authority);

protected:
    // The colour chooser; an invalid colour means cancel.
    virtual QColor askColor(const QColor &current);

private:
    void readCopiesFromPreview();
    TextData &recordOf(int tab);
    static void showColor(QPushButton *button, const QColor &color);
    void commit(const char *name, const QVariant &value);

    Ui::TabWidgetEditor *const ui;
    QPointer<TabWidget> widget;
    QPointer<TabWidget> preview;
    QDesignerFormWindowInterface *formWindow;
    int currentTab = 0;
    QColor selectedTabColor;
    QColor backgroundColor;
    QStringList tabTexts;
    QStringList tabTextColors;
    QStringList operationalAuthoritys;
    QList<QList<TextData>> textRecords;
};

#endif
