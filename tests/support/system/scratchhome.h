// An empty home folder for the program.
#pragma once

#include <QByteArray>
#include <QDir>
#include <QTemporaryDir>

#ifdef Q_OS_WIN
#include "tests/support/system/windowsprofile.h"
#else
#include <unistd.h>
#endif

/// Gives the program an empty home folder for as long as the object lives, so that no test ever
/// touches the real one. Its name has blanks and Spanish letters in it, as names of people have.
class ScratchHome
{
public:
    /// The absolute path of \a name in the scratch home.
    QString path(const QString &name = {}) const
    {
        return name.isEmpty() ? folder.path() : folder.filePath(name);
    }

    /// The folder in which the program keeps its boards.
    QString dataPath() const { return path(QStringLiteral("Documents/OrvanePlumara")); }

private:
#ifdef Q_OS_WIN
    static QString parent() { return QDir::tempPath(); }
#else
    // Root's temporary folder may lie where a test that steps down to another user does not come.
    static QString parent() { return geteuid() == 0 ? QStringLiteral("/tmp") : QDir::tempPath(); }

    /// The variable that says where the home is.
    class Variable
    {
    public:
        explicit Variable(const QString &path)
            : previous(qgetenv("HOME"))
        {
            qputenv("HOME", QFile::encodeName(path));
        }
        ~Variable() { qputenv("HOME", previous); }
        Q_DISABLE_COPY_MOVE(Variable)

    private:
        QByteArray previous;
    };
#endif

    QTemporaryDir folder{parent() + QStringLiteral("/María José Núñez XXXXXX")};
#ifdef Q_OS_WIN
    WindowsProfile home{folder.path()};
#else
    Variable home{folder.path()};
#endif
};
