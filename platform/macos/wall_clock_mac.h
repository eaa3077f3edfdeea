#pragma once

#include "platform/wall_clock.h"

namespace trovel {

/// The system's clock.
class WallClockMac final : public WallClock {
public:
    WallClockMac() = default;

    [[nodiscard]] Date now() const override { return std::chrono::system_clock::now(); }
};

} // namespace trovel
