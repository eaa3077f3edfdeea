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

/// A screen reader pressed the view.
void sendPress(std::weak_ptr<View> const& mirrored);

} // namespace trovel
