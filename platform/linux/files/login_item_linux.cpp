#include "platform/linux/files/login_item_linux.h"

#include "platform/linux/files/user_folders.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <map>
#include <optional>
#include <string_view>
#include <system_error>
#include <utility>

namespace trovel {

namespace {

namespace fs = std::filesystem;

/// The text that a desktop file's string stands for.
std::string unescaped(std::string_view value) {
    std::string text;
    for (std::size_t i = 0; i < value.size(); ++i) {
        if (value[i] != '\\' || i + 1 == value.size()) {
            text.push_back(value[i]);
            continue;
        }
        switch (value[++i]) {
        case 's': text.push_back(' '); break;
        case 'n': text.push_back('\n'); break;
        case 't': text.push_back('\t'); break;
        case 'r': text.push_back('\r'); break;
        default: text.push_back(value[i]);
        }
    }
    return text;
}

/// The program that an Exec key's value starts: its first word, in quotes or not.
std::string programOfExec(std::string_view value) {
    auto const line = unescaped(value);
    bool const isQuoted = line.starts_with('"');
    std::string program;
    for (std::size_t i = isQuoted ? 1 : 0; i < line.size(); ++i) {
        if (line[i] == (isQuoted ? '"' : ' ')) break;
        bool const isEscape = isQuoted && line[i] == '\\';
        bool const isPercent = line[i] == '%' && line.substr(i + 1).starts_with('%');
        if ((isEscape || isPercent) && i + 1 < line.size()) ++i;
        program.push_back(line[i]);
    }
    return program;
}

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view kBlank = " \t\r";
    auto const first = text.find_first_not_of(kBlank);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(kBlank) - first + 1);
}

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

/// The keys of the entry's main group; nothing when the file cannot be read.
std::optional<std::map<std::string, std::string>> readEntry(fs::path const& path) {
    std::ifstream file(path);
    if (!file) return std::nullopt;
    std::map<std::string, std::string> keys;
    bool isMainGroup = false;
    for (std::string whole; std::getline(file, whole);) {
        auto const line = trimmed(whole);
        if (line.starts_with('[')) isMainGroup = line == "[Desktop Entry]";
        auto const equals = line.find('=');
        if (isMainGroup && equals != std::string_view::npos) {
            keys.emplace(trimmed(line.substr(0, equals)), trimmed(line.substr(equals + 1)));
        }
    }
    return keys;
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
    auto const keys = readEntry(entry_);
    if (!keys) return LoginItemStatus::notRegistered;
    auto const valueOf = [&keys](char const* key) {
        auto const found = keys->find(key);
        return found == keys->end() ? std::string() : found->second;
    };
    bool const isOff =
        valueOf("Hidden") == "true" || valueOf("X-GNOME-Autostart-enabled") == "false";
    // A bare name is what a packaged entry says.
    auto const program = programOfExec(valueOf("Exec"));
    bool const isOurs = program == program_ || program == fs::path(program_).filename();
    return isOurs && !isOff ? LoginItemStatus::enabled : LoginItemStatus::notRegistered;
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
