#pragma once

#include "platform/key_codes.h"

#include <cstdint>

namespace trovel {

/// The bits of a Carbon modifier mask (Carbon's HIToolbox Events.h).
inline constexpr std::uint32_t kCmdKey = 0x100;
inline constexpr std::uint32_t kShiftKey = 0x200;
inline constexpr std::uint32_t kOptionKey = 0x800;
inline constexpr std::uint32_t kControlKey = 0x1000;

/// The Carbon mask of the Command, Shift, Option and Control flags; every other flag is dropped.
[[nodiscard]] constexpr std::uint32_t carbonModifiers(EventFlags flags) {
    std::uint32_t modifiers = 0;
    if ((flags & kFlagCommand) != 0) modifiers += kCmdKey;
    if ((flags & kFlagShift) != 0) modifiers += kShiftKey;
    if ((flags & kFlagOption) != 0) modifiers += kOptionKey;
    if ((flags & kFlagControl) != 0) modifiers += kControlKey;
    return modifiers;
}

} // namespace trovel
