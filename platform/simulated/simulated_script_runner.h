#pragma once

#include "platform/script_runner.h"
#include "platform/simulated/faults.h"
#include "platform/simulated/simulated_workspace.h"

namespace trovel {

/// Runs activation scripts: the program of that name is asked to come to the front.
class SimulatedScriptRunner final : public ScriptRunner {
public:
    SimulatedScriptRunner(SimulatedWorkspace& workspace, Journal& journal, Faults& faults)
        : workspace_(workspace), journal_(journal), faults_(faults) {}
    ~SimulatedScriptRunner() = default;

    void execute(std::string_view source) override;

private:
    SimulatedWorkspace& workspace_;
    Journal& journal_;
    Faults& faults_;
};

} // namespace trovel
