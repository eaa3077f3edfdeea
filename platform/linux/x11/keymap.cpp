#include "platform/linux/x11/keymap.h"

#include <xkbcommon/xkbcommon-x11.h>
#include <xkbcommon/xkbcommon.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>

namespace trovel {

namespace {

/// An X keycode is the kernel's code (linux/input-event-codes.h) plus this.
constexpr int kEvdevOffset = 8;

struct Position {
    std::uint8_t virtualKey;
    std::uint8_t evdev;
};

// Carbon's virtual key codes (HIToolbox Events.h) in their order. A PC keyboard's Print, Scroll
// Lock, Pause and Insert sit where an Apple keyboard has F13, F14, F15 and Help.
constexpr auto kPositions = std::to_array<Position>({
    {0, 30},    {1, 31},    {2, 32},    {3, 33},    {4, 35},    {5, 34},    {6, 44},    {7, 45},
    {8, 46},    {9, 47},    {10, 86},   {11, 48},   {12, 16},   {13, 17},   {14, 18},   {15, 19},
    {16, 21},   {17, 20},   {18, 2},    {19, 3},    {20, 4},    {21, 5},    {22, 7},    {23, 6},
    {24, 13},   {25, 10},   {26, 8},    {27, 12},   {28, 9},    {29, 11},   {30, 27},   {31, 24},
    {32, 22},   {33, 26},   {34, 23},   {35, 25},   {36, 28},   {37, 38},   {38, 36},   {39, 40},
    {40, 37},   {41, 39},   {42, 43},   {43, 51},   {44, 53},   {45, 49},   {46, 50},   {47, 52},
    {48, 15},   {49, 57},   {50, 41},   {51, 14},   {53, 1},    {54, 97},   {55, 29},   {56, 42},
    {57, 58},   {58, 56},   {59, 125},  {60, 54},   {61, 100},  {62, 126},  {64, 187},  {65, 83},
    {67, 55},   {69, 78},   {71, 69},   {72, 115},  {73, 114},  {74, 113},  {75, 98},   {76, 96},
    {78, 74},   {79, 188},  {80, 189},  {81, 117},  {82, 82},   {83, 79},   {84, 80},   {85, 81},
    {86, 75},   {87, 76},   {88, 77},   {89, 71},   {90, 190},  {91, 72},   {92, 73},   {93, 124},
    {94, 89},   {95, 121},  {96, 63},   {97, 64},   {98, 65},   {99, 61},   {100, 66},  {101, 67},
    {102, 123}, {103, 87},  {104, 122}, {105, 99},  {106, 186}, {107, 70},  {109, 68},  {110, 127},
    {111, 88},  {113, 119}, {114, 110}, {115, 102}, {116, 104}, {117, 111}, {118, 62},  {119, 107},
    {120, 60},  {121, 109}, {122, 59},  {123, 105}, {124, 106}, {125, 108}, {126, 103},
});

/// What the server's keyboard types, and the layout group that is in use.
class TypedKeys {
public:
    explicit TypedKeys(xcb_connection_t* connection) {
        if (!xkb_x11_setup_xkb_extension(
                connection, XKB_X11_MIN_MAJOR_XKB_VERSION, XKB_X11_MIN_MINOR_XKB_VERSION,
                XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS, nullptr, nullptr, nullptr, nullptr)) {
            return;
        }
        auto const device = xkb_x11_get_core_keyboard_device_id(connection);
        context_.reset(xkb_context_new(XKB_CONTEXT_NO_FLAGS));
        if (device < 0 || !context_) return;
        keymap_.reset(xkb_x11_keymap_new_from_device(context_.get(), connection, device,
                                                     XKB_KEYMAP_COMPILE_NO_FLAGS));
        if (!keymap_) return;
        state_.reset(xkb_x11_state_new_from_device(keymap_.get(), connection, device));
    }

    [[nodiscard]] explicit operator bool() const { return state_ != nullptr; }

    [[nodiscard]] xkb_layout_index_t currentGroup() const {
        return xkb_state_serialize_layout(state_.get(), XKB_STATE_LAYOUT_EFFECTIVE);
    }

    [[nodiscard]] xkb_layout_index_t groupCount() const {
        return xkb_keymap_num_layouts(keymap_.get());
    }

    void appendKeycodesTyping(xkb_keysym_t keysym, xkb_layout_index_t group,
                              std::vector<xcb_keycode_t>& found) const {
        for (auto key = xkb_keymap_min_keycode(keymap_.get());
             key <= xkb_keymap_max_keycode(keymap_.get()) && key <= UINT8_MAX; ++key) {
            xkb_keysym_t const* typed = nullptr;
            int const count =
                xkb_keymap_key_get_syms_by_level(keymap_.get(), key, group, 0, &typed);
            auto const keycode = static_cast<xcb_keycode_t>(key);
            if (count == 1 && *typed == keysym && !std::ranges::count(found, keycode)) {
                found.push_back(keycode);
            }
        }
    }

private:
    template <auto unref>
    struct Unref {
        template <typename Object>
        void operator()(Object* object) const {
            unref(object);
        }
    };

    std::unique_ptr<xkb_context, Unref<xkb_context_unref>> context_;
    std::unique_ptr<xkb_keymap, Unref<xkb_keymap_unref>> keymap_;
    std::unique_ptr<xkb_state, Unref<xkb_state_unref>> state_;
};

} // namespace

std::optional<xcb_keycode_t> Keymap::keycodeForVirtualKey(KeyCode keyCode) {
    auto const found = std::ranges::find(kPositions, keyCode, &Position::virtualKey);
    if (found == kPositions.end()) return std::nullopt;
    return static_cast<xcb_keycode_t>(found->evdev + kEvdevOffset);
}

std::optional<KeyCode> Keymap::virtualKeyForKeycode(xcb_keycode_t keycode) {
    auto const found = std::ranges::find(kPositions, keycode - kEvdevOffset, &Position::evdev);
    if (found == kPositions.end()) return std::nullopt;
    return found->virtualKey;
}

std::vector<xcb_keycode_t> Keymap::keycodesTyping(xcb_keysym_t keysym) const {
    std::vector<xcb_keycode_t> found;
    TypedKeys const keys(connection_.get());
    if (!keys) return found;
    keys.appendKeycodesTyping(keysym, keys.currentGroup(), found);
    for (xkb_layout_index_t group = 0; group < keys.groupCount(); ++group) {
        keys.appendKeycodesTyping(keysym, group, found);
    }
    return found;
}

std::vector<xcb_keycode_t> Keymap::heldKeys() const {
    std::vector<xcb_keycode_t> held;
    auto const reply =
        connection_.reply<xcb_query_keymap_reply>(xcb_query_keymap(connection_.get()));
    if (!reply) return held;
    for (unsigned key = 0; key <= UINT8_MAX; ++key) {
        if (reply->keys[key / 8] & (1u << key % 8)) held.push_back(static_cast<xcb_keycode_t>(key));
    }
    return held;
}

std::vector<xcb_keycode_t> Keymap::modifierKeys() const {
    auto const reply = connection_.reply<xcb_get_modifier_mapping_reply>(
        xcb_get_modifier_mapping(connection_.get()));
    if (!reply) return {};
    auto const* const first = xcb_get_modifier_mapping_keycodes(reply.get());
    std::vector<xcb_keycode_t> keys(first,
                                    first + xcb_get_modifier_mapping_keycodes_length(reply.get()));
    std::erase(keys, xcb_keycode_t{0});
    return keys;
}

} // namespace trovel
