#pragma once

namespace trovel {

struct Platform;

/// Starts Trovel when the user logs in. It keeps nothing: the login item is the system's. Main
/// thread only.
class LaunchAtLoginManager {
public:
    /// Whether the login item is enabled; one that waits for the user's approval is not.
    [[nodiscard]] static bool isEnabled(Platform const& platform);

    /// A failure is shown in a warning and changes nothing.
    static void enable(Platform const& platform);
    static void disable(Platform const& platform);
};

} // namespace trovel
