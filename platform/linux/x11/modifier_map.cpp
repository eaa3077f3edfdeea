#include "platform/linux/x11/modifier_map.h"

#include "platform/carbon_modifiers.h"
#include "platform/linux/x11/connection.h"

#include <algorithm>
#include <array>
#include <bit>
#include <span>

namespace trovel {

namespace {

// X11/keysymdef.h.
constexpr xcb_keysym_t kNumLock = 0xff7f;
constexpr xcb_keysym_t kScrollLock = 0xff14;
constexpr xcb_keysym_t kAltLeft = 0xffe9;
constexpr xcb_keysym_t kAltRight = 0xffea;
constexpr xcb_keysym_t kSuperLeft = 0xffeb;
constexpr xcb_keysym_t kSuperRight = 0xffec;

/// The keysyms of all keys, as many for each key as the server keeps.
class KeysymTable {
public:
    KeysymTable(XcbConnection const& x, xcb_get_keyboard_mapping_cookie_t cookie)
        : firstKeycode_(xcb_get_setup(x.get())->min_keycode),
          reply_(x.reply<xcb_get_keyboard_mapping_reply>(cookie)) {}

    [[nodiscard]] std::span<xcb_keysym_t const> keysymsOf(xcb_keycode_t keycode) const {
        if (!reply_ || keycode < firstKeycode_) return {};
        auto const length =
            static_cast<std::size_t>(xcb_get_keyboard_mapping_keysyms_length(reply_.get()));
        std::span<xcb_keysym_t const> const all(xcb_get_keyboard_mapping_keysyms(reply_.get()),
                                                length);
        std::size_t const perKey = reply_->keysyms_per_keycode;
        auto const start = static_cast<std::size_t>(keycode - firstKeycode_) * perKey;
        return start + perKey <= length ? all.subspan(start, perKey)
                                        : std::span<xcb_keysym_t const>();
    }

private:
    xcb_keycode_t firstKeycode_;
    XcbPointer<xcb_get_keyboard_mapping_reply_t> reply_;
};

} // namespace

std::vector<std::uint16_t> ModifierMap::lockCombinations() const {
    std::vector<std::uint16_t> combinations{0};
    auto const all = locks();
    // Steps through the subsets of the mask: subtracting it counts up within its bits.
    for (unsigned subset = all & (0U - all); subset != 0; subset = (subset - all) & all) {
        combinations.push_back(static_cast<std::uint16_t>(subset));
    }
    return combinations;
}

std::uint16_t ModifierMap::stateForCarbon(std::uint32_t carbonModifiers) const {
    unsigned state = 0;
    if (carbonModifiers & kCmdKey) state |= XCB_MOD_MASK_CONTROL;
    if (carbonModifiers & kShiftKey) state |= XCB_MOD_MASK_SHIFT;
    if (carbonModifiers & kOptionKey) state |= alt;
    if (carbonModifiers & kControlKey) state |= super;
    return static_cast<std::uint16_t>(state);
}

EventFlags ModifierMap::flagsForState(std::uint16_t state) const {
    EventFlags flags = 0;
    if (state & XCB_MOD_MASK_CONTROL) flags |= kFlagCommand;
    if (state & XCB_MOD_MASK_SHIFT) flags |= kFlagShift;
    if (state & XCB_MOD_MASK_LOCK) flags |= kFlagCapsLock;
    if (state & alt) flags |= kFlagOption;
    if (state & super) flags |= kFlagControl;
    return flags;
}

ModifierMap readModifierMap(XcbConnection const& x) {
    auto const* const setup = xcb_get_setup(x.get());
    auto const modifiersCookie = xcb_get_modifier_mapping(x.get());
    KeysymTable const keysyms(
        x, xcb_get_keyboard_mapping(
               x.get(), setup->min_keycode,
               static_cast<std::uint8_t>(setup->max_keycode - setup->min_keycode + 1)));
    ModifierMap map;
    auto const modifiers = x.reply<xcb_get_modifier_mapping_reply>(modifiersCookie);
    if (!modifiers) return map;

    auto const* const keycodes = xcb_get_modifier_mapping_keycodes(modifiers.get());
    auto const bitWithKey = [&](std::initializer_list<xcb_keysym_t> wanted) -> std::uint16_t {
        constexpr int kFirstFreeBit = 3; // below are Shift, Lock and Control
        constexpr int kBitCount = 8;
        int const perBit = modifiers->keycodes_per_modifier;
        for (int i = kFirstFreeBit * perBit; i < kBitCount * perBit; ++i) {
            for (auto const keysym : keysyms.keysymsOf(keycodes[i])) {
                if (std::ranges::count(wanted, keysym) > 0) {
                    return static_cast<std::uint16_t>(1U << static_cast<unsigned>(i / perBit));
                }
            }
        }
        return 0;
    };
    map.numLock = bitWithKey({kNumLock});
    map.scrollLock = bitWithKey({kScrollLock});
    if (auto const bit = bitWithKey({kAltLeft, kAltRight})) map.alt = bit;
    if (auto const bit = bitWithKey({kSuperLeft, kSuperRight})) map.super = bit;
    return map;
}

} // namespace trovel
