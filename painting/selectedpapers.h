// How a selected note is seen to be one.
#pragma once

class QGraphicsView;
class QPainter;

/// Draws the frames of the selected notes in \a view, as a selected arrow has one, inside of their
/// papers. They are drawn on the viewport, over all that lies on the board: a note itself paints the same
/// whether it is selected or not.
void drawSelectedPapers(QPainter &painter, const QGraphicsView &view);
