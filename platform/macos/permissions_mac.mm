#include "platform/macos/permissions_mac.h"

#import <ApplicationServices/ApplicationServices.h>

namespace trovel {

bool PermissionsMac::isAccessibilityTrusted() const {
    return AXIsProcessTrusted() != 0;
}

bool PermissionsMac::preflightScreenCapture() const {
    return CGPreflightScreenCaptureAccess();
}

} // namespace trovel
