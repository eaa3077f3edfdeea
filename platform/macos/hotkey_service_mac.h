#pragma once

#include "platform/hotkey_service.h"

#import <Carbon/Carbon.h>

#include <map>
#include <memory>

namespace trovel {

class MainQueue;

/// Carbon's hot keys on the application's event target.
class HotkeyServiceMac final : public HotkeyService {
public:
    explicit HotkeyServiceMac(MainQueue& queue) : queue_(queue) {}

    std::optional<EventHandlerRef> installEventHandler(HotKeyHandler handler,
                                                       void* userData) override;
    void removeEventHandler(EventHandlerRef handler) override;
    std::optional<EventHotKeyRef>
    registerEventHotKey(std::uint32_t keyCode, std::uint32_t modifiers, EventHotKeyId id) override;
    void unregisterEventHotKey(EventHotKeyRef hotKey) override;
    Registration suspend() override;

private:
    /// What Carbon's callback is given: a handler of its own signature cannot take the portable
    /// one's place.
    struct Installation {
        HotKeyHandler handler = nullptr;
        void* userData = nullptr;
    };

    /// A registered hot key; the system knows it unless hot keys are suspended or resuming.
    struct HotKey {
        std::uint32_t keyCode = 0;
        std::uint32_t modifiers = 0;
        EventHotKeyId id;
        ::EventHotKeyRef native = nullptr;
    };

    static void take(HotKey& hotKey);
    static void release(HotKey& hotKey);
    void endSuspension();
    void resume();

    static OSStatus hotKeyPressed(::EventHandlerCallRef call, ::EventRef event,
                                  void* userData) noexcept;

    MainQueue& queue_;
    std::map<EventHandlerRef, std::unique_ptr<Installation>> installations_;
    std::map<EventHotKeyRef, HotKey> hotKeys_;
    std::uintptr_t nextHotKey_ = 1;
    int suspensions_ = 0;
    bool isResuming_ = false; // a suspension has ended, and a look at the keys is to come
};

} // namespace trovel
