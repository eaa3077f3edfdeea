#include "platform/macos/application_mac.h"

#include "platform/macos/bridge/convert.h"
#include "platform/macos/bridge/entry.h"

/// Hands AppKit's notifications on.
@interface TrovelApplicationDelegate : NSObject <NSApplicationDelegate>
- (nonnull instancetype)initWithDelegate:(trovel::ApplicationDelegate&)delegate;
@end

@implementation TrovelApplicationDelegate {
    trovel::ApplicationDelegate* delegate_;
}

- (nonnull instancetype)initWithDelegate:(trovel::ApplicationDelegate&)delegate {
    self = [super init];
    if (self != nil) delegate_ = &delegate;
    return self;
}

- (void)applicationDidFinishLaunching:(nonnull NSNotification*)notification {
    trovel::enter([&] { delegate_->applicationDidFinishLaunching(); });
}

- (void)applicationWillTerminate:(nonnull NSNotification*)notification {
    trovel::enter([&] { delegate_->applicationWillTerminate(); });
}

// There is no state to restore; saying so keeps newer systems from warning about it.
- (BOOL)applicationSupportsSecureRestorableState:(nonnull NSApplication*)application {
    return YES;
}

@end

namespace trovel {

namespace {

bool isWindowUp(NSApplication* _Nonnull application) {
    for (NSWindow* window in application.windows) {
        // The status item has a window, too, but none with a title bar.
        if (window.visible && (window.styleMask & NSWindowStyleMaskTitled) != 0) return true;
    }
    return false;
}

} // namespace

ApplicationMac::ApplicationMac() : application_(NSApplication.sharedApplication) {
    [application_ setActivationPolicy:NSApplicationActivationPolicyAccessory];
    // Windows of one program that stay apart: a user who prefers tabs would get a tab bar in them.
    NSWindow.allowsAutomaticWindowTabbing = NO;
}

bool ApplicationMac::environmentHas(std::string_view name) const {
    return NSProcessInfo.processInfo.environment[toNSString(name)] != nil;
}

void ApplicationMac::setDelegate(ApplicationDelegate* delegate) {
    delegate_ =
        delegate != nullptr ? [[TrovelApplicationDelegate alloc] initWithDelegate:*delegate] : nil;
    application_.delegate = delegate_;
}

void ApplicationMac::run() {
    [application_ run];
}

void ApplicationMac::terminate() {
    if (application_.running) [application_ terminate:nil];
}

void ApplicationMac::activate() {
    [application_ activate];
    // Since macOS 14 that is a request, answered in a later turn, and an accessory application that
    // was not clicked may be refused. A window that was opened for the user is worth another one.
    constexpr NSTimeInterval kPatience = 0.2;
    NSApplication* const application = application_;
    NSTimer* const timer =
        [NSTimer timerWithTimeInterval:kPatience
                               repeats:NO
                                 block:^(NSTimer* _Nonnull) {
                                   if (application.active || !isWindowUp(application)) return;
                                   [application activateIgnoringOtherApps:YES];
                                 }];
    [NSRunLoop.mainRunLoop addTimer:timer forMode:NSRunLoopCommonModes];
}

void ApplicationMac::activateIgnoringOtherApps() {
    [application_ activateIgnoringOtherApps:YES];
}

} // namespace trovel
