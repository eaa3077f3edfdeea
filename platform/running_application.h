#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace trovel {

/// How an application takes part in the desktop: with windows and a place in the switcher, as an
/// agent without one, or not at all.
enum class ActivationPolicy : std::uint8_t { regular, accessory, prohibited };

/// A handle on a running application, as it was when it was asked for. It stays a valid value after
/// that application has ended.
struct RunningApplication {
    /// Names the application as long as it runs. On X11 the backend hands these out, because two
    /// applications may share a system process.
    std::int32_t processIdentifier = 0;
    std::optional<std::string> bundleIdentifier;
    std::optional<std::string> localizedName;
    ActivationPolicy activationPolicy = ActivationPolicy::regular;

    friend bool operator==(RunningApplication const&, RunningApplication const&) = default;
};

} // namespace trovel
