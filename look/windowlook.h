// What every window of the program wears.
#pragma once

class QWidget;

/// Registers the program's font.
void registerFont();

/// Registers the program's font, also for menus and tool tips, gives \a window the style sheet that
/// all windows share, shows the picture of every label of it whose property "picture" names one, and
/// has its pictures with a tool tip read out to people who do not see them.
void applyWindowLook(QWidget &window);
