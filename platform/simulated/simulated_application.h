#pragma once

#include "platform/application.h"
#include "platform/simulated/faults.h"
#include "platform/simulated/simulated_workspace.h"

#include <functional>
#include <set>
#include <string>

namespace trovel {

/// What asking to become the active application does.
enum class SelfActivation : std::uint8_t {
    comesToFront,   ///< As on macOS: Trovel is frontmost, and only then do its windows get keys.
    changesNothing, ///< As on X11: another stays frontmost, and an overlay grabs the keyboard.
};

/// The application object and its event loop.
class SimulatedApplication final : public Application {
public:
    SimulatedApplication(SimulatedMainQueue& queue, Journal& journal, Faults& faults,
                         SimulatedWorkspace& workspace)
        : queue_(queue), journal_(journal), faults_(faults), workspace_(workspace) {}
    ~SimulatedApplication() = default;

    [[nodiscard]] bool environmentHas(std::string_view name) const override {
        return environment_.contains(name);
    }
    void setDelegate(ApplicationDelegate* delegate) override { delegate_ = delegate; }
    void run() override;
    void terminate() override;
    void activate() override { activate(false); }
    void activateIgnoringOtherApps() override { activate(true); }

    /// What run() does first. A test that moves the clock itself calls it in run()'s place, once
    /// the delegate is set.
    void launch();

    void setEnvironmentVariable(std::string name) { environment_.insert(std::move(name)); }
    void setSelfActivation(SelfActivation effect);

    [[nodiscard]] SelfActivation selfActivation() const { return selfActivation_; }
    [[nodiscard]] bool isRunning() const { return isRunning_; }

private:
    void activate(bool ignoringOtherApps);

    SimulatedMainQueue& queue_;
    Journal& journal_;
    Faults& faults_;
    SimulatedWorkspace& workspace_;
    std::set<std::string, std::less<>> environment_;
    ApplicationDelegate* delegate_ = nullptr;
    SelfActivation selfActivation_ = SelfActivation::comesToFront;
    bool isRunning_ = false;
};

} // namespace trovel
