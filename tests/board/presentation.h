// The presentation of a board, as the tests begin and see it.
#pragma once

#include "tests/board/shownboard.h"

#include <QComboBox>

/// Chooses the full screen. The window has its new size when this returns: some platforms report
/// it only from the event loop.
inline void enterPresentation(ShownBoard &board)
{
    board.find<QComboBox>("Presentar")->setCurrentIndex(0);
    board.processEvents();
}

inline void pressKey(ShownBoard &board, Qt::Key key)
{
    QTest::keyClick(board.window.windowHandle(), key);
}

/// Whether the board fills the screen without a frame.
inline bool presents(const ShownBoard &board)
{
    return board.window.isFullScreen()
        && board.window.windowFlags().testFlag(Qt::FramelessWindowHint);
}

/// Whether it is seen how to leave the presentation.
inline bool reminds(const ShownBoard &board)
{
    return board.find<QWidget>("AdviseFS")->isVisible();
}
