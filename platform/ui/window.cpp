#include "platform/ui/window.h"

#include "platform/ui/view.h"
#include "platform/ui/window_host.h"

#include <utility>

namespace trovel {

Window::Window(WindowHost& host, WindowAttributes attributes)
    : host_(host), attributes_(attributes) {}

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
    attributes_ = attributes;
    if (peer_) peer_->windowDidChange();
}

void Window::setContentView(std::shared_ptr<View> view) {
    if (contentView_) contentView_->window_ = nullptr;
    contentView_ = std::move(view);
    if (contentView_) contentView_->window_ = this;
    if (peer_) peer_->windowDidChange();
}

void Window::orderFrontRegardless() {
    isVisible_ = true;
    peer().orderFrontRegardless();
}

void Window::makeKeyAndOrderFront() {
    isVisible_ = true;
    // A window that gets the keyboard without anybody having been chosen starts with its content.
    if (firstResponder() == nullptr) makeFirstResponder(contentView_.get());
    peer().makeKeyAndOrderFront();
}

void Window::orderOut() {
    isVisible_ = false;
    if (peer_) peer_->orderOut();
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
        target->mouseDown(event);
        return;
    case MouseEvent::Kind::leftDragged:
        if (auto const pressed = pressedView_.lock()) pressed->mouseDragged(event);
        return;
    case MouseEvent::Kind::leftUp: {
        auto const pressed = std::exchange(pressedView_, {}).lock();
        if (pressed) pressed->mouseUp(event);
        return;
    }
    case MouseEvent::Kind::rightDown:
        if (target) target->rightMouseDown(event);
        return;
    }
}

void Window::receive(KeyEvent const& event) {
    auto const self = shared_from_this();
    auto const view = firstResponder() != nullptr ? firstResponder()->shared_from_this() : nullptr;
    Responder& target = view ? static_cast<Responder&>(*view) : *this;
    switch (event.kind) {
    case KeyEvent::Kind::keyDown: target.keyDown(event); return;
    case KeyEvent::Kind::flagsChanged: target.flagsChanged(event); return;
    }
}

void Window::receiveKeyState(bool isKeyWindow) {
    isKeyWindow_ = isKeyWindow;
}

} // namespace trovel
