#include "platform/linux/permissions_linux.h"

#include "platform/linux/xcb/connection.h"

#include <xcb/xtest.h>

#include <cstdlib>
#include <string_view>

namespace trovel {

namespace {

std::string_view environmentValue(char const* name) {
    auto const* const value = std::getenv(name);
    return value ? value : "";
}

bool isWaylandSession() {
    return environmentValue("XDG_SESSION_TYPE") == "wayland" ||
           !environmentValue("WAYLAND_DISPLAY").empty();
}

/// X servers that run on a Wayland compositor say so with an extension of that name.
bool hasXwaylandExtension(XcbConnection const& connection) {
    constexpr std::string_view kName = "XWAYLAND";
    auto const answer = connection.reply<xcb_query_extension_reply>(
        xcb_query_extension(connection.get(), kName.size(), kName.data()));
    return answer && answer->present != 0;
}

} // namespace

PermissionsLinux::PermissionsLinux(XcbConnection const& connection)
    : connection_(connection), isXwayland_(hasXwaylandExtension(connection)) {}

PermissionsLinux::~PermissionsLinux() = default;

bool PermissionsLinux::isAccessibilityTrusted() const {
    return preflightScreenCapture() && connection_.extension(xcb_test_id) != nullptr;
}

bool PermissionsLinux::preflightScreenCapture() const {
    return !isXwayland_ && !isWaylandSession();
}

} // namespace trovel
