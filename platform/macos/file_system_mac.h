#pragma once

#include "platform/file_system.h"

namespace trovel {

/// The default file manager.
class FileSystemMac final : public FileSystem {
public:
    FileSystemMac() = default;

    [[nodiscard]] std::string homeDirectory() const override;
    [[nodiscard]] bool createDirectory(std::string_view path) override;
    [[nodiscard]] bool writeFile(std::string_view path,
                                 std::span<std::uint8_t const> contents) override;
    [[nodiscard]] bool fileExists(std::string_view path) const override;
    [[nodiscard]] std::optional<std::vector<std::string>>
    contentsOfDirectory(std::string_view path) const override;
    [[nodiscard]] std::optional<Date> creationDate(std::string_view path) const override;
    bool removeItem(std::string_view path) override;
};

} // namespace trovel
