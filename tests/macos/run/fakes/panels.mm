#include "tests/macos/run/fakes/appkit.h"

#import <UniformTypeIdentifiers/UniformTypeIdentifiers.h>

#pragma clang diagnostic ignored "-Wobjc-designated-initializers"

// Nobody asks a type anything here; that it is this one is all that counts.
UTType* const UTTypeApplication =
    static_cast<UTType*>(static_cast<id>(@"com.apple.application-bundle"));

// Alerts and the open panel, each in a modal loop of its own.

namespace {

constexpr NSModalResponse kFirstButton = 1000; // NSAlertFirstButtonReturn

/// A window of the system's for a modal loop.
NSWindow* _Nonnull makePanelWindow() {
    constexpr NSWindowLevel kModalPanelLevel = 8;
    NSPanel* const panel = [[NSPanel alloc] initWithContentRect:NSMakeRect(500, 500, 260, 120)
                                                      styleMask:1
                                                        backing:NSBackingStoreBuffered
                                                          defer:NO];
    panel.releasedWhenClosed = NO;
    panel.level = kModalPanelLevel;
    return panel;
}

} // namespace

@implementation NSAlert
@synthesize messageText = messageText_;
@synthesize informativeText = informativeText_;
@synthesize alertStyle = alertStyle_;
@synthesize icon = icon_;

- (instancetype)init {
    self = [super init];
    messageText_ = @"";
    informativeText_ = @"";
    return self;
}

- (NSWindow*)window {
    if (window_ == nil) window_ = makePanelWindow();
    return window_;
}

- (NSButton*)addButtonWithTitle:(NSString*)title {
    NSButton* const button = [[NSButton alloc] initWithFrame:NSMakeRect(0, 0, 0, 0)];
    button.title = title;
    buttons_.push_back(button);
    return button;
}

// "…returns the constant positioned to match the clicked button." One without buttons has "OK".
- (NSModalResponse)runModal {
    auto& mac = fakes::mac();
    mac.record("alert " + fakes::toText(messageText_) + ": " + fakes::toText(informativeText_));
    mac.alerts.push_back(self);
    if (buttons_.empty()) [self addButtonWithTitle:@"OK"];
    [fakes::application() runModalFor:self.window until:[self] { return self->response_ != 0; }];
    return response_;
}

@end

@implementation NSPanel
@end

@implementation NSSavePanel {
    NSString* title_;
    NSURL* chosen_;
}
@synthesize directoryURL = directoryURL_;
@synthesize allowedContentTypes = allowedContentTypes_;

- (NSString*)title {
    return title_;
}

- (void)setTitle:(NSString*)title {
    title_ = title;
}

- (NSURL*)URL {
    return chosen_;
}

- (NSModalResponse)runModal {
    constexpr fakes::Time kChoosing = std::chrono::milliseconds(500);
    auto& mac = fakes::mac();
    mac.record("open panel in " + fakes::toText(directoryURL_.path));
    bool isDone = false;
    mac.runLoop.later(kChoosing, [&isDone] { isDone = true; });
    [fakes::application() runModalFor:self until:[&isDone] { return isDone; }];
    auto const& path = mac.panels.chosenPath;
    if (path.empty()) return 0;
    chosen_ = [NSURL fileURLWithPath:fakes::toNative(path) isDirectory:YES];
    return NSModalResponseOK;
}

@end

@implementation NSOpenPanel

+ (NSOpenPanel*)openPanel {
    NSOpenPanel* const panel =
        [[NSOpenPanel alloc] initWithContentRect:NSMakeRect(400, 300, 600, 400)
                                       styleMask:1
                                         backing:NSBackingStoreBuffered
                                           defer:NO];
    panel.releasedWhenClosed = NO;
    return panel;
}

@end

namespace fakes {

bool Mac::closeAlert() {
    if (alerts.empty()) return false;
    NSAlert* const alert = alerts.back();
    alerts.pop_back();
    alert->response_ = kFirstButton;
    runLoop.wakeUp();
    return true;
}

} // namespace fakes
