#pragma once

#include <string_view>

namespace trovel {

/// Runs AppleScript texts. Main thread only.
class ScriptRunner {
public:
    ScriptRunner(ScriptRunner const&) = delete;
    ScriptRunner& operator=(ScriptRunner const&) = delete;

    /// Compiles and executes `source`. A text that does not compile is skipped, and an error of the
    /// execution is dropped: nothing is reported. Every backend accepts exactly the texts that
    /// activatedApplicationName() understands.
    virtual void execute(std::string_view source) = 0;

protected:
    ScriptRunner() = default;
    ~ScriptRunner() = default;
};

} // namespace trovel
