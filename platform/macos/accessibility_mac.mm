#include "platform/macos/accessibility_mac.h"

#include "platform/macos/bridge/cf_owner.h"
#include "platform/macos/bridge/convert.h"

#import <ApplicationServices/ApplicationServices.h>

#include <algorithm>
#include <utility>

namespace trovel {

namespace {

/// How long a look into another application may take, all of its reads together.
constexpr double kLook = 2;

double now() {
    return NSProcessInfo.processInfo.systemUptime;
}

// The value handed out is ours to release, and only there when the call succeeded.
CFOwner<CFTypeRef> copyAttribute(AXUIElementRef _Nonnull element, CFStringRef _Nonnull name,
                                 double end) {
    constexpr double kPatience = 1;
    double const left = std::min(kPatience, end - now());
    if (left <= 0) return nullptr;
    // Each element has one of its own, and the system's usual one is several seconds.
    AXUIElementSetMessagingTimeout(element, static_cast<float>(left));
    CFTypeRef value = nullptr;
    if (AXUIElementCopyAttributeValue(element, name, &value) != kAXErrorSuccess) return nullptr;
    return CFOwner<CFTypeRef>(value);
}

/// The value as T, nothing when it is of another type.
template <class T> std::optional<T> unpack(CFOwner<CFTypeRef> const& value, AXValueType type) {
    if (!value || CFGetTypeID(value.get()) != AXValueGetTypeID()) return std::nullopt;
    T unpacked{};
    if (!AXValueGetValue(static_cast<AXValueRef>(value.get()), type, &unpacked)) {
        return std::nullopt;
    }
    return unpacked;
}

class AccessibilityWindowMac final : public AccessibilityWindow {
public:
    AccessibilityWindowMac(CFOwner<CFTypeRef> element, double end)
        : element_(std::move(element)), end_(end) {}

    [[nodiscard]] std::optional<Point> position() const override {
        auto const point = unpack<CGPoint>(copyAttribute(element(), kAXPositionAttribute, end_),
                                           kAXValueTypeCGPoint);
        if (!point) return std::nullopt;
        return fromNSPoint(*point);
    }
    [[nodiscard]] std::optional<Size> size() const override {
        auto const size =
            unpack<CGSize>(copyAttribute(element(), kAXSizeAttribute, end_), kAXValueTypeCGSize);
        if (!size) return std::nullopt;
        return fromNSSize(*size);
    }

private:
    [[nodiscard]] AXUIElementRef _Nonnull element() const {
        return static_cast<AXUIElementRef>(element_.get());
    }

    CFOwner<CFTypeRef> element_;
    double end_; // when the look that found the window is over
};

/// Null when `element` is null or no accessibility element.
Accessibility::WindowPtr makeWindow(CFOwner<CFTypeRef> element, double end) {
    if (!element || CFGetTypeID(element.get()) != AXUIElementGetTypeID()) return nullptr;
    return std::make_shared<AccessibilityWindowMac>(std::move(element), end);
}

} // namespace

Accessibility::WindowPtr AccessibilityMac::focusedWindow(std::int32_t processIdentifier) const {
    CFOwner<AXUIElementRef> const application(AXUIElementCreateApplication(processIdentifier));
    end_ = now() + kLook;
    return makeWindow(copyAttribute(application.get(), kAXFocusedWindowAttribute, end_), end_);
}

std::optional<std::vector<Accessibility::WindowPtr>>
AccessibilityMac::windows(std::int32_t processIdentifier) const {
    CFOwner<AXUIElementRef> const application(AXUIElementCreateApplication(processIdentifier));
    // Whoever found no focused window goes on with its look, of which a second is left at least.
    if (end_ <= now()) end_ = now() + kLook;
    auto const value = copyAttribute(application.get(), kAXWindowsAttribute, end_);
    if (!value || CFGetTypeID(value.get()) != CFArrayGetTypeID()) return std::nullopt;
    auto const list = static_cast<CFArrayRef>(value.get());
    std::vector<WindowPtr> windows;
    for (CFIndex index = 0; index < CFArrayGetCount(list); ++index) {
        // The array owns its elements; the window keeps one beyond it.
        CFOwner<CFTypeRef> element(CFRetain(CFArrayGetValueAtIndex(list, index)));
        if (auto window = makeWindow(std::move(element), end_))
            windows.push_back(std::move(window));
    }
    return windows;
}

} // namespace trovel
