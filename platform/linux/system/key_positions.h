#pragma once

#include "platform/key_codes.h"

#include <cstdint>
#include <optional>

namespace trovel {

/// The kernel's code (linux/input-event-codes.h) of the key at the position that `keyCode` names.
/// The modifier keys go by their role: Command is Ctrl, Control is Super and Option is Alt. Nothing
/// for an unknown position.
[[nodiscard]] std::optional<std::uint8_t> evdevCodeForVirtualKey(KeyCode keyCode);

/// The other way.
[[nodiscard]] std::optional<KeyCode> virtualKeyForEvdevCode(std::uint32_t evdevCode);

/// What both display systems number a key with is the kernel's code plus this.
inline constexpr std::uint8_t kKeycodeOffset = 8;

} // namespace trovel
