#include "platform/linux/x11/window_source_x11.h"

#include "platform/linux/files/plain_text.h"
#include "platform/linux/x11/properties.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <string_view>
#include <utility>

namespace trovel {

namespace {

using Windows = std::vector<xcb_window_t>;

constexpr std::uint32_t kTextWords = 512; // 2 KiB; nobody needs a megabyte of a window's class
constexpr std::uint32_t kListWords = 0x10000;

// The window manager wraps a client in a frame, and some put another window between the two.
constexpr int kDeepestClient = 2;

constexpr std::size_t kMostRemembered = 256;

WindowId idOf(xcb_window_t window) {
    return static_cast<WindowId>(window);
}

xcb_window_t windowOf(WindowId id) {
    return static_cast<xcb_window_t>(id);
}

bool contains(Windows const& windows, xcb_window_t window) {
    return std::ranges::find(windows, window) != windows.end();
}

bool isOnThisMachine(std::string_view machine) {
    std::array<char, 256> name{};
    gethostname(name.data(), name.size() - 1);
    return machine.empty() || machine == name.data();
}

/// The server's time now. It comes with an event only, and to wait for one on the shared connection
/// would hold up the events of everybody else, so this takes a connection of its own.
xcb_timestamp_t serverTime() {
    auto const own = XcbConnection::open();
    if (!own) return XCB_CURRENT_TIME;
    auto const window = xcb_generate_id(own->get());
    std::uint32_t const mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(own->get(), 0, window, own->root(), 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &mask);
    xcb_change_property(own->get(), XCB_PROP_MODE_APPEND, window, XCB_ATOM_WM_NAME, XCB_ATOM_STRING,
                        8, 0, "");
    own->flush();
    while (auto const event = XcbPointer<xcb_generic_event_t>(xcb_wait_for_event(own->get()))) {
        if (eventType(*event) != XCB_PROPERTY_NOTIFY) continue;
        return eventAs<xcb_property_notify_event_t>(*event).time;
    }
    return XCB_CURRENT_TIME;
}

} // namespace

/// What the root window says. The lists are empty where there is no window manager that keeps them.
struct WindowSourceX11::Root {
    bool listsClients = false;
    bool knowsActive = false;
    Windows clients;
    Windows stacking; // from the bottom
    xcb_window_t active = XCB_WINDOW_NONE;
};

struct WindowSourceX11::ClientCookies {
    xcb_get_property_cookie_t wmClass;
    xcb_get_property_cookie_t gtkApplicationId;
    xcb_get_property_cookie_t process;
    xcb_get_property_cookie_t machine;
    xcb_get_property_cookie_t types;
    xcb_get_property_cookie_t states;
    xcb_get_property_cookie_t transientFor;
};

WindowSourceX11::WindowSourceX11(XcbConnection& connection) : connection_(connection) {
    auto const attributes = connection_.reply<xcb_get_window_attributes_reply>(
        xcb_get_window_attributes(connection_.get(), connection_.root()));
    // A connection has one event mask for each window, and somebody else may have asked for more.
    std::uint32_t const mask =
        XCB_EVENT_MASK_PROPERTY_CHANGE | (attributes ? attributes->your_event_mask : 0);
    xcb_change_window_attributes(connection_.get(), connection_.root(), XCB_CW_EVENT_MASK, &mask);
    connection_.flush();
    events_ = connection_.addEventHandler([this](auto const& event) { handle(event); });
}

WindowList WindowSourceX11::read() {
    auto const root = readRoot();
    WindowList list;
    auto const windows = root.listsClients ? root.clients : clientsInTree();
    list.clients = readClients(windows);

    Windows present;
    present.reserve(list.clients.size());
    for (auto const& client : list.clients) present.push_back(windowOf(client.id));
    auto active = root.knowsActive ? root.active : focusedClient(present);
    if (!contains(present, active)) active = XCB_WINDOW_NONE;
    list.active = idOf(active);
    noteActive(active);
    std::erase_if(recent_, [&](auto window) { return !contains(present, window); });

    auto byRecency = recent_;
    auto const addFromTheTop = [&](Windows const& windowsFromTheBottom) {
        for (auto at = windowsFromTheBottom.rbegin(); at != windowsFromTheBottom.rend(); ++at) {
            if (contains(present, *at) && !contains(byRecency, *at)) byRecency.push_back(*at);
        }
    };
    addFromTheTop(root.stacking);
    addFromTheTop(present);
    for (auto const window : byRecency) list.byRecency.push_back(idOf(window));
    return list;
}

WindowSourceX11::Root WindowSourceX11::readRoot() {
    auto const ask = [this](std::string_view name) {
        return requestProperty(connection_, connection_.root(), name, kListWords);
    };
    auto const check = ask("_NET_SUPPORTING_WM_CHECK");
    auto const supported = ask("_NET_SUPPORTED");
    auto const clients = ask("_NET_CLIENT_LIST");
    auto const stacking = ask("_NET_CLIENT_LIST_STACKING");
    auto const active = ask("_NET_ACTIVE_WINDOW");
    auto const get = [this](auto cookie) { return wordsOf(propertyFrom(connection_, cookie)); };

    auto const manager = wordOf(propertyFrom(connection_, check));
    auto const features = get(supported);
    Root root{.clients = get(clients), .stacking = get(stacking)};
    root.active = wordOf(propertyFrom(connection_, active));
    // What a window manager that is gone has left behind says nothing; its own window went with it.
    auto const self =
        manager == XCB_WINDOW_NONE
            ? xcb_window_t{XCB_WINDOW_NONE}
            : wordOf(readProperty(connection_, manager, "_NET_SUPPORTING_WM_CHECK", 1));
    if (manager == XCB_WINDOW_NONE || self != manager) return {};
    root.listsClients = contains(features, connection_.atom("_NET_CLIENT_LIST"));
    root.knowsActive = contains(features, connection_.atom("_NET_ACTIVE_WINDOW"));
    return root;
}

WindowSourceX11::ClientCookies WindowSourceX11::requestClient(xcb_window_t window) {
    auto const ask = [&](std::string_view name) {
        return requestProperty(connection_, window, name, kTextWords);
    };
    return {.wmClass = ask("WM_CLASS"),
            .gtkApplicationId = ask("_GTK_APPLICATION_ID"),
            .process = ask("_NET_WM_PID"),
            .machine = ask("WM_CLIENT_MACHINE"),
            .types = ask("_NET_WM_WINDOW_TYPE"),
            .states = ask("_NET_WM_STATE"),
            .transientFor = ask("WM_TRANSIENT_FOR")};
}

std::vector<ClientWindow> WindowSourceX11::readClients(Windows const& windows) {
    // All questions go out before the first answer is read: one round trip for all windows.
    std::vector<ClientCookies> cookies;
    cookies.reserve(windows.size());
    for (auto const window : windows) cookies.push_back(requestClient(window));
    std::vector<ClientWindow> clients;
    for (std::size_t i = 0; i < windows.size(); ++i) {
        if (auto client = clientFrom(windows[i], cookies[i])) clients.push_back(std::move(*client));
    }
    return clients;
}

std::optional<ClientWindow> WindowSourceX11::clientFrom(xcb_window_t window,
                                                        ClientCookies const& cookies) {
    // Every answer is taken, whatever comes of it, or it would wait in xcb for ever.
    auto const get = [this](auto cookie) { return propertyFrom(connection_, cookie); };
    auto const wmClass = get(cookies.wmClass);
    auto const gtkApplicationId = get(cookies.gtkApplicationId);
    auto const process = get(cookies.process);
    auto const machine = get(cookies.machine);
    auto const types = wordsOf(get(cookies.types));
    auto const states = wordsOf(get(cookies.states));
    auto const transientFor = wordOf(get(cookies.transientFor));
    if (!wmClass) return std::nullopt; // the window is gone

    auto const kind = kindOf(types, transientFor != XCB_WINDOW_NONE);
    if (kind == WindowKind::furniture) return std::nullopt;
    ClientWindow client;
    client.id = idOf(window);
    auto const names = bytesOf(wmClass);
    auto const end = std::min(names.find('\0'), names.size());
    client.properties.instance = plainText(names.substr(0, end));
    auto const rest = names.substr(std::min(end + 1, names.size()));
    client.properties.className = plainText(rest.substr(0, rest.find('\0')));
    client.properties.gtkApplicationId = plainText(bytesOf(gtkApplicationId));
    if (isOnThisMachine(bytesOf(machine))) {
        client.properties.systemProcess = static_cast<std::int32_t>(wordOf(process));
    }
    client.isInSwitcher = kind == WindowKind::normal &&
                          !contains(states, connection_.atom("_NET_WM_STATE_SKIP_TASKBAR"));
    return client;
}

WindowSourceX11::WindowKind WindowSourceX11::kindOf(std::vector<xcb_atom_t> const& types,
                                                    bool isTransient) {
    auto const is = [&](std::string_view name, xcb_atom_t type) {
        return type == connection_.atom(std::string("_NET_WM_WINDOW_TYPE_").append(name));
    };
    // A window lists its types in the order of preference; the first known one counts.
    for (auto const type : types) {
        if (is("NORMAL", type)) return WindowKind::normal;
        for (auto const* const name : {"DIALOG", "UTILITY", "TOOLBAR", "MENU", "SPLASH"}) {
            if (is(name, type)) return WindowKind::auxiliary;
        }
        for (auto const* const name : {"DESKTOP", "DOCK", "NOTIFICATION", "TOOLTIP", "DND", "COMBO",
                                       "DROPDOWN_MENU", "POPUP_MENU"}) {
            if (is(name, type)) return WindowKind::furniture;
        }
    }
    return isTransient ? WindowKind::auxiliary : WindowKind::normal;
}

std::vector<xcb_window_t> WindowSourceX11::clientsInTree() {
    struct Candidate {
        std::size_t top;
        xcb_window_t window;
    };
    auto const tops = childrenOf(connection_.root());
    Windows clients(tops.size(), XCB_WINDOW_NONE);
    std::vector<Candidate> level;
    level.reserve(tops.size());
    for (std::size_t top = 0; top < tops.size(); ++top) level.push_back({top, tops[top]});

    for (int depth = 0; depth <= kDeepestClient && !level.empty(); ++depth) {
        std::vector<std::pair<xcb_get_property_cookie_t, xcb_query_tree_cookie_t>> cookies;
        cookies.reserve(level.size());
        for (auto const& candidate : level) {
            cookies.emplace_back(requestProperty(connection_, candidate.window, "WM_STATE", 1),
                                 xcb_query_tree(connection_.get(), candidate.window));
        }
        std::vector<Candidate> next;
        for (std::size_t i = 0; i < level.size(); ++i) {
            auto const state = propertyFrom(connection_, cookies[i].first);
            auto const inside = childrenFrom(cookies[i].second);
            auto& client = clients[level[i].top];
            if (client != XCB_WINDOW_NONE) continue;
            if (state && state->type != XCB_ATOM_NONE) client = level[i].window;
            for (auto const child : inside) next.push_back({level[i].top, child});
        }
        level = std::move(next);
    }
    addUnmanaged(tops, clients);
    std::erase(clients, xcb_window_t{XCB_WINDOW_NONE});
    return clients;
}

void WindowSourceX11::addUnmanaged(Windows const& tops, Windows& clients) const {
    std::vector<xcb_get_window_attributes_cookie_t> cookies;
    cookies.reserve(tops.size());
    for (auto const top : tops) {
        cookies.push_back(xcb_get_window_attributes(connection_.get(), top));
    }
    for (std::size_t i = 0; i < tops.size(); ++i) {
        auto const attributes = connection_.reply<xcb_get_window_attributes_reply>(cookies[i]);
        if (!attributes || clients[i] != XCB_WINDOW_NONE) continue;
        if (attributes->map_state == XCB_MAP_STATE_VIEWABLE && attributes->override_redirect == 0 &&
            attributes->_class == XCB_WINDOW_CLASS_INPUT_OUTPUT) {
            clients[i] = tops[i];
        }
    }
}

std::vector<xcb_window_t> WindowSourceX11::childrenOf(xcb_window_t window) const {
    return childrenFrom(xcb_query_tree(connection_.get(), window));
}

std::vector<xcb_window_t> WindowSourceX11::childrenFrom(xcb_query_tree_cookie_t cookie) const {
    auto const tree = connection_.reply<xcb_query_tree_reply>(cookie);
    if (!tree) return {};
    auto const* const first = xcb_query_tree_children(tree.get());
    return {first, first + xcb_query_tree_children_length(tree.get())};
}

xcb_window_t WindowSourceX11::focusedClient(Windows const& clients) const {
    auto const isClient = [&](xcb_window_t window) { return contains(clients, window); };
    auto const focus =
        connection_.reply<xcb_get_input_focus_reply>(xcb_get_input_focus(connection_.get()));
    if (!focus) return XCB_WINDOW_NONE;
    if (focus->focus == XCB_INPUT_FOCUS_POINTER_ROOT) {
        // Keys go to whatever lies under the pointer.
        auto pointer = connection_.reply<xcb_query_pointer_reply>(
            xcb_query_pointer(connection_.get(), connection_.root()));
        while (pointer && pointer->child != XCB_WINDOW_NONE && !isClient(pointer->child)) {
            pointer = connection_.reply<xcb_query_pointer_reply>(
                xcb_query_pointer(connection_.get(), pointer->child));
        }
        return pointer ? pointer->child : xcb_window_t{XCB_WINDOW_NONE};
    }
    auto window = focus->focus;
    while (window != XCB_WINDOW_NONE && !isClient(window)) {
        auto const tree =
            connection_.reply<xcb_query_tree_reply>(xcb_query_tree(connection_.get(), window));
        window = tree ? tree->parent : xcb_window_t{XCB_WINDOW_NONE};
    }
    return window;
}

std::optional<Rect> WindowSourceX11::frame(WindowId id) {
    auto const window = windowOf(id);
    auto const cornerCookie =
        xcb_translate_coordinates(connection_.get(), window, connection_.root(), 0, 0);
    auto const sizeCookie = xcb_get_geometry(connection_.get(), window);
    auto const marginCookie = requestProperty(connection_, window, "_GTK_FRAME_EXTENTS", 4);
    auto const corner = connection_.reply<xcb_translate_coordinates_reply>(cornerCookie);
    auto const size = connection_.reply<xcb_get_geometry_reply>(sizeCookie);
    auto const margin = wordsOf(propertyFrom(connection_, marginCookie));
    if (!corner || !size) return std::nullopt;

    Rect const whole{static_cast<double>(corner->dst_x), static_cast<double>(corner->dst_y),
                     static_cast<double>(size->width), static_cast<double>(size->height)};
    if (margin.size() < 4) return whole;
    double const left = margin[0];
    double const right = margin[1];
    double const top = margin[2];
    double const bottom = margin[3];
    // A margin that leaves nothing is none.
    if (left + right >= whole.width || top + bottom >= whole.height) return whole;
    return Rect{whole.x + left, whole.y + top, whole.width - left - right,
                whole.height - top - bottom};
}

/// `_NET_WM_ICON` holds pictures one after the other: width, height, and their words.
std::optional<WindowIcon> WindowSourceX11::icon(WindowId window, int pixels) {
    constexpr std::uint32_t kMostWords = 1024 * 1024;
    constexpr std::uint32_t kMostPixelsPerSide = 1024;
    auto const property = readProperty(connection_, windowOf(window), "_NET_WM_ICON", kMostWords);
    if (!property || property->format != 32) return std::nullopt;
    auto const* words = static_cast<std::uint32_t const*>(xcb_get_property_value(property.get()));
    auto left = static_cast<std::size_t>(property->value_len);
    WindowIcon best;
    while (left > 2) {
        auto const width = words[0];
        auto const height = words[1];
        auto const count = std::size_t{width} * height;
        if (width == 0 || height == 0 || width > kMostPixelsPerSide ||
            height > kMostPixelsPerSide || count > left - 2) {
            break;
        }
        // The smallest that is large enough, else the largest.
        auto const size = static_cast<int>(width);
        bool const isBetter = best.words.empty() || (best.width < pixels && size > best.width) ||
                              (size >= pixels && size < best.width);
        if (isBetter) {
            best = {size, static_cast<int>(height), {words + 2, words + 2 + count}};
        }
        words += 2 + count;
        left -= 2 + count;
    }
    if (best.words.empty()) return std::nullopt;
    return best;
}

/// As pagers do before they ask for a window that is on another desktop: not every window manager
/// goes there with the window.
void WindowSourceX11::showDesktopOf(xcb_window_t window) {
    constexpr std::uint32_t kEveryDesktop = 0xffffffff;
    auto const its = requestProperty(connection_, window, "_NET_WM_DESKTOP", 1);
    auto const shown = requestProperty(connection_, connection_.root(), "_NET_CURRENT_DESKTOP", 1);
    auto const desktop = wordsOf(propertyFrom(connection_, its));
    auto const current = wordsOf(propertyFrom(connection_, shown));
    if (desktop.empty() || current.empty()) return;
    if (desktop[0] == kEveryDesktop || desktop == current) return;
    askManager(connection_.root(), "_NET_CURRENT_DESKTOP", desktop[0], serverTime());
}

void WindowSourceX11::askManager(xcb_window_t window, std::string_view wish, std::uint32_t first,
                                 std::uint32_t second) {
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = connection_.atom(wish);
    message.data.data32[0] = first;
    message.data.data32[1] = second;
    std::array<char, 32> event{};
    std::memcpy(event.data(), &message, sizeof message);
    xcb_send_event(connection_.get(), 0, connection_.root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   event.data());
}

void WindowSourceX11::activate(WindowId id) {
    auto const window = windowOf(id);
    auto* const connection = connection_.get();
    if (readRoot().knowsActive) {
        constexpr std::uint32_t kFromPager = 2; // the user's own wish, not a program's
        showDesktopOf(window);
        askManager(window, "_NET_ACTIVE_WINDOW", kFromPager, serverTime());
        connection_.flush();
        return;
    }
    // Nobody to ask. Mapping brings back a minimised window (ICCCM 4.1.4).
    std::uint32_t const above = XCB_STACK_MODE_ABOVE;
    xcb_map_window(connection, window);
    xcb_configure_window(connection, window, XCB_CONFIG_WINDOW_STACK_MODE, &above);
    auto const attributes = connection_.reply<xcb_get_window_attributes_reply>(
        xcb_get_window_attributes(connection, window));
    if (attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE) {
        xcb_set_input_focus(connection, XCB_INPUT_FOCUS_PARENT, window, serverTime());
    }
    connection_.flush();
}

void WindowSourceX11::noteActive(xcb_window_t window) {
    if (window == XCB_WINDOW_NONE) return;
    std::erase(recent_, window);
    recent_.insert(recent_.begin(), window);
    if (recent_.size() > kMostRemembered) recent_.resize(kMostRemembered);
}

void WindowSourceX11::handle(xcb_generic_event_t const& event) {
    if (eventType(event) != XCB_PROPERTY_NOTIFY) return;
    auto const& change = eventAs<xcb_property_notify_event_t>(event);
    if (change.window != connection_.root()) return;
    if (change.atom != connection_.atom("_NET_ACTIVE_WINDOW")) return;
    noteActive(wordOf(readProperty(connection_, connection_.root(), "_NET_ACTIVE_WINDOW", 1)));
}

} // namespace trovel
