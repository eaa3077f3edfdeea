#pragma once

#include "platform/ui/events.h"
#include "platform/ui/view.h"

#include <memory>

namespace trovel {

// What happens to a native view, sent to the tree of the window that its view is in, if it is in
// one. It may take the view out of the tree and its mirror with it: whoever sends uses nothing of
// its own afterwards.

void sendMouse(MouseEvent const& event, std::weak_ptr<View> const& mirrored);

/// The pointer came over the view or left it.
void sendPointer(bool isInside, std::weak_ptr<View> const& mirrored);

/// A button was clicked.
void sendClick(std::weak_ptr<View> const& mirrored);

/// A press and a release in the middle of the view.
void sendPress(std::weak_ptr<View> const& mirrored);

/// Whether a press on the view is meant for it or for one around it, and does not begin to move the
/// window.
[[nodiscard]] bool takesClicks(View const& view);

} // namespace trovel
