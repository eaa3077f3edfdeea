#pragma once

#include "platform/ui/window_host.h"

namespace trovel {

/// Makes AppKit windows.
class WindowHostMac final : public WindowHost {
public:
    WindowHostMac() = default;

    [[nodiscard]] std::unique_ptr<WindowPeer> makePeer(Window& window) override;
};

} // namespace trovel
