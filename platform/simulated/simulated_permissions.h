#pragma once

#include "platform/permissions.h"
#include "platform/simulated/journal.h"

#include <array>

namespace trovel {

/// The two grants, both given at first, which the user can take back at any time.
class SimulatedPermissions final : public Permissions {
public:
    explicit SimulatedPermissions(Journal& journal) : journal_(journal) {}
    ~SimulatedPermissions() = default;

    [[nodiscard]] bool isAccessibilityTrusted() const override {
        return ask(Permission::accessibility);
    }
    [[nodiscard]] bool preflightScreenCapture() const override {
        return ask(Permission::screenRecording);
    }

    void promptForAccessibility() override {
        journal_.record(effect::PermissionRequested{Permission::accessibility});
    }
    void requestScreenCapture() override {
        journal_.record(effect::PermissionRequested{Permission::screenRecording});
    }

    void grant(Permission permission) { granted_[static_cast<std::size_t>(permission)] = true; }
    void revoke(Permission permission) { granted_[static_cast<std::size_t>(permission)] = false; }

    /// What the system knows, without the program having asked.
    [[nodiscard]] bool isGranted(Permission permission) const {
        return granted_[static_cast<std::size_t>(permission)];
    }

private:
    [[nodiscard]] bool ask(Permission permission) const {
        journal_.record(effect::PermissionAsked{permission, isGranted(permission)});
        return isGranted(permission);
    }

    Journal& journal_;
    std::array<bool, 2> granted_{true, true};
};

} // namespace trovel
