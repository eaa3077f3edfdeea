#pragma once

#include "platform/linux/system/session_grants.h"

namespace trovel {

class XcbConnection;

/// The grants of an X11 session. A native one lets every program read the screen, and send input
/// where the server has the XTEST extension. In a Wayland session the X server shows and reaches
/// nothing but other X programs, so both are missing there.
class SessionGrantsX11 {
public:
    /// The connection must outlive this.
    explicit SessionGrantsX11(XcbConnection const& connection);

    /// As they are now.
    [[nodiscard]] SessionGrants read() const;

private:
    XcbConnection const& connection_;
    bool isXwayland_;
};

} // namespace trovel
