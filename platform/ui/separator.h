#pragma once

#include "platform/ui/view.h"

namespace trovel {

/// A thin line in the system's separator colour. Main thread only.
class Separator final : public View {
public:
    using View::View;

    [[nodiscard]] ViewKind kind() const override { return ViewKind::separator; }
};

} // namespace trovel
