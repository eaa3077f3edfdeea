#pragma once

#include "platform/linux/x11/connection.h"
#include "tests/contract/contract_world.h"

#include <memory>
#include <string>

namespace trovel {

/// Another program on the X server: one window that notes the clicks and keys that it gets.
class X11Program {
public:
    /// The window is on the screen when this returns. `identity` is its WM_CLASS.
    X11Program(std::string const& identity, Point position, Size size);

    void bringToFront();
    [[nodiscard]] ProgramReport report();

private:
    void note(xcb_generic_event_t const& event);

    std::unique_ptr<XcbConnection> connection_ = XcbConnection::open();
    xcb_window_t window_;
    ProgramReport report_;
};

} // namespace trovel
