#include "platform/macos/preference_store_mac.h"

#include "platform/macos/bridge/convert.h"

namespace trovel {

bool PreferenceStoreMac::boolForKey(std::string_view key) const {
    return [NSUserDefaults.standardUserDefaults boolForKey:toNSString(key)];
}

std::int64_t PreferenceStoreMac::integerForKey(std::string_view key) const {
    return [NSUserDefaults.standardUserDefaults integerForKey:toNSString(key)];
}

std::optional<std::string> PreferenceStoreMac::stringForKey(std::string_view key) const {
    return optionalText([NSUserDefaults.standardUserDefaults stringForKey:toNSString(key)]);
}

void PreferenceStoreMac::setBool(std::string_view key, bool value) {
    [NSUserDefaults.standardUserDefaults setBool:value forKey:toNSString(key)];
}

void PreferenceStoreMac::setInteger(std::string_view key, std::int64_t value) {
    [NSUserDefaults.standardUserDefaults setInteger:value forKey:toNSString(key)];
}

void PreferenceStoreMac::setString(std::string_view key, std::string_view value) {
    [NSUserDefaults.standardUserDefaults setObject:toNSString(value) forKey:toNSString(key)];
}

} // namespace trovel
