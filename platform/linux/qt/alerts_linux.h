#pragma once

#include "platform/alerts.h"
#include "platform/linux/qt/window_activator.h"

#include <functional>
#include <memory>
#include <string>

class QDialog;

namespace trovel {

/// The text of an alert, made fit to be shown: of bounded size whatever a name in it holds, without
/// control characters and marks that turn the direction of what follows, and with places to break
/// the line in words that have none. UTF-8 in, UTF-8 out.
[[nodiscard]] std::string alertText(std::string const& text);

/// The same for a text of several lines, whose ends it keeps.
[[nodiscard]] std::string alertParagraphs(std::string const& text);

/// Alerts as small dialogs in front of other windows; Escape closes them too.
class AlertsLinux final : public Alerts {
public:
    /// `followAppearance` has the program's windows follow the desktop's appearance.
    AlertsLinux(std::function<void()> followAppearance, WindowActivator activateWindow);
    ~AlertsLinux();

    void runModal(Alert const& alert) override;

    /// Shows an alert and returns at once. One that was shown so before makes way for it.
    void show(Alert const& alert);

private:
    [[nodiscard]] std::unique_ptr<QDialog> makeDialog(Alert const& alert);

    std::function<void()> followAppearance_;
    WindowActivator activateWindow_;
    std::unique_ptr<QDialog> shown_; // the latest that nobody waits for, closed or not
};

} // namespace trovel
