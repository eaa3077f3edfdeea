#include "platform/macos/ui/canvas_view.h"

#include "platform/macos/bridge/entry.h"
#include "platform/macos/ui/canvas_mac.h"
#include "platform/macos/ui/cursors_mac.h"

#include <memory>

@implementation TrovelCanvasView {
    std::weak_ptr<trovel::CanvasView const> canvasView_;
}

- (nonnull instancetype)initWithTrovelCanvasView:(trovel::CanvasView&)view {
    self = [super initWithTrovelView:view];
    if (self != nil) {
        canvasView_ = std::static_pointer_cast<trovel::CanvasView const>(view.shared_from_this());
        // A cursor that is pushed before the application is active does not show, and AppKit sends
        // -cursorUpdate: to no area that is always active: so the overlay goes by the pointer.
        [self addTrackingArea:[[NSTrackingArea alloc]
                                  initWithRect:NSMakeRect(0, 0, 0, 0)
                                       options:NSTrackingMouseEnteredAndExited |
                                               NSTrackingMouseMoved | NSTrackingActiveAlways |
                                               NSTrackingInVisibleRect
                                         owner:self
                                      userInfo:nil]];
    }
    return self;
}

- (void)mouseEntered:(nonnull NSEvent*)event {
    [super mouseEntered:event];
    trovel::showCrosshair(self.window);
}

- (void)mouseMoved:(nonnull NSEvent*)event {
    trovel::showCrosshair(self.window);
}

- (void)drawRect:(NSRect)dirtyRect {
    auto const view = canvasView_.lock();
    if (!view) return;
    trovel::CanvasMac canvas;
    trovel::enter([&] { view->draw(canvas); });
}

@end
