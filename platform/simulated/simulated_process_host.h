#pragma once

#include "platform/process_host.h"
#include "platform/simulated/faults.h"
#include "platform/simulated/simulated_workspace.h"

namespace trovel {

/// The process that Trovel is, on an operating system of version 14.0 at first.
class SimulatedProcessHost final : public ProcessHost {
public:
    SimulatedProcessHost(Journal& journal, Faults& faults) : journal_(journal), faults_(faults) {}
    ~SimulatedProcessHost() = default;

    [[nodiscard]] std::int32_t processIdentifier() const override { return kTrovelProcess; }
    [[nodiscard]] std::string bundlePath() const override { return "/Applications/Trovel.app"; }
    [[nodiscard]] bool isSystemAtLeast(int majorVersion, int minorVersion) const override {
        return std::pair(major_, minor_) >= std::pair(majorVersion, minorVersion);
    }
    bool startChild(std::string const& executable,
                    std::span<std::string const> arguments) override {
        if (faults_.strikes(Operation::startChild)) return false;
        journal_.record(effect::ChildStarted{executable, {arguments.begin(), arguments.end()}});
        return true;
    }

    void setSystemVersion(int majorVersion, int minorVersion) {
        major_ = majorVersion;
        minor_ = minorVersion;
    }

private:
    Journal& journal_;
    Faults& faults_;
    int major_ = 14;
    int minor_ = 0;
};

} // namespace trovel
