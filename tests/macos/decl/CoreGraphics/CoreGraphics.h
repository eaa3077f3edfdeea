#pragma once

#include <CoreFoundation/CoreFoundation.h>

struct CGPoint {
    CGFloat x;
    CGFloat y;
};
typedef struct CGPoint CGPoint;
struct CGSize {
    CGFloat width;
    CGFloat height;
};
typedef struct CGSize CGSize;
struct CGRect {
    CGPoint origin;
    CGSize size;
};
typedef struct CGRect CGRect;
static inline CGPoint CGPointMake(CGFloat x, CGFloat y) {
    CGPoint p;
    p.x = x;
    p.y = y;
    return p;
}
static inline CGSize CGSizeMake(CGFloat w, CGFloat h) {
    CGSize s;
    s.width = w;
    s.height = h;
    return s;
}
static inline CGRect CGRectMake(CGFloat x, CGFloat y, CGFloat w, CGFloat h) {
    CGRect r;
    r.origin = CGPointMake(x, y);
    r.size = CGSizeMake(w, h);
    return r;
}
typedef struct CF_BRIDGED_TYPE(id) CGImage* CGImageRef;
typedef struct CF_BRIDGED_TYPE(id) CGColor* CGColorRef;
typedef uint32_t CGDirectDisplayID;
typedef struct CF_BRIDGED_TYPE(id) __CGEvent* CGEventRef;
typedef struct CF_BRIDGED_TYPE(id) __CGEventSource* CGEventSourceRef;
typedef uint16_t CGKeyCode;
typedef uint64_t CGEventFlags;
typedef NS_ENUM(int32_t, CGEventSourceStateID) { kCGEventSourceStateCombinedSessionState = 0 };
typedef NS_ENUM(uint32_t, CGEventTapLocation) { kCGHIDEventTap = 0 };
typedef NS_ENUM(uint32_t, CGMouseButton) { kCGMouseButtonLeft = 0 };
typedef NS_ENUM(uint32_t, CGEventType) { kCGEventLeftMouseDown = 1, kCGEventLeftMouseUp = 2 };
CF_IMPLICIT_BRIDGING_ENABLED
extern "C" {
size_t CGImageGetWidth(CGImageRef _Nullable image);
size_t CGImageGetHeight(CGImageRef _Nullable image);
CGImageRef _Nullable CGImageCreateWithImageInRect(CGImageRef _Nullable image,
                                                  CGRect rect) CF_RETURNS_RETAINED;
CGImageRef _Nullable CGImageRetain(CGImageRef _Nullable image);
bool CGPreflightScreenCaptureAccess(void) API_AVAILABLE_MAC(10.15);
bool CGRequestScreenCaptureAccess(void) API_AVAILABLE_MAC(10.15);
CGEventSourceRef _Nullable CGEventSourceCreate(CGEventSourceStateID stateID) CF_RETURNS_RETAINED;
bool CGEventSourceKeyState(CGEventSourceStateID stateID, CGKeyCode key);
CGEventRef _Nullable CGEventCreateKeyboardEvent(CGEventSourceRef _Nullable source,
                                                CGKeyCode virtualKey,
                                                bool keyDown) CF_RETURNS_RETAINED;
CGEventRef _Nullable CGEventCreateMouseEvent(CGEventSourceRef _Nullable source,
                                             CGEventType mouseType, CGPoint mouseCursorPosition,
                                             CGMouseButton mouseButton) CF_RETURNS_RETAINED;
void CGEventSetFlags(CGEventRef _Nullable event, CGEventFlags flags);
void CGEventPost(CGEventTapLocation tap, CGEventRef _Nullable event);
}
CF_IMPLICIT_BRIDGING_DISABLED
