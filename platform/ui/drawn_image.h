#pragma once

#include "platform/geometry.h"

#include <functional>
#include <string>

namespace trovel {

class Canvas;

/// An image that is drawn when and at whatever scale it is needed.
struct DrawnImage {
    Size size;
    /// Draws into the whole of `rect`, y upward; answers whether it succeeded.
    std::function<bool(Canvas& canvas, Rect rect)> draw;
    /// Whether only its shape counts and the desktop colours it to fit what is behind it.
    bool isTemplate = false;
    /// What a screen reader says of it where nothing else names it; empty for nothing.
    std::string accessibilityDescription{};
};

} // namespace trovel
