#include "platform/simulated/simulated_application.h"

#include "platform/fatal.h"

namespace trovel {

void SimulatedApplication::launch() {
    isRunning_ = true;
    journal_.record(effect::Launched{});
    if (delegate_ != nullptr) delegate_->applicationDidFinishLaunching();
}

void SimulatedApplication::run() {
    launch();
    while (isRunning_) {
        if (!queue_.step()) fatal("the event loop waits, and nothing can happen any more");
    }
}

void SimulatedApplication::terminate() {
    if (!isRunning_) return;
    isRunning_ = false;
    if (delegate_ != nullptr) delegate_->applicationWillTerminate();
    journal_.record(effect::Terminated{});
}

void SimulatedApplication::setSelfActivation(SelfActivation effect) {
    selfActivation_ = effect;
    // Who has the keyboard depends on it.
    if (workspace_.onFrontmostChanged) workspace_.onFrontmostChanged();
}

void SimulatedApplication::activate(bool ignoringOtherApps) {
    journal_.record(effect::ActivationAsked{ignoringOtherApps});
    if (faults_.strikes(Operation::activateSelf)) return;
    if (selfActivation_ == SelfActivation::comesToFront) workspace_.bringToFront(kTrovelProcess);
}

} // namespace trovel
