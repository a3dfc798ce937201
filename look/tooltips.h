// Tool tips: where they stand, and their edge.
#pragma once

class QString;
class QWidget;

/// From now on every tool tip has an edge, and one of a window of the program stands beside the panel of
/// its widget instead of below the pointer, where it would cover the next tool.
void dressToolTips();

/// Shows \a text as the tool tip of \a widget.
void showToolTip(QWidget &widget, const QString &text);
