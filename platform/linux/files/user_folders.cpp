#include "platform/linux/files/user_folders.h"

#include <pwd.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <string>
#include <string_view>

namespace trovel {

namespace {

namespace fs = std::filesystem;

/// Empty for a variable that is not set.
std::string_view environment(char const* name) {
    auto const* const value = std::getenv(name);
    return value != nullptr ? value : std::string_view();
}

fs::path folderOf(char const* variable, fs::path const& otherwise) {
    fs::path const named = environment(variable);
    return named.is_absolute() ? named : otherwise;
}

} // namespace

fs::path homeFolder() {
    std::string home(environment("HOME"));
    if (home.empty()) {
        auto const* const user = getpwuid(getuid());
        home = user != nullptr ? user->pw_dir : "/";
    }
    while (home.size() > 1 && home.back() == '/') home.pop_back();
    return home;
}

fs::path configurationFolder() {
    return folderOf("XDG_CONFIG_HOME", homeFolder() / ".config");
}

std::vector<fs::path> dataFolders() {
    std::vector<fs::path> folders{folderOf("XDG_DATA_HOME", homeFolder() / ".local/share")};
    auto rest = environment("XDG_DATA_DIRS");
    if (rest.empty()) rest = "/usr/local/share:/usr/share";
    while (!rest.empty()) {
        auto const end = std::min(rest.find(':'), rest.size());
        folders.emplace_back(rest.substr(0, end));
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    std::erase_if(folders, [](auto const& folder) { return folder.is_relative(); });
    return folders;
}

} // namespace trovel
