#pragma once

#include "platform/ui/window_host.h"

namespace trovel {

class OverlayHost;

/// Chooses the mirror that fits a window: overlays cover screens by way of raw xcb.
class WindowHostLinux final : public WindowHost {
public:
    /// `overlays` outlives it.
    explicit WindowHostLinux(OverlayHost& overlays) : overlays_(overlays) {}
    ~WindowHostLinux() = default;

    [[nodiscard]] std::unique_ptr<WindowPeer> makePeer(Window& window) override;

private:
    OverlayHost& overlays_;
};

} // namespace trovel
