#pragma once

#include "platform/geometry.h"
#include "platform/linux/pictures/captured_image.h"

#include <xcb/xcb.h>

#include <optional>

namespace trovel {

class XcbConnection;

/// Fetches that part of a drawable of the root's depth, converted to 24-bit colour where the server
/// keeps another kind: through shared memory, or over the connection where the server cannot share
/// any. None when the drawable is gone, the part does not lie inside it, or memory is short. The
/// thread that owns `x`; blocks.
[[nodiscard]] std::optional<PixelBuffer> readPixels(XcbConnection const& x, xcb_drawable_t drawable,
                                                    PixelRect const& part);

} // namespace trovel
