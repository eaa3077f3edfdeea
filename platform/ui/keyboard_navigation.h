#pragma once

#include <cstdint>

namespace trovel {

class Window;
struct KeyEvent;

/// What a key does where the keyboard goes from control to control.
enum class NavigationKey : std::uint8_t {
    none,
    /// Tab, and Tab with Shift.
    next,
    previous,
    /// Space, which does what a click does.
    press,
};

/// That of a key which was pressed in `window`; none in a window that takes every key.
[[nodiscard]] NavigationKey navigationKey(Window const& window, KeyEvent const& event);

} // namespace trovel
