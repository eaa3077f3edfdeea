#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace trovel {

/// Lengths are doubles. Unless a declaration says otherwise they are points, and y grows upward
/// from the lower-left corner of whatever the value is relative to.
struct Point {
    double x = 0;
    double y = 0;

    friend bool operator==(Point const&, Point const&) = default;
};

struct Size {
    double width = 0;
    double height = 0;

    friend bool operator==(Size const&, Size const&) = default;
};

struct Rect {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;

    [[nodiscard]] constexpr double minX() const { return x; }
    [[nodiscard]] constexpr double minY() const { return y; }
    [[nodiscard]] constexpr double maxX() const { return x + width; }
    [[nodiscard]] constexpr double maxY() const { return y + height; }
    [[nodiscard]] constexpr double midX() const { return x + width * 0.5; }
    [[nodiscard]] constexpr double midY() const { return y + height * 0.5; }

    /// This rectangle with every side moved inward by `distance`.
    [[nodiscard]] constexpr Rect insetBy(double distance) const {
        return {x + distance, y + distance, width - 2 * distance, height - 2 * distance};
    }

    friend bool operator==(Rect const&, Rect const&) = default;
};

/// A rectangle of whole pixels, origin at the top left, y downward.
struct PixelRect {
    std::int64_t x = 0;
    std::int64_t y = 0;
    std::int64_t width = 0;
    std::int64_t height = 0;

    [[nodiscard]] constexpr bool isEmpty() const { return width <= 0 || height <= 0; }

    friend bool operator==(PixelRect const&, PixelRect const&) = default;
};

/// The pixels that two rectangles share; empty when they share none.
[[nodiscard]] inline PixelRect intersection(PixelRect const& a, PixelRect const& b) {
    auto const left = std::max(a.x, b.x);
    auto const top = std::max(a.y, b.y);
    auto const right = std::min(a.x + a.width, b.x + b.width);
    auto const bottom = std::min(a.y + a.height, b.y + b.height);
    if (right <= left || bottom <= top) return {};
    return {left, top, right - left, bottom - top};
}

/// A length within this of a whole number counts as that number, so that points which came from
/// pixels by a division come back as those pixels.
inline constexpr double kLengthNoise = 1e-6;

/// A length that is not negative, without its fraction.
[[nodiscard]] inline std::int64_t wholeTowardZero(double length) {
    return static_cast<std::int64_t>(length + kLengthNoise);
}

/// The smallest rectangle of whole pixels that covers `rect` (pixels, top-left origin): the origin
/// is rounded down and the far edge up.
[[nodiscard]] inline PixelRect outwardPixelRect(Rect const& rect) {
    auto const left = static_cast<std::int64_t>(std::floor(rect.x + kLengthNoise));
    auto const top = static_cast<std::int64_t>(std::floor(rect.y + kLengthNoise));
    auto const right = static_cast<std::int64_t>(std::ceil(rect.x + rect.width - kLengthNoise));
    auto const bottom = static_cast<std::int64_t>(std::ceil(rect.y + rect.height - kLengthNoise));
    return {left, top, right - left, bottom - top};
}

} // namespace trovel
