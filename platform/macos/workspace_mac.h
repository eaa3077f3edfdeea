#pragma once

#include "platform/workspace.h"

namespace trovel {

/// The shared workspace. Its answers change only when the main run loop turns.
class WorkspaceMac final : public Workspace {
public:
    WorkspaceMac() = default;

    [[nodiscard]] std::vector<RunningApplication> runningApplications() const override;
    [[nodiscard]] std::optional<RunningApplication> frontmostApplication() const override;
    [[nodiscard]] std::vector<RunningApplication>
    runningApplicationsWithBundleIdentifier(std::string_view bundleIdentifier) const override;
    void openUrl(std::string_view url) override;
};

} // namespace trovel
