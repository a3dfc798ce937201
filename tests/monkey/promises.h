// What holds after whatever a person does.
#pragma once

#include <QString>

class BoardWindow;
class CanvasView;
class Hand;

/// How the program stands after a step.
struct Moment
{
    BoardWindow *board; // null when none was made yet
    const Hand &hand;
    bool isAtRest; // no dialog and no menu waits for an answer
    bool isLookedAt; // whether the slower looks are due
    bool isRealTime; // whether the clock goes on while nothing happens
};

/// The first promise that does not hold; empty when all do.
QString brokenPromise(const Moment &moment);

CanvasView &canvasOf(const BoardWindow &board);
