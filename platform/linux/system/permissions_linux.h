#pragma once

#include "platform/linux/system/session_grants.h"
#include "platform/permissions.h"

#include <functional>
#include <utility>

namespace trovel {

struct Alert;

/// What takes the place of the two grants on a Linux desktop: what its session lets programs do.
/// Nobody can grant them: in place of the system's prompts an explanation is shown.
class PermissionsLinux final : public Permissions {
public:
    using ReadGrants = std::function<SessionGrants()>;
    /// Shows an alert and does not wait for it to be closed.
    using ShowAlert = std::function<void(Alert const&)>;

    PermissionsLinux(ReadGrants readGrants, ShowAlert showAlert)
        : readGrants_(std::move(readGrants)), showAlert_(std::move(showAlert)) {}
    ~PermissionsLinux();

    bool isAccessibilityTrusted() const override;
    bool preflightScreenCapture() const override;
    void promptForAccessibility() override;
    void requestScreenCapture() override;

    /// Says what is missing on this desktop, or that nothing is.
    void explain();

private:
    ReadGrants readGrants_;
    ShowAlert showAlert_;
};

} // namespace trovel
