#pragma once

#include "platform/ui/menu.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <vector>

class QAction;
class QMenu;

namespace trovel {

/// A menu and its submenus as Qt's. Main thread only.
class MenuMirrorLinux final : public MenuMirror {
public:
    using Chosen = std::function<void(std::shared_ptr<MenuItem>)>;

    /// Mirrors `menu` as long as it lives, and keeps it. A choice of the user's is handed to
    /// `onChosen`.
    MenuMirrorLinux(std::shared_ptr<Menu> menu, Chosen onChosen);
    MenuMirrorLinux(MenuMirrorLinux const&) = delete;
    MenuMirrorLinux& operator=(MenuMirrorLinux const&) = delete;
    ~MenuMirrorLinux();

    void itemDidChange(MenuItem const& item) override;

    /// The menu to pop up.
    [[nodiscard]] QMenu& native();

    /// The menu to hand to a program that shows it itself. Such a program learns what changed, and
    /// never that an item can be checked no more: there it stays checkable.
    [[nodiscard]] QMenu& exported();

private:
    enum class Shown : std::uint8_t { here, elsewhere };
    struct Copy {
        Shown shown = Shown::here;
        std::unique_ptr<QMenu> menu;
        std::map<MenuItem const*, QAction*> actions;
    };

    QMenu& copyShown(Shown shown);
    void fill(Copy& copy, QMenu& native, Menu const& menu);
    QAction* add(Copy& copy, QMenu& native, std::shared_ptr<MenuItem> const& item);
    static void mirror(MenuItem const& item, QAction& action, Shown shown);

    std::shared_ptr<Menu> menu_;
    Chosen onChosen_;
    std::vector<std::unique_ptr<Copy>> copies_; // each made when it is first asked for
};

} // namespace trovel
