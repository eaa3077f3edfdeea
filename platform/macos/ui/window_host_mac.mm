#include "platform/macos/ui/window_host_mac.h"

#include "platform/macos/ui/window_peer_mac.h"

namespace trovel {

std::unique_ptr<WindowPeer> WindowHostMac::makePeer(Window& window) {
    return std::make_unique<WindowPeerMac>(window);
}

} // namespace trovel
