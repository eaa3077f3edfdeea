#pragma once

#include "platform/carbon_modifiers.h"
#include "platform/key_codes.h"

#include <cstdint>
#include <string>

namespace trovel {

class Preferences;

/// A key and the modifiers held with it, as a Carbon mask.
struct Hotkey {
    KeyCode keyCode = 0;
    std::uint32_t modifiers = 0;

    friend bool operator==(Hotkey const&, Hotkey const&) = default;
};

/// Command-Shift-2, the hotkey until the user records one.
inline constexpr Hotkey kDefaultHotkey{19, kCmdKey + kShiftKey};

/// The hotkey in force. While a recorded one is stored, a key code or mask that is no unsigned
/// 32-bit number stops the process.
[[nodiscard]] Hotkey loadHotkey(Preferences const& preferences);

/// Stores a recorded hotkey; it is in force from the next load on.
void saveHotkey(Preferences& preferences, Hotkey hotkey);

/// The hotkey in force as the user reads it, for example "⌃⌥F1".
[[nodiscard]] std::string storedHotkeyText(Preferences const& preferences);

/// A key with modifier flags in the same notation.
[[nodiscard]] std::string hotkeyText(KeyCode keyCode, EventFlags flags);

/// The glyphs of the modifiers among the flags alone, for example "⌃⇧"; empty when there is none.
[[nodiscard]] std::string modifierGlyphs(EventFlags flags);

/// The name of a key on an ANSI keyboard; "Key" and the code for one that has no name.
[[nodiscard]] std::string keyName(KeyCode keyCode);

} // namespace trovel
