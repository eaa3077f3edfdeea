#include "platform/linux/qt/window_host_linux.h"

#include "platform/linux/qt/accessible_view.h"
#include "platform/ui/window.h"

#include <algorithm>
#include <utility>

namespace trovel {

std::unique_ptr<WindowPeer> WindowHostLinux::makePeer(Window& window) {
    auto const& attributes = window.attributes();
    bool const isOverlay =
        attributes.styleMask == kStyleBorderless && attributes.level >= kScreenSaverWindowLevel;
    if (isOverlay) return makeOverlay_(window);
    // Not at the start of the program: most runs never open a window.
    if (!std::exchange(hadWindow_, true)) installAccessibleWindows();
    auto const onFront = [this](WindowPeerLinux& peer) {
        std::erase(frontToBack_, &peer);
        frontToBack_.insert(frontToBack_.begin(), &peer);
    };
    auto const onEnd = [this](WindowPeerLinux& peer) { std::erase(frontToBack_, &peer); };
    return std::make_unique<WindowPeerLinux>(window, services_, onFront, onEnd);
}

void WindowHostLinux::bringForward() {
    for (auto* const peer : frontToBack_) {
        if (peer->bringForward()) return;
    }
}

} // namespace trovel
