#pragma once

#include "app/product.h"
#include "platform/platform.h"
#include "platform/ui/menu.h"
#include "settings/preferences.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace trovel {

/// The menu of the status item: built once, brought up to date each time it opens. Main thread
/// only.
class StatusMenu {
public:
    /// What the rows do, one operation a row.
    struct Actions {
        std::function<void()> triggerCapture;
        std::function<void()> toggleAutoSend;
        MenuItem::Action terminalTargetSelected;
        MenuItem::Action aiAppSelected;
        std::function<void()> showChangeApp;
        std::function<void()> showChangeHotkey;
        std::function<void()> toggleLaunchAtLogin;
        std::function<void()> showPermissions;
        MenuItem::Action checkForUpdates;
        std::function<void()> showWhatsNew;
        std::function<void()> showHelp;
        std::function<void()> showAbout;
        std::function<void()> quitApp;
    };

    /// The rows that are looked up again after the menu was built.
    struct Items {
        std::shared_ptr<MenuItem> trovelMenuItem;
        std::shared_ptr<MenuItem> changeAppItem;
        std::shared_ptr<MenuItem> launchAtLoginItem;
        std::shared_ptr<MenuItem> terminalModeItem;
        std::vector<std::shared_ptr<MenuItem>> terminalTargetItems;
        std::shared_ptr<MenuItem> autoSendItem;
    };

    StatusMenu(Platform const& platform, Product product, Actions actions);

    /// Brings every checkmark and the first title up to date. Called when the menu opens.
    void refresh();

    void refreshTitle();
    void refreshAutoSend();
    void refreshLaunchAtLogin();

    /// Checks the one terminal target that is in force: "Off" whenever the mode is off.
    void updateTerminalMenuState();

    /// What the row of the terminal target with that tag is called; nothing when there is none.
    [[nodiscard]] std::optional<std::string> titleOfTerminalTarget(std::int64_t tag) const;

    [[nodiscard]] std::shared_ptr<Menu> const& menu() const { return menu_; }
    [[nodiscard]] Items const& items() const { return items_; }

private:
    void build();
    [[nodiscard]] std::shared_ptr<Menu> aiAppMenu() const;
    [[nodiscard]] std::shared_ptr<Menu> terminalModeMenu();
    [[nodiscard]] std::string title() const;
    void refreshAIApps();

    Platform platform_;
    Preferences preferences_;
    Product product_;
    Actions actions_;
    std::shared_ptr<Menu> menu_;
    Items items_;
};

} // namespace trovel
