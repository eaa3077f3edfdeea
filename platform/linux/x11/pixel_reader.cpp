#include "platform/linux/x11/pixel_reader.h"

#include "platform/linux/x11/connection.h"

#include <xcb/shm.h>

#include <algorithm>
#include <bit>
#include <cstring>
#include <memory>
#include <sys/ipc.h>
#include <sys/shm.h>
#include <utility>
#include <vector>

namespace trovel {

namespace {

constexpr std::uint32_t kAllPlanes = ~std::uint32_t{0};

/// How the server lays out pixels of the root's depth.
struct PixelLayout {
    std::uint32_t bitsPerPixel = 0;
    std::uint32_t scanlinePad = 8;
    std::uint32_t redMask = 0;
    std::uint32_t greenMask = 0;
    std::uint32_t blueMask = 0;
    bool isLittleEndian = true;

    [[nodiscard]] std::size_t stride(std::int64_t width) const {
        auto const bits = static_cast<std::size_t>(width) * bitsPerPixel;
        return (bits + scanlinePad - 1) / scanlinePad * (scanlinePad / 8);
    }
    [[nodiscard]] bool isPlain() const {
        bool const isNative = isLittleEndian == (std::endian::native == std::endian::little);
        return isNative && bitsPerPixel == 32 && redMask == 0xff0000 && greenMask == 0xff00 &&
               blueMask == 0xff;
    }
};

xcb_visualtype_t const* rootVisual(xcb_screen_t const& screen) {
    auto depths = xcb_screen_allowed_depths_iterator(&screen);
    for (; depths.rem > 0; xcb_depth_next(&depths)) {
        auto visuals = xcb_depth_visuals_iterator(depths.data);
        for (; visuals.rem > 0; xcb_visualtype_next(&visuals)) {
            if (visuals.data->visual_id == screen.root_visual) return visuals.data;
        }
    }
    return nullptr;
}

PixelLayout rootLayout(XcbConnection const& x) {
    PixelLayout layout;
    auto const* const setup = xcb_get_setup(x.get());
    layout.isLittleEndian = setup->image_byte_order == XCB_IMAGE_ORDER_LSB_FIRST;
    auto formats = xcb_setup_pixmap_formats_iterator(setup);
    for (; formats.rem > 0; xcb_format_next(&formats)) {
        if (formats.data->depth != x.screen().root_depth) continue;
        layout.bitsPerPixel = formats.data->bits_per_pixel;
        layout.scanlinePad = formats.data->scanline_pad;
    }
    if (auto const* const visual = rootVisual(x.screen())) {
        layout.redMask = visual->red_mask;
        layout.greenMask = visual->green_mask;
        layout.blueMask = visual->blue_mask;
    }
    return layout;
}

std::uint32_t component(std::uint32_t pixel, std::uint32_t mask) {
    if (mask == 0) return 0;
    auto const highest = mask >> std::countr_zero(mask);
    auto const value = (pixel & mask) >> std::countr_zero(mask);
    return static_cast<std::uint32_t>((std::uint64_t{value} * 0xff + highest / 2) / highest);
}

PixelBuffer converted(PixelBuffer const& source, PixelLayout const& layout) {
    auto const& from = source.rows;
    auto const pixels = std::make_shared<std::vector<std::uint32_t>>(
        static_cast<std::size_t>(from.width) * static_cast<std::size_t>(from.height));
    auto const bytes = layout.bitsPerPixel / 8;
    auto out = pixels->begin();
    for (int y = 0; y < from.height; ++y) {
        auto const* pixel = from.data + from.stride * static_cast<std::size_t>(y);
        for (int column = 0; column < from.width; ++column, pixel += bytes) {
            std::uint32_t value = 0;
            for (std::uint32_t i = 0; i < bytes; ++i) {
                value = value << 8U | pixel[layout.isLittleEndian ? bytes - 1 - i : i];
            }
            *out++ = component(value, layout.redMask) << 16U |
                     component(value, layout.greenMask) << 8U | component(value, layout.blueMask);
        }
    }
    auto const* const data = reinterpret_cast<std::uint8_t const*>(pixels->data());
    return {{data, static_cast<std::size_t>(from.width) * sizeof(std::uint32_t), from.width,
             from.height},
            pixels};
}

/// Memory that the server can write to; gone when nobody refers to it any more.
std::shared_ptr<void const> sharedImage(XcbConnection const& x, xcb_drawable_t drawable,
                                        PixelRect const& part, std::size_t size) {
    if (x.extension(xcb_shm_id) == nullptr) return nullptr;
    int const id = shmget(IPC_PRIVATE, size, IPC_CREAT | 0600);
    if (id < 0) return nullptr;
    void* const memory = shmat(id, nullptr, 0);
    auto const segment = xcb_generate_id(x.get());
    bool const isAttached =
        memory != reinterpret_cast<void*>(-1) &&
        x.succeeded(xcb_shm_attach_checked(x.get(), segment, static_cast<std::uint32_t>(id),
                                           /*read_only=*/0));
    // From here on the segment lasts only as long as somebody has it attached.
    shmctl(id, IPC_RMID, nullptr);
    if (memory == reinterpret_cast<void*>(-1)) return nullptr;
    std::shared_ptr<void const> owner(memory, [](void const* attached) { shmdt(attached); });
    if (!isAttached) return nullptr;
    auto const image = x.reply<xcb_shm_get_image_reply>(xcb_shm_get_image(
        x.get(), drawable, static_cast<std::int16_t>(part.x), static_cast<std::int16_t>(part.y),
        static_cast<std::uint16_t>(part.width), static_cast<std::uint16_t>(part.height), kAllPlanes,
        XCB_IMAGE_FORMAT_Z_PIXMAP, segment, 0));
    xcb_shm_detach(x.get(), segment);
    x.flush();
    return image ? owner : nullptr;
}

/// The same over the connection, a band of rows at a time.
std::shared_ptr<void const> sentImage(XcbConnection const& x, xcb_drawable_t drawable,
                                      PixelRect const& part, std::size_t stride) {
    constexpr std::size_t kBandBytes = std::size_t{4} * 1024 * 1024;
    auto const rowsAtOnce =
        std::max<std::int64_t>(1, static_cast<std::int64_t>(kBandBytes / stride));
    auto const bytes =
        std::make_shared<std::vector<std::uint8_t>>(stride * static_cast<std::size_t>(part.height));
    for (std::int64_t y = 0; y < part.height; y += rowsAtOnce) {
        auto const rows = std::min(rowsAtOnce, part.height - y);
        auto const image = x.reply<xcb_get_image_reply>(xcb_get_image(
            x.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, drawable, static_cast<std::int16_t>(part.x),
            static_cast<std::int16_t>(part.y + y), static_cast<std::uint16_t>(part.width),
            static_cast<std::uint16_t>(rows), kAllPlanes));
        auto const wanted = stride * static_cast<std::size_t>(rows);
        if (!image || static_cast<std::size_t>(xcb_get_image_data_length(image.get())) < wanted) {
            return nullptr;
        }
        std::memcpy(bytes->data() + stride * static_cast<std::size_t>(y),
                    xcb_get_image_data(image.get()), wanted);
    }
    return {bytes, bytes->data()};
}

} // namespace

std::optional<PixelBuffer> readPixels(XcbConnection const& x, xcb_drawable_t drawable,
                                      PixelRect const& part) {
    auto const layout = rootLayout(x);
    if (layout.bitsPerPixel < 8 || part.isEmpty()) return std::nullopt;
    auto const stride = layout.stride(part.width);
    auto owner = sharedImage(x, drawable, part, stride * static_cast<std::size_t>(part.height));
    if (!owner) owner = sentImage(x, drawable, part, stride);
    if (!owner) return std::nullopt;
    PixelRows const rows{static_cast<std::uint8_t const*>(owner.get()), stride,
                         static_cast<int>(part.width), static_cast<int>(part.height)};
    PixelBuffer buffer{rows, std::move(owner)};
    return layout.isPlain() ? std::move(buffer) : converted(buffer, layout);
}

} // namespace trovel
