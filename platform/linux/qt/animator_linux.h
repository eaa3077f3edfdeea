#pragma once

#include "platform/ui/animator.h"

namespace trovel {

/// Animation groups: mirrors of windows ask it how long a change is to take.
class AnimatorLinux final : public Animator {
public:
    AnimatorLinux() = default;
    ~AnimatorLinux() = default;

    void runGroup(std::chrono::nanoseconds duration, std::function<void()> const& body) override;

    /// That of the innermost group being run; zero outside of one.
    [[nodiscard]] std::chrono::nanoseconds duration() const { return duration_; }

private:
    std::chrono::nanoseconds duration_{0};
};

} // namespace trovel
