#pragma once

#include "platform/ui/view.h"

namespace trovel {

/// A content view of the system's HUD-window material, blended with what is behind the window and
/// always in its active state. Main thread only.
class VisualEffectView final : public View {
public:
    using View::View;

    [[nodiscard]] ViewKind kind() const override { return ViewKind::visualEffect; }
};

} // namespace trovel
