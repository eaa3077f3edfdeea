#include "platform/simulated/simulated_script_runner.h"

#include "platform/activation_script.h"

namespace trovel {

void SimulatedScriptRunner::execute(std::string_view source) {
    auto const name = activatedApplicationName(source);
    if (!name) return;
    journal_.record(effect::ScriptExecuted{std::string(source)});
    if (faults_.strikes(Operation::executeScript)) return;
    if (auto const* program = workspace_.programNamed(*name)) {
        workspace_.askToFront(program->processIdentifier);
    }
}

} // namespace trovel
