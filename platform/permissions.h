#pragma once

namespace trovel {

/// The two grants that the operating system keeps. Main thread only.
class Permissions {
public:
    Permissions(Permissions const&) = delete;
    Permissions& operator=(Permissions const&) = delete;

    /// Whether this program may look into other applications and send them input. Asked of the
    /// system each time, and never prompts.
    [[nodiscard]] virtual bool isAccessibilityTrusted() const = 0;

    /// Whether this program may record the screen, likewise.
    [[nodiscard]] virtual bool preflightScreenCapture() const = 0;

    /// Lets the system show its own prompt for the accessibility grant. The answer comes later, if
    /// ever, and is seen by asking again.
    virtual void promptForAccessibility() = 0;

    /// Asks the system for the screen-recording grant; it may show a request of its own.
    virtual void requestScreenCapture() = 0;

protected:
    Permissions() = default;
    ~Permissions() = default;
};

} // namespace trovel
