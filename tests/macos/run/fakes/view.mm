#include "tests/macos/run/fakes/appkit.h"

#pragma clang diagnostic ignored "-Wobjc-designated-initializers"

NSAccessibilityRole const NSAccessibilityButtonRole = @"AXButton";

@implementation NSTrackingArea

- (instancetype)initWithRect:(NSRect)rect
                     options:(NSTrackingAreaOptions)options
                       owner:(id)owner
                    userInfo:(NSDictionary*)userInfo {
    self = [super init];
    rect_ = rect;
    options_ = options;
    owner_ = owner;
    return self;
}

@end

@implementation NSAppearance

- (void)performAsCurrentDrawingAppearance:(void (^)(void))block {
    auto& mac = fakes::mac();
    ++mac.resolvingAppearance;
    block();
    --mac.resolvingAppearance;
}

@end

@implementation NSView {
    NSShadow* shadow_;
}
@synthesize hidden = hidden_;
@synthesize alphaValue = alphaValue_;
@synthesize wantsLayer = wantsLayer_;
@synthesize layer = layer_;
@synthesize accessibilityElement;
@synthesize accessibilityRole;
@synthesize accessibilityLabel;
@synthesize accessibilityValue;

- (instancetype)initWithFrame:(NSRect)frame {
    self = [super init];
    frame_ = frame;
    subviews_ = @[];
    alphaValue_ = 1;
    needsDisplay_ = YES;
    return self;
}

- (instancetype)init {
    return [self initWithFrame:NSMakeRect(0, 0, 0, 0)];
}

- (void)dealloc {
    for (NSView* view in subviews_)
        if (view->superview_ == self) view->superview_ = nil;
}

- (NSResponder*)nextResponder {
    return superview_ != nil ? superview_ : static_cast<NSResponder*>(window_);
}

- (NSWindow*)window {
    NSView* root = self;
    while (root->superview_ != nil)
        root = root->superview_;
    return root->window_;
}

- (NSArray<NSView*>*)subviews {
    return subviews_;
}

// A view has one superview: whoever takes it takes it away from the one before.
- (void)setSubviews:(NSArray<NSView*>*)subviews {
    NSArray<NSView*>* const former = subviews_;
    for (NSView* view in former)
        if (view->superview_ == self) view->superview_ = nil;
    subviews_ = [subviews copy];
    for (NSView* view in subviews_) {
        NSView* const owner = view->superview_;
        if (owner != nil && owner != self) {
            NSMutableArray<NSView*>* const rest = [NSMutableArray array];
            for (NSView* each in owner->subviews_)
                if (each != view) [rest addObject:each];
            owner->subviews_ = rest;
        }
        view->superview_ = self;
    }
}

- (NSRect)frame {
    return frame_;
}

- (void)setFrame:(NSRect)frame {
    frame_ = frame;
}

- (NSRect)bounds {
    return NSMakeRect(0, 0, frame_.size.width, frame_.size.height);
}

- (void)setBounds:(NSRect)bounds {
    fakes::require(false, "nobody sets a view's bounds yet");
}

- (NSPoint)fromSuperview:(NSPoint)point {
    return NSMakePoint(point.x - frame_.origin.x, point.y - frame_.origin.y);
}

- (NSPoint)fromWindow:(NSPoint)point {
    return [self fromSuperview:superview_ != nil ? [superview_ fromWindow:point] : point];
}

- (BOOL)needsDisplay {
    return needsDisplay_;
}

- (void)setNeedsDisplay:(BOOL)needsDisplay {
    needsDisplay_ = needsDisplay;
}

- (void)drawRect:(NSRect)dirtyRect {
}

- (void)setWantsLayer:(BOOL)wantsLayer {
    wantsLayer_ = wantsLayer;
    if (wantsLayer && layer_ == nil) layer_ = [[CALayer alloc] init];
}

- (NSShadow*)shadow {
    return shadow_;
}

// A view's shadow is its layer's, which starts anew with it.
- (void)setShadow:(NSShadow*)shadow {
    shadow_ = shadow;
    layer_.shadowOpacity = shadow != nil ? 1 : 0;
    layer_.shadowRadius = 0;
    layer_.shadowOffset = NSMakeSize(0, 0);
    layer_.shadowColor = nullptr;
}

- (BOOL)acceptsFirstMouse:(NSEvent*)event {
    return NO;
}

- (NSRect)focusRingMaskBounds {
    return NSMakeRect(0, 0, 0, 0);
}

- (void)drawFocusRingMask {
}

- (BOOL)isOpaque {
    return NO;
}

// "The default is NO if the view is opaque; otherwise YES."
- (BOOL)mouseDownCanMoveWindow {
    return !self.isOpaque;
}

- (BOOL)performKeyEquivalent:(NSEvent*)event {
    for (NSView* view in subviews_)
        if ([view performKeyEquivalent:event]) return YES;
    return NO;
}

// "Returns the farthest descendant of the receiver in the view hierarchy (including itself) that
// contains a specified point", which is in the superview's coordinates; hidden views do not count.
- (NSView*)hitTest:(NSPoint)point {
    if (self.hidden || !fakes::contains(frame_, point)) return nil;
    NSPoint const inside = [self fromSuperview:point];
    for (auto index = subviews_.count; index > 0; --index) {
        NSView* const view = [subviews_ objectAtIndex:index - 1];
        if (NSView* const hit = [view hitTest:inside]) return hit;
    }
    return self;
}

- (void)addTrackingArea:(NSTrackingArea*)trackingArea {
    trackingAreas_.push_back(trackingArea);
}

- (void)viewDidChangeEffectiveAppearance {
}

- (NSAppearance*)effectiveAppearance {
    return [[NSAppearance alloc] init];
}

- (BOOL)accessibilityPerformPress {
    return NO;
}

@end

@implementation NSControl {
    NSString* stringValue_;
}
@synthesize enabled = enabled_;

- (instancetype)initWithFrame:(NSRect)frame {
    self = [super initWithFrame:frame];
    enabled_ = YES;
    self.stringValue = @"";
    return self;
}

// Text that is nil raises an exception.
- (void)setStringValue:(NSString*)stringValue {
    fakes::require(stringValue != nil, "a control's text is nil");
    stringValue_ = stringValue;
    self.needsDisplay = YES;
}

- (NSString*)stringValue {
    return stringValue_;
}

- (BOOL)mouseDownCanMoveWindow {
    return NO;
}

@end

@implementation NSTextField

+ (instancetype)labelWithString:(NSString*)stringValue {
    NSTextField* const field = [[self alloc] initWithFrame:NSMakeRect(0, 0, 0, 0)];
    field.stringValue = stringValue;
    // "…creates a non-wrapping, non-editable, non-selectable text field."
    field.maximumNumberOfLines = 1;
    return field;
}

@end

@implementation NSImageView {
    NSImage* image_;
}

- (void)setImage:(NSImage*)image {
    image_ = image;
    self.needsDisplay = YES;
}

- (NSImage*)image {
    return image_;
}

- (void)drawRect:(NSRect)dirtyRect {
    [image_ draw];
}

@end

// A button takes the keyboard where the user has switched keyboard navigation on.
@implementation NSButton {
    BOOL isHighlighted_;
    NSString* title_;
    NSImage* image_;
}

// A button tracks the pointer itself, and passes on what it does not use of that.
- (instancetype)initWithFrame:(NSRect)frame {
    self = [super initWithFrame:frame];
    [self addTrackingArea:[[NSTrackingArea alloc]
                              initWithRect:frame
                                   options:NSTrackingMouseEnteredAndExited |
                                           NSTrackingActiveAlways | NSTrackingInVisibleRect
                                     owner:self
                                  userInfo:nil]];
    return self;
}

// "If the title is nil, an exception is raised."
- (void)setTitle:(NSString*)title {
    fakes::require(title != nil, "a button's title is nil");
    title_ = title;
}

- (NSString*)title {
    return title_;
}

- (void)setImage:(NSImage*)image {
    image_ = image;
    self.needsDisplay = YES;
}

- (NSImage*)image {
    return image_;
}

- (void)drawRect:(NSRect)dirtyRect {
    [image_ draw];
}

- (BOOL)acceptsFirstResponder {
    return fakes::mac().hasKeyboardNavigation && self.enabled && !self.refusesFirstResponder;
}

// "The space bar … performs a click" of the control that has the keyboard.
- (void)keyDown:(NSEvent*)event {
    constexpr unsigned short kSpace = 49;
    if (event.keyCode != kSpace) return [super keyDown:event];
    [self performAction];
}

// The cell goes on with its view after the action, whoever let go of it meanwhile: nobody promises
// to keep the view or the target.
- (void)performAction {
    if (!self.enabled) return;
    isHighlighted_ = YES;
    id __unsafe_unretained target = nil;
    @autoreleasepool {
        target = self.target;
    }
    if (self.action != nullptr) fakes::send(target, self.action, self);
    isHighlighted_ = NO;
    needsDisplay_ = YES;
}

- (void)mouseDown:(NSEvent*)event {
    isHighlighted_ = self.enabled;
}

- (void)mouseDragged:(NSEvent*)event {
}

- (void)mouseUp:(NSEvent*)event {
    BOOL const isPressed = isHighlighted_;
    isHighlighted_ = NO;
    if (isPressed && fakes::contains(self.bounds, [self fromWindow:event.locationInWindow])) {
        [self performAction];
    }
}

- (BOOL)performKeyEquivalent:(NSEvent*)event {
    constexpr NSEventModifierFlags kAll = 0x1e0000; // Shift, Control, Option, Command
    NSString* const key = self.keyEquivalent;
    if (self.hidden || key == nil || [key isEqualToString:@""]) return NO;
    if (![key isEqualToString:[event charactersByApplyingModifiers:0]]) return NO;
    if ((event.modifierFlags & kAll) != self.keyEquivalentModifierMask) return NO;
    [self performAction];
    return YES;
}

@end

@implementation NSStatusBarButton
@end
