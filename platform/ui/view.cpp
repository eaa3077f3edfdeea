#include "platform/ui/view.h"

#include "platform/ui/window.h"
#include "platform/ui/window_host.h"

#include <algorithm>
#include <ranges>
#include <utility>

namespace trovel {

View::~View() {
    for (auto const& view : subviews_) view->superview_ = nullptr;
}

void View::didChange() const {
    if (auto* owner = window(); owner != nullptr && owner->peer_)
        owner->peer_->viewDidChange(*this);
}

void View::addSubview(std::shared_ptr<View> view) {
    view->removeFromSuperview();
    auto const* const owner = window();
    bool const appears = owner != nullptr && owner->isVisible();
    if (appears) view->tell(&View::willAppear);
    view->superview_ = this;
    auto const added = subviews_.emplace_back(std::move(view));
    didChange();
    if (appears) added->tell(&View::didAppear);
}

void View::tell(void (View::*step)()) {
    (this->*step)();
    auto const told = subviews_;
    for (auto const& view : told) view->tell(step);
}

void View::removeFromSuperview() {
    auto* const parent = std::exchange(superview_, nullptr);
    if (parent == nullptr) return;
    auto const self = shared_from_this();
    std::erase(parent->subviews_, self);
    parent->didChange();
}

void View::removeAllSubviews() {
    auto const removed = std::exchange(subviews_, {});
    for (auto const& view : removed) view->superview_ = nullptr;
    didChange();
}

void View::setFrame(Rect frame) {
    if (std::exchange(frame_, frame) != frame) didChange();
}

void View::setHidden(bool isHidden) {
    if (std::exchange(isHidden_, isHidden) != isHidden) didChange();
}

void View::setLayer(LayerStyle style) {
    if (layer_ == style) return;
    layer_ = style;
    didChange();
}

void View::setAccessibility(AccessibilityInfo info) {
    if (accessibility_ == info) return;
    accessibility_ = std::move(info);
    didChange();
}

void View::trackPointer() {
    tracksPointer_ = true;
    didChange();
}

void View::setClickAction(std::function<void()> action) {
    clickAction_ = std::move(action);
    didChange();
}

void View::setNeedsDisplay() {
    if (auto* owner = window(); owner != nullptr && owner->peer_) {
        owner->peer_->viewNeedsDisplay(*this);
    }
}

Window* View::window() const {
    View const* view = this;
    while (view->superview_ != nullptr) view = view->superview_;
    return view->window_;
}

bool View::takesClicks() const {
    for (View const* view = this; view != nullptr; view = view->superview_) {
        if (view->kind() == ViewKind::button || view->clickAction_ || view->accessibility_) {
            return true;
        }
    }
    return false;
}

Point View::convertFromWindow(Point point) const {
    for (View const* view = this; view != nullptr; view = view->superview_) {
        point.x -= view->frame_.x;
        point.y -= view->frame_.y;
    }
    return point;
}

View* View::hitTest(Point point) {
    if (isHidden_) return nullptr;
    // The far edges belong to the view too: a pointer on the last pixel of a screen stands there.
    bool const isInside = point.x >= frame_.minX() && point.x <= frame_.maxX() &&
                          point.y >= frame_.minY() && point.y <= frame_.maxY();
    if (!isInside) return nullptr;
    Point const inside{point.x - frame_.x, point.y - frame_.y};
    for (auto const& view : subviews_ | std::views::reverse) {
        if (auto* hit = view->hitTest(inside)) return hit;
    }
    return this;
}

Responder* View::nextResponder() const {
    if (superview_ != nullptr) return superview_;
    return window_;
}

} // namespace trovel
