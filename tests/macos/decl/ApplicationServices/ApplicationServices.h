#pragma once

#include <CoreGraphics/CoreGraphics.h>

typedef const struct CF_BRIDGED_TYPE(id) __AXUIElement* AXUIElementRef;
typedef const struct CF_BRIDGED_TYPE(id) __AXValue* AXValueRef;
typedef NS_ENUM(SInt32, AXError) { kAXErrorSuccess = 0 };
typedef NS_ENUM(UInt32, AXValueType) { kAXValueTypeCGPoint = 1, kAXValueTypeCGSize = 2 };
CF_IMPLICIT_BRIDGING_ENABLED
extern "C" {
Boolean AXIsProcessTrusted(void);
Boolean AXIsProcessTrustedWithOptions(CFDictionaryRef _Nullable options);
AXUIElementRef _Nonnull AXUIElementCreateApplication(pid_t pid) CF_RETURNS_RETAINED;
AXError AXUIElementSetMessagingTimeout(AXUIElementRef _Nonnull element, float timeoutInSeconds);
AXError AXUIElementCopyAttributeValue(AXUIElementRef _Nonnull element,
                                      CFStringRef _Nonnull attribute,
                                      CFTypeRef _Nullable* _Nonnull CF_RETURNS_RETAINED value);
CFTypeID AXUIElementGetTypeID(void);
CFTypeID AXValueGetTypeID(void);
Boolean AXValueGetValue(AXValueRef _Nonnull value, AXValueType theType, void* _Nonnull valuePtr);
}
CF_IMPLICIT_BRIDGING_DISABLED
CF_EXPORT const CFStringRef _Nonnull kAXTrustedCheckOptionPrompt;
#define kAXFocusedWindowAttribute CFSTR("AXFocusedWindow")
#define kAXWindowsAttribute CFSTR("AXWindows")
#define kAXPositionAttribute CFSTR("AXPosition")
#define kAXSizeAttribute CFSTR("AXSize")
#define CFSTR(s) ((CFStringRef)__builtin___CFStringMakeConstantString("" s ""))
