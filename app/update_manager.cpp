#include "app/update_manager.h"

#include "platform/updater.h"

namespace trovel {

UpdateManager::UpdateManager(Updater& updater)
    : updaterController_(updater.makeStandardController()) {}

UpdateManager::~UpdateManager() = default;

void UpdateManager::checkForUpdates() {
    updaterController_->checkForUpdates();
}

} // namespace trovel
