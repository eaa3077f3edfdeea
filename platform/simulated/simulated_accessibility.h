#pragma once

#include "platform/accessibility.h"
#include "platform/simulated/faults.h"
#include "platform/simulated/simulated_main_queue.h"
#include "platform/simulated/simulated_permissions.h"
#include "platform/simulated/simulated_workspace.h"

namespace trovel {

/// Looks into the simulated programs; without the grant every read fails.
class SimulatedAccessibility final : public Accessibility {
public:
    SimulatedAccessibility(SimulatedMainQueue& queue, SimulatedWorkspace const& workspace,
                           SimulatedPermissions const& permissions, Faults& faults)
        : queue_(queue), workspace_(workspace), permissions_(permissions), faults_(faults) {}
    ~SimulatedAccessibility() = default;

    [[nodiscard]] WindowPtr focusedWindow(std::int32_t processIdentifier) const override;
    [[nodiscard]] std::optional<std::vector<WindowPtr>>
    windows(std::int32_t processIdentifier) const override;

private:
    class WindowElement;

    [[nodiscard]] bool answers(SimulatedProgram const& program, Operation operation) const;
    [[nodiscard]] WindowPtr element(std::int32_t processIdentifier, int windowId) const;

    SimulatedMainQueue& queue_;
    SimulatedWorkspace const& workspace_;
    SimulatedPermissions const& permissions_;
    Faults& faults_;
};

} // namespace trovel
