#include "platform/linux/system/bundle_info_linux.h"

namespace trovel {

std::optional<std::string> BundleInfoLinux::stringForKey(std::string_view key) const {
    if (key == "CFBundleShortVersionString") return TROVEL_VERSION;
    if (key == "CFBundleVersion") return TROVEL_BUILD_NUMBER;
    return std::nullopt;
}

} // namespace trovel
