#include "platform/linux/x11/overlay/snapshot.h"

#include "platform/linux/x11/connection.h"

namespace trovel {

Snapshot::Snapshot(XcbConnection& x) : x_(x) {
    retake();
}

void Snapshot::retake() {
    // The screen's size in the connection's set-up is that of the time when it was made.
    auto const size = x_.reply<xcb_get_geometry_reply>(xcb_get_geometry(x_.get(), x_.root()));
    std::uint16_t const width = size ? size->width : x_.screen().width_in_pixels;
    std::uint16_t const height = size ? size->height : x_.screen().height_in_pixels;
    auto* const c = x_.get();
    if (PixelRect const area{0, 0, width, height}; area != area_) {
        if (pixmap_ != XCB_NONE) xcb_free_pixmap(c, pixmap_);
        area_ = area;
        pixmap_ = xcb_generate_id(c);
        xcb_create_pixmap(c, x_.screen().root_depth, pixmap_, x_.root(), width, height);
    }
    auto const gc = xcb_generate_id(c);
    std::uint32_t const values[] = {XCB_SUBWINDOW_MODE_INCLUDE_INFERIORS, 0};
    xcb_create_gc(c, gc, x_.root(), XCB_GC_SUBWINDOW_MODE | XCB_GC_GRAPHICS_EXPOSURES, values);
    xcb_copy_area(c, x_.root(), pixmap_, gc, 0, 0, 0, 0, width, height);
    xcb_free_gc(c, gc);
}

Snapshot::~Snapshot() {
    xcb_free_pixmap(x_.get(), pixmap_);
    x_.flush();
}

} // namespace trovel
