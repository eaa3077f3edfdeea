#pragma once

#include "platform/simulated/journal.h"
#include "platform/ui/animator.h"

namespace trovel {

/// Animation groups that are over at once and leave a line in the journal.
class SimulatedAnimator final : public Animator {
public:
    explicit SimulatedAnimator(Journal& journal) : journal_(journal) {}
    ~SimulatedAnimator() = default;

    void runGroup(std::chrono::nanoseconds duration, std::function<void()> const& body) override {
        journal_.record(effect::AnimationGroupRun{duration});
        body();
    }

private:
    Journal& journal_;
};

} // namespace trovel
