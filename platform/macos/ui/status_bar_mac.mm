#include "platform/macos/ui/status_bar_mac.h"

#include "platform/macos/ui/drawn_image_mac.h"
#include "platform/macos/ui/menu_mirror_mac.h"

#include <utility>

namespace trovel {

namespace {

class StatusItemMac final : public StatusItem {
public:
    StatusItemMac()
        : native_([NSStatusBar.systemStatusBar statusItemWithLength:NSSquareStatusItemLength]) {}
    ~StatusItemMac() override { [NSStatusBar.systemStatusBar removeStatusItem:native_]; }

    [[nodiscard]] bool hasButton() const override { return native_.button != nil; }

    void setButtonImage(DrawnImage image) override {
        native_.button.image = toNSImage(image);
        // Said of the button's image too, which need not be the object that it was given.
        [native_.button.image setTemplate:image.isTemplate];
    }

    void setMenu(std::shared_ptr<Menu> menu) override {
        mirror_.reset(); // it may be the mirror of the same menu
        mirror_ = std::make_unique<MenuMirrorMac>(std::move(menu));
        native_.menu = mirror_->native();
    }

private:
    NSStatusItem* _Nonnull native_;
    std::unique_ptr<MenuMirrorMac> mirror_;
};

} // namespace

std::unique_ptr<StatusItem> StatusBarMac::makeSquareItem() {
    return std::make_unique<StatusItemMac>();
}

} // namespace trovel
