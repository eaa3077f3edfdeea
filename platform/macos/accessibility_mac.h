#pragma once

#include "platform/accessibility.h"

namespace trovel {

/// The accessibility interface. Each read is a message to the other application and waits for it,
/// up to a second. A look into an application, from the question for its windows to the last one
/// about a window that it gave, takes up to two: reads that come later fail.
class AccessibilityMac final : public Accessibility {
public:
    AccessibilityMac() = default;

    [[nodiscard]] WindowPtr focusedWindow(std::int32_t processIdentifier) const override;
    [[nodiscard]] std::optional<std::vector<WindowPtr>>
    windows(std::int32_t processIdentifier) const override;

private:
    mutable double end_ = 0; // of the look that was begun last, in seconds of the system's uptime
};

} // namespace trovel
