#pragma once

#include "platform/geometry.h"
#include "platform/linux/x11/connection.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace trovel {

/// What a window says about the program that it belongs to. All texts are plain text, empty where
/// the window says nothing.
struct WindowProperties {
    // NOLINTBEGIN(readability-redundant-member-init): lets designated initialisers leave them out.
    std::string gtkApplicationId = {};
    std::string instance = {};  ///< The first part of WM_CLASS.
    std::string className = {}; ///< The second one.
    // NOLINTEND(readability-redundant-member-init)
    std::int32_t systemProcess = 0; ///< 0 when unknown, or on another machine.

    friend auto operator<=>(WindowProperties const&, WindowProperties const&) = default;
};

struct ClientWindow {
    xcb_window_t id = XCB_WINDOW_NONE;
    WindowProperties properties;
    bool isInSwitcher = false; ///< A normal window that does not ask to be left out of the taskbar.
};

/// The windows of the desktop at one moment.
struct WindowList {
    std::vector<ClientWindow> clients;   ///< In the window manager's order, the oldest first.
    std::vector<xcb_window_t> byRecency; ///< The same windows, the most recently active one first.
    xcb_window_t active = XCB_WINDOW_NONE; ///< The one with the user's keyboard, if it is a client.
};

/// The windows of other programs. What a window manager tells about them (EWMH) is taken where
/// there is one that tells; else they are found in the server's own tree. Nothing is cached but the
/// order in which windows were active, and windows that vanish meanwhile are left out. Docks,
/// desktops, notifications and the like are no windows here. Main thread only.
class WindowSourceX11 {
public:
    /// `connection` outlives the tree.
    explicit WindowSourceX11(XcbConnection& connection);

    [[nodiscard]] WindowList read();

    /// The window's place in pixels of the root window, without the invisible margin that some
    /// toolkits draw shadows in; nothing when the window is gone.
    [[nodiscard]] std::optional<Rect> frame(xcb_window_t window);

    /// Asks for the window to be brought to the front and given the keyboard. What comes of it is
    /// the window manager's decision.
    void activate(xcb_window_t window);

private:
    enum class WindowKind : std::uint8_t { normal, auxiliary, furniture };
    struct Root;
    struct ClientCookies;

    [[nodiscard]] Root readRoot();
    [[nodiscard]] std::vector<ClientWindow> readClients(std::vector<xcb_window_t> const& windows);
    [[nodiscard]] ClientCookies requestClient(xcb_window_t window);
    [[nodiscard]] std::optional<ClientWindow> clientFrom(xcb_window_t window,
                                                         ClientCookies const& cookies);
    [[nodiscard]] WindowKind kindOf(std::vector<xcb_atom_t> const& types, bool isTransient);

    [[nodiscard]] std::vector<xcb_window_t> clientsInTree();
    void addUnmanaged(std::vector<xcb_window_t> const& tops,
                      std::vector<xcb_window_t>& clients) const;
    [[nodiscard]] std::vector<xcb_window_t> childrenOf(xcb_window_t window) const;
    [[nodiscard]] std::vector<xcb_window_t> childrenFrom(xcb_query_tree_cookie_t cookie) const;
    [[nodiscard]] xcb_window_t focusedClient(std::vector<ClientWindow> const& clients) const;

    void showDesktopOf(xcb_window_t window);
    void askManager(xcb_window_t window, std::string_view wish, std::uint32_t first,
                    std::uint32_t second);
    void noteActive(xcb_window_t window);
    void handle(xcb_generic_event_t const& event);

    XcbConnection& connection_;
    std::vector<xcb_window_t> recent_; // windows that were active, the latest first
    Registration events_;
};

} // namespace trovel
