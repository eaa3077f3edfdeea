#pragma once

#include "platform/color.h"
#include "platform/linux/pictures/bitmap.h"
#include "platform/linux/pictures/pixel_region.h"

#include <xcb/render.h>
#include <xcb/xcb.h>

#include <cstdint>
#include <memory>
#include <vector>

namespace trovel {

class XcbConnection;

/// A bitmap on the server, to be blended over something.
class ServerBitmap {
public:
    ServerBitmap(XcbConnection& x, xcb_render_pictformat_t format, xcb_gcontext_t gc,
                 Bitmap const& bitmap);
    ServerBitmap(ServerBitmap const&) = delete;
    ServerBitmap& operator=(ServerBitmap const&) = delete;
    ~ServerBitmap();

    [[nodiscard]] xcb_render_picture_t picture() const { return picture_; }

private:
    XcbConnection& x_;
    xcb_pixmap_t pixmap_;
    xcb_render_picture_t picture_;
};

/// Drawing with the RENDER extension on drawables of the root window's depth. Where the server has
/// no RENDER, nothing is blended or filled.
class XcbRender {
public:
    /// `x` outlives it.
    explicit XcbRender(XcbConnection& x);
    XcbRender(XcbRender const&) = delete;
    XcbRender& operator=(XcbRender const&) = delete;
    ~XcbRender();

    [[nodiscard]] bool isAvailable() const { return rootFormat_ != 0 && alphaFormat_ != 0; }

    /// Something to draw on; to be given to `freePicture`.
    [[nodiscard]] xcb_render_picture_t makePicture(xcb_drawable_t drawable);
    void freePicture(xcb_render_picture_t picture);

    /// Lays `color` over the region.
    void fill(xcb_render_picture_t target, PixelRegion const& region, Color const& color);

    /// Null where nothing can be blended.
    [[nodiscard]] std::unique_ptr<ServerBitmap> upload(Bitmap const& bitmap);

    /// Lays `bitmap`, its top left pixel at (`x`, `y`), over that part of the region.
    void blend(xcb_render_picture_t target, PixelRegion const& region, ServerBitmap const& bitmap,
               std::int64_t x, std::int64_t y);

private:
    XcbConnection& x_;
    xcb_render_pictformat_t rootFormat_ = 0;
    xcb_render_pictformat_t alphaFormat_ = 0;
    xcb_gcontext_t alphaGc_ = 0;
};

} // namespace trovel
