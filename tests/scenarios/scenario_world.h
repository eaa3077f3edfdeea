#pragma once

#include "app/app_delegate.h"
#include "app/product.h"
#include "app/update_manager.h"
#include "platform/main_queue.h"
#include "platform/platform.h"
#include "platform/ui/view.h"
#include "setup_windows/window_context.h"
#include "setup_windows/window_slots.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace trovel {

/// What a program got, and how long after the world began: "click 500,590", "key 36", "paste
/// picture 200,1100,600,400", named by where it lies on its display in pixels from the top left, or
/// "paste text ..." with the text.
struct Received {
    MainQueue::Duration time{};
    std::string what;

    friend bool operator==(Received const&, Received const&) = default;
};

inline void PrintTo(Received const& received, std::ostream* stream) {
    *stream << received.what << " at "
            << std::chrono::duration_cast<std::chrono::milliseconds>(received.time).count()
            << " ms";
}

/// A whole desktop in virtual time to live through a scenario on: the user, the grants and other
/// programs. There is one for each backend whose time can be made.
///
/// It starts with one display of 1440 x 900 points at scale 2, no other program and both grants.
class ScenarioWorld {
public:
    using Duration = MainQueue::Duration;

    ScenarioWorld() = default;
    ScenarioWorld(ScenarioWorld const&) = delete;
    ScenarioWorld& operator=(ScenarioWorld const&) = delete;
    virtual ~ScenarioWorld() = default;

    [[nodiscard]] virtual Platform platform() = 0;

    /// The system starts the program, whose delegate is set. It ends by Application::terminate.
    virtual void launch() = 0;
    virtual void wait(Duration duration) = 0;

    // The user. What they do has been dealt with on return.
    virtual void pressKey(KeyCode keyCode, EventFlags flags) = 0;
    /// Global screen points: presses at `from` and lets go at `to`.
    virtual void drag(Point from, Point to) = 0;
    /// Clicks into the middle of a view of a window that is up.
    virtual void click(View const& view) = 0;
    /// Opens the status item's menu and chooses the row under those titles; false when there is
    /// none that can be chosen.
    virtual bool choose(std::vector<std::string> const& titles) = 0;
    /// Presses the close button of a window that is up.
    virtual void closeWindow(Window& window) = 0;
    virtual void setGrants(bool accessibility, bool screenRecording) = 0;
    /// Whether the system brings Trovel to the front when it asks for that.
    virtual void setActivationIsGranted(bool isGranted) = 0;

    // Other programs, with a window at (100, 50) of 800 x 600 points, from the top left.
    virtual std::int32_t startProgram(std::string const& name, std::string const& bundle) = 0;
    virtual void bringToFront(std::int32_t processIdentifier) = 0;
    [[nodiscard]] virtual std::vector<Received> received(std::int32_t processIdentifier) = 0;

    /// How many windows of Trovel's are on the screen.
    [[nodiscard]] virtual int visibleWindows() = 0;
    /// The files in the folder of captures.
    [[nodiscard]] virtual std::vector<std::string> capturedFiles() = 0;
};

/// The world of this test program; defined once in each.
[[nodiscard]] std::unique_ptr<ScenarioWorld> makeScenarioWorld();

/// The whole program in a world of its own.
class ScenarioTest : public testing::Test {
protected:
    void launch() {
        platform.application.setDelegate(delegate.get());
        world->launch();
    }
    void terminate() {
        platform.application.terminate();
        platform.application.setDelegate(nullptr);
    }
    void pressDefaultHotkey() {
        constexpr KeyCode kKey2 = 19;
        world->pressKey(kKey2, kFlagCommand | kFlagShift);
    }
    [[nodiscard]] std::vector<std::string> got(std::int32_t processIdentifier) {
        std::vector<std::string> all;
        for (auto const& each : world->received(processIdentifier)) all.push_back(each.what);
        return all;
    }

    std::unique_ptr<ScenarioWorld> world = makeScenarioWorld();
    Platform platform = world->platform();
    WindowSlots slots;
    SharedUpdateManager updates;
    WindowContext context{platform, slots};
    Product product{.displayName = "Trovel",
                    .changelogUrl = "https://trovel.example/changelog",
                    .supportEmail = "help@trovel.example"};
    std::shared_ptr<AppDelegate> delegate = AppDelegate::make(context, updates, product);
};

} // namespace trovel
