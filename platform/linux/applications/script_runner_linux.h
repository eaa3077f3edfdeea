#pragma once

#include "platform/script_runner.h"

namespace trovel {

class ApplicationGroups;

/// Understands the one sentence that brings an application to the front, and carries it out.
class ScriptRunnerLinux final : public ScriptRunner {
public:
    /// `groups` outlives the runner.
    explicit ScriptRunnerLinux(ApplicationGroups& groups) : groups_(groups) {}

    void execute(std::string_view source) override;

private:
    ApplicationGroups& groups_;
};

} // namespace trovel
