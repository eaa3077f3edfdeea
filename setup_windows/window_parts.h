#pragma once

#include "platform/color.h"
#include "platform/font.h"
#include "platform/geometry.h"
#include "platform/ui/label.h"

#include <memory>
#include <string>

namespace trovel {

class View;
class Window;
struct Platform;

/// A label of one line, centred or not, added to `parent`.
std::shared_ptr<Label> addLabel(View& parent, Rect frame, std::string text, Font font, Color color,
                                TextAlignment alignment = TextAlignment::natural);

/// A window of that content size with a hidden, transparent title bar over a HUD-like content view,
/// movable by its background.
std::shared_ptr<Window> makePanelWindow(Platform const& platform, Size contentSize);

} // namespace trovel
