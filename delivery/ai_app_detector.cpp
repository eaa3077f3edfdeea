#include "delivery/ai_app_detector.h"

#include "delivery/ai_app_catalogue.h"
#include "platform/workspace.h"

#include <algorithm>
#include <vector>

namespace trovel {

namespace {

constexpr std::string_view kCustomAppIcon = "app.fill";

bool matches(RunningApplication const& app, KnownAIApp const& row) {
    return app.bundleIdentifier && app.bundleIdentifier->starts_with(row.bundlePrefix);
}

/// `app`, which matches `row`, as a target.
AIApp target(KnownAIApp const& row, RunningApplication const& app) {
    return {row.name, *app.bundleIdentifier, app, row.sendBehavior};
}

std::optional<AIApp> firstMatch(KnownAIApp const& row,
                                std::vector<RunningApplication> const& running) {
    auto const found =
        std::ranges::find_if(running, [&](auto const& app) { return matches(app, row); });
    if (found == running.end()) return std::nullopt;
    return target(row, *found);
}

} // namespace

std::optional<AIApp> AIAppDetector::detectTargetApp() const {
    auto running = workspace_.runningApplications();
    std::erase_if(
        running, [](auto const& app) { return app.activationPolicy != ActivationPolicy::regular; });
    if (auto const row = preferredApp()) {
        if (auto chosen = firstMatch(*row, running)) return chosen;
    }
    if (auto const app = workspace_.frontmostApplication()) {
        if (auto frontmost = matchKnownApp(*app)) return frontmost;
    }
    for (auto const& row : knownAIApps()) {
        if (auto first = firstMatch(row, running)) return first;
    }
    return std::nullopt;
}

std::optional<KnownAIApp> AIAppDetector::preferredApp() const {
    auto const name = preferences_.preferredAIApp();
    if (!name) return std::nullopt;
    auto const row = std::ranges::find(allKnownApps(), *name, &KnownAIApp::name);
    if (row != allKnownApps().end()) return *row;
    if (preferences_.customAppName() != name) return std::nullopt;
    auto const bundleID = preferences_.customAppBundleID();
    if (!bundleID) return std::nullopt;
    return KnownAIApp{*name, *bundleID, SendBehavior::enter, std::string(kCustomAppIcon)};
}

std::optional<AIApp> AIAppDetector::matchKnownApp(RunningApplication const& app) const {
    auto const row = std::ranges::find_if(allKnownApps(),
                                          [&](auto const& known) { return matches(app, known); });
    if (row == allKnownApps().end()) return std::nullopt;
    return target(*row, app);
}

void AIAppDetector::saveCustomApp(std::string_view name, std::string_view bundleID) {
    preferences_.setCustomAppName(name);
    preferences_.setCustomAppBundleID(bundleID);
    preferences_.setPreferredAIApp(name);
}

} // namespace trovel
