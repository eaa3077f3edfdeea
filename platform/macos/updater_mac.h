#pragma once

#include "platform/updater.h"

namespace trovel {

/// Sparkle, which reads the feed's address and the key of its signatures in Info.plist.
class UpdaterMac final : public Updater {
public:
    UpdaterMac() = default;

    [[nodiscard]] std::unique_ptr<UpdaterController> makeStandardController() override;
};

} // namespace trovel
