#pragma once

#include "platform/file_system.h"
#include "platform/simulated/faults.h"
#include "platform/simulated/simulated_wall_clock.h"

#include <map>
#include <set>

namespace trovel {

/// A file system in memory. Only the home folder is there at first.
class SimulatedFileSystem final : public FileSystem {
public:
    struct File {
        std::vector<std::uint8_t> contents;
        std::optional<Date> creationDate;
        /// Removing it fails.
        bool isStuck = false;
    };

    SimulatedFileSystem(Journal& journal, Faults& faults, SimulatedWallClock const& clock)
        : journal_(journal), faults_(faults), clock_(clock) {}
    ~SimulatedFileSystem() = default;

    [[nodiscard]] std::string homeDirectory() const override { return home_; }
    [[nodiscard]] bool createDirectory(std::string_view path) override;
    [[nodiscard]] bool writeFile(std::string_view path,
                                 std::span<std::uint8_t const> contents) override;
    [[nodiscard]] bool fileExists(std::string_view path) const override;
    [[nodiscard]] std::optional<std::vector<std::string>>
    contentsOfDirectory(std::string_view path) const override;
    [[nodiscard]] std::optional<Date> creationDate(std::string_view path) const override;
    bool removeItem(std::string_view path) override;

    void setHome(std::string home) { home_ = std::move(home); }
    /// Puts a file there behind the program's back, whatever the folders above it.
    File& put(std::string path, std::optional<Date> creationDate);

    [[nodiscard]] std::map<std::string, File, std::less<>> const& files() const { return files_; }
    [[nodiscard]] std::set<std::string, std::less<>> const& folders() const { return folders_; }

private:
    Journal& journal_;
    Faults& faults_;
    SimulatedWallClock const& clock_;
    std::string home_ = "/homes/ann";
    std::map<std::string, File, std::less<>> files_;
    std::set<std::string, std::less<>> folders_;
};

} // namespace trovel
