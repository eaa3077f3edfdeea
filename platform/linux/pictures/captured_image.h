#pragma once

#include "platform/image.h"
#include "platform/linux/pictures/png_encoder.h"

#include <cstdint>
#include <memory>
#include <mutex>
#include <vector>

namespace trovel {

/// Memory with pixels in it, and what must stay as long as somebody reads them.
struct PixelBuffer {
    PixelRows rows;
    std::shared_ptr<void const> owner;
};

/// A captured picture. It is turned into a PNG once, by the first who asks, after which only the
/// PNG is left of it. Any thread.
class CapturedImage final : public PixelImage {
public:
    /// `scale` is pixels to a point.
    CapturedImage(PixelBuffer pixels, double scale);

    [[nodiscard]] int widthPixels() const override { return width_; }
    [[nodiscard]] int heightPixels() const override { return height_; }
    [[nodiscard]] std::shared_ptr<PixelImage const> croppedTo(Rect const& rect) const override;

    /// The whole PNG file; waits while another thread makes it. Null when there was not enough
    /// memory.
    [[nodiscard]] std::shared_ptr<std::vector<std::uint8_t> const> pngData() const;

private:
    int width_;
    int height_;
    double scale_;
    mutable std::once_flag encoding_;
    mutable PixelBuffer pixels_;
    mutable std::shared_ptr<std::vector<std::uint8_t> const> png_;
};

} // namespace trovel
