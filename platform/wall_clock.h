#pragma once

#include <chrono>

namespace trovel {

/// The date and time of day.
class WallClock {
public:
    using Date = std::chrono::sys_time<std::chrono::nanoseconds>;

    WallClock(WallClock const&) = delete;
    WallClock& operator=(WallClock const&) = delete;

    [[nodiscard]] virtual Date now() const = 0;

protected:
    WallClock() = default;
    ~WallClock() = default;
};

} // namespace trovel
