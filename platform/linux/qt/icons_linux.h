#pragma once

#include "platform/linux/applications/application_groups.h"
#include "platform/linux/applications/desktop_entries.h"
#include "platform/ui/icons.h"

#include <filesystem>
#include <vector>

class QIcon;

namespace trovel {

/// The icon that a desktop entry names: in the desktop's icon theme, or by its path. Null when
/// there is none.
[[nodiscard]] QIcon iconOf(DesktopEntry const& entry);

/// Symbols are drawn by this program; the icons of applications are those of their desktop entries,
/// and for a running one that has no entry the picture that its window brings.
class IconsLinux final : public Icons {
public:
    /// `groups` outlives it.
    IconsLinux(ApplicationGroups& groups, std::vector<std::filesystem::path> dataFolders);
    ~IconsLinux() = default;

    [[nodiscard]] bool hasSystemSymbol(std::string_view name) const override;
    [[nodiscard]] std::optional<ApplicationIcon>
    iconOfRunningApplication(RunningApplication const& application, double size) const override;
    [[nodiscard]] std::optional<ApplicationIcon>
    iconOfInstalledApplication(std::string_view bundleIdentifier, double size) const override;

private:
    ApplicationGroups& groups_;
    mutable DesktopEntries entries_; // read again when the folders have changed
};

} // namespace trovel
