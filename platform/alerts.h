#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace trovel {

enum class AlertStyle : std::uint8_t { warning, informational };

/// A system alert as a value.
struct Alert {
    std::string messageText;
    std::string informativeText;
    AlertStyle style = AlertStyle::informational;
    std::vector<std::string> buttons;
    /// Shows the application's own icon where the style would show its own.
    bool showsApplicationIcon = false;

    friend bool operator==(Alert const&, Alert const&) = default;
};

/// Shows alerts. Main thread only.
class Alerts {
public:
    Alerts(Alerts const&) = delete;
    Alerts& operator=(Alerts const&) = delete;

    /// Shows `alert` and returns when the user has closed it or the application terminates. The
    /// main queue, timers and hot keys go on meanwhile.
    virtual void runModal(Alert const& alert) = 0;

protected:
    Alerts() = default;
    ~Alerts() = default;
};

} // namespace trovel
