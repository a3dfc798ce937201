// Boards large enough to measure with.
#pragma once

class QGraphicsScene;

/// Fills \a scene with \a count strokes of \a points points each, the same ones at every call.
void addStrokes(QGraphicsScene &scene, int count, int points);
