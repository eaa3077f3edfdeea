#pragma once

#include "platform/registration.h"

#include <functional>

namespace trovel {

/// The place for status icons that a display system keeps itself, beside that of the session bus.
/// Main thread only.
class SystemTray {
public:
    SystemTray(SystemTray const&) = delete;
    SystemTray& operator=(SystemTray const&) = delete;

    /// Whether somebody shows icons there now.
    [[nodiscard]] virtual bool hasManager() = 0;

    /// Calls `onChange` when somebody may have come or gone, until the registration ends.
    [[nodiscard]] virtual Registration watch(std::function<void()> onChange) = 0;

protected:
    SystemTray() = default;
    ~SystemTray() = default;
};

} // namespace trovel
