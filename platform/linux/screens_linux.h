#pragma once

#include "platform/screens.h"

namespace trovel {

class XcbConnection;

/// The screens as RandR's monitors, each with the scale that the desktop gives it.
class ScreensLinux final : public Screens {
public:
    /// `x` outlives it.
    explicit ScreensLinux(XcbConnection& x) : x_(x) {}
    ~ScreensLinux() = default;

    [[nodiscard]] std::vector<Screen> screens() const override;

private:
    XcbConnection& x_;
};

} // namespace trovel
