#include "platform/macos/updater_mac.h"

#import <Sparkle/Sparkle.h>

namespace trovel {

namespace {

class StandardController final : public UpdaterController {
public:
    StandardController()
        : native_([[SPUStandardUpdaterController alloc] initWithStartingUpdater:YES
                                                                updaterDelegate:nil
                                                             userDriverDelegate:nil]) {}

    void checkForUpdates() override { [native_ checkForUpdates:nil]; }

private:
    SPUStandardUpdaterController* _Nonnull native_;
};

} // namespace

std::unique_ptr<UpdaterController> UpdaterMac::makeStandardController() {
    return std::make_unique<StandardController>();
}

} // namespace trovel
