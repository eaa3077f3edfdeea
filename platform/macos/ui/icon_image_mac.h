#pragma once

#include "platform/ui/icon.h"

#import <AppKit/AppKit.h>

namespace trovel {

/// A native image of the icon; nil for a symbol that the system does not have.
[[nodiscard]] NSImage* _Nullable toNSImage(Icon const& icon);

} // namespace trovel
