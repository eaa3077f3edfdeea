#include "platform/linux/x11/overlay/render.h"

#include "platform/linux/x11/connection.h"

#include <algorithm>
#include <cmath>

namespace trovel {

namespace {

constexpr std::uint8_t kAlphaDepth = 32;

std::uint16_t component(double value, double alpha) {
    constexpr double kFull = 0xffff;
    return static_cast<std::uint16_t>(std::lround(std::clamp(value * alpha, 0.0, 1.0) * kFull));
}

xcb_render_pictformat_t formatOfVisual(xcb_render_query_pict_formats_reply_t const* formats,
                                       xcb_visualid_t visual) {
    auto screens = xcb_render_query_pict_formats_screens_iterator(formats);
    for (; screens.rem > 0; xcb_render_pictscreen_next(&screens)) {
        auto depths = xcb_render_pictscreen_depths_iterator(screens.data);
        for (; depths.rem > 0; xcb_render_pictdepth_next(&depths)) {
            auto visuals = xcb_render_pictdepth_visuals_iterator(depths.data);
            for (; visuals.rem > 0; xcb_render_pictvisual_next(&visuals)) {
                if (visuals.data->visual == visual) return visuals.data->format;
            }
        }
    }
    return 0;
}

xcb_render_pictformat_t alphaFormat(xcb_render_query_pict_formats_reply_t const* formats) {
    auto each = xcb_render_query_pict_formats_formats_iterator(formats);
    for (; each.rem > 0; xcb_render_pictforminfo_next(&each)) {
        auto const& format = *each.data;
        auto const& direct = format.direct;
        bool const isArgb = direct.alpha_shift == 24 && direct.red_shift == 16 &&
                            direct.green_shift == 8 && direct.blue_shift == 0;
        if (format.type == XCB_RENDER_PICT_TYPE_DIRECT && format.depth == kAlphaDepth && isArgb &&
            direct.alpha_mask == 0xff) {
            return format.id;
        }
    }
    return 0;
}

} // namespace

ServerBitmap::ServerBitmap(XcbConnection& x, xcb_render_pictformat_t format, xcb_gcontext_t gc,
                           Bitmap const& bitmap)
    : x_(x), pixmap_(xcb_generate_id(x.get())), picture_(xcb_generate_id(x.get())) {
    auto* const c = x.get();
    auto const width = static_cast<std::uint16_t>(bitmap.width);
    xcb_create_pixmap(c, kAlphaDepth, pixmap_, x.root(), width,
                      static_cast<std::uint16_t>(bitmap.height));
    // A request has a largest size, so the rows go out in as many as it takes.
    auto const rowBytes = static_cast<std::size_t>(bitmap.width) * sizeof(std::uint32_t);
    auto const limit = std::size_t{xcb_get_maximum_request_length(c)} * 4 - 256;
    auto const rowsAtOnce =
        std::max(1, static_cast<int>(std::min<std::size_t>(limit / rowBytes, 0x7fff)));
    for (int row = 0; row < bitmap.height; row += rowsAtOnce) {
        int const rows = std::min(rowsAtOnce, bitmap.height - row);
        auto const* const data = bitmap.pixels.data() + std::ptrdiff_t{row} * bitmap.width;
        xcb_put_image(c, XCB_IMAGE_FORMAT_Z_PIXMAP, pixmap_, gc, width,
                      static_cast<std::uint16_t>(rows), 0, static_cast<std::int16_t>(row), 0,
                      kAlphaDepth,
                      static_cast<std::uint32_t>(rowBytes * static_cast<std::size_t>(rows)),
                      reinterpret_cast<std::uint8_t const*>(data));
    }
    xcb_render_create_picture(c, picture_, pixmap_, format, 0, nullptr);
}

ServerBitmap::~ServerBitmap() {
    xcb_render_free_picture(x_.get(), picture_);
    xcb_free_pixmap(x_.get(), pixmap_);
}

XcbRender::XcbRender(XcbConnection& x) : x_(x) {
    if (x.extension(xcb_render_id) == nullptr) return;
    auto* const c = x.get();
    auto const version =
        xcb_render_query_version(c, XCB_RENDER_MAJOR_VERSION, XCB_RENDER_MINOR_VERSION);
    auto const formats =
        x.reply<xcb_render_query_pict_formats_reply>(xcb_render_query_pict_formats(c));
    xcb_discard_reply(c, version.sequence);
    if (!formats) return;
    rootFormat_ = formatOfVisual(formats.get(), x.screen().root_visual);
    alphaFormat_ = alphaFormat(formats.get());
    if (!isAvailable()) return;

    auto const sample = xcb_generate_id(c);
    xcb_create_pixmap(c, kAlphaDepth, sample, x.root(), 1, 1);
    alphaGc_ = xcb_generate_id(c);
    std::uint32_t const noExposures = 0;
    xcb_create_gc(c, alphaGc_, sample, XCB_GC_GRAPHICS_EXPOSURES, &noExposures);
    xcb_free_pixmap(c, sample);
}

XcbRender::~XcbRender() {
    if (alphaGc_ != 0) xcb_free_gc(x_.get(), alphaGc_);
}

xcb_render_picture_t XcbRender::makePicture(xcb_drawable_t drawable) {
    if (!isAvailable()) return 0;
    auto const picture = xcb_generate_id(x_.get());
    xcb_render_create_picture(x_.get(), picture, drawable, rootFormat_, 0, nullptr);
    return picture;
}

void XcbRender::freePicture(xcb_render_picture_t picture) {
    if (picture != 0) xcb_render_free_picture(x_.get(), picture);
}

void XcbRender::fill(xcb_render_picture_t target, PixelRegion const& region, Color const& color) {
    if (target == 0 || region.isEmpty()) return;
    xcb_render_color_t const value{component(color.red, color.alpha),
                                   component(color.green, color.alpha),
                                   component(color.blue, color.alpha), component(1, color.alpha)};
    std::vector<xcb_rectangle_t> rects;
    for (auto const& rect : region.rects()) {
        rects.push_back({static_cast<std::int16_t>(rect.x), static_cast<std::int16_t>(rect.y),
                         static_cast<std::uint16_t>(rect.width),
                         static_cast<std::uint16_t>(rect.height)});
    }
    xcb_render_fill_rectangles(x_.get(), XCB_RENDER_PICT_OP_OVER, target, value,
                               static_cast<std::uint32_t>(rects.size()), rects.data());
}

std::unique_ptr<ServerBitmap> XcbRender::upload(Bitmap const& bitmap) {
    if (!isAvailable() || bitmap.width <= 0 || bitmap.height <= 0) return nullptr;
    return std::make_unique<ServerBitmap>(x_, alphaFormat_, alphaGc_, bitmap);
}

void XcbRender::blend(xcb_render_picture_t target, PixelRegion const& region,
                      ServerBitmap const& bitmap, std::int64_t x, std::int64_t y) {
    if (target == 0) return;
    for (auto const& rect : region.rects()) {
        xcb_render_composite(
            x_.get(), XCB_RENDER_PICT_OP_OVER, bitmap.picture(), XCB_NONE, target,
            static_cast<std::int16_t>(rect.x - x), static_cast<std::int16_t>(rect.y - y), 0, 0,
            static_cast<std::int16_t>(rect.x), static_cast<std::int16_t>(rect.y),
            static_cast<std::uint16_t>(rect.width), static_cast<std::uint16_t>(rect.height));
    }
}

} // namespace trovel
