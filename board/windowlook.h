#pragma once

class QWidget;

/// Registers the program's font.
void registerFont();

/// Registers the program's font and gives \a window the style sheet that all windows share.
void applyWindowLook(QWidget &window);
