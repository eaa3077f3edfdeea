#pragma once

#include "platform/file_system.h"

namespace trovel {

/// The user's files by the system's own calls. What it makes is for this user alone, whatever the
/// umask.
class FileSystemLinux final : public FileSystem {
public:
    std::string homeDirectory() const override;
    bool createDirectory(std::string_view path) override;
    bool writeFile(std::string_view path, std::span<std::uint8_t const> contents) override;
    bool fileExists(std::string_view path) const override;
    std::optional<std::vector<std::string>>
    contentsOfDirectory(std::string_view path) const override;
    std::optional<Date> creationDate(std::string_view path) const override;
    bool removeItem(std::string_view path) override;
};

} // namespace trovel
