#pragma once

#include "platform/ui/view.h"

#import <AppKit/AppKit.h>

namespace trovel {

/// What AppKit shows in a view of that kind, yet to be updated; nil where it shows nothing. A
/// button sends `action` to `target`, which it does not retain.
[[nodiscard]] NSView* _Nullable makeContents(View const& view, id _Nonnull target,
                                             SEL _Nonnull action);

/// Whether what AppKit shows of the view is for the eye alone.
[[nodiscard]] bool isShownOnly(View const& view);

/// Applies what the view shows, apart from its frame, to contents that were made for it.
void updateContents(NSView* _Nonnull contents, View const& view);

} // namespace trovel
