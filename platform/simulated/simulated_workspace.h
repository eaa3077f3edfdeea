#pragma once

#include "platform/simulated/journal.h"
#include "platform/simulated/simulated_program.h"
#include "platform/workspace.h"

#include <functional>
#include <memory>
#include <string_view>
#include <vector>

namespace trovel {

/// The process identifier of Trovel itself, which runs as an accessory without windows of the list.
inline constexpr std::int32_t kTrovelProcess = 1;

/// The programs that run beside Trovel, in the order in which they were started.
class SimulatedWorkspace final : public Workspace {
public:
    SimulatedWorkspace(SimulatedMainQueue& queue, Journal& journal);
    ~SimulatedWorkspace() = default;

    [[nodiscard]] std::vector<RunningApplication> runningApplications() const override;
    [[nodiscard]] std::optional<RunningApplication> frontmostApplication() const override;
    [[nodiscard]] std::vector<RunningApplication>
    runningApplicationsWithBundleIdentifier(std::string_view bundleIdentifier) const override;
    /// Takes for valid what has a scheme and something behind it.
    void openUrl(std::string_view url) override;

    /// Starts a program behind all others. Its identifiers are given out here: those of the
    /// program and those of its windows. The reference is good until the program is quit.
    SimulatedProgram& start(SimulatedProgram program);
    /// Ends it. The program that was in front before it comes to the front again.
    void quit(std::int32_t processIdentifier);
    /// Opens another window in front of the program's others.
    void openWindow(std::int32_t processIdentifier, Point position, Size size);

    /// Puts a program, or Trovel, in front at once; 0 puts none there.
    void bringToFront(std::int32_t processIdentifier);
    /// Asks a program to come to the front: it does so after its delay, if it still runs and wants.
    void askToFront(std::int32_t processIdentifier);

    [[nodiscard]] std::int32_t frontmost() const { return frontmost_; }
    /// Null when it does not run, or is Trovel itself.
    [[nodiscard]] SimulatedProgram* program(std::int32_t processIdentifier) const;
    [[nodiscard]] SimulatedProgram* programNamed(std::string_view name) const;
    [[nodiscard]] std::vector<std::unique_ptr<SimulatedProgram>> const& programs() const {
        return programs_;
    }
    /// The running program that has a window at that point (input coordinates) in front of all
    /// others; that window is then the first of its list. Null where there is only the desktop.
    [[nodiscard]] SimulatedProgram* raiseProgramAt(Point point);

    /// Called after another program has come to the front.
    std::function<void()> onFrontmostChanged;

private:
    void setFrontmost(std::int32_t processIdentifier);

    SimulatedMainQueue& queue_;
    Journal& journal_;
    std::vector<std::unique_ptr<SimulatedProgram>> programs_;
    std::vector<std::int32_t> frontToBack_; // every program that was ever in front or started
    std::int32_t frontmost_ = 0;
    std::int32_t nextProcess_ = 100;
    int nextWindow_ = 1;
};

} // namespace trovel
