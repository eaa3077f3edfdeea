#pragma once

#include "platform/geometry.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

namespace trovel {

/// A length of whole pixels in points: multiplied by the scale it is never less than it was, so
/// that cutting off the fraction gives the same pixels back.
[[nodiscard]] inline double pointsFromPixels(std::int64_t pixels, double scale) {
    auto const exact = static_cast<double>(pixels);
    double points = exact / scale;
    while (points * scale < exact) {
        points = std::nextafter(points, std::numeric_limits<double>::infinity());
    }
    return points;
}

/// The nearest whole pixel of a canvas that is `heightPixels` high: the edges of `rect` (points,
/// origin at the lower left) each moved to the nearest line between pixels.
[[nodiscard]] inline PixelRect nearestPixelRect(Rect const& rect, double scale,
                                                std::int64_t heightPixels) {
    auto const nearest = [scale](double points) {
        // A canvas is a window of at most 2^15 pixels; what lies far outside is cut while it fits.
        constexpr double kFar = 1 << 20;
        return static_cast<std::int64_t>(std::floor(std::clamp(points * scale, -kFar, kFar) + 0.5));
    };
    auto const left = nearest(rect.minX());
    auto const bottom = nearest(rect.minY());
    auto const right = nearest(rect.maxX());
    auto const top = nearest(rect.maxY());
    return {left, heightPixels - top, right - left, top - bottom};
}

} // namespace trovel
