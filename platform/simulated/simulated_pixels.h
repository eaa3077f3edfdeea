#pragma once

#include "platform/image.h"
#include "platform/simulated/effects.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace trovel {

/// The colour (0xRRGGBB) of a pixel of a display that shows nothing of Trovel's: computed from
/// where it is, so that a test can tell which pixels it got. Origin at the top left.
[[nodiscard]] std::uint32_t desktopColor(std::uint32_t displayId, std::int64_t x, std::int64_t y);

/// What pixels show where an overlay of Trovel's covered the desktop, where the pointer stood, and
/// beyond the display's edge.
inline constexpr std::uint32_t kOverlayColor = 0x1ff0000;
inline constexpr std::uint32_t kPointerColor = 0x2ff0000;
inline constexpr std::uint32_t kBeyondColor = 0x3000000;

/// A picture of a display: not stored, but computed from what was on the display when it was taken.
class SimulatedPixels final : public PixelImage {
public:
    /// What a display showed at the moment of the capture; rectangles in its pixels.
    struct Moment {
        std::uint32_t displayId = 0;
        PixelRect display;
        std::vector<PixelRect> covered;
        PixelRect pointer;
    };

    SimulatedPixels(std::shared_ptr<Moment const> moment, PixelRect region)
        : moment_(std::move(moment)), region_(region) {}
    ~SimulatedPixels() override = default;

    [[nodiscard]] int widthPixels() const override { return static_cast<int>(region_.width); }
    [[nodiscard]] int heightPixels() const override { return static_cast<int>(region_.height); }
    [[nodiscard]] std::shared_ptr<PixelImage const> croppedTo(Rect const& rect) const override;

    /// The colour of a pixel of this picture, origin at its top left.
    [[nodiscard]] std::uint32_t colorAt(std::int64_t x, std::int64_t y) const;

    [[nodiscard]] std::uint32_t displayId() const { return moment_->displayId; }
    /// Where the picture lies on its display, in pixels.
    [[nodiscard]] PixelRect region() const { return region_; }
    /// Whether an overlay of Trovel's or the pointer is to be seen in it.
    [[nodiscard]] bool isClean() const;

private:
    std::shared_ptr<Moment const> moment_;
    PixelRect region_;
};

/// An image as a value. Only the simulated desktop's own pictures have a display; others read as
/// their size on display 0.
[[nodiscard]] Picture pictureOf(Image const& image);

} // namespace trovel
