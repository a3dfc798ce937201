#pragma once

#include <QByteArray>
#include <QDir>
#include <QTemporaryDir>

/// Gives the program an empty home folder for as long as the object lives, so that no test ever
/// touches the real one.
class ScratchHome
{
public:
    ScratchHome()
        : previous(qgetenv(variable))
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
#else
    static constexpr const char *variable = "HOME";
#endif
    QTemporaryDir folder;
    QByteArray previous;
};
