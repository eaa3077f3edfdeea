#include "setup_windows/change_app_window_controller.h"

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
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

class ChangeAppWindowTest : public DesktopTest {
protected:
    void open() { showChangeAppWindow(context); }
    ChangeAppWindowController& shown() { return *slots.sharedChangeAppWindow; }
    [[nodiscard]] bool isShown() const { return slots.sharedChangeAppWindow != nullptr; }
    void click(View const& view) { desktop.user.click(centreOf(view)); }
    void clickDone() { click(buttonIn(*shown().window()->contentView(), "Done")); }
    [[nodiscard]] std::optional<std::string> preferred() const {
        return desktop.preferences.stringForKey(kPreferredAIApp);
    }
    [[nodiscard]] std::size_t writes() const { return desktop.journal.count<PreferenceWritten>(); }
};

TEST_F(ChangeAppWindowTest, IsAPanelWithoutATitle) {
    open();
    WindowAttributes expected;
    expected.contentRect = {0, 0, 600, 210};
    expected.styleMask = 0x8003;
    expected.backgroundColor = Color::clear();
    expected.titlebarAppearsTransparent = true;
    expected.isTitleHidden = true;
    expected.isMovableByBackground = true;
    EXPECT_EQ(shown().window()->attributes(), expected);
}

TEST_F(ChangeAppWindowTest, ShowsEveryElementInItsPlace) {
    open();
    auto lines = linesOf(*shown().window()->contentView());
    auto const selector = linesOf(*shown().appSelector());
    lines.erase(lines.begin() + 4, lines.begin() + 3 + static_cast<int>(selector.size()));
    EXPECT_THAT(lines,
                ElementsAreArray({
                    "visual effect (0, 0, 600, 210)",
                    R"(  label (0, 166, 600, 20) "Choose your AI app" | system 15 semibold | label)"
                    R"( | centred)",
                    R"(  label (0, 146, 600, 16) "Screenshots will be sent here first")"
                    R"( | system 11.5 regular | tertiaryLabel | centred)",
                    "  view (0, 42, 600, 80)",
                    R"(  button (250, 10, 100, 28) "Done" | system 12 medium | key Return)",
                }));
}

TEST_F(ChangeAppWindowTest, IsShownCentredMadeKeyAndTheProgramActivated) {
    open();
    EXPECT_THAT((only<effect::WindowCentered, effect::OrderedFront, effect::MadeKey,
                      effect::ActivationAsked>(desktop.journal)),
                ElementsAre(at(0s, effect::OrderedFront{1}), at(0s, effect::MadeKey{1}),
                            at(0s, effect::WindowCentered{1}), at(0s, effect::OrderedFront{1}),
                            at(0s, effect::ActivationAsked{false})));
}

TEST_F(ChangeAppWindowTest, WithoutAStoredNameNothingIsSelectedAndDoneWritesNothing) {
    open();
    EXPECT_EQ(shown().appSelector()->selectedName(), std::nullopt);
    clickDone();
    EXPECT_FALSE(isShown());
    EXPECT_EQ(writes(), 0U);
    EXPECT_EQ(preferred(), std::nullopt);
}

TEST_F(ChangeAppWindowTest, ANameWithoutACardIsLeftAsItWas) {
    desktop.preferences.store(kPreferredAIApp, std::string("Safari"));
    open();
    for (auto const& card : shown().appSelector()->cards()) EXPECT_FALSE(card->isSelected());
    clickDone();
    EXPECT_FALSE(isShown());
    EXPECT_EQ(preferred(), "Safari");
}

TEST_F(ChangeAppWindowTest, AClickOnACardIsStoredAtOnceAndKeptByTheCloseButton) {
    desktop.preferences.store(kPreferredAIApp, std::string("Claude"));
    open();
    EXPECT_TRUE(shown().appSelector()->cards()[0]->isSelected());
    click(*shown().appSelector()->cards()[3]);
    EXPECT_THAT(desktop.journal.all<PreferenceWritten>(),
                ElementsAre(PreferenceWritten{"preferredAIApp", std::string("Perplexity")}));
    shown().window()->receiveCloseRequest();
    EXPECT_FALSE(isShown());
    EXPECT_EQ(preferred(), "Perplexity");
    EXPECT_EQ(writes(), 1U);
}

TEST_F(ChangeAppWindowTest, DoneStoresTheSelectionAgainAndThenCloses) {
    open();
    click(*shown().appSelector()->cards()[2]);
    desktop.journal.clear();
    std::weak_ptr<ChangeAppWindowController> const weak = slots.sharedChangeAppWindow;
    clickDone();
    EXPECT_THAT(effectsOf(desktop.journal),
                ElementsAre(Effect(PreferenceWritten{"preferredAIApp", std::string("Gemini")}),
                            Effect(effect::OrderedOut{1})));
    EXPECT_FALSE(isShown());
    EXPECT_TRUE(weak.expired());
}

TEST_F(ChangeAppWindowTest, ReturnIsDone) {
    open();
    desktop.user.pressKey(kKeyReturn);
    EXPECT_FALSE(isShown());
    EXPECT_THAT(desktop.windows.visibleWindows(), IsEmpty());
}

TEST_F(ChangeAppWindowTest, ACustomApplicationIsStoredAtOnceAndAgainByDone) {
    open();
    desktop.openPanels.install("/Applications/Tool.app", {"com.example.tool", "MyTool"});
    desktop.openPanels.setAnswer("/Applications/Tool.app");
    click(*shown().appSelector()->plusButton());
    EXPECT_EQ(preferred(), "MyTool");
    EXPECT_EQ(desktop.preferences.stringForKey(kCustomAppBundleID), "com.example.tool");
    desktop.journal.clear();
    clickDone();
    EXPECT_THAT(desktop.journal.all<PreferenceWritten>(),
                ElementsAre(PreferenceWritten{"preferredAIApp", std::string("MyTool")}));
}

TEST_F(ChangeAppWindowTest, AskedForAgainItComesToTheFrontAsItStands) {
    open();
    click(*shown().appSelector()->cards()[1]);
    auto const first = slots.sharedChangeAppWindow;
    desktop.preferences.store(kPreferredAIApp, std::string("Claude"));
    desktop.journal.clear();
    open();
    EXPECT_EQ(slots.sharedChangeAppWindow, first);
    EXPECT_EQ(shown().appSelector()->selectedName(), "ChatGPT");
    EXPECT_THAT(effectsOf(desktop.journal), ElementsAre(Effect(effect::OrderedFront{1}),
                                                        Effect(effect::ActivationAsked{false})));
}

TEST_F(ChangeAppWindowTest, AskedForAgainBehindAnotherWindowItGetsTheKeyboardBack) {
    open();
    showPermissionsWindow(context, nullptr);
    desktop.journal.clear();
    open();
    EXPECT_TRUE(shown().window()->isKeyWindow());
    EXPECT_THAT(effectsOf(desktop.journal),
                ElementsAre(Effect(effect::OrderedFront{1}), Effect(effect::MadeKey{1}),
                            Effect(effect::ActivationAsked{false})));
}

TEST_F(ChangeAppWindowTest, OpenedAnewItReadsTheSelectionAnew) {
    open();
    shown().window()->receiveCloseRequest();
    desktop.preferences.store(kPreferredAIApp, std::string("Copilot"));
    open();
    EXPECT_TRUE(shown().appSelector()->cards()[4]->isSelected());
    EXPECT_EQ(desktop.windows.visibleWindows().size(), 1U);
}

} // namespace
} // namespace trovel
