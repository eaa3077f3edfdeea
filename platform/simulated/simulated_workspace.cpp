#include "platform/simulated/simulated_workspace.h"

#include "platform/fatal.h"
#include "platform/url_rules.h"

#include <algorithm>
#include <utility>

namespace trovel {

namespace {

RunningApplication handleOf(SimulatedProgram const& program) {
    return {program.processIdentifier, program.bundleIdentifier, program.localizedName,
            program.activationPolicy};
}

RunningApplication trovelItself() {
    return {kTrovelProcess, "app.trovel.Trovel", "Trovel", ActivationPolicy::accessory};
}

} // namespace

SimulatedWorkspace::SimulatedWorkspace(SimulatedMainQueue& queue, Journal& journal)
    : queue_(queue), journal_(journal) {}

std::vector<RunningApplication> SimulatedWorkspace::runningApplications() const {
    std::vector<RunningApplication> applications{trovelItself()};
    for (auto const& program : programs_) applications.push_back(handleOf(*program));
    return applications;
}

std::optional<RunningApplication> SimulatedWorkspace::frontmostApplication() const {
    if (frontmost_ == kTrovelProcess) return trovelItself();
    auto const* front = program(frontmost_);
    return front != nullptr ? std::optional(handleOf(*front)) : std::nullopt;
}

std::vector<RunningApplication> SimulatedWorkspace::runningApplicationsWithBundleIdentifier(
    std::string_view bundleIdentifier) const {
    auto applications = runningApplications();
    std::erase_if(applications, [bundleIdentifier](auto const& application) {
        return application.bundleIdentifier != bundleIdentifier;
    });
    return applications;
}

void SimulatedWorkspace::openUrl(std::string_view url) {
    if (kindOfUrl(url) == UrlKind::invalid) return;
    journal_.record(effect::UrlOpened{std::string(url)});
}

SimulatedProgram& SimulatedWorkspace::start(SimulatedProgram program) {
    program.processIdentifier = nextProcess_++;
    for (auto& window : program.windows) window.id = nextWindow_++;
    frontToBack_.push_back(program.processIdentifier);
    programs_.push_back(std::make_unique<SimulatedProgram>(std::move(program)));
    return *programs_.back();
}

void SimulatedWorkspace::quit(std::int32_t processIdentifier) {
    std::erase_if(programs_, [processIdentifier](auto const& each) {
        return each->processIdentifier == processIdentifier;
    });
    std::erase(frontToBack_, processIdentifier);
    if (frontmost_ == processIdentifier) {
        setFrontmost(frontToBack_.empty() ? 0 : frontToBack_.front());
    }
}

void SimulatedWorkspace::openWindow(std::int32_t processIdentifier, Point position, Size size) {
    auto* owner = program(processIdentifier);
    if (owner == nullptr) fatal("a window was opened in a program that does not run");
    owner->windows.insert(owner->windows.begin(), {nextWindow_++, position, size});
}

void SimulatedWorkspace::setFrontmost(std::int32_t processIdentifier) {
    if (frontmost_ == processIdentifier) return;
    frontmost_ = processIdentifier;
    journal_.record(effect::FrontmostChanged{processIdentifier});
    if (onFrontmostChanged) onFrontmostChanged();
}

void SimulatedWorkspace::bringToFront(std::int32_t processIdentifier) {
    if (program(processIdentifier) != nullptr) {
        std::erase(frontToBack_, processIdentifier);
        frontToBack_.insert(frontToBack_.begin(), processIdentifier);
    }
    setFrontmost(processIdentifier);
}

void SimulatedWorkspace::askToFront(std::int32_t processIdentifier) {
    auto const* asked = program(processIdentifier);
    if (asked == nullptr) return;
    auto const come = [this, processIdentifier] {
        auto const* running = program(processIdentifier);
        if (running != nullptr && !running->refusesActivation) bringToFront(processIdentifier);
    };
    if (asked->activationDelay == asked->activationDelay.zero()) return come();
    queue_.after(asked->activationDelay, come);
}

SimulatedProgram* SimulatedWorkspace::program(std::int32_t processIdentifier) const {
    auto const found = std::ranges::find_if(programs_, [processIdentifier](auto const& each) {
        return each->processIdentifier == processIdentifier;
    });
    return found != programs_.end() ? found->get() : nullptr;
}

SimulatedProgram* SimulatedWorkspace::programNamed(std::string_view name) const {
    auto const found = std::ranges::find_if(
        programs_, [name](auto const& each) { return each->localizedName == name; });
    return found != programs_.end() ? found->get() : nullptr;
}

SimulatedProgram* SimulatedWorkspace::raiseProgramAt(Point point) {
    for (auto const processIdentifier : frontToBack_) {
        auto& candidate = *program(processIdentifier);
        auto const hit = std::ranges::find_if(
            candidate.windows, [point](auto const& window) { return window.contains(point); });
        if (hit == candidate.windows.end()) continue;
        std::rotate(candidate.windows.begin(), hit, hit + 1);
        bringToFront(processIdentifier);
        return &candidate;
    }
    return nullptr;
}

} // namespace trovel
