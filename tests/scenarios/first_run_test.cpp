#include "capture/screenshot_manager.h"
#include "platform/application.h"
#include "platform/preference_store.h"
#include "platform/ui/button.h"
#include "platform/ui/window.h"
#include "settings/preferences.h"
#include "setup_windows/app_selector_view.h"
#include "setup_windows/onboarding_window_controller.h"
#include "setup_windows/permissions_window_controller.h"
#include "tests/scenarios/scenario_world.h"
#include "tests/support/desktop_test.h"
#include "tests/support/views.h"

namespace trovel {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

/// A new account: nothing is stored, nothing is granted, and two programs run.
class FirstRunTest : public ScenarioTest {
protected:
    void SetUp() override {
        world->setGrants(false, false);
        chat = world->startProgram("ChatGPT", "com.openai.chat");
        warp = world->startProgram("Warp", "dev.warp.Warp-Stable");
        launch();
    }
    void TearDown() override { terminate(); }

    [[nodiscard]] bool isCompleted() const {
        return platform.preferences.boolForKey(kHasCompletedOnboarding);
    }
    void closeOnboarding() { world->closeWindow(*slots.sharedOnboardingWindow->window()); }
    void captureAndWait() {
        pressDefaultHotkey();
        world->wait(1s);
        world->drag({400, 350}, {100, 150});
        world->wait(1min);
    }

    std::int32_t chat = 0;
    std::int32_t warp = 0;
};

TEST_F(FirstRunTest, FromNothingToASentPicture) {
    ASSERT_NE(slots.sharedOnboardingWindow, nullptr);
    {
        auto const onboarding = slots.sharedOnboardingWindow;
        world->click(*onboarding->appSelector()->cards()[1]); // ChatGPT
        world->click(*onboarding->continueButton());
    }
    ASSERT_EQ(slots.sharedOnboardingWindow, nullptr);

    ASSERT_NE(slots.sharedPermissionsWindow, nullptr);
    {
        auto const permissions = slots.sharedPermissionsWindow;
        EXPECT_FALSE(permissions->continueButton().isEnabled());
        world->click(permissions->accessibilityButton());
        world->setGrants(true, false);
        world->click(permissions->screenRecButton());
        world->setGrants(true, true);
        world->wait(1s);
        world->click(permissions->continueButton());
    }
    EXPECT_TRUE(isCompleted());
    EXPECT_EQ(world->visibleWindows(), 0);

    EXPECT_TRUE(world->choose({"Auto Send"}));
    captureAndWait();
    EXPECT_THAT(got(chat),
                ElementsAre("click 500,590", "paste picture 200,1100,600,400", "key 36"));
}

TEST_F(FirstRunTest, TheHotkeyWithoutGrantsTakesTheCompletionOfTheFirstRunAway) {
    world->click(*slots.sharedOnboardingWindow->continueButton());
    auto const window = slots.sharedPermissionsWindow;
    pressDefaultHotkey();
    EXPECT_FALSE(delegate->screenshotManager().isCapturing());
    EXPECT_EQ(slots.sharedPermissionsWindow, window);
    world->setGrants(true, true);
    world->wait(1s);
    world->click(window->continueButton());
    EXPECT_EQ(slots.sharedPermissionsWindow, nullptr);
    EXPECT_FALSE(isCompleted());
}

TEST_F(FirstRunTest, AClosedOnboardingComesBackAtTheNextLaunch) {
    closeOnboarding();
    EXPECT_EQ(slots.sharedOnboardingWindow, nullptr);
    terminate();
    delegate.reset();
    delegate = AppDelegate::make(context, updates, product);
    launch();
    EXPECT_NE(slots.sharedOnboardingWindow, nullptr);
}

TEST_F(FirstRunTest, ThePictureBecomesAFileWhosePathIsPastedIntoTheTerminalOfTheUser) {
    closeOnboarding();
    world->setGrants(true, true);
    EXPECT_TRUE(world->choose({"Terminal Mode", "Frontmost App"}));
    EXPECT_TRUE(world->choose({"Auto Send"}));
    world->bringToFront(warp);
    captureAndWait();
    auto const files = world->capturedFiles();
    ASSERT_THAT(files, SizeIs(1));
    EXPECT_THAT(got(warp), ElementsAre("paste text " + files.front() + " ")); // never submitted
    EXPECT_THAT(got(chat), IsEmpty());
}

TEST_F(FirstRunTest, WithoutTerminalModeNoFileIsMade) {
    closeOnboarding();
    world->setGrants(true, true);
    captureAndWait();
    EXPECT_THAT(got(chat), testing::Contains("paste picture 200,1100,600,400"));
    EXPECT_THAT(world->capturedFiles(), IsEmpty());
}

TEST_F(FirstRunTest, TheProgramCanEndWhileEveryWindowIsOpen) {
    delegate->showChangeApp();
    delegate->showChangeHotkey();
    delegate->showPermissions();
    EXPECT_EQ(world->visibleWindows(), 4);
    terminate();
    slots = {};
    EXPECT_EQ(world->visibleWindows(), 0);
    world->wait(1s); // what was still to be displayed
}

} // namespace
} // namespace trovel
