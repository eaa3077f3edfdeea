#include "app/update_manager.h"

#include "platform/updater.h"

namespace trovel {

UpdateManager::UpdateManager(Updater& updater)
    : updaterController_(updater.makeStandardController()) {}

UpdateManager::~UpdateManager() = default;

void UpdateManager::checkForUpdates(MenuItem const* sender) {
    updaterController_->checkForUpdates(sender);
}

SharedUpdateManager::SharedUpdateManager() = default;
SharedUpdateManager::~SharedUpdateManager() = default;

UpdateManager& SharedUpdateManager::get(Updater& updater) {
    std::call_once(once_, [&] { manager_ = std::make_unique<UpdateManager>(updater); });
    return *manager_;
}

} // namespace trovel
