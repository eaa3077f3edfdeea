#pragma once

#include <memory>

namespace trovel {

class Updater;
class UpdaterController;

/// Runs the update framework. Its owner makes it when the user first asks for updates: the
/// framework starts with it, and its own checks with the framework. Main thread only.
class UpdateManager {
public:
    explicit UpdateManager(Updater& updater);
    UpdateManager(UpdateManager const&) = delete;
    UpdateManager& operator=(UpdateManager const&) = delete;
    ~UpdateManager();

    /// Looks for updates; the framework shows what it finds.
    void checkForUpdates();

private:
    std::unique_ptr<UpdaterController> updaterController_;
};

} // namespace trovel
