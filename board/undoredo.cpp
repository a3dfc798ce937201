#include "board/boardwindow.h"

// The undo history: at most historyLimit snapshots, the first of which is the baseline that
// cannot be undone.

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
    rebuildScene(undoStack.constLast());
}

void BoardWindow::redoMode()
{
    if (redoStack.isEmpty())
        return;
    undoStack.append(redoStack.takeLast());
    rebuildScene(undoStack.constLast());
}

/// Replaces the items of the scene by those of \a snapshot. They are added topmost first, so that
/// items of equal z value come to lie in reverse order; when such items differ, the snapshot that
/// follows is a new state and ends the redo history. This is wanted.
void BoardWindow::rebuildScene(const BoardSnapshot &snapshot)
{
    scene->clear();
    for (const auto &state : snapshot) {
        if (auto *const item = restoreItem(state))
            scene->addItem(item);
    }
    setUnsaved(true);
    // Once more than setUnsaved() has done already, which changes nothing to be seen. This is
    // wanted.
    updateTitleLabel();
}
