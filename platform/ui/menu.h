#pragma once

#include "platform/key_codes.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace trovel {

class Menu;
class MenuItem;

/// A native mirror of a menu and its submenus: told what changed, never asked. Main thread only.
class MenuMirror {
public:
    MenuMirror(MenuMirror const&) = delete;
    MenuMirror& operator=(MenuMirror const&) = delete;

    /// That item's title or state differs from what was mirrored.
    virtual void itemDidChange(MenuItem const& item) = 0;

protected:
    MenuMirror() = default;
    ~MenuMirror() = default;
};

/// One row of a menu. Held by shared_ptr; main thread only.
class MenuItem final : public std::enable_shared_from_this<MenuItem> {
public:
    enum class State : std::uint8_t { off, on };

    /// What choosing the item does; it is given the chosen item. Empty for an item that does
    /// nothing by itself.
    using Action = std::function<void(MenuItem const& sender)>;

    [[nodiscard]] static std::shared_ptr<MenuItem> separator();
    [[nodiscard]] static std::shared_ptr<MenuItem> make(std::string title, Action action = {});

    MenuItem(MenuItem const&) = delete;
    MenuItem& operator=(MenuItem const&) = delete;
    ~MenuItem();

    void setTitle(std::string title);
    void setState(State state);
    void setTag(std::int64_t tag) { tag_ = tag; }
    void setRepresentedObject(std::string object) { representedObject_ = std::move(object); }
    void setKeyEquivalent(std::string key, EventFlags modifiers);
    void setSubmenu(std::shared_ptr<Menu> submenu);

    [[nodiscard]] bool isSeparator() const { return isSeparator_; }
    [[nodiscard]] bool hasAction() const { return static_cast<bool>(action_); }
    [[nodiscard]] std::string const& title() const { return title_; }
    [[nodiscard]] State state() const { return state_; }
    [[nodiscard]] std::int64_t tag() const { return tag_; }
    [[nodiscard]] std::optional<std::string> const& representedObject() const {
        return representedObject_;
    }
    [[nodiscard]] std::string const& keyEquivalent() const { return keyEquivalent_; }
    [[nodiscard]] EventFlags keyEquivalentModifiers() const { return keyEquivalentModifiers_; }
    [[nodiscard]] std::shared_ptr<Menu> const& submenu() const { return submenu_; }
    /// What mirrors the menu that the item is a row of; null while nothing does.
    [[nodiscard]] MenuMirror* mirror() const;

    /// The user chose the item. From the backend.
    void receiveChosen();

private:
    friend class Menu;

    MenuItem(bool isSeparator, std::string title, Action action);
    void tellMirror() const;

    bool isSeparator_ = false;
    std::string title_;
    Action action_;
    State state_ = State::off;
    std::int64_t tag_ = 0;
    std::optional<std::string> representedObject_;
    std::string keyEquivalent_;
    EventFlags keyEquivalentModifiers_ = 0;
    std::shared_ptr<Menu> submenu_;
    Menu* menu_ = nullptr; // the menu that it is a row of
};

/// A menu as a tree of rows; the only owner of what it shows. Held by shared_ptr; main thread only.
class Menu final {
public:
    Menu() = default;
    Menu(Menu const&) = delete;
    Menu& operator=(Menu const&) = delete;
    ~Menu();

    void addItem(std::shared_ptr<MenuItem> item);

    /// Called each time before the menu is shown.
    void setWillOpen(std::function<void()> willOpen) { willOpen_ = std::move(willOpen); }

    [[nodiscard]] std::vector<std::shared_ptr<MenuItem>> const& items() const { return items_; }

    /// Installs the native mirror of this menu and everything below it. Not owned.
    void setMirror(MenuMirror* mirror) { mirror_ = mirror; }

    /// The menu is about to be shown: what it shows is brought up to date before this returns. From
    /// the backend.
    void receiveWillOpen() const;

private:
    friend class MenuItem;

    [[nodiscard]] MenuMirror* mirror() const;

    std::vector<std::shared_ptr<MenuItem>> items_;
    std::function<void()> willOpen_;
    MenuMirror* mirror_ = nullptr;
    MenuItem* owner_ = nullptr; // the item that this is the submenu of
};

} // namespace trovel
