#include "platform/linux/system/child_process.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <thread>
#include <vector>

namespace trovel {

namespace {

namespace fs = std::filesystem;

/// The helpers' folders: where a build leaves them and where an installation has them.
std::string helperPath() {
    auto const folder = fs::path(ownExecutable()).parent_path();
    return (folder / "libexec").string() + ":" +
           (folder / TROVEL_LIBEXEC_FROM_BINDIR).lexically_normal().string();
}

std::vector<std::string> childEnvironment() {
    auto const helpers = helperPath();
    auto path = helpers;
    std::vector<std::string> environment;
    for (char** variable = environ; *variable != nullptr; ++variable) {
        std::string_view text = *variable;
        if (!text.starts_with("PATH=")) {
            environment.emplace_back(text);
            continue;
        }
        text.remove_prefix(text.find('=') + 1);
        // A program that was started again by its own child would add them again each time.
        if (text.starts_with(helpers + ":")) text.remove_prefix(helpers.size() + 1);
        path.append(":").append(text);
    }
    environment.push_back("PATH=" + path);
    return environment;
}

std::vector<char*> pointers(std::vector<std::string>& strings) {
    std::vector<char*> result;
    for (auto& string : strings) result.push_back(string.data());
    result.push_back(nullptr);
    return result;
}

} // namespace

std::string ownExecutable() {
    std::error_code error;
    auto const path = fs::read_symlink("/proc/self/exe", error);
    return error ? std::string() : path.string();
}

std::string ownProgram() {
    // An AppImage's own executable lies in a mount that goes with the process.
    auto const* const image = std::getenv("APPIMAGE");
    return image != nullptr && *image != '\0' ? image : ownExecutable();
}

// Not by QProcess: it takes arguments for text, and a path with bytes that are not UTF-8 would
// arrive as another one.
bool startChildProcess(std::string const& executable, std::span<std::string const> arguments) {
    std::vector<std::string> values{executable};
    values.insert(values.end(), arguments.begin(), arguments.end());
    auto environment = childEnvironment();
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSID);
    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    posix_spawn_file_actions_addopen(&files, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    pid_t child = 0;
    int const error = posix_spawnp(&child, executable.c_str(), &files, &attributes,
                                   pointers(values).data(), pointers(environment).data());
    posix_spawn_file_actions_destroy(&files);
    posix_spawnattr_destroy(&attributes);
    if (error != 0) return false;
    // Somebody has to take note of its end, or the system keeps an entry for it.
    std::thread([child] { waitpid(child, nullptr, 0); }).detach();
    return true;
}

} // namespace trovel
