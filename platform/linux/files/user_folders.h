#pragma once

#include <filesystem>
#include <vector>

namespace trovel {

/// This user's home folder, without a slash at its end: $HOME, or where the system's list of users
/// has it.
[[nodiscard]] std::filesystem::path homeFolder();

/// Where programs keep their settings (the XDG Base Directory Specification). As there, variables
/// that hold a relative path count as not set.
[[nodiscard]] std::filesystem::path configurationFolder();

/// The folders with the data of programs, the user's own first (the same specification).
[[nodiscard]] std::vector<std::filesystem::path> dataFolders();

} // namespace trovel
