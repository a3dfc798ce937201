// Opens files, and nothing else that stands under a file's name.
#pragma once

class QFile;
class QString;

/// Opens \a file, which must have no name yet, on \a path for reading. Only a regular file can be
/// opened: not a folder, nor a device or a pipe, from which there may be no end of reading, or no
/// beginning.
bool openForReading(QFile &file, const QString &path);

/// Opens \a file, which must have no name yet, on \a path for writing without a buffer, and empties
/// it; makes it where it is missing. A pipe cannot be opened: it would wait for somebody to read.
bool openForWriting(QFile &file, const QString &path);
