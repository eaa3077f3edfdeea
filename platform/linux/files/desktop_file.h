#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

namespace trovel {

using DesktopKeyHandler = std::function<void(std::string_view key, std::string_view value)>;

/// Shows `onKey` the keys of a desktop file's main group, in the file's order and with the values
/// as they are written (the Desktop Entry Specification). Of a file longer than 64 KiB only the
/// beginning counts. False when there is no file that can be read.
bool readDesktopFile(std::filesystem::path const& path, DesktopKeyHandler const& onKey);

/// The program that an Exec key's value starts: its first word, in quotes or not.
[[nodiscard]] std::string programOfExec(std::string_view value);

} // namespace trovel
