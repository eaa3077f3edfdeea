#pragma once

#include "platform/geometry.h"

#include <cstddef>
#include <vector>

namespace trovel {

/// A set of pixels, as rectangles that do not overlap.
class PixelRegion {
public:
    PixelRegion() = default;
    PixelRegion(PixelRect const& rect) { add(rect); }

    void add(PixelRect const& rect);
    void add(PixelRegion const& other);
    void subtract(PixelRect const& rect);
    void subtract(PixelRegion const& other);

    [[nodiscard]] PixelRegion intersectedWith(PixelRect const& rect) const;
    [[nodiscard]] PixelRegion intersectedWith(PixelRegion const& other) const;

    [[nodiscard]] bool isEmpty() const { return rects_.empty(); }
    [[nodiscard]] std::vector<PixelRect> const& rects() const { return rects_; }

private:
    std::vector<PixelRect> rects_;
};

/// What is in one of the two but not in both.
[[nodiscard]] PixelRegion symmetricDifference(PixelRegion const& a, PixelRegion const& b);

} // namespace trovel
