#pragma once

#include "platform/cursors.h"

#include <xcb/xcb.h>

namespace trovel {

class InputGrab;
class XcbConnection;

/// The cursor stack. It has effect while the pointer is held; otherwise the windows of the desktop
/// have their own cursors.
class CursorsX11 final : public Cursors {
public:
    /// What is handed in outlives it.
    CursorsX11(XcbConnection& x, InputGrab& grab) : x_(x), grab_(grab) {}
    ~CursorsX11();

    void pushCrosshair() override;
    void pop() override;

private:
    xcb_cursor_t loadCrosshair();

    XcbConnection& x_;
    InputGrab& grab_;
    xcb_cursor_t crosshair_ = XCB_NONE;
    int depth_ = 0;
};

} // namespace trovel
