// Has a window come up where the one was that it takes over from.
#include "look/windowplace.h"

#include <QScreen>
#include <QWidget>
#include <QWindow>

#include <algorithm>

namespace {

/// Where something of that \a length begins that would begin at \a start, to lie between \a low and
/// \a high; where it is too long for that, it stays.
int inside(int start, int length, int low, int high)
{
    const int last = high - length + 1;
    return last < low ? start : std::clamp(start, low, last);
}

} // namespace

void moveWindow(QWidget &window, const QPoint &corner)
{
    window.move(corner);
    // On X11 a window that is shown again comes up where the window manager likes, unless a place was
    // asked for; and where the widget is there already, or the frame is not there yet, moving asks for none.
    if (auto *const handle = window.windowHandle())
        handle->setFramePosition(corner);
}

void takePlaceOf(QWidget &window, const QWidget &other)
{
    // It may have been closed from the task bar.
    window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
    if (!other.isVisible() || other.isMinimized() || other.isFullScreen() || window.isFullScreen())
        return;
    // The widget may hear of its frame later than the window, and a window that was never shown has none
    // yet; those of the program are alike.
    const QWindow &handle = *other.windowHandle();
    const QRect place(handle.framePosition(), window.size().grownBy(handle.frameMargins()));
    const QRect screen = other.screen()->availableGeometry();
    moveWindow(window,
               {inside(place.x(), place.width(), screen.left(), screen.right()),
                inside(place.y(), place.height(), screen.top(), screen.bottom())});
}
