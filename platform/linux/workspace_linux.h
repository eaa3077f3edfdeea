#pragma once

#include "platform/workspace.h"

namespace trovel {

class ApplicationGroups;

/// The running applications of an X11 desktop, as the groups of windows that belong together.
class WorkspaceLinux final : public Workspace {
public:
    /// `groups` outlives the workspace.
    explicit WorkspaceLinux(ApplicationGroups& groups) : groups_(groups) {}

    std::vector<RunningApplication> runningApplications() const override;
    std::optional<RunningApplication> frontmostApplication() const override;

private:
    ApplicationGroups& groups_;
};

} // namespace trovel
