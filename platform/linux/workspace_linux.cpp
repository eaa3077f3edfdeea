#include "platform/linux/workspace_linux.h"

#include "platform/linux/application_groups.h"

#include <utility>

namespace trovel {

std::vector<RunningApplication> WorkspaceLinux::runningApplications() const {
    auto running = groups_.read();
    std::vector<RunningApplication> applications;
    applications.reserve(running.groups.size());
    for (auto& group : running.groups) applications.push_back(std::move(group.application));
    return applications;
}

std::optional<RunningApplication> WorkspaceLinux::frontmostApplication() const {
    return groups_.read().frontmost;
}

} // namespace trovel
