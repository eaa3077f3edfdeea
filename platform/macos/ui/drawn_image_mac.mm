#include "platform/macos/ui/drawn_image_mac.h"

#include "platform/macos/bridge/convert.h"
#include "platform/macos/bridge/entry.h"
#include "platform/macos/ui/canvas_mac.h"

#include <memory>

namespace trovel {

NSImage* _Nonnull toNSImage(DrawnImage const& image) {
    // Native blocks copy what they capture, so this one shares the function instead.
    auto const shared = std::make_shared<decltype(image.draw)>(image.draw);
    NSImage* const native =
        [NSImage imageWithSize:toNSSize(image.size)
                       flipped:NO
                drawingHandler:^BOOL(NSRect rect) {
                  CanvasMac canvas;
                  return enter([&] { return (*shared)(canvas, fromNSRect(rect)); });
                }];
    [native setTemplate:image.isTemplate];
    if (!image.accessibilityDescription.empty()) {
        native.accessibilityDescription = toNSString(image.accessibilityDescription);
    }
    return native;
}

} // namespace trovel
