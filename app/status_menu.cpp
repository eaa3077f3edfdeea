#include "app/status_menu.h"

#include "app/launch_at_login_manager.h"
#include "delivery/ai_app_catalogue.h"
#include "delivery/terminal_targets.h"
#include "settings/hotkey.h"

#include <algorithm>
#include <span>
#include <utility>

namespace trovel {

namespace {

MenuItem::State stateOf(bool isOn) {
    return isOn ? MenuItem::State::on : MenuItem::State::off;
}

/// The operation of a row that does not look at which row was chosen.
MenuItem::Action plain(std::function<void()> operation) {
    return [operation = std::move(operation)](MenuItem const&) { operation(); };
}

void addApps(Menu& menu, std::span<KnownAIApp const> rows, MenuItem::Action const& action) {
    for (auto const& row : rows) {
        auto item = MenuItem::make(row.name, action);
        item->setRepresentedObject(row.name);
        menu.addItem(std::move(item));
    }
}

/// Checks the items that stand for an application: the ones with its name, no others. Items that
/// stand for none keep their state.
void checkApps(Menu const& menu, std::optional<std::string> const& name) {
    for (auto const& item : menu.items()) {
        if (auto const& object = item->representedObject()) item->setState(stateOf(object == name));
    }
}

} // namespace

StatusMenu::StatusMenu(Platform const& platform, Product product, Actions actions)
    : platform_(platform), preferences_(platform.preferences), product_(std::move(product)),
      actions_(std::move(actions)), menu_(std::make_shared<Menu>()) {
    build();
}

void StatusMenu::build() {
    auto const add = [this](std::string title, MenuItem::Action action) {
        auto item = MenuItem::make(std::move(title), std::move(action));
        menu_->addItem(item);
        return item;
    };
    items_.trovelMenuItem = add(title(), plain(actions_.triggerCapture));
    menu_->addItem(MenuItem::separator());
    items_.changeAppItem = add("AI App", {});
    items_.changeAppItem->setSubmenu(aiAppMenu());
    add("Change Hotkey…", plain(actions_.showChangeHotkey));
    items_.launchAtLoginItem = add("Launch at Login", plain(actions_.toggleLaunchAtLogin));
    items_.terminalModeItem = add("Terminal Mode", {});
    items_.terminalModeItem->setSubmenu(terminalModeMenu());
    items_.autoSendItem = add("Auto Send", plain(actions_.toggleAutoSend));
    menu_->addItem(MenuItem::separator());
    add("Permissions…", plain(actions_.showPermissions));
    add("Check for Updates…", actions_.checkForUpdates);
    add("What's New…", plain(actions_.showWhatsNew));
    add("Help & Support…", plain(actions_.showHelp));
    add("About " + product_.displayName, plain(actions_.showAbout));
    menu_->addItem(MenuItem::separator());
    add("Quit " + product_.displayName, plain(actions_.quitApp))
        ->setKeyEquivalent("q", kFlagCommand);
    refreshLaunchAtLogin();
    refreshAutoSend();
}

std::shared_ptr<Menu> StatusMenu::aiAppMenu() const {
    auto menu = std::make_shared<Menu>();
    addApps(*menu, knownAIApps(), actions_.aiAppSelected);
    menu->addItem(MenuItem::separator());
    auto browsers = std::make_shared<Menu>();
    addApps(*browsers, knownBrowsers(), actions_.aiAppSelected);
    auto browserMode = MenuItem::make("Browser Mode");
    browserMode->setSubmenu(std::move(browsers));
    menu->addItem(std::move(browserMode));
    menu->addItem(MenuItem::separator());
    menu->addItem(MenuItem::make("Other…", plain(actions_.showChangeApp)));
    return menu;
}

std::shared_ptr<Menu> StatusMenu::terminalModeMenu() {
    auto menu = std::make_shared<Menu>();
    for (auto const& target : terminalTargets()) {
        if (target.tag == kFrontmostAppTag) menu->addItem(MenuItem::separator());
        auto item = MenuItem::make(std::string(target.title), actions_.terminalTargetSelected);
        item->setTag(target.tag);
        menu->addItem(std::move(item));
    }
    for (auto const& item : menu->items()) {
        if (item->hasAction()) items_.terminalTargetItems.push_back(item);
    }
    return menu;
}

std::string StatusMenu::title() const {
    return product_.displayName + " (" + storedHotkeyText(preferences_) + ")";
}

void StatusMenu::refresh() {
    refreshLaunchAtLogin();
    refreshAutoSend();
    updateTerminalMenuState();
    refreshAIApps();
    refreshTitle();
}

void StatusMenu::updateTerminalMenuState() {
    auto const current = preferences_.terminalModeEnabled() ? preferences_.terminalModeTarget()
                                                            : kTerminalModeOffTag;
    for (auto const& item : items_.terminalTargetItems) {
        item->setState(stateOf(item->tag() == current));
    }
}

std::optional<std::string> StatusMenu::titleOfTerminalTarget(std::int64_t tag) const {
    auto const& items = items_.terminalTargetItems;
    auto const item = std::ranges::find(items, tag, [](auto const& each) { return each->tag(); });
    if (item == items.end()) return std::nullopt;
    return (*item)->title();
}

void StatusMenu::refreshAIApps() {
    auto const name = preferences_.preferredAIApp();
    auto const& menu = *items_.changeAppItem->submenu();
    checkApps(menu, name);
    for (auto const& item : menu.items()) {
        if (item->submenu()) checkApps(*item->submenu(), name);
    }
}

void StatusMenu::refreshTitle() {
    items_.trovelMenuItem->setTitle(title());
}

void StatusMenu::refreshAutoSend() {
    items_.autoSendItem->setState(stateOf(preferences_.autoSendEnabled()));
}

void StatusMenu::refreshLaunchAtLogin() {
    items_.launchAtLoginItem->setState(stateOf(LaunchAtLoginManager::isEnabled(platform_)));
}

} // namespace trovel
