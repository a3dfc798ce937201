#pragma once

/// Asks the windows of the program to come to the front and to draw attention; does nothing when no
/// instance runs. A second instance has no window of its own, and none of another process can be
/// reached, so nothing happens today; the call stands for the day when there is a way over.
void notifyRunningInstance();
