#include "platform/linux/system/permissions_linux.h"

#include "platform/alerts.h"

#include <string>

namespace trovel {

PermissionsLinux::~PermissionsLinux() = default;

bool PermissionsLinux::isAccessibilityTrusted() const {
    return readGrants_().maySend;
}

bool PermissionsLinux::preflightScreenCapture() const {
    return readGrants_().mayCapture;
}

void PermissionsLinux::promptForAccessibility() {
    if (!isAccessibilityTrusted()) explain();
}

void PermissionsLinux::requestScreenCapture() {
    if (!preflightScreenCapture()) explain();
}

void PermissionsLinux::explain() {
    auto text = readGrants_().explanation;
    if (text.empty()) {
        text = "Nothing is missing: on this desktop Trovel may see the screen and send clicks and "
               "keys to other windows.";
    }
    showAlert_({"Trovel", std::string(text), AlertStyle::informational, {"OK"}, true});
}

} // namespace trovel
