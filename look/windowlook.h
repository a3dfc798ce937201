// What every window of the program wears.
#pragma once

class QWidget;

/// Registers the program's font, and has it stand in for "Segoe UI" where the system has none.
void registerFont();

/// Dresses \a window: registers the program's font, also for menus and tool tips, gives the window
/// the style sheet that all windows share, shows the picture of every label whose property "picture"
/// names one, and gives every widget with a tool tip that text as its name for screen readers.
void applyWindowLook(QWidget &window);
