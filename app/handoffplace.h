// Where the program that runs listens for other starts of it.
#pragma once

#include <QString>

/// The name of the local socket of this person's program, which nobody else can reach: on Unix a path in
/// a folder that only this person may enter, on Windows a name for this person and session. Programs that
/// do not know of each other by the segment of the guard have different ones. Empty where there is no
/// such place.
QString handoffPlace();
