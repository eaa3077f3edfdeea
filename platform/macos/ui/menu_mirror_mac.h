#pragma once

#include "platform/ui/menu.h"

#import <AppKit/AppKit.h>

#include <map>
#include <memory>

@class TrovelMenuDelegate;

namespace trovel {

/// A menu and its submenus as AppKit's. Main thread only.
class MenuMirrorMac final : public MenuMirror {
public:
    /// Mirrors `menu` as long as it lives, and keeps it.
    explicit MenuMirrorMac(std::shared_ptr<Menu> menu);
    MenuMirrorMac(MenuMirrorMac const&) = delete;
    MenuMirrorMac& operator=(MenuMirrorMac const&) = delete;
    ~MenuMirrorMac();

    void itemDidChange(MenuItem const& item) override;

    [[nodiscard]] NSMenu* _Nonnull native() const { return native_; }
    /// The native row of an item of this menu or its submenus; nil when it is none of theirs.
    [[nodiscard]] NSMenuItem* _Nullable row(MenuItem const& item) const;

private:
    NSMenu* _Nonnull makeMenu(Menu const& menu);
    NSMenuItem* _Nonnull makeRow(MenuItem& item);

    std::shared_ptr<Menu> menu_;
    std::map<MenuItem const*, NSMenuItem*> rows_;
    NSMenu* _Nonnull native_;
    TrovelMenuDelegate* _Nonnull delegate_; // AppKit holds it weakly
};

} // namespace trovel
