#pragma once

#include <cstdint>

namespace trovel {

/// A virtual key code: a physical position on the keyboard, whatever the layout types there
/// (Carbon's HIToolbox Events.h numbering).
using KeyCode = std::uint32_t;

inline constexpr KeyCode kKeyV = 9;
inline constexpr KeyCode kKeyReturn = 36;
inline constexpr KeyCode kKeyTab = 48;
inline constexpr KeyCode kKeySpace = 49;
inline constexpr KeyCode kKeyEscape = 53;

/// Modifier flags of events (NSEventModifierFlags, which CGEventFlags shares).
using EventFlags = std::uint32_t;

inline constexpr EventFlags kFlagCapsLock = 0x10000;
inline constexpr EventFlags kFlagShift = 0x20000;
inline constexpr EventFlags kFlagControl = 0x40000;
inline constexpr EventFlags kFlagOption = 0x80000;
inline constexpr EventFlags kFlagCommand = 0x100000;
inline constexpr EventFlags kFlagNumericPad = 0x200000;
inline constexpr EventFlags kFlagHelp = 0x400000;
inline constexpr EventFlags kFlagFunction = 0x800000;

/// The bits of an event's flags that mean the same on every device.
inline constexpr EventFlags kDeviceIndependentFlags = 0xffff0000;

} // namespace trovel
