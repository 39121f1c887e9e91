#ifndef FORMLOADER_H
#define FORMLOADER_H

#include <QUiLoader>

// Loads .ui forms at run time, creating the library's widgets itself so that a panel needs no
// Designer plugin.
class FormLoader : public QUiLoader
{
    Q_OBJECT
public:
    explicit FormLoader(QObject *parent = nullptr);

    QWidget *createWidget(const QString &className, QWidget *parent = nullptr,
                          const QString &name = QString()) override;
    // The form in the file, or null with errorString() set.
    QWidget *loadFile(const QString &fileName, QWidget *parent = nullptr);
};

#endif
