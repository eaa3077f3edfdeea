#pragma once

#include "tests/macos/run/fakes/mac.h"

#import <AppKit/AppKit.h>

#include <memory>
#include <string>
#include <vector>

// What the fakes of AppKit know of each other. The names without a trailing underscore are
// AppKit's own, as far as the sources under test do not use them.

enum : NSUInteger {
    NSEventTypeLeftMouseDown = 1,
    NSEventTypeLeftMouseUp = 2,
    NSEventTypeRightMouseDown = 3,
    NSEventTypeMouseMoved = 5,
    NSEventTypeLeftMouseDragged = 6
};

/// An event as it was made.
@interface NSEvent () {
@public
    NSEventType type_;
    NSEventModifierFlags modifierFlags_;
    unsigned short keyCode_;
    NSPoint locationInWindow_;
    NSString* characters_;
    NSWindow* __weak window_;
}
@end

/// What `addLocalMonitorForEventsMatchingMask:` hands out.
@interface FakeMonitor : NSObject {
@public
    NSEventMask mask_;
    NSEvent* _Nullable (^handler_)(NSEvent* _Nonnull);
}
@end

@interface NSApplication () {
@public
    id<NSApplicationDelegate> __weak delegate_;
    BOOL isRunning_;
    NSApplicationActivationPolicy policy_;
    NSWindow* __weak keyWindow_; // the one that gets the keys while the application is active
    std::vector<NSWindow*> modalWindows_;
    std::vector<FakeMonitor*> monitors_;
}
- (void)sendEvent:(nonnull NSEvent*)event;
/// As `run` does before its loop.
- (void)launch;
/// Turns the loop as a modal one for the window until `isOver`.
- (void)runModalFor:(nonnull NSWindow*)window until:(std::function<bool()> const&)isOver;
@end

@interface NSResponder (Fakes)
@property(nullable, readonly) NSResponder* nextResponder;
@end

@interface NSTrackingArea () {
@public
    NSRect rect_;
    NSTrackingAreaOptions options_;
    id __weak owner_;
    BOOL isInside_;
}
@end

@interface NSView () {
@public
    NSRect frame_;
    NSArray<NSView*>* subviews_;
    NSView* __unsafe_unretained superview_;
    NSWindow* __unsafe_unretained window_; // of a content view only
    std::vector<NSTrackingArea*> trackingAreas_;
    std::vector<std::string> drawn_; // what drawRect: did last
    BOOL needsDisplay_;
}
/// A point of its superview's in its own coordinates.
- (NSPoint)fromSuperview:(NSPoint)point;
/// A point of its window's in its own coordinates.
- (NSPoint)fromWindow:(NSPoint)point;
- (BOOL)isOpaque;
@end

@interface NSWindow () {
@public
    NSRect frame_;
    NSView* contentView_;
    id<NSWindowDelegate> __weak delegate_;
    NSView* pressedView_; // gets the drags and the release
    NSPoint pressedAt_;
    NSView* __weak firstResponder_; // nil when the window itself gets the keys
    BOOL isMoving_;
    BOOL hasSaidIgnoresMouse_;
    BOOL hasCursorRects_;
}
@property(readonly) NSRect frame;
- (void)sendEvent:(nonnull NSEvent*)event;
/// The user presses its close button.
- (void)performClose;
@end

@interface NSButton ()
/// As the user's click, or its key.
- (void)performAction;
@end

@interface NSMenu () {
@public
    std::vector<NSMenuItem*> items_;
    id<NSMenuDelegate> __weak delegate_;
}
@end

@interface NSMenuItem () {
@public
    id __weak target_;
    SEL action_;
    NSString* keyEquivalent_;
    NSMenu* submenu_;
    BOOL isSeparator_;
}
/// As `-[NSMenu update]` leaves it.
- (BOOL)isEnabled;
@end

@interface NSColor () {
@public
    std::string name_; // of a colour of the system's; else its components
    double red_;
    double green_;
    double blue_;
    double alpha_;
    id cgColor_;
}
/// What it looks like in the present appearance.
- (std::string)look;
@end

@interface NSFont () {
@public
    std::string look_;
    double size_;
}
@end

@interface NSImage () {
@public
    NSSize size_;
    id picture_; // a FakeImage
    BOOL (^drawing_)(NSRect);
    std::string name_;
    std::string description_; // for assistive programs
    BOOL isTemplate_;
}
/// Draws it in the current context.
- (void)draw;
@end

@interface NSGraphicsContext () {
@public
    std::string fill_;
    std::string stroke_;
    std::vector<std::string> drawn_;
}
@end

@interface NSStatusItem () {
@public
    NSStatusBarButton* button_;
}
@end

@interface NSAlert () {
@public
    NSWindow* window_;
    std::vector<NSButton*> buttons_;
    NSModalResponse response_;
}
@end

namespace fakes {

[[nodiscard]] NSApplication* _Nonnull application();
/// The window that gets the keys now; nil while the application is not active.
[[nodiscard]] NSWindow* _Nullable keyWindow();
/// Gives the keys to the window, or to none.
void makeKey(NSWindow* _Nullable window);
/// The application comes to the front or leaves it: its key window hears of it.
void tellKeyWindow(bool isActive);

/// The row of the status item's menu under those titles, its menus opened on the way; nil when it
/// or one of those before is not there or cannot be chosen.
[[nodiscard]] NSMenuItem* _Nullable openMenu(std::vector<std::string> const& titles);
/// Chooses that row; false when it cannot be chosen.
bool chooseRow(std::vector<std::string> const& titles);

/// Says that a property of a layer changes, if that is animated.
void noteAnimation(char const* _Nonnull property);
/// What a colour looked like when it was asked for; "none" for null.
[[nodiscard]] std::string lookOf(CGColorRef _Nullable color);

[[nodiscard]] bool contains(NSRect rect, NSPoint point);
[[nodiscard]] std::string textOf(double number);
[[nodiscard]] std::string textOf(NSPoint point);
[[nodiscard]] std::string textOf(NSRect rect);

} // namespace fakes
