#pragma once

#include "platform/ui/status_bar.h"

namespace trovel {

/// The menu bar's right side.
class StatusBarMac final : public StatusBar {
public:
    StatusBarMac() = default;

    [[nodiscard]] std::unique_ptr<StatusItem> makeSquareItem() override;
};

} // namespace trovel
