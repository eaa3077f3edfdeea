#pragma once

#include "platform/script_runner.h"

namespace trovel {

/// AppleScript. The first script for each target application makes macOS ask the user whether
/// Trovel may control it, and the call waits for the answer; a refusal is an error like any other.
class ScriptRunnerMac final : public ScriptRunner {
public:
    ScriptRunnerMac() = default;

    void execute(std::string_view source) override;
};

} // namespace trovel
