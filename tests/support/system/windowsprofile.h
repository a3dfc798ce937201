// Another profile folder for the program on Windows.
#pragma once

#include "tests/support/system/importinterception.h"

#include <QDir>
#include <QString>

#include <userenv.h>

/// Gives the program another profile folder, which is its home, for as long as the object lives.
///
/// Windows asks no environment variable for it but the account of the person, so the question itself
/// is answered by the test. There is one such object at a time.
class WindowsProfile
{
public:
    explicit WindowsProfile(const QString &path)
        : question("GetUserProfileDirectoryW", answer)
    {
        folder = QDir::toNativeSeparators(path);
        if (QDir::homePath() != path)
            qFatal("The test would touch a person's home");
    }
    ~WindowsProfile() { folder.clear(); }
    Q_DISABLE_COPY_MOVE(WindowsProfile)

private:
    /// As Windows: without enough room it says how much it takes, in characters and with the end.
    static BOOL WINAPI answer(HANDLE, LPWSTR text, LPDWORD room)
    {
        const auto needed = static_cast<DWORD>(folder.size() + 1);
        const bool fits = text && *room >= needed;
        if (fits)
            text[folder.toWCharArray(text)] = L'\0';
        else
            SetLastError(ERROR_INSUFFICIENT_BUFFER);
        *room = needed;
        return fits ? TRUE : FALSE;
    }

    static inline QString folder;

    ImportInterception<decltype(GetUserProfileDirectoryW)> question;
};
