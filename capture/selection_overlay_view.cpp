#include "capture/selection_overlay_view.h"

#include "platform/ui/canvas.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace trovel {

namespace {

// A drag has to be larger than the first to be drawn and larger than the second to be a selection.
constexpr double kLargestUndrawn = 2;
constexpr double kLargestClick = 4;

constexpr double kBorderWidth = 1;
constexpr TextAttributes kLabelText{Font::monospacedSystem(10, Font::Weight::medium),
                                    Color::white(1, 1)};
constexpr Color kLabelColor = Color::white(0, 0.7);
constexpr double kLabelRadius = 4;
constexpr double kLabelPaddingX = 4;
constexpr double kLabelPaddingY = 2;
constexpr double kLabelGap = 6;
constexpr double kLabelMarginX = 2;
constexpr double kLabelMarginY = 4;

bool isLargerThan(Rect const& rect, double length) {
    return rect.width > length && rect.height > length;
}

/// Where the label of `selection` goes: below it, above it when there is no room below, and in any
/// case within the view's left and right edges; the left one wins when both cannot be kept.
Rect labelBox(Rect const& selection, Rect const& bounds, Size textSize) {
    double const width = textSize.width + 2 * kLabelPaddingX;
    double const height = textSize.height + 2 * kLabelPaddingY;
    double y = selection.minY() - height - kLabelGap;
    if (y < bounds.minY() + kLabelMarginY) y = selection.maxY() + kLabelGap;
    double x = selection.midX() - width / 2;
    x = std::min(x, bounds.maxX() - width - kLabelMarginX);
    x = std::max(x, bounds.minX() + kLabelMarginX);
    return {x, y, width, height};
}

void drawLabel(Canvas& canvas, Rect const& selection, Rect const& bounds) {
    auto const text = std::to_string(wholeTowardZero(selection.width)) + " x " +
                      std::to_string(wholeTowardZero(selection.height));
    auto const box = labelBox(selection, bounds, canvas.sizeOfText(text, kLabelText.font));
    canvas.fillRoundedRect(box, kLabelRadius, kLabelRadius, kLabelColor);
    canvas.drawText(text, {box.x + kLabelPaddingX, box.y + kLabelPaddingY}, kLabelText);
}

} // namespace

void SelectionOverlayView::draw(Canvas& canvas) const {
    canvas.fillRect(bounds(), kDimColor, canvas.compositingOperation());
    if (!currentRect_ || !isLargerThan(*currentRect_, kLargestUndrawn)) return;
    canvas.fillRect(*currentRect_, Color::clear(), CompositingOperation::copy);
    canvas.strokeRect(currentRect_->insetBy(kBorderWidth / 2), kBorderWidth, kSignalBlue);
    drawLabel(canvas, *currentRect_, bounds());
}

void SelectionOverlayView::keyDown(KeyEvent const& event) {
    if (event.keyCode == kKeyEscape && onCancel) onCancel();
}

void SelectionOverlayView::rightMouseDown(MouseEvent const& /*event*/) {
    if (onCancel) onCancel();
}

void SelectionOverlayView::mouseDown(MouseEvent const& event) {
    dragOrigin_ = convertFromWindow(event.locationInWindow);
    currentRect_.reset();
    isDragging_ = false;
    setNeedsDisplay();
}

void SelectionOverlayView::mouseDragged(MouseEvent const& event) {
    if (!dragOrigin_) return;
    isDragging_ = true;
    auto const point = convertFromWindow(event.locationInWindow);
    currentRect_ = Rect{std::min(point.x, dragOrigin_->x), std::min(point.y, dragOrigin_->y),
                        std::abs(point.x - dragOrigin_->x), std::abs(point.y - dragOrigin_->y)};
    setNeedsDisplay();
}

void SelectionOverlayView::mouseUp(MouseEvent const& /*event*/) {
    if (isDragging_ && currentRect_ && isLargerThan(*currentRect_, kLargestClick)) {
        if (onFinished) onFinished(*currentRect_);
    } else if (onCancel) {
        onCancel();
    }
}

} // namespace trovel
