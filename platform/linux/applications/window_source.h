#pragma once

#include "platform/geometry.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace trovel {

/// Names a window of the desktop. The number is the display system's own.
enum class WindowId : std::uint64_t { none = 0 };

/// What a window says about the program that it belongs to. All texts are plain text, empty where
/// the window says nothing.
struct WindowProperties {
    std::string gtkApplicationId = {};
    std::string instance = {};      ///< The first part of WM_CLASS.
    std::string className = {};     ///< The second one.
    std::int32_t systemProcess = 0; ///< 0 when unknown, or on another machine.

    friend auto operator<=>(WindowProperties const&, WindowProperties const&) = default;
};

struct ClientWindow {
    WindowId id = WindowId::none;
    WindowProperties properties;
    bool isInSwitcher = false; ///< A normal window that does not ask to be left out of the taskbar.
};

/// The windows of the desktop at one moment.
struct WindowList {
    std::vector<ClientWindow> clients; ///< In the window manager's order, the oldest first.
    std::vector<WindowId> byRecency;   ///< The same windows, the most recently active one first.
    WindowId active = WindowId::none;  ///< The one with the user's keyboard, if it is a client.
};

/// A picture that a window brings of itself: 32-bit words 0xAARRGGBB whose colours are not
/// multiplied by alpha, row by row from the top.
struct WindowIcon {
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> words;
};

/// The windows of other programs, as the display system of the session tells of them. Main thread
/// only.
class WindowSource {
public:
    WindowSource(WindowSource const&) = delete;
    WindowSource& operator=(WindowSource const&) = delete;

    /// Docks, desktops, notifications and the like are no windows here.
    [[nodiscard]] virtual WindowList read() = 0;

    /// The window's place in global pixels, without the invisible margin that some toolkits draw
    /// shadows in; nothing when the window is gone.
    [[nodiscard]] virtual std::optional<Rect> frame(WindowId window) = 0;

    /// The window's own picture that fits best where it is shown `pixels` wide and high; nothing
    /// when it brings none.
    [[nodiscard]] virtual std::optional<WindowIcon> icon(WindowId window, int pixels) = 0;

    /// Asks for the window to be brought to the front and given the keyboard. What comes of it is
    /// the desktop's decision.
    virtual void activate(WindowId window) = 0;

protected:
    WindowSource() = default;
    ~WindowSource() = default;
};

} // namespace trovel
