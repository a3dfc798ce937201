// What a second start of the program does.
#pragma once

// Quirk: a second start of the program shows nothing and brings no window to the front, because it
// asks the active window of its own process, and it has none.

/// Asks the active window of this process to come to the front and to draw attention, while another
/// instance holds the segment of the guard; does nothing when none does.
void notifyRunningInstance();
