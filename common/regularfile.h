#ifndef REGULARFILE_H
#define REGULARFILE_H

#include "hmiwidgets_export.h"

#include <QFile>

// A file named by a form, an operator, a folder or a USB stick may be anything: a named pipe blocks
// open() until some writer comes, a device never ends, a directory is no file at all. This file opens
// only what is a regular file (or a link to one) and refuses the rest with a reason in errorString();
// writing also accepts a name that does not exist yet.
class HMIWIDGETS_EXPORT RegularFile : public QFile
{
public:
    using QFile::QFile;
    using QFile::open;

    bool open(OpenMode mode) override;

    // Why path cannot be opened in mode; empty when it can be tried.
    static QString refusal(const QString &path, OpenMode mode);
};

#endif
