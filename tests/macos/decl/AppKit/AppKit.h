#pragma once

#include <ApplicationServices/ApplicationServices.h>
#include <Foundation/Foundation.h>
#include <QuartzCore/QuartzCore.h>

NS_ASSUME_NONNULL_BEGIN
@class NSApplication, NSButton, NSColor, NSEvent, NSFont, NSGraphicsContext, NSImage, NSMenu,
    NSWindow;
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
typedef NSUInteger NSWindowStyleMask;
typedef NSUInteger NSWindowCollectionBehavior;
typedef NSUInteger NSEventModifierFlags;
typedef NS_ENUM(NSUInteger, NSBackingStoreType) { NSBackingStoreBuffered = 2 };
typedef NS_ENUM(NSInteger, NSWindowAnimationBehavior) { NSWindowAnimationBehaviorNone = 2 };
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
typedef NSString* NSDeviceDescriptionKey;
DECL_MAIN_THREAD
@interface NSResponder : NSObject <NSCoding>
- (instancetype)init NS_DESIGNATED_INITIALIZER;
- (nullable instancetype)initWithCoder:(NSCoder*)coder NS_DESIGNATED_INITIALIZER;
- (void)mouseDown:(NSEvent*)event;
- (void)rightMouseDown:(NSEvent*)event;
- (void)mouseUp:(NSEvent*)event;
- (void)mouseDragged:(NSEvent*)event;
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

@interface NSView : NSResponder
- (instancetype)initWithFrame:(NSRect)frameRect NS_DESIGNATED_INITIALIZER;
- (nullable instancetype)initWithCoder:(NSCoder*)coder NS_DESIGNATED_INITIALIZER;
@property(copy) NSArray<__kindof NSView*>* subviews;
@property NSRect frame;
@property BOOL needsDisplay;
@property BOOL wantsLayer;
- (void)drawRect:(NSRect)dirtyRect;
- (BOOL)acceptsFirstMouse:(nullable NSEvent*)event;
@end

@interface NSControl : NSView
@end

@interface NSTextField : NSControl
@property NSTextFieldBezelStyle bezelStyle;
@end

@interface NSButton : NSControl
@property NSBezelStyle bezelStyle;
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
@end

@interface NSWindow : NSResponder
- (instancetype)initWithContentRect:(NSRect)contentRect
                          styleMask:(NSWindowStyleMask)style
                            backing:(NSBackingStoreType)backingStoreType
                              defer:(BOOL)flag NS_DESIGNATED_INITIALIZER;
- (nullable instancetype)initWithCoder:(NSCoder*)coder NS_UNAVAILABLE;
@property(copy) NSString* title;
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
@property(getter=isReleasedWhenClosed) BOOL releasedWhenClosed;
@property(readonly) BOOL canBecomeKeyWindow;
- (NSRect)frameRectForContentRect:(NSRect)contentRect;
- (void)setFrame:(NSRect)frameRect display:(BOOL)flag;
- (void)becomeKeyWindow;
- (void)resignKeyWindow;
- (void)disableCursorRects;
@property NSWindowAnimationBehavior animationBehavior;
- (void)makeKeyAndOrderFront:(nullable id)sender;
- (void)orderFrontRegardless;
- (void)orderOut:(nullable id)sender;
- (void)close;
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
@property(readonly) NSPoint locationInWindow;
+ (nullable id)addLocalMonitorForEventsMatchingMask:(NSEventMask)mask
                                            handler:(NSEvent* _Nullable (^)(NSEvent* event))block;
+ (void)removeMonitor:(id)eventMonitor;
@end

@interface NSCursor : NSObject
@property(class, readonly, strong) NSCursor* crosshairCursor;
+ (void)pop;
- (void)push;
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
+ (NSBezierPath*)bezierPathWithRect:(NSRect)rect;
+ (NSBezierPath*)bezierPathWithRoundedRect:(NSRect)rect
                                   xRadius:(CGFloat)xRadius
                                   yRadius:(CGFloat)yRadius;
- (void)stroke;
- (void)fill;
@property CGFloat lineWidth;
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

@interface NSImage : NSObject <NSCopying, NSSecureCoding, NSPasteboardWriting>
+ (NSImage*)imageWithSize:(NSSize)size
                  flipped:(BOOL)drawingHandlerShouldBeCalledWithFlippedContext
           drawingHandler:(BOOL (^)(NSRect dstRect))drawingHandler;
+ (nullable instancetype)imageWithSystemSymbolName:(NSString*)name
                          accessibilityDescription:(nullable NSString*)description
    API_AVAILABLE_MAC(11.0);
- (instancetype)initWithCGImage:(CGImageRef)cgImage size:(NSSize)size;
- (void)setTemplate:(BOOL)isTemplate;
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
