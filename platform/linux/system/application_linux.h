#pragma once

#include "platform/application.h"

#include <functional>
#include <memory>
#include <utility>

namespace trovel {

class MainQueueLinux;

/// The application object: Qt's, on the X11 platform whatever the session asks for, and set up to
/// start fast. It runs the main queue, and SIGINT and SIGTERM end it as `terminate` does.
class ApplicationLinux final : public Application {
public:
    /// An X server must be there: without one Qt stops the process. The queue must outlive this.
    explicit ApplicationLinux(MainQueueLinux& mainQueue);
    ~ApplicationLinux();

    /// Who brings this program's windows to the front.
    void setActivator(std::function<void()> activator) { activator_ = std::move(activator); }

    bool environmentHas(std::string_view name) const override;
    void setDelegate(ApplicationDelegate* delegate) override;
    void run() override;
    void terminate() override;
    void activate() override;
    void activateIgnoringOtherApps() override;

private:
    class Toolkit;

    void tellDelegateOfEnd();

    MainQueueLinux& mainQueue_;
    ApplicationDelegate* delegate_ = nullptr;
    bool isRunning_ = false;
    std::function<void()> activator_;
    std::unique_ptr<Toolkit> toolkit_;
};

} // namespace trovel
