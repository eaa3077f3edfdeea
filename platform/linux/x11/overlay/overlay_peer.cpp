#include "platform/linux/x11/overlay/overlay_peer.h"

#include "platform/linux/x11/connection.h"
#include "platform/linux/x11/overlay/overlay_host.h"
#include "platform/linux/x11/root_pixels.h"
#include "platform/ui/view.h"
#include "platform/ui/window.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <utility>

namespace trovel {

OverlayPeer::OverlayPeer(OverlayHost& host, Window& window) : host_(host), window_(window) {
    host_.attach(*this);
}

OverlayPeer::~OverlayPeer() {
    // First, because a window that ends is not told that it is no longer key.
    host_.detach(*this);
    orderOut();
}

void OverlayPeer::windowDidChange() {
    if (window_.contentView()) viewNeedsDisplay(*window_.contentView());
}

void OverlayPeer::viewDidChange(View const& view) {
    viewNeedsDisplay(view);
}

void OverlayPeer::viewNeedsDisplay(View const&) {
    needsDisplay_ = true;
    if (isShown()) host_.schedulePainting();
}

void OverlayPeer::orderFrontRegardless() {
    show();
    host_.x_.flush();
}

void OverlayPeer::makeKeyAndOrderFront() {
    show();
    host_.x_.flush();
    if (window_.canBecomeKey()) host_.makeKey(this);
}

void OverlayPeer::orderOut() {
    if (!isShown()) return;
    painter_.reset();
    host_.takeAway(std::exchange(native_, XCB_NONE));
    host_.peerDidHide();
}

void OverlayPeer::show() {
    if (!isShown()) {
        createNative();
        return;
    }
    std::uint32_t const above = XCB_STACK_MODE_ABOVE;
    xcb_configure_window(host_.x_.get(), native_, XCB_CONFIG_WINDOW_STACK_MODE, &above);
}

void OverlayPeer::createNative() {
    auto const monitors = listMonitors(host_.x_);
    auto const isOurs = [&](Monitor const& monitor) {
        return frameOf(monitor, monitors.front()) == window_.attributes().contentRect;
    };
    auto const found = std::ranges::find_if(monitors, isOurs);
    auto const* const snapshot = host_.snapshot();
    // A screen that went away meanwhile has nothing to cover.
    if (found == monitors.end() || snapshot == nullptr) return;
    monitor_ = *found;
    text_ = &host_.rasterizer(monitor_->scale);

    auto& x = host_.x_;
    native_ = xcb_generate_id(x.get());
    // Without a background the server leaves what is on the screen: nothing flickers.
    std::uint32_t const values[] = {XCB_BACK_PIXMAP_NONE, /*override_redirect=*/1,
                                    XCB_EVENT_MASK_EXPOSURE};
    auto const& area = monitor_->area;
    xcb_create_window(x.get(), XCB_COPY_FROM_PARENT, native_, x.root(),
                      static_cast<std::int16_t>(area.x), static_cast<std::int16_t>(area.y),
                      static_cast<std::uint16_t>(area.width),
                      static_cast<std::uint16_t>(area.height), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                      XCB_COPY_FROM_PARENT,
                      XCB_CW_BACK_PIXMAP | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values);
    // Lets people tell a compositor to leave it alone.
    constexpr std::string_view kClass("trovel\0Trovel\0", 14);
    xcb_change_property(x.get(), XCB_PROP_MODE_REPLACE, native_, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING,
                        8, std::size(kClass), kClass.data());
    xcb_map_window(x.get(), native_);
    // A compositor gives the window pixels of its own; else it has those of the screen, which the
    // snapshot was just taken of.
    auto const ground =
        host_.hasCompositor() ? OverlayPainter::Ground::unknown : OverlayPainter::Ground::snapshot;
    painter_.emplace(x, host_.render_, *text_, *snapshot, area, native_, ground);
    painter_->show(record(*text_));
    isMappingExposed_ = false;
    needsDisplay_ = false;
}

std::vector<CanvasOperation> OverlayPeer::record(TextRasterizer& text) const {
    CanvasRecording recording(
        [&text](std::string_view line, Font font) { return text.sizeOfText(line, font); });
    auto const* const view = dynamic_cast<CanvasView const*>(window_.contentView().get());
    if (view != nullptr) view->draw(recording);
    return recording.operations();
}

void OverlayPeer::paintIfNeeded() {
    if (!needsDisplay_ || !isShown()) return;
    needsDisplay_ = false;
    painter_->show(record(*text_));
}

void OverlayPeer::exposed(xcb_expose_event_t const& expose) {
    if (!isShown()) return;
    // The mapping exposes the whole window, which has been painted by then.
    bool const isWhole =
        expose.width == monitor_->area.width && expose.height == monitor_->area.height;
    if (isWhole && !std::exchange(isMappingExposed_, true)) return;
    painter_->repaint({expose.x, expose.y, expose.width, expose.height});
}

} // namespace trovel
