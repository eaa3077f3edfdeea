#pragma once

#include "platform/linux/qt/window_peer_linux.h"
#include "platform/ui/window_host.h"

#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace trovel {

/// Chooses the mirror that fits a window: overlays are the display system's affair, all others are
/// windows of Qt's.
class WindowHostLinux final : public WindowHost {
public:
    /// Makes the mirror of an overlay window, which covers a whole screen.
    using MakeOverlay = std::function<std::unique_ptr<WindowPeer>(Window& window)>;

    /// What is handed in, and what `services` refer to, outlives it.
    WindowHostLinux(MakeOverlay makeOverlay, WindowServices services)
        : makeOverlay_(std::move(makeOverlay)), services_(std::move(services)) {}
    ~WindowHostLinux() = default;

    [[nodiscard]] std::unique_ptr<WindowPeer> makePeer(Window& window) override;

    /// Brings the window that was last put in front to the front of all programs and gives it the
    /// keyboard; nothing when no window is shown.
    void bringForward();

private:
    MakeOverlay makeOverlay_;
    WindowServices services_;
    std::vector<WindowPeerLinux*> frontToBack_;
    bool hadWindow_ = false;
};

} // namespace trovel
