#include "delivery/terminal_mode.h"

#include "delivery/capture_files.h"
#include "delivery/paste_keystroke.h"
#include "delivery/standard_alert.h"
#include "delivery/terminal_targets.h"
#include "platform/file_system.h"
#include "platform/image_encoder.h"
#include "platform/pasteboard.h"
#include "platform/wall_clock.h"
#include "platform/workspace.h"

#include <utility>

namespace trovel {

namespace {

constexpr std::size_t kCapturesKept = 50;

} // namespace

TerminalMode::TerminalMode(Platform const& platform, std::shared_ptr<void> const& owner,
                           Callbacks callbacks)
    : platform_(platform), preferences_(platform.preferences), callbacks_(std::move(callbacks)),
      activation_(platform, owner) {}

void TerminalMode::terminalTargetSelected(std::int64_t tag) {
    preferences_.setTerminalModeEnabled(tag != kTerminalModeOffTag);
    preferences_.setTerminalModeTarget(tag);
}

void TerminalMode::deliverToTerminal(Image const& image) {
    auto const path = saveCapture(image);
    if (!path) return;
    platform_.pasteboard.clearContents();
    // The space separates the path from what is typed after it. A refusal by the system shows when
    // nothing is pasted.
    static_cast<void>(platform_.pasteboard.writeText(*path + " "));
    if (auto const target = chooseTarget()) pasteInto(*target);
}

std::optional<std::string> TerminalMode::saveCapture(Image const& image) {
    auto& files = platform_.files;
    auto const png = platform_.imageEncoder.pngRepresentation(image);
    if (!png) {
        alert("Failed to encode screenshot.");
        return std::nullopt;
    }
    auto const folder = capturesFolder(files);
    if (!files.createDirectory(folder)) {
        alert("Could not create captures directory.");
        return std::nullopt;
    }
    auto path = folder + "/" + captureFileName(platform_.wallClock.now());
    if (!files.writeFile(path, *png)) {
        alert("Failed to save screenshot to disk.");
        return std::nullopt;
    }
    if (!files.fileExists(path)) {
        alert("Screenshot file not found after save.");
        return std::nullopt;
    }
    pruneCaptures(files, folder, kCapturesKept);
    return path;
}

std::optional<RunningApplication> TerminalMode::chooseTarget() {
    auto const tag = preferences_.terminalModeTarget();
    auto const bundleIdentifier = terminalTargetBundleID(tag);
    if (!bundleIdentifier) return callbacks_.previousFrontmostApp();
    auto const running =
        platform_.workspace.runningApplicationsWithBundleIdentifier(*bundleIdentifier);
    if (!running.empty()) return running.front();
    alert(callbacks_.titleOfTarget(tag).value_or("Selected app") + " is not running.");
    return std::nullopt;
}

void TerminalMode::pasteInto(RunningApplication const& target) {
    activation_.activateWithAppleScript(target);
    activation_.waitForFrontmost(target, 0,
                                 [&events = platform_.events] { sendPasteKeystroke(events); });
}

void TerminalMode::alert(std::string_view message) {
    showStandardAlert(platform_, message);
}

} // namespace trovel
