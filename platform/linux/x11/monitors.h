#pragma once

#include "platform/geometry.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace trovel {

class XcbConnection;

/// A monitor of the desktop, in the X server's own terms.
struct Monitor {
    /// The atom of its name: the same number for the same output as long as the server runs.
    std::uint32_t id = 0;
    std::string name;
    /// Pixels of the root window: origin at the top left, y downward.
    PixelRect area;
    /// Pixels to a point.
    double scale = 1;

    friend bool operator==(Monitor const&, Monitor const&) = default;
};

/// What the desktop says about the sizes of things: two environment variables that the toolkits of
/// an X11 desktop share, and the server's resource database.
struct ScaleSettings {
    /// QT_SCREEN_SCALE_FACTORS: "name=factor" or bare factors in the screens' order, with
    /// semicolons between them.
    std::string screenFactors;
    /// QT_SCALE_FACTOR.
    std::string factor;
    /// The text of RESOURCE_MANAGER, of which Xft.dpi counts: 96 to a scale of 1.
    std::string resources;
};

/// The scale of the monitor `name`, the `index`-th of all with the primary one first: what is said
/// of this screen, else of all screens, else the resolution of text, else 1. What is no sensible
/// factor is passed over.
[[nodiscard]] double scaleOfMonitor(ScaleSettings const& settings, std::string_view name,
                                    std::size_t index);

/// The monitors that show something now, the primary one first. Where the server has no RandR, the
/// root window is the only one. Empty when the server is gone. The thread that owns `x`.
[[nodiscard]] std::vector<Monitor> listMonitors(XcbConnection& x);

} // namespace trovel
