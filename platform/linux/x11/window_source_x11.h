#pragma once

#include "platform/linux/applications/window_source.h"
#include "platform/linux/x11/connection.h"
#include "platform/registration.h"

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace trovel {

/// The windows of other programs. What a window manager tells about them (EWMH) is taken where
/// there is one that tells; else they are found in the server's own tree. Nothing is cached but the
/// order in which windows were active, and windows that vanish meanwhile are left out. Pixels are
/// those of the root window.
class WindowSourceX11 final : public WindowSource {
public:
    /// `connection` outlives the source.
    explicit WindowSourceX11(XcbConnection& connection);
    ~WindowSourceX11() = default;

    [[nodiscard]] WindowList read() override;
    [[nodiscard]] std::optional<Rect> frame(WindowId window) override;
    [[nodiscard]] std::optional<WindowIcon> icon(WindowId window, int pixels) override;
    void activate(WindowId window) override;

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
    [[nodiscard]] xcb_window_t focusedClient(std::vector<xcb_window_t> const& clients) const;

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
