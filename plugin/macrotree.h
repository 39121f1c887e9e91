#ifndef MACROTREE_H
#define MACROTREE_H

class QAbstractItemView;
struct QMetaObject;

// The content of the dialog's "Macro" view: the slots the panel can call on the widget by name,
// one branch per class from the widget's own class up to QWidget.
class MacroTree
{
public:
    static void fill(QAbstractItemView *view, const QMetaObject *meta);
};

#endif
