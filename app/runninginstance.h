// What a second start of the program does first of all.
#pragma once

/// Asks the active window of this process to come to the front and to draw attention, while another
/// instance holds the segment of the guard; does nothing when none does. A second start has no window
/// that it could ask: it is handOff() that reaches the program that runs.
void notifyRunningInstance();
