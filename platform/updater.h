#pragma once

#include <memory>

namespace trovel {

class MenuItem;

/// The update framework's standard controller. It shows its own user interface and reports its own
/// failures. Main thread only.
class UpdaterController {
public:
    UpdaterController(UpdaterController const&) = delete;
    UpdaterController& operator=(UpdaterController const&) = delete;
    virtual ~UpdaterController() = default;

    /// Looks for updates because the user asked for it. `sender` is the row of a menu that was
    /// chosen for it, null when there was none.
    virtual void checkForUpdates(MenuItem const* sender) = 0;

protected:
    UpdaterController() = default;
};

/// Makes the controller.
class Updater {
public:
    Updater(Updater const&) = delete;
    Updater& operator=(Updater const&) = delete;

    /// A controller without delegates whose updater has been started, and with it the checks that
    /// the framework makes by itself.
    [[nodiscard]] virtual std::unique_ptr<UpdaterController> makeStandardController() = 0;

protected:
    Updater() = default;
    ~Updater() = default;
};

} // namespace trovel
