#include "tests/macos/run/fakes/mac.h"

#import <ApplicationServices/ApplicationServices.h>

#include <string_view>

/// What the references of the accessibility interface refer to: an element of another program's, a
/// value, or a list of elements.
@interface FakeAccessible : NSObject {
@public
    CFTypeID type_;
    pid_t program_;
    AXValueType valueType_;
    CGRect value_;
    double timeout_; // of a message, in seconds; 0 for the usual one
    std::vector<FakeAccessible*> elements_;
}
@end

@implementation FakeAccessible
@end

namespace {

constexpr CFTypeID kArray = 1;
constexpr CFTypeID kValue = 2;
constexpr CFTypeID kElement = 3;

constexpr AXError kInvalidElement = static_cast<AXError>(-25202);
constexpr AXError kCannotComplete = static_cast<AXError>(-25204);
constexpr AXError kUnsupported = static_cast<AXError>(-25205);
constexpr AXError kDisabled = static_cast<AXError>(-25211);
constexpr AXError kNoValue = static_cast<AXError>(-25212);

FakeAccessible* _Nonnull make(CFTypeID type, pid_t program) {
    FakeAccessible* const made = [[FakeAccessible alloc] init];
    made->type_ = type;
    made->program_ = program;
    return made;
}

FakeAccessible* _Nonnull fakeOf(CFTypeRef _Nonnull value) {
    return (__bridge FakeAccessible*)value;
}

CFTypeRef _Nonnull handOut(FakeAccessible* _Nonnull fake) {
    return (__bridge_retained CFTypeRef)fake;
}

/// The text of a CFSTR, which the compiler lays out like this.
std::string_view textOf(CFStringRef _Nonnull text) {
    struct Literal {
        void const* isa;
        int flags;
        char const* text;
        long length;
    };
    return reinterpret_cast<Literal const*>(text)->text;
}

FakeAccessible* _Nonnull valueOf(fakes::Program const& program, AXValueType type) {
    FakeAccessible* const value = make(kValue, program.processIdentifier);
    value->valueType_ = type;
    value->value_ = program.window;
    return value;
}

} // namespace

CFStringRef const kAXTrustedCheckOptionPrompt =
    (__bridge CFStringRef) @"AXTrustedCheckOptionPrompt";

extern "C" {

// Only its address counts.
extern int const __CFConstantStringClassReference[32];
int const __CFConstantStringClassReference[32]{};

Boolean AXIsProcessTrusted() {
    return fakes::mac().isTrusted;
}

// "…the prompt occurs asynchronously and does not affect the return value."
Boolean AXIsProcessTrustedWithOptions(CFDictionaryRef options) {
    NSDictionary* const native = (__bridge NSDictionary*)options;
    NSNumber* const prompts = native[(__bridge NSString*)kAXTrustedCheckOptionPrompt];
    if (prompts.longLongValue != 0) fakes::mac().record("ask for accessibility");
    return fakes::mac().isTrusted;
}

AXUIElementRef AXUIElementCreateApplication(pid_t pid) {
    return static_cast<AXUIElementRef>(handOut(make(kElement, pid)));
}

// "…the number of seconds before a message times out", of that element.
AXError AXUIElementSetMessagingTimeout(AXUIElementRef element, float timeoutInSeconds) {
    fakeOf(element)->timeout_ = timeoutInSeconds;
    return kAXErrorSuccess;
}

// Each read is a message to the program: without trust it is refused (kAXErrorAPIDisabled), one
// that does not answer fails after a while (kAXErrorCannotComplete), and what is gone is no
// element any more (kAXErrorInvalidUIElement). The value is only there on success.
AXError AXUIElementCopyAttributeValue(AXUIElementRef element, CFStringRef attribute,
                                      CFTypeRef* value) {
    using enum fakes::Program::Accessibility;
    auto& mac = fakes::mac();
    auto const* const program = mac.find(fakeOf(element)->program_);
    auto const name = textOf(attribute);
    if (!mac.isTrusted) return kDisabled;
    if (program == nullptr) return kInvalidElement;
    if (program->accessibility == isRefused) return kDisabled;
    if (program->accessibility == hangs) {
        constexpr double kUsualTimeout = 6;
        auto const timeout =
            fakeOf(element)->timeout_ > 0 ? fakeOf(element)->timeout_ : kUsualTimeout;
        ++mac.hungReads;
        mac.timeInHungReads +=
            std::chrono::round<fakes::Time>(std::chrono::duration<double>(timeout));
        return kCannotComplete;
    }
    if (name == "AXPosition" || name == "AXSize") {
        auto const type = name == "AXSize" ? kAXValueTypeCGSize : kAXValueTypeCGPoint;
        *value = handOut(valueOf(*program, type));
        return kAXErrorSuccess;
    }
    FakeAccessible* const window = make(kElement, program->processIdentifier);
    bool const hasWindow = program->accessibility == answers && program->window.size.width > 0;
    if (name == "AXFocusedWindow") {
        if (!hasWindow) return kNoValue;
        *value = handOut(window);
        return kAXErrorSuccess;
    }
    if (name != "AXWindows") return kUnsupported;
    FakeAccessible* const list = make(kArray, program->processIdentifier);
    if (hasWindow) list->elements_.push_back(window);
    *value = handOut(list);
    return kAXErrorSuccess;
}

CFTypeID CFGetTypeID(CFTypeRef value) {
    return fakeOf(value)->type_;
}

CFTypeID CFArrayGetTypeID() {
    return kArray;
}

CFTypeID AXUIElementGetTypeID() {
    return kElement;
}

CFTypeID AXValueGetTypeID() {
    return kValue;
}

CFIndex CFArrayGetCount(CFArrayRef array) {
    return static_cast<CFIndex>(fakeOf(array)->elements_.size());
}

void const* CFArrayGetValueAtIndex(CFArrayRef array, CFIndex index) {
    return (__bridge void const*)fakeOf(array)->elements_.at(static_cast<std::size_t>(index));
}

// "Returns false if the type does not match."
Boolean AXValueGetValue(AXValueRef value, AXValueType type, void* result) {
    FakeAccessible* const fake = fakeOf(value);
    if (fake->valueType_ != type) return 0;
    if (type == kAXValueTypeCGPoint) *static_cast<CGPoint*>(result) = fake->value_.origin;
    if (type == kAXValueTypeCGSize) *static_cast<CGSize*>(result) = fake->value_.size;
    return 1;
}
}
