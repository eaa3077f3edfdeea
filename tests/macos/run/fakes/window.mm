#include "tests/macos/run/fakes/appkit.h"

#include "tests/macos/run/runtime/runtime.h"

#include <algorithm>

#pragma clang diagnostic ignored "-Wobjc-designated-initializers"

namespace {

constexpr NSWindowStyleMask kTitled = 1;

bool isShown(NSWindow* _Nonnull window) {
    return std::ranges::find(fakes::mac().shown, window, &fakes::Shown::window) !=
           fakes::mac().shown.end();
}

void takeOff(NSWindow* _Nonnull window) {
    std::erase_if(fakes::mac().shown, [window](auto const& each) { return each.window == window; });
}

/// Puts the window in front of those of its level: of all of them, or of this application's.
void putInFront(NSWindow* _Nonnull window, bool ofAll) {
    takeOff(window);
    auto& shown = fakes::mac().shown;
    auto const level = [](fakes::Shown const& each) {
        return each.window != nil ? each.window.level : 0;
    };
    auto place =
        std::ranges::find_if(shown, [&](auto const& each) { return level(each) <= window.level; });
    if (!ofAll && place != shown.end() && level(*place) == window.level && place->program != 0) {
        ++place; // the active program's window stays in front
    }
    shown.insert(place, {window});
}

} // namespace

@implementation NSWindow {
    NSColor* backgroundColor_;
    NSString* title_;
    BOOL ignoresMouseEvents_;
}
@synthesize level = level_;
@synthesize preventsApplicationTerminationWhenModal = preventsTermination_;
@synthesize opaque = opaque_;
@synthesize hasShadow = hasShadow_;
@synthesize releasedWhenClosed = releasedWhenClosed_;

- (instancetype)initWithContentRect:(NSRect)contentRect
                          styleMask:(NSWindowStyleMask)style
                            backing:(NSBackingStoreType)backingStoreType
                              defer:(BOOL)flag {
    self = [super init];
    self.styleMask = style;
    frame_ = [self frameRectForContentRect:contentRect];
    opaque_ = YES;
    hasShadow_ = YES;
    hasCursorRects_ = YES;
    releasedWhenClosed_ = YES; // "The default … is YES"
    preventsTermination_ = YES;
    title_ = @"";
    self.contentView = [[NSView alloc] initWithFrame:contentRect];
    fakes::mac().windows.push_back(self);
    return self;
}

- (void)dealloc {
    takeOff(self);
    std::erase(fakes::mac().windows, self);
    if (contentView_ != nil) contentView_->window_ = nil;
}

- (id<NSWindowDelegate>)delegate {
    return delegate_;
}

- (void)setDelegate:(id<NSWindowDelegate>)delegate {
    delegate_ = delegate;
}

- (NSString*)title {
    return title_;
}

- (void)setTitle:(NSString*)title {
    fakes::require(title != nil, "a window's title is nil");
    title_ = title;
}

- (NSColor*)backgroundColor {
    return backgroundColor_;
}

- (void)setBackgroundColor:(NSColor*)backgroundColor {
    backgroundColor_ = backgroundColor;
}

- (NSView*)contentView {
    return contentView_;
}

// "The window retains the new content view and owns it thereafter", and gives it its own size.
- (void)setContentView:(NSView*)contentView {
    if (contentView_ != nil) contentView_->window_ = nil;
    contentView_ = contentView;
    if (contentView == nil) return;
    contentView.frame = NSMakeRect(0, 0, frame_.size.width, [self contentHeight]);
    contentView->window_ = self;
}

- (CGFloat)titleBarHeight {
    constexpr CGFloat kHeight = 28;
    constexpr NSWindowStyleMask kFullSizeContentView = 1U << 15U;
    bool const isAbove =
        (self.styleMask & kTitled) != 0 && (self.styleMask & kFullSizeContentView) == 0;
    return isAbove ? kHeight : 0;
}

- (CGFloat)contentHeight {
    return frame_.size.height - [self titleBarHeight];
}

- (NSRect)frame {
    return frame_;
}

- (NSRect)frameRectForContentRect:(NSRect)contentRect {
    contentRect.size.height += [self titleBarHeight];
    return contentRect;
}

- (void)setFrame:(NSRect)frameRect display:(BOOL)flag {
    frame_ = frameRect;
    contentView_.frame = NSMakeRect(0, 0, frame_.size.width, [self contentHeight]);
}

- (void)setIgnoresMouseEvents:(BOOL)ignoresMouseEvents {
    ignoresMouseEvents_ = ignoresMouseEvents;
    hasSaidIgnoresMouse_ = YES;
}

- (BOOL)ignoresMouseEvents {
    return ignoresMouseEvents_;
}

- (void)disableCursorRects {
    hasCursorRects_ = NO;
}

// "The value of this property is YES … if the window has a title bar or a resize bar."
- (BOOL)canBecomeKeyWindow {
    return (self.styleMask & kTitled) != 0;
}

- (BOOL)isKeyWindow {
    return fakes::keyWindow() == self;
}

- (BOOL)worksWhenModal {
    return NO;
}

+ (BOOL)allowsAutomaticWindowTabbing {
    return fakes::mac().allowsTabbing;
}

+ (void)setAllowsAutomaticWindowTabbing:(BOOL)allows {
    fakes::mac().allowsTabbing = allows;
}

- (void)becomeKeyWindow {
}

- (void)resignKeyWindow {
}

- (BOOL)isVisible {
    return isShown(self);
}

// "…moves the window to the front of the screen list … and makes it the key window"; a window of
// an application that is not active stays behind the active one's.
- (void)makeKeyAndOrderFront:(id)sender {
    fakes::mac().record("make key and order front");
    putInFront(self, fakes::mac().isActive());
    if (self.canBecomeKeyWindow) fakes::makeKey(self);
}

// "Moves the receiver to the front of its level, even if its application isn't active."
- (void)orderFrontRegardless {
    fakes::mac().record("order front regardless");
    putInFront(self, true);
}

// "If the window is the key or main window, the window object immediately behind it is made key or
// main in its place."
- (void)orderOut:(id)sender {
    fakes::mac().record("order out");
    takeOff(self);
    if (fakes::application()->keyWindow_ != self) return;
    auto const& shown = fakes::mac().shown;
    auto const next = std::ranges::find_if(shown, [](auto const& each) {
        return each.window != nil && each.window.canBecomeKeyWindow;
    });
    fakes::makeKey(next != shown.end() ? next->window : nil);
}

// "…removes the window from the screen … If the window is set to be released when closed, a
// release message is sent to the object."
- (void)close {
    NSWindow* const kept = self;
    if ([static_cast<NSObject*>(delegate_) respondsToSelector:@selector(windowWillClose:)]) {
        [delegate_ windowWillClose:[[NSNotification alloc] init]];
    }
    [self orderOut:nil];
    if (self.releasedWhenClosed) objc_release((__bridge void*)kept);
}

- (void)performClose {
    if ([static_cast<NSObject*>(delegate_) respondsToSelector:@selector(windowShouldClose:)] &&
        ![delegate_ windowShouldClose:self]) {
        return;
    }
    [self close];
}

- (void)center {
    NSRect const screen = fakes::mac().displays.front().frame;
    frame_.origin.x = screen.origin.x + (screen.size.width - frame_.size.width) / 2;
    // "…placed somewhat above center vertically."
    frame_.origin.y = screen.origin.y + (screen.size.height - frame_.size.height) * 2 / 3;
}

/// The views that take the keyboard, from back to front as they lie in their superviews.
- (std::vector<NSView*>)keyViews {
    std::vector<NSView*> all;
    std::function<void(NSView*)> const look = [&](NSView* view) {
        if (view == nil || view.hidden) return;
        if (view.acceptsFirstResponder) all.push_back(view);
        for (NSView* subview in view.subviews)
            look(subview);
    };
    look(contentView_);
    return all;
}

- (void)selectKeyViewBy:(int)step {
    auto const all = [self keyViews];
    if (all.empty()) return;
    auto const found = std::ranges::find(all, static_cast<NSView*>(firstResponder_));
    auto const count = static_cast<int>(all.size());
    int const from =
        found != all.end() ? static_cast<int>(found - all.begin()) : (step > 0 ? -1 : count);
    firstResponder_ = all[static_cast<std::size_t>((from + step + count) % count)];
}

- (void)selectNextKeyView:(id)sender {
    [self selectKeyViewBy:1];
}

- (void)selectPreviousKeyView:(id)sender {
    [self selectKeyViewBy:-1];
}

- (void)keyDown:(NSEvent*)event {
    fakes::mac().record("beep");
}

- (void)flagsChanged:(NSEvent*)event {
}

- (NSResponder*)keyReceiver {
    NSView* const view = firstResponder_;
    return view != nil && view.window == self ? view : static_cast<NSResponder*>(self);
}

- (void)sendEvent:(NSEvent*)event {
    switch (static_cast<NSUInteger>(event->type_)) {
    case NSEventTypeKeyDown:
        return [self.keyReceiver keyDown:event];
    case NSEventTypeFlagsChanged:
        return [self.keyReceiver flagsChanged:event];
    case NSEventTypeLeftMouseDown:
        return [self press:event];
    case NSEventTypeLeftMouseDragged:
        return [self drag:event];
    case NSEventTypeLeftMouseUp:
        return [self releasePress:event];
    case NSEventTypeRightMouseDown:
        return [[contentView_ hitTest:event->locationInWindow_] rightMouseDown:event];
    default:
        return;
    }
}

// The first press makes the window key and its application active, and reaches a view only if that
// "accepts the first mouse" (NSView.acceptsFirstMouse).
- (void)press:(NSEvent*)event {
    NSView* const view = [contentView_ hitTest:event->locationInWindow_];
    BOOL const isFirst = !self.keyWindow;
    if (isFirst && self.canBecomeKeyWindow) {
        fakes::makeKey(self);
        fakes::mac().bringToFront(fakes::kOwnProcess);
    }
    if (view == nil || (isFirst && ![view acceptsFirstMouse:event])) return;
    pressedView_ = view;
    pressedAt_ = event->locationInWindow_;
    isMoving_ = self.movableByWindowBackground && view.mouseDownCanMoveWindow;
    [view mouseDown:event];
}

// The drags and the release go where the press went, also beyond the window.
- (void)drag:(NSEvent*)event {
    if (isMoving_) {
        frame_.origin.x += event->locationInWindow_.x - pressedAt_.x;
        frame_.origin.y += event->locationInWindow_.y - pressedAt_.y;
        return;
    }
    [pressedView_ mouseDragged:event];
}

- (void)releasePress:(NSEvent*)event {
    // The view itself, which its own action may let go of.
    NSView* __unsafe_unretained const view = pressedView_;
    pressedView_ = nil;
    [view mouseUp:event];
    isMoving_ = NO;
}

@end
