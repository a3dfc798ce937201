// A clock of the program's own, on which nobody waits.
#pragma once

#include <QtGlobal>

/// From begin() on, the GUI thread lives by a clock that stands still while the program works. When the
/// program waits for its next timer, that time has come at once. So what a timer does comes in the same
/// place of the same run each time, however fast the machine is, and ten seconds take none.
///
/// The rest of the process, and what is asked for the date, go by the system's clock; and elsewhere than
/// on Linux everybody does.
namespace VirtualClock {

/// Windows has no functions between which and the toolkit it could stand.
#ifdef Q_OS_WIN
constexpr bool isThere = false;
#else
constexpr bool isThere = true;
#endif

/// To be called in the GUI thread.
void begin();

/// Has \a milliseconds gone by; what is due then is done with the next events.
void advance(int milliseconds);

} // namespace VirtualClock
