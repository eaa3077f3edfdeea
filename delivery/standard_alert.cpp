#include "delivery/standard_alert.h"

#include "platform/alerts.h"
#include "platform/application.h"

#include <string>

namespace trovel {

void showStandardAlert(Platform const& platform, std::string_view message) {
    platform.application.activate();
    platform.alerts.runModal({.messageText = "Trovel",
                              .informativeText = std::string(message),
                              .style = AlertStyle::informational,
                              .buttons = {"OK"}});
}

} // namespace trovel
