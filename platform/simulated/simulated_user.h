#pragma once

#include "platform/key_codes.h"
#include "platform/simulated/simulated_input.h"

namespace trovel {

/// The person in front of the desktop. What they do happens now; to have it happen later, put it
/// on the queue. Points are global screen points.
class SimulatedUser {
public:
    explicit SimulatedUser(SimulatedInput& input, SimulatedMainQueue& queue)
        : input_(input), queue_(queue) {}

    /// Presses a key with those modifiers held, and lets it go.
    void pressKey(KeyCode keyCode, EventFlags flags = 0);
    /// Command-Shift-2.
    void pressDefaultHotkey() { pressKey(19, kFlagCommand | kFlagShift); }
    /// Holds a key for so long that it repeats so often.
    void holdKey(KeyCode keyCode, EventFlags flags, int repeats);

    /// Holds exactly these modifiers from now on.
    void holdModifiers(EventFlags flags) { input_.changeFlags(flags); }

    void movePointer(Point point) { input_.movePointer(point); }
    void mouseDown(Point point) { input_.leftDown(point); }
    void mouseUp(Point point) { input_.leftUp(point); }
    void click(Point point);
    void rightClick(Point point) { input_.rightDown(point); }
    /// Presses at `from`, moves by way of the middle, and lets go at `to`.
    void drag(Point from, Point to);

    /// Lets time pass.
    void wait(MainQueue::Duration duration) { queue_.advance(duration); }

private:
    SimulatedInput& input_;
    SimulatedMainQueue& queue_;
};

} // namespace trovel
