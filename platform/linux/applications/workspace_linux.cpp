#include "platform/linux/applications/workspace_linux.h"

#include "platform/linux/applications/application_groups.h"
#include "platform/linux/system/child_process.h"
#include "platform/url_rules.h"

#include <algorithm>
#include <array>
#include <string>
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

std::vector<RunningApplication>
WorkspaceLinux::runningApplicationsWithBundleIdentifier(std::string_view bundleIdentifier) const {
    auto running = groups_.read().groups;
    bool const wantsTerminal = bundleIdentifier == "com.apple.Terminal";
    std::erase_if(running, [&](ApplicationGroup const& group) {
        auto const& identifier = group.application.bundleIdentifier;
        if (!identifier) return true;
        return wantsTerminal ? !isTerminal(*identifier) : *identifier != bundleIdentifier;
    });
    if (wantsTerminal) std::ranges::sort(running, {}, &ApplicationGroup::recency);
    std::vector<RunningApplication> applications;
    for (auto& group : running) applications.push_back(std::move(group.application));
    return applications;
}

void WorkspaceLinux::openUrl(std::string_view url) {
    switch (kindOfUrl(url)) {
    case UrlKind::invalid: return;
    case UrlKind::privacySettings: explainPermissions_(); return;
    case UrlKind::handler: {
        // A desktop without xdg-open has nothing that would open it.
        static_cast<void>(startChildProcess("xdg-open", std::array{std::string(url)}));
        return;
    }
    }
}

} // namespace trovel
