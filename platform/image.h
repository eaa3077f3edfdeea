#pragma once

#include "platform/geometry.h"

#include <memory>

namespace trovel {

/// Pixels as the backend holds them. Immutable, so any thread may read it and copies are shared.
class PixelImage {
public:
    PixelImage(PixelImage const&) = delete;
    PixelImage& operator=(PixelImage const&) = delete;
    virtual ~PixelImage() = default;

    [[nodiscard]] virtual int widthPixels() const = 0;
    [[nodiscard]] virtual int heightPixels() const = 0;

    /// The part under `rect`: pixels, origin at the top left, rounded outward to whole pixels and
    /// cut at the edges. Null when nothing is left of it.
    [[nodiscard]] virtual std::shared_ptr<PixelImage const> croppedTo(Rect const& rect) const = 0;

protected:
    PixelImage() = default;
};

/// A picture to show or hand on: pixels, and the size in points that they are meant to fill.
struct Image {
    std::shared_ptr<PixelImage const> pixels;
    Size size;
};

} // namespace trovel
