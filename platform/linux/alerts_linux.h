#pragma once

#include "platform/alerts.h"

#include <cstdint>
#include <functional>
#include <string>

namespace trovel {

class XcbConnection;

/// The text of an alert, made fit to be shown: of bounded size whatever a name in it holds, without
/// control characters and marks that turn the direction of what follows, and with places to break
/// the line in words that have none. UTF-8 in, UTF-8 out.
[[nodiscard]] std::string alertText(std::string const& text);

/// Alerts as small dialogs in front of other windows; Escape closes them too.
class AlertsLinux final : public Alerts {
public:
    /// Gives the keyboard to that window of this program (an X window id).
    using WindowActivator = std::function<void(std::uint32_t window)>;

    /// The connection must outlive this.
    AlertsLinux(XcbConnection& connection, WindowActivator activateWindow);
    ~AlertsLinux();

    void runModal(Alert const& alert) override;

private:
    XcbConnection& connection_;
    WindowActivator activateWindow_;
};

} // namespace trovel
