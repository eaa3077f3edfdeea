#include "platform/linux/x11/session_grants_x11.h"

#include "platform/linux/x11/connection.h"

#include <QByteArray>
#include <QtGlobal>

#include <xcb/xtest.h>

#include <string_view>

namespace trovel {

namespace {

bool isWaylandSession() {
    return qgetenv("XDG_SESSION_TYPE") == "wayland" ||
           !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
}

/// X servers that run on a Wayland compositor say so with an extension of that name.
bool hasXwaylandExtension(XcbConnection const& connection) {
    constexpr std::string_view kName = "XWAYLAND";
    auto const answer = connection.reply<xcb_query_extension_reply>(
        xcb_query_extension(connection.get(), kName.size(), kName.data()));
    return answer && answer->present != 0;
}

} // namespace

SessionGrantsX11::SessionGrantsX11(XcbConnection const& connection)
    : connection_(connection), isXwayland_(hasXwaylandExtension(connection)) {}

SessionGrants SessionGrantsX11::read() const {
    if (isXwayland_ || isWaylandSession()) {
        return {.explanation =
                    "This is a Wayland session. It shows Trovel neither the screen nor the windows "
                    "of other applications, and there is no setting that would.\n\nLog out, choose "
                    "an X11 (Xorg) session where you log in, and start Trovel there."};
    }
    if (connection_.extension(xcb_test_id) == nullptr) {
        return {.mayCapture = true,
                .explanation =
                    "This X server does not have the XTEST extension, through which Trovel clicks "
                    "into other windows and pastes.\n\nIt has to be started with this extension "
                    "before Trovel can work."};
    }
    return {.mayCapture = true, .maySend = true};
}

} // namespace trovel
