#include "setup_windows/permissions_window_controller.h"

#include "platform/ui/button.h"
#include "platform/ui/label.h"
#include "setup_windows/change_app_window_controller.h"
#include "tests/support/desktop_test.h"
#include "tests/support/views.h"

#include <memory>

namespace trovel {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

constexpr auto kPane = "x-apple.systempreferences:com.apple.preference.security?"
                       "Privacy_ScreenCapture";

class PermissionsWindowTest : public DesktopTest {
protected:
    PermissionsWindowTest() {
        desktop.permissions.revoke(Permission::accessibility);
        desktop.permissions.revoke(Permission::screenRecording);
    }

    void open() {
        showPermissionsWindow(context, [this] { ++completions; });
    }
    PermissionsWindowController& shown() { return *slots.sharedPermissionsWindow; }
    [[nodiscard]] bool isShown() const { return slots.sharedPermissionsWindow != nullptr; }
    void click(View const& view) { desktop.user.click(centreOf(view)); }
    /// The poll's next look at the grants.
    void poll() { desktop.user.wait(1s); }

    [[nodiscard]] static double opacityOf(View const& view) { return view.layer()->opacity; }
    [[nodiscard]] static std::string backgroundOf(View const& view) {
        return textOf(view.layer()->backgroundColor);
    }

    int completions = 0;
};

TEST_F(PermissionsWindowTest, IsATitledClosableWindowInItsOwnDarkColour) {
    open();
    WindowAttributes expected;
    expected.contentRect = {0, 0, 440, 380};
    expected.styleMask = 3;
    expected.backgroundColor = Color::rgba(17.0 / 255, 17.0 / 255, 17.0 / 255, 1);
    expected.title = "Trovel";
    expected.isMovableByBackground = true;
    EXPECT_EQ(shown().window()->attributes(), expected);
}

TEST_F(PermissionsWindowTest, ShowsEveryElementInItsPlace) {
    open();
    EXPECT_THAT(
        linesOf(*shown().window()->contentView()),
        ElementsAreArray({
            R"(view (0, 0, 440, 380) | layer background 17,17,17)",
            R"(  label (0, 328, 440, 24) "Permissions" | system 18 medium | 255,255,255 | centred)",
            R"(  label (32, 284, 376, 34) "Trovel captures a screen region (⌘⇧2) and pastes it\n)"
            R"(into your AI app. These permissions make that work." | system 12 regular)"
            R"( | 107,114,128 | centred | 2 lines)",
            R"(  image (32, 238, 24, 24) | symbol rectangle.dashed.badge.record)"
            R"( "Screen Recording" system 14 medium | tint 138,109,72)",
            R"(  label (66, 256, 160, 16) "Screen Recording" | system 13 semibold | 255,255,255)",
            R"(  label (66, 238, 200, 14) "Not granted" | system 11 regular | 107,114,128)",
            R"(  label (66, 220, 342, 14) "Needed to capture your screenshot. )"
            R"(Without it, captures come back blank." | system 10 regular | 255,255,255 at 0.4)",
            R"(  button (328, 246, 72, 24) "Grant" | system 11 medium | borderless)"
            R"( | tint 255,255,255 | layer radius 6 background 255,255,255 at 0.2)",
            R"(  image (32, 162, 24, 24) | symbol hand.point.up.braille "Accessibility")"
            R"( system 14 medium | tint 138,109,72)",
            R"(  label (66, 180, 160, 16) "Accessibility" | system 13 semibold | 255,255,255)",
            R"(  label (66, 162, 200, 14) "Not granted" | system 11 regular | 107,114,128)",
            R"(  label (66, 144, 342, 14) "Needed to paste your screenshot into the AI app and )"
            R"(send it for you." | system 10 regular | 255,255,255 at 0.4)",
            R"(  button (328, 170, 72, 24) "Grant" | system 11 medium | borderless)"
            R"( | tint 255,255,255 | layer radius 6 background 255,255,255 at 0.2)",
            R"(  button (130, 68, 180, 28) "Restart Trovel" | system 12 medium | borderless)"
            R"( | tint 255,255,255 | layer radius 6 background 239,131,28 | hidden)",
            R"(  button (130, 24, 180, 32) "Continue" | system 13 medium | borderless)"
            R"( | tint 255,255,255 | disabled | layer radius 8 background 138,109,72 opacity 0.4)",
        }));
}

TEST_F(PermissionsWindowTest, ASymbolThatDoesNotExistLeavesItsPlaceEmpty) {
    desktop.icons.removeSymbol("hand.point.up.braille");
    open();
    EXPECT_THAT(linesOf(*shown().window()->contentView()),
                testing::Contains("  image (32, 162, 24, 24) | empty | tint 138,109,72"));
}

TEST_F(PermissionsWindowTest, OpensInTheMiddleAndThenActivatesTheProgram) {
    open();
    EXPECT_THAT((only<effect::WindowCentered, effect::OrderedFront, effect::MadeKey,
                      effect::ActivationAsked>(desktop.journal)),
                ElementsAre(at(0s, effect::WindowCentered{1}), at(0s, effect::OrderedFront{1}),
                            at(0s, effect::MadeKey{1}), at(0s, effect::ActivationAsked{false})));
    EXPECT_TRUE(shown().window()->isKeyWindow());
}

TEST_F(PermissionsWindowTest, WithBothGrantsEverythingIsGrantedAndTheUserMayContinue) {
    desktop.permissions.grant(Permission::accessibility);
    desktop.permissions.grant(Permission::screenRecording);
    open();
    for (auto const* label : {&shown().screenRecLabel(), &shown().accessibilityLabel()}) {
        EXPECT_EQ(label->text(), "Granted ✓");
        EXPECT_EQ(textOf(label->look().textColor), "34,197,94");
    }
    for (auto const* button : {&shown().screenRecButton(), &shown().accessibilityButton()}) {
        EXPECT_EQ(button->title(), "Granted");
        EXPECT_FALSE(button->isEnabled());
        EXPECT_EQ(backgroundOf(*button), "255,255,255 at 0.15");
        EXPECT_EQ(button->layer()->cornerRadius, 6);
    }
    EXPECT_TRUE(shown().continueButton().isEnabled());
    EXPECT_EQ(opacityOf(shown().continueButton()), 1);
    EXPECT_TRUE(shown().restartButton().isHidden());
}

TEST_F(PermissionsWindowTest, AsksForBothGrantsWithoutAPromptOnceASecond) {
    open();
    desktop.journal.clear();
    desktop.user.wait(2500ms);
    EXPECT_THAT(desktop.journal.entries(),
                ElementsAre(at(1s, effect::PermissionAsked{Permission::accessibility, false}),
                            at(1s, effect::PermissionAsked{Permission::screenRecording, false}),
                            at(2s, effect::PermissionAsked{Permission::accessibility, false}),
                            at(2s, effect::PermissionAsked{Permission::screenRecording, false})));
}

TEST_F(PermissionsWindowTest, AGrantIsSeenWithinASecondAndSoIsItsLoss) {
    open();
    desktop.permissions.grant(Permission::accessibility);
    desktop.user.wait(999ms);
    EXPECT_EQ(shown().accessibilityLabel().text(), "Not granted");
    desktop.user.wait(1ms);
    EXPECT_EQ(shown().accessibilityLabel().text(), "Granted ✓");
    EXPECT_EQ(shown().screenRecLabel().text(), "Not granted");
    desktop.permissions.revoke(Permission::accessibility);
    poll();
    EXPECT_EQ(shown().accessibilityLabel().text(), "Not granted");
    EXPECT_EQ(textOf(shown().accessibilityLabel().look().textColor), "107,114,128");
    EXPECT_EQ(shown().accessibilityButton().title(), "Grant");
    EXPECT_TRUE(shown().accessibilityButton().isEnabled());
    EXPECT_EQ(backgroundOf(shown().accessibilityButton()), "255,255,255 at 0.2");
}

TEST_F(PermissionsWindowTest, WithAccessibilityAloneTheUserCannotContinue) {
    desktop.permissions.grant(Permission::accessibility);
    open();
    desktop.user.wait(10s);
    EXPECT_FALSE(shown().continueButton().isEnabled());
    EXPECT_EQ(opacityOf(shown().continueButton()), 0.4);
    EXPECT_EQ(shown().screenRecLabel().text(), "Not granted");
    EXPECT_TRUE(shown().restartButton().isHidden());
    click(shown().continueButton());
    EXPECT_TRUE(isShown());
    EXPECT_EQ(completions, 0);
}

TEST_F(PermissionsWindowTest, WithScreenRecordingAloneTheUserCannotContinue) {
    desktop.permissions.grant(Permission::screenRecording);
    open();
    poll();
    EXPECT_EQ(shown().screenRecLabel().text(), "Granted ✓");
    EXPECT_EQ(shown().accessibilityLabel().text(), "Not granted");
    EXPECT_FALSE(shown().continueButton().isEnabled());
    EXPECT_EQ(opacityOf(shown().continueButton()), 0.4);
}

TEST_F(PermissionsWindowTest, AskingForScreenRecordingOffersTheRestartAtTheNextLook) {
    desktop.permissions.grant(Permission::accessibility);
    open();
    click(shown().screenRecButton());
    EXPECT_EQ(shown().screenRecLabel().text(), "Not granted");
    EXPECT_TRUE(shown().restartButton().isHidden());
    poll();
    EXPECT_EQ(shown().screenRecLabel().text(), "May need restart");
    EXPECT_EQ(textOf(shown().screenRecLabel().look().textColor), "239,131,28");
    EXPECT_FALSE(shown().restartButton().isHidden());
    EXPECT_TRUE(shown().continueButton().isEnabled());
    EXPECT_EQ(opacityOf(shown().continueButton()), 1);
    // The row's own button stays as it was.
    EXPECT_EQ(shown().screenRecButton().title(), "Grant");
    EXPECT_TRUE(shown().screenRecButton().isEnabled());
    EXPECT_EQ(backgroundOf(shown().screenRecButton()), "255,255,255 at 0.2");
}

TEST_F(PermissionsWindowTest, WithoutAccessibilityNotEvenTheRestartStateLetsTheUserContinue) {
    open();
    click(shown().screenRecButton());
    poll();
    EXPECT_FALSE(shown().restartButton().isHidden());
    EXPECT_FALSE(shown().continueButton().isEnabled());
    EXPECT_EQ(opacityOf(shown().continueButton()), 0.4);
}

TEST_F(PermissionsWindowTest, AGrantEndsTheRestartStateAndItsLossBringsItBack) {
    desktop.permissions.grant(Permission::accessibility);
    open();
    click(shown().screenRecButton());
    poll();
    desktop.permissions.grant(Permission::screenRecording);
    poll();
    EXPECT_EQ(shown().screenRecLabel().text(), "Granted ✓");
    EXPECT_EQ(textOf(shown().screenRecLabel().look().textColor), "34,197,94");
    EXPECT_TRUE(shown().restartButton().isHidden());
    EXPECT_TRUE(shown().continueButton().isEnabled());
    desktop.permissions.revoke(Permission::screenRecording);
    poll();
    EXPECT_EQ(shown().screenRecLabel().text(), "May need restart");
    EXPECT_FALSE(shown().restartButton().isHidden());
    // "Granted" and disabled since the look before: that state touches the label alone.
    EXPECT_EQ(shown().screenRecButton().title(), "Granted");
    EXPECT_FALSE(shown().screenRecButton().isEnabled());
}

TEST_F(PermissionsWindowTest, BeforeVersionFifteenGrantOpensOnlyTheSettings) {
    desktop.process.setSystemVersion(14, 9);
    open();
    click(shown().screenRecButton());
    EXPECT_EQ(desktop.journal.count<effect::PermissionRequested>(), 0U);
    EXPECT_THAT(desktop.journal.all<effect::UrlOpened>(), ElementsAre(effect::UrlOpened{kPane}));
}

TEST_F(PermissionsWindowTest, FromVersionFifteenOnGrantAsksTheSystemAndThenOpensTheSettings) {
    desktop.process.setSystemVersion(15, 0);
    open();
    desktop.journal.clear();
    click(shown().screenRecButton());
    EXPECT_THAT(effectsOf(desktop.journal),
                ElementsAre(Effect(effect::PermissionRequested{Permission::screenRecording}),
                            Effect(effect::UrlOpened{kPane})));
}

TEST_F(PermissionsWindowTest, GrantForAccessibilityLetsTheSystemPromptAndOpensNoPage) {
    open();
    desktop.journal.clear();
    click(shown().accessibilityButton());
    EXPECT_THAT(effectsOf(desktop.journal),
                ElementsAre(Effect(effect::PermissionRequested{Permission::accessibility})));
    poll();
    EXPECT_TRUE(shown().restartButton().isHidden());
}

TEST_F(PermissionsWindowTest, ContinueClosesTheWindowAndThenCompletesOnce) {
    desktop.permissions.grant(Permission::accessibility);
    desktop.permissions.grant(Permission::screenRecording);
    bool wasShown = true;
    showPermissionsWindow(context, [&] {
        ++completions;
        wasShown = isShown() || !desktop.windows.visibleWindows().empty();
    });
    std::weak_ptr<PermissionsWindowController> const weak = slots.sharedPermissionsWindow;
    click(shown().continueButton());
    EXPECT_EQ(completions, 1);
    EXPECT_FALSE(wasShown);
    EXPECT_FALSE(isShown());
    EXPECT_TRUE(weak.expired());
    desktop.journal.clear();
    desktop.user.wait(10s);
    EXPECT_THAT(desktop.journal.entries(), IsEmpty()); // the poll is over
}

TEST_F(PermissionsWindowTest, ContinueWithoutACompletionJustCloses) {
    desktop.permissions.grant(Permission::accessibility);
    desktop.permissions.grant(Permission::screenRecording);
    showPermissionsWindow(context, nullptr);
    click(shown().continueButton());
    EXPECT_FALSE(isShown());
    EXPECT_THAT(desktop.windows.visibleWindows(), IsEmpty());
}

TEST_F(PermissionsWindowTest, ContinueDoesNotLookAtTheGrantsAgain) {
    desktop.permissions.grant(Permission::accessibility);
    desktop.permissions.grant(Permission::screenRecording);
    open();
    desktop.permissions.revoke(Permission::accessibility);
    click(shown().continueButton());
    EXPECT_EQ(completions, 1);
}

TEST_F(PermissionsWindowTest, TheCloseBoxEndsThePollAndCompletesNothing) {
    open();
    std::weak_ptr<PermissionsWindowController> const weak = slots.sharedPermissionsWindow;
    auto const window = shown().window();
    window->receiveCloseRequest();
    EXPECT_FALSE(isShown());
    EXPECT_TRUE(weak.expired());
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(completions, 0);
    desktop.journal.clear();
    desktop.user.wait(10s);
    EXPECT_THAT(desktop.journal.entries(), IsEmpty());
    EXPECT_EQ(desktop.queue.pending(), 0U);
}

TEST_F(PermissionsWindowTest, AControllerThatOutlivesItsWindowPollsNoMore) {
    open();
    auto const controller = slots.sharedPermissionsWindow;
    controller->window()->receiveCloseRequest();
    EXPECT_EQ(controller.use_count(), 1);
    desktop.journal.clear();
    desktop.user.wait(10s);
    EXPECT_THAT(desktop.journal.entries(), IsEmpty());
}

TEST_F(PermissionsWindowTest, AControllerThatGoesEndsItsPoll) {
    auto controller = PermissionsWindowController::make(context);
    EXPECT_EQ(desktop.queue.pending(), 1U);
    controller.reset();
    desktop.journal.clear();
    desktop.user.wait(10s);
    EXPECT_THAT(desktop.journal.entries(), IsEmpty());
}

TEST_F(PermissionsWindowTest, AskedForTwiceItIsOneWindowAndTheSecondCompletionCounts) {
    desktop.permissions.grant(Permission::accessibility);
    desktop.permissions.grant(Permission::screenRecording);
    open();
    auto const first = slots.sharedPermissionsWindow;
    desktop.journal.clear();
    int others = 0;
    showPermissionsWindow(context, [&others] { ++others; });
    EXPECT_EQ(slots.sharedPermissionsWindow, first);
    // In front and key again, and not centred again.
    EXPECT_THAT(effectsOf(desktop.journal), ElementsAre(Effect(effect::OrderedFront{1}),
                                                        Effect(effect::ActivationAsked{false})));
    click(shown().continueButton());
    EXPECT_EQ(completions, 0);
    EXPECT_EQ(others, 1);
}

TEST_F(PermissionsWindowTest, AskedForAgainBehindAnotherWindowItGetsTheKeyboardBack) {
    open();
    showChangeAppWindow(context);
    desktop.journal.clear();
    open();
    EXPECT_TRUE(shown().window()->isKeyWindow());
    EXPECT_THAT(effectsOf(desktop.journal),
                ElementsAre(Effect(effect::OrderedFront{1}), Effect(effect::MadeKey{1}),
                            Effect(effect::ActivationAsked{false})));
}

TEST_F(PermissionsWindowTest, TheRestartWaitsForTheOldProcessInAShellAndThenEndsTheProgram) {
    desktop.application.launch();
    open();
    click(shown().screenRecButton());
    poll();
    desktop.journal.clear();
    click(shown().restartButton());
    std::string const script = R"(while kill -0 $1 2>/dev/null; do sleep 0.2; done; open "$2")";
    EXPECT_EQ(script.size(), 59U);
    EXPECT_THAT(
        effectsOf(desktop.journal),
        ElementsAre(Effect(effect::ChildStarted{
                        "/bin/bash", {"-c", script, "--", "1", "/Applications/Trovel.app"}}),
                    Effect(effect::Terminated{})));
    EXPECT_EQ(completions, 0);
}

TEST_F(PermissionsWindowTest, ARestartThatCannotBeArrangedEndsTheProgramAllTheSame) {
    desktop.application.launch();
    open();
    click(shown().screenRecButton());
    poll();
    desktop.faults.failAlways(Operation::startChild);
    click(shown().restartButton());
    EXPECT_FALSE(desktop.application.isRunning());
    EXPECT_EQ(desktop.journal.count<effect::AlertShown>(), 0U);
}

TEST_F(PermissionsWindowTest, AHiddenRestartButtonCannotBeClicked) {
    desktop.application.launch();
    open();
    click(shown().restartButton());
    EXPECT_TRUE(desktop.application.isRunning());
}

} // namespace
} // namespace trovel
