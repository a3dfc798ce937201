// A file that tells whether anybody has looked into it, on Linux.
#pragma once

#include <QFile>

#include <sys/inotify.h>
#include <unistd.h>

/// Watches the file \a path from its construction on.
class WatchedFile
{
public:
    explicit WatchedFile(const QString &path)
        : descriptor(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC))
    {
        if (::inotify_add_watch(descriptor, QFile::encodeName(path).constData(), IN_ALL_EVENTS)
            == -1)
            qFatal("The test cannot watch its file");
    }
    ~WatchedFile() { ::close(descriptor); }
    Q_DISABLE_COPY_MOVE(WatchedFile)

    /// Whether anything was done with the file since the last question.
    bool wasTouched()
    {
        char events[4096];
        return ::read(descriptor, events, sizeof events) > 0;
    }

private:
    int descriptor;
};
