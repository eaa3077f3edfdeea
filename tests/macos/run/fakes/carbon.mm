#include "tests/macos/run/fakes/carbon.h"

#include "tests/macos/run/fakes/mac.h"

#import <Carbon/Carbon.h>

#include <algorithm>
#include <bit>

namespace {

unsigned carbonModifiers(NSEventModifierFlags flags) {
    unsigned modifiers = 0;
    if ((flags & 1U << 20U) != 0) modifiers |= 0x100;
    if ((flags & 1U << 17U) != 0) modifiers |= 0x200;
    if ((flags & 1U << 19U) != 0) modifiers |= 0x800;
    if ((flags & 1U << 18U) != 0) modifiers |= 0x1000;
    return modifiers;
}

/// Calls the handler that was installed last, as an event target does, in a turn of the loop.
void callHandler() {
    fakes::mac().runLoop.postEvent([] {
        auto const& handlers = fakes::mac().eventHandlers;
        if (handlers.empty()) return;
        auto const [reference, handler, userData] = handlers.back();
        auto const call = reinterpret_cast<EventHandlerUPP>(handler);
        call(nullptr, nullptr, userData);
    });
}

std::uintptr_t nextReference() {
    return ++fakes::mac().lastReference * 16;
}

} // namespace

namespace fakes {

bool pressHotKey(unsigned keyCode, NSEventModifierFlags flags) {
    auto const& hotKeys = mac().hotKeys;
    auto const found = std::ranges::find_if(hotKeys, [&](HotKey const& each) {
        return each.keyCode == keyCode && each.modifiers == carbonModifiers(flags);
    });
    if (found == hotKeys.end()) return false;
    if (found->reference != 0) callHandler();
    return true;
}

} // namespace fakes

extern "C" {

EventTargetRef GetApplicationEventTarget() {
    return std::bit_cast<EventTargetRef>(std::uintptr_t{16});
}

OSStatus InstallEventHandler(EventTargetRef, EventHandlerUPP handler, ItemCount count,
                             EventTypeSpec const* list, void* userData, EventHandlerRef* result) {
    bool const isForHotKeys = count == 1 && list->eventClass == kEventClassKeyboard &&
                              list->eventKind == kEventHotKeyPressed;
    fakes::require(isForHotKeys, "a handler for what nobody sends");
    auto const reference = nextReference();
    fakes::mac().eventHandlers.push_back({reference, reinterpret_cast<void*>(handler), userData});
    *result = std::bit_cast<EventHandlerRef>(reference);
    return noErr;
}

OSStatus RemoveEventHandler(EventHandlerRef handler) {
    auto const reference = std::bit_cast<std::uintptr_t>(handler);
    auto const removed = std::erase_if(
        fakes::mac().eventHandlers, [&](auto const& each) { return each.reference == reference; });
    fakes::require(removed == 1, "an event handler was removed that is not there");
    return noErr;
}

// Another program's combination is refused (eventHotKeyExistsErr). The system says nothing of a hot
// key that is registered while its key is down, and the next repetition counts as a press.
OSStatus RegisterEventHotKey(UInt32 keyCode, UInt32 modifiers, EventHotKeyID, EventTargetRef,
                             OptionBits, EventHotKeyRef* result) {
    constexpr OSStatus kExists = -9878;
    auto& mac = fakes::mac();
    bool const isTaken = std::ranges::any_of(mac.hotKeys, [&](fakes::HotKey const& each) {
        return each.keyCode == keyCode && each.modifiers == modifiers;
    });
    if (isTaken || mac.refusesHotKeys) return kExists;
    auto const reference = nextReference();
    mac.hotKeys.push_back({reference, keyCode, modifiers});
    if (mac.heldKeys.contains(keyCode) && carbonModifiers(mac.flags) == modifiers) callHandler();
    *result = std::bit_cast<EventHotKeyRef>(reference);
    return noErr;
}

OSStatus UnregisterEventHotKey(EventHotKeyRef hotKey) {
    auto const reference = std::bit_cast<std::uintptr_t>(hotKey);
    auto const removed = std::erase_if(
        fakes::mac().hotKeys, [&](auto const& each) { return each.reference == reference; });
    fakes::require(removed == 1, "a hot key was unregistered that is not registered");
    return noErr;
}
}
