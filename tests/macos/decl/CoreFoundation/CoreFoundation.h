#pragma once

#include <objc/base.h>

typedef void const* CFTypeRef;
typedef const struct CF_BRIDGED_TYPE(NSString) __CFString* CFStringRef;
typedef const struct CF_BRIDGED_TYPE(NSDictionary) __CFDictionary* CFDictionaryRef;
typedef const struct CF_BRIDGED_TYPE(NSArray) __CFArray* CFArrayRef;
typedef struct CF_BRIDGED_TYPE(id) __CFRunLoop* CFRunLoopRef;
typedef long CFIndex;
typedef unsigned long CFTypeID;
typedef unsigned char Boolean;
typedef unsigned int UInt32;
typedef signed int SInt32;
typedef SInt32 OSStatus;
typedef UInt32 FourCharCode;
typedef FourCharCode OSType;
typedef UInt32 OptionBits;
typedef unsigned long ItemCount;
enum { noErr = 0 };
CF_IMPLICIT_BRIDGING_ENABLED
CF_EXPORT CFTypeRef _Null_unspecified CFRetain(CFTypeRef _Null_unspecified cf);
CF_EXPORT void CFRelease(CFTypeRef _Null_unspecified cf);
CF_EXPORT CFTypeID CFGetTypeID(CFTypeRef _Null_unspecified cf);
CF_EXPORT CFTypeID CFArrayGetTypeID(void);
CF_EXPORT CFIndex CFArrayGetCount(CFArrayRef _Null_unspecified theArray);
CF_EXPORT const void* _Null_unspecified CFArrayGetValueAtIndex(
    CFArrayRef _Null_unspecified theArray, CFIndex idx);
CF_EXPORT CFRunLoopRef _Null_unspecified CFRunLoopGetMain(void);
CF_EXPORT void CFRunLoopWakeUp(CFRunLoopRef _Null_unspecified rl);
CF_EXPORT void CFRunLoopPerformBlock(CFRunLoopRef _Null_unspecified rl,
                                     CFTypeRef _Null_unspecified mode,
                                     void (^_Null_unspecified block)(void));
CF_IMPLICIT_BRIDGING_DISABLED
typedef CFStringRef CFRunLoopMode;
CF_EXPORT const CFRunLoopMode _Null_unspecified kCFRunLoopCommonModes;
