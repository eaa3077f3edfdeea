#pragma once

#include "platform/lifetime.h"
#include "platform/main_queue.h"

#include <xcb/xcb.h>

#include <functional>
#include <optional>

namespace trovel {

class XcbConnection;

/// Keyboard and pointer of the whole desktop, held for as long as a selection takes. Another
/// program may hold one of them at first, an open menu for example: it is asked for again and again
/// for a second, without blocking. Main thread only.
class InputGrab {
public:
    /// What is handed in outlives it.
    InputGrab(XcbConnection& x, MainQueue& mainQueue);
    InputGrab(InputGrab const&) = delete;
    InputGrab& operator=(InputGrab const&) = delete;
    ~InputGrab();

    /// Called in a turn of the main loop when the pointer could not be had.
    void setRefusedHandler(std::function<void()> handler) {
        onPointerRefused_ = std::move(handler);
    }

    /// Asks for both and does not wait for the answers.
    void begin();

    /// Lets both go.
    void end();

    [[nodiscard]] bool isWanted() const { return session_.has_value(); }

    /// The pointer's shape while it is held; none leaves it to the windows.
    void setCursor(xcb_cursor_t cursor);

private:
    void request();
    void collect();

    XcbConnection& x_;
    MainQueue& mainQueue_;
    std::function<void()> onPointerRefused_;
    bool hasPointer_ = false;
    bool hasKeyboard_ = false;
    int attempts_ = 0;
    xcb_cursor_t cursor_ = XCB_NONE;
    std::optional<xcb_grab_pointer_cookie_t> pointerRequest_;
    std::optional<xcb_grab_keyboard_cookie_t> keyboardRequest_;
    std::optional<Lifetime> session_; // from `begin` to `end`
};

} // namespace trovel
