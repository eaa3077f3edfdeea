#pragma once

#include "platform/linux/applications/desktop_entries.h"
#include "platform/linux/applications/window_source.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace trovel {

/// Which application something belongs to.
struct ApplicationIdentity {
    /// Tells applications apart: a desktop id, or what stands for it. Empty when nothing is known.
    std::string key;
    std::optional<std::string> bundleIdentifier;
    std::optional<std::string> name;

    friend bool operator==(ApplicationIdentity const&, ApplicationIdentity const&) = default;
};

/// The identity of the application that a desktop entry starts. Applications that have an
/// identifier of their makers go by that one, everything else by its desktop id, whose ending
/// `.desktop` keeps one identifier from being the beginning of another. Chromium stands for Chrome.
[[nodiscard]] ApplicationIdentity identityOf(DesktopEntry const& entry);

/// Whether that identifier is one of a terminal that stands for the system's own. What the other
/// systems call their terminal has no one program here.
[[nodiscard]] bool isTerminal(std::string_view bundleIdentifier);

/// Finds out which application a window belongs to, by what the window says about its program and
/// by the installed desktop entries; never by its title. Main thread only.
class ApplicationIdentities {
public:
    explicit ApplicationIdentities(std::vector<std::filesystem::path> dataFolders);

    /// Looks for changed desktop entries; to be called before a round of questions.
    void refresh();

    [[nodiscard]] ApplicationIdentity const& of(WindowProperties const& properties);

private:
    [[nodiscard]] ApplicationIdentity find(WindowProperties const& properties) const;
    [[nodiscard]] DesktopEntry const* entryOf(WindowProperties const& properties) const;

    DesktopEntries entries_;
    std::map<WindowProperties, ApplicationIdentity> known_;
};

} // namespace trovel
