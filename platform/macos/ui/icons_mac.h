#pragma once

#include "platform/ui/icons.h"

namespace trovel {

/// Symbol images of the system, and icons from the workspace.
class IconsMac final : public Icons {
public:
    IconsMac() = default;

    [[nodiscard]] bool hasSystemSymbol(std::string_view name) const override;
    [[nodiscard]] std::optional<ApplicationIcon>
    iconOfRunningApplication(RunningApplication const& application, double size) const override;
    [[nodiscard]] std::optional<ApplicationIcon>
    iconOfInstalledApplication(std::string_view bundleIdentifier, double size) const override;
};

} // namespace trovel
