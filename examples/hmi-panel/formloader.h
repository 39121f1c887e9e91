#ifndef FORMLOADER_H
#define FORMLOADER_H

#include <QStringList>
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
    // The whole form in the file, or null with problem() saying why: a file that cannot be read or
    // parsed, nested too deep, or with a widget class that cannot be created (a panel must not run a
    // form with holes). Geometry beyond the panel's bounds is clamped (FormLimits).
    QWidget *loadFile(const QString &fileName, QWidget *parent = nullptr);
    // A form's text loaded as it is, but for table items outside their table, which are left out
    // with a warning (Qt's loader would drop them unfreed).
    QWidget *loadForm(const QByteArray &form, QWidget *parent = nullptr);
    QString problem() const { return m_problem; }

private:
    QStringList m_missing;
    QString m_problem;
};

#endif
