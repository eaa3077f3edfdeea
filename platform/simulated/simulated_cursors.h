#pragma once

#include "platform/cursors.h"
#include "platform/simulated/journal.h"

namespace trovel {

/// The program's cursor stack.
class SimulatedCursors final : public Cursors {
public:
    explicit SimulatedCursors(Journal& journal) : journal_(journal) {}
    ~SimulatedCursors() = default;

    void pushCrosshair() override {
        ++depth_;
        journal_.record(effect::CrosshairPushed{});
    }
    void pop() override {
        --depth_;
        journal_.record(effect::CursorPopped{});
    }

    /// Pushes less pops: 0 at rest, and never below.
    [[nodiscard]] int depth() const { return depth_; }

private:
    Journal& journal_;
    int depth_ = 0;
};

} // namespace trovel
