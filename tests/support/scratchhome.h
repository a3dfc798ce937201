#pragma once

#include <QByteArray>
#include <QDir>
#include <QTemporaryDir>

#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

/// Gives the program an empty home folder for as long as the object lives, so that no test ever
/// touches the real one.
class ScratchHome
{
public:
    ScratchHome()
        : folder(parent() + QStringLiteral("/plumara-home-XXXXXX"))
        , previous(qgetenv(variable))
    {
        qputenv(variable, QFile::encodeName(folder.path()));
    }
    ~ScratchHome() { qputenv(variable, previous); }
    Q_DISABLE_COPY_MOVE(ScratchHome)

    /// The absolute path of \a name in the scratch home.
    QString path(const QString &name = {}) const
    {
        return name.isEmpty() ? folder.path() : folder.filePath(name);
    }

    /// The folder in which the program keeps its boards.
    QString dataPath() const { return path(QStringLiteral("Documents/OrvanePlumara")); }

private:
#ifdef Q_OS_WIN
    static constexpr const char *variable = "USERPROFILE";
    static QString parent() { return QDir::tempPath(); }
#else
    static constexpr const char *variable = "HOME";
    // Root's temporary folder may lie where a test that steps down to another user does not come.
    static QString parent() { return geteuid() == 0 ? QStringLiteral("/tmp") : QDir::tempPath(); }
#endif
    QTemporaryDir folder;
    QByteArray previous;
};
