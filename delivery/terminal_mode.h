#pragma once

#include "delivery/target_activation.h"
#include "platform/image.h"
#include "platform/platform.h"
#include "platform/running_application.h"
#include "platform/ui/menu.h"
#include "settings/preferences.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace trovel {

/// Sends captures to a terminal or editor: the picture becomes a file and its path is pasted. Main
/// thread only.
class TerminalMode {
public:
    /// What it needs of its owner.
    struct Callbacks {
        /// The target items of the menu, in menu order.
        std::function<std::vector<std::shared_ptr<MenuItem>> const&()> terminalTargetItems;
        /// The application that was in front when the capture was started.
        std::function<std::optional<RunningApplication>()> previousFrontmostApp;
    };

    /// `owner` owns this object; blocks that wait hold it weakly.
    TerminalMode(Platform const& platform, std::weak_ptr<void> const& owner, Callbacks callbacks);

    /// Stores the choice of a target item and shows it.
    void terminalTargetSelected(MenuItem const& sender);

    /// Checks the one item that is in force: "Off" whenever the mode is off.
    void updateTerminalMenuState();

    /// Writes the picture, puts its path and a space on the pasteboard and pastes that into the
    /// target. Nothing is ever submitted.
    void deliverToTerminal(Image const& image);

private:
    [[nodiscard]] std::optional<std::string> saveCapture(Image const& image);
    [[nodiscard]] std::optional<RunningApplication> chooseTarget();
    [[nodiscard]] std::string titleOfTarget(std::int64_t tag) const;
    void pasteInto(RunningApplication const& target);
    void alert(std::string_view message);

    Platform platform_;
    Preferences preferences_;
    Callbacks callbacks_;
    TargetActivation activation_;
};

} // namespace trovel
