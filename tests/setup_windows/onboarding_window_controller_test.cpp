#include "setup_windows/onboarding_window_controller.h"

#include "platform/ui/button.h"
#include "settings/preferences.h"
#include "setup_windows/app_selector_view.h"
#include "setup_windows/permissions_window_controller.h"
#include "tests/support/desktop_test.h"
#include "tests/support/views.h"

#include <memory>

namespace trovel {
namespace {

using namespace std::chrono_literals;
using effect::PreferenceWritten;
using testing::Contains;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

class OnboardingWindowTest : public DesktopTest {
protected:
    void open() { showOnboardingWindow(context); }
    OnboardingWindowController& shown() { return *slots.sharedOnboardingWindow; }
    void click(View const& view) { desktop.user.click(centreOf(view)); }
    [[nodiscard]] std::optional<std::string> preferred() const {
        return desktop.preferences.stringForKey(kPreferredAIApp);
    }
    [[nodiscard]] bool isCompleted() const {
        return desktop.preferences.boolForKey(kHasCompletedOnboarding);
    }
    /// The lines of the content without those of the selector's tiles.
    std::vector<std::string> contentLines() {
        auto lines = linesOf(*shown().window()->contentView());
        auto const first = std::ranges::find(lines, "  view (0, 74, 600, 80)");
        auto const last = std::ranges::find_if(first + 1, lines.end(),
                                               [](auto const& line) { return line[2] != ' '; });
        lines.erase(first + 1, last);
        return lines;
    }
};

TEST_F(OnboardingWindowTest, IsAPanelWithoutATitle) {
    open();
    WindowAttributes expected;
    expected.contentRect = {0, 0, 600, 600};
    expected.styleMask = 0x8003;
    expected.backgroundColor = Color::clear();
    expected.titlebarAppearsTransparent = true;
    expected.isTitleHidden = true;
    expected.isMovableByBackground = true;
    EXPECT_EQ(shown().window()->attributes(), expected);
}

TEST_F(OnboardingWindowTest, ShowsEveryElementInItsPlace) {
    open();
    EXPECT_THAT(
        contentLines(),
        ElementsAreArray({
            "visual effect (0, 0, 600, 600)",
            "  image (272, 500, 56, 56) | own icon | fills | layer radius 12 masks background "
            "clear shadow 0,0,0 at 0.25 (0, -2) 8 1",
            R"(  label (0, 450, 600, 30) "Trovel" | system 24 bold | label | centred)",
            R"(  label (56, 426, 488, 18) "Screenshot any part of your screen and send it to )"
            R"(AI — instantly." | system 13 regular | secondaryLabel | centred)",
            "  view (56, 370, 36, 36) | layer radius 18 background controlAccent at 0.12",
            R"(    image (6, 6, 24, 24) | symbol command "Press ⌘⇧2 anywhere" system 14 medium)"
            R"( | tint controlAccent)",
            R"(  label (106, 388, 438, 17) "Press ⌘⇧2 anywhere" | system 13 semibold | label)",
            R"(  label (106, 371, 438, 15) "A global shortcut that works no matter what app is )"
            R"(in front" | system 12 regular | tertiaryLabel)",
            "  view (56, 312, 36, 36) | layer radius 18 background controlAccent at 0.12",
            R"(    image (6, 6, 24, 24) | symbol crop "Drag to select a region" system 14 medium)"
            R"( | tint controlAccent)",
            R"(  label (106, 330, 438, 17) "Drag to select a region" | system 13 semibold | label)",
            R"(  label (106, 313, 438, 15) "Capture exactly the part of the screen you need")"
            R"( | system 12 regular | tertiaryLabel)",
            "  view (56, 254, 36, 36) | layer radius 18 background controlAccent at 0.12",
            R"(    image (6, 6, 24, 24) | symbol paperplane.fill "Automatically sent to AI")"
            R"( system 14 medium | tint controlAccent)",
            R"(  label (106, 272, 438, 17) "Automatically sent to AI" | system 13 semibold)"
            R"( | label)",
            R"(  label (106, 255, 438, 15) "Your screenshot is pasted and sent — nothing else to )"
            R"(do" | system 12 regular | tertiaryLabel)",
            "  separator (56, 192, 488, 1)",
            R"(  label (0, 164, 600, 18) "Choose your AI app" | system 13 medium)"
            R"( | secondaryLabel | centred)",
            "  view (0, 74, 600, 80)",
            R"(  button (210, 28, 180, 36) "Get Started" | system 14 semibold | borderless | large)"
            R"( | tint 255,255,255 | key Return | layer radius 8 background controlAccent)",
        }));
}

TEST_F(OnboardingWindowTest, ASymbolThatDoesNotExistLeavesAnEmptyImageInItsCircle) {
    desktop.icons.removeSymbol("crop");
    open();
    EXPECT_THAT(contentLines(), Contains("    image (6, 6, 24, 24) | empty | tint controlAccent"));
}

TEST_F(OnboardingWindowTest, IsShownCentredMadeKeyAndTheProgramActivated) {
    open();
    EXPECT_THAT((only<effect::WindowCentered, effect::OrderedFront, effect::MadeKey,
                      effect::ActivationAsked>(desktop.journal)),
                ElementsAre(at(0s, effect::OrderedFront{1}), at(0s, effect::MadeKey{1}),
                            at(0s, effect::WindowCentered{1}), at(0s, effect::OrderedFront{1}),
                            at(0s, effect::ActivationAsked{false})));
    EXPECT_TRUE(shown().window()->isKeyWindow());
}

TEST_F(OnboardingWindowTest, TheFirstStepNamesTheDefaultShortcutWhateverTheHotkey) {
    desktop.preferences.store(kHotkeyIsCustom, true);
    desktop.preferences.store(kHotkeyKeyCode, std::int64_t{122});
    desktop.preferences.store(kHotkeyModifiers, std::int64_t{6144});
    open();
    EXPECT_THAT(contentLines(),
                Contains(R"(  label (106, 388, 438, 17) "Press ⌘⇧2 anywhere" | system 13 semibold)"
                         R"( | label)"));
}

TEST_F(OnboardingWindowTest, OnAFirstRunClaudeIsSelectedAndReturnStoresIt) {
    open();
    EXPECT_EQ(shown().appSelector()->selectedName(), "Claude");
    EXPECT_TRUE(shown().appSelector()->cards()[0]->isSelected());
    EXPECT_TRUE(shown().continueButton()->isEnabled());
    EXPECT_EQ(preferred(), std::nullopt);
    desktop.user.pressKey(kKeyReturn);
    EXPECT_EQ(preferred(), "Claude");
    EXPECT_EQ(slots.sharedOnboardingWindow, nullptr);
    EXPECT_NE(slots.sharedPermissionsWindow, nullptr);
    EXPECT_FALSE(isCompleted());
}

TEST_F(OnboardingWindowTest, GetStartedStoresClosesAndOpensThePermissionsInThatOrder) {
    open();
    std::weak_ptr<OnboardingWindowController> const weak = slots.sharedOnboardingWindow;
    desktop.journal.clear();
    click(*shown().continueButton());
    EXPECT_THAT(effectsOf(desktop.journal),
                ElementsAre(Effect(PreferenceWritten{"preferredAIApp", std::string("Claude")}),
                            Effect(effect::OrderedOut{1}),
                            Effect(effect::PermissionAsked{Permission::accessibility, true}),
                            Effect(effect::PermissionAsked{Permission::screenRecording, true}),
                            Effect(effect::WindowCentered{2}), Effect(effect::OrderedFront{2}),
                            Effect(effect::MadeKey{2}), Effect(effect::ActivationAsked{false})));
    EXPECT_TRUE(weak.expired());
}

TEST_F(OnboardingWindowTest, TheOnboardingIsCompleteWhenThePermissionsAre) {
    open();
    click(*shown().continueButton());
    desktop.journal.clear();
    click(slots.sharedPermissionsWindow->continueButton());
    EXPECT_THAT(desktop.journal.all<PreferenceWritten>(),
                ElementsAre(PreferenceWritten{"hasCompletedOnboarding", true}));
}

TEST_F(OnboardingWindowTest, ClosingThePermissionsInsteadCompletesNothing) {
    open();
    click(*shown().continueButton());
    slots.sharedPermissionsWindow->window()->receiveCloseRequest();
    EXPECT_FALSE(isCompleted());
    EXPECT_EQ(desktop.preferences.stored(kHasCompletedOnboarding), std::nullopt);
}

TEST_F(OnboardingWindowTest, AnotherRequestForThePermissionsTakesTheCompletionAway) {
    open();
    click(*shown().continueButton());
    // A capture without its grants asks for the window too, and for no completion.
    showPermissionsWindow(context, nullptr);
    click(slots.sharedPermissionsWindow->continueButton());
    EXPECT_EQ(slots.sharedPermissionsWindow, nullptr);
    EXPECT_FALSE(isCompleted());
}

TEST_F(OnboardingWindowTest, AStoredNameWithoutACardSelectsNothingAndIsWrittenBack) {
    desktop.preferences.store(kPreferredAIApp, std::string("Safari"));
    open();
    for (auto const& card : shown().appSelector()->cards()) EXPECT_FALSE(card->isSelected());
    desktop.journal.clear();
    click(*shown().continueButton());
    EXPECT_THAT(desktop.journal.all<PreferenceWritten>(),
                ElementsAre(PreferenceWritten{"preferredAIApp", std::string("Safari")}));
}

TEST_F(OnboardingWindowTest, AClickOnACardIsStoredByTheButtonAlone) {
    open();
    click(*shown().appSelector()->cards()[2]);
    EXPECT_EQ(preferred(), std::nullopt);
    EXPECT_TRUE(shown().continueButton()->isEnabled());
    click(*shown().continueButton());
    EXPECT_EQ(preferred(), "Gemini");
}

TEST_F(OnboardingWindowTest, ASelectionEnablesTheButton) {
    open();
    shown().continueButton()->setEnabled(false);
    click(*shown().appSelector()->cards()[0]);
    EXPECT_TRUE(shown().continueButton()->isEnabled());
}

TEST_F(OnboardingWindowTest, ACustomApplicationStaysStoredWhenTheWindowIsClosed) {
    open();
    desktop.openPanels.install("/Applications/Tool.app", {"com.example.tool", "MyTool"});
    desktop.openPanels.setAnswer("/Applications/Tool.app");
    click(*shown().appSelector()->plusButton());
    EXPECT_EQ(preferred(), "MyTool");
    shown().window()->receiveCloseRequest();
    EXPECT_EQ(preferred(), "MyTool");
    EXPECT_EQ(desktop.preferences.stringForKey(kCustomAppName), "MyTool");
    EXPECT_EQ(desktop.preferences.stringForKey(kCustomAppBundleID), "com.example.tool");
}

TEST_F(OnboardingWindowTest, TheCloseButtonStoresNothingAndEmptiesTheSlot) {
    open();
    std::weak_ptr<OnboardingWindowController> const weak = slots.sharedOnboardingWindow;
    desktop.journal.clear();
    shown().window()->receiveCloseRequest();
    EXPECT_EQ(slots.sharedOnboardingWindow, nullptr);
    EXPECT_TRUE(weak.expired());
    EXPECT_EQ(desktop.journal.count<PreferenceWritten>(), 0U);
    EXPECT_EQ(slots.sharedPermissionsWindow, nullptr);
    EXPECT_THAT(desktop.windows.visibleWindows(), IsEmpty());
}

} // namespace
} // namespace trovel
