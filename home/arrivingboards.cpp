// Boards that come from outside: named where the program is started, at first or once more.
#include "home/mainwindow.h"

#include "board/boardwindow.h"
#include "look/attention.h"

#include <QApplication>

#include <utility>

void MainWindow::answerStart(const QString &boardPath)
{
    QWidget &window = shownWindow();
    // The last window has gone, and with it the program goes.
    if (!window.isVisible())
        return;
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
    if (&shownWindow() == this)
        openBoard(path);
    else if (!boardWindow->shows(path))
        boardWindow->openInstead(path);
}
