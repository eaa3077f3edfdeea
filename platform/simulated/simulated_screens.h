#pragma once

#include "platform/screens.h"

#include <cstdint>
#include <vector>

namespace trovel {

/// A display that is attached, and the screen that shows on it.
struct SimulatedDisplay {
    std::uint32_t displayId = 0;
    /// Global screen points, origin at the lower-left corner of the primary screen.
    Rect frame;
    double scale = 1;
    /// Whether the screen says which display is behind it.
    bool hasScreenNumber = true;
};

/// The displays, which come and go while the program runs. The first is the primary one.
class SimulatedScreens final : public Screens {
public:
    SimulatedScreens() = default;
    ~SimulatedScreens() = default;

    [[nodiscard]] std::vector<Screen> screens() const override;

    void attach(SimulatedDisplay display) { displays_.push_back(display); }
    void detach(std::uint32_t displayId);
    void detachAll() { displays_.clear(); }

    [[nodiscard]] std::vector<SimulatedDisplay> const& displays() const { return displays_; }
    /// Null when no such display is attached.
    [[nodiscard]] SimulatedDisplay const* display(std::uint32_t displayId) const;

    /// A global screen point in the coordinates of input events and accessibility, whose origin is
    /// the top left of the primary screen with y downward, or back again.
    [[nodiscard]] Point flipped(Point point) const;

private:
    std::vector<SimulatedDisplay> displays_;
};

} // namespace trovel
