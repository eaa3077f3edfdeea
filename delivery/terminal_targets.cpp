#include "delivery/terminal_targets.h"

#include <algorithm>
#include <array>

namespace trovel {

namespace {

constexpr std::array<TerminalTarget, 7> kTargets{{
    {kTerminalModeOffTag, "Off", ""},
    {kFrontmostAppTag, "Frontmost App", ""},
    {2, "Terminal", "com.apple.Terminal"},
    {3, "iTerm", "com.googlecode.iterm2"},
    {4, "Warp", "dev.warp.Warp-Stable"},
    {5, "VS Code", "com.microsoft.VSCode"},
    {6, "Cursor", "com.todesktop.230313mzl4w4u92"},
}};

} // namespace

std::span<TerminalTarget const> terminalTargets() {
    return kTargets;
}

std::optional<std::string_view> terminalTargetBundleID(std::int64_t tag) {
    auto const* const target = std::ranges::find(kTargets, tag, &TerminalTarget::tag);
    if (target == kTargets.end() || target->bundleIdentifier.empty()) return std::nullopt;
    return target->bundleIdentifier;
}

} // namespace trovel
