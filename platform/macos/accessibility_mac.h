#pragma once

#include "platform/accessibility.h"

namespace trovel {

/// The accessibility interface. Each read is a message to the other application and waits for it.
class AccessibilityMac final : public Accessibility {
public:
    AccessibilityMac() = default;

    [[nodiscard]] WindowPtr focusedWindow(std::int32_t processIdentifier) const override;
    [[nodiscard]] std::optional<std::vector<WindowPtr>>
    windows(std::int32_t processIdentifier) const override;
};

} // namespace trovel
