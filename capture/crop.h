#pragma once

#include "platform/geometry.h"

namespace trovel {

/// The part of a screen's picture that `selection` covers: pixels, origin at the top left, not yet
/// rounded. What lies to the right of the picture, below it, to the left or above is cut off; a
/// selection outside it gives a rectangle without area.
///
/// `imageSize` is the picture's in pixels, `scale` the screen's pixels to a point, `frame` its
/// frame and `selection` the rectangle, both in global screen points.
[[nodiscard]] Rect cropRect(Size imageSize, double scale, Rect const& frame, Rect const& selection);

} // namespace trovel
