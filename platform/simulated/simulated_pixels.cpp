#include "platform/simulated/simulated_pixels.h"

#include <algorithm>

namespace trovel {

namespace {

bool contains(PixelRect const& rect, std::int64_t x, std::int64_t y) {
    return x >= rect.x && y >= rect.y && x < rect.x + rect.width && y < rect.y + rect.height;
}

} // namespace

std::uint32_t desktopColor(std::uint32_t displayId, std::int64_t x, std::int64_t y) {
    auto const column = static_cast<std::uint32_t>(x);
    auto const row = static_cast<std::uint32_t>(y);
    auto mixed = displayId * 0x9e3779b1U ^ column * 0x85ebca77U ^ row * 0xc2b2ae3dU;
    mixed ^= mixed >> 15U;
    return mixed * 0x2c1b3c6dU >> 8U;
}

std::shared_ptr<PixelImage const> SimulatedPixels::croppedTo(Rect const& rect) const {
    auto const wanted = outwardPixelRect(rect);
    auto const cut = intersection(wanted, {0, 0, region_.width, region_.height});
    if (cut.isEmpty()) return nullptr;
    return std::make_shared<SimulatedPixels>(
        moment_, PixelRect{region_.x + cut.x, region_.y + cut.y, cut.width, cut.height});
}

std::uint32_t SimulatedPixels::colorAt(std::int64_t x, std::int64_t y) const {
    auto const column = region_.x + x;
    auto const row = region_.y + y;
    if (!contains(moment_->display, column, row)) return kBeyondColor;
    if (contains(moment_->pointer, column, row)) return kPointerColor;
    for (auto const& rect : moment_->covered) {
        if (contains(rect, column, row)) return kOverlayColor;
    }
    return desktopColor(moment_->displayId, column, row);
}

bool SimulatedPixels::isClean() const {
    auto const touches = [this](PixelRect const& rect) {
        return !intersection(region_, rect).isEmpty();
    };
    return !touches(moment_->pointer) && std::ranges::none_of(moment_->covered, touches);
}

Picture pictureOf(Image const& image) {
    auto const* pixels = dynamic_cast<SimulatedPixels const*>(image.pixels.get());
    if (pixels != nullptr) {
        return {pixels->displayId(), pixels->region(), image.size, pixels->isClean()};
    }
    if (!image.pixels) return {0, {}, image.size};
    return {0, {0, 0, image.pixels->widthPixels(), image.pixels->heightPixels()}, image.size};
}

} // namespace trovel
