#include "platform/macos/ui/cursors_mac.h"

namespace trovel {

void CursorsMac::pushCrosshair() {
    [NSCursor.crosshairCursor push];
}

void CursorsMac::pop() {
    [NSCursor pop];
}

void showCrosshair(NSWindow* _Nullable window) {
    if (window.visible && window.styleMask == NSWindowStyleMaskBorderless) {
        [NSCursor.crosshairCursor set];
    }
}

} // namespace trovel
