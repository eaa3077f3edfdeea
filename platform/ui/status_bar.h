#pragma once

#include "platform/ui/drawn_image.h"

#include <memory>

namespace trovel {

class Menu;

/// An item of the desktop's status bar, there as long as the object lives. Main thread only.
class StatusItem {
public:
    StatusItem(StatusItem const&) = delete;
    StatusItem& operator=(StatusItem const&) = delete;
    virtual ~StatusItem() = default;

    /// Whether the item has a button to put an image on.
    [[nodiscard]] virtual bool hasButton() const = 0;
    virtual void setButtonImage(DrawnImage image) = 0;

    /// Mirrors the menu from now on and opens it when the item is clicked. The item keeps it.
    virtual void setMenu(std::shared_ptr<Menu> menu) = 0;

protected:
    StatusItem() = default;
};

/// The desktop's status bar. Main thread only.
class StatusBar {
public:
    StatusBar(StatusBar const&) = delete;
    StatusBar& operator=(StatusBar const&) = delete;

    /// An item as wide as the bar is high. It may appear later, when the desktop has a bar.
    [[nodiscard]] virtual std::unique_ptr<StatusItem> makeSquareItem() = 0;

protected:
    StatusBar() = default;
    ~StatusBar() = default;
};

} // namespace trovel
