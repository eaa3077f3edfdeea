#pragma once

#include "platform/geometry.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace trovel {

/// One screen of the desktop as it was when it was asked for; plain values, so any thread may hold
/// it.
struct Screen {
    /// Global screen points: origin at the lower-left corner of the primary screen, y upward.
    Rect frame;
    /// Pixels to a point.
    double backingScaleFactor = 1;
    /// The number that names the display behind this screen; none when the system does not give one
    /// or gives something that is no unsigned 32-bit number.
    std::optional<std::uint32_t> screenNumber;

    friend bool operator==(Screen const&, Screen const&) = default;
};

/// The screens that are attached. Nothing is cached. Main thread only.
class Screens {
public:
    Screens(Screens const&) = delete;
    Screens& operator=(Screens const&) = delete;

    /// In the system's order, the primary screen first. May be empty.
    [[nodiscard]] virtual std::vector<Screen> screens() const = 0;

protected:
    Screens() = default;
    ~Screens() = default;
};

} // namespace trovel
