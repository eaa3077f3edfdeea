#pragma once

#include "platform/screens.h"

namespace trovel {

class XcbConnection;

/// The screens as RandR's monitors, each with the scale that the desktop gives it.
class ScreensX11 final : public Screens {
public:
    /// `x` outlives it.
    explicit ScreensX11(XcbConnection& x) : x_(x) {}
    ~ScreensX11() = default;

    [[nodiscard]] std::vector<Screen> screens() const override;

private:
    XcbConnection& x_;
};

} // namespace trovel
