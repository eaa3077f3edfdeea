#pragma once

#include <memory>
#include <mutex>

namespace trovel {

class MenuItem;
class Updater;
class UpdaterController;

/// Runs the update framework, which starts with it, and its own checks with the framework. Main
/// thread only.
class UpdateManager {
public:
    explicit UpdateManager(Updater& updater);
    UpdateManager(UpdateManager const&) = delete;
    UpdateManager& operator=(UpdateManager const&) = delete;
    ~UpdateManager();

    /// Looks for updates; the framework shows what it finds. `sender` is the chosen row of a menu,
    /// null when there is none.
    void checkForUpdates(MenuItem const* sender);

private:
    std::unique_ptr<UpdaterController> updaterController_;
};

/// The place of the one UpdateManager of the process: one value for the whole process, like the
/// window slots.
class SharedUpdateManager {
public:
    SharedUpdateManager();
    SharedUpdateManager(SharedUpdateManager const&) = delete;
    SharedUpdateManager& operator=(SharedUpdateManager const&) = delete;
    ~SharedUpdateManager();

    /// The manager, made at the first request and lasting as long as this. Whichever threads ask,
    /// one is made, and all of them get it.
    [[nodiscard]] UpdateManager& get(Updater& updater);

private:
    std::once_flag once_;
    std::unique_ptr<UpdateManager> manager_;
};

} // namespace trovel
