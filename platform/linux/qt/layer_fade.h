#pragma once

#include "platform/ui/layer_style.h"

#include <chrono>

namespace trovel {

/// The layer style that a view shows while it changes from one to another.
class LayerFade {
public:
    using Clock = std::chrono::steady_clock;

    /// Goes to `target` in `duration` from what is shown at `now`; at once when that is zero. A
    /// target that is the same as before changes nothing.
    void setTarget(LayerStyle const& target, Clock::duration duration, Clock::time_point now);

    [[nodiscard]] LayerStyle shownAt(Clock::time_point now) const;
    [[nodiscard]] bool isRunningAt(Clock::time_point now) const { return now < end_; }

private:
    LayerStyle from_;
    LayerStyle target_;
    Clock::time_point begin_;
    Clock::time_point end_;
};

/// The style at `part` (0 to 1) of the way between the two.
[[nodiscard]] LayerStyle mixed(LayerStyle const& from, LayerStyle const& to, double part);

} // namespace trovel
