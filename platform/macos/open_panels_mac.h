#pragma once

#include "platform/open_panels.h"

namespace trovel {

/// The system's open panel. It has no title bar, so its title is not seen.
class OpenPanelsMac final : public OpenPanels {
public:
    OpenPanelsMac() = default;

    [[nodiscard]] std::optional<std::string> runModal(OpenPanel const& panel) override;
    [[nodiscard]] std::optional<ApplicationBundle>
    bundleAtPath(std::string const& path) const override;
};

} // namespace trovel
