#pragma once

#import <AppKit/AppKit.h>

namespace trovel {
class Window;
}

/// The native window. What no control with the keyboard's focus uses of the keys comes to it and
/// goes to the tree, which also closes it. It refers to the window weakly.
@interface TrovelWindow : NSWindow
- (nonnull instancetype)initWithTrovelWindow:(trovel::Window&)window NS_DESIGNATED_INITIALIZER;
- (nonnull instancetype)initWithContentRect:(NSRect)contentRect
                                  styleMask:(NSWindowStyleMask)style
                                    backing:(NSBackingStoreType)backingStoreType
                                      defer:(BOOL)flag NS_UNAVAILABLE;
@end
