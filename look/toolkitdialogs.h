// What the toolkit's own dialogs do not do as the program would.
#pragma once

/// From now on every message box shows its text as it is, those of the toolkit's own dialogs included,
/// and file dialogs have their buttons whole.
void mendToolkitDialogs();
