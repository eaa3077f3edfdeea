#pragma once

#include "platform/permissions.h"

namespace trovel {

class XcbConnection;

/// What takes the place of the two grants on an X11 desktop. A native session lets every program
/// read the screen, and send input where the server has the XTEST extension. In a Wayland session
/// the X server shows and reaches nothing but other X programs, so both are missing there.
class PermissionsLinux final : public Permissions {
public:
    /// The connection must outlive this.
    explicit PermissionsLinux(XcbConnection const& connection);
    ~PermissionsLinux();

    bool isAccessibilityTrusted() const override;
    bool preflightScreenCapture() const override;

private:
    XcbConnection const& connection_;
    bool isXwayland_;
};

} // namespace trovel
