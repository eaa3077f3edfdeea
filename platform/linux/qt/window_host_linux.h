#pragma once

#include "platform/linux/qt/window_peer_linux.h"
#include "platform/ui/window_host.h"

#include <memory>
#include <vector>

namespace trovel {

class OverlayHost;

/// Chooses the mirror that fits a window: overlays cover screens by way of raw xcb, all others are
/// windows of Qt's.
class WindowHostLinux final : public WindowHost {
public:
    /// `overlays` and what `services` refer to outlive it.
    WindowHostLinux(OverlayHost& overlays, WindowServices services)
        : overlays_(overlays), services_(std::move(services)) {}
    ~WindowHostLinux() = default;

    [[nodiscard]] std::unique_ptr<WindowPeer> makePeer(Window& window) override;

    /// Brings the window that was last put in front to the front of all programs and gives it the
    /// keyboard; nothing when no window is shown.
    void bringForward();

private:
    OverlayHost& overlays_;
    WindowServices services_;
    std::vector<WindowPeerLinux*> frontToBack_;
    bool hadWindow_ = false;
};

} // namespace trovel
