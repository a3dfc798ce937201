// Finds a folder that only this person may enter.
#include "app/handoffplace.h"

#ifdef Q_OS_WIN
#include <qt_windows.h>

#include <array>
#else
#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QSysInfo>

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>
#endif

using namespace Qt::Literals::StringLiterals;

#ifdef Q_OS_WIN

QString handoffPlace()
{
    std::array<wchar_t, 257> user{}; // the longest name and its end
    auto size = static_cast<DWORD>(user.size());
    DWORD session = 0;
    if (!GetUserNameW(user.data(), &size) || !ProcessIdToSessionId(GetCurrentProcessId(), &session))
        return {};
    return u"Plumara-%1-%2"_s.arg(session).arg(QString::fromWCharArray(user.data()));
}

#else

namespace {

constexpr auto onlyForUs = QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner;

/// Whether \a folder is there and only this person, who may write in it, may enter it.
bool isPrivate(const QString &folder)
{
    struct stat status = {};
    return QDir::isAbsolutePath(folder)
        && ::lstat(QFile::encodeName(folder).constData(), &status) == 0 && S_ISDIR(status.st_mode)
        && status.st_uid == ::geteuid() && (status.st_mode & (S_IRWXG | S_IRWXO)) == 0
        && ::access(QFile::encodeName(folder).constData(), W_OK | X_OK) == 0;
}

/// A folder for the sockets of this person; empty where there is none.
QString privateFolder()
{
    // The toolkit's own answer would complain where the system gives none.
    QString given = qEnvironmentVariable("XDG_RUNTIME_DIR");
    if (isPrivate(given))
        return given;
    // In the person's home, and not in the temporary folder: there, anybody may have made a folder of
    // that name.
    const QDir caches(QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation));
    const QString own = caches.filePath(u"OrvanePlumara"_s);
    if (!QFileInfo::exists(own) && caches.mkpath(u"."_s))
        QDir().mkdir(own, onlyForUs);
    return isPrivate(own) ? own : QString();
}

/// A name for the temporary folder, by which instances know of each other, on this machine: homes may lie
/// on several.
QString nameForInstances()
{
    const QFileInfo temporary(QDir::tempPath());
    const QByteArray place = QFile::encodeName(temporary.canonicalFilePath());
    const QByteArray hash =
        QCryptographicHash::hash(QSysInfo::machineUniqueId() + place, QCryptographicHash::Sha256);
    return u"Plumara-"_s + QString::fromLatin1(hash.first(8).toHex());
}

} // namespace

QString handoffPlace()
{
    const QString folder = privateFolder();
    if (folder.isEmpty())
        return {};
    const QString path = QDir(folder).filePath(nameForInstances());
    // The toolkit ends it with two zeros.
    constexpr auto longest = static_cast<qsizetype>(sizeof(sockaddr_un::sun_path)) - 2;
    return QFile::encodeName(path).size() <= longest ? path : QString();
}

#endif
