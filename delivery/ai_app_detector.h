#pragma once

#include "delivery/ai_app.h"
#include "settings/preferences.h"

#include <optional>
#include <string_view>

namespace trovel {

class Workspace;

/// Decides which running application receives a capture. It keeps nothing between two questions.
/// Main thread only.
class AIAppDetector {
public:
    AIAppDetector(Workspace const& workspace, Preferences preferences)
        : workspace_(workspace), preferences_(preferences) {}

    /// The user's choice if it runs, else the application in front if it is a known one, else the
    /// first chat application of the catalogue that runs; nothing when there is none of these.
    [[nodiscard]] std::optional<AIApp> detectTargetApp() const;

    /// The row that the user chose; nothing when none was chosen or the choice names no row.
    [[nodiscard]] std::optional<KnownAIApp> preferredApp() const;

    /// `app` as a target by the first row of the whole catalogue that it matches.
    [[nodiscard]] std::optional<AIApp> matchKnownApp(RunningApplication const& app) const;

    /// Makes an application that is not in the catalogue the user's choice.
    void saveCustomApp(std::string_view name, std::string_view bundleID);

private:
    Workspace const& workspace_;
    Preferences preferences_;
};

} // namespace trovel
