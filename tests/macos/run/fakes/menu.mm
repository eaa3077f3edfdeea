#include "tests/macos/run/fakes/appkit.h"

#include <algorithm>

#pragma clang diagnostic ignored "-Wobjc-designated-initializers"
#pragma clang diagnostic ignored "-Wundeclared-selector"

@implementation NSMenu

- (instancetype)initWithTitle:(NSString*)title {
    self = [super init];
    fakes::require(title != nil, "a menu's title is nil");
    return self;
}

- (instancetype)initWithCoder:(NSCoder*)coder {
    return nil;
}

- (void)encodeWithCoder:(NSCoder*)coder {
}

- (void)addItem:(NSMenuItem*)newItem {
    fakes::require(newItem != nil, "a menu's item is nil");
    items_.push_back(newItem);
}

- (id<NSMenuDelegate>)delegate {
    return delegate_;
}

- (void)setDelegate:(id<NSMenuDelegate>)delegate {
    delegate_ = delegate;
}

@end

@implementation NSMenuItem {
    NSString* title_;
}

+ (NSMenuItem*)separatorItem {
    NSMenuItem* const item = [[NSMenuItem alloc] initWithTitle:@""
                                                        action:nullptr
                                                 keyEquivalent:@""];
    item->isSeparator_ = YES;
    return item;
}

- (instancetype)initWithTitle:(NSString*)title
                       action:(SEL)selector
                keyEquivalent:(NSString*)keyEquivalent {
    self = [super init];
    fakes::require(keyEquivalent != nil, "a menu item's key equivalent is nil");
    self.title = title;
    action_ = selector;
    keyEquivalent_ = keyEquivalent;
    self.keyEquivalentModifierMask = 1U << 20U; // "…NSEventModifierFlagCommand" by default
    return self;
}

- (instancetype)initWithCoder:(NSCoder*)coder {
    return nil;
}

- (void)encodeWithCoder:(NSCoder*)coder {
}

- (NSString*)title {
    return title_;
}

- (void)setTitle:(NSString*)title {
    fakes::require(title != nil, "a menu item's title is nil");
    title_ = title;
}

- (id)target {
    return target_;
}

- (void)setTarget:(id)target {
    target_ = target;
}

- (NSMenu*)submenu {
    return submenu_;
}

// "The default implementation … sets the item's action to submenuAction:", which a menu answers;
// a target that there is stays.
- (void)setSubmenu:(NSMenu*)submenu {
    submenu_ = submenu;
    if (submenu == nil) return;
    action_ = @selector(submenuAction:);
    if (target_ == nil) target_ = submenu;
}

// "If the item's target … does not implement the item's action, the item is disabled" (Application
// Menu and Pop-up List Programming Topics, "Enabling Menu Items").
- (BOOL)isEnabled {
    if (isSeparator_ || action_ == nullptr) return NO;
    if (submenu_ != nil && target_ == submenu_) return YES;
    return [static_cast<NSObject*>(target_) respondsToSelector:action_];
}

@end

@implementation NSStatusItem
@synthesize menu = menu_;

- (NSStatusBarButton*)button {
    return button_;
}

@end

@implementation NSStatusBar

+ (NSStatusBar*)systemStatusBar {
    return [[NSStatusBar alloc] init];
}

- (NSStatusItem*)statusItemWithLength:(CGFloat)length {
    constexpr CGFloat kHeight = 22;
    fakes::mac().record("status item " + fakes::textOf(length));
    NSStatusItem* const item = [[NSStatusItem alloc] init];
    item->button_ = [[NSStatusBarButton alloc] initWithFrame:NSMakeRect(0, 0, kHeight, kHeight)];
    fakes::mac().statusItems.push_back(item);
    return item;
}

- (void)removeStatusItem:(NSStatusItem*)item {
    std::erase(fakes::mac().statusItems, item);
}

@end

namespace fakes {

namespace {

NSMenuItem* _Nullable rowIn(NSMenu* _Nullable menu, std::string_view title) {
    if (menu == nil) return nil;
    auto const found = std::ranges::find_if(
        menu->items_, [&](NSMenuItem* each) { return toText(each.title).starts_with(title); });
    return found != menu->items_.end() ? *found : nil;
}

} // namespace

NSMenuItem* openMenu(std::vector<std::string> const& titles) {
    if (mac().statusItems.empty()) return nil;
    NSMenu* menu = mac().statusItems.back().menu;
    NSMenuItem* row = nil;
    for (auto const& title : titles) {
        // "Invoked when a menu is about to open": for the menu that has the delegate.
        if (menu != nil) [menu->delegate_ menuWillOpen:menu];
        row = rowIn(menu, title);
        if (row == nil || !row.isEnabled) return nil;
        menu = row.submenu;
    }
    return row;
}

bool chooseRow(std::vector<std::string> const& titles) {
    @autoreleasepool {
        NSMenuItem* const row = openMenu(titles);
        if (row == nil) return false;
        send(row->target_, row->action_, row);
    }
    return true;
}

} // namespace fakes
