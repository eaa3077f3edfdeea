#pragma once

#include "platform/geometry.h"
#include "platform/linux/x11/connection.h"
#include "tests/linux/support/private_x_server.h"
#include "tests/linux/support/scoped_environment.h"

#include <xcb/xcb.h>

#include <sys/types.h>

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace trovel {

/// An X server for one test, with DISPLAY naming it.
class TestDisplay {
public:
    explicit TestDisplay(std::vector<std::string> arguments = {"-screen", "0", "1280x800x24"})
        : server_(std::move(arguments)), environment_("DISPLAY", server_.display().c_str()) {}

    /// Ends the server, with every connection to it.
    void kill() { server_.kill(); }

private:
    PrivateXServer server_;
    ScopedEnvironment environment_;
};

/// What a window of another program says about itself; empty texts and lists are not said.
struct WindowProfile {
    std::string instance = {};
    std::string className = {};
    std::string gtkApplicationId = {};
    std::uint32_t process = 0;
    std::vector<std::string> types = {};  ///< Without `_NET_WM_WINDOW_TYPE_`.
    std::vector<std::string> states = {}; ///< Without `_NET_WM_STATE_`.
    PixelRect frame{10, 20, 100, 80};
    bool isOverrideRedirect = false;
};

/// One input event that a window got, as far as the tests look at it.
struct SeenInput {
    std::uint8_t type;
    std::uint8_t detail;
    std::uint16_t state;

    friend bool operator==(SeenInput const&, SeenInput const&) = default;
};
void PrintTo(SeenInput const& input, std::ostream* stream);

/// Another program: windows with a connection of their own.
class OtherProgram {
public:
    OtherProgram();

    [[nodiscard]] XcbConnection& connection() { return *connection_; }

    /// A new window, mapped.
    [[nodiscard]] xcb_window_t open(WindowProfile const& profile = {});
    void close(xcb_window_t window);

    void setText(xcb_window_t window, std::string_view property, std::string_view bytes);
    void setNumbers(xcb_window_t window, std::string_view property, xcb_atom_t type,
                    std::vector<std::uint32_t> const& numbers);
    void setAtoms(xcb_window_t window, std::string_view property, std::string_view prefix,
                  std::vector<std::string> const& names);

    void focus(xcb_window_t window);
    void minimise(xcb_window_t window);
    [[nodiscard]] bool isViewable(xcb_window_t window);

    /// Chooses a group of the keyboard's layouts, as the user does with a key for it.
    void useLayoutGroup(std::uint8_t group);

    /// Waits until the server has done everything that this program asked for.
    void sync();

    /// The input that has arrived at its windows since it was last asked for.
    [[nodiscard]] std::vector<SeenInput> seenInput();

    /// The window that the window manager calls the active one.
    [[nodiscard]] xcb_window_t activeWindow();

    /// Waits a bounded time, five seconds unless told otherwise, for something that other processes
    /// bring about.
    [[nodiscard]] static bool eventually(std::function<bool()> const& condition, int steps = 500);

private:
    std::unique_ptr<XcbConnection> connection_;
};

/// The traces of a window manager (EWMH) without one: the lists that it keeps on the root window.
class WindowManagerTraces {
public:
    explicit WindowManagerTraces(OtherProgram& program);

    /// From the oldest, and from the bottom.
    void list(std::vector<xcb_window_t> const& clients, std::vector<xcb_window_t> const& stacking);
    void activate(xcb_window_t window);

    /// Its own window goes, the lists stay: what a crash leaves behind.
    void crash();

private:
    OtherProgram& program_;
    xcb_window_t root_;
    xcb_window_t self_;
};

/// A real openbox, until the end of the scope.
class Openbox {
public:
    Openbox();
    ~Openbox();
    Openbox(Openbox const&) = delete;
    Openbox& operator=(Openbox const&) = delete;

private:
    pid_t process_ = -1;
};

/// Runs a program of the system to its end; true when it succeeded.
[[nodiscard]] bool run(std::vector<std::string> arguments);

} // namespace trovel
