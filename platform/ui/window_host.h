#pragma once

#include <memory>

namespace trovel {

class View;
class Window;

/// The native mirror of one window. Commands only: it reads the portable tree when told that
/// something changed, and sends events up through Window's `receive` functions. Main thread only.
class WindowPeer {
public:
    WindowPeer(WindowPeer const&) = delete;
    WindowPeer& operator=(WindowPeer const&) = delete;
    virtual ~WindowPeer() = default;

    /// The window's attributes or its content view differ from what was mirrored.
    virtual void windowDidChange() = 0;

    /// That view's frame or look, or its list of subviews, differ from what was mirrored.
    virtual void viewDidChange(View const& view) = 0;

    /// That view wants to be drawn again.
    virtual void viewNeedsDisplay(View const& view) = 0;

    /// Puts the window on the screen in front of its level, whichever application is active.
    virtual void orderFrontRegardless() = 0;

    /// Puts it in front and sends it the keyboard.
    virtual void makeKeyAndOrderFront() = 0;

    /// Takes it off the screen before this call returns.
    virtual void orderOut() = 0;

    /// Centres it on the screen, a little above the middle where the desktop does so.
    virtual void center() = 0;

protected:
    WindowPeer() = default;
};

/// Makes the native mirrors. Main thread only.
class WindowHost {
public:
    WindowHost(WindowHost const&) = delete;
    WindowHost& operator=(WindowHost const&) = delete;

    /// A mirror of `window`, which outlives it. Called once, when the window is first shown.
    [[nodiscard]] virtual std::unique_ptr<WindowPeer> makePeer(Window& window) = 0;

protected:
    WindowHost() = default;
    ~WindowHost() = default;
};

} // namespace trovel
