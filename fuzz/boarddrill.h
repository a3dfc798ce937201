// What a person may do with a board of which nobody knows where its items come from.
#pragma once

#include <memory>
#include <vector>

class QGraphicsItem;

/// Puts \a items on a board, shows it, selects and moves them, saves and opens it, undoes, and finds
/// what the eraser would take. Ends the program where the board breaks a promise.
void drillBoard(std::vector<std::unique_ptr<QGraphicsItem>> items);
