#pragma once

#include "platform/running_application.h"

#include <optional>
#include <string_view>
#include <vector>

namespace trovel {

/// The applications that run beside this one. Nothing is cached. Main thread only.
class Workspace {
public:
    Workspace(Workspace const&) = delete;
    Workspace& operator=(Workspace const&) = delete;

    /// All running applications, in the system's order.
    [[nodiscard]] virtual std::vector<RunningApplication> runningApplications() const = 0;

    /// The application that has the user's keyboard; none when nothing is in front.
    [[nodiscard]] virtual std::optional<RunningApplication> frontmostApplication() const = 0;

    /// The running applications with exactly that bundle identifier, in the system's order.
    [[nodiscard]] virtual std::vector<RunningApplication>
    runningApplicationsWithBundleIdentifier(std::string_view bundleIdentifier) const = 0;

    /// Opens `url` with the program that the user chose for its kind; a text that is no valid URL
    /// (platform/url_rules.h) opens nothing.
    virtual void openUrl(std::string_view url) = 0;

protected:
    Workspace() = default;
    ~Workspace() = default;
};

} // namespace trovel
