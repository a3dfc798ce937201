// The limits of limits.h on Windows.
#pragma once

#include "tests/support/system/importinterception.h"

#include <QDir>
#include <QTemporaryDir>

#include <algorithm>
#include <array>

class FileSizeLimit
{
public:
    explicit FileSizeLimit(qint64 bytes)
        : writing("WriteFile", write)
    {
        limit = bytes;
        writeAsEver = writing.original();
    }
    Q_DISABLE_COPY_MOVE(FileSizeLimit)

private:
    static bool isBoardFile(HANDLE file)
    {
        std::array<wchar_t, 1024> path{};
        const DWORD length =
            GetFinalPathNameByHandleW(file, path.data(), static_cast<DWORD>(path.size()), 0);
        return length < path.size()
            && QString::fromWCharArray(path.data(), static_cast<qsizetype>(length))
                   .endsWith(QStringLiteral(".vtrz"));
    }

    static BOOL WINAPI write(HANDLE file, LPCVOID data, DWORD size, LPDWORD written,
                             LPOVERLAPPED overlapped)
    {
        if (isBoardFile(file)) {
            LARGE_INTEGER position{};
            SetFilePointerEx(file, {}, &position, FILE_CURRENT);
            const qint64 room = std::max<qint64>(0, limit - position.QuadPart);
            if (room == 0 && size > 0) {
                SetLastError(ERROR_DISK_FULL);
                *written = 0;
                return FALSE;
            }
            size = static_cast<DWORD>(std::min<qint64>(size, room));
        }
        return writeAsEver(file, data, size, written, overlapped);
    }

    static inline qint64 limit = 0;
    static inline decltype(WriteFile) *writeAsEver = nullptr;

    ImportInterception<decltype(WriteFile)> writing;
};

class ReachableFolder
{
public:
    QString path(const QString &name) const { return folder.filePath(name); }

private:
    QTemporaryDir folder;
};

/// Opens a file for the test and lets the program do no more with it than \c share says, as another
/// program does that works with the file. Rights and the mark of a write-protected file mean nothing
/// to an administrator where the system below Windows is another one.
class SharedFile
{
public:
    SharedFile(const QString &path, DWORD share)
        : file(CreateFileW(qUtf16Printable(QDir::toNativeSeparators(path)), GENERIC_READ, share,
                           nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr))
    {
        if (file == INVALID_HANDLE_VALUE)
            qFatal("The test cannot open its file");
    }
    ~SharedFile() { CloseHandle(file); }
    Q_DISABLE_COPY_MOVE(SharedFile)

private:
    HANDLE file;
};

class UnreadableFile : public SharedFile
{
public:
    explicit UnreadableFile(const QString &path)
        : SharedFile(path, 0)
    { }
};

class UnwritableFile : public SharedFile
{
public:
    explicit UnwritableFile(const QString &path)
        : SharedFile(path, FILE_SHARE_READ)
    { }
};
