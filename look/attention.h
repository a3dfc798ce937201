// How a window draws the person's attention to itself.
#pragma once

class QWidget;

/// Brings \a window back from the task bar and to the front. A minimised window comes back as it is
/// built, or on the full screen if it was there.
void bringToFront(QWidget &window);

/// Flashes the caption and the task-bar button of \a window three times. Returns what Windows reports:
/// whether the window was active before the call. On other systems it asks for the person's attention
/// as the desktop does, and returns false.
bool flash(QWidget &window);
