#include "app/app_delegate.h"
#include "capture/screenshot_manager.h"
#include "platform/ui/button.h"
#include "setup_windows/app_selector_view.h"
#include "setup_windows/onboarding_window_controller.h"
#include "setup_windows/permissions_window_controller.h"
#include "tests/support/desktop_test.h"
#include "tests/support/views.h"

#include <memory>

namespace trovel {
namespace {

using namespace std::chrono_literals;
using testing::IsEmpty;
using testing::SizeIs;

/// A new account: nothing is stored, nothing is granted, and two programs run.
class FirstRunTest : public DesktopTest {
protected:
    void SetUp() override {
        desktop.permissions.revoke(Permission::accessibility);
        desktop.permissions.revoke(Permission::screenRecording);
        chat = desktop.workspace.start(chatProgram("ChatGPT", "com.openai.chat")).processIdentifier;
        warp =
            desktop.workspace.start(chatProgram("Warp", "dev.warp.Warp-Stable")).processIdentifier;
        desktop.workspace.bringToFront(warp);
        desktop.application.setDelegate(delegate.get());
        desktop.application.launch();
    }
    void TearDown() override { desktop.application.terminate(); }

    void click(View const& view) { desktop.user.click(centreOf(view)); }
    [[nodiscard]] bool isCompleted() const {
        return desktop.preferences.boolForKey(kHasCompletedOnboarding);
    }
    void captureAndWait() {
        desktop.user.pressDefaultHotkey();
        desktop.user.wait(1s);
        desktop.user.drag({400, 350}, {100, 150});
        desktop.user.wait(1min);
    }
    SimulatedProgram& program(std::int32_t processIdentifier) {
        return *desktop.workspace.program(processIdentifier);
    }

    std::int32_t chat = 0;
    std::int32_t warp = 0;
    std::shared_ptr<AppDelegate> delegate = AppDelegate::make(context, updates, product);
};

TEST_F(FirstRunTest, FromNothingToASentPicture) {
    ASSERT_NE(slots.sharedOnboardingWindow, nullptr);
    auto const& onboarding = *slots.sharedOnboardingWindow;
    click(*onboarding.appSelector()->cards()[1]); // ChatGPT
    click(*onboarding.continueButton());
    ASSERT_EQ(slots.sharedOnboardingWindow, nullptr);

    ASSERT_NE(slots.sharedPermissionsWindow, nullptr);
    auto& permissions = *slots.sharedPermissionsWindow;
    EXPECT_FALSE(permissions.continueButton().isEnabled());
    click(permissions.accessibilityButton());
    desktop.permissions.grant(Permission::accessibility);
    click(permissions.screenRecButton());
    desktop.permissions.grant(Permission::screenRecording);
    desktop.user.wait(1s);
    click(permissions.continueButton());
    EXPECT_TRUE(isCompleted());
    EXPECT_THAT(desktop.windows.visibleWindows(), IsEmpty());

    EXPECT_TRUE(desktop.statusBar.choose({"Auto Send"}));
    captureAndWait();
    Picture const picture{1, {200, 1100, 600, 400}, {300, 200}};
    ASSERT_THAT(program(chat).all<effect::Pasted>(), SizeIs(1));
    EXPECT_EQ(program(chat).all<effect::Pasted>().front().contents, PasteboardContents(picture));
    ASSERT_THAT(program(chat).all<effect::Typed>(), SizeIs(1));
    EXPECT_EQ(program(chat).all<effect::Typed>().front().keyCode, kKeyReturn);
    EXPECT_EQ(desktop.queue.pending(), 0U);
}

TEST_F(FirstRunTest, TheHotkeyWithoutGrantsTakesTheCompletionOfTheFirstRunAway) {
    click(*slots.sharedOnboardingWindow->continueButton());
    auto const window = slots.sharedPermissionsWindow;
    desktop.user.pressDefaultHotkey();
    EXPECT_FALSE(delegate->screenshotManager().isCapturing());
    EXPECT_EQ(slots.sharedPermissionsWindow, window);
    desktop.permissions.grant(Permission::accessibility);
    desktop.permissions.grant(Permission::screenRecording);
    desktop.user.wait(1s);
    click(window->continueButton());
    EXPECT_EQ(slots.sharedPermissionsWindow, nullptr);
    EXPECT_FALSE(isCompleted());
}

TEST_F(FirstRunTest, AClosedOnboardingComesBackAtTheNextLaunch) {
    slots.sharedOnboardingWindow->window()->receiveCloseRequest();
    desktop.application.terminate();
    delegate.reset();
    delegate = AppDelegate::make(context, updates, product);
    desktop.application.setDelegate(delegate.get());
    desktop.application.launch();
    EXPECT_NE(slots.sharedOnboardingWindow, nullptr);
}

TEST_F(FirstRunTest, ThePictureBecomesAFileWhosePathIsPastedIntoTheTerminalOfTheUser) {
    slots.sharedOnboardingWindow->window()->receiveCloseRequest();
    desktop.permissions.grant(Permission::accessibility);
    desktop.permissions.grant(Permission::screenRecording);
    EXPECT_TRUE(desktop.statusBar.choose({"Terminal Mode", "Frontmost App"}));
    EXPECT_TRUE(desktop.statusBar.choose({"Auto Send"}));
    desktop.workspace.bringToFront(warp);
    captureAndWait();
    ASSERT_THAT(desktop.files.files(), SizeIs(1));
    auto const path = desktop.files.files().begin()->first;
    ASSERT_THAT(program(warp).all<effect::Pasted>(), SizeIs(1));
    EXPECT_EQ(program(warp).all<effect::Pasted>().front().contents, PasteboardContents(path + " "));
    EXPECT_EQ(desktop.pasteboard.image().pixels, nullptr);
    EXPECT_THAT(program(warp).all<effect::Typed>(), IsEmpty()); // never submitted
    EXPECT_THAT(program(chat).inputs, IsEmpty());
}

TEST_F(FirstRunTest, WithoutTerminalModeNoFolderAndNoFileIsMade) {
    slots.sharedOnboardingWindow->window()->receiveCloseRequest();
    desktop.permissions.grant(Permission::accessibility);
    desktop.permissions.grant(Permission::screenRecording);
    captureAndWait();
    EXPECT_THAT(program(chat).all<effect::Pasted>(), SizeIs(1));
    EXPECT_THAT(desktop.files.files(), IsEmpty());
    EXPECT_THAT(desktop.files.folders(), IsEmpty());
}

TEST_F(FirstRunTest, TheProgramCanEndWhileEveryWindowIsOpen) {
    delegate->showChangeApp();
    delegate->showChangeHotkey();
    delegate->showPermissions();
    EXPECT_THAT(desktop.windows.visibleWindows(), SizeIs(4));
    desktop.application.terminate();
    slots = {};
    EXPECT_THAT(desktop.windows.visibleWindows(), IsEmpty());
    desktop.queue.drain(); // what was still to be displayed
    EXPECT_EQ(desktop.queue.pending(), 0U);
}

} // namespace
} // namespace trovel
