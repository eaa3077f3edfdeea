#include "platform/macos/ui/menu_mirror_mac.h"

#include "platform/macos/bridge/convert.h"
#include "platform/macos/bridge/entry.h"

#include <utility>

/// Tells a menu that it opens.
@interface TrovelMenuDelegate : NSObject <NSMenuDelegate>
- (nonnull instancetype)initWithMenu:(std::weak_ptr<trovel::Menu const>)menu;
@end

@implementation TrovelMenuDelegate {
    std::weak_ptr<trovel::Menu const> menu_;
}

- (nonnull instancetype)initWithMenu:(std::weak_ptr<trovel::Menu const>)menu {
    self = [super init];
    if (self != nil) menu_ = std::move(menu);
    return self;
}

- (void)menuWillOpen:(nonnull NSMenu*)menu {
    auto const opened = menu_.lock();
    if (opened) trovel::enter([&] { opened->receiveWillOpen(); });
}

@end

/// The target of one row.
@interface TrovelMenuTarget : NSObject
- (nonnull instancetype)initWithItem:(trovel::MenuItem&)item;
- (void)choose:(nullable id)sender;
@end

@implementation TrovelMenuTarget {
    std::weak_ptr<trovel::MenuItem> item_;
}

- (nonnull instancetype)initWithItem:(trovel::MenuItem&)item {
    self = [super init];
    if (self != nil) item_ = item.weak_from_this();
    return self;
}

- (void)choose:(nullable id)sender {
    auto const item = item_.lock();
    if (item) trovel::enter([&] { item->receiveChosen(); });
}

@end

namespace trovel {

namespace {

void show(MenuItem const& item, NSMenuItem* _Nonnull row) {
    row.title = toNSString(item.title());
    row.state =
        item.state() == MenuItem::State::on ? NSControlStateValueOn : NSControlStateValueOff;
}

} // namespace

MenuMirrorMac::MenuMirrorMac(std::shared_ptr<Menu> menu)
    : menu_(std::move(menu)), native_(makeMenu(*menu_)),
      delegate_([[TrovelMenuDelegate alloc] initWithMenu:menu_]) {
    native_.delegate = delegate_;
    menu_->setMirror(this);
}

MenuMirrorMac::~MenuMirrorMac() {
    menu_->setMirror(nullptr);
}

void MenuMirrorMac::itemDidChange(MenuItem const& item) {
    NSMenuItem* const native = row(item);
    if (native != nil) show(item, native);
}

NSMenuItem* _Nullable MenuMirrorMac::row(MenuItem const& item) const {
    auto const found = rows_.find(&item);
    return found != rows_.end() ? found->second : nil;
}

NSMenu* _Nonnull MenuMirrorMac::makeMenu(Menu const& menu) {
    NSMenu* const native = [[NSMenu alloc] initWithTitle:@""];
    for (auto const& item : menu.items())
        [native addItem:makeRow(*item)];
    return native;
}

NSMenuItem* _Nonnull MenuMirrorMac::makeRow(MenuItem& item) {
    if (item.isSeparator()) return [NSMenuItem separatorItem];
    NSMenuItem* const row =
        [[NSMenuItem alloc] initWithTitle:@""
                                   action:item.hasAction() ? @selector(choose:) : nullptr
                            keyEquivalent:toNSString(item.keyEquivalent())];
    row.keyEquivalentModifierMask =
        static_cast<NSEventModifierFlags>(item.keyEquivalentModifiers());
    // A row with a submenu gets AppKit's own action, -submenuAction:, and keeps the target that it
    // has: with one that does not know this action, automatic enabling would make the row grey.
    if (item.hasAction()) {
        TrovelMenuTarget* const target = [[TrovelMenuTarget alloc] initWithItem:item];
        row.target = target;
        row.representedObject = target; // which keeps it: a row holds its target weakly
    }
    if (item.submenu()) row.submenu = makeMenu(*item.submenu());
    show(item, row);
    rows_.emplace(&item, row);
    return row;
}

} // namespace trovel
