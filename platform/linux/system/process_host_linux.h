#pragma once

#include "platform/process_host.h"

namespace trovel {

/// This process and the ones it starts. "The system's version" stands for macOS's, whose 15.0 made
/// programs ask for the screen-recording grant: here there is always something that can be asked.
class ProcessHostLinux final : public ProcessHost {
public:
    std::int32_t processIdentifier() const override;
    std::string bundlePath() const override;
    bool isSystemAtLeast(int majorVersion, int minorVersion) const override;
    bool startChild(std::string const& executable, std::span<std::string const> arguments) override;
};

} // namespace trovel
