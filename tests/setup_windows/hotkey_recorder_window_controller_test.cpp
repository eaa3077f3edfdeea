#include "setup_windows/hotkey_recorder_window_controller.h"

#include "platform/ui/button.h"
#include "platform/ui/label.h"
#include "settings/preferences.h"
#include "setup_windows/permissions_window_controller.h"
#include "tests/support/desktop_test.h"
#include "tests/support/views.h"

#include <memory>
#include <utility>

namespace trovel {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using testing::Pair;

class HotkeyRecorderTest : public DesktopTest {
protected:
    void open() {
        showHotkeyRecorderWindow(context, [this](std::uint32_t keyCode, std::uint32_t modifiers) {
            recorded.emplace_back(keyCode, modifiers);
            slotDuringCallback = slots.sharedHotkeyRecorderWindow != nullptr;
        });
    }
    HotkeyRecorderWindowController& shown() { return *slots.sharedHotkeyRecorderWindow; }
    [[nodiscard]] bool isShown() const { return slots.sharedHotkeyRecorderWindow != nullptr; }
    std::string text() { return shown().recordLabel().text(); }
    void click(View const& view) { desktop.user.click(centreOf(view)); }

    std::vector<std::pair<std::uint32_t, std::uint32_t>> recorded;
    bool slotDuringCallback = false;
};

TEST_F(HotkeyRecorderTest, IsASmallTitledWindow) {
    open();
    WindowAttributes expected;
    expected.contentRect = {0, 0, 360, 160};
    expected.styleMask = 3;
    expected.title = "Change Hotkey";
    expected.takesEveryKey = true;
    EXPECT_EQ(shown().window()->attributes(), expected);
}

TEST_F(HotkeyRecorderTest, ShowsEveryElementInItsPlace) {
    open();
    EXPECT_THAT(
        linesOf(*shown().window()->contentView()),
        ElementsAreArray({
            "view (0, 0, 360, 160)",
            R"(  label (0, 115, 360, 20) "Press a new hotkey combination" | system 14 semibold)"
            R"( | label | centred)",
            R"x(  label (0, 92, 360, 16) "Must include at least one modifier (⌘, ⌃, ⌥, or ⇧)")x"
            R"( | system 11 regular | secondaryLabel | centred)",
            R"(  label (60, 48, 240, 34) "⌘⇧2" | monospaced 22 medium | label | centred | bezeled)",
            R"(  button (140, 10, 80, 28) "Cancel")",
        }));
    EXPECT_EQ(shown().instructionLabel().frame(), (Rect{0, 92, 360, 16}));
}

TEST_F(HotkeyRecorderTest, OpensInTheMiddleAndActivatesTheProgram) {
    open();
    EXPECT_THAT((only<effect::WindowCentered, effect::OrderedFront, effect::MadeKey,
                      effect::ActivationAsked>(desktop.journal)),
                ElementsAre(at(0s, effect::WindowCentered{1}), at(0s, effect::OrderedFront{1}),
                            at(0s, effect::MadeKey{1}), at(0s, effect::ActivationAsked{false})));
}

TEST_F(HotkeyRecorderTest, BeginsWithTheStoredHotkey) {
    desktop.preferences.store(kHotkeyIsCustom, true);
    desktop.preferences.store(kHotkeyKeyCode, std::int64_t{122});
    desktop.preferences.store(kHotkeyModifiers, std::int64_t{6144});
    open();
    EXPECT_EQ(text(), "⌃⌥F1");
}

TEST_F(HotkeyRecorderTest, FromAKeyAloneToTheAcceptedCombination) {
    open();
    desktop.user.pressKey(19);
    EXPECT_EQ(text(), "Add a modifier key");
    EXPECT_TRUE(isShown());
    desktop.user.holdModifiers(kFlagCommand | kFlagShift);
    EXPECT_EQ(text(), "⇧⌘…");
    auto const controller = slots.sharedHotkeyRecorderWindow;
    desktop.user.pressKey(19, kFlagCommand | kFlagShift);
    EXPECT_THAT(recorded, ElementsAre(Pair(19U, 768U)));
    EXPECT_EQ(controller->recordLabel().text(), "⇧⌘2");
    EXPECT_FALSE(isShown());
    EXPECT_TRUE(slotDuringCallback);
    EXPECT_THAT(desktop.windows.visibleWindows(), IsEmpty());
    // Storing it is the caller's.
    EXPECT_EQ(desktop.journal.count<effect::PreferenceWritten>(), 0U);
}

TEST_F(HotkeyRecorderTest, ShowsTheHeldModifiersInTheirOrderAndTheStoredHotkeyWithoutAny) {
    open();
    desktop.user.holdModifiers(kFlagShift);
    EXPECT_EQ(text(), "⇧…");
    desktop.user.holdModifiers(kFlagCommand | kFlagShift | kFlagOption | kFlagControl);
    EXPECT_EQ(text(), "⌃⌥⇧⌘…");
    desktop.user.holdModifiers(kFlagControl | kFlagShift);
    EXPECT_EQ(text(), "⌃⇧…");
    desktop.user.holdModifiers(0);
    EXPECT_EQ(text(), "⌘⇧2");
}

TEST_F(HotkeyRecorderTest, ReleasingTheModifiersEndsTheRemarkToo) {
    open();
    desktop.user.pressKey(0);
    EXPECT_EQ(text(), "Add a modifier key");
    desktop.user.holdModifiers(0);
    EXPECT_EQ(text(), "⌘⇧2");
}

TEST_F(HotkeyRecorderTest, CapsLockAndFunctionAreNoModifiers) {
    open();
    desktop.user.holdModifiers(kFlagCapsLock | kFlagFunction);
    EXPECT_EQ(text(), "⌘⇧2");
    desktop.user.pressKey(19, kFlagCapsLock | kFlagFunction | kFlagNumericPad | kFlagHelp);
    EXPECT_EQ(text(), "Add a modifier key");
    EXPECT_THAT(recorded, IsEmpty());
    desktop.user.pressKey(19, kFlagCapsLock | kFlagFunction | kFlagOption);
    EXPECT_THAT(recorded, ElementsAre(Pair(19U, 2048U)));
}

TEST_F(HotkeyRecorderTest, FlagsOfOneDeviceAreDropped) {
    open();
    desktop.user.pressKey(19, kFlagControl | 0x0001U | 0x0100U);
    EXPECT_THAT(recorded, ElementsAre(Pair(19U, 4096U)));
}

TEST_F(HotkeyRecorderTest, TakesKeysWithoutANameAndEscapeWithAModifier) {
    open();
    auto const controller = slots.sharedHotkeyRecorderWindow;
    desktop.user.pressKey(10, kFlagCommand);
    EXPECT_EQ(controller->recordLabel().text(), "⌘Key10");
    open();
    desktop.user.pressKey(kKeyEscape);
    EXPECT_EQ(text(), "Add a modifier key");
    desktop.user.pressKey(kKeyEscape, kFlagCommand);
    open();
    desktop.user.pressKey(kKeyReturn, kFlagShift);
    EXPECT_THAT(recorded, ElementsAre(Pair(10U, 256U), Pair(53U, 256U), Pair(36U, 512U)));
}

TEST_F(HotkeyRecorderTest, ShowsTheCombinationBeforeItReportsIt) {
    std::string seen;
    showHotkeyRecorderWindow(context, [&](auto, auto) { seen = text(); });
    desktop.user.pressKey(19, kFlagCommand | kFlagControl);
    EXPECT_EQ(seen, "⌃⌘2");
}

TEST_F(HotkeyRecorderTest, ACallbackThatAsksForTheRecorderAgainOutlivesItsCall) {
    auto token = std::make_shared<int>();
    std::weak_ptr<int> const weak = token;
    bool lived = false;
    showHotkeyRecorderWindow(context, [&, token = std::move(token)](auto, auto) {
        open();
        lived = !weak.expired();
    });
    desktop.user.pressKey(19, kFlagCommand);
    EXPECT_TRUE(lived);
    EXPECT_TRUE(weak.expired());
    EXPECT_FALSE(isShown());
    EXPECT_THAT(recorded, IsEmpty());
}

TEST_F(HotkeyRecorderTest, WithoutACallbackAKeyJustCloses) {
    showHotkeyRecorderWindow(context, nullptr);
    desktop.user.pressKey(19, kFlagCommand);
    EXPECT_FALSE(isShown());
}

TEST_F(HotkeyRecorderTest, CancelReportsNothing) {
    open();
    std::weak_ptr<HotkeyRecorderWindowController> const weak = slots.sharedHotkeyRecorderWindow;
    auto const window = shown().window();
    click(shown().cancelButton());
    EXPECT_FALSE(isShown());
    EXPECT_FALSE(window->isVisible());
    EXPECT_TRUE(weak.expired());
    EXPECT_THAT(recorded, IsEmpty());
    EXPECT_EQ(desktop.journal.count<effect::PreferenceWritten>(), 0U);
}

TEST_F(HotkeyRecorderTest, TheCloseButtonReportsNothing) {
    open();
    auto const window = shown().window();
    window->receiveCloseRequest();
    EXPECT_FALSE(isShown());
    EXPECT_FALSE(window->isVisible());
    EXPECT_THAT(recorded, IsEmpty());
    EXPECT_FALSE(desktop.hotkeys.isSuspended());
}

TEST_F(HotkeyRecorderTest, OpenedTwiceItIsOneWindowAndTheSecondCallbackCounts) {
    open();
    desktop.user.pressKey(0);
    auto const first = slots.sharedHotkeyRecorderWindow;
    desktop.journal.clear();
    int others = 0;
    showHotkeyRecorderWindow(context, [&others](auto, auto) { ++others; });
    EXPECT_EQ(slots.sharedHotkeyRecorderWindow, first);
    EXPECT_EQ(text(), "Add a modifier key");
    EXPECT_THAT(effectsOf(desktop.journal), ElementsAre(Effect(effect::OrderedFront{1}),
                                                        Effect(effect::ActivationAsked{false})));
    desktop.user.pressKey(19, kFlagCommand);
    EXPECT_EQ(others, 1);
    EXPECT_THAT(recorded, IsEmpty());
}

TEST_F(HotkeyRecorderTest, AskedForAgainBehindAnotherWindowItGetsTheKeyboardBack) {
    open();
    showPermissionsWindow(context, nullptr);
    desktop.journal.clear();
    open();
    EXPECT_TRUE(shown().window()->isKeyWindow());
    EXPECT_THAT(effectsOf(desktop.journal),
                ElementsAre(Effect(effect::OrderedFront{1}), Effect(effect::MadeKey{1}),
                            Effect(effect::HotKeysSuspended{true}),
                            Effect(effect::ActivationAsked{false})));
}

TEST_F(HotkeyRecorderTest, TheHotkeysRestWhileTheWindowHasTheKeyboard) {
    auto const editor = desktop.workspace.start({}).processIdentifier;
    open();
    EXPECT_TRUE(desktop.hotkeys.isSuspended());
    desktop.workspace.bringToFront(editor);
    EXPECT_FALSE(desktop.hotkeys.isSuspended());
    desktop.workspace.bringToFront(kTrovelProcess);
    EXPECT_TRUE(desktop.hotkeys.isSuspended());
    desktop.user.pressKey(19, kFlagCommand);
    EXPECT_FALSE(desktop.hotkeys.isSuspended());
}

TEST_F(HotkeyRecorderTest, AControllerThatGoesEndsTheRest) {
    open();
    slots.sharedHotkeyRecorderWindow.reset();
    EXPECT_FALSE(desktop.hotkeys.isSuspended());
    EXPECT_THAT(desktop.windows.visibleWindows(), IsEmpty());
}

} // namespace
} // namespace trovel
