#include "app/status_menu.h"

#include "app/app_delegate.h"
#include "capture/screenshot_manager.h"
#include "platform/ui/button.h"
#include "platform/ui/label.h"
#include "setup_windows/app_selector_view.h"
#include "setup_windows/change_app_window_controller.h"
#include "setup_windows/hotkey_recorder_window_controller.h"
#include "setup_windows/permissions_window_controller.h"
#include "tests/support/desktop_test.h"
#include "tests/support/views.h"

#include <memory>

namespace trovel {
namespace {

using namespace std::chrono_literals;
using effect::MenuItemChanged;
using effect::PreferenceWritten;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

/// The menu of the running program.
class StatusMenuTest : public DesktopTest {
protected:
    void SetUp() override {
        desktop.preferences.store(kHasCompletedOnboarding, true);
        desktop.application.setDelegate(delegate.get());
    }
    void TearDown() override { desktop.application.terminate(); }

    void launch() {
        desktop.application.launch();
        desktop.journal.clear();
    }
    Menu& menu() { return *desktop.statusBar.menu(); }
    bool choose(std::initializer_list<std::string_view> titles) {
        return desktop.statusBar.choose(titles);
    }
    StatusMenu::Items const& items() { return delegate->statusMenu().items(); }

    /// A menu's rows as text: title, submenu, what distinguishes the row.
    static std::vector<std::string> rowsOf(Menu const& menu) {
        std::vector<std::string> rows;
        for (auto const& item : menu.items()) {
            auto row = item->isSeparator() ? std::string("---") : item->title();
            if (item->submenu()) row += " >";
            if (!item->isSeparator() && !item->hasAction()) row += " (no action)";
            if (item->tag() != 0) row += " #" + std::to_string(item->tag());
            if (auto const& object = item->representedObject()) row += " = " + *object;
            if (!item->keyEquivalent().empty()) {
                row += " key " + item->keyEquivalent() + " " +
                       std::to_string(item->keyEquivalentModifiers());
            }
            if (item->state() == MenuItem::State::on) row += " *";
            rows.push_back(std::move(row));
        }
        return rows;
    }
    /// The titles of the checked rows of a menu and its submenus.
    static void addChecked(std::vector<std::string>& titles, Menu const& menu) {
        for (auto const& item : menu.items()) {
            if (item->state() == MenuItem::State::on) titles.push_back(item->title());
            if (item->submenu()) addChecked(titles, *item->submenu());
        }
    }
    std::vector<std::string> checked() {
        std::vector<std::string> titles;
        addChecked(titles, menu());
        return titles;
    }
    std::vector<std::string> checkedApps() {
        std::vector<std::string> titles;
        addChecked(titles, *items().changeAppItem->submenu());
        return titles;
    }

    std::vector<std::string> checkedTargets() {
        std::vector<std::string> titles;
        addChecked(titles, *items().terminalModeItem->submenu());
        return titles;
    }

    std::shared_ptr<AppDelegate> delegate = AppDelegate::make(context, updates, product);
};

TEST_F(StatusMenuTest, HasFifteenRows) {
    launch();
    EXPECT_THAT(rowsOf(menu()),
                ElementsAre("Trovel (⌘⇧2)", "---", "AI App > (no action)", "Change Hotkey…",
                            "Launch at Login", "Terminal Mode > (no action)", "Auto Send", "---",
                            "Permissions…", "Check for Updates…", "What's New…", "Help & Support…",
                            "About Trovel", "---", "Quit Trovel key q 1048576"));
}

TEST_F(StatusMenuTest, ListsTheCatalogueAndTheBrowsers) {
    launch();
    auto const& apps = *menu().items()[2]->submenu();
    EXPECT_THAT(rowsOf(apps), ElementsAre("Claude = Claude", "ChatGPT = ChatGPT", "Gemini = Gemini",
                                          "Perplexity = Perplexity", "Copilot = Copilot", "---",
                                          "Browser Mode > (no action)", "---", "Other…"));
    EXPECT_THAT(rowsOf(*apps.items()[6]->submenu()),
                ElementsAre("Safari = Safari", "Chrome = Chrome", "Arc = Arc", "Firefox = Firefox",
                            "Edge = Edge"));
}

TEST_F(StatusMenuTest, ListsTheTerminalTargetsByTag) {
    launch();
    EXPECT_THAT(rowsOf(*menu().items()[5]->submenu()),
                ElementsAre("Off", "---", "Frontmost App #1", "Terminal #2", "iTerm #3", "Warp #4",
                            "VS Code #5", "Cursor #6"));
}

TEST_F(StatusMenuTest, ChecksTheTerminalTargetThatWasChosenAtOnce) {
    launch();
    for (auto const& item : items().terminalTargetItems) {
        delegate->terminalTargetSelected(*item);
        EXPECT_EQ(desktop.preferences.stored(kTerminalModeEnabled),
                  PreferenceValue(item->tag() != 0));
        EXPECT_EQ(desktop.preferences.stored(kTerminalModeTarget), PreferenceValue(item->tag()));
        EXPECT_THAT(checkedTargets(), ElementsAre(item->title()));
    }
}

TEST_F(StatusMenuTest, ChecksOffWhileTerminalModeIsOffWhateverIsLeftOver) {
    launch();
    desktop.preferences.store(kTerminalModeTarget, std::int64_t{4});
    delegate->menuWillOpen();
    EXPECT_THAT(checkedTargets(), ElementsAre("Off"));
    desktop.preferences.store(kTerminalModeEnabled, true);
    delegate->menuWillOpen();
    EXPECT_THAT(checkedTargets(), ElementsAre("Warp"));
}

TEST_F(StatusMenuTest, ChecksNothingForAStoredTargetThatNoRowHas) {
    launch();
    desktop.preferences.store(kTerminalModeEnabled, true);
    desktop.preferences.store(kTerminalModeTarget, std::int64_t{99});
    delegate->menuWillOpen();
    EXPECT_THAT(checkedTargets(), IsEmpty());
    EXPECT_EQ(delegate->statusMenu().titleOfTerminalTarget(99), std::nullopt);
    EXPECT_EQ(delegate->statusMenu().titleOfTerminalTarget(6), "Cursor");
}

TEST_F(StatusMenuTest, KeepsTheRowsThatItLooksUpAgain) {
    launch();
    auto const& rows = menu().items();
    EXPECT_EQ(items().trovelMenuItem, rows[0]);
    EXPECT_EQ(items().changeAppItem, rows[2]);
    EXPECT_EQ(items().launchAtLoginItem, rows[4]);
    EXPECT_EQ(items().terminalModeItem, rows[5]);
    EXPECT_EQ(items().autoSendItem, rows[6]);
    std::vector<std::int64_t> tags;
    for (auto const& item : items().terminalTargetItems) tags.push_back(item->tag());
    EXPECT_THAT(tags, ElementsAre(0, 1, 2, 3, 4, 5, 6));
}

TEST_F(StatusMenuTest, TheTwoSwitchesAreRightFromTheStart) {
    desktop.preferences.store(kAutoSendEnabled, true);
    desktop.loginItem.setStatus(LoginItemStatus::enabled);
    launch();
    EXPECT_THAT(checked(), ElementsAre("Launch at Login", "Auto Send"));
}

TEST_F(StatusMenuTest, TheProductsNameIsInThreeRowsAndInAbout) {
    product.displayName = "Other";
    auto const other = AppDelegate::make(context, updates, product);
    desktop.application.setDelegate(other.get());
    launch();
    auto const rows = rowsOf(menu());
    EXPECT_EQ(rows[0], "Other (⌘⇧2)");
    EXPECT_EQ(rows[12], "About Other");
    EXPECT_EQ(rows[14], "Quit Other key q 1048576");
    EXPECT_TRUE(choose({"About Other"}));
    EXPECT_EQ(desktop.journal.all<effect::AlertShown>().front().alert.messageText, "Other");
    desktop.application.terminate();
}

TEST_F(StatusMenuTest, OpeningBringsEverythingUpToDateInOrder) {
    launch();
    desktop.preferences.store(kPreferredAIApp, std::string("Safari"));
    desktop.preferences.store(kAutoSendEnabled, true);
    desktop.preferences.store(kTerminalModeEnabled, true);
    desktop.preferences.store(kTerminalModeTarget, std::int64_t{2});
    desktop.statusBar.open();
    EXPECT_THAT(
        effectsOf(desktop.journal),
        ElementsAre(
            Effect(effect::MenuOpened{}), Effect(effect::LoginItemAsked{}),
            Effect(MenuItemChanged{"Launch at Login", false}),
            Effect(MenuItemChanged{"Auto Send", true}), Effect(MenuItemChanged{"Off", false}),
            Effect(MenuItemChanged{"Frontmost App", false}),
            Effect(MenuItemChanged{"Terminal", true}), Effect(MenuItemChanged{"iTerm", false}),
            Effect(MenuItemChanged{"Warp", false}), Effect(MenuItemChanged{"VS Code", false}),
            Effect(MenuItemChanged{"Cursor", false}), Effect(MenuItemChanged{"Claude", false}),
            Effect(MenuItemChanged{"ChatGPT", false}), Effect(MenuItemChanged{"Gemini", false}),
            Effect(MenuItemChanged{"Perplexity", false}), Effect(MenuItemChanged{"Copilot", false}),
            Effect(MenuItemChanged{"Safari", true}), Effect(MenuItemChanged{"Chrome", false}),
            Effect(MenuItemChanged{"Arc", false}), Effect(MenuItemChanged{"Firefox", false}),
            Effect(MenuItemChanged{"Edge", false}),
            Effect(MenuItemChanged{"Trovel (⌘⇧2)", false})));
}

TEST_F(StatusMenuTest, AHotkeyChangedElsewhereShowsAtTheNextOpening) {
    launch();
    desktop.preferences.store(kHotkeyIsCustom, true);
    desktop.preferences.store(kHotkeyKeyCode, std::int64_t{19});
    desktop.preferences.store(kHotkeyModifiers, std::int64_t{768});
    EXPECT_EQ(items().trovelMenuItem->title(), "Trovel (⌘⇧2)");
    desktop.statusBar.open();
    EXPECT_EQ(items().trovelMenuItem->title(), "Trovel (⇧⌘2)");
}

TEST_F(StatusMenuTest, ABrowserIsCheckedAloneAndNotTheRowAboveIt) {
    desktop.preferences.store(kPreferredAIApp, std::string("Safari"));
    launch();
    desktop.statusBar.open();
    EXPECT_THAT(checkedApps(), ElementsAre("Safari"));
}

TEST_F(StatusMenuTest, ACustomNameAnotherCaseAndNoNameCheckNothing) {
    launch();
    for (auto const* name : {"MyTool", "claude", ""}) {
        desktop.preferences.store(kPreferredAIApp, std::string(name));
        desktop.statusBar.open();
        EXPECT_THAT(checkedApps(), IsEmpty()) << name;
    }
    desktop.preferences.store(kPreferredAIApp, std::string("Claude"));
    desktop.statusBar.open();
    EXPECT_THAT(checkedApps(), ElementsAre("Claude"));
    desktop.preferences.remove(kPreferredAIApp);
    desktop.statusBar.open();
    EXPECT_THAT(checkedApps(), IsEmpty());
}

TEST_F(StatusMenuTest, RowsThatStandForNoApplicationKeepTheirState) {
    launch();
    auto const& apps = items().changeAppItem->submenu()->items();
    apps[6]->setState(MenuItem::State::on); // "Browser Mode"
    apps[8]->setState(MenuItem::State::on); // "Other…"
    desktop.preferences.store(kPreferredAIApp, std::string("Edge"));
    desktop.statusBar.open();
    EXPECT_THAT(checkedApps(), ElementsAre("Browser Mode", "Edge", "Other…"));
}

TEST_F(StatusMenuTest, ATargetLeftOverFromATerminalModeThatIsOffIsNotChecked) {
    desktop.preferences.store(kTerminalModeTarget, std::int64_t{4});
    launch();
    desktop.statusBar.open();
    EXPECT_THAT(checked(), ElementsAre("Off"));
}

TEST_F(StatusMenuTest, TheFirstRowStartsACapture) {
    launch();
    EXPECT_TRUE(choose({"Trovel ("}));
    EXPECT_TRUE(delegate->screenshotManager().isCapturing());
    desktop.user.wait(1min);
}

TEST_F(StatusMenuTest, ChoosingAnAppStoresItsNameAndLeavesTheCheckmarksToTheNextOpening) {
    launch();
    EXPECT_TRUE(choose({"AI App", "Gemini"}));
    EXPECT_THAT(desktop.journal.all<PreferenceWritten>(),
                ElementsAre(PreferenceWritten{"preferredAIApp", std::string("Gemini")}));
    EXPECT_THAT(checkedApps(), IsEmpty());
    EXPECT_TRUE(choose({"AI App", "Browser Mode", "Arc"}));
    EXPECT_THAT(checkedApps(), ElementsAre("Gemini")); // from this opening, before the choice
    desktop.statusBar.open();
    EXPECT_THAT(checkedApps(), ElementsAre("Arc"));
}

TEST_F(StatusMenuTest, AnItemThatStandsForNothingStoresNothing) {
    launch();
    delegate->aiAppSelected(*MenuItem::make("Nothing"));
    EXPECT_THAT(effectsOf(desktop.journal), IsEmpty());
}

TEST_F(StatusMenuTest, AutoSendIsToggledAndStaysStored) {
    launch();
    EXPECT_TRUE(choose({"Auto Send"}));
    EXPECT_EQ(items().autoSendItem->state(), MenuItem::State::on);
    EXPECT_TRUE(choose({"Auto Send"}));
    EXPECT_EQ(items().autoSendItem->state(), MenuItem::State::off);
    EXPECT_EQ(desktop.preferences.stored(kAutoSendEnabled), PreferenceValue(false));
    EXPECT_THAT(desktop.journal.all<PreferenceWritten>(),
                ElementsAre(PreferenceWritten{"autoSendEnabled", true},
                            PreferenceWritten{"autoSendEnabled", false}));
    desktop.journal.clear();
    delegate->toggleAutoSend();
    EXPECT_THAT(effectsOf(desktop.journal),
                ElementsAre(Effect(PreferenceWritten{"autoSendEnabled", true}),
                            Effect(MenuItemChanged{"Auto Send", true})));
}

TEST_F(StatusMenuTest, ATerminalTargetIsCheckedAtOnceAndAlone) {
    launch();
    EXPECT_TRUE(choose({"Terminal Mode", "Warp"}));
    EXPECT_THAT(checked(), ElementsAre("Warp"));
    EXPECT_TRUE(desktop.preferences.boolForKey(kTerminalModeEnabled));
    EXPECT_EQ(desktop.preferences.integerForKey(kTerminalModeTarget), 4);
    desktop.statusBar.open();
    EXPECT_THAT(checked(), ElementsAre("Warp"));
    EXPECT_TRUE(choose({"Terminal Mode", "Off"}));
    EXPECT_THAT(checked(), ElementsAre("Off"));
    EXPECT_FALSE(desktop.preferences.boolForKey(kTerminalModeEnabled));
}

TEST_F(StatusMenuTest, OtherOpensTheChangeAppWindow) {
    launch();
    EXPECT_TRUE(choose({"AI App", "Other…"}));
    ASSERT_NE(slots.sharedChangeAppWindow, nullptr);
    EXPECT_TRUE(slots.sharedChangeAppWindow->window()->isKeyWindow());
    // Only the window's own opening activates the program.
    EXPECT_THAT((only<effect::ActivationAsked, effect::MadeKey>(desktop.journal)),
                ElementsAre(at(0s, effect::MadeKey{1}), at(0s, effect::ActivationAsked{false})));
}

TEST_F(StatusMenuTest, AChoiceInTheChangeAppWindowIsCheckedAtTheNextOpening) {
    launch();
    EXPECT_TRUE(choose({"AI App", "Other…"}));
    desktop.journal.clear();
    desktop.user.click(centreOf(*slots.sharedChangeAppWindow->appSelector()->cards()[2]));
    EXPECT_EQ(desktop.journal.count<MenuItemChanged>(), 0U);
    EXPECT_THAT(checkedApps(), IsEmpty());
    desktop.statusBar.open();
    EXPECT_THAT(checkedApps(), ElementsAre("Gemini"));
}

TEST_F(StatusMenuTest, PermissionsOpensItsWindowWithoutACompletion) {
    launch();
    EXPECT_TRUE(choose({"Permissions…"}));
    ASSERT_NE(slots.sharedPermissionsWindow, nullptr);
    EXPECT_THAT((only<effect::ActivationAsked, effect::MadeKey>(desktop.journal)),
                ElementsAre(at(0s, effect::ActivationAsked{false}), at(0s, effect::MadeKey{1}),
                            at(0s, effect::ActivationAsked{false})));
    desktop.user.click(centreOf(slots.sharedPermissionsWindow->continueButton()));
    EXPECT_EQ(slots.sharedPermissionsWindow, nullptr);
}

TEST_F(StatusMenuTest, QuitEndsTheProgram) {
    launch();
    EXPECT_TRUE(choose({"Quit Trovel"}));
    EXPECT_FALSE(desktop.application.isRunning());
    EXPECT_EQ(desktop.hotkeys.hotKeyCount(), 0U);
}

TEST_F(StatusMenuTest, WithoutAButtonTheIconIsSkippedAndTheMenuThere) {
    desktop.statusBar.setHasButtons(false);
    launch();
    EXPECT_EQ(desktop.statusBar.image(), nullptr);
    EXPECT_EQ(menu().items().size(), 15U);
}

TEST_F(StatusMenuTest, TheButtonShowsTheIcon) {
    launch();
    ASSERT_NE(desktop.statusBar.image(), nullptr);
    EXPECT_EQ(desktop.statusBar.image()->size, (Size{18, 18}));
    EXPECT_TRUE(desktop.statusBar.image()->isTemplate);
    EXPECT_EQ(desktop.statusBar.image()->accessibilityDescription, "Trovel");
}

// The hotkey.

TEST_F(StatusMenuTest, ARecordedHotkeyIsStoredRegisteredAndShownAtOnce) {
    launch();
    EXPECT_TRUE(choose({"Change Hotkey…"}));
    desktop.journal.clear();
    desktop.user.pressKey(122, kFlagControl | kFlagOption);
    EXPECT_THAT((only<PreferenceWritten, effect::HotKeyUnregistered, effect::HandlerRemoved,
                      effect::HandlerInstalled, effect::HotKeyRegistered, MenuItemChanged,
                      effect::OrderedOut>(desktop.journal)),
                ElementsAre(at(0s, PreferenceWritten{"hotkeyKeyCode", std::int64_t{122}}),
                            at(0s, PreferenceWritten{"hotkeyModifiers", std::int64_t{6144}}),
                            at(0s, PreferenceWritten{"hotkeyIsCustom", true}),
                            at(0s, effect::HotKeyUnregistered{19, 768}),
                            at(0s, effect::HandlerRemoved{}), at(0s, effect::HandlerInstalled{}),
                            at(0s, effect::HotKeyRegistered{122, 6144, {0x54524f56, 1}}),
                            at(0s, MenuItemChanged{"Trovel (⌃⌥F1)", false}),
                            at(0s, effect::OrderedOut{1})));
    delegate->showAbout();
    EXPECT_TRUE(desktop.journal.all<effect::AlertShown>().front().alert.informativeText.ends_with(
        "\n\nCurrent hotkey: ⌃⌥F1"));
    desktop.user.pressKey(122, kFlagControl | kFlagOption);
    EXPECT_TRUE(delegate->screenshotManager().isCapturing());
    desktop.user.wait(1min);
}

TEST_F(StatusMenuTest, TheRecorderActivatesTheProgramBeforeAndAfterItIsShown) {
    launch();
    delegate->showChangeHotkey();
    EXPECT_THAT((only<effect::ActivationAsked, effect::MadeKey>(desktop.journal)),
                ElementsAre(at(0s, effect::ActivationAsked{false}), at(0s, effect::MadeKey{1}),
                            at(0s, effect::ActivationAsked{false})));
}

TEST_F(StatusMenuTest, TheHotkeyInForceRestsInTheRecorderAndCanBeRecordedAgain) {
    launch();
    delegate->showChangeHotkey();
    EXPECT_TRUE(desktop.hotkeys.isSuspended());
    EXPECT_THAT(desktop.hotkeys.combinations(), ElementsAre(KeyCombination{19, 768}));
    desktop.user.pressDefaultHotkey();
    EXPECT_FALSE(delegate->screenshotManager().isCapturing());
    EXPECT_EQ(slots.sharedHotkeyRecorderWindow, nullptr);
    EXPECT_EQ(items().trovelMenuItem->title(), "Trovel (⇧⌘2)");
    EXPECT_THAT(desktop.hotkeys.combinations(), ElementsAre(KeyCombination{19, 768}));
    EXPECT_FALSE(desktop.hotkeys.isSuspended());
    desktop.user.pressDefaultHotkey();
    EXPECT_TRUE(delegate->screenshotManager().isCapturing());
    desktop.user.wait(1min);
}

TEST_F(StatusMenuTest, ACancelledRecordingLeavesTheHotkeyInForce) {
    launch();
    delegate->showChangeHotkey();
    desktop.user.click(centreOf(slots.sharedHotkeyRecorderWindow->cancelButton()));
    EXPECT_EQ(desktop.journal.count<PreferenceWritten>(), 0U);
    EXPECT_EQ(desktop.journal.count<effect::HotKeyUnregistered>(), 0U);
    desktop.user.pressDefaultHotkey();
    EXPECT_TRUE(delegate->screenshotManager().isCapturing());
    desktop.user.wait(1min);
}

TEST_F(StatusMenuTest, ARecordingAfterTheDelegateIsGoneIsForNobody) {
    launch();
    delegate->showChangeHotkey();
    desktop.application.terminate();
    desktop.application.setDelegate(nullptr);
    delegate.reset();
    desktop.user.pressKey(19, kFlagCommand);
    EXPECT_EQ(slots.sharedHotkeyRecorderWindow, nullptr);
    EXPECT_EQ(desktop.journal.count<PreferenceWritten>(), 0U);
}

TEST_F(StatusMenuTest, AskingForTheMenuBeforeLaunchStopsTheProcess) {
    EXPECT_DEATH(delegate->toggleAutoSend(), "the status menu was asked for");
}

// The links, About, launch at login and the updates.

TEST_F(StatusMenuTest, WhatsNewAndHelpOpenThePageAndTheMailProgram) {
    launch();
    EXPECT_TRUE(choose({"What's New…"}));
    EXPECT_TRUE(choose({"Help & Support…"}));
    EXPECT_THAT(desktop.journal.all<effect::UrlOpened>(),
                ElementsAre(effect::UrlOpened{"https://trovel.example/changelog"},
                            effect::UrlOpened{"mailto:help@trovel.example"}));
    EXPECT_EQ(desktop.journal.count<effect::ActivationAsked>(), 0U);
}

TEST_F(StatusMenuTest, AddressesThatAreNoUrlsOpenAndReportNothing) {
    product.changelogUrl = "no address";
    product.supportEmail = "two words@example";
    auto const other = AppDelegate::make(context, updates, product);
    desktop.application.setDelegate(other.get());
    launch();
    EXPECT_TRUE(choose({"What's New…"}));
    EXPECT_TRUE(choose({"Help & Support…"}));
    EXPECT_EQ(desktop.journal.count<effect::UrlOpened>(), 0U);
    EXPECT_EQ(desktop.journal.count<effect::AlertShown>(), 0U);
    desktop.application.terminate();
}

TEST_F(StatusMenuTest, AboutActivatesTheProgramAndShowsTheVersionAndTheHotkey) {
    desktop.preferences.store(kHotkeyIsCustom, true);
    desktop.preferences.store(kHotkeyKeyCode, std::int64_t{10});
    desktop.preferences.store(kHotkeyModifiers, std::int64_t{4352});
    launch();
    EXPECT_TRUE(choose({"About Trovel"}));
    Alert const about{"Trovel",
                      "Version 0.1.0 (7)\n\nScreenshot to AI in one keystroke. Capture a region "
                      "and send it directly to Claude, ChatGPT, Gemini, or Perplexity.\n\nCurrent "
                      "hotkey: ⌃⌘Key10",
                      AlertStyle::informational,
                      {"OK"},
                      true};
    EXPECT_THAT(
        (only<effect::ActivationAsked, effect::AlertShown>(desktop.journal)),
        ElementsAre(at(0s, effect::ActivationAsked{false}), at(0s, effect::AlertShown{about})));
}

TEST_F(StatusMenuTest, AboutWithoutVersionsIsVersionOne) {
    desktop.bundle.removeAll();
    launch();
    delegate->showAbout();
    auto const about = desktop.journal.all<effect::AlertShown>().front().alert;
    EXPECT_TRUE(about.informativeText.starts_with("Version 1.0 (1)\n\n"));
    EXPECT_TRUE(about.informativeText.ends_with("\n\nCurrent hotkey: ⌘⇧2"));
}

TEST_F(StatusMenuTest, LaunchAtLoginIsTurnedOnAndOff) {
    launch();
    EXPECT_TRUE(choose({"Launch at Login"}));
    EXPECT_EQ(items().launchAtLoginItem->state(), MenuItem::State::on);
    EXPECT_TRUE(choose({"Launch at Login"}));
    EXPECT_EQ(items().launchAtLoginItem->state(), MenuItem::State::off);
    EXPECT_THAT(desktop.journal.all<effect::LoginItemChanged>(),
                ElementsAre(effect::LoginItemChanged{true}, effect::LoginItemChanged{false}));
    desktop.journal.clear();
    delegate->toggleLaunchAtLogin();
    EXPECT_THAT(effectsOf(desktop.journal),
                ElementsAre(Effect(effect::LoginItemAsked{}),
                            Effect(effect::LoginItemChanged{true}),
                            Effect(effect::LoginItemAsked{}),
                            Effect(MenuItemChanged{"Launch at Login", true})));
}

TEST_F(StatusMenuTest, AnythingButEnabledIsUncheckedAndIsEnabledByAChoice) {
    launch();
    for (auto const status : {LoginItemStatus::requiresApproval, LoginItemStatus::notRegistered,
                              LoginItemStatus::notFound}) {
        desktop.loginItem.setStatus(status);
        desktop.statusBar.open();
        EXPECT_EQ(items().launchAtLoginItem->state(), MenuItem::State::off);
        desktop.journal.clear();
        delegate->toggleLaunchAtLogin();
        EXPECT_THAT(desktop.journal.all<effect::LoginItemChanged>(),
                    ElementsAre(effect::LoginItemChanged{true}));
    }
}

TEST_F(StatusMenuTest, AFailedChangeIsReportedAndTheCheckmarkShowsTheTruth) {
    launch();
    desktop.faults.failAlways(Operation::changeLoginItem);
    delegate->toggleLaunchAtLogin();
    EXPECT_EQ(items().launchAtLoginItem->state(), MenuItem::State::off);
    desktop.loginItem.setStatus(LoginItemStatus::enabled);
    delegate->toggleLaunchAtLogin();
    EXPECT_EQ(items().launchAtLoginItem->state(), MenuItem::State::on);
    auto const warning = [](std::string text) {
        return effect::AlertShown{
            {"Launch at Login", std::move(text), AlertStyle::warning, {"OK"}}};
    };
    EXPECT_THAT(desktop.journal.all<effect::AlertShown>(),
                ElementsAre(warning("Could not enable Launch at Login: not permitted"),
                            warning("Could not disable Launch at Login: not permitted")));
    EXPECT_EQ(desktop.journal.count<effect::ActivationAsked>(), 0U);
}

TEST_F(StatusMenuTest, TheUpdaterIsMadeByTheFirstCheckAndUsedByTheNext) {
    launch();
    desktop.statusBar.open();
    desktop.user.wait(1h);
    EXPECT_EQ(desktop.journal.count<effect::UpdaterMade>(), 0U);
    EXPECT_TRUE(choose({"Check for Updates…"}));
    EXPECT_TRUE(choose({"Check for Updates…"}));
    EXPECT_EQ(desktop.journal.count<effect::UpdaterMade>(), 1U);
    EXPECT_THAT(desktop.journal.all<effect::UpdatesChecked>(),
                Each(effect::UpdatesChecked{"Check for Updates…"}));
    EXPECT_EQ(desktop.journal.count<effect::UpdatesChecked>(), 2U);
}

TEST_F(StatusMenuTest, TheUpdaterOutlivesTheDelegateThatMadeIt) {
    launch();
    EXPECT_TRUE(choose({"Check for Updates…"}));
    desktop.application.terminate();
    delegate = AppDelegate::make(context, updates, product);
    desktop.application.setDelegate(delegate.get());
    launch();
    EXPECT_TRUE(choose({"Check for Updates…"}));
    EXPECT_EQ(desktop.journal.count<effect::UpdaterMade>(), 0U);
    EXPECT_EQ(desktop.journal.count<effect::UpdatesChecked>(), 1U);
}

} // namespace
} // namespace trovel
