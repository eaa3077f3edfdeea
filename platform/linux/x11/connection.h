#pragma once

#include "platform/registration.h"

#include <xcb/xcb.h>

#include <cstdint>
#include <cstdlib>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace trovel {

struct XcbFree {
    void operator()(void* memory) const { std::free(memory); }
};

/// A reply, an event or an error that xcb allocated.
template <class T>
using XcbPointer = std::unique_ptr<T, XcbFree>;

/// The kind of an event, whoever sent it.
[[nodiscard]] inline std::uint8_t eventType(xcb_generic_event_t const& event) {
    return event.response_type & 0x7f;
}

/// The event as what its kind says it is: `eventAs<xcb_key_press_event_t>(event)`.
template <class Event>
[[nodiscard]] Event const& eventAs(xcb_generic_event_t const& event) {
    return reinterpret_cast<Event const&>(event);
}

/// A connection to the X server of the session and the way its events reach the program.
///
/// Requests may be made from the thread that owns the connection only; another thread opens one of
/// its own. Errors of requests that nobody checks are dropped: windows of other programs come and
/// go at any time.
class XcbConnection {
public:
    using EventHandler = std::function<void(xcb_generic_event_t const&)>;
    using Handler = std::function<void()>;

    /// Connects to the display that the environment names; null when there is none.
    [[nodiscard]] static std::unique_ptr<XcbConnection> open();

    XcbConnection(XcbConnection const&) = delete;
    XcbConnection& operator=(XcbConnection const&) = delete;
    ~XcbConnection();

    [[nodiscard]] xcb_connection_t* get() const { return connection_; }
    [[nodiscard]] xcb_screen_t const& screen() const { return *screen_; }
    /// The number of that screen on the server.
    [[nodiscard]] int screenNumber() const { return screenNumber_; }
    [[nodiscard]] xcb_window_t root() const { return screen_->root; }
    [[nodiscard]] bool isLost() const { return xcb_connection_has_error(connection_) != 0; }

    /// What the server says about an extension (`xcb_randr_id`, `xcb_shm_id` ...): its first event
    /// and error; null when it is not there. Valid as long as the connection.
    [[nodiscard]] xcb_query_extension_reply_t const* extension(xcb_extension_t& id) const;

    /// The atom of that name, made if need be. Asks the server once for each name.
    [[nodiscard]] xcb_atom_t atom(std::string_view name);

    /// The answer to a request, null when it failed: `x.reply<xcb_get_geometry_reply>(cookie)`.
    template <auto Function, class Cookie>
    [[nodiscard]] auto reply(Cookie cookie) const {
        auto* const answer = Function(connection_, cookie, nullptr);
        return XcbPointer<std::remove_pointer_t<decltype(answer)>>(answer);
    }

    /// Waits for the outcome of a request made by one of the `_checked` functions.
    [[nodiscard]] bool succeeded(xcb_void_cookie_t cookie) const;

    void flush() const { xcb_flush(connection_); }

    /// Shows `handler` every event until the registration ends. Handlers may add and end
    /// registrations, and may run an event loop of their own. A registration may outlive the
    /// connection.
    [[nodiscard]] Registration addEventHandler(EventHandler handler);

    /// Calls `handler` after each batch of events, once for all that had arrived together.
    [[nodiscard]] Registration addBatchHandler(Handler handler);

    /// Called once, when the server has gone away.
    void setLostHandler(Handler handler) { onLost_ = std::move(handler); }

    /// Handles every event that has arrived.
    void processEvents();

    /// Handles the events that xcb read while it waited for a reply. Nothing more would arrive on
    /// the socket to announce them, so this must run before the thread goes to sleep.
    void processQueuedEvents();

private:
    template <class Function>
    struct Handlers {
        std::map<std::uint64_t, std::shared_ptr<Function const>> byKey;
        std::uint64_t nextKey = 0;
    };

    XcbConnection(xcb_connection_t* connection, xcb_screen_t* screen, int screenNumber);

    template <class Function>
    static Registration add(std::shared_ptr<Handlers<Function>> const& handlers, Function handler);
    template <class Function, class... Arguments>
    static void callAll(Handlers<Function> const& handlers, Arguments const&... arguments);
    void processAll(xcb_generic_event_t* (*next)(xcb_connection_t*));

    xcb_connection_t* connection_;
    xcb_screen_t* screen_;
    int screenNumber_;
    std::map<std::string, xcb_atom_t, std::less<>> atoms_;
    std::shared_ptr<Handlers<EventHandler>> eventHandlers_;
    std::shared_ptr<Handlers<Handler>> batchHandlers_;
    Handler onLost_;
};

} // namespace trovel
