#pragma once

#include "platform/ui/accessibility_info.h"

#import <AppKit/AppKit.h>

namespace trovel {

/// Has assistive programs see `view` as what `info` says.
void speak(AccessibilityInfo const& info, NSView* _Nonnull view);

} // namespace trovel
