#include "platform/linux/x11/system_tray_x11.h"

#include "platform/linux/x11/connection.h"
#include "platform/linux/x11/properties.h"

#include <xcb/xfixes.h>

#include <utility>

namespace trovel {

namespace {

constexpr char const* kSystemTray = "_NET_SYSTEM_TRAY_S0";

} // namespace

bool SystemTrayX11::hasManager() {
    return selectionOwner(x_, kSystemTray) != XCB_WINDOW_NONE;
}

Registration SystemTrayX11::watch(std::function<void()> onChange) {
    auto const* const extension = x_.extension(xcb_xfixes_id);
    if (extension == nullptr) return {};
    xcb_discard_reply(x_.get(), xcb_xfixes_query_version(x_.get(), XCB_XFIXES_MAJOR_VERSION,
                                                         XCB_XFIXES_MINOR_VERSION)
                                    .sequence);
    xcb_xfixes_select_selection_input(x_.get(), x_.root(), x_.atom(kSystemTray),
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
    x_.flush();
    return x_.addEventHandler([this, type = extension->first_event + XCB_XFIXES_SELECTION_NOTIFY,
                               onChange = std::move(onChange)](auto const& event) {
        if (eventType(event) != type) return;
        auto const& change = eventAs<xcb_xfixes_selection_notify_event_t>(event);
        if (change.selection == x_.atom(kSystemTray)) onChange();
    });
}

} // namespace trovel
