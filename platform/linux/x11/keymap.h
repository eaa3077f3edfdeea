#pragma once

#include "platform/key_codes.h"
#include "platform/linux/x11/connection.h"

#include <xcb/xcb.h>

#include <optional>
#include <vector>

namespace trovel {

/// The keyboard of an X server. The two directions of the table of physical positions are fixed;
/// everything else is read from the server when it is asked for, so a change of the layout needs no
/// notice. Main thread only.
class Keymap {
public:
    /// `connection` outlives the keymap.
    explicit Keymap(XcbConnection const& connection) : connection_(connection) {}

    /// The X keycode of the key at the position that `keyCode` names. Nothing for an unknown
    /// position, never keycode 0, which would mean every key.
    [[nodiscard]] static std::optional<xcb_keycode_t> keycodeForVirtualKey(KeyCode keyCode);
    [[nodiscard]] static std::optional<KeyCode> virtualKeyForKeycode(xcb_keycode_t keycode);

    /// The keys that type `keysym` without any modifier: those that do in the current layout group
    /// first, then those of the other groups in their order. A key is named once.
    [[nodiscard]] std::vector<xcb_keycode_t> keycodesTyping(xcb_keysym_t keysym) const;

    /// The keys that are down now, whoever pressed them.
    [[nodiscard]] std::vector<xcb_keycode_t> heldKeys() const;

    /// The keys that set a modifier, locks included, whether they are down or not.
    [[nodiscard]] std::vector<xcb_keycode_t> modifierKeys() const;

private:
    XcbConnection const& connection_;
};

} // namespace trovel
