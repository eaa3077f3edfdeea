#pragma once

#include "platform/running_application.h"

#include <optional>
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

protected:
    Workspace() = default;
    ~Workspace() = default;
};

} // namespace trovel
