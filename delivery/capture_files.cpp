#include "delivery/capture_files.h"

#include <algorithm>
#include <chrono>
#include <vector>

namespace trovel {

namespace {

bool isPng(FileSystem::Entry const& entry) {
    std::string_view name = entry.path;
    name.remove_prefix(name.rfind('/') + 1);
    auto const dot = name.rfind('.');
    if (dot == std::string_view::npos || dot == 0) return false;
    std::string extension(name.substr(dot + 1));
    for (char& character : extension) {
        if (character >= 'A' && character <= 'Z') character = static_cast<char>(character + 32);
    }
    return extension == "png";
}

bool isNewer(FileSystem::Entry const& left, FileSystem::Entry const& right) {
    if (left.creationDate != right.creationDate) return left.creationDate > right.creationDate;
    return left.path > right.path;
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
    auto entries = files.contentsOfDirectory(folder);
    if (!entries) return;
    std::erase_if(*entries, [](auto const& entry) { return !isPng(entry); });
    if (entries->size() <= keep) return;
    std::ranges::sort(*entries, isNewer);
    for (std::size_t i = keep; i < entries->size(); ++i) {
        // One that cannot be deleted does not keep the others.
        static_cast<void>(files.removeItem((*entries)[i].path));
    }
}

} // namespace trovel
