#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace trovel {

/// This process, and the ones it starts. Main thread only.
class ProcessHost {
public:
    ProcessHost(ProcessHost const&) = delete;
    ProcessHost& operator=(ProcessHost const&) = delete;

    [[nodiscard]] virtual std::int32_t processIdentifier() const = 0;

    /// Where the program's bundle lies: what `open` is given to start it again.
    [[nodiscard]] virtual std::string bundlePath() const = 0;

    /// Whether the operating system is that version or a later one.
    [[nodiscard]] virtual bool isSystemAtLeast(int majorVersion, int minorVersion) const = 0;

    /// Starts a program that outlives this one, without a shell in between. False when it could not
    /// be started.
    virtual bool startChild(std::string const& executable,
                            std::span<std::string const> arguments) = 0;

protected:
    ProcessHost() = default;
    ~ProcessHost() = default;
};

} // namespace trovel
