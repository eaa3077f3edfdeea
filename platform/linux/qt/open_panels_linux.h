#pragma once

#include "platform/linux/applications/desktop_entries.h"
#include "platform/linux/qt/window_activator.h"
#include "platform/open_panels.h"

#include <filesystem>
#include <functional>
#include <vector>

namespace trovel {

/// An application is its desktop file here: the panel lists those that are installed, by icon and
/// name, and the answer is the path of the file.
class OpenPanelsLinux final : public OpenPanels {
public:
    /// `followAppearance` has the program's windows follow the desktop's appearance.
    OpenPanelsLinux(std::vector<std::filesystem::path> dataFolders,
                    std::function<void()> followAppearance, WindowActivator activateWindow);
    ~OpenPanelsLinux() = default;

    [[nodiscard]] std::optional<std::string> runModal(OpenPanel const& panel) override;
    [[nodiscard]] std::optional<ApplicationBundle>
    bundleAtPath(std::string const& path) const override;

private:
    mutable DesktopEntries entries_; // read again when the folders have changed
    std::function<void()> followAppearance_;
    WindowActivator activateWindow_;
};

} // namespace trovel
