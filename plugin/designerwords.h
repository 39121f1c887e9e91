#ifndef DESIGNERWORDS_H
#define DESIGNERWORDS_H

#include "filestamp.h"

#include <QObject>
#include <QPointer>
#include <QString>

class QDesignerFormWindowInterface;
class QDesignerFormWindowManagerInterface;

// The word library of the form being edited, read from "words.tsv" beside its file as the panel
// reads it, so that word ids, the caption editors and the preview show the words the panel will
// show. Read again when another form becomes active, when the form is saved under another name, and
// when a preview is made after the file changed.
class DesignerWords : public QObject
{
    Q_OBJECT
public:
    explicit DesignerWords(QDesignerFormWindowManagerInterface *manager, QObject *parent = nullptr);
    ~DesignerWords() override;

    // Reads the library again if its file changed since it was read.
    static void refresh();

private:
    void follow(QDesignerFormWindowInterface *form);
    void load();

    QPointer<QDesignerFormWindowInterface> m_form;
    // What was read last: another file, or a change of this one, reads it again.
    QString m_file;
    FileStamp m_stamp;
    bool m_loaded = false;
};

#endif
