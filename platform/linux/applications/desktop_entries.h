#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace trovel {

/// What a desktop file says about an application. All texts are plain text.
struct DesktopEntry {
    std::string id;   ///< Its path below the folder, slashes as dashes, with the ending `.desktop`.
    std::string name; ///< The untranslated name.
    std::string startupClass;   ///< StartupWMClass.
    std::string executable;     ///< The file name of the program that Exec starts.
    std::string icon;           ///< A name in the icon theme, or a path.
    std::filesystem::path path; ///< The desktop file itself.
    bool isShown = true;        ///< False for those that menus leave out.
};

/// The desktop entries of the user and of the system (the Desktop Entry Specification). Of two with
/// one id the user's counts, and one that is marked as hidden hides those behind it.
class DesktopEntries {
public:
    /// `dataFolders` in the order of precedence; the entries lie in `applications` below each.
    explicit DesktopEntries(std::vector<std::filesystem::path> dataFolders);

    /// Reads the entries again if a folder has changed since; true when it did. Nothing is read
    /// before the first call.
    bool refresh();

    /// Each finds nothing with null. Upper and lower case are the same, a shown entry is preferred,
    /// and pointers are good until the next refresh that changes something.
    [[nodiscard]] DesktopEntry const* withId(std::string_view id) const;
    [[nodiscard]] DesktopEntry const* withStartupClass(std::string_view startupClass) const;

    /// The shown entry that starts this program, when there is exactly one.
    [[nodiscard]] DesktopEntry const* soleWithExecutable(std::string_view executable) const;

    /// All of them, shown and not, in no order.
    [[nodiscard]] std::vector<DesktopEntry const*> all() const;

private:
    using Folders = std::vector<std::pair<std::filesystem::path, std::filesystem::file_time_type>>;
    using Index = std::unordered_map<std::string, DesktopEntry const*>;

    void readFolder(std::filesystem::path const& applications);
    void index();

    std::vector<std::filesystem::path> dataFolders_;
    Folders read_; // every folder that was read, with its time of change
    std::unordered_map<std::string, DesktopEntry> byId_;
    Index byStartupClass_;
    Index byExecutable_; // null for a program of several entries
};

} // namespace trovel
