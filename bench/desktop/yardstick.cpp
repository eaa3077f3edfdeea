// yardstick: the least that a resident program must do to copy a region of an X11 screen.
//
//   Ctrl+Alt+C  takes a picture of the screen and covers the screen with a dimmed copy of it
//   a drag      shows the region undimmed in a white frame; only what changed is painted
//   its end     offers a PNG of the region on the clipboard
//   Escape      gives up
//
// Measured beside the program, it tells how fast this machine's X server is. It is no product: one
// screen, 32 bits a pixel, one clipboard format, and errors end it.

#include "platform/linux/pictures/pixel_region.h"
#include "platform/linux/pictures/png_encoder.h"

#include <X11/keysym.h>
#include <xcb/render.h>
#include <xcb/shm.h>
#include <xcb/xcb.h>
#include <xcb/xcb_keysyms.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <iterator>
#include <memory>
#include <string_view>
#include <sys/ipc.h>
#include <sys/shm.h>
#include <utility>
#include <vector>

namespace {

using trovel::PixelRect;
using trovel::PixelRegion;

struct Free {
    void operator()(void* pointer) const { std::free(pointer); }
};
template <class T>
using Reply = std::unique_ptr<T, Free>;

constexpr std::uint32_t kPointerEvents =
    XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE | XCB_EVENT_MASK_POINTER_MOTION;

/// The connection, its only screen and what is asked of the server once.
class Server {
public:
    Server() : connection_(xcb_connect(nullptr, nullptr)) {
        if (xcb_connection_has_error(connection_) != 0) std::exit(2);
        screen_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data;
        xcb_prefetch_maximum_request_length(connection_);
        std::free(
            xcb_shm_query_version_reply(connection_, xcb_shm_query_version(connection_), nullptr));
        std::free(xcb_render_query_version_reply(
            connection_, xcb_render_query_version(connection_, 0, 11), nullptr));
    }
    Server(Server const&) = delete;
    Server& operator=(Server const&) = delete;
    ~Server() { xcb_disconnect(connection_); }

    [[nodiscard]] xcb_connection_t* get() const { return connection_; }
    [[nodiscard]] xcb_screen_t const& screen() const { return *screen_; }
    [[nodiscard]] xcb_window_t root() const { return screen_->root; }
    [[nodiscard]] PixelRect area() const {
        return {0, 0, screen_->width_in_pixels, screen_->height_in_pixels};
    }

    [[nodiscard]] xcb_atom_t atom(std::string_view name) const {
        auto const cookie =
            xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.data());
        Reply<xcb_intern_atom_reply_t> const reply(
            xcb_intern_atom_reply(connection_, cookie, nullptr));
        return reply->atom;
    }
    [[nodiscard]] xcb_keycode_t keycode(xcb_keysym_t keysym) const {
        auto* const symbols = xcb_key_symbols_alloc(connection_);
        Reply<xcb_keycode_t> const codes(xcb_key_symbols_get_keycode(symbols, keysym));
        xcb_key_symbols_free(symbols);
        return codes.get()[0];
    }
    [[nodiscard]] xcb_gcontext_t makeGc(std::uint32_t mask, std::uint32_t const* values) const {
        auto const gc = xcb_generate_id(connection_);
        xcb_create_gc(connection_, gc, root(), mask, values);
        return gc;
    }
    [[nodiscard]] xcb_pixmap_t makePixmap() const {
        auto const pixmap = xcb_generate_id(connection_);
        xcb_create_pixmap(connection_, screen_->root_depth, pixmap, root(),
                          screen_->width_in_pixels, screen_->height_in_pixels);
        return pixmap;
    }
    /// A RENDER format with the root's channels.
    [[nodiscard]] xcb_render_pictformat_t rootFormat() const {
        Reply<xcb_render_query_pict_formats_reply_t> const formats(
            xcb_render_query_pict_formats_reply(
                connection_, xcb_render_query_pict_formats(connection_), nullptr));
        auto each = xcb_render_query_pict_formats_formats_iterator(formats.get());
        for (; each.rem > 0; xcb_render_pictforminfo_next(&each)) {
            if (each.data->depth == screen_->root_depth && each.data->direct.red_shift == 16 &&
                each.data->direct.alpha_mask == 0) {
                return each.data->id;
            }
        }
        return 0;
    }

private:
    xcb_connection_t* connection_;
    xcb_screen_t* screen_ = nullptr;
};

/// The picture of the screen and its dimmed copy, both on the server and kept between captures.
class Pictures {
public:
    explicit Pictures(Server const& server)
        : server_(server), plain_(server.makePixmap()), dimmed_(server.makePixmap()),
          dimmedPicture_(xcb_generate_id(server.get())) {
        xcb_render_create_picture(server.get(), dimmedPicture_, dimmed_, server.rootFormat(), 0,
                                  nullptr);
        std::uint32_t const values[] = {XCB_SUBWINDOW_MODE_INCLUDE_INFERIORS, 0};
        screenGc_ =
            server.makeGc(XCB_GC_SUBWINDOW_MODE | XCB_GC_GRAPHICS_EXPOSURES, std::data(values));
        gc_ = server.makeGc(XCB_GC_GRAPHICS_EXPOSURES, std::data(values) + 1);
        auto const bytes = static_cast<std::size_t>(server.area().width * server.area().height * 4);
        int const id = shmget(IPC_PRIVATE, bytes, IPC_CREAT | 0600);
        pixels_ = static_cast<std::uint8_t*>(shmat(id, nullptr, 0));
        segment_ = xcb_generate_id(server.get());
        auto const attached =
            xcb_shm_attach_checked(server.get(), segment_, static_cast<std::uint32_t>(id), 0);
        Reply<void> const error(xcb_request_check(server.get(), attached));
        shmctl(id, IPC_RMID, nullptr);
        if (error) std::exit(2);
    }

    [[nodiscard]] xcb_pixmap_t plain() const { return plain_; }
    [[nodiscard]] xcb_pixmap_t dimmed() const { return dimmed_; }

    void take() const {
        auto const width = server_.screen().width_in_pixels;
        auto const height = server_.screen().height_in_pixels;
        auto* const c = server_.get();
        xcb_copy_area(c, server_.root(), plain_, screenGc_, 0, 0, 0, 0, width, height);
        xcb_copy_area(c, plain_, dimmed_, gc_, 0, 0, 0, 0, width, height);
        xcb_render_color_t const shade{0, 0, 0, 0x6000};
        xcb_rectangle_t const whole{0, 0, width, height};
        xcb_render_fill_rectangles(c, XCB_RENDER_PICT_OP_OVER, dimmedPicture_, shade, 1, &whole);
    }
    void copy(xcb_pixmap_t from, xcb_window_t window, PixelRegion const& region) const {
        for (auto const& rect : region.rects()) {
            auto const x = static_cast<std::int16_t>(rect.x);
            auto const y = static_cast<std::int16_t>(rect.y);
            xcb_copy_area(server_.get(), from, window, gc_, x, y, x, y,
                          static_cast<std::uint16_t>(rect.width),
                          static_cast<std::uint16_t>(rect.height));
        }
    }
    /// The pixels of that part; valid until the next call.
    [[nodiscard]] trovel::PixelRows read(PixelRect const& part) const {
        auto const cookie = xcb_shm_get_image(
            server_.get(), plain_, static_cast<std::int16_t>(part.x),
            static_cast<std::int16_t>(part.y), static_cast<std::uint16_t>(part.width),
            static_cast<std::uint16_t>(part.height), ~0U, XCB_IMAGE_FORMAT_Z_PIXMAP, segment_, 0);
        std::free(xcb_shm_get_image_reply(server_.get(), cookie, nullptr));
        return {pixels_, static_cast<std::size_t>(part.width) * 4, static_cast<int>(part.width),
                static_cast<int>(part.height)};
    }

private:
    Server const& server_;
    xcb_pixmap_t plain_;
    xcb_pixmap_t dimmed_;
    xcb_render_picture_t dimmedPicture_;
    xcb_gcontext_t screenGc_;
    xcb_gcontext_t gc_;
    xcb_shm_seg_t segment_;
    std::uint8_t* pixels_;
};

/// The window that covers the screen, and the region shown in it.
class Overlay {
public:
    Overlay(Server const& server, Pictures const& pictures)
        : server_(server), pictures_(pictures),
          whiteGc_(server.makeGc(XCB_GC_FOREGROUND, &server.screen().white_pixel)),
          cursor_(xcb_generate_id(server.get())) {
        constexpr std::string_view kFont = "cursor";
        constexpr std::uint16_t kCrosshair = 34; // its mask follows
        auto const font = xcb_generate_id(server.get());
        xcb_open_font(server.get(), font, kFont.size(), kFont.data());
        xcb_create_glyph_cursor(server.get(), cursor_, font, font, kCrosshair, kCrosshair + 1,
                                0xffff, 0xffff, 0xffff, 0, 0, 0);
        xcb_close_font(server.get(), font);
    }

    [[nodiscard]] bool isShown() const { return window_ != XCB_NONE; }

    void show() {
        auto* const c = server_.get();
        auto const& screen = server_.screen();
        window_ = xcb_generate_id(c);
        std::uint32_t const values[] = {pictures_.dimmed(), /*override_redirect=*/1,
                                        kPointerEvents};
        xcb_create_window(
            c, XCB_COPY_FROM_PARENT, window_, screen.root, 0, 0, screen.width_in_pixels,
            screen.height_in_pixels, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
            XCB_CW_BACK_PIXMAP | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, std::data(values));
        xcb_map_window(c, window_);
        xcb_grab_pointer(c, 1, window_, static_cast<std::uint16_t>(kPointerEvents),
                         XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC, XCB_NONE, cursor_,
                         XCB_CURRENT_TIME);
        xcb_grab_keyboard(c, 1, window_, XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC,
                          XCB_GRAB_MODE_ASYNC);
    }
    void hide() {
        auto* const c = server_.get();
        xcb_ungrab_pointer(c, XCB_CURRENT_TIME);
        xcb_ungrab_keyboard(c, XCB_CURRENT_TIME);
        xcb_destroy_window(c, window_);
        window_ = XCB_NONE;
        shown_ = {};
        xcb_flush(c);
    }
    void select(PixelRect const& region) {
        if (region == shown_) return;
        PixelRegion left(shown_);
        left.subtract(region);
        pictures_.copy(pictures_.dimmed(), window_, left);
        // The old frame is part of the picture again where it is inside.
        auto const edges = frame(region);
        PixelRegion entered(region);
        entered.subtract(inside(shown_));
        entered.subtract(edges);
        pictures_.copy(pictures_.plain(), window_, entered);
        std::vector<xcb_rectangle_t> white;
        for (auto const& edge : edges.rects()) {
            white.push_back({static_cast<std::int16_t>(edge.x), static_cast<std::int16_t>(edge.y),
                             static_cast<std::uint16_t>(edge.width),
                             static_cast<std::uint16_t>(edge.height)});
        }
        xcb_poly_fill_rectangle(server_.get(), window_, whiteGc_,
                                static_cast<std::uint32_t>(white.size()), white.data());
        shown_ = region;
    }

private:
    static PixelRect inside(PixelRect const& region) {
        return {region.x + 1, region.y + 1, region.width - 2, region.height - 2};
    }
    static PixelRegion frame(PixelRect const& region) {
        PixelRegion edges(region);
        edges.subtract(inside(region));
        return edges;
    }

    Server const& server_;
    Pictures const& pictures_;
    xcb_gcontext_t whiteGc_;
    xcb_cursor_t cursor_;
    xcb_window_t window_ = XCB_NONE;
    PixelRect shown_;
};

/// Offers one PNG on the clipboard, in one piece.
class Clipboard {
public:
    explicit Clipboard(Server const& server)
        : server_(server), window_(xcb_generate_id(server.get())),
          clipboard_(server.atom("CLIPBOARD")), targets_(server.atom("TARGETS")),
          type_(server.atom("image/png")) {
        xcb_create_window(server.get(), 0, window_, server.root(), -5, -5, 1, 1, 0,
                          XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    }

    void offer(std::vector<std::uint8_t> png) {
        png_ = std::move(png);
        xcb_set_selection_owner(server_.get(), window_, clipboard_, XCB_CURRENT_TIME);
        xcb_flush(server_.get());
    }
    void answer(xcb_selection_request_event_t const& request) const {
        auto* const c = server_.get();
        xcb_selection_notify_event_t notify{};
        notify.response_type = XCB_SELECTION_NOTIFY;
        notify.time = request.time;
        notify.requestor = request.requestor;
        notify.selection = request.selection;
        notify.target = request.target;
        notify.property = request.property;
        if (request.target == targets_) {
            xcb_atom_t const known[] = {targets_, type_};
            xcb_change_property(c, XCB_PROP_MODE_REPLACE, request.requestor, request.property,
                                XCB_ATOM_ATOM, 32, std::size(known), std::data(known));
        } else if (request.target == type_) {
            xcb_change_property(c, XCB_PROP_MODE_REPLACE, request.requestor, request.property,
                                type_, 8, static_cast<std::uint32_t>(png_.size()), png_.data());
        } else {
            notify.property = XCB_NONE;
        }
        xcb_send_event(c, 0, request.requestor, 0, reinterpret_cast<char const*>(&notify));
        xcb_flush(c);
    }

private:
    Server const& server_;
    xcb_window_t window_;
    xcb_atom_t clipboard_;
    xcb_atom_t targets_;
    xcb_atom_t type_;
    std::vector<std::uint8_t> png_;
};

class Yardstick {
public:
    Yardstick() : hotkey_(server_.keycode(XK_c)), escape_(server_.keycode(XK_Escape)) {
        xcb_grab_key(server_.get(), 0, server_.root(), XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1,
                     hotkey_, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
        xcb_flush(server_.get());
    }

    /// Until the server goes away.
    void run() {
        while (Reply<xcb_generic_event_t> event{xcb_wait_for_event(server_.get())}) {
            do {
                handle(*event);
                event.reset(xcb_poll_for_event(server_.get()));
            } while (event);
            // Of all motions that had arrived only the newest is shown.
            if (isDragging_ && !region_.isEmpty()) overlay_.select(region_);
            xcb_flush(server_.get());
        }
    }

private:
    void handle(xcb_generic_event_t const& event) {
        switch (event.response_type & 0x7f) {
        case XCB_KEY_PRESS: press(reinterpret_cast<xcb_key_press_event_t const&>(event)); return;
        case XCB_BUTTON_PRESS: {
            auto const& button = reinterpret_cast<xcb_button_press_event_t const&>(event);
            isDragging_ = overlay_.isShown();
            startX_ = button.root_x;
            startY_ = button.root_y;
            region_ = {};
            return;
        }
        case XCB_MOTION_NOTIFY: {
            auto const& motion = reinterpret_cast<xcb_motion_notify_event_t const&>(event);
            region_ = {std::min<std::int64_t>(startX_, motion.root_x),
                       std::min<std::int64_t>(startY_, motion.root_y),
                       std::abs(startX_ - motion.root_x), std::abs(startY_ - motion.root_y)};
            return;
        }
        case XCB_BUTTON_RELEASE: finish(); return;
        case XCB_SELECTION_REQUEST:
            clipboard_.answer(reinterpret_cast<xcb_selection_request_event_t const&>(event));
            return;
        default: return;
        }
    }
    void press(xcb_key_press_event_t const& key) {
        if (key.detail == hotkey_ && !overlay_.isShown()) {
            pictures_.take();
            overlay_.show();
        } else if (key.detail == escape_ && overlay_.isShown()) {
            isDragging_ = false;
            overlay_.hide();
        }
    }
    void finish() {
        if (!isDragging_) return;
        isDragging_ = false;
        if (region_.isEmpty()) {
            overlay_.hide();
            return;
        }
        // The server reads the pixels first and then repaints the desktop, while this compresses.
        auto const pixels = pictures_.read(region_);
        overlay_.hide();
        clipboard_.offer(trovel::encodePng(pixels, 1));
    }

    Server server_;
    Pictures pictures_{server_};
    Overlay overlay_{server_, pictures_};
    Clipboard clipboard_{server_};
    xcb_keycode_t hotkey_;
    xcb_keycode_t escape_;
    bool isDragging_ = false;
    std::int64_t startX_ = 0;
    std::int64_t startY_ = 0;
    PixelRect region_;
};

} // namespace

int main() {
    Yardstick().run();
    return 0;
}
