#pragma once

#include "platform/simulated/simulated_main_queue.h"
#include "platform/wall_clock.h"

namespace trovel {

/// A date that goes on with the desktop's virtual time and can be set.
class SimulatedWallClock final : public WallClock {
public:
    explicit SimulatedWallClock(SimulatedMainQueue const& queue) : queue_(queue) {}
    ~SimulatedWallClock() = default;

    [[nodiscard]] Date now() const override { return start_ + queue_.now(); }

    void set(Date now) { start_ = now - queue_.now(); }

private:
    SimulatedMainQueue const& queue_;
    Date start_{std::chrono::milliseconds(1'731'700'000'000)};
};

} // namespace trovel
