#pragma once

#include "platform/registration.h"

#include <cstdint>
#include <optional>

namespace trovel {

/// Names a registered hot key or an installed handler until it is taken back.
enum class EventHotKeyRef : std::uintptr_t {};
enum class EventHandlerRef : std::uintptr_t {};

/// Tells hot keys apart: a four-character signature and a number.
struct EventHotKeyId {
    std::uint32_t signature = 0;
    std::uint32_t id = 0;

    friend bool operator==(EventHotKeyId const&, EventHotKeyId const&) = default;
};

/// Called on the main thread for every hot key press, with the user data given at installation.
/// Answers one of the statuses below.
using HotKeyHandler = std::int32_t (*)(void* userData);

inline constexpr std::int32_t kNoErr = 0;
inline constexpr std::int32_t kEventNotHandledErr = -9874;

/// System-wide hot keys: a press reaches the handler whichever application is in front, and one
/// press is one call however long the key is held. Main thread only.
class HotkeyService {
public:
    HotkeyService(HotkeyService const&) = delete;
    HotkeyService& operator=(HotkeyService const&) = delete;

    /// Installs `handler` for hot key presses on the application's event target. The user data is
    /// not owned. Nothing when the system refuses.
    virtual std::optional<EventHandlerRef> installEventHandler(HotKeyHandler handler,
                                                               void* userData) = 0;
    virtual void removeEventHandler(EventHandlerRef handler) = 0;

    /// Registers a key with a Carbon modifier mask (platform/carbon_modifiers.h). Nothing when the
    /// system refuses, for example because another application has the combination.
    virtual std::optional<EventHotKeyRef>
    registerEventHotKey(std::uint32_t keyCode, std::uint32_t modifiers, EventHotKeyId id) = 0;
    virtual void unregisterEventHotKey(EventHotKeyRef hotKey) = 0;

    /// Lets the keys of registered hot keys through to windows, as if they were not registered,
    /// until the registration ends. What is registered stays registered. A key that is down at that
    /// moment counts from its next press.
    virtual Registration suspend() = 0;

protected:
    HotkeyService() = default;
    ~HotkeyService() = default;
};

} // namespace trovel
