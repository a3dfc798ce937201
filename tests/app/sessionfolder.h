// A place of its own in which programs of a test find each other.
#pragma once

#include <QByteArray>
#include <QDir>
#include <QTemporaryDir>

#include <utility>

/// Sets a variable of the environment for as long as it lives.
class Variable
{
public:
    Variable(QByteArray variable, const QByteArray &value)
        : name(std::move(variable))
        , wasSet(qEnvironmentVariableIsSet(name.constData()))
        , previous(qgetenv(name.constData()))
    {
        qputenv(name.constData(), value);
    }
    ~Variable()
    {
        if (wasSet)
            qputenv(name.constData(), previous);
        else
            qunsetenv(name.constData());
    }
    Q_DISABLE_COPY_MOVE(Variable)

private:
    QByteArray name;
    bool wasSet;
    QByteArray previous;
};

/// A folder that the system has made for what runs in a session, which nobody else may enter. Windows has
/// no such folder and knows its sessions itself.
class SessionFolder
{
public:
    QString path(const QString &name = {}) const { return folder.filePath(name); }

private:
    // The name of a socket is short.
#ifdef Q_OS_WIN
    QTemporaryDir folder;
#else
    QTemporaryDir folder{QStringLiteral("/tmp/session-XXXXXX")};
#endif
    Variable variable{"XDG_RUNTIME_DIR", QFile::encodeName(folder.path())};
};
