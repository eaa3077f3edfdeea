#include "platform/macos/hotkey_service_mac.h"

#include "platform/main_queue.h"

#import <CoreGraphics/CoreGraphics.h>

#include <bit>
#include <utility>

namespace trovel {

namespace {

bool isKeyDown(std::uint32_t keyCode) {
    return CGEventSourceKeyState(kCGEventSourceStateCombinedSessionState,
                                 static_cast<CGKeyCode>(keyCode));
}

} // namespace

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
    // Taken during a suspension too: only so does the system say whether it can be had.
    HotKey hotKey{keyCode, modifiers, id};
    take(hotKey);
    if (hotKey.native == nullptr) return std::nullopt;
    if (suspensions_ > 0 || isResuming_) release(hotKey);
    EventHotKeyRef const reference{nextHotKey_++};
    hotKeys_.emplace(reference, hotKey);
    return reference;
}

void HotkeyServiceMac::unregisterEventHotKey(EventHotKeyRef hotKey) {
    auto const found = hotKeys_.find(hotKey);
    if (found == hotKeys_.end()) return;
    release(found->second);
    hotKeys_.erase(found);
}

// The system takes the keys of a hot key before any window sees them, so it has to forget them.
Registration HotkeyServiceMac::suspend() {
    if (suspensions_++ == 0) {
        for (auto& [reference, hotKey] : hotKeys_)
            release(hotKey);
    }
    return Registration([this] { endSuspension(); });
}

void HotkeyServiceMac::endSuspension() {
    if (--suspensions_ == 0 && !isResuming_) resume();
}

void HotkeyServiceMac::resume() {
    // Carbon reports a press once, but says nothing of a hot key that is registered while its key
    // is down, as the one is that was just recorded: its repetitions might count as a press.
    // So each waits until its own key is up, whatever becomes of the others'.
    constexpr std::chrono::milliseconds kInterval{20};
    isResuming_ = false;
    if (suspensions_ > 0) return;
    for (auto& [reference, hotKey] : hotKeys_) {
        if (hotKey.native != nullptr) continue;
        if (isKeyDown(hotKey.keyCode)) {
            isResuming_ = true;
        } else {
            take(hotKey);
        }
    }
    if (isResuming_) queue_.after(kInterval, [this] { resume(); });
}

void HotkeyServiceMac::take(HotKey& hotKey) {
    ::EventHotKeyRef native = nullptr;
    auto const status = RegisterEventHotKey(
        hotKey.keyCode, hotKey.modifiers, EventHotKeyID{hotKey.id.signature, hotKey.id.id},
        GetApplicationEventTarget(), kEventHotKeyNoOptions, &native);
    hotKey.native = status == noErr ? native : nullptr;
}

void HotkeyServiceMac::release(HotKey& hotKey) {
    auto* const native = std::exchange(hotKey.native, nullptr);
    if (native != nullptr) UnregisterEventHotKey(native);
}

} // namespace trovel
