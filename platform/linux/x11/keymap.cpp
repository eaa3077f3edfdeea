#include "platform/linux/x11/keymap.h"

#include "platform/linux/system/key_positions.h"

#include <xkbcommon/xkbcommon-x11.h>
#include <xkbcommon/xkbcommon.h>

#include <algorithm>
#include <cstdint>
#include <memory>

namespace trovel {

namespace {

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
    auto const evdevCode = evdevCodeForVirtualKey(keyCode);
    if (!evdevCode) return std::nullopt;
    return static_cast<xcb_keycode_t>(*evdevCode + kKeycodeOffset);
}

std::optional<KeyCode> Keymap::virtualKeyForKeycode(xcb_keycode_t keycode) {
    if (keycode < kKeycodeOffset) return std::nullopt;
    return virtualKeyForEvdevCode(static_cast<std::uint32_t>(keycode - kKeycodeOffset));
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
