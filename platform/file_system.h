#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace trovel {

/// The user's files. Paths are absolute, separated by slashes, bytes as the system has them. Main
/// thread only; calls block for as long as the disk takes.
class FileSystem {
public:
    using Date = std::chrono::sys_time<std::chrono::nanoseconds>;

    FileSystem(FileSystem const&) = delete;
    FileSystem& operator=(FileSystem const&) = delete;

    /// The home folder of the current user, without a slash at the end.
    [[nodiscard]] virtual std::string homeDirectory() const = 0;

    /// Makes a folder and those above it; one that exists is no error. New folders are for their
    /// owner alone. False on failure.
    [[nodiscard]] virtual bool createDirectory(std::string_view path) = 0;

    /// Writes a file in place, truncating one that is there. A new file is for its owner alone.
    /// False on failure; what was written until then stays.
    [[nodiscard]] virtual bool writeFile(std::string_view path,
                                         std::span<std::uint8_t const> contents) = 0;

    [[nodiscard]] virtual bool fileExists(std::string_view path) const = 0;

    /// The paths of what a folder holds, hidden entries left out, in no particular order; nothing
    /// when it cannot be listed.
    [[nodiscard]] virtual std::optional<std::vector<std::string>>
    contentsOfDirectory(std::string_view path) const = 0;

    /// When an entry was made: its birth time where the file system has one, else the time of its
    /// last change; nothing when neither can be read.
    [[nodiscard]] virtual std::optional<Date> creationDate(std::string_view path) const = 0;

    /// Removes a file; a folder stays. False when it was not removed.
    virtual bool removeItem(std::string_view path) = 0;

protected:
    FileSystem() = default;
    ~FileSystem() = default;
};

} // namespace trovel
