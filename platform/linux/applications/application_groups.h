#pragma once

#include "platform/linux/applications/application_identity.h"
#include "platform/linux/applications/window_source.h"
#include "platform/running_application.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace trovel {

/// A running application: the windows of one identity, whatever system processes they come from.
struct ApplicationGroup {
    RunningApplication application;
    std::vector<WindowId> windows; ///< The most recently active one first; never empty.
    std::size_t recency = 0; ///< How many windows of the desktop were active after its last one.
};

/// All of them at one moment.
struct RunningGroups {
    std::vector<ApplicationGroup> groups; ///< In the order of their oldest windows.
    std::optional<RunningApplication> frontmost;
};

/// Puts the windows of the desktop together into applications. Everything is read anew at each
/// question; what lasts is the number and the name that an application was given, for as long as it
/// has a window. Names are unique among the running applications: to a name that is taken, the
/// identifier is added in parentheses. Main thread only.
class ApplicationGroups {
public:
    /// `windows` outlives the groups. Windows of the process `ownProcess` are an accessory's.
    ApplicationGroups(WindowSource& windows, std::vector<std::filesystem::path> dataFolders,
                      std::int32_t ownProcess);

    [[nodiscard]] RunningGroups read();

    /// The application that was given this number or name; nothing when it is gone.
    [[nodiscard]] std::optional<ApplicationGroup> withProcessIdentifier(std::int32_t identifier);
    [[nodiscard]] std::optional<ApplicationGroup> withName(std::string_view name);

    /// Asks for the application's most recently active window to come to the front.
    void activate(ApplicationGroup const& group) { windows_.activate(group.windows.front()); }

    /// A window's place in global pixels; nothing when it is gone.
    [[nodiscard]] std::optional<Rect> frame(WindowId window) { return windows_.frame(window); }

    /// The picture that the application's most recently active window brings, as it fits best
    /// where it is shown `pixels` wide and high.
    [[nodiscard]] std::optional<WindowIcon> icon(ApplicationGroup const& group, int pixels) {
        return windows_.icon(group.windows.front(), pixels);
    }

private:
    struct Given {
        std::int32_t processIdentifier = 0;
        std::optional<std::string> name;
    };

    [[nodiscard]] Given const& given(ApplicationIdentity const& identity);

    WindowSource& windows_;
    ApplicationIdentities identities_;
    std::int32_t ownProcess_;
    std::map<std::string, Given> given_; // by the identity's key
    std::int32_t lastGiven_ = 0;
};

} // namespace trovel
