#pragma once

#include "platform/key_codes.h"
#include "platform/linux/qt/layer_fade.h"
#include "platform/linux/qt/window_activation.h"
#include "platform/linux/qt/window_activator.h"
#include "platform/ui/events.h"
#include "platform/ui/view.h"
#include "platform/ui/window_host.h"

#include <QRectF>
#include <QTimer>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace trovel {

class AccessibleView;
class AnimatorLinux;
class Button;
class LocalEventMonitors;
class WindowWidget;
class PushButton;
class Window;

/// What native windows need of the desktop.
struct WindowServices {
    AnimatorLinux& animator;
    LocalEventMonitors& monitors;
    /// The flags of an event that Qt got with these modifiers (`QKeyEvent::nativeModifiers`).
    std::function<EventFlags(std::uint32_t nativeModifiers)> flagsOf;
    /// Has the program's windows follow the desktop's light or dark appearance.
    std::function<void()> followAppearance;
    WindowActivator activateWindow;
};

/// An ordinary window with a title bar. Buttons of the tree are widgets; everything else is painted
/// on one surface, and read out to screen readers, straight from the tree.
class WindowPeerLinux final : public WindowPeer {
public:
    using ShownHandler = std::function<void(WindowPeerLinux& peer)>;

    /// `services` outlive it. `onFront` is called when it is put in front of the others.
    WindowPeerLinux(Window& window, WindowServices const& services, ShownHandler onFront,
                    ShownHandler onEnd);
    ~WindowPeerLinux() override;

    void windowDidChange() override;
    void viewDidChange(View const& view) override;
    void viewNeedsDisplay(View const& view) override;
    void orderFrontRegardless() override;
    void makeKeyAndOrderFront() override;
    void orderOut() override;
    void center() override;

    /// Puts it in front and asks for the keyboard, if it is shown.
    bool bringForward();

    [[nodiscard]] bool isAnimating() const { return frames_.isActive(); }
    [[nodiscard]] Window& window() const { return window_; }
    [[nodiscard]] WindowWidget& widget() const { return *native_; }

    /// Those views that a screen reader reads out, in the order of the tree.
    [[nodiscard]] std::vector<View*> spokenViews() const;
    [[nodiscard]] AccessibleView* accessible(View& view);
    [[nodiscard]] PushButton* buttonOf(View const& view) const;
    /// A view's frame in the widget's coordinates.
    [[nodiscard]] QRectF nativeFrame(View const& view) const;

    // Events, from the widget. Each may be the last thing that happens to this peer.
    void paint(QRectF const& exposed);
    void pointerDidMove(std::optional<Point> point);
    void keyStateDidChange(bool isKeyWindow);
    void receive(MouseEvent const& event);
    void receive(KeyEvent const& event);
    void receiveCloseRequest();

    /// The flags of an event that came with these modifiers.
    [[nodiscard]] EventFlags flagsOf(std::uint32_t nativeModifiers) const;
    /// Whether a press there can begin to move the window.
    [[nodiscard]] bool isMovedFrom(Point point) const;

private:
    struct Node;

    /// True when views have come or gone.
    bool mirrorTree();
    void mirror(View& view, bool isHidden);
    void mirrorButton(Node& node, Button& button, bool isHidden);
    static void silence(Node& node);
    static void forget(Node& node);
    [[nodiscard]] QRectF lookOf(View const& view, Node const& node) const;
    void update(View const& view);
    void tick();
    static void sayWhatChanged(Node& node, View const& view);
    [[nodiscard]] LayerStyle shownLayer(View const& view) const;

    Window& window_;
    WindowServices const& services_;
    ShownHandler onFront_;
    ShownHandler onEnd_;
    WindowWidget* native_; // deletes itself some time after this peer
    WindowActivation activation_;
    std::unordered_map<View const*, Node> nodes_;
    std::vector<std::weak_ptr<View>> pointedAt_; // tracking views that the pointer is over
    QTimer frames_;                              // runs while something fades
    std::uint64_t round_ = 0;                    // of walking through the tree
    bool hasNewViews_ = false;
};

} // namespace trovel
