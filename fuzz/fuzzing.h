// What the fuzz targets share: the application, the scratch file and the ways to complain.
#pragma once

#include <QString>

#include <cstddef>
#include <cstdint>

// The two functions that libFuzzer calls, by its names: the first once, the second for each input.
// replay.cpp calls them where there is no libFuzzer.
extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv);
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

/// Ends the program with \a promise, which the program does not keep, when it is not \a kept.
void require(bool kept, const char *promise);

/// The path of a file that holds the \a size bytes at \a data. There is one, written anew each time.
QString fileWith(const uint8_t *data, size_t size);
