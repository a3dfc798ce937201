// The undo history: at most historyLimit snapshots, of which the first, the baseline, stays.
#include "board/boardwindow.h"

void BoardWindow::captureSnapshot()
{
    keepSnapshot(recorder->snapshot());
}

void BoardWindow::captureChanges(const QList<QRectF> &changed)
{
    keepSnapshot(recorder->snapshotAfter(changed));
}

void BoardWindow::keepSnapshot(const BoardSnapshot &snapshot)
{
    if (!undoStack.isEmpty() && snapshotsEqual(snapshot, undoStack.constLast()))
        return;
    undoStack.append(snapshot);
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
    restoreSnapshot(*scene, snapshot);
    // Quirk: undo and redo mark the board unsaved even when it is again what its file holds,
    // because a board is not compared with its file.
    setUnsaved(true);
    // Once more than setUnsaved() has done already; nothing of it is seen.
    updateTitleLabel();
}
