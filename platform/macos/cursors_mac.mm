#include "platform/macos/cursors_mac.h"

#import <AppKit/AppKit.h>

namespace trovel {

void CursorsMac::pushCrosshair() {
    [NSCursor.crosshairCursor push];
}

void CursorsMac::pop() {
    [NSCursor pop];
}

} // namespace trovel
