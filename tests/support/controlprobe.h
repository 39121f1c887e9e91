#ifndef CONTROLPROBE_H
#define CONTROLPROBE_H

#include <QWidget>

// A control placed in a container: it records the application and the language the container
// hands on.
class ControlProbe : public QWidget
{
    Q_OBJECT
public:
    using QWidget::QWidget;
    void *app = nullptr;
    int language = -1;

public Q_SLOTS:
    void setQeltAppAndFormPtr(void *a, void *) { app = a; }
    void updateLanguage(int index) { language = index; }
};

#endif
