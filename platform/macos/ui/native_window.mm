#include "platform/macos/ui/native_window.h"

#include "platform/macos/bridge/convert.h"
#include "platform/macos/bridge/entry.h"
#include "platform/macos/ui/appkit_values.h"
#include "platform/macos/ui/cursors_mac.h"
#include "platform/ui/keyboard_navigation.h"
#include "platform/ui/window.h"

#include <memory>

namespace {

void sendKeyState(bool isKeyWindow, std::weak_ptr<trovel::Window> const& mirrored) {
    auto const window = mirrored.lock();
    if (window) trovel::enter([&] { window->receiveKeyState(isKeyWindow); });
}

void sendKey(trovel::KeyEvent const& event, std::weak_ptr<trovel::Window> const& mirrored) {
    auto const window = mirrored.lock();
    if (window) trovel::enter([&] { window->receive(event); });
}

} // namespace

@interface TrovelWindow () <NSWindowDelegate>
@end

@implementation TrovelWindow {
    std::weak_ptr<trovel::Window> window_;
}

- (nonnull instancetype)initWithTrovelWindow:(trovel::Window&)window {
    auto const& attributes = window.attributes();
    self = [super initWithContentRect:trovel::toNSRect(attributes.contentRect)
                            styleMask:static_cast<NSWindowStyleMask>(attributes.styleMask)
                              backing:NSBackingStoreBuffered
                                defer:NO];
    if (self != nil) {
        window_ = window.weak_from_this();
        self.delegate = self;         // held weakly
        self.releasedWhenClosed = NO; // ARC owns it
        // A window that fades out would still be in a picture taken after orderOut.
        self.animationBehavior = NSWindowAnimationBehaviorNone;
        // AppKit would take the overlay's cursor back at the window's edge.
        if (self.styleMask == NSWindowStyleMaskBorderless) [self disableCursorRects];
        self.autorecalculatesKeyViewLoop = YES; // views come and go
    }
    return self;
}

- (BOOL)canBecomeKeyWindow {
    auto const window = window_.lock();
    return window && window->canBecomeKey();
}

// An overlay can be over an alert or an open panel, whose modal loop would keep the mouse from it.
- (BOOL)worksWhenModal {
    return self.styleMask == NSWindowStyleMaskBorderless && self.canBecomeKeyWindow;
}

- (void)becomeKeyWindow {
    [super becomeKeyWindow];
    // Perhaps long after the session pushed its cursor. If it is yet to do so, in this very turn,
    // the cursor that its pop brings back has to be the one of before.
    __weak TrovelWindow* const weak = self;
    [NSRunLoop.mainRunLoop performInModes:@[ NSRunLoopCommonModes ]
                                    block:^{
                                      trovel::showCrosshair(weak);
                                    }];
    sendKeyState(true, window_);
}

- (void)resignKeyWindow {
    [super resignKeyWindow];
    sendKeyState(false, window_);
}

- (BOOL)windowShouldClose:(nonnull NSWindow*)sender {
    auto const window = window_.lock();
    if (window) trovel::enter([&] { window->receiveCloseRequest(); });
    return NO;
}

- (void)keyDown:(nonnull NSEvent*)event {
    auto const window = window_.lock();
    if (!window) return;
    auto const key = trovel::toKeyEvent(event);
    switch (trovel::navigationKey(*window, key)) {
    case trovel::NavigationKey::next:
        [self selectNextKeyView:nil];
        return;
    case trovel::NavigationKey::previous:
        [self selectPreviousKeyView:nil];
        return;
    case trovel::NavigationKey::press:
    case trovel::NavigationKey::none:
        sendKey(key, window_);
        return;
    }
}

- (void)flagsChanged:(nonnull NSEvent*)event {
    sendKey(trovel::toKeyEvent(event), window_);
}

@end
