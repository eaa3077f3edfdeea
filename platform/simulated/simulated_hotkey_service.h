#pragma once

#include "platform/hotkey_service.h"
#include "platform/simulated/faults.h"

#include <set>
#include <utility>
#include <vector>

namespace trovel {

/// A key with a Carbon modifier mask.
using KeyCombination = std::pair<std::uint32_t, std::uint32_t>;

/// The system's hot keys.
class SimulatedHotkeyService final : public HotkeyService {
public:
    SimulatedHotkeyService(Journal& journal, Faults& faults) : journal_(journal), faults_(faults) {}
    ~SimulatedHotkeyService() = default;

    std::optional<EventHandlerRef> installEventHandler(HotKeyHandler handler,
                                                       void* userData) override;
    void removeEventHandler(EventHandlerRef handler) override;
    std::optional<EventHotKeyRef>
    registerEventHotKey(std::uint32_t keyCode, std::uint32_t modifiers, EventHotKeyId id) override;
    void unregisterEventHotKey(EventHotKeyRef hotKey) override;
    Registration suspend() override;

    /// Another program has the combination from now on.
    void takeElsewhere(KeyCombination combination) { takenElsewhere_.insert(combination); }

    /// A press of the combination. True when it is a hot key of the program and not suspended:
    /// nobody else sees it, and the handlers are asked, the newest first, until one handles it.
    bool press(KeyCombination combination);

    [[nodiscard]] bool isSuspended() const { return suspensions_ > 0; }
    [[nodiscard]] bool isRegistered(KeyCombination combination) const;
    [[nodiscard]] std::size_t hotKeyCount() const { return hotKeys_.size(); }
    [[nodiscard]] std::size_t handlerCount() const { return handlers_.size(); }
    [[nodiscard]] std::vector<KeyCombination> combinations() const;

private:
    struct Handler {
        EventHandlerRef ref;
        HotKeyHandler function;
        void* userData;
    };
    struct HotKey {
        EventHotKeyRef ref;
        KeyCombination combination;
    };

    Journal& journal_;
    Faults& faults_;
    std::vector<Handler> handlers_;
    std::vector<HotKey> hotKeys_;
    std::set<KeyCombination> takenElsewhere_;
    std::uintptr_t nextRef_ = 1;
    int suspensions_ = 0;
};

} // namespace trovel
