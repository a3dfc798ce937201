// Holds the last lines of the log where also a signal handler can tell them.
#include "tests/monkey/logbook.h"

#include <QByteArray>

#ifdef Q_OS_WIN
#include <io.h>
#else
#include <unistd.h>
#endif

#include <array>
#include <csignal>
#include <cstdio>
#include <cstdlib>

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/common_interface_defs.h>
#endif

namespace {

constexpr size_t lines = 60;
#ifdef Q_OS_WIN
constexpr int crashes[] = {SIGSEGV, SIGFPE, SIGILL};
constexpr int otherEnds[] = {SIGABRT};
#else
constexpr int crashes[] = {SIGSEGV, SIGBUS, SIGFPE, SIGILL};
constexpr int otherEnds[] = {SIGABRT, SIGALRM};
#endif

std::array<QByteArray, lines> last; // a ring
size_t next = 0;
QByteArray command;
bool isTold = false; // each line at once
bool isOpen = false;

void put(const QByteArray &text)
{
    // Also from a signal handler, where nothing else is allowed.
#ifdef Q_OS_WIN
    _write(_fileno(stderr), text.constData(), static_cast<unsigned>(text.size()));
#else
    [[maybe_unused]] const auto written =
        ::write(fileno(stderr), text.constData(), size_t(text.size()));
#endif
}

/// Ends the program when so much time goes by before the next call; 0 is for ever. On Windows, which has no
/// such alarm, whoever started the program has to.
void giveTime([[maybe_unused]] unsigned seconds)
{
#ifndef Q_OS_WIN
    alarm(seconds);
#endif
}

void tell()
{
    if (!isOpen)
        return;
    isOpen = false;
    for (size_t i = 0; !isTold && i < lines; ++i)
        put(last[(next + i) % lines]);
    put(command);
}

void tellOfSignal(int number)
{
    tell();
    std::signal(number, SIG_DFL);
    std::raise(number);
}

} // namespace

void Logbook::begin(const QString &replay, bool everything)
{
    command = "To see it again: " + replay.toUtf8() + '\n';
    isTold = everything;
    isOpen = true;
#if defined(__SANITIZE_ADDRESS__)
    __sanitizer_set_death_callback(tell);
#else
    for (const int number : crashes)
        std::signal(number, tellOfSignal);
#endif
    for (const int number : otherEnds)
        std::signal(number, tellOfSignal);
}

void Logbook::write(const QString &line)
{
    constexpr unsigned longestStep = 60; // seconds
    giveTime(longestStep);
    last[next] = line.toUtf8() + '\n';
    if (isTold)
        put(last[next]);
    next = (next + 1) % lines;
}

void Logbook::complain(const QString &promise)
{
    tell();
    put("Broken promise: " + promise.toUtf8() + '\n');
    std::_Exit(EXIT_FAILURE);
}

void Logbook::end()
{
    giveTime(0);
    isOpen = false;
}
