#pragma once

#include "platform/hotkey_service.h"

#import <Carbon/Carbon.h>

#include <map>

namespace trovel {

/// Carbon's hot keys on the application's event target.
class HotkeyServiceMac final : public HotkeyService {
public:
    HotkeyServiceMac() = default;

    std::optional<EventHandlerRef> installEventHandler(HotKeyHandler handler,
                                                       void* userData) override;
    void removeEventHandler(EventHandlerRef handler) override;
    std::optional<EventHotKeyRef>
    registerEventHotKey(std::uint32_t keyCode, std::uint32_t modifiers, EventHotKeyId id) override;
    void unregisterEventHotKey(EventHotKeyRef hotKey) override;

private:
    /// What Carbon's callback is given: a handler of its own signature cannot take the portable
    /// one's place.
    struct Installation {
        HotKeyHandler handler = nullptr;
        void* userData = nullptr;
    };

    static OSStatus hotKeyPressed(::EventHandlerCallRef call, ::EventRef event,
                                  void* userData) noexcept;

    std::map<EventHandlerRef, std::unique_ptr<Installation>> installations_;
};

} // namespace trovel
