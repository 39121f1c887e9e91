#include "designerwords.h"

#include "norvointerface_z3.h"
#include "wordlibraryfile.h"

#include <QtDesigner/QDesignerFormWindowInterface>
#include <QtDesigner/QDesignerFormWindowManagerInterface>


namespace {
DesignerWords *current = nullptr;
} // namespace

DesignerWords::DesignerWords(QDesignerFormWindowManagerInterface *manager, QObject *parent)
    : QObject(parent)
{
    current = this;
    if (!manager)
        return;
    connect(manager, &QDesignerFormWindowManagerInterface::activeFormWindowChanged, this, &DesignerWords::follow);
    follow(manager->activeFormWindow());
}

DesignerWords::~DesignerWords()
{
    if (current == this)
        current = nullptr;
}

void DesignerWords::refresh()
{
    if (current)
        current->load();
}

void DesignerWords::follow(QDesignerFormWindowInterface *form)
{
    // A form window losing the focus to a tool window is reported as none active: keep the last.
    if (!form || form == m_form)
        return;
    if (m_form)
        disconnect(m_form, nullptr, this, nullptr);
    m_form = form;
    connect(form, &QDesignerFormWindowInterface::fileNameChanged, this, &DesignerWords::load);
    load();
}

void DesignerWords::load()
{
    const QString formFile = m_form ? m_form->fileName() : QString();
    const QString file = formFile.isEmpty() ? QString() : WordLibraryFile::besideForm(formFile);
    const FileStamp stamp = FileStamp::of(file);
    if (file == m_file && stamp == m_stamp)
        return;
    m_file = file;
    m_stamp = stamp;
    NORVOInterface_Z3 *hmi = NORVOInterface_Z3::initialization();
    WordLibraryFile library;
    if (!library.readBesideForm(formFile)) {
        // A library read for another form is not this one's; Designer's own stays untouched.
        if (m_loaded)
            hmi->setWordLibrary({});
        m_loaded = false;
        return;
    }
    for (const QString &problem : library.problems())
        qWarning("word library %s: %s", qPrintable(file), qPrintable(problem));
    hmi->setWordLibrary(library.words());
    m_loaded = true;
}
