#include "platform/macos/ui/view_peer.h"

#include "platform/fatal.h"
#include "platform/macos/convert.h"
#include "platform/macos/entry.h"
#include "platform/macos/ui/canvas_mac.h"
#include "platform/macos/ui/convert.h"
#include "platform/ui/window.h"

#include <memory>

namespace {

using trovel::MouseEvent;

/// To the tree of the view's window. The event may take the view out of it, and the mirror that
/// called goes too then: nothing of it is used afterwards.
void send(MouseEvent const& event, std::weak_ptr<trovel::View const> const& mirrored) {
    auto const view = mirrored.lock();
    auto* const window = view ? view->window() : nullptr;
    if (window != nullptr) trovel::enter([&] { window->receive(event); });
}

} // namespace

@implementation TrovelView {
    std::weak_ptr<trovel::View const> view_;
}

- (nonnull instancetype)initWithView:(trovel::View const&)view {
    self = [super initWithFrame:trovel::toNSRect(view.frame())];
    if (self != nil) view_ = view.weak_from_this();
    return self;
}

- (nullable instancetype)initWithCoder:(nonnull NSCoder*)coder {
    trovel::fatal("init(coder:) has not been implemented");
}

- (BOOL)acceptsFirstMouse:(nullable NSEvent*)event {
    auto const view = view_.lock();
    return view && view->acceptsFirstMouse();
}

- (void)mouseDown:(nonnull NSEvent*)event {
    send(trovel::toMouseEvent(event, MouseEvent::Kind::leftDown), view_);
}

- (void)mouseDragged:(nonnull NSEvent*)event {
    send(trovel::toMouseEvent(event, MouseEvent::Kind::leftDragged), view_);
}

- (void)mouseUp:(nonnull NSEvent*)event {
    send(trovel::toMouseEvent(event, MouseEvent::Kind::leftUp), view_);
}

- (void)rightMouseDown:(nonnull NSEvent*)event {
    send(trovel::toMouseEvent(event, MouseEvent::Kind::rightDown), view_);
}

@end

@implementation TrovelCanvasView {
    std::weak_ptr<trovel::CanvasView const> canvasView_;
}

- (nonnull instancetype)initWithCanvasView:(trovel::CanvasView const&)view {
    self = [super initWithView:view];
    if (self != nil) {
        canvasView_ = std::static_pointer_cast<trovel::CanvasView const>(view.shared_from_this());
    }
    return self;
}

- (void)drawRect:(NSRect)dirtyRect {
    auto const view = canvasView_.lock();
    if (!view) return;
    trovel::CanvasMac canvas;
    trovel::enter([&] { view->draw(canvas); });
}

@end

namespace trovel {

TrovelView* _Nonnull makeViewPeer(View const& view) {
    switch (view.kind()) {
    case ViewKind::container:
        return [[TrovelView alloc] initWithView:view];
    case ViewKind::canvas:
        return [[TrovelCanvasView alloc] initWithCanvasView:static_cast<CanvasView const&>(view)];
    }
}

} // namespace trovel
