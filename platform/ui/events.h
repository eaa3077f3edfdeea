#pragma once

#include "platform/geometry.h"
#include "platform/key_codes.h"

#include <cstdint>
#include <string>

namespace trovel {

/// A mouse event of a window. The location is in the window's coordinates: points, origin at the
/// lower-left corner of the content, y upward.
struct MouseEvent {
    enum class Kind : std::uint8_t { leftDown, leftDragged, leftUp, rightDown };

    Kind kind = Kind::leftDown;
    Point locationInWindow;
    EventFlags modifierFlags = 0;
};

/// A key event of the key window.
struct KeyEvent {
    enum class Kind : std::uint8_t { keyDown, flagsChanged };

    Kind kind = Kind::keyDown;
    KeyCode keyCode = 0;
    EventFlags modifierFlags = 0;
    /// What the key types without its modifiers, UTF-8; "\r" for Return.
    std::string characters{};
};

} // namespace trovel
