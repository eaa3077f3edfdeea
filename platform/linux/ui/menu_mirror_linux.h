#pragma once

#include "platform/ui/menu.h"

#include <functional>
#include <map>
#include <memory>

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

    [[nodiscard]] QMenu& native() const { return *native_; }

private:
    void fill(QMenu& native, Menu const& menu);
    QAction* add(QMenu& native, std::shared_ptr<MenuItem> const& item);

    std::shared_ptr<Menu> menu_;
    Chosen onChosen_;
    std::map<MenuItem const*, QAction*> actions_;
    std::unique_ptr<QMenu> native_;
};

} // namespace trovel
