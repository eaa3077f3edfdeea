#pragma once

#include "platform/geometry.h"
#include "platform/ui/accessibility_info.h"
#include "platform/ui/layer_style.h"
#include "platform/ui/responder.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace trovel {

class Canvas;
class Window;

/// What a backend mirrors a view into. Closed: backends switch over it without a default, so a new
/// kind stops every backend's build until it is handled.
enum class ViewKind : std::uint8_t {
    container,
    label,
    button,
    imageView,
    separator,
    visualEffect,
    canvas
};

/// A node of a window's content. The tree is the only owner of what it shows; a backend's mirror is
/// written to, when something is set to another value than it has, and never asked. Frames are in
/// the superview's coordinates: points, origin at its lower left, y upward. Held by shared_ptr;
/// main thread only.
class View : public Responder, public std::enable_shared_from_this<View> {
public:
    explicit View(Rect frame) : frame_(frame) {}
    virtual ~View();

    [[nodiscard]] virtual ViewKind kind() const { return ViewKind::container; }

    /// Whether a press that also makes its window key reaches this view.
    [[nodiscard]] virtual bool acceptsFirstMouse() const { return false; }

    /// Puts `view` in front of the other subviews, taking it from where it was.
    void addSubview(std::shared_ptr<View> view);
    void removeFromSuperview();
    void removeAllSubviews();
    void setFrame(Rect frame);
    void setHidden(bool isHidden);

    /// Gives the view a layer of its own with that look; inside an animation group the change is
    /// animated.
    void setLayer(LayerStyle style);
    void setAccessibility(AccessibilityInfo info);

    /// Reports the pointer's coming and going over the visible part of the view, whether or not its
    /// window is active, through mouseEntered and mouseExited.
    void trackPointer();

    /// Makes a click, a press and a release on the view, run `action` instead of being sent along
    /// the responder chain.
    void setClickAction(std::function<void()> action);

    /// The view is about to be on the screen for the first time, and is there now: with its window,
    /// or as what comes into a window that is shown already. What is set before is shown from the
    /// start, and what is faded afterwards is seen fading.
    virtual void willAppear() {}
    virtual void didAppear() {}

    /// Asks for the view to be drawn again in the next turn of the main loop at the latest.
    void setNeedsDisplay();

    [[nodiscard]] Rect frame() const { return frame_; }
    /// The view's own area: its frame's size at the origin.
    [[nodiscard]] Rect bounds() const { return {0, 0, frame_.width, frame_.height}; }
    [[nodiscard]] std::vector<std::shared_ptr<View>> const& subviews() const { return subviews_; }
    [[nodiscard]] bool isHidden() const { return isHidden_; }
    [[nodiscard]] std::optional<LayerStyle> const& layer() const { return layer_; }
    [[nodiscard]] std::optional<AccessibilityInfo> const& accessibility() const {
        return accessibility_;
    }
    [[nodiscard]] bool tracksPointer() const { return tracksPointer_; }
    [[nodiscard]] std::function<void()> const& clickAction() const { return clickAction_; }
    /// Whether a press on the view is meant for it or one around it, and does not begin to move the
    /// window: a button, a view with a click action, or one that a screen reader takes for a
    /// control.
    [[nodiscard]] bool takesClicks() const;
    [[nodiscard]] View* superview() const { return superview_; }
    /// The window whose content this view is part of; null when there is none.
    [[nodiscard]] Window* window() const;

    /// A point of the window's coordinates in the view's own.
    [[nodiscard]] Point convertFromWindow(Point point) const;

    /// The frontmost view at `point` (superview's coordinates): a descendant, this view or null.
    [[nodiscard]] View* hitTest(Point point);

    [[nodiscard]] Responder* nextResponder() const override;

protected:
    /// Tells the mirror that what this view shows differs from what was mirrored.
    void didChange() const;

private:
    friend class Window;

    /// Tells this view and all that is in it.
    void tell(void (View::*step)());

    Rect frame_;
    bool isHidden_ = false;
    bool tracksPointer_ = false;
    std::optional<LayerStyle> layer_;
    std::optional<AccessibilityInfo> accessibility_;
    std::function<void()> clickAction_;
    View* superview_ = nullptr;
    Window* window_ = nullptr; // set on a window's content view only
    std::vector<std::shared_ptr<View>> subviews_;
};

/// A view that draws itself.
class CanvasView : public View {
public:
    using View::View;

    [[nodiscard]] ViewKind kind() const final { return ViewKind::canvas; }

    /// Draws the whole view. A backend may record the calls and paint only what differs from the
    /// last time, so drawing must depend on the view's state alone.
    virtual void draw(Canvas& canvas) const = 0;
};

} // namespace trovel
