#pragma once

#include "platform/permissions.h"

#include <functional>
#include <utility>

namespace trovel {

struct Alert;

class XcbConnection;

/// What takes the place of the two grants on an X11 desktop. A native session lets every program
/// read the screen, and send input where the server has the XTEST extension. In a Wayland session
/// the X server shows and reaches nothing but other X programs, so both are missing there. Nobody
/// can grant them: in place of the system's prompts an explanation is shown.
class PermissionsLinux final : public Permissions {
public:
    /// Shows an alert and does not wait for it to be closed.
    using ShowAlert = std::function<void(Alert const&)>;

    /// The connection must outlive this.
    PermissionsLinux(XcbConnection const& connection, ShowAlert showAlert);
    ~PermissionsLinux();

    bool isAccessibilityTrusted() const override;
    bool preflightScreenCapture() const override;
    void promptForAccessibility() override;
    void requestScreenCapture() override;

    /// Says what is missing on this desktop, or that nothing is.
    void explain();

private:
    XcbConnection const& connection_;
    ShowAlert showAlert_;
    bool isXwayland_;
};

} // namespace trovel
