#include "tests/macos/run/fakes/appkit.h"

#include <algorithm>

namespace {

/// Asks the system for the front, which it grants or not.
void requestActivation() {
    constexpr fakes::Time kLate = std::chrono::milliseconds(150);
    auto& mac = fakes::mac();
    if (mac.isActive() || mac.activation == fakes::Activation::never) return;
    if (mac.activation == fakes::Activation::late) {
        mac.runLoop.later(kLate, [] { fakes::mac().bringToFront(fakes::kOwnProcess); });
    } else {
        mac.bringToFront(fakes::kOwnProcess);
    }
}

/// "The window … receives keyboard and mouse events even if some other window is modal"
/// (NSWindow.worksWhenModal); any other gets none then.
bool isBarred(NSApplication* _Nonnull application, NSWindow* _Nullable window) {
    if (application->modalWindows_.empty() || window == nil) return false;
    return window != application->modalWindows_.back() && !window.worksWhenModal;
}

} // namespace

@implementation FakeMonitor
@end

@implementation NSApplication
@synthesize applicationIconImage = icon_;

+ (NSApplication*)sharedApplication {
    return fakes::application();
}

- (id<NSApplicationDelegate>)delegate {
    return delegate_;
}

- (void)setDelegate:(id<NSApplicationDelegate>)delegate {
    delegate_ = delegate;
}

- (BOOL)isRunning {
    return isRunning_;
}

// On a Mac the process ends inside of it; here it returns, so that a test sees what is left.
- (void)run {
    [self launch];
    fakes::mac().runLoop.run(fakes::kDefaultMode, [self] { return !self->isRunning_; }, {});
}

- (void)launch {
    isRunning_ = YES;
    @autoreleasepool {
        id<NSApplicationDelegate> const delegate = delegate_;
        NSNotification* const launched = [[NSNotification alloc] init];
        if ([static_cast<NSObject*>(delegate)
                respondsToSelector:@selector(applicationDidFinishLaunching:)]) {
            [delegate applicationDidFinishLaunching:launched];
        }
    }
}

// "…sends applicationWillTerminate: … and then exits" (NSApplication.terminate).
- (void)terminate:(id)sender {
    // "Usually, application termination is prevented when a modal window or sheet is open, without
    // consulting the application delegate" (NSWindow.preventsApplicationTerminationWhenModal).
    NSWindow* const modal = modalWindows_.empty() ? nil : modalWindows_.back();
    if (modal.preventsApplicationTerminationWhenModal) return;
    fakes::mac().record("terminate");
    id<NSApplicationDelegate> const delegate = delegate_;
    NSNotification* const ends = [[NSNotification alloc] init];
    if ([static_cast<NSObject*>(delegate)
            respondsToSelector:@selector(applicationWillTerminate:)]) {
        [delegate applicationWillTerminate:ends];
    }
    isRunning_ = NO;
}

- (void)activate {
    fakes::mac().record("activate");
    requestActivation();
}

- (void)activateIgnoringOtherApps:(BOOL)ignoreOtherApps {
    fakes::mac().record(ignoreOtherApps ? "activate ignoring others" : "activate");
    requestActivation();
}

- (BOOL)setActivationPolicy:(NSApplicationActivationPolicy)policy {
    policy_ = policy;
    return YES;
}

- (BOOL)isActive {
    return fakes::mac().isActive();
}

- (BOOL)isFullKeyboardAccessEnabled {
    return fakes::mac().hasKeyboardNavigation;
}

- (NSArray<NSWindow*>*)windows {
    NSMutableArray<NSWindow*>* const windows = [NSMutableArray array];
    for (NSWindow* const window : fakes::mac().windows)
        [windows addObject:window];
    return windows;
}

// Local monitors come first: "Return nil to … stop the dispatching of the event". A key with
// Command is offered to the key window's views as an equivalent before it is a key.
- (void)sendEvent:(NSEvent*)event {
    // Nobody promises to keep a window through its event.
    NSWindow* __unsafe_unretained const window = event->window_;
    if (isBarred(self, window)) return;
    auto const monitors = monitors_;
    for (FakeMonitor* const monitor : monitors) {
        if ((monitor->mask_ >> event->type_ & 1) == 0) continue;
        auto const handler = monitor->handler_;
        event = handler(event);
        if (event == nil) return;
    }
    constexpr NSEventModifierFlags kCommand = 1U << 20U;
    if (event->type_ == NSEventTypeKeyDown && (event->modifierFlags_ & kCommand) != 0 &&
        [window.contentView performKeyEquivalent:event]) {
        return;
    }
    [window sendEvent:event];
}

// While a modal loop runs, its window stays where it is and gets the keys.
- (void)runModalFor:(NSWindow*)window until:(std::function<bool()> const&)isOver {
    modalWindows_.push_back(window);
    [window makeKeyAndOrderFront:nil];
    fakes::mac().runLoop.run(fakes::kModalMode, isOver, {});
    std::erase(modalWindows_, window);
    [window orderOut:nil];
}

@end

@implementation NSResponder

- (instancetype)init {
    return [super init];
}

- (instancetype)initWithCoder:(NSCoder*)coder {
    return nil;
}

- (void)encodeWithCoder:(NSCoder*)coder {
}

- (NSResponder*)nextResponder {
    return nil;
}

- (BOOL)acceptsFirstResponder {
    return NO;
}

// "The default implementation simply passes this message to the next responder."
#define PASS_ON(method)                                                                            \
    -(void)method : (NSEvent*)event {                                                              \
        [self.nextResponder method:event];                                                         \
    }
PASS_ON(mouseDown)
PASS_ON(rightMouseDown)
PASS_ON(mouseUp)
PASS_ON(mouseDragged)
PASS_ON(mouseMoved)
PASS_ON(mouseEntered)
PASS_ON(mouseExited)
PASS_ON(keyDown)
PASS_ON(flagsChanged)
#undef PASS_ON

@end

@implementation NSEvent

- (NSEventType)type {
    return type_;
}

- (NSEventModifierFlags)modifierFlags {
    return modifierFlags_;
}

// "Raises an NSInternalInconsistencyException if sent to a non-key event."
- (unsigned short)keyCode {
    fakes::require(type_ == NSEventTypeKeyDown || type_ == NSEventTypeFlagsChanged,
                   "keyCode of an event that is no key");
    return keyCode_;
}

- (NSString*)charactersByApplyingModifiers:(NSEventModifierFlags)modifiers {
    fakes::require(type_ == NSEventTypeKeyDown, "characters of an event that types none");
    return characters_;
}

- (NSPoint)locationInWindow {
    return locationInWindow_;
}

+ (id)addLocalMonitorForEventsMatchingMask:(NSEventMask)mask
                                   handler:(NSEvent* _Nullable (^)(NSEvent*))block {
    FakeMonitor* const monitor = [[FakeMonitor alloc] init];
    monitor->mask_ = mask;
    monitor->handler_ = block;
    fakes::application()->monitors_.push_back(monitor);
    return monitor;
}

// "You must ensure that eventMonitor is removed only once."
+ (void)removeMonitor:(id)eventMonitor {
    FakeMonitor* const monitor = eventMonitor;
    auto const removed = std::erase(fakes::application()->monitors_, monitor);
    fakes::require(removed == 1, "a monitor was removed that is not there");
}

@end

namespace fakes {

NSWindow* keyWindow() {
    return mac().isActive() ? application()->keyWindow_ : nil;
}

void makeKey(NSWindow* window) {
    NSApplication* const app = application();
    NSWindow* const former = app->keyWindow_;
    if (former == window) return;
    app->keyWindow_ = window;
    if (!mac().isActive()) return;
    [former resignKeyWindow];
    [window becomeKeyWindow];
}

void tellKeyWindow(bool isActive) {
    NSWindow* const window = application()->keyWindow_;
    if (isActive) {
        [window becomeKeyWindow];
    } else {
        [window resignKeyWindow];
    }
}

} // namespace fakes
