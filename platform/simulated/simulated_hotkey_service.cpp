#include "platform/simulated/simulated_hotkey_service.h"

#include "platform/fatal.h"

#include <algorithm>
#include <ranges>

namespace trovel {

std::optional<EventHandlerRef> SimulatedHotkeyService::installEventHandler(HotKeyHandler handler,
                                                                           void* userData) {
    if (faults_.strikes(Operation::installEventHandler)) return std::nullopt;
    auto const ref = static_cast<EventHandlerRef>(nextRef_++);
    handlers_.push_back({ref, handler, userData});
    journal_.record(effect::HandlerInstalled{});
    return ref;
}

void SimulatedHotkeyService::removeEventHandler(EventHandlerRef handler) {
    auto const found = std::ranges::find(handlers_, handler, &Handler::ref);
    if (found == handlers_.end()) fatal("an event handler was removed that is not installed");
    handlers_.erase(found);
    journal_.record(effect::HandlerRemoved{});
}

std::optional<EventHotKeyRef> SimulatedHotkeyService::registerEventHotKey(std::uint32_t keyCode,
                                                                          std::uint32_t modifiers,
                                                                          EventHotKeyId id) {
    KeyCombination const combination{keyCode, modifiers};
    if (faults_.strikes(Operation::registerHotKey)) return std::nullopt;
    if (takenElsewhere_.contains(combination) || isRegistered(combination)) return std::nullopt;
    auto const ref = static_cast<EventHotKeyRef>(nextRef_++);
    hotKeys_.push_back({ref, combination});
    journal_.record(effect::HotKeyRegistered{keyCode, modifiers, id});
    return ref;
}

void SimulatedHotkeyService::unregisterEventHotKey(EventHotKeyRef hotKey) {
    auto const found = std::ranges::find(hotKeys_, hotKey, &HotKey::ref);
    if (found == hotKeys_.end()) fatal("a hot key was unregistered that is not registered");
    journal_.record(
        effect::HotKeyUnregistered{found->combination.first, found->combination.second});
    hotKeys_.erase(found);
}

Registration SimulatedHotkeyService::suspend() {
    if (suspensions_++ == 0) journal_.record(effect::HotKeysSuspended{true});
    return Registration([this] {
        if (--suspensions_ == 0) journal_.record(effect::HotKeysSuspended{false});
    });
}

bool SimulatedHotkeyService::isRegistered(KeyCombination combination) const {
    return std::ranges::find(hotKeys_, combination, &HotKey::combination) != hotKeys_.end();
}

std::vector<KeyCombination> SimulatedHotkeyService::combinations() const {
    std::vector<KeyCombination> combinations;
    for (auto const& hotKey : hotKeys_) combinations.push_back(hotKey.combination);
    return combinations;
}

bool SimulatedHotkeyService::press(KeyCombination combination) {
    if (isSuspended() || !isRegistered(combination)) return false;
    // A handler may remove itself and others: those that are gone by then are not asked.
    auto const handlers = handlers_;
    for (auto const& handler : handlers | std::views::reverse) {
        if (std::ranges::find(handlers_, handler.ref, &Handler::ref) == handlers_.end()) continue;
        auto const status = handler.function(handler.userData);
        journal_.record(effect::HotKeyHandled{status});
        if (status == kNoErr) break;
    }
    return true;
}

} // namespace trovel
