#include "platform/macos/ui/window_peer_mac.h"

#include "platform/macos/bridge/convert.h"
#include "platform/macos/ui/appkit_values.h"
#include "platform/macos/ui/native_window.h"
#include "platform/macos/ui/view_peer.h"
#include "platform/ui/window.h"

#include <utility>

namespace trovel {

namespace {

/// Holds `object` until the event that is being handled is over. An alert that is shown meanwhile
/// runs the loop in another mode, so it does not count as the next turn.
void keepThroughThisEvent(id _Nonnull object) {
    [NSRunLoop.mainRunLoop performInModes:@[ NSDefaultRunLoopMode ]
                                    block:^{
                                      static_cast<void>(object);
                                    }];
}

NSColor* _Nullable backgroundOf(WindowAttributes const& attributes) {
    // A colour that nobody chose stays the system's own for windows.
    constexpr Color kNotChosen = WindowAttributes{}.backgroundColor;
    auto const& color = attributes.backgroundColor;
    return color == kNotChosen ? nil : toNSColor(color);
}

void apply(WindowAttributes const& attributes, NSWindow* _Nonnull native) {
    auto const styleMask = static_cast<NSWindowStyleMask>(attributes.styleMask);
    if (native.styleMask != styleMask) native.styleMask = styleMask;
    native.level = attributes.level;
    native.opaque = attributes.isOpaque;
    native.backgroundColor = backgroundOf(attributes);
    native.hasShadow = attributes.hasShadow;
    // Said even when it is NO: without it clicks fall through where the window is transparent.
    native.ignoresMouseEvents = attributes.ignoresMouseEvents;
    native.acceptsMouseMovedEvents = attributes.acceptsMouseMovedEvents;
    native.collectionBehavior =
        static_cast<NSWindowCollectionBehavior>(attributes.collectionBehavior);
    native.title = toNSString(attributes.title);
    native.titlebarAppearsTransparent = attributes.titlebarAppearsTransparent;
    native.titleVisibility = attributes.isTitleHidden ? NSWindowTitleHidden : NSWindowTitleVisible;
    native.movableByWindowBackground = attributes.isMovableByBackground;
}

} // namespace

WindowPeerMac::WindowPeerMac(Window& window)
    : window_(window), native_([[TrovelWindow alloc] initWithTrovelWindow:window]) {}

WindowPeerMac::~WindowPeerMac() {
    [native_ close];
    // This may be happening inside one of the window's own events.
    keepThroughThisEvent(native_);
}

void WindowPeerMac::windowDidChange() {
    auto const& attributes = window_.attributes();
    apply(attributes, native_);
    if (contentRect_ != attributes.contentRect) {
        contentRect_ = attributes.contentRect;
        [native_ setFrame:[native_ frameRectForContentRect:toNSRect(attributes.contentRect)]
                  display:NO];
    }
    mirrorContent();
}

void WindowPeerMac::viewDidChange(View const& view) {
    mirrorContent();
    auto const found = mirrors_.find(&view);
    if (found != mirrors_.end()) [found->second trovelUpdate];
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
    // While the application is inactive, that orders it in front of the application's own windows
    // only. The overlay has ordered its windows itself, and in its own order.
    if ((native_.styleMask & NSWindowStyleMaskTitled) != 0) [native_ orderFrontRegardless];
}

void WindowPeerMac::orderOut() {
    [native_ orderOut:nil];
}

void WindowPeerMac::center() {
    [native_ center];
}

// Whatever left the tree leaves the table at once, so an address is never taken for a view that
// was there before.
void WindowPeerMac::mirrorContent() {
    auto former = std::exchange(mirrors_, {});
    auto const& content = window_.contentView();
    TrovelView* const native = content ? mirror(*content, former) : nil;
    if (native_.contentView != native) native_.contentView = native;
    // One of them may be the button whose click takes it away.
    for (auto const& [view, gone] : former)
        keepThroughThisEvent(gone);
}

TrovelView* _Nonnull WindowPeerMac::mirror(View& view, Mirrors& former) {
    auto const found = former.find(&view);
    TrovelView* const native = found != former.end() ? found->second : makeViewPeer(view);
    if (found != former.end()) former.erase(found);
    mirrors_.emplace(&view, native);
    NSMutableArray<TrovelView*>* const mirrors = [NSMutableArray array];
    for (auto const& subview : view.subviews())
        [mirrors addObject:mirror(*subview, former)];
    [native trovelShowMirrors:mirrors];
    return native;
}

} // namespace trovel
