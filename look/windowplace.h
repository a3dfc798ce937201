// Where a window comes up that takes over from another one.
#pragma once

class QPoint;
class QWidget;

/// Moves \a window with the corner of its frame to \a corner, on the screen or where it will be shown.
void moveWindow(QWidget &window, const QPoint &corner);

/// Moves \a window, which is about to be shown, to where \a other is, so that a person finds it where
/// the eyes are, and then into that screen as far as it fits there. A window in the task bar or on the
/// full screen, or that is not shown, has no place to give, and one on the full screen takes none.
/// A \a window that was minimised last is seen all the same.
void takePlaceOf(QWidget &window, const QWidget &other);
