#pragma once

#include "platform/ui/status_bar.h"

#include <filesystem>
#include <memory>
#include <vector>

namespace trovel {

class MainQueue;
class MenuRest;
class SystemTray;

/// The desktop's tray, over the StatusNotifierItem protocol or the System Tray protocol. There may
/// be none, now or ever: the icon is made when one appears, and again when it comes back.
class StatusBarLinux final : public StatusBar {
public:
    /// What is handed in must outlive this. A change in one of the folders may change what a menu
    /// shows.
    StatusBarLinux(SystemTray& systemTray, MenuRest& rest, MainQueue& mainQueue,
                   std::vector<std::filesystem::path> folders);
    ~StatusBarLinux();

    std::unique_ptr<StatusItem> makeSquareItem() override;

    /// Opens the menu of the item that was made last at the pointer.
    void popUpMenu();

private:
    class Item;

    SystemTray& systemTray_;
    MenuRest& rest_;
    MainQueue& mainQueue_;
    std::vector<std::filesystem::path> folders_;
    Item* item_ = nullptr;
};

} // namespace trovel
