// The mark of the keyboard's focus.
#pragma once

/// From now on a ring stands around whatever the person went to with the keyboard, and in message boxes
/// around the button that Enter would press, the same in all windows.
void markKeyboardFocus();
