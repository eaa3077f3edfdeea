#pragma once

#include "platform/geometry.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace trovel {

/// A window of another application, seen through the accessibility interface. The window may be
/// gone by the time it is asked; it then has neither position nor size.
class AccessibilityWindow {
public:
    AccessibilityWindow(AccessibilityWindow const&) = delete;
    AccessibilityWindow& operator=(AccessibilityWindow const&) = delete;
    virtual ~AccessibilityWindow() = default;

    /// The window's corner in global screen coordinates, origin at the top left of the primary
    /// screen, y downward, in the unit that EventSynthesizer's mouse events use.
    [[nodiscard]] virtual std::optional<Point> position() const = 0;
    [[nodiscard]] virtual std::optional<Size> size() const = 0;

protected:
    AccessibilityWindow() = default;
};

/// Looks into other applications. Main thread only.
class Accessibility {
public:
    using WindowPtr = std::shared_ptr<AccessibilityWindow const>;

    Accessibility(Accessibility const&) = delete;
    Accessibility& operator=(Accessibility const&) = delete;

    /// The window of that application that has its keyboard focus; null when the read fails.
    [[nodiscard]] virtual WindowPtr focusedWindow(std::int32_t processIdentifier) const = 0;

    /// Its windows, front to back; nothing when the read fails or yields no list.
    [[nodiscard]] virtual std::optional<std::vector<WindowPtr>>
    windows(std::int32_t processIdentifier) const = 0;

protected:
    Accessibility() = default;
    ~Accessibility() = default;
};

} // namespace trovel
