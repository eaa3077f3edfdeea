#pragma once

#include "platform/linux/x11/monitors.h"
#include "platform/linux/x11/overlay/overlay_painter.h"
#include "platform/ui/window_host.h"

#include <xcb/xcb.h>

#include <optional>
#include <vector>

namespace trovel {

class OverlayHost;
class Window;

/// One screen's overlay on the X server. The native window exists only while it is shown.
class OverlayPeer final : public WindowPeer {
public:
    OverlayPeer(OverlayHost& host, Window& window);
    ~OverlayPeer() override;

    void windowDidChange() override;
    void viewDidChange(View const& view) override;
    void viewNeedsDisplay(View const& view) override;
    void orderFrontRegardless() override;
    void makeKeyAndOrderFront() override;
    void orderOut() override;
    void center() override {} // it covers its screen

    [[nodiscard]] Window& window() const { return window_; }
    [[nodiscard]] xcb_window_t nativeWindow() const { return native_; }
    [[nodiscard]] bool isShown() const { return native_ != XCB_NONE; }

    /// The monitor that it covers; none before it was shown, or when the screen is gone.
    [[nodiscard]] std::optional<Monitor> const& monitor() const { return monitor_; }

    void paintIfNeeded();
    void exposed(xcb_expose_event_t const& expose);

private:
    void show();
    void createNative();
    [[nodiscard]] std::vector<CanvasOperation> record(TextRasterizer& text) const;

    OverlayHost& host_;
    Window& window_;
    std::optional<Monitor> monitor_;
    xcb_window_t native_ = XCB_NONE;
    std::optional<OverlayPainter> painter_;
    TextRasterizer* text_ = nullptr;
    bool needsDisplay_ = false;
    bool isMappingExposed_ = false;
};

} // namespace trovel
