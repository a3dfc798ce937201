// The sizes of the board and of its window.
#pragma once

#include <QRectF>
#include <QSize>

namespace BoardGeometry {

/// The board in scene units.
constexpr QRectF board(0, 0, 1920, 1080);
/// The window outside of a presentation, in pixels.
constexpr QSize window(1200, 700);

} // namespace BoardGeometry
