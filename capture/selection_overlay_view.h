#pragma once

#include "platform/color.h"
#include "platform/ui/view.h"

#include <functional>
#include <optional>

namespace trovel {

/// The dimming over one screen, and the rectangle that the user drags out of it. Lengths are
/// points of the view. Main thread only.
class SelectionOverlayView final : public CanvasView {
public:
    explicit SelectionOverlayView(Rect frame) : CanvasView(frame) {}

    static constexpr Color kSignalBlue = Color::rgba(28.0 / 255, 110.0 / 255, 242.0 / 255, 1);
    static constexpr Color kDimColor = Color::white(0, 0.35);

    /// Called with a selection that is large enough, when the button is released. It may reach
    /// beyond the view.
    std::function<void(Rect)> onFinished;
    std::function<void()> onCancel;

    [[nodiscard]] bool acceptsFirstResponder() const override { return true; }
    // Only one screen's window is key: on the others the first press must start the drag too.
    [[nodiscard]] bool acceptsFirstMouse() const override { return true; }
    void draw(Canvas& canvas) const override;
    void keyDown(KeyEvent const& event) override;
    void rightMouseDown(MouseEvent const& event) override;
    void mouseDown(MouseEvent const& event) override;
    void mouseDragged(MouseEvent const& event) override;
    void mouseUp(MouseEvent const& event) override;

private:
    std::optional<Point> dragOrigin_;
    std::optional<Rect> currentRect_;
    bool isDragging_ = false;
};

} // namespace trovel
