#include "platform/simulated/simulated_user.h"

namespace trovel {

void SimulatedUser::pressKey(KeyCode keyCode, EventFlags flags) {
    input_.keyDown(keyCode, flags);
    input_.keyUp(keyCode);
}

void SimulatedUser::holdKey(KeyCode keyCode, EventFlags flags, int repeats) {
    for (int press = 0; press <= repeats; ++press) input_.keyDown(keyCode, flags);
    input_.keyUp(keyCode);
}

void SimulatedUser::click(Point point) {
    input_.leftDown(point);
    input_.leftUp(point);
}

void SimulatedUser::drag(Point from, Point to) {
    input_.leftDown(from);
    input_.movePointer({(from.x + to.x) * 0.5, (from.y + to.y) * 0.5});
    input_.movePointer(to);
    input_.leftUp(to);
}

} // namespace trovel
