// Keeps the commands that the program wants Windows to start, and starts none of them.
#pragma once

#include "tests/support/system/importinterception.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <utility>

/// Keeps the command lines that the program wants Windows to start, and starts none of them, for as
/// long as it lives. The program gets the answer that they have been started. There is one such
/// object at a time.
class StartedCommands
{
public:
    /// \a onStart is done with every command.
    explicit StartedCommands(std::function<void()> onStart = [] { })
        : starting("CreateProcessW", start)
    {
        lines.clear();
        action = std::move(onStart);
    }
    ~StartedCommands() { action = nullptr; }
    Q_DISABLE_COPY_MOVE(StartedCommands)

    /// Every command line as it was given.
    static QStringList commandLines() { return lines; }

private:
    static BOOL WINAPI start(LPCWSTR, LPWSTR commandLine, LPSECURITY_ATTRIBUTES,
                             LPSECURITY_ATTRIBUTES, BOOL, DWORD, LPVOID, LPCWSTR, LPSTARTUPINFOW,
                             LPPROCESS_INFORMATION process)
    {
        lines << QString::fromWCharArray(commandLine);
        *process = {};
        action();
        return TRUE;
    }

    static inline QStringList lines;
    static inline std::function<void()> action;

    ImportInterception<decltype(CreateProcessW)> starting;
};
