#include "platform/simulated/simulated_status_bar.h"

#include "platform/fatal.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace trovel {

class SimulatedStatusBar::Item final : public StatusItem, public MenuMirror {
public:
    explicit Item(SimulatedStatusBar& bar) : bar_(bar), hasButton_(bar.hasButtons_) {
        bar_.item_ = this;
    }
    ~Item() override {
        if (menu_) menu_->setMirror(nullptr);
        bar_.item_ = nullptr;
    }

    [[nodiscard]] bool hasButton() const override { return hasButton_; }
    void setButtonImage(DrawnImage image) override {
        if (!hasButton_) fatal("an image was put on a button that is not there");
        image_ = std::move(image);
    }
    void setMenu(std::shared_ptr<Menu> menu) override {
        menu_ = std::move(menu);
        menu_->setMirror(this);
    }
    void itemDidChange(MenuItem const& item) override {
        bar_.journal_.record(
            effect::MenuItemChanged{item.title(), item.state() == MenuItem::State::on});
    }

    [[nodiscard]] std::shared_ptr<Menu> const& menu() const { return menu_; }
    [[nodiscard]] std::optional<DrawnImage> const& image() const { return image_; }

private:
    SimulatedStatusBar& bar_;
    bool hasButton_;
    std::optional<DrawnImage> image_;
    std::shared_ptr<Menu> menu_;
};

SimulatedStatusBar::~SimulatedStatusBar() = default;

std::unique_ptr<StatusItem> SimulatedStatusBar::makeSquareItem() {
    return std::make_unique<Item>(*this);
}

std::shared_ptr<Menu> SimulatedStatusBar::menu() const {
    return item_ != nullptr ? item_->menu() : nullptr;
}

DrawnImage const* SimulatedStatusBar::image() const {
    return item_ != nullptr && item_->image() ? &*item_->image() : nullptr;
}

void SimulatedStatusBar::open() {
    auto const opened = menu();
    if (!opened) return;
    journal_.record(effect::MenuOpened{});
    opened->receiveWillOpen();
}

bool SimulatedStatusBar::choose(std::initializer_list<std::string_view> titles) {
    open();
    auto menu = this->menu();
    std::shared_ptr<MenuItem> item;
    for (auto const title : titles) {
        if (!menu) return false;
        auto const found = std::ranges::find_if(
            menu->items(), [title](auto const& each) { return each->title().starts_with(title); });
        if (found == menu->items().end()) return false;
        item = *found;
        menu = item->submenu();
    }
    if (!item || !item->hasAction()) return false;
    item->receiveChosen();
    return true;
}

} // namespace trovel
