#include "platform/simulated/simulated_file_system.h"

#include <utility>

namespace trovel {

namespace {

std::string_view parentOf(std::string_view path) {
    return path.substr(0, path.rfind('/'));
}

std::string_view nameOf(std::string_view path) {
    return path.substr(path.rfind('/') + 1);
}

} // namespace

bool SimulatedFileSystem::createDirectory(std::string_view path) {
    if (faults_.strikes(Operation::makeFolder)) return false;
    for (auto folder = path; folder.size() > home_.size(); folder = parentOf(folder)) {
        if (files_.contains(folder)) return false;
    }
    for (auto folder = path; folder.size() > home_.size(); folder = parentOf(folder)) {
        folders_.emplace(folder);
    }
    journal_.record(effect::FolderMade{std::string(path)});
    return true;
}

bool SimulatedFileSystem::writeFile(std::string_view path, std::span<std::uint8_t const> contents) {
    if (!folders_.contains(parentOf(path))) return false;
    bool const isCutShort = faults_.strikes(Operation::writeFile);
    auto const written = contents.first(isCutShort ? contents.size() / 2 : contents.size());
    auto const [file, isNew] = files_.try_emplace(std::string(path));
    if (isNew) file->second.creationDate = clock_.now();
    file->second.contents.assign(written.begin(), written.end());
    journal_.record(effect::FileWritten{std::string(path), written.size()});
    if (faults_.strikes(Operation::keepFile)) files_.erase(file);
    return !isCutShort;
}

bool SimulatedFileSystem::fileExists(std::string_view path) const {
    return files_.contains(path) || folders_.contains(path);
}

std::optional<std::vector<std::string>>
SimulatedFileSystem::contentsOfDirectory(std::string_view path) const {
    if (!folders_.contains(path) || faults_.strikes(Operation::listFolder)) return std::nullopt;
    std::vector<std::string> paths;
    auto const add = [&](std::string const& candidate) {
        if (parentOf(candidate) == path && !nameOf(candidate).starts_with('.')) {
            paths.push_back(candidate);
        }
    };
    for (auto const& [name, file] : files_) add(name);
    for (auto const& folder : folders_) add(folder);
    return paths;
}

std::optional<FileSystem::Date> SimulatedFileSystem::creationDate(std::string_view path) const {
    auto const found = files_.find(path);
    return found != files_.end() ? found->second.creationDate : std::nullopt;
}

bool SimulatedFileSystem::removeItem(std::string_view path) {
    auto const found = files_.find(path);
    if (found == files_.end() || found->second.isStuck) return false;
    if (faults_.strikes(Operation::removeFile)) return false;
    files_.erase(found);
    journal_.record(effect::FileRemoved{std::string(path)});
    return true;
}

SimulatedFileSystem::File& SimulatedFileSystem::put(std::string path,
                                                    std::optional<Date> creationDate) {
    for (auto folder = parentOf(path); folder.size() > home_.size(); folder = parentOf(folder)) {
        folders_.emplace(folder);
    }
    auto& file = files_[std::move(path)];
    file.creationDate = creationDate;
    return file;
}

} // namespace trovel
