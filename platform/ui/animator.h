#pragma once

#include <chrono>
#include <functional>

namespace trovel {

/// Animation groups. Main thread only.
class Animator {
public:
    Animator(Animator const&) = delete;
    Animator& operator=(Animator const&) = delete;

    /// Runs `body` at once. Layer styles that it sets are shown as a change over `duration`, from
    /// what is on the screen now; the tree holds the final values right away.
    virtual void runGroup(std::chrono::nanoseconds duration, std::function<void()> const& body) = 0;

protected:
    Animator() = default;
    ~Animator() = default;
};

} // namespace trovel
