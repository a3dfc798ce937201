// The picture file that a person chooses to put on the board.
#pragma once

#include <QPixmap>

/// The picture in the file \a path, upright, of which one pixel is one scene unit; null when it cannot be
/// read, or not within the memory that there is. The file's content decides what kind it is, not its name.
QPixmap readPicture(const QString &path);
