#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace trovel {

inline constexpr std::int64_t kTerminalModeOffTag = 0;
inline constexpr std::int64_t kFrontmostAppTag = 1;

/// A row of the terminal targets, in menu order.
struct TerminalTarget {
    std::int64_t tag = 0;
    std::string_view title;
    /// Empty for the rows that name no application of their own.
    std::string_view bundleIdentifier;
};

/// "Off", the application in front, and the terminals and editors.
[[nodiscard]] std::span<TerminalTarget const> terminalTargets();

/// The bundle identifier of the terminal or editor with that tag; none for every other tag.
[[nodiscard]] std::optional<std::string_view> terminalTargetBundleID(std::int64_t tag);

} // namespace trovel
