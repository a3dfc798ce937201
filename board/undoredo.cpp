// The undo history: at most historyLimit snapshots, the first of which is the baseline that cannot be
// undone.
#include "board/boardwindow.h"

// Quirk: nine steps can be undone where the help page speaks of ten, because the oldest of the ten
// snapshots is the baseline.

void BoardWindow::captureSnapshot()
{
    BoardSnapshot snapshot = takeSnapshot(*scene);
    if (!undoStack.isEmpty() && snapshotsEqual(snapshot, undoStack.constLast()))
        return;
    undoStack.append(std::move(snapshot));
    if (historyLimit < undoStack.size())
        undoStack.removeFirst();
    redoStack.clear();
}

void BoardWindow::undoMode()
{
    if (undoStack.size() <= 1)
        return;
    redoStack.append(undoStack.takeLast());
    showSnapshot(undoStack.constLast());
}

void BoardWindow::redoMode()
{
    if (redoStack.isEmpty())
        return;
    undoStack.append(redoStack.takeLast());
    showSnapshot(undoStack.constLast());
}

void BoardWindow::showSnapshot(const BoardSnapshot &snapshot)
{
    // Quirk: a change of a drawn or a restored item does not mark the board unsaved, because only
    // items of an opened file are watched; drawing belongs to a board without a file, and undo and
    // redo mark the board themselves.
    restoreSnapshot(*scene, snapshot);
    setUnsaved(true);
    // Quirk: undo and redo write the board's name twice, because setUnsaved() has written it
    // already; nothing of it is seen.
    updateTitleLabel();
}
