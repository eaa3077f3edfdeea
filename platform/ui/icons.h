#pragma once

#include "platform/ui/icon.h"

#include <optional>
#include <string_view>

namespace trovel {

struct RunningApplication;

/// Where icons come from. Main thread only.
class Icons {
public:
    Icons(Icons const&) = delete;
    Icons& operator=(Icons const&) = delete;

    /// Whether the system has a symbol image of that name.
    [[nodiscard]] virtual bool hasSystemSymbol(std::string_view name) const = 0;

    /// The icon of a running application, resized to `size` points square; none when it has none.
    [[nodiscard]] virtual std::optional<ApplicationIcon>
    iconOfRunningApplication(RunningApplication const& application, double size) const = 0;

    /// The icon of the installed application with exactly that bundle identifier, likewise; none
    /// when no such application is installed.
    [[nodiscard]] virtual std::optional<ApplicationIcon>
    iconOfInstalledApplication(std::string_view bundleIdentifier, double size) const = 0;

protected:
    Icons() = default;
    ~Icons() = default;
};

} // namespace trovel
