#pragma once

#include "delivery/target_activation.h"
#include "platform/image.h"
#include "platform/platform.h"
#include "platform/running_application.h"
#include "settings/preferences.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace trovel {

/// Sends captures to a terminal or editor: the picture becomes a file and its path is pasted. Main
/// thread only.
class TerminalMode {
public:
    /// What it needs of its owner.
    struct Callbacks {
        /// What the menu calls the target with that tag; nothing when it has none.
        std::function<std::optional<std::string>(std::int64_t tag)> titleOfTarget;
        /// The application that was in front when the capture was started.
        std::function<std::optional<RunningApplication>()> previousFrontmostApp;
    };

    /// A part of `owner`, which keeps it alive; blocks that wait hold it weakly.
    TerminalMode(Platform const& platform, std::shared_ptr<void> const& owner, Callbacks callbacks);

    /// Stores the choice of the target with that tag.
    void terminalTargetSelected(std::int64_t tag);

    /// Writes the picture, puts its path and a space on the pasteboard and pastes that into the
    /// target. Nothing is ever submitted.
    void deliverToTerminal(Image const& image);

private:
    [[nodiscard]] std::optional<std::string> saveCapture(Image const& image);
    [[nodiscard]] std::optional<RunningApplication> chooseTarget();
    void pasteInto(RunningApplication const& target);
    void alert(std::string_view message);

    Platform platform_;
    Preferences preferences_;
    Callbacks callbacks_;
    TargetActivation activation_;
};

} // namespace trovel
