// Messages that quote what comes from outside.
#pragma once

/// From now on every message box shows its text as it is, those of the toolkit's own dialogs included.
void showMessagesAsTyped();
