#pragma once

#include "platform/wall_clock.h"

namespace trovel {

/// The system's clock.
class WallClockLinux final : public WallClock {
public:
    Date now() const override { return std::chrono::system_clock::now(); }
};

} // namespace trovel
