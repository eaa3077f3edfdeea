#pragma once

#include "platform/login_item.h"

namespace trovel {

/// The service of the main application. The bundle has to be signed, and the system remembers where
/// it lay.
class LoginItemMac final : public LoginItem {
public:
    LoginItemMac() = default;

    [[nodiscard]] LoginItemStatus status() const override;
    [[nodiscard]] Result registerItem() override;
    [[nodiscard]] Result unregisterItem() override;
};

} // namespace trovel
