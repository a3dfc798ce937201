// Keeps what was done, and tells it when something goes wrong.
#pragma once

#include <QString>

/// What was done so far, a line for each step. However the program ends before its time, also by a crash
/// or because a step takes more than a minute, the last lines are told on the error output.
namespace Logbook {

/// \a replay is the command that does it all again. With \a everything each line is told at once.
void begin(const QString &replay, bool everything);

/// Writes what is done next.
void write(const QString &line);

/// Tells that \a promise does not hold, and ends the program.
[[noreturn]] void complain(const QString &promise);

/// Nothing more is told.
void end();

} // namespace Logbook
