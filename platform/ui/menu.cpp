#include "platform/ui/menu.h"

#include <utility>

namespace trovel {

MenuItem::MenuItem(bool isSeparator, std::string title, Action action)
    : isSeparator_(isSeparator), title_(std::move(title)), action_(std::move(action)) {}

std::shared_ptr<MenuItem> MenuItem::separator() {
    return std::shared_ptr<MenuItem>(new MenuItem(true, {}, {}));
}

std::shared_ptr<MenuItem> MenuItem::make(std::string title, Action action) {
    return std::shared_ptr<MenuItem>(new MenuItem(false, std::move(title), std::move(action)));
}

MenuItem::~MenuItem() {
    setSubmenu(nullptr);
}

void MenuItem::setTitle(std::string title) {
    title_ = std::move(title);
    tellMirror();
}

void MenuItem::setState(State state) {
    state_ = state;
    tellMirror();
}

void MenuItem::setKeyEquivalent(std::string key, EventFlags modifiers) {
    keyEquivalent_ = std::move(key);
    keyEquivalentModifiers_ = modifiers;
}

void MenuItem::setSubmenu(std::shared_ptr<Menu> submenu) {
    if (submenu_) submenu_->owner_ = nullptr;
    submenu_ = std::move(submenu);
    if (submenu_) submenu_->owner_ = this;
}

MenuMirror* MenuItem::mirror() const {
    return menu_ != nullptr ? menu_->mirror() : nullptr;
}

void MenuItem::tellMirror() const {
    if (auto* const told = mirror()) told->itemDidChange(*this);
}

void MenuItem::receiveChosen() {
    // The action may drop the menu that holds this item.
    auto const self = shared_from_this();
    auto const action = action_;
    if (action) action(*self);
}

Menu::~Menu() {
    for (auto const& item : items_) item->menu_ = nullptr;
}

void Menu::addItem(std::shared_ptr<MenuItem> item) {
    item->menu_ = this;
    items_.push_back(std::move(item));
}

void Menu::receiveWillOpen() const {
    auto const willOpen = willOpen_;
    if (willOpen) willOpen();
}

MenuMirror* Menu::mirror() const {
    auto const* menu = this;
    while (menu->mirror_ == nullptr && menu->owner_ != nullptr && menu->owner_->menu_ != nullptr) {
        menu = menu->owner_->menu_;
    }
    return menu->mirror_;
}

} // namespace trovel
