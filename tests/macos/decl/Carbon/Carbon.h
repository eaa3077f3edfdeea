#pragma once

#include <CoreFoundation/CoreFoundation.h>

typedef struct OpaqueEventRef* EventRef;
typedef struct OpaqueEventHandlerRef* EventHandlerRef;
typedef struct OpaqueEventHandlerCallRef* EventHandlerCallRef;
typedef struct OpaqueEventTargetRef* EventTargetRef;
typedef struct OpaqueEventHotKeyRef* EventHotKeyRef;
struct EventTypeSpec {
    OSType eventClass;
    UInt32 eventKind;
};
typedef struct EventTypeSpec EventTypeSpec;
struct EventHotKeyID {
    OSType signature;
    UInt32 id;
};
typedef struct EventHotKeyID EventHotKeyID;
typedef OSStatus (*EventHandlerProcPtr)(EventHandlerCallRef _Nullable inHandlerCallRef,
                                        EventRef _Nullable inEvent, void* _Nullable inUserData);
typedef EventHandlerProcPtr EventHandlerUPP;
enum { kEventClassKeyboard = 'keyb' };
enum { kEventHotKeyPressed = 5 };
enum { kEventHotKeyNoOptions = 0 };
extern "C" {
EventTargetRef _Nullable GetApplicationEventTarget(void);
OSStatus InstallEventHandler(EventTargetRef _Nullable inTarget, EventHandlerUPP _Nullable inHandler,
                             ItemCount inNumTypes, EventTypeSpec const* _Nullable inList,
                             void* _Nullable inUserData,
                             EventHandlerRef _Nullable* _Nullable outRef);
OSStatus RemoveEventHandler(EventHandlerRef _Nullable inHandlerRef);
OSStatus RegisterEventHotKey(UInt32 inHotKeyCode, UInt32 inHotKeyModifiers,
                             EventHotKeyID inHotKeyID, EventTargetRef _Nullable inTarget,
                             OptionBits inOptions, EventHotKeyRef _Nullable* _Nullable outRef);
OSStatus UnregisterEventHotKey(EventHotKeyRef _Nullable inHotKey);
}
