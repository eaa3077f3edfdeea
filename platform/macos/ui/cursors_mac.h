#pragma once

#include "platform/cursors.h"

#import <AppKit/AppKit.h>

namespace trovel {

/// AppKit's cursor stack, which shows while Trovel is the active application. What is pushed before
/// it has become that is not seen, so an overlay sets the crosshair again: see `showCrosshair`.
class CursorsMac final : public Cursors {
public:
    CursorsMac() = default;

    void pushCrosshair() override;
    void pop() override;
};

/// Shows the crosshair again if `window` is an overlay that is on the screen. The cursor stack
/// stays as it is.
void showCrosshair(NSWindow* _Nullable window);

} // namespace trovel
