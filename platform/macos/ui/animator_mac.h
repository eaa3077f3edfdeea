#pragma once

#include "platform/ui/animator.h"

namespace trovel {

/// AppKit's animation groups, with implicit animation allowed.
class AnimatorMac final : public Animator {
public:
    AnimatorMac() = default;

    void runGroup(std::chrono::nanoseconds duration, std::function<void()> const& body) override;
};

} // namespace trovel
