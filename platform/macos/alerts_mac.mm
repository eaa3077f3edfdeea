#include "platform/macos/alerts_mac.h"

#include "platform/macos/bridge/convert.h"

#import <AppKit/AppKit.h>

namespace trovel {

namespace {

NSAlertStyle toNative(AlertStyle style) {
    switch (style) {
    case AlertStyle::warning:
        return NSAlertStyleWarning;
    case AlertStyle::informational:
        return NSAlertStyleInformational;
    }
}

} // namespace

void AlertsMac::runModal(Alert const& alert) {
    NSAlert* const native = [[NSAlert alloc] init];
    native.messageText = toNSString(alert.messageText);
    native.informativeText = toNSString(alert.informativeText);
    native.alertStyle = toNative(alert.style);
    if (alert.showsApplicationIcon) {
        native.icon = NSApplication.sharedApplication.applicationIconImage;
    }
    for (auto const& title : alert.buttons)
        [native addButtonWithTitle:toNSString(title)];
    // The application need not be active, and what has not been asked for comes up behind others.
    NSWindow* const window = native.window;
    // An alert that nobody answers keeps neither the program nor the user's session from ending.
    window.preventsApplicationTerminationWhenModal = NO;
    [NSRunLoop.mainRunLoop performInModes:@[ NSModalPanelRunLoopMode ]
                                    block:^{
                                      [window orderFrontRegardless];
                                    }];
    [native runModal];
}

} // namespace trovel
