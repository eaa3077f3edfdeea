#pragma once

#include "platform/login_item.h"

#include <filesystem>

namespace trovel {

/// The autostart entry of the desktop (Desktop Application Autostart Specification): a desktop file
/// in the user's configuration. One that says it is hidden, or starts another program, is not ours
/// to count as enabled.
class LoginItemLinux final : public LoginItem {
public:
    /// `entry` is the desktop file's path, `program` what it starts.
    LoginItemLinux(std::filesystem::path entry, std::string program);

    LoginItemStatus status() const override;
    Result registerItem() override;
    Result unregisterItem() override;

private:
    std::filesystem::path entry_;
    std::string program_;
};

/// Where the entry lies: trovel.desktop in the autostart folder of $XDG_CONFIG_HOME.
[[nodiscard]] std::filesystem::path autostartEntryPath();

} // namespace trovel
