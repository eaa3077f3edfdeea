#include "platform/macos/ui/view_peer.h"

#include "platform/fatal.h"
#include "platform/macos/bridge/convert.h"
#include "platform/macos/ui/appkit_values.h"
#include "platform/macos/ui/canvas_view.h"
#include "platform/macos/ui/layer_mac.h"
#include "platform/macos/ui/view_contents.h"
#include "platform/macos/ui/view_events.h"
#include "platform/macos/ui/view_keyboard.h"
#include "platform/macos/ui/view_speech.h"

#include <memory>

namespace {

using trovel::MouseEvent;
using trovel::View;
using trovel::ViewKind;

NSTrackingArea* _Nonnull makeTrackingArea(TrovelView* _Nonnull owner) {
    return [[NSTrackingArea alloc] initWithRect:NSMakeRect(0, 0, 0, 0)
                                        options:NSTrackingMouseEnteredAndExited |
                                                NSTrackingActiveAlways | NSTrackingInVisibleRect
                                          owner:owner
                                       userInfo:nil];
}

} // namespace

@interface TrovelView ()
- (void)trovelButtonClicked:(nonnull id)sender;
- (void)trovelSystemColorsDidChange:(nonnull NSNotification*)notification;
@end

@implementation TrovelView {
    std::weak_ptr<View> view_;
    NSView* contents_; // nil where AppKit shows nothing of the view's kind
    NSArray<TrovelView*>* mirrors_;
    NSTrackingArea* trackingArea_; // nil until the view asks for it
}

- (nonnull instancetype)initWithTrovelView:(trovel::View&)view {
    self = [super initWithFrame:trovel::toNSRect(view.frame())];
    if (self != nil) {
        view_ = view.weak_from_this();
        mirrors_ = @[];
        contents_ = trovel::makeContents(view, self, @selector(trovelButtonClicked:));
        if (contents_ != nil) self.subviews = @[ contents_ ];
        // Held weakly. Another accent colour alone is no other appearance.
        [NSNotificationCenter.defaultCenter addObserver:self
                                               selector:@selector(trovelSystemColorsDidChange:)
                                                   name:NSSystemColorsDidChangeNotification
                                                 object:nil];
    }
    return self;
}

- (nullable instancetype)initWithCoder:(nonnull NSCoder*)coder {
    trovel::fatal("init(coder:) has not been implemented");
}

- (void)trovelUpdate {
    auto const view = view_.lock();
    if (!view) return;
    self.frame = trovel::toNSRect(view->frame());
    self.hidden = view->isHidden();
    if (contents_ != nil) {
        contents_.frame = self.bounds;
        trovel::updateContents(contents_, *view);
    }
    if (view->layer()) trovel::applyLayerStyle(*view->layer(), self);
    if (view->accessibility()) trovel::speak(*view->accessibility(), self);
    if (!view->tracksPointer() || trackingArea_ != nil) return;
    trackingArea_ = makeTrackingArea(self);
    [self addTrackingArea:trackingArea_];
}

- (void)trovelShowMirrors:(nonnull NSArray<TrovelView*>*)mirrors {
    if ([mirrors isEqualToArray:mirrors_]) return;
    mirrors_ = mirrors;
    // Only what lies inside an effect is drawn with its vibrancy.
    auto const view = view_.lock();
    if (view && view->kind() == ViewKind::visualEffect) {
        contents_.subviews = mirrors;
        return;
    }
    NSMutableArray<NSView*>* const subviews = [NSMutableArray array];
    if (contents_ != nil) [subviews addObject:contents_];
    for (TrovelView* const mirror in mirrors)
        [subviews addObject:mirror];
    self.subviews = subviews;
}

// A layer's colours were resolved as they were before.
- (void)viewDidChangeEffectiveAppearance {
    [super viewDidChangeEffectiveAppearance];
    auto const view = view_.lock();
    if (view && view->layer()) trovel::applyLayerStyle(*view->layer(), self);
}

- (void)trovelSystemColorsDidChange:(nonnull NSNotification*)notification {
    auto const view = view_.lock();
    if (view && view->layer()) trovel::applyLayerStyle(*view->layer(), self);
}

- (nullable NSView*)hitTest:(NSPoint)point {
    NSView* const hit = [super hitTest:point];
    auto const view = view_.lock();
    return hit != nil && view && trovel::isShownOnly(*view) ? self : hit;
}

- (BOOL)mouseDownCanMoveWindow {
    auto const view = view_.lock();
    return [super mouseDownCanMoveWindow] && !(view && view->takesClicks());
}

- (BOOL)acceptsFirstMouse:(nullable NSEvent*)event {
    auto const view = view_.lock();
    return view && view->acceptsFirstMouse();
}

// One that nobody takes need not come back as a key: Command-Period becomes an action.
- (BOOL)performKeyEquivalent:(nonnull NSEvent*)event {
    if ([super performKeyEquivalent:event]) return YES;
    if (self.window.contentView != self || !self.window.keyWindow) return NO;
    if (trovel::isNavigation(event, view_)) return NO;
    [self.window keyDown:event];
    return YES;
}

- (BOOL)acceptsFirstResponder {
    return trovel::takesKeyboard(view_);
}

- (void)keyDown:(nonnull NSEvent*)event {
    if (!trovel::pressByKey(event, view_)) [super keyDown:event];
}

- (NSRect)focusRingMaskBounds {
    return self.bounds;
}

- (void)drawFocusRingMask {
    [trovel::outline(view_) fill];
}

- (void)mouseDown:(nonnull NSEvent*)event {
    trovel::sendMouse(trovel::toMouseEvent(event, MouseEvent::Kind::leftDown), view_);
}

- (void)mouseDragged:(nonnull NSEvent*)event {
    trovel::sendMouse(trovel::toMouseEvent(event, MouseEvent::Kind::leftDragged), view_);
}

- (void)mouseUp:(nonnull NSEvent*)event {
    trovel::sendMouse(trovel::toMouseEvent(event, MouseEvent::Kind::leftUp), view_);
}

- (void)rightMouseDown:(nonnull NSEvent*)event {
    trovel::sendMouse(trovel::toMouseEvent(event, MouseEvent::Kind::rightDown), view_);
}

// What lies in a view passes on what it does not use of its own tracking.
- (void)mouseEntered:(nonnull NSEvent*)event {
    if (trackingArea_ != nil) trovel::sendPointer(true, view_);
}

- (void)mouseExited:(nonnull NSEvent*)event {
    if (trackingArea_ != nil) trovel::sendPointer(false, view_);
}

- (void)trovelButtonClicked:(nonnull id)sender {
    trovel::sendClick(view_);
}

- (BOOL)accessibilityPerformPress {
    auto const view = view_.lock();
    if (!view || !view->accessibility()) return [super accessibilityPerformPress];
    trovel::sendPress(view_);
    return YES;
}

@end

namespace trovel {

TrovelView* _Nonnull makeViewPeer(View& view) {
    TrovelView* const mirror =
        view.kind() == ViewKind::canvas
            ? [[TrovelCanvasView alloc] initWithTrovelCanvasView:static_cast<CanvasView&>(view)]
            : [[TrovelView alloc] initWithTrovelView:view];
    [mirror trovelUpdate];
    return mirror;
}

} // namespace trovel
