#include "platform/ui/keyboard_navigation.h"

#include "platform/ui/events.h"
#include "platform/ui/window.h"

namespace trovel {

NavigationKey navigationKey(Window const& window, KeyEvent const& event) {
    if (event.kind != KeyEvent::Kind::keyDown || window.attributes().takesEveryKey) {
        return NavigationKey::none;
    }
    // With any other modifier the key is a shortcut.
    if ((event.modifierFlags & (kFlagControl | kFlagOption | kFlagCommand)) != 0) {
        return NavigationKey::none;
    }
    bool const isShifted = (event.modifierFlags & kFlagShift) != 0;
    if (event.keyCode == kKeyTab) return isShifted ? NavigationKey::previous : NavigationKey::next;
    return event.keyCode == kKeySpace && !isShifted ? NavigationKey::press : NavigationKey::none;
}

} // namespace trovel
