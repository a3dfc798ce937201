// Limits that the operating system puts on the program, for tests of what happens then.
#pragma once

#include <QtGlobal>

// FileSizeLimit   for as long as it lives, no board file can grow beyond so many bytes; writing
//                 further fails as on a full disk
// ReachableFolder a temporary folder in which any user may read and write
// UnreadableFile  makes a file one that cannot be read for as long as it lives
// UnwritableFile  makes a file one that can be read only for as long as it lives

#ifdef Q_OS_WIN
#include "tests/support/system/windowslimits.h"
#else
#include "tests/support/system/unixlimits.h"
#endif
