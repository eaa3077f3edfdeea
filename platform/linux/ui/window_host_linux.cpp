#include "platform/linux/ui/window_host_linux.h"

#include "platform/fatal.h"
#include "platform/linux/ui/overlay_host.h"
#include "platform/ui/window.h"

namespace trovel {

std::unique_ptr<WindowPeer> WindowHostLinux::makePeer(Window& window) {
    auto const& attributes = window.attributes();
    bool const isOverlay =
        attributes.styleMask == kStyleBorderless && attributes.level >= kScreenSaverWindowLevel;
    if (!isOverlay) fatal("a window that is no overlay has no mirror on this desktop");
    return overlays_.makePeer(window);
}

} // namespace trovel
