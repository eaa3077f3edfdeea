#pragma once

#include "platform/geometry.h"

#include <xcb/xcb.h>

namespace trovel {

class XcbConnection;

/// What all screens showed at one moment, without the pointer: a pixmap on the server with the
/// coordinates of the root window. None of it crosses to the program.
class Snapshot {
public:
    /// Takes the picture: when this request is carried out is "now" to the server. `x` outlives it.
    explicit Snapshot(XcbConnection& x);
    Snapshot(Snapshot const&) = delete;
    Snapshot& operator=(Snapshot const&) = delete;
    ~Snapshot();

    /// Takes it anew, in the same memory if the desktop still has the same size.
    void retake();

    [[nodiscard]] xcb_pixmap_t pixmap() const { return pixmap_; }
    /// The whole root window as it was.
    [[nodiscard]] PixelRect area() const { return area_; }

private:
    XcbConnection& x_;
    xcb_pixmap_t pixmap_ = XCB_NONE;
    PixelRect area_;
};

} // namespace trovel
