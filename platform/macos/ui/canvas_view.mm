#include "platform/macos/ui/canvas_view.h"

#include "platform/macos/bridge/entry.h"
#include "platform/macos/ui/canvas_mac.h"

#include <memory>

@implementation TrovelCanvasView {
    std::weak_ptr<trovel::CanvasView const> canvasView_;
}

- (nonnull instancetype)initWithTrovelCanvasView:(trovel::CanvasView&)view {
    self = [super initWithTrovelView:view];
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
