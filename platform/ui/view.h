#pragma once

#include "platform/geometry.h"
#include "platform/ui/responder.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace trovel {

class Canvas;
class Window;

/// What a backend mirrors a view into. Closed: backends switch over it without a default, so a new
/// kind stops every backend's build until it is handled.
enum class ViewKind : std::uint8_t { container, canvas };

/// A node of a window's content. The tree is the only owner of what it shows; a backend's mirror is
/// written to and never asked. Frames are in the superview's coordinates: points, origin at its
/// lower left, y upward. Held by shared_ptr; main thread only.
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
    void setFrame(Rect frame);

    /// Asks for the view to be drawn again in the next turn of the main loop at the latest.
    void setNeedsDisplay();

    [[nodiscard]] Rect frame() const { return frame_; }
    /// The view's own area: its frame's size at the origin.
    [[nodiscard]] Rect bounds() const { return {0, 0, frame_.width, frame_.height}; }
    [[nodiscard]] std::vector<std::shared_ptr<View>> const& subviews() const { return subviews_; }
    [[nodiscard]] View* superview() const { return superview_; }
    /// The window whose content this view is part of; null when there is none.
    [[nodiscard]] Window* window() const;

    /// A point of the window's coordinates in the view's own.
    [[nodiscard]] Point convertFromWindow(Point point) const;

    /// The frontmost view at `point` (superview's coordinates): a descendant, this view or null.
    [[nodiscard]] View* hitTest(Point point);

    [[nodiscard]] Responder* nextResponder() const override;

private:
    friend class Window;

    Rect frame_;
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
