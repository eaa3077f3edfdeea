#pragma once

#include "platform/key_codes.h"

#include <xcb/xcb.h>

#include <cstdint>
#include <vector>

namespace trovel {

class XcbConnection;

/// Which bits of an X event's state stand for which modifier. Shift, Lock and Control are fixed;
/// the others are wherever the keyboard's mapping has put their keys.
struct ModifierMap {
    std::uint16_t alt = XCB_MOD_MASK_1;
    std::uint16_t super = XCB_MOD_MASK_4;
    std::uint16_t numLock = 0;
    std::uint16_t scrollLock = 0;

    /// The bits that only say that a lock is on.
    [[nodiscard]] std::uint16_t locks() const {
        return static_cast<std::uint16_t>(XCB_MOD_MASK_LOCK | numLock | scrollLock);
    }

    /// Every combination of locks that can be on, each once, the empty one first.
    [[nodiscard]] std::vector<std::uint16_t> lockCombinations() const;

    /// The state bits of a Carbon modifier mask: Command is Ctrl, Control is Super, Option is Alt.
    [[nodiscard]] std::uint16_t stateForCarbon(std::uint32_t carbonModifiers) const;

    /// The flags of an event that came with `state`.
    [[nodiscard]] EventFlags flagsForState(std::uint16_t state) const;

    friend bool operator==(ModifierMap const&, ModifierMap const&) = default;
};

/// Asks the server for the mapping as it is now.
[[nodiscard]] ModifierMap readModifierMap(XcbConnection const& x);

} // namespace trovel
