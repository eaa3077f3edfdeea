#pragma once

#include "platform/geometry.h"
#include "platform/linux/pictures/device_pixels.h"
#include "platform/linux/x11/monitors.h"

#include <cstdint>

namespace trovel {

// The one place where places in pixels of the root window (origin at the top left, y downward) and
// in points (y upward) are turned into each other.

/// The frame of `monitor` in global screen points.
///
/// A screen's frame has the size of its monitor divided by the monitor's own scale. Its lower-left
/// corner lies where the monitor's does, counted in pixels from the primary monitor's lower-left
/// corner and divided by the primary monitor's scale. So screens of one scale join without gaps,
/// and two monitors never share a frame, whatever their scales.
[[nodiscard]] inline Rect frameOf(Monitor const& monitor, Monitor const& primary) {
    auto const& area = monitor.area;
    auto const& origin = primary.area;
    return {static_cast<double>(area.x - origin.x) / primary.scale,
            static_cast<double>(origin.y + origin.height - area.y - area.height) / primary.scale,
            pointsFromPixels(area.width, monitor.scale),
            pointsFromPixels(area.height, monitor.scale)};
}

/// Where the pointer on root pixel (`rootX`, `rootY`) stands in a window that fills `monitor`:
/// points from its lower-left corner. The last pixel of a row or column counts as the monitor's far
/// edge, so a drag from corner to corner covers the whole screen. Outside of the monitor the
/// coordinates go on.
[[nodiscard]] inline Point pointInMonitor(Monitor const& monitor, int rootX, int rootY) {
    auto const& area = monitor.area;
    std::int64_t x = rootX - area.x;
    std::int64_t y = rootY - area.y;
    if (x == area.width - 1) ++x;
    if (y == area.height - 1) ++y;
    return {static_cast<double>(x) / monitor.scale,
            static_cast<double>(area.height - y) / monitor.scale};
}

} // namespace trovel
