#include "platform/linux/files/login_item_linux.h"

#include "platform/linux/files/desktop_file.h"
#include "platform/linux/files/user_folders.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <string_view>
#include <system_error>
#include <utility>

namespace trovel {

namespace {

namespace fs = std::filesystem;

/// A path as one argument of an Exec key: in quotes, with what is special inside them escaped, once
/// for the quoting and once for the desktop file's strings.
std::string quotedForExec(std::string_view path) {
    std::string quoted = "\"";
    for (char const character : path) {
        if (character == '\\') {
            quoted += R"(\\\\)";
        } else if (character == '"' || character == '`' || character == '$') {
            quoted.append(R"(\\)").push_back(character);
        } else if (character == '%') {
            quoted += "%%";
        } else if (character == '\n') {
            quoted += R"(\n)";
        } else {
            quoted.push_back(character);
        }
    }
    return quoted + "\"";
}

std::string entryText(std::string_view program) {
    return "[Desktop Entry]\n"
           "Type=Application\n"
           "Version=1.0\n"
           "Name=Trovel\n"
           "Comment=Send a part of the screen to an AI chat\n"
           "Exec=" +
           quotedForExec(program) +
           "\n"
           "Icon=trovel\n"
           "Terminal=false\n"
           "NoDisplay=true\n"
           "X-GNOME-Autostart-enabled=true\n";
}

std::unexpected<std::string> systemError(int number) {
    return std::unexpected(std::string(std::strerror(number)));
}

} // namespace

fs::path autostartEntryPath() {
    return configurationFolder() / "autostart" / "trovel.desktop";
}

LoginItemLinux::LoginItemLinux(fs::path entry, std::string program)
    : entry_(std::move(entry)), program_(std::move(program)) {}

LoginItemStatus LoginItemLinux::status() const {
    bool isHidden = false;
    bool isOff = false;
    std::string program;
    auto const noteKey = [&](std::string_view key, std::string_view value) {
        if (key == "Hidden") isHidden = value == "true";
        if (key == "X-GNOME-Autostart-enabled") isOff = value == "false";
        if (key == "Exec") program = programOfExec(value);
    };
    if (!readDesktopFile(entry_, noteKey)) return LoginItemStatus::notRegistered;
    // A bare name is what a packaged entry says.
    bool const isOurs = program == program_ || program == fs::path(program_).filename();
    return isOurs && !isHidden && !isOff ? LoginItemStatus::enabled
                                         : LoginItemStatus::notRegistered;
}

LoginItem::Result LoginItemLinux::registerItem() {
    std::error_code error;
    fs::create_directories(entry_.parent_path(), error);
    if (error) return std::unexpected(error.message());
    // Beside its place first: a half-written entry must never be what the desktop starts.
    auto temporary = entry_;
    temporary += ".new";
    errno = 0;
    std::ofstream file(temporary, std::ios::trunc);
    file << entryText(program_);
    file.close();
    if (!file) {
        auto const number = errno;
        fs::remove(temporary, error);
        return systemError(number != 0 ? number : EIO);
    }
    fs::rename(temporary, entry_, error);
    if (error) return std::unexpected(error.message());
    return {};
}

LoginItem::Result LoginItemLinux::unregisterItem() {
    std::error_code error;
    fs::remove(entry_, error);
    if (error) return std::unexpected(error.message());
    return {};
}

} // namespace trovel
