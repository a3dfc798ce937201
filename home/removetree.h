// Removing a folder with all it holds, and no more than that.
#pragma once

class QFileInfo;

/// Removes \a entry and, if it is a folder, all it holds, as far as possible; returns whether
/// nothing is left. A link is removed itself, and what it leads to is left alone, even where the
/// link stands in the place of \a entry or is a junction of Windows; QDir::removeRecursively()
/// would empty the folder at its other end.
bool removeTree(const QFileInfo &entry);
