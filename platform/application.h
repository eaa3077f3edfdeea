#pragma once

#include <string_view>

namespace trovel {

/// What the application object tells its delegate. Main thread.
class ApplicationDelegate {
public:
    ApplicationDelegate(ApplicationDelegate const&) = delete;
    ApplicationDelegate& operator=(ApplicationDelegate const&) = delete;

    /// Once, when the event loop has started.
    virtual void applicationDidFinishLaunching() = 0;

    /// Once, before the event loop ends, whatever ended it.
    virtual void applicationWillTerminate() = 0;

protected:
    ApplicationDelegate() = default;
    ~ApplicationDelegate() = default;
};

/// The shared application object. Main thread only.
class Application {
public:
    Application(Application const&) = delete;
    Application& operator=(Application const&) = delete;

    /// Whether the process environment has a variable of that name, even an empty one. Each call
    /// looks at the environment afresh.
    [[nodiscard]] virtual bool environmentHas(std::string_view name) const = 0;

    /// Installs the delegate. It is not owned and must outlive `run`.
    virtual void setDelegate(ApplicationDelegate* delegate) = 0;

    /// Runs the event loop until `terminate`; without a delegate it runs all the same.
    virtual void run() = 0;

    /// Tells the delegate and ends the event loop. Outside `run` it does nothing.
    virtual void terminate() = 0;

    /// Asks the desktop to make this program the active one. A request: it may be refused.
    virtual void activate() = 0;

    /// The same, in the form that ignores which application is active now.
    virtual void activateIgnoringOtherApps() = 0;

protected:
    Application() = default;
    ~Application() = default;
};

} // namespace trovel
