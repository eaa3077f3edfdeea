#include "platform/linux/x11/cursors_x11.h"

#include "platform/linux/x11/connection.h"
#include "platform/linux/x11/input_grab.h"

#include <xcb/xcb_cursor.h>

#include <cstdint>
#include <string_view>

namespace trovel {

namespace {

/// The crosshair that every X server has.
xcb_cursor_t coreCrosshair(xcb_connection_t* c) {
    constexpr std::string_view kCursorFont = "cursor";
    constexpr std::uint16_t kCrosshairGlyph = 34; // XC_crosshair; its mask is the next glyph
    constexpr std::uint16_t kFull = 0xffff;
    auto const font = xcb_generate_id(c);
    auto const cursor = xcb_generate_id(c);
    xcb_open_font(c, font, kCursorFont.size(), kCursorFont.data());
    xcb_create_glyph_cursor(c, cursor, font, font, kCrosshairGlyph, kCrosshairGlyph + 1, 0, 0, 0,
                            kFull, kFull, kFull);
    xcb_close_font(c, font);
    return cursor;
}

} // namespace

CursorsX11::~CursorsX11() {
    if (crosshair_ != XCB_NONE) xcb_free_cursor(x_.get(), crosshair_);
}

void CursorsX11::pushCrosshair() {
    if (crosshair_ == XCB_NONE) crosshair_ = loadCrosshair();
    ++depth_;
    grab_.setCursor(crosshair_);
}

void CursorsX11::pop() {
    if (depth_ == 0) return;
    --depth_;
    grab_.setCursor(depth_ > 0 ? crosshair_ : XCB_NONE);
}

xcb_cursor_t CursorsX11::loadCrosshair() {
    xcb_cursor_context_t* context = nullptr;
    auto* const screen = const_cast<xcb_screen_t*>(&x_.screen());
    xcb_cursor_t cursor = XCB_NONE;
    if (xcb_cursor_context_new(x_.get(), screen, &context) == 0) {
        cursor = xcb_cursor_load_cursor(context, "crosshair");
        xcb_cursor_context_free(context);
    }
    return cursor != XCB_NONE ? cursor : coreCrosshair(x_.get());
}

} // namespace trovel
