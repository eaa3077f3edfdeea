#include "platform/macos/updater_mac.h"

#include "platform/macos/ui/menu_mirror_mac.h"

#import <Sparkle/Sparkle.h>

namespace trovel {

namespace {

NSMenuItem* _Nullable nativeRow(MenuItem const* sender) {
    // Whatever mirrors a menu here is of this backend.
    auto const* const mirror =
        sender != nullptr ? static_cast<MenuMirrorMac const*>(sender->mirror()) : nullptr;
    return mirror != nullptr ? mirror->row(*sender) : nil;
}

class StandardController final : public UpdaterController {
public:
    StandardController()
        : native_([[SPUStandardUpdaterController alloc] initWithStartingUpdater:YES
                                                                updaterDelegate:nil
                                                             userDriverDelegate:nil]) {}

    void checkForUpdates(MenuItem const* sender) override {
        [native_ checkForUpdates:nativeRow(sender)];
    }

private:
    SPUStandardUpdaterController* _Nonnull native_;
};

} // namespace

std::unique_ptr<UpdaterController> UpdaterMac::makeStandardController() {
    return std::make_unique<StandardController>();
}

} // namespace trovel
