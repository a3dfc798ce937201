// Boards that come from outside: named where the program is started, at first or once more.
#include "home/mainwindow.h"

#include "board/boardwindow.h"
#include "look/attention.h"

#include <QApplication>

#include <utility>

void MainWindow::answerStart(const QString &boardPath)
{
    QWidget &window = shownWindow();
    if (!window.isVisible())
        return; // the last window has gone, and with it the program goes
    bringToFront(window);
    if (auto *const dialog = QApplication::activeModalWidget())
        dialog->activateWindow();
    flash(window);
    openWhenQuiet(boardPath);
}

void MainWindow::openWhenQuiet(const QString &boardPath)
{
    if (boardPath.isEmpty())
        return;
    // Quirk: of several boards that are named at once only the last is opened, because the program has
    // one board window.
    arrivedBoard = boardPath;
    quietMoment.await();
}

/// The window that a person has before him: the board, or this one.
QWidget &MainWindow::shownWindow()
{
    if (boardWindow && boardWindow->isVisible())
        return *boardWindow;
    return *this;
}

void MainWindow::openArrivedBoard()
{
    const QString path = std::exchange(arrivedBoard, {});
    if (!shownWindow().isVisible())
        return;
    // Quirk: a board from outside that cannot be opened leads to a board under that file's name only
    // where none is open, because from here it is opened as from the list, and an open one stays.
    // Quirk: a board that is named during a presentation is presented, because whoever names a board
    // wants to see it now, and a presentation goes on with the next board in any case.
    if (&shownWindow() == this)
        openBoard(path);
    else if (!boardWindow->shows(path))
        boardWindow->openInstead(path);
}
