#include "platform/macos/ui/view_keyboard.h"

#include "platform/macos/bridge/convert.h"
#include "platform/macos/ui/appkit_values.h"
#include "platform/macos/ui/view_events.h"
#include "platform/ui/keyboard_navigation.h"
#include "platform/ui/window.h"

namespace trovel {

namespace {

NavigationKey navigationKey(NSEvent* _Nonnull event, std::weak_ptr<View> const& mirrored) {
    auto const view = mirrored.lock();
    auto const* const window = view ? view->window() : nullptr;
    return window != nullptr ? navigationKey(*window, toKeyEvent(event)) : NavigationKey::none;
}

} // namespace

bool takesKeyboard(std::weak_ptr<View> const& mirrored) {
    auto const view = mirrored.lock();
    auto const* const window = view ? view->window() : nullptr;
    return window != nullptr && view->accessibility() && !window->attributes().takesEveryKey &&
           NSApplication.sharedApplication.fullKeyboardAccessEnabled;
}

bool pressByKey(NSEvent* _Nonnull event, std::weak_ptr<View> const& mirrored) {
    if (!takesKeyboard(mirrored)) return false;
    if (navigationKey(event, mirrored) != NavigationKey::press) return false;
    sendPress(mirrored);
    return true;
}

bool isNavigation(NSEvent* _Nonnull event, std::weak_ptr<View> const& mirrored) {
    return navigationKey(event, mirrored) != NavigationKey::none;
}

NSBezierPath* _Nonnull outline(std::weak_ptr<View> const& mirrored) {
    auto const view = mirrored.lock();
    if (!view) return [NSBezierPath bezierPath];
    double const radius = view->layer() ? view->layer()->cornerRadius : 0;
    return [NSBezierPath bezierPathWithRoundedRect:toNSRect(view->bounds())
                                           xRadius:radius
                                           yRadius:radius];
}

} // namespace trovel
