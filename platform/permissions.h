#pragma once

namespace trovel {

/// The two grants that the operating system keeps. Asked afresh each time; asking never prompts.
/// Main thread only.
class Permissions {
public:
    Permissions(Permissions const&) = delete;
    Permissions& operator=(Permissions const&) = delete;

    /// Whether this program may look into other applications and send them input.
    [[nodiscard]] virtual bool isAccessibilityTrusted() const = 0;

    /// Whether this program may record the screen.
    [[nodiscard]] virtual bool preflightScreenCapture() const = 0;

protected:
    Permissions() = default;
    ~Permissions() = default;
};

} // namespace trovel
