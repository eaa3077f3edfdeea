#include "platform/ui/window.h"

#include "platform/ui/button.h"
#include "platform/ui/view.h"
#include "platform/ui/window_host.h"

#include <utility>

namespace trovel {

namespace {

/// A key equivalent is a key without any of these.
constexpr EventFlags kModifierFlags = kFlagShift | kFlagControl | kFlagOption | kFlagCommand;

/// The view whose click action a press on `view` means: itself or the nearest one around it.
View* clickTarget(View& view) {
    for (View* candidate = &view; candidate != nullptr; candidate = candidate->superview()) {
        if (candidate->kind() == ViewKind::button || candidate->clickAction()) return candidate;
    }
    return nullptr;
}

Button* buttonWithKeyEquivalent(View& view, std::string const& characters) {
    if (view.isHidden() || characters.empty()) return nullptr;
    if (view.kind() == ViewKind::button) {
        auto& button = static_cast<Button&>(view);
        return button.look().keyEquivalent == characters ? &button : nullptr;
    }
    for (auto const& subview : view.subviews()) {
        if (auto* found = buttonWithKeyEquivalent(*subview, characters)) return found;
    }
    return nullptr;
}

} // namespace

Window::Window(WindowHost& host, WindowAttributes attributes)
    : host_(host), attributes_(std::move(attributes)) {}

Window::~Window() {
    peer_.reset();
    if (contentView_) contentView_->window_ = nullptr;
}

bool Window::canBecomeKey() const {
    return (attributes_.styleMask & kStyleTitled) != 0;
}

WindowPeer& Window::peer() {
    if (!peer_) {
        peer_ = host_.makePeer(*this);
        peer_->windowDidChange();
    }
    return *peer_;
}

void Window::setAttributes(WindowAttributes attributes) {
    attributes_ = std::move(attributes);
    if (peer_) peer_->windowDidChange();
}

void Window::setContentView(std::shared_ptr<View> view) {
    if (contentView_) contentView_->window_ = nullptr;
    auto const appearing = isVisible_ ? view : nullptr;
    if (appearing) appearing->tell(&View::willAppear);
    contentView_ = std::move(view);
    if (contentView_) contentView_->window_ = this;
    if (peer_) peer_->windowDidChange();
    if (appearing) appearing->tell(&View::didAppear);
}

void Window::show(void (WindowPeer::*order)()) {
    isVisible_ = true;
    auto const appearing = std::exchange(hasAppeared_, true) ? nullptr : contentView_;
    if (appearing) appearing->tell(&View::willAppear);
    (peer().*order)();
    if (appearing) appearing->tell(&View::didAppear);
}

void Window::orderFrontRegardless() {
    show(&WindowPeer::orderFrontRegardless);
}

void Window::makeKeyAndOrderFront() {
    // A window that gets the keyboard without anybody having been chosen starts with its content.
    if (firstResponder() == nullptr) makeFirstResponder(contentView_.get());
    show(&WindowPeer::makeKeyAndOrderFront);
}

void Window::orderOut() {
    isVisible_ = false;
    if (peer_) peer_->orderOut();
}

void Window::center() {
    peer().center();
}

void Window::close() {
    auto const self = shared_from_this();
    if (delegate_ != nullptr) delegate_->windowWillClose();
    orderOut();
}

bool Window::makeFirstResponder(View* view) {
    if (view == nullptr || !view->acceptsFirstResponder()) return false;
    firstResponder_ = view->weak_from_this();
    return true;
}

View* Window::firstResponder() const {
    auto const view = firstResponder_.lock();
    return view && view->window() == this ? view.get() : nullptr;
}

void Window::receive(MouseEvent const& event) {
    auto const self = shared_from_this();
    auto const hit = contentView_ ? contentView_->hitTest(event.locationInWindow) : nullptr;
    auto const target = hit != nullptr ? hit->shared_from_this() : nullptr;
    switch (event.kind) {
    case MouseEvent::Kind::leftDown:
        pressedView_ = target;
        if (!target) return;
        makeFirstResponder(target.get());
        if (clickTarget(*target) == nullptr) target->mouseDown(event);
        return;
    case MouseEvent::Kind::leftDragged:
        if (auto const pressed = pressedView_.lock()) pressed->mouseDragged(event);
        return;
    case MouseEvent::Kind::leftUp: {
        auto const pressed = std::exchange(pressedView_, {}).lock();
        if (!pressed) return;
        auto* const clicked = clickTarget(*pressed);
        if (clicked == nullptr) {
            pressed->mouseUp(event);
        } else if (target && clickTarget(*target) == clicked) {
            receiveClick(*clicked);
        }
        return;
    }
    case MouseEvent::Kind::rightDown:
        if (target) target->rightMouseDown(event);
        return;
    }
}

void Window::receive(KeyEvent const& event) {
    auto const self = shared_from_this();
    bool const hasModifier = (event.modifierFlags & kModifierFlags) != 0;
    if (event.kind == KeyEvent::Kind::keyDown && !hasModifier && contentView_) {
        if (auto* button = buttonWithKeyEquivalent(*contentView_, event.characters)) {
            button->press();
            return;
        }
    }
    auto const view = firstResponder() != nullptr ? firstResponder()->shared_from_this() : nullptr;
    Responder& target = view ? static_cast<Responder&>(*view) : *this;
    switch (event.kind) {
    case KeyEvent::Kind::keyDown: target.keyDown(event); return;
    case KeyEvent::Kind::flagsChanged: target.flagsChanged(event); return;
    }
}

void Window::receivePointer(View& view, bool isInside) {
    auto const self = shared_from_this();
    auto const target = view.shared_from_this();
    if (isInside) {
        target->mouseEntered();
    } else {
        target->mouseExited();
    }
}

void Window::receiveClick(View& view) {
    auto const self = shared_from_this();
    auto const target = view.shared_from_this();
    if (view.kind() == ViewKind::button) {
        static_cast<Button&>(view).press();
        return;
    }
    auto const action = view.clickAction();
    if (action) action();
}

void Window::receivePress(View& view) {
    auto const self = shared_from_this();
    auto const target = view.shared_from_this();
    if (auto* const clicked = clickTarget(view)) {
        receiveClick(*clicked);
        return;
    }
    auto const corner = view.convertFromWindow({0, 0});
    auto const bounds = view.bounds();
    MouseEvent event{
        MouseEvent::Kind::leftDown, {bounds.midX() - corner.x, bounds.midY() - corner.y}, 0};
    makeFirstResponder(target.get());
    target->mouseDown(event);
    event.kind = MouseEvent::Kind::leftUp;
    target->mouseUp(event);
}

void Window::receiveCloseRequest() {
    if ((attributes_.styleMask & kStyleClosable) != 0) close();
}

void Window::receiveKeyState(bool isKeyWindow) {
    auto const self = shared_from_this();
    if (std::exchange(isKeyWindow_, isKeyWindow) == isKeyWindow || delegate_ == nullptr) return;
    if (isKeyWindow) {
        delegate_->windowDidBecomeKey();
    } else {
        delegate_->windowDidResignKey();
    }
}

} // namespace trovel
