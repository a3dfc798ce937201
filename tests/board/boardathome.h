// A board window with its home window.
#pragma once

#include "home/mainwindow.h"
#include "items/stickynoteitem.h"
#include "tests/board/shownboard.h"
#include "tests/support/files/boardfiles.h"
#include "tests/support/system/scratchhome.h"

/// A board that hides its home window, as the program has it.
struct BoardAtHome
{
    const QString planName = QStringLiteral("plan.vtrz");
    ScratchHome folder;
    MainWindow home;
    ShownBoard board{&home};

    /// Opens the board "plan.vtrz", which holds one note.
    void openPlan()
    {
        board.window.loadBoard(
            BoardFile::write(folder.path(planName), QJsonArray{BoardFile::note(500, 300)}));
    }
    QJsonArray savedPlan() const { return BoardFile::items(folder.path(planName)); }
    void addNote() { board.scene.addItem(new StickyNoteItem); }
    void close() { board.click("CloseBoardBtn"); }
    /// Whether the board is gone and the home window is back.
    bool closed() const
    {
        return !board.window.isVisible() && home.isVisible() && board.scene.items().isEmpty();
    }
};
