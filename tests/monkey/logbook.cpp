// Holds the last lines of the log where also a signal handler can tell them.
#include "tests/monkey/logbook.h"

#include <QByteArray>

#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdio>
#include <cstdlib>

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/common_interface_defs.h>
#endif

namespace {

constexpr size_t lines = 60;
constexpr unsigned longestStep = 60; // seconds

std::array<QByteArray, lines> last; // a ring
size_t next = 0;
QByteArray command;
bool isTold = false; // each line at once
bool isOpen = false;

void put(const QByteArray &text)
{
    // Also from a signal handler, where nothing else is allowed.
    [[maybe_unused]] const auto written =
        ::write(STDERR_FILENO, text.constData(), size_t(text.size()));
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
    for (const int number : {SIGSEGV, SIGBUS, SIGFPE, SIGILL})
        std::signal(number, tellOfSignal);
#endif
    std::signal(SIGABRT, tellOfSignal);
    std::signal(SIGALRM, tellOfSignal);
}

void Logbook::write(const QString &line)
{
    alarm(longestStep);
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
    alarm(0);
    isOpen = false;
}
