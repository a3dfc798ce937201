// How far away places are still numbers of pixels.
#pragma once

#include <QRectF>

/// Far outside of every screen and board, and well within what an int holds. Places are brought into it
/// before they become whole numbers.
inline constexpr QRectF wholeNumbers(-1e6, -1e6, 2e6, 2e6);
