#pragma once

#include "platform/hotkey_service.h"
#include "platform/lifetime.h"
#include "platform/linux/x11/modifier_map.h"
#include "platform/registration.h"

#include <xcb/xcb.h>

#include <cstdint>
#include <map>
#include <optional>

namespace trovel {

class XcbConnection;

/// Hot keys as passive grabs of the root window: one for every combination of the locks that can be
/// on, since a grab fits a modifier state exactly. They follow the keyboard's mapping.
///
/// While they are suspended the grabs rest, below the registrations.
///
/// A press reaches the handlers also while this connection holds the keyboard itself.
class HotkeyServiceX11 final : public HotkeyService {
public:
    /// `x` outlives it.
    explicit HotkeyServiceX11(XcbConnection& x);
    ~HotkeyServiceX11();

    std::optional<EventHandlerRef> installEventHandler(HotKeyHandler handler,
                                                       void* userData) override;
    void removeEventHandler(EventHandlerRef handler) override;
    std::optional<EventHotKeyRef>
    registerEventHotKey(std::uint32_t keyCode, std::uint32_t modifiers, EventHotKeyId id) override;
    void unregisterEventHotKey(EventHotKeyRef hotKey) override;
    Registration suspend() override;

    /// Whether this press of a key is a hot key's, so that nobody else is to see it.
    [[nodiscard]] bool isHotKey(xcb_key_press_event_t const& press) const;

    /// To be called when the keyboard was let go: a key that came up meanwhile is up.
    void keyboardWasReleased();

    [[nodiscard]] ModifierMap const& modifierMap() const { return modifierMap_; }

private:
    struct Grab {
        xcb_keycode_t keycode = 0;
        std::uint32_t carbonModifiers = 0;
    };
    struct InstalledHandler {
        HotKeyHandler handler = nullptr;
        void* userData = nullptr;
    };
    struct HeldKey {
        xcb_keycode_t keycode = 0;
        xcb_timestamp_t lastPress = 0;
        std::optional<xcb_timestamp_t> release;
    };

    void watchKeyboard();
    void handle(xcb_generic_event_t const& event);
    void handlePress(xcb_key_press_event_t const& press);
    [[nodiscard]] bool isRepeat(xcb_key_press_event_t const& press) const;
    void callHandlers() const;
    void endSuspension();
    void resume();
    [[nodiscard]] bool isAnyKeyDown() const;
    [[nodiscard]] bool isSuspended() const { return suspensions_ > 0 || isResuming_; }
    bool grab(Grab const& grab) const;
    void ungrab(Grab const& grab) const;
    void followMapping();

    XcbConnection& x_;
    ModifierMap modifierMap_;
    std::map<std::uintptr_t, Grab> grabs_;
    std::map<std::uintptr_t, InstalledHandler> handlers_;
    std::uintptr_t nextRef_ = 1;
    std::optional<HeldKey> held_;
    std::uint8_t xkbEvent_ = 0; // 0 when the server has no XKB
    bool isMappingStale_ = false;
    int suspensions_ = 0;     // how many have not ended
    bool isResuming_ = false; // waits for the user to let go of a key
    Lifetime lifetime_;
    Registration events_;
    Registration batches_;
};

} // namespace trovel
