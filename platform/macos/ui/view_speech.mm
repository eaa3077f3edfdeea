#include "platform/macos/ui/view_speech.h"

#include "platform/macos/bridge/convert.h"

namespace trovel {

namespace {

NSAccessibilityRole _Nonnull toNative(AccessibilityInfo::Role role) {
    switch (role) {
    case AccessibilityInfo::Role::button:
        return NSAccessibilityButtonRole;
    }
}

} // namespace

void speak(AccessibilityInfo const& info, NSView* _Nonnull view) {
    // A role alone does not show a view to assistive programs.
    view.accessibilityElement = YES;
    view.accessibilityRole = toNative(info.role);
    view.accessibilityLabel = toNSString(info.label);
    view.accessibilityValue = info.value.empty() ? nil : toNSString(info.value);
}

} // namespace trovel
