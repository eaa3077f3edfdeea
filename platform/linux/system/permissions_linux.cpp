#include "platform/linux/system/permissions_linux.h"

#include "platform/alerts.h"
#include "platform/linux/x11/connection.h"

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

PermissionsLinux::PermissionsLinux(XcbConnection const& connection, ShowAlert showAlert)
    : connection_(connection), showAlert_(std::move(showAlert)),
      isXwayland_(hasXwaylandExtension(connection)) {}

PermissionsLinux::~PermissionsLinux() = default;

bool PermissionsLinux::isAccessibilityTrusted() const {
    return preflightScreenCapture() && connection_.extension(xcb_test_id) != nullptr;
}

bool PermissionsLinux::preflightScreenCapture() const {
    return !isXwayland_ && !isWaylandSession();
}

void PermissionsLinux::promptForAccessibility() {
    if (!isAccessibilityTrusted()) explain();
}

void PermissionsLinux::requestScreenCapture() {
    if (!preflightScreenCapture()) explain();
}

void PermissionsLinux::explain() {
    auto const* text = "Nothing is missing: on this desktop Trovel may see the screen and send "
                       "clicks and keys to other windows.";
    if (!preflightScreenCapture()) {
        text = "This is a Wayland session. It shows Trovel neither the screen nor the windows of "
               "other applications, and there is no setting that would.\n\nLog out, choose an "
               "X11 (Xorg) session where you log in, and start Trovel there.";
    } else if (!isAccessibilityTrusted()) {
        text = "This X server does not have the XTEST extension, through which Trovel clicks into "
               "other windows and pastes.\n\nIt has to be started with this extension before "
               "Trovel can work.";
    }
    showAlert_({"Trovel", text, AlertStyle::informational, {"OK"}, true});
}

} // namespace trovel
