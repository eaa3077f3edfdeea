#pragma once

#include "platform/accessibility.h"

namespace trovel {

class ApplicationGroups;

/// The windows of other applications as the desktop tells of them, in global pixels.
class AccessibilityLinux final : public Accessibility {
public:
    /// `groups` outlives this and the windows that are handed out.
    explicit AccessibilityLinux(ApplicationGroups& groups) : groups_(groups) {}

    WindowPtr focusedWindow(std::int32_t processIdentifier) const override;
    std::optional<std::vector<WindowPtr>> windows(std::int32_t processIdentifier) const override;

private:
    ApplicationGroups& groups_;
};

} // namespace trovel
