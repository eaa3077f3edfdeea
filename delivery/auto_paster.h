#pragma once

#include "delivery/ai_app.h"
#include "platform/platform.h"
#include "settings/preferences.h"

#include <cstdint>
#include <memory>

namespace trovel {

/// Clicks into a target's window, pastes, and submits when the user wants that. Every failure is
/// silent: the picture stays on the pasteboard. Held by shared_ptr; main thread only.
class AutoPaster : public std::enable_shared_from_this<AutoPaster> {
public:
    explicit AutoPaster(Platform const& platform)
        : platform_(platform), preferences_(platform.preferences) {}

    /// Clicks now; the keystrokes follow on the main queue. The target must be in front already.
    /// Two calls in quick succession are two sequences, and neither cancels the other.
    void paste(AIApp const& target);

private:
    void focusInputArea(std::int32_t processIdentifier);
    void pasteAndSubmit(AIApp const& target);
    void sendSubmitKeystroke(SendBehavior behavior);

    Platform platform_;
    Preferences preferences_;
};

} // namespace trovel
