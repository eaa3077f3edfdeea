#pragma once

#include "platform/color.h"
#include "platform/geometry.h"
#include "platform/ui/events.h"
#include "platform/ui/responder.h"

#include <cstdint>
#include <memory>
#include <string>

namespace trovel {

class View;
class WindowHost;
class WindowPeer;

/// Bits of a window's style and collection behaviour (NSWindow.StyleMask and
/// NSWindow.CollectionBehavior).
inline constexpr std::uint32_t kStyleBorderless = 0;
inline constexpr std::uint32_t kStyleTitled = 1;
inline constexpr std::uint32_t kStyleClosable = 2;
inline constexpr std::uint32_t kStyleFullSizeContentView = 1U << 15U;
inline constexpr std::uint32_t kCollectionCanJoinAllSpaces = 1;
inline constexpr std::uint32_t kCollectionFullScreenAuxiliary = 256;

/// Window levels (CGWindowLevel.h): ordinary windows, and above the menu bar and the Dock.
inline constexpr int kNormalWindowLevel = 0;
inline constexpr int kScreenSaverWindowLevel = 1000;

/// What a window is apart from its content. A backend mirrors it whole.
struct WindowAttributes {
    /// Global screen points, without a title bar.
    Rect contentRect;
    std::uint32_t styleMask = kStyleBorderless;
    int level = kNormalWindowLevel;
    bool isOpaque = true;
    Color backgroundColor = Color::system(Color::Name::controlBackground);
    bool hasShadow = true;
    bool ignoresMouseEvents = false;
    bool acceptsMouseMovedEvents = false;
    std::uint32_t collectionBehavior = 0;
    std::string title{};
    bool titlebarAppearsTransparent = false;
    bool isTitleHidden = false;
    bool isMovableByBackground = false;
    /// Every key is the window's own: none moves the focus between its controls or presses one.
    bool takesEveryKey = false;

    friend bool operator==(WindowAttributes const&, WindowAttributes const&) = default;
};

/// Who is told of what happens to a window. Main thread only.
class WindowDelegate {
public:
    WindowDelegate(WindowDelegate const&) = delete;
    WindowDelegate& operator=(WindowDelegate const&) = delete;

    /// The window closes, by its own close() or by the user's hand; it is still on the screen.
    virtual void windowWillClose() = 0;
    /// The window got the keyboard, or lost it.
    virtual void windowDidBecomeKey() {}
    virtual void windowDidResignKey() {}

protected:
    WindowDelegate() = default;
    ~WindowDelegate() = default;
};

/// A window and the owner of its content's tree. Held by shared_ptr; main thread only.
///
/// Its coordinates are points with the origin at the lower-left corner of the content, y upward.
class Window : public Responder, public std::enable_shared_from_this<Window> {
public:
    /// The host must outlive the window. Nothing native exists before the window is first shown.
    Window(WindowHost& host, WindowAttributes attributes);
    virtual ~Window();

    /// Whether the window may take the keyboard: with a title bar it may.
    [[nodiscard]] virtual bool canBecomeKey() const;

    // Commands.
    void setAttributes(WindowAttributes attributes);
    void setContentView(std::shared_ptr<View> view);
    void orderFrontRegardless();
    void makeKeyAndOrderFront();
    void orderOut();
    void center();

    /// Tells the delegate and takes the window off the screen. The window object lives on.
    void close();

    /// Neither is owned: whoever sets them clears them before it goes.
    void setDelegate(WindowDelegate* delegate) { delegate_ = delegate; }
    void setNextResponder(Responder* responder) { nextResponder_ = responder; }

    /// Sends key events to `view` first; false when it does not accept them.
    bool makeFirstResponder(View* view);

    // State.
    [[nodiscard]] WindowAttributes const& attributes() const { return attributes_; }
    [[nodiscard]] std::shared_ptr<View> const& contentView() const { return contentView_; }
    [[nodiscard]] bool isVisible() const { return isVisible_; }
    [[nodiscard]] bool isKeyWindow() const { return isKeyWindow_; }
    /// The view that gets key events first; null when the window itself does.
    [[nodiscard]] View* firstResponder() const;
    [[nodiscard]] Responder* nextResponder() const override { return nextResponder_; }

    // Events, from the backend.

    /// A press goes to the view under it, which gets the drags and the release that follow it too,
    /// wherever they happen; it becomes first responder if it accepts that.
    void receive(MouseEvent const& event);
    /// A key equivalent presses its button; other keys go to the first responder.
    void receive(KeyEvent const& event);
    /// The pointer came over a view that tracks it, or left it.
    void receivePointer(View& view, bool isInside);
    /// A view's click action, or a button that the desktop draws itself, was clicked.
    void receiveClick(View& view);
    /// A screen reader pressed a view: a click on this very view, whatever lies in front of it and
    /// whether or not its middle is inside the window.
    void receivePress(View& view);
    /// The user asked for the window to be closed.
    void receiveCloseRequest();
    /// The window got the keyboard or lost it.
    void receiveKeyState(bool isKeyWindow);

private:
    friend class View;

    WindowPeer& peer();
    /// Shows the window by that order to its mirror.
    void show(void (WindowPeer::*order)());

    WindowHost& host_;
    WindowAttributes attributes_;
    std::shared_ptr<View> contentView_;
    std::weak_ptr<View> firstResponder_;
    std::weak_ptr<View> pressedView_;
    WindowDelegate* delegate_ = nullptr;
    Responder* nextResponder_ = nullptr;
    bool isVisible_ = false;
    bool hasAppeared_ = false; // it was on the screen once
    bool isKeyWindow_ = false;
    std::unique_ptr<WindowPeer> peer_; // the first to go: it refers to all of the above
};

} // namespace trovel
