#include "platform/linux/x11/connection.h"

#include "platform/linux/x11/xkb.h"

#include <xcb/damage.h>
#include <xcb/randr.h>
#include <xcb/render.h>
#include <xcb/shm.h>
#include <xcb/xfixes.h>
#include <xcb/xtest.h>

#include <utility>

namespace trovel {

namespace {

xcb_screen_t* screenAt(xcb_connection_t* connection, int number) {
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (; screens.rem > 0 && number > 0; --number) xcb_screen_next(&screens);
    return screens.rem > 0 ? screens.data : nullptr;
}

} // namespace

std::unique_ptr<XcbConnection> XcbConnection::open() {
    int number = 0;
    auto* const connection = xcb_connect(nullptr, &number);
    auto* const screen =
        xcb_connection_has_error(connection) == 0 ? screenAt(connection, number) : nullptr;
    if (screen == nullptr) {
        xcb_disconnect(connection);
        return nullptr;
    }
    // All questions go out together, so that the first answers cost one round trip for all.
    for (auto* id : {&xcb_randr_id, &xcb_shm_id, &xcb_test_id, &xcb_render_id, &xcb_xfixes_id,
                     &xcb_damage_id, &xcb_xkb_id}) {
        xcb_prefetch_extension_data(connection, id);
    }
    xcb_prefetch_maximum_request_length(connection);
    return std::unique_ptr<XcbConnection>(new XcbConnection(connection, screen, number));
}

XcbConnection::XcbConnection(xcb_connection_t* connection, xcb_screen_t* screen, int screenNumber)
    : connection_(connection), screen_(screen), screenNumber_(screenNumber),
      eventHandlers_(std::make_shared<Handlers<EventHandler>>()),
      batchHandlers_(std::make_shared<Handlers<Handler>>()) {}

XcbConnection::~XcbConnection() {
    xcb_disconnect(connection_);
}

xcb_query_extension_reply_t const* XcbConnection::extension(xcb_extension_t& id) const {
    auto const* const data = xcb_get_extension_data(connection_, &id);
    return data != nullptr && data->present != 0 ? data : nullptr;
}

xcb_atom_t XcbConnection::atom(std::string_view name) {
    if (auto const known = atoms_.find(name); known != atoms_.end()) return known->second;
    auto const answer = reply<xcb_intern_atom_reply>(
        xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.data()));
    if (!answer) return XCB_ATOM_NONE;
    return atoms_.emplace(name, answer->atom).first->second;
}

bool XcbConnection::succeeded(xcb_void_cookie_t cookie) const {
    auto const error = XcbPointer<xcb_generic_error_t>(xcb_request_check(connection_, cookie));
    return !error && !isLost();
}

template <class Function>
Registration XcbConnection::add(std::shared_ptr<Handlers<Function>> const& handlers,
                                Function handler) {
    auto const key = handlers->nextKey++;
    handlers->byKey.emplace(key, std::make_shared<Function const>(std::move(handler)));
    return Registration([weak = std::weak_ptr(handlers), key] {
        if (auto const alive = weak.lock()) alive->byKey.erase(key);
    });
}

template <class Function, class... Arguments>
void XcbConnection::callAll(Handlers<Function> const& handlers, Arguments const&... arguments) {
    // A handler may change the list, so the walk goes from key to key and holds what it calls.
    for (auto next = handlers.byKey.begin(); next != handlers.byKey.end();) {
        auto const key = next->first;
        auto const handler = next->second;
        (*handler)(arguments...);
        next = handlers.byKey.upper_bound(key);
    }
}

Registration XcbConnection::addEventHandler(EventHandler handler) {
    return add(eventHandlers_, std::move(handler));
}

Registration XcbConnection::addBatchHandler(Handler handler) {
    return add(batchHandlers_, std::move(handler));
}

void XcbConnection::processEvents() {
    processAll(xcb_poll_for_event);
}

void XcbConnection::processQueuedEvents() {
    processAll(xcb_poll_for_queued_event);
}

void XcbConnection::processAll(xcb_generic_event_t* (*next)(xcb_connection_t*)) {
    auto const events = eventHandlers_;
    auto const batches = batchHandlers_;
    bool any = false;
    while (auto const event = XcbPointer<xcb_generic_event_t>(next(connection_))) {
        constexpr std::uint8_t kError = 0;
        if (event->response_type == kError) continue;
        callAll(*events, *event);
        any = true;
    }
    if (any) callAll(*batches);
    if (isLost()) {
        if (auto const lost = std::exchange(onLost_, nullptr)) lost();
    }
}

} // namespace trovel
