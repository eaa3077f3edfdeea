#pragma once

#include "platform/color.h"
#include "platform/ui/view.h"

#include <string>
#include <string_view>
#include <vector>

namespace trovel {

class Button;

/// What a view and everything below it shows, one line a view, in the order in which they lie in
/// their superviews; a subview's line begins with two blanks more. For example:
/// `label (0, 6, 96, 14) "Claude" | system 11 medium | label | centred`.
///
/// A line names the kind and the frame, then what differs from a view that was just made: the look
/// of its kind, its layer, its accessibility, and whether it is hidden, tracks the pointer or
/// answers clicks.
[[nodiscard]] std::vector<std::string> linesOf(View const& view);

/// A colour by the name of the system's colour or as red, green and blue out of 255, and its alpha
/// where that is not 1.
[[nodiscard]] std::string textOf(Color const& color);

/// The middle of a view, in its window's coordinates.
[[nodiscard]] Point centreOf(View const& view);

/// The button with that title in a view or below it; its absence is fatal.
[[nodiscard]] Button& buttonIn(View& view, std::string_view title);

} // namespace trovel
