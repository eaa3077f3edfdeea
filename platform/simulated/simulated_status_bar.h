#pragma once

#include "platform/simulated/journal.h"
#include "platform/ui/menu.h"
#include "platform/ui/status_bar.h"

#include <initializer_list>
#include <string_view>

namespace trovel {

/// The status bar, whose one item the user opens and clicks.
class SimulatedStatusBar final : public StatusBar {
public:
    explicit SimulatedStatusBar(Journal& journal) : journal_(journal) {}
    ~SimulatedStatusBar();

    [[nodiscard]] std::unique_ptr<StatusItem> makeSquareItem() override;

    /// Whether items made from now on have a button.
    void setHasButtons(bool hasButtons) { hasButtons_ = hasButtons; }

    /// The user opens the menu. Nothing when there is none.
    void open();

    /// The user opens the menu and chooses the item at the end of those titles; a row is named by
    /// its title or by the beginning of it. False when there is no such row that does anything.
    bool choose(std::initializer_list<std::string_view> titles);

    /// Null before the program has made an item, and given it one.
    [[nodiscard]] std::shared_ptr<Menu> menu() const;
    [[nodiscard]] DrawnImage const* image() const;
    [[nodiscard]] bool hasItem() const { return item_ != nullptr; }

private:
    class Item;

    Journal& journal_;
    bool hasButtons_ = true;
    Item* item_ = nullptr;
};

} // namespace trovel
