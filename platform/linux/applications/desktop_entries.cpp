#include "platform/linux/applications/desktop_entries.h"

#include "platform/linux/files/desktop_file.h"
#include "platform/linux/files/plain_text.h"

#include <algorithm>
#include <optional>
#include <system_error>

namespace trovel {

namespace {

namespace fs = std::filesystem;

constexpr int kDeepestFolder = 4;

struct ParsedEntry {
    DesktopEntry entry;
    bool isDeleted = false;
};

/// The entry, without its id, that the file holds; nothing when it is not an application's.
std::optional<ParsedEntry> readEntry(fs::path const& path) {
    ParsedEntry parsed;
    bool isApplication = false;
    readDesktopFile(path, [&](std::string_view key, std::string_view value) {
        if (key == "Type") isApplication = value == "Application";
        if (key == "Name") parsed.entry.name = plainText(value);
        if (key == "StartupWMClass") parsed.entry.startupClass = plainText(value);
        if (key == "Exec") {
            parsed.entry.executable = plainText(fs::path(programOfExec(value)).filename().string());
        }
        if (key == "Icon") parsed.entry.icon = plainText(value);
        if (key == "NoDisplay") parsed.entry.isShown = value != "true";
        if (key == "Hidden") parsed.isDeleted = value == "true";
    });
    if (!isApplication && !parsed.isDeleted) return std::nullopt;
    return parsed;
}

/// When the folder last changed; the earliest time there is when it does not exist.
fs::file_time_type timeOfChange(fs::path const& folder) {
    std::error_code failed;
    auto const time = fs::last_write_time(folder, failed);
    return failed ? fs::file_time_type::min() : time;
}

} // namespace

DesktopEntries::DesktopEntries(std::vector<fs::path> dataFolders)
    : dataFolders_(std::move(dataFolders)) {}

bool DesktopEntries::refresh() {
    auto const isUnchanged = [](auto const& folder) {
        return timeOfChange(folder.first) == folder.second;
    };
    if (!read_.empty() && std::ranges::all_of(read_, isUnchanged)) return false;
    read_.clear();
    byId_.clear();
    for (auto const& folder : dataFolders_) readFolder(folder / "applications");
    // A hidden entry was kept so far for what it hides.
    std::erase_if(byId_, [](auto const& pair) { return pair.second.id.empty(); });
    index();
    return true;
}

void DesktopEntries::readFolder(fs::path const& applications) {
    read_.emplace_back(applications, timeOfChange(applications));
    std::error_code failed;
    auto const options = fs::directory_options::follow_directory_symlink |
                         fs::directory_options::skip_permission_denied;
    for (fs::recursive_directory_iterator at(applications, options, failed), end;
         !failed && at != end; at.increment(failed)) {
        std::error_code unknown;
        if (at->is_directory(unknown)) {
            read_.emplace_back(at->path(), timeOfChange(at->path()));
            if (at.depth() >= kDeepestFolder) at.disable_recursion_pending();
            continue;
        }
        if (at->path().extension() != ".desktop" || !at->is_regular_file(unknown)) continue;
        auto id = at->path().lexically_relative(applications).string();
        std::ranges::replace(id, '/', '-');
        id = plainText(id);
        auto const key = asciiLowerCase(id);
        if (byId_.contains(key)) continue;
        auto parsed = readEntry(at->path());
        if (!parsed) continue;
        if (!parsed->isDeleted) parsed->entry.id = id;
        parsed->entry.path = at->path();
        byId_.emplace(key, std::move(parsed->entry));
    }
}

void DesktopEntries::index() {
    byStartupClass_.clear();
    byExecutable_.clear();
    for (auto const& [key, entry] : byId_) {
        if (!entry.startupClass.empty()) {
            auto& best = byStartupClass_[asciiLowerCase(entry.startupClass)];
            // Shown ones first, then by id, so that the choice does not depend on the folder's
            // order.
            if (best == nullptr ||
                std::pair(!entry.isShown, entry.id) < std::pair(!best->isShown, best->id)) {
                best = &entry;
            }
        }
        if (!entry.executable.empty() && entry.isShown) {
            auto const [found, isFirst] = byExecutable_.emplace(entry.executable, &entry);
            if (!isFirst) found->second = nullptr;
        }
    }
}

DesktopEntry const* DesktopEntries::withId(std::string_view id) const {
    auto const found = byId_.find(asciiLowerCase(id));
    return found == byId_.end() ? nullptr : &found->second;
}

DesktopEntry const* DesktopEntries::withStartupClass(std::string_view startupClass) const {
    auto const found = byStartupClass_.find(asciiLowerCase(startupClass));
    return found == byStartupClass_.end() ? nullptr : found->second;
}

DesktopEntry const* DesktopEntries::soleWithExecutable(std::string_view executable) const {
    auto const found = byExecutable_.find(std::string(executable));
    return found == byExecutable_.end() ? nullptr : found->second;
}

std::vector<DesktopEntry const*> DesktopEntries::all() const {
    std::vector<DesktopEntry const*> entries;
    entries.reserve(byId_.size());
    for (auto const& [key, entry] : byId_) entries.push_back(&entry);
    return entries;
}

} // namespace trovel
