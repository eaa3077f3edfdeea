#include "platform/macos/hotkey_service_mac.h"

#include <bit>
#include <memory>
#include <utility>

namespace trovel {

OSStatus HotkeyServiceMac::hotKeyPressed(::EventHandlerCallRef, ::EventRef,
                                         void* userData) noexcept {
    auto const& installation = *static_cast<Installation const*>(userData);
    return installation.handler(installation.userData);
}

std::optional<EventHandlerRef> HotkeyServiceMac::installEventHandler(HotKeyHandler handler,
                                                                     void* userData) {
    auto installation = std::make_unique<Installation>(handler, userData);
    EventTypeSpec const pressed{kEventClassKeyboard, kEventHotKeyPressed};
    ::EventHandlerRef native = nullptr;
    auto const status = InstallEventHandler(GetApplicationEventTarget(), hotKeyPressed, 1, &pressed,
                                            installation.get(), &native);
    if (status != noErr) return std::nullopt;
    auto const reference = std::bit_cast<EventHandlerRef>(native);
    installations_.emplace(reference, std::move(installation));
    return reference;
}

void HotkeyServiceMac::removeEventHandler(EventHandlerRef handler) {
    RemoveEventHandler(std::bit_cast<::EventHandlerRef>(handler));
    installations_.erase(handler);
}

std::optional<EventHotKeyRef> HotkeyServiceMac::registerEventHotKey(std::uint32_t keyCode,
                                                                    std::uint32_t modifiers,
                                                                    EventHotKeyId id) {
    ::EventHotKeyRef native = nullptr;
    auto const status =
        RegisterEventHotKey(keyCode, modifiers, EventHotKeyID{id.signature, id.id},
                            GetApplicationEventTarget(), kEventHotKeyNoOptions, &native);
    if (status != noErr) return std::nullopt;
    return std::bit_cast<EventHotKeyRef>(native);
}

void HotkeyServiceMac::unregisterEventHotKey(EventHotKeyRef hotKey) {
    UnregisterEventHotKey(std::bit_cast<::EventHotKeyRef>(hotKey));
}

} // namespace trovel
