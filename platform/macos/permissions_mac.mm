#include "platform/macos/permissions_mac.h"

#import <ApplicationServices/ApplicationServices.h>
#import <Foundation/Foundation.h>

namespace trovel {

bool PermissionsMac::isAccessibilityTrusted() const {
    return AXIsProcessTrusted() != 0;
}

bool PermissionsMac::preflightScreenCapture() const {
    return CGPreflightScreenCaptureAccess();
}

void PermissionsMac::promptForAccessibility() {
    NSDictionary* const options = @{(__bridge NSString*)kAXTrustedCheckOptionPrompt : @YES};
    AXIsProcessTrustedWithOptions((__bridge CFDictionaryRef)options);
}

void PermissionsMac::requestScreenCapture() {
    CGRequestScreenCaptureAccess();
}

} // namespace trovel
