#include "platform/macos/accessibility_mac.h"

#include "platform/macos/bridge/cf_owner.h"
#include "platform/macos/bridge/convert.h"

#import <ApplicationServices/ApplicationServices.h>

#include <utility>

namespace trovel {

namespace {

// The value handed out is ours to release, and only there when the call succeeded.
CFOwner<CFTypeRef> copyAttribute(AXUIElementRef _Nonnull element, CFStringRef _Nonnull name) {
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
    explicit AccessibilityWindowMac(CFOwner<CFTypeRef> element) : element_(std::move(element)) {}

    [[nodiscard]] std::optional<Point> position() const override {
        auto const point =
            unpack<CGPoint>(copyAttribute(element(), kAXPositionAttribute), kAXValueTypeCGPoint);
        if (!point) return std::nullopt;
        return fromNSPoint(*point);
    }
    [[nodiscard]] std::optional<Size> size() const override {
        auto const size =
            unpack<CGSize>(copyAttribute(element(), kAXSizeAttribute), kAXValueTypeCGSize);
        if (!size) return std::nullopt;
        return fromNSSize(*size);
    }

private:
    [[nodiscard]] AXUIElementRef _Nonnull element() const {
        return static_cast<AXUIElementRef>(element_.get());
    }

    CFOwner<CFTypeRef> element_;
};

/// Null when `element` is null or no accessibility element.
Accessibility::WindowPtr makeWindow(CFOwner<CFTypeRef> element) {
    if (!element || CFGetTypeID(element.get()) != AXUIElementGetTypeID()) return nullptr;
    return std::make_shared<AccessibilityWindowMac>(std::move(element));
}

} // namespace

Accessibility::WindowPtr AccessibilityMac::focusedWindow(std::int32_t processIdentifier) const {
    CFOwner<AXUIElementRef> const application(AXUIElementCreateApplication(processIdentifier));
    return makeWindow(copyAttribute(application.get(), kAXFocusedWindowAttribute));
}

std::optional<std::vector<Accessibility::WindowPtr>>
AccessibilityMac::windows(std::int32_t processIdentifier) const {
    CFOwner<AXUIElementRef> const application(AXUIElementCreateApplication(processIdentifier));
    auto const value = copyAttribute(application.get(), kAXWindowsAttribute);
    if (!value || CFGetTypeID(value.get()) != CFArrayGetTypeID()) return std::nullopt;
    auto const list = static_cast<CFArrayRef>(value.get());
    std::vector<WindowPtr> windows;
    for (CFIndex index = 0; index < CFArrayGetCount(list); ++index) {
        // The array owns its elements; the window keeps one beyond it.
        CFOwner<CFTypeRef> element(CFRetain(CFArrayGetValueAtIndex(list, index)));
        if (auto window = makeWindow(std::move(element))) windows.push_back(std::move(window));
    }
    return windows;
}

} // namespace trovel
