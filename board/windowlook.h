#pragma once

class QWidget;

/// Registers the program's font.
void registerFont();

/// Registers the program's font, also for menus, gives \a window the style sheet that all windows
/// share, and shows the picture of every label of it whose property "picture" names one.
void applyWindowLook(QWidget &window);
