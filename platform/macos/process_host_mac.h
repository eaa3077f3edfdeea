#pragma once

#include "platform/process_host.h"

namespace trovel {

/// This process as the system sees it, and tasks of Foundation's.
class ProcessHostMac final : public ProcessHost {
public:
    ProcessHostMac() = default;

    [[nodiscard]] std::int32_t processIdentifier() const override;
    [[nodiscard]] std::string bundlePath() const override;
    [[nodiscard]] bool isSystemAtLeast(int majorVersion, int minorVersion) const override;
    bool startChild(std::string const& executable, std::span<std::string const> arguments) override;
};

} // namespace trovel
