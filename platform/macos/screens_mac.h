#pragma once

#include "platform/screens.h"

namespace trovel {

/// The screens as AppKit sees them; the one with the menu bar is the first.
class ScreensMac final : public Screens {
public:
    ScreensMac() = default;

    [[nodiscard]] std::vector<Screen> screens() const override;
};

} // namespace trovel
