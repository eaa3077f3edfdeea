#pragma once

#include "platform/workspace.h"

namespace trovel {

/// The shared workspace. Its answers change only when the main run loop turns.
class WorkspaceMac final : public Workspace {
public:
    WorkspaceMac() = default;

    [[nodiscard]] std::vector<RunningApplication> runningApplications() const override;
    [[nodiscard]] std::optional<RunningApplication> frontmostApplication() const override;
};

} // namespace trovel
