#pragma once

#include "platform/event_synthesizer.h"
#include "platform/simulated/faults.h"
#include "platform/simulated/simulated_input.h"
#include "platform/simulated/simulated_permissions.h"

namespace trovel {

/// Makes input events, which come in like the user's a turn of the main loop after they were
/// posted. Without the grant the system drops them there and then.
class SimulatedEventSynthesizer final : public EventSynthesizer {
public:
    struct World {
        Journal& journal;
        Faults& faults;
        SimulatedMainQueue& queue;
        SimulatedPermissions const& permissions;
        SimulatedScreens const& screens;
        SimulatedInput& input;
    };

    explicit SimulatedEventSynthesizer(World world) : world_(world) {}
    ~SimulatedEventSynthesizer() = default;

    [[nodiscard]] EventPtr mouseEvent(MouseAction action, Point position) override;
    [[nodiscard]] EventPtr keyboardEvent(KeyCode keyCode, KeyAction action) override;

private:
    class Mouse;
    class Key;

    void send(Effect posted, std::function<void()> deliver);

    World world_;
};

} // namespace trovel
