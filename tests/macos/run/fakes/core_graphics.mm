#include "tests/macos/run/fakes/mac.h"
#include "tests/macos/run/runtime/runtime.h"

#import <ApplicationServices/ApplicationServices.h>

/// What CGEventSourceRef refers to.
@interface FakeEventSource : NSObject
@end

@implementation FakeEventSource
@end

/// What CGEventRef refers to.
@interface FakeEvent : NSObject {
@public
    bool isKey_;
    bool isDown_;
    CGKeyCode keyCode_;
    CGPoint position_;
    CGEventFlags flags_;
}
@end

@implementation FakeEvent
@end

namespace {

FakeEvent* _Nonnull eventOf(CGEventRef _Nonnull event) {
    return (__bridge FakeEvent*)static_cast<void*>(event);
}

CGEventRef _Nonnull handOut(FakeEvent* _Nonnull event) {
    return (CGEventRef) const_cast<void*>((__bridge_retained void const*)event);
}

} // namespace

extern "C" {

// "If the cf argument is NULL, this will cause a runtime error and your application will crash."
CFTypeRef CFRetain(CFTypeRef value) {
    fakes::require(value != nullptr, "CFRetain of NULL");
    return objc_retain(const_cast<void*>(value));
}

void CFRelease(CFTypeRef value) {
    fakes::require(value != nullptr, "CFRelease of NULL");
    objc_release(const_cast<void*>(value));
}

bool CGPreflightScreenCaptureAccess() {
    return fakes::mac().mayRecordScreen;
}

bool CGRequestScreenCaptureAccess() {
    fakes::mac().record("ask for screen recording");
    return fakes::mac().mayRecordScreen;
}

CGEventSourceRef CGEventSourceCreate(CGEventSourceStateID) {
    if (!fakes::mac().hasEventSource) return nullptr;
    FakeEventSource* const source = [[FakeEventSource alloc] init];
    return (CGEventSourceRef) const_cast<void*>((__bridge_retained void const*)source);
}

bool CGEventSourceKeyState(CGEventSourceStateID, CGKeyCode key) {
    return fakes::mac().heldKeys.contains(key);
}

// "Pass NULL to create the event without a source": the event then has the flags of the moment.
CGEventRef CGEventCreateKeyboardEvent(CGEventSourceRef, CGKeyCode virtualKey, bool keyDown) {
    FakeEvent* const event = [[FakeEvent alloc] init];
    event->isKey_ = true;
    event->isDown_ = keyDown;
    event->keyCode_ = virtualKey;
    event->flags_ = fakes::mac().flags;
    return handOut(event);
}

CGEventRef CGEventCreateMouseEvent(CGEventSourceRef, CGEventType mouseType,
                                   CGPoint mouseCursorPosition, CGMouseButton mouseButton) {
    FakeEvent* const event = [[FakeEvent alloc] init];
    fakes::require(mouseButton == kCGMouseButtonLeft, "another button than the left one");
    event->isDown_ = mouseType == kCGEventLeftMouseDown;
    event->position_ = mouseCursorPosition;
    event->flags_ = fakes::mac().flags;
    return handOut(event);
}

void CGEventSetFlags(CGEventRef event, CGEventFlags flags) {
    if (event != nullptr) eventOf(event)->flags_ = flags;
}

// What is posted at the HID tap arrives as if the user did it, where the program is trusted.
void CGEventPost(CGEventTapLocation tap, CGEventRef posted) {
    auto& mac = fakes::mac();
    if (posted == nullptr || !mac.isTrusted) return;
    fakes::require(tap == kCGHIDEventTap, "another tap than the HID's");
    FakeEvent* const event = eventOf(posted);
    if (event->isKey_) {
        auto const flags = static_cast<NSEventModifierFlags>(event->flags_);
        event->isDown_ ? mac.keyDown(event->keyCode_, flags) : mac.keyUp(event->keyCode_);
        return;
    }
    auto const height = mac.displays.front().frame.size.height;
    mac.movePointer(NSMakePoint(event->position_.x, height - event->position_.y));
    event->isDown_ ? mac.leftDown() : mac.leftUp();
}
}
