#include "platform/macos/ui/window_peer.h"

#include "platform/macos/convert.h"
#include "platform/macos/entry.h"
#include "platform/macos/ui/convert.h"
#include "platform/macos/ui/view_peer.h"
#include "platform/ui/window.h"

#include <memory>
#include <utility>

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

/// The native window. Keys come to it, because no native view takes them, and go to the tree.
@interface TrovelWindow : NSWindow
- (nonnull instancetype)initWithWindow:(trovel::Window&)window NS_DESIGNATED_INITIALIZER;
- (nonnull instancetype)initWithContentRect:(NSRect)contentRect
                                  styleMask:(NSWindowStyleMask)style
                                    backing:(NSBackingStoreType)backing
                                      defer:(BOOL)flag NS_UNAVAILABLE;
@end

@implementation TrovelWindow {
    std::weak_ptr<trovel::Window> window_;
}

- (nonnull instancetype)initWithWindow:(trovel::Window&)window {
    auto const& attributes = window.attributes();
    self = [super initWithContentRect:trovel::toNSRect(attributes.contentRect)
                            styleMask:static_cast<NSWindowStyleMask>(attributes.styleMask)
                              backing:NSBackingStoreBuffered
                                defer:NO];
    if (self != nil) {
        window_ = window.weak_from_this();
        self.releasedWhenClosed = NO; // ARC owns it
        // A window that fades out would still be in a picture taken after orderOut.
        self.animationBehavior = NSWindowAnimationBehaviorNone;
        // AppKit would take a pushed cursor back at the window's edge.
        [self disableCursorRects];
    }
    return self;
}

- (BOOL)canBecomeKeyWindow {
    auto const window = window_.lock();
    return window && window->canBecomeKey();
}

- (void)becomeKeyWindow {
    [super becomeKeyWindow];
    sendKeyState(true, window_);
}

- (void)resignKeyWindow {
    [super resignKeyWindow];
    sendKeyState(false, window_);
}

- (void)keyDown:(nonnull NSEvent*)event {
    sendKey(trovel::toKeyEvent(event), window_);
}

- (void)flagsChanged:(nonnull NSEvent*)event {
    sendKey(trovel::toKeyEvent(event), window_);
}

@end

namespace trovel {

namespace {

void apply(WindowAttributes const& attributes, NSWindow* _Nonnull native) {
    native.styleMask = static_cast<NSWindowStyleMask>(attributes.styleMask);
    native.level = attributes.level;
    native.opaque = attributes.isOpaque;
    native.backgroundColor = toNSColor(attributes.backgroundColor);
    native.hasShadow = attributes.hasShadow;
    // Said even when it is NO: without it clicks fall through where the window is transparent.
    native.ignoresMouseEvents = attributes.ignoresMouseEvents;
    native.acceptsMouseMovedEvents = attributes.acceptsMouseMovedEvents;
    native.collectionBehavior =
        static_cast<NSWindowCollectionBehavior>(attributes.collectionBehavior);
    [native setFrame:[native frameRectForContentRect:toNSRect(attributes.contentRect)] display:NO];
}

} // namespace

WindowPeerMac::WindowPeerMac(Window& window)
    : window_(window), native_([[TrovelWindow alloc] initWithWindow:window]) {}

WindowPeerMac::~WindowPeerMac() {
    [native_ close];
    // This may be happening inside one of the window's own events, so it goes a turn later.
    TrovelWindow* const native = native_;
    [NSRunLoop.mainRunLoop performInModes:@[ NSRunLoopCommonModes ]
                                    block:^{
                                      static_cast<void>(native);
                                    }];
}

void WindowPeerMac::windowDidChange() {
    apply(window_.attributes(), native_);
    mirrorContent();
}

void WindowPeerMac::viewDidChange(View const& view) {
    mirrorContent();
    viewNeedsDisplay(view);
}

void WindowPeerMac::viewNeedsDisplay(View const& view) {
    auto const found = mirrors_.find(&view);
    if (found != mirrors_.end()) found->second.needsDisplay = YES;
}

void WindowPeerMac::orderFrontRegardless() {
    [native_ orderFrontRegardless];
}

void WindowPeerMac::makeKeyAndOrderFront() {
    [native_ makeKeyAndOrderFront:nil];
}

void WindowPeerMac::orderOut() {
    [native_ orderOut:nil];
}

// Whatever left the tree leaves the table at once, so an address is never taken for a view that
// was there before.
void WindowPeerMac::mirrorContent() {
    auto const former = std::exchange(mirrors_, {});
    auto const& content = window_.contentView();
    TrovelView* const native = content ? mirror(*content, former) : nil;
    if (native_.contentView != native) native_.contentView = native;
}

TrovelView* _Nonnull WindowPeerMac::mirror(View const& view, Mirrors const& former) {
    auto const found = former.find(&view);
    TrovelView* const native = found != former.end() ? found->second : makeViewPeer(view);
    mirrors_.emplace(&view, native);
    native.frame = toNSRect(view.frame());
    NSMutableArray<NSView*>* const subviews = [NSMutableArray array];
    for (auto const& subview : view.subviews())
        [subviews addObject:mirror(*subview, former)];
    native.subviews = subviews;
    return native;
}

} // namespace trovel
