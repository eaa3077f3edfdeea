#include "platform/linux/files/file_system_linux.h"

#include "platform/linux/files/user_folders.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <memory>

namespace trovel {

namespace {

constexpr mode_t kFolderMode = S_IRWXU;
constexpr mode_t kFileMode = S_IRUSR | S_IWUSR;

bool isDirectory(std::string const& path) {
    struct stat status{};
    return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

/// Makes one folder; one that is there is no error.
bool makeFolder(std::string const& path) {
    if (mkdir(path.c_str(), kFolderMode) == 0) return chmod(path.c_str(), kFolderMode) == 0;
    return errno == EEXIST && isDirectory(path);
}

/// Opens a file for writing from its start, for this user alone if it is new. Whatever lies there,
/// opening does not wait for anybody.
int openForWriting(std::string const& path) {
    int const flags = O_WRONLY | O_CLOEXEC | O_NONBLOCK;
    int const made = open(path.c_str(), flags | O_CREAT | O_EXCL, kFileMode);
    if (made >= 0) {
        static_cast<void>(fchmod(made, kFileMode));
        return made;
    }
    return errno == EEXIST ? open(path.c_str(), flags | O_TRUNC) : -1;
}

bool writeAll(int file, std::span<std::uint8_t const> contents) {
    while (!contents.empty()) {
        auto const count = write(file, contents.data(), contents.size());
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return false;
        contents = contents.subspan(static_cast<std::size_t>(count));
    }
    return true;
}

FileSystem::Date date(statx_timestamp const& time) {
    return FileSystem::Date(std::chrono::seconds(time.tv_sec) +
                            std::chrono::nanoseconds(time.tv_nsec));
}

} // namespace

std::string FileSystemLinux::homeDirectory() const {
    return homeFolder().string();
}

bool FileSystemLinux::createDirectory(std::string_view path) {
    for (auto slash = path.find('/', 1); slash != std::string_view::npos;
         slash = path.find('/', slash + 1)) {
        std::string const parent(path.substr(0, slash));
        if (!isDirectory(parent) && !makeFolder(parent)) return false;
    }
    return makeFolder(std::string(path));
}

bool FileSystemLinux::writeFile(std::string_view path, std::span<std::uint8_t const> contents) {
    int const file = openForWriting(std::string(path));
    if (file < 0) return false;
    bool const isWritten = writeAll(file, contents);
    // A full disk may show as late as here.
    return close(file) == 0 && isWritten;
}

bool FileSystemLinux::fileExists(std::string_view path) const {
    return access(std::string(path).c_str(), F_OK) == 0;
}

std::optional<std::vector<std::string>>
FileSystemLinux::contentsOfDirectory(std::string_view path) const {
    std::string const folder(path);
    std::unique_ptr<DIR, int (*)(DIR*)> const directory(opendir(folder.c_str()), closedir);
    if (!directory) return std::nullopt;
    std::vector<std::string> paths;
    while (auto const* const entry = readdir(directory.get())) {
        std::string_view const name = entry->d_name;
        if (!name.starts_with('.')) paths.push_back(folder + "/" + std::string(name));
    }
    return paths;
}

std::optional<FileSystem::Date> FileSystemLinux::creationDate(std::string_view path) const {
    struct statx status{};
    // Birth times come from statx(2) alone; file systems without them leave the bit out.
    int const result = statx(AT_FDCWD, std::string(path).c_str(), AT_SYMLINK_NOFOLLOW,
                             STATX_BTIME | STATX_MTIME, &status);
    if (result != 0) return std::nullopt;
    if ((status.stx_mask & STATX_BTIME) != 0) return date(status.stx_btime);
    if ((status.stx_mask & STATX_MTIME) != 0) return date(status.stx_mtime);
    return std::nullopt;
}

bool FileSystemLinux::removeItem(std::string_view path) {
    return unlink(std::string(path).c_str()) == 0;
}

} // namespace trovel
