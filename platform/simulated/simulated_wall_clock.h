#pragma once

#include "platform/simulated/virtual_queue.h"
#include "platform/wall_clock.h"

namespace trovel {

/// A date that goes on with the desktop's virtual time and can be set.
class SimulatedWallClock final : public WallClock {
public:
    explicit SimulatedWallClock(VirtualQueue const& queue) : queue_(queue) {}
    ~SimulatedWallClock() = default;

    [[nodiscard]] Date now() const override { return start_ + queue_.now(); }

    void set(Date now) { start_ = now - queue_.now(); }

private:
    VirtualQueue const& queue_;
    Date start_{std::chrono::milliseconds(1'731'700'000'000)};
};

} // namespace trovel
