#pragma once

#include <ApplicationServices/ApplicationServices.h>
#include <Foundation/Foundation.h>
#include <QuartzCore/QuartzCore.h>

NS_ASSUME_NONNULL_BEGIN
@class NSApplication, NSButton, NSColor, NSEvent, NSFont, NSGraphicsContext, NSImage, NSMenu,
    NSShadow, NSWindow;
@class UTType;
typedef NS_ENUM(NSInteger, NSApplicationActivationPolicy) {
    NSApplicationActivationPolicyRegular = 0,
    NSApplicationActivationPolicyAccessory = 1,
    NSApplicationActivationPolicyProhibited = 2
};
typedef NSInteger NSControlStateValue;
static NSControlStateValue const NSControlStateValueOff = 0;
static NSControlStateValue const NSControlStateValueOn = 1;
typedef NSInteger NSModalResponse;
static NSModalResponse const NSModalResponseOK = 1;
typedef NSInteger NSWindowLevel;
typedef NS_OPTIONS(NSUInteger, NSWindowStyleMask) {
    NSWindowStyleMaskBorderless = 0,
    NSWindowStyleMaskTitled = 1
};
typedef NSUInteger NSWindowCollectionBehavior;
typedef NSUInteger NSEventModifierFlags;
typedef NS_ENUM(NSUInteger, NSBackingStoreType) { NSBackingStoreBuffered = 2 };
typedef NS_ENUM(NSInteger, NSWindowAnimationBehavior) { NSWindowAnimationBehaviorNone = 2 };
typedef NS_ENUM(NSInteger, NSWindowTitleVisibility) {
    NSWindowTitleVisible = 0,
    NSWindowTitleHidden = 1
};
typedef NS_ENUM(NSUInteger, NSCompositingOperation) {
    NSCompositingOperationCopy = 1,
    NSCompositingOperationSourceOver = 2
};
typedef NS_ENUM(NSUInteger, NSEventType) { NSEventTypeKeyDown = 10, NSEventTypeFlagsChanged = 12 };
typedef NS_OPTIONS(unsigned long long, NSEventMask) {
    NSEventMaskKeyDown = 1ULL << NSEventTypeKeyDown
};
typedef NS_ENUM(NSUInteger, NSBezelStyle) { NSBezelStylePush = 1 };
typedef NS_ENUM(NSUInteger, NSTextFieldBezelStyle) { NSTextFieldRoundedBezel = 1 };
typedef NS_ENUM(NSUInteger, NSLineCapStyle) { NSLineCapStyleRound = 1 };
typedef NS_ENUM(NSInteger, NSTextAlignment) {
    NSTextAlignmentCenter = 1,
    NSTextAlignmentNatural = 4
};
typedef NS_ENUM(NSUInteger, NSLineBreakMode) { NSLineBreakByWordWrapping = 0 };
typedef NS_ENUM(NSUInteger, NSImageScaling) {
    NSImageScaleProportionallyDown = 0,
    NSImageScaleProportionallyUpOrDown = 3
};
typedef NS_ENUM(NSUInteger, NSControlSize) { NSControlSizeRegular = 0, NSControlSizeLarge = 3 };
typedef NS_ENUM(NSUInteger, NSBoxType) { NSBoxSeparator = 2 };
typedef NS_ENUM(NSInteger, NSVisualEffectMaterial) { NSVisualEffectMaterialHUDWindow = 13 };
typedef NS_ENUM(NSInteger, NSVisualEffectBlendingMode) {
    NSVisualEffectBlendingModeBehindWindow = 0
};
typedef NS_ENUM(NSInteger, NSVisualEffectState) { NSVisualEffectStateActive = 1 };
typedef NS_OPTIONS(NSUInteger, NSTrackingAreaOptions) {
    NSTrackingMouseEnteredAndExited = 0x01,
    NSTrackingMouseMoved = 0x02,
    NSTrackingActiveAlways = 0x80,
    NSTrackingInVisibleRect = 0x200
};
typedef NS_ENUM(NSUInteger, NSAlertStyle) {
    NSAlertStyleWarning = 0,
    NSAlertStyleInformational = 1
};
typedef CGFloat NSFontWeight;
APPKIT_EXTERN const NSFontWeight NSFontWeightLight;
APPKIT_EXTERN const NSFontWeight NSFontWeightRegular;
APPKIT_EXTERN const NSFontWeight NSFontWeightMedium;
APPKIT_EXTERN const NSFontWeight NSFontWeightSemibold;
APPKIT_EXTERN const NSFontWeight NSFontWeightBold;
APPKIT_EXTERN NSAttributedStringKey const NSFontAttributeName;
APPKIT_EXTERN NSAttributedStringKey const NSForegroundColorAttributeName;
APPKIT_EXTERN NSNotificationName NSSystemColorsDidChangeNotification;
APPKIT_EXTERN NSRunLoopMode const NSModalPanelRunLoopMode;
typedef NSString* NSDeviceDescriptionKey;
typedef NSString* NSImageName;
APPKIT_EXTERN NSImageName const NSImageNameApplicationIcon;
typedef NSString* NSAccessibilityRole;
APPKIT_EXTERN NSAccessibilityRole const NSAccessibilityButtonRole;
DECL_MAIN_THREAD
@interface NSResponder : NSObject <NSCoding>
- (instancetype)init NS_DESIGNATED_INITIALIZER;
- (nullable instancetype)initWithCoder:(NSCoder*)coder NS_DESIGNATED_INITIALIZER;
@property(readonly) BOOL acceptsFirstResponder;
- (void)mouseDown:(NSEvent*)event;
- (void)rightMouseDown:(NSEvent*)event;
- (void)mouseUp:(NSEvent*)event;
- (void)mouseDragged:(NSEvent*)event;
- (void)mouseMoved:(NSEvent*)event;
- (void)mouseEntered:(NSEvent*)event;
- (void)mouseExited:(NSEvent*)event;
- (void)keyDown:(NSEvent*)event;
- (void)flagsChanged:(NSEvent*)event;
@end

DECL_MAIN_THREAD
@protocol NSApplicationDelegate <NSObject>
@optional
- (void)applicationDidFinishLaunching:(NSNotification*)notification;
- (void)applicationWillTerminate:(NSNotification*)notification;
- (BOOL)applicationSupportsSecureRestorableState:(NSApplication*)app API_AVAILABLE_MAC(12.0);
@end

@interface NSApplication : NSResponder
@property(class, readonly, strong) __kindof NSApplication* sharedApplication;
@property(nullable, weak) id<NSApplicationDelegate> delegate;
- (void)run;
- (void)terminate:(nullable id)sender;
@property(readonly, getter=isRunning) BOOL running;
@property(readonly, getter=isFullKeyboardAccessEnabled) BOOL fullKeyboardAccessEnabled;
@property(readonly, getter=isActive) BOOL active;
@property(readonly, copy) NSArray<NSWindow*>* windows;
- (void)activate API_AVAILABLE_MAC(14.0);
- (void)activateIgnoringOtherApps:(BOOL)ignoreOtherApps;
- (BOOL)setActivationPolicy:(NSApplicationActivationPolicy)activationPolicy;
@property(null_resettable, strong) NSImage* applicationIconImage;
@end

@class NSMenuItem;
DECL_MAIN_THREAD
@protocol NSMenuDelegate <NSObject>
@optional
- (void)menuWillOpen:(NSMenu*)menu;
@end

DECL_MAIN_THREAD
@interface NSMenu : NSObject <NSCopying, NSCoding>
- (instancetype)initWithTitle:(NSString*)title NS_DESIGNATED_INITIALIZER;
- (void)addItem:(NSMenuItem*)newItem;
@property(nullable, weak) id<NSMenuDelegate> delegate;
@end

DECL_MAIN_THREAD
@interface NSMenuItem : NSObject <NSCopying, NSCoding>
+ (NSMenuItem*)separatorItem;
- (instancetype)initWithTitle:(NSString*)string
                       action:(nullable SEL)selector
                keyEquivalent:(NSString*)charCode NS_DESIGNATED_INITIALIZER;
@property(copy) NSString* title;
@property(nullable, weak) id target;
@property(nullable, strong) id representedObject;
@property NSControlStateValue state;
@property(nullable, strong) NSMenu* submenu;
@property NSEventModifierFlags keyEquivalentModifierMask;
@end

@interface NSAppearance : NSObject
- (void)performAsCurrentDrawingAppearance:(void(NS_NOESCAPE ^)(void))block API_AVAILABLE_MAC(11.0);
@end

@interface NSTrackingArea : NSObject
- (instancetype)initWithRect:(NSRect)rect
                     options:(NSTrackingAreaOptions)options
                       owner:(nullable id)owner
                    userInfo:(nullable NSDictionary<id, id>*)userInfo;
@end

DECL_MAIN_THREAD
@protocol NSAccessibility <NSObject>
@property(getter=isAccessibilityElement) BOOL accessibilityElement;
@property(nullable, copy) NSAccessibilityRole accessibilityRole;
@property(nullable, copy) NSString* accessibilityLabel;
@property(nullable, strong) id accessibilityValue;
- (BOOL)accessibilityPerformPress;
@end

@interface NSView : NSResponder <NSAccessibility>
- (instancetype)initWithFrame:(NSRect)frameRect NS_DESIGNATED_INITIALIZER;
- (nullable instancetype)initWithCoder:(NSCoder*)coder NS_DESIGNATED_INITIALIZER;
@property(copy) NSArray<__kindof NSView*>* subviews;
@property NSRect frame;
@property NSRect bounds;
@property(getter=isHidden) BOOL hidden;
@property CGFloat alphaValue;
@property BOOL needsDisplay;
@property BOOL wantsLayer;
@property(nullable, strong) CALayer* layer;
@property(nullable, copy) NSShadow* shadow;
- (void)drawRect:(NSRect)dirtyRect;
- (BOOL)acceptsFirstMouse:(nullable NSEvent*)event;
- (BOOL)performKeyEquivalent:(NSEvent*)event;
@property(nullable, readonly, assign) NSWindow* window;
- (nullable NSView*)hitTest:(NSPoint)point;
@property(readonly) BOOL mouseDownCanMoveWindow;
@property(readonly) NSRect focusRingMaskBounds;
- (void)drawFocusRingMask;
- (void)addTrackingArea:(NSTrackingArea*)trackingArea;
- (void)viewDidChangeEffectiveAppearance;
@property(readonly, strong) NSAppearance* effectiveAppearance;
@end

@interface NSControl : NSView
@property(nullable, weak) id target;
@property(nullable) SEL action;
@property(getter=isEnabled) BOOL enabled;
@property NSControlSize controlSize;
@property BOOL refusesFirstResponder;
@property(copy) NSString* stringValue;
@property(nullable, strong) NSFont* font;
@property NSTextAlignment alignment;
@property NSLineBreakMode lineBreakMode;
@end

@interface NSTextField : NSControl
+ (instancetype)labelWithString:(NSString*)stringValue;
@property(nullable, copy) NSColor* backgroundColor;
@property BOOL drawsBackground;
@property(nullable, copy) NSColor* textColor;
@property(getter=isBezeled) BOOL bezeled;
@property NSTextFieldBezelStyle bezelStyle;
@property NSInteger maximumNumberOfLines;
@end

@interface NSImageView : NSControl
@property(nullable, strong) NSImage* image;
@property NSImageScaling imageScaling;
@property(nullable, copy) NSColor* contentTintColor;
@end

@interface NSBox : NSView
@property NSBoxType boxType;
@end

@interface NSVisualEffectView : NSView
@property NSVisualEffectMaterial material;
@property NSVisualEffectBlendingMode blendingMode;
@property NSVisualEffectState state;
@end

@interface NSAnimationContext : NSObject
+ (void)runAnimationGroup:(void(NS_NOESCAPE ^)(NSAnimationContext* context))changes;
@property NSTimeInterval duration;
@property BOOL allowsImplicitAnimation;
@end

@interface NSButton : NSControl
@property(copy) NSString* title;
@property NSBezelStyle bezelStyle;
@property(getter=isBordered) BOOL bordered;
@property(nullable, copy) NSColor* contentTintColor;
@property(copy) NSString* keyEquivalent;
@property NSEventModifierFlags keyEquivalentModifierMask;
@property(nullable, strong) NSImage* image;
@end

@interface NSStatusBarButton : NSButton
@end

static CGFloat const NSSquareStatusItemLength = -2.0;
@interface NSStatusItem : NSObject
@property(nullable, readonly, strong) NSStatusBarButton* button;
@property(nullable, strong) NSMenu* menu;
@end

@interface NSStatusBar : NSObject
@property(class, readonly, strong) NSStatusBar* systemStatusBar;
- (NSStatusItem*)statusItemWithLength:(CGFloat)length;
- (void)removeStatusItem:(NSStatusItem*)item;
@end

@protocol NSWindowDelegate <NSObject>
@optional
- (void)windowWillClose:(NSNotification*)notification;
- (BOOL)windowShouldClose:(NSWindow*)sender;
@end

@interface NSWindow : NSResponder
- (instancetype)initWithContentRect:(NSRect)contentRect
                          styleMask:(NSWindowStyleMask)style
                            backing:(NSBackingStoreType)backingStoreType
                              defer:(BOOL)flag NS_DESIGNATED_INITIALIZER;
- (nullable instancetype)initWithCoder:(NSCoder*)coder NS_UNAVAILABLE;
@property(class) BOOL allowsAutomaticWindowTabbing API_AVAILABLE_MAC(10.12);
@property(copy) NSString* title;
@property NSWindowTitleVisibility titleVisibility;
@property BOOL titlebarAppearsTransparent;
@property(nullable, strong) __kindof NSView* contentView;
@property(nullable, weak) id<NSWindowDelegate> delegate;
@property NSWindowStyleMask styleMask;
@property NSWindowLevel level;
@property(getter=isOpaque) BOOL opaque;
@property(null_resettable, copy) NSColor* backgroundColor;
@property BOOL hasShadow;
@property BOOL ignoresMouseEvents;
@property BOOL acceptsMouseMovedEvents;
@property NSWindowCollectionBehavior collectionBehavior;
@property(getter=isMovableByWindowBackground) BOOL movableByWindowBackground;
@property(getter=isReleasedWhenClosed) BOOL releasedWhenClosed;
@property(readonly) BOOL canBecomeKeyWindow;
@property(readonly) BOOL worksWhenModal;
@property BOOL preventsApplicationTerminationWhenModal;
@property(readonly, getter=isKeyWindow) BOOL keyWindow;
@property(readonly, getter=isVisible) BOOL visible;
- (NSRect)frameRectForContentRect:(NSRect)contentRect;
- (void)setFrame:(NSRect)frameRect display:(BOOL)flag;
- (void)becomeKeyWindow;
- (void)resignKeyWindow;
- (void)disableCursorRects;
@property BOOL autorecalculatesKeyViewLoop;
- (void)selectNextKeyView:(nullable id)sender;
- (void)selectPreviousKeyView:(nullable id)sender;
@property NSWindowAnimationBehavior animationBehavior;
- (void)makeKeyAndOrderFront:(nullable id)sender;
- (void)orderFrontRegardless;
- (void)orderOut:(nullable id)sender;
- (void)close;
- (void)center;
@end

DECL_MAIN_THREAD
@interface NSScreen : NSObject
@property(class, readonly, copy) NSArray<NSScreen*>* screens;
@property(readonly) NSRect frame;
@property(readonly) CGFloat backingScaleFactor;
@property(readonly, copy) NSDictionary<NSDeviceDescriptionKey, id>* deviceDescription;
@end

@interface NSEvent : NSObject <NSCopying, NSCoding>
@property(readonly) NSEventType type;
@property(readonly) NSEventModifierFlags modifierFlags;
@property(readonly) unsigned short keyCode;
- (nullable NSString*)charactersByApplyingModifiers:(NSEventModifierFlags)modifiers
    API_AVAILABLE_MAC(10.15);
@property(readonly) NSPoint locationInWindow;
+ (nullable id)addLocalMonitorForEventsMatchingMask:(NSEventMask)mask
                                            handler:(NSEvent* _Nullable (^)(NSEvent* event))block;
+ (void)removeMonitor:(id)eventMonitor;
@end

@interface NSCursor : NSObject
@property(class, readonly, strong) NSCursor* crosshairCursor;
+ (void)pop;
- (void)push;
- (void)set;
@end

@interface NSColor : NSObject <NSCopying, NSSecureCoding>
+ (NSColor*)colorWithSRGBRed:(CGFloat)red
                       green:(CGFloat)green
                        blue:(CGFloat)blue
                       alpha:(CGFloat)alpha;
+ (NSColor*)colorWithWhite:(CGFloat)white alpha:(CGFloat)alpha;
@property(class, strong, readonly) NSColor* clearColor;
@property(class, strong, readonly) NSColor* labelColor;
@property(class, strong, readonly) NSColor* secondaryLabelColor;
@property(class, strong, readonly) NSColor* tertiaryLabelColor;
@property(class, strong, readonly) NSColor* separatorColor;
@property(class, strong, readonly) NSColor* controlBackgroundColor;
@property(class, strong, readonly) NSColor* controlAccentColor API_AVAILABLE_MAC(10.14);
- (NSColor*)colorWithAlphaComponent:(CGFloat)alpha;
- (void)set;
- (void)setFill;
- (void)setStroke;
@property(readonly) CGColorRef CGColor;
@end

@interface NSFont : NSObject <NSCopying, NSSecureCoding>
+ (NSFont*)systemFontOfSize:(CGFloat)fontSize weight:(NSFontWeight)weight;
+ (NSFont*)monospacedSystemFontOfSize:(CGFloat)fontSize
                               weight:(NSFontWeight)weight API_AVAILABLE_MAC(10.15);
@end

@interface NSBezierPath : NSObject <NSCopying, NSSecureCoding>
+ (NSBezierPath*)bezierPath;
+ (NSBezierPath*)bezierPathWithRect:(NSRect)rect;
+ (NSBezierPath*)bezierPathWithOvalInRect:(NSRect)rect;
+ (NSBezierPath*)bezierPathWithRoundedRect:(NSRect)rect
                                   xRadius:(CGFloat)xRadius
                                   yRadius:(CGFloat)yRadius;
- (void)moveToPoint:(NSPoint)point;
- (void)lineToPoint:(NSPoint)point;
- (void)stroke;
- (void)fill;
@property CGFloat lineWidth;
@property NSLineCapStyle lineCapStyle;
@end

@interface NSGraphicsContext : NSObject
@property(class, nullable, strong) NSGraphicsContext* currentContext;
@property NSCompositingOperation compositingOperation;
@end

APPKIT_EXTERN void NSRectFillUsingOperation(NSRect rect, NSCompositingOperation op);

@interface NSString (NSStringDrawing)
- (NSSize)sizeWithAttributes:(nullable NSDictionary<NSAttributedStringKey, id>*)attrs;
- (void)drawAtPoint:(NSPoint)point
     withAttributes:(nullable NSDictionary<NSAttributedStringKey, id>*)attrs;
@end

@protocol NSPasteboardWriting <NSObject>
@end

@interface NSShadow : NSObject <NSCopying, NSSecureCoding>
- (instancetype)init NS_DESIGNATED_INITIALIZER;
@end

@interface NSImageSymbolConfiguration : NSObject <NSCopying, NSSecureCoding>
+ (instancetype)configurationWithPointSize:(CGFloat)pointSize
                                    weight:(NSFontWeight)weight API_AVAILABLE_MAC(11.0);
@end

@interface NSImage : NSObject <NSCopying, NSSecureCoding, NSPasteboardWriting>
+ (nullable NSImage*)imageNamed:(NSImageName)name;
+ (NSImage*)imageWithSize:(NSSize)size
                  flipped:(BOOL)drawingHandlerShouldBeCalledWithFlippedContext
           drawingHandler:(BOOL (^)(NSRect dstRect))drawingHandler;
+ (nullable instancetype)imageWithSystemSymbolName:(NSString*)name
                          accessibilityDescription:(nullable NSString*)description
    API_AVAILABLE_MAC(11.0);
- (nullable NSImage*)imageWithSymbolConfiguration:(NSImageSymbolConfiguration*)configuration
    API_AVAILABLE_MAC(11.0);
- (instancetype)initWithCGImage:(CGImageRef)cgImage size:(NSSize)size;
- (void)setTemplate:(BOOL)isTemplate;
@property(nullable, copy) NSString* accessibilityDescription;
@property(nullable, readonly, copy) NSData* TIFFRepresentation;
- (nullable CGImageRef)CGImageForProposedRect:(nullable NSRect*)proposedDestRect
                                      context:(nullable NSGraphicsContext*)referenceContext
                                        hints:(nullable NSDictionary<NSString*, id>*)hints
    CF_RETURNS_NOT_RETAINED;
@end

typedef NS_ENUM(NSUInteger, NSBitmapImageFileType) { NSBitmapImageFileTypePNG = 4 };
typedef NSString* NSBitmapImageRepPropertyKey;
@interface NSImageRep : NSObject
@end

@interface NSBitmapImageRep : NSImageRep
+ (nullable instancetype)imageRepWithData:(NSData*)data;
- (nullable NSData*)representationUsingType:(NSBitmapImageFileType)storageType
                                 properties:
                                     (NSDictionary<NSBitmapImageRepPropertyKey, id>*)properties;
@end

typedef NSString* NSPasteboardType;
APPKIT_EXTERN NSPasteboardType const NSPasteboardTypeString;
@interface NSPasteboard : NSObject
@property(class, readonly, strong) NSPasteboard* generalPasteboard;
- (NSInteger)clearContents;
- (BOOL)writeObjects:(NSArray<id<NSPasteboardWriting>>*)objects;
- (BOOL)setString:(NSString*)string forType:(NSPasteboardType)dataType;
@end

@interface NSRunningApplication : NSObject
+ (NSArray<NSRunningApplication*>*)runningApplicationsWithBundleIdentifier:
    (NSString*)bundleIdentifier;
+ (nullable instancetype)runningApplicationWithProcessIdentifier:(pid_t)pid;
@property(nullable, readonly, copy) NSString* localizedName;
@property(nullable, readonly, copy) NSString* bundleIdentifier;
@property(readonly) pid_t processIdentifier;
@property(readonly) NSApplicationActivationPolicy activationPolicy;
@property(nullable, readonly, strong) NSImage* icon;
@end

@interface NSWorkspace : NSObject
@property(class, readonly, strong) NSWorkspace* sharedWorkspace;
@property(nullable, readonly, strong) NSRunningApplication* frontmostApplication;
@property(readonly, copy) NSArray<NSRunningApplication*>* runningApplications;
- (BOOL)openURL:(NSURL*)url;
- (nullable NSURL*)URLForApplicationWithBundleIdentifier:(NSString*)bundleIdentifier;
- (NSImage*)iconForFile:(NSString*)fullPath;
@end

DECL_MAIN_THREAD
@interface NSAlert : NSObject
@property(copy) NSString* messageText;
@property(copy) NSString* informativeText;
@property NSAlertStyle alertStyle;
@property(null_resettable, strong) NSImage* icon;
- (NSButton*)addButtonWithTitle:(NSString*)title;
@property(readonly, strong) NSWindow* window;
- (NSModalResponse)runModal;
@end

@interface NSPanel : NSWindow
@end

@interface NSSavePanel : NSPanel
@property(nullable, readonly, copy) NSURL* URL;
@property(nullable, copy) NSURL* directoryURL;
@property(copy) NSArray<UTType*>* allowedContentTypes API_AVAILABLE_MAC(11.0);
@property(null_resettable, copy) NSString* title;
- (NSModalResponse)runModal;
@end

@interface NSOpenPanel : NSSavePanel
+ (NSOpenPanel*)openPanel;
@property BOOL canChooseFiles;
@property BOOL canChooseDirectories;
@property BOOL allowsMultipleSelection;
@end

NS_ASSUME_NONNULL_END
