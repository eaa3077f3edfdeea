#pragma once

#include "app/product.h"
#include "app/update_manager.h"
#include "platform/simulated/simulated_desktop.h"
#include "setup_windows/window_context.h"
#include "setup_windows/window_slots.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

namespace trovel {

/// A test on a desktop of its own.
class DesktopTest : public testing::Test {
protected:
    SimulatedDesktop desktop;
    Platform platform = desktop.platform();
    WindowSlots slots;
    SharedUpdateManager updates;
    WindowContext context{platform, slots};
    Product product{.displayName = "Trovel",
                    .changelogUrl = "https://trovel.example/changelog",
                    .supportEmail = "help@trovel.example"};
};

/// `platform` with another application object and other hot keys.
[[nodiscard]] inline Platform with(Platform const& platform, Application& application,
                                   HotkeyService& hotkeys) {
    return {application,
            platform.mainQueue,
            platform.worker,
            platform.preferences,
            platform.pasteboard,
            platform.workspace,
            platform.scripts,
            platform.accessibility,
            platform.events,
            platform.permissions,
            platform.screens,
            platform.capturer,
            hotkeys,
            platform.windows,
            platform.monitors,
            platform.cursors,
            platform.alerts,
            platform.statusBar,
            platform.animator,
            platform.icons,
            platform.openPanels,
            platform.files,
            platform.imageEncoder,
            platform.wallClock,
            platform.bundle,
            platform.process,
            platform.loginItem,
            platform.updater};
}

/// A line of the journal, to compare with: `at(300ms, effect::PasteboardCleared{})`.
[[nodiscard]] inline JournalEntry at(MainQueue::Duration time, Effect effect) {
    return {time, std::move(effect)};
}

/// What the journal says, without the times.
[[nodiscard]] inline std::vector<Effect> effectsOf(Journal const& journal) {
    std::vector<Effect> effects;
    for (auto const& entry : journal.entries()) effects.push_back(entry.effect);
    return effects;
}

/// The first of `Kinds` to the last, in the order of the journal, all others left out.
template <class... Kinds>
[[nodiscard]] std::vector<JournalEntry> only(Journal const& journal) {
    std::vector<JournalEntry> entries;
    for (auto const& entry : journal.entries()) {
        if ((std::holds_alternative<Kinds>(entry.effect) || ...)) entries.push_back(entry);
    }
    return entries;
}

/// A chat program with one window, in front when `start`ed and brought there. Its window's corner
/// is at (100, 50) and it is 800 x 600 points.
[[nodiscard]] inline SimulatedProgram chatProgram(std::string name, std::string bundleIdentifier) {
    SimulatedProgram program;
    program.localizedName = std::move(name);
    program.bundleIdentifier = std::move(bundleIdentifier);
    program.windows.push_back({0, {100, 50}, {800, 600}});
    return program;
}

} // namespace trovel
