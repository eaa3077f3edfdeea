#include "platform/linux/process_host_linux.h"

#include <fcntl.h>
#include <spawn.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <vector>

namespace trovel {

namespace {

std::string ownExecutable() {
    std::error_code error;
    auto const path = std::filesystem::read_symlink("/proc/self/exe", error);
    return error ? std::string() : path.string();
}

/// The environment for a child, whose PATH begins with the folder of this program's helpers: the
/// restart script finds `open` there.
std::vector<std::string> childEnvironment() {
    std::vector<std::string> environment;
    std::string path = TROVEL_LIBEXEC_DIR;
    auto const beside = std::filesystem::path(ownExecutable()).parent_path() / "libexec";
    path.insert(0, beside.string() + ":");
    for (char** variable = environ; *variable != nullptr; ++variable) {
        std::string_view const text = *variable;
        if (text.starts_with("PATH=")) {
            path.append(":").append(text.substr(5));
        } else {
            environment.emplace_back(text);
        }
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

std::int32_t ProcessHostLinux::processIdentifier() const {
    return getpid();
}

std::string ProcessHostLinux::bundlePath() const {
    // An AppImage's own executable lies in a mount that goes with the process.
    if (auto const* const image = std::getenv("APPIMAGE"); image != nullptr && *image != '\0') {
        return image;
    }
    return ownExecutable();
}

bool ProcessHostLinux::isSystemAtLeast(int, int) const {
    return true;
}

bool ProcessHostLinux::startChild(std::string const& executable,
                                  std::span<std::string const> arguments) {
    std::vector<std::string> values{executable};
    values.insert(values.end(), arguments.begin(), arguments.end());
    auto environment = childEnvironment();
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    // A session of its own: the child must not go with the terminal that this one was started from.
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSID);
    pid_t child = 0;
    int const error = posix_spawn(&child, executable.c_str(), nullptr, &attributes,
                                  pointers(values).data(), pointers(environment).data());
    posix_spawnattr_destroy(&attributes);
    return error == 0;
}

} // namespace trovel
