#pragma once

#include "platform/ui/drawn_image.h"

#import <AppKit/AppKit.h>

namespace trovel {

/// A native image that draws itself when it is shown, with a copy of `image`'s function.
[[nodiscard]] NSImage* _Nonnull toNSImage(DrawnImage const& image);

} // namespace trovel
