#pragma once

#include "platform/linux/tray/system_tray.h"

namespace trovel {

class XcbConnection;

/// The System Tray protocol of freedesktop.org: its manager owns a selection.
class SystemTrayX11 final : public SystemTray {
public:
    /// `x` outlives it.
    explicit SystemTrayX11(XcbConnection& x) : x_(x) {}
    ~SystemTrayX11() = default;

    [[nodiscard]] bool hasManager() override;
    [[nodiscard]] Registration watch(std::function<void()> onChange) override;

private:
    XcbConnection& x_;
};

} // namespace trovel
