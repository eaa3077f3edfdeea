#include "app/launch_at_login_manager.h"

#include "platform/alerts.h"
#include "platform/login_item.h"
#include "platform/platform.h"

#include <string>
#include <utility>

namespace trovel {

namespace {

void showFailure(Platform const& platform, std::string informativeText) {
    platform.alerts.runModal(
        {"Launch at Login", std::move(informativeText), AlertStyle::warning, {"OK"}});
}

} // namespace

bool LaunchAtLoginManager::isEnabled(Platform const& platform) {
    return platform.loginItem.status() == LoginItemStatus::enabled;
}

void LaunchAtLoginManager::enable(Platform const& platform) {
    auto const result = platform.loginItem.registerItem();
    if (!result) showFailure(platform, "Could not enable Launch at Login: " + result.error());
}

void LaunchAtLoginManager::disable(Platform const& platform) {
    auto const result = platform.loginItem.unregisterItem();
    if (!result) showFailure(platform, "Could not disable Launch at Login: " + result.error());
}

} // namespace trovel
