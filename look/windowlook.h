// What every window of the program wears.
#pragma once

class QWidget;

/// Sees to it that the program's font is registered, once, and that it stands in for "Segoe UI" where
/// the system has none.
void registerFont();

/// Registers the program's font, also for menus and tool tips, has messages shown as typed and the
/// keyboard's focus marked, and gives \a window the style sheet that all windows share. Done before the window has its widgets, it has none
/// of them polished twice.
void applyWindowStyle(QWidget &window);

/// Shows the picture of every label in \a window whose property "picture" names one (a PictureLabel
/// does so itself), gives every widget with a tool tip that text as its name for screen readers, and has
/// buttons look faded while they are disabled.
void dressWidgets(QWidget &window);

/// Both of that, for a \a window that has its widgets.
void applyWindowLook(QWidget &window);
