#include "delivery/capture_files.h"

#include <algorithm>
#include <chrono>
#include <functional>
#include <optional>
#include <ranges>
#include <utility>
#include <vector>

namespace trovel {

namespace {

bool isPng(std::string_view path) {
    auto const lowerCase = [](char character) {
        bool const isUpper = character >= 'A' && character <= 'Z';
        return isUpper ? static_cast<char>(character - 'A' + 'a') : character;
    };
    // Behind the dot of a folder, and in a path without any, there is a slash: that is not "png".
    return std::ranges::equal(path.substr(path.rfind('.') + 1), std::string_view("png"), {},
                              lowerCase);
}

} // namespace

std::string capturesFolder(FileSystem const& files) {
    return files.homeDirectory() + "/.trovel/captures";
}

std::string captureFileName(FileSystem::Date date) {
    auto const milliseconds =
        std::chrono::duration_cast<std::chrono::milliseconds>(date.time_since_epoch());
    return "Trovel-" + std::to_string(milliseconds.count()) + ".png";
}

void pruneCaptures(FileSystem& files, std::string_view folder, std::size_t keep) {
    auto paths = files.contentsOfDirectory(folder);
    if (!paths) return;
    std::erase_if(*paths, [](auto const& path) { return !isPng(path); });
    if (paths->size() <= keep) return;

    using DatedPath = std::pair<std::optional<FileSystem::Date>, std::string>;
    std::vector<DatedPath> captures;
    for (auto& path : *paths) {
        auto const date = files.creationDate(path);
        captures.emplace_back(date, std::move(path));
    }
    // An absent date compares as the oldest, and equal dates are told apart by the path.
    std::ranges::sort(captures, std::ranges::greater());
    for (auto const& [date, path] : captures | std::views::drop(keep)) {
        // One that cannot be deleted does not keep the others.
        static_cast<void>(files.removeItem(path));
    }
}

} // namespace trovel
