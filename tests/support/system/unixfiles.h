// What stands under a file's name on Unix and is no file.
#pragma once

#include <QFile>

#include <sys/stat.h>

/// Makes a pipe with the name \a path and returns the path.
inline QString makePipe(const QString &path)
{
    if (::mkfifo(QFile::encodeName(path).constData(), 0600) != 0)
        qFatal("The test cannot make its pipe");
    return path;
}

/// Makes a link with the name \a path to \a target and returns the path.
inline QString makeLink(const QString &path, const QString &target)
{
    if (!QFile::link(target, path))
        qFatal("The test cannot make its link");
    return path;
}
