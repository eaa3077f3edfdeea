#include "platform/macos/bundle_info_mac.h"

#include "platform/macos/bridge/convert.h"

namespace trovel {

std::optional<std::string> BundleInfoMac::stringForKey(std::string_view key) const {
    return optionalText([NSBundle.mainBundle objectForInfoDictionaryKey:toNSString(key)]);
}

} // namespace trovel
