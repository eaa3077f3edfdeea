#pragma once

#include "platform/permissions.h"

namespace trovel {

/// The grants that macOS keeps for this program's code signature.
class PermissionsMac final : public Permissions {
public:
    PermissionsMac() = default;

    [[nodiscard]] bool isAccessibilityTrusted() const override;
    [[nodiscard]] bool preflightScreenCapture() const override;
    void promptForAccessibility() override;
    void requestScreenCapture() override;
};

} // namespace trovel
