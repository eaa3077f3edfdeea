#pragma once

#include "platform/workspace.h"

#include <functional>
#include <utility>

namespace trovel {

class ApplicationGroups;

/// The running applications of a Linux desktop, as the groups of windows that belong together.
///
/// "com.apple.Terminal" names any of the terminals that there are here, the one used last first.
/// Only web and mail addresses are opened, by the program that xdg-open(1) knows. There are no
/// privacy settings to open, so an explanation takes their place.
class WorkspaceLinux final : public Workspace {
public:
    /// `groups` outlives the workspace.
    WorkspaceLinux(ApplicationGroups& groups, std::function<void()> explainPermissions)
        : groups_(groups), explainPermissions_(std::move(explainPermissions)) {}

    std::vector<RunningApplication> runningApplications() const override;
    std::optional<RunningApplication> frontmostApplication() const override;
    std::vector<RunningApplication>
    runningApplicationsWithBundleIdentifier(std::string_view bundleIdentifier) const override;
    void openUrl(std::string_view url) override;

private:
    ApplicationGroups& groups_;
    std::function<void()> explainPermissions_;
};

} // namespace trovel
