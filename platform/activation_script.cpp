#include "platform/activation_script.h"

#include <algorithm>

namespace trovel {

namespace {

constexpr std::string_view kBeforeName = "tell application \"";
constexpr std::string_view kAfterName = "\" to activate";

bool isUnsafe(char character) {
    auto const byte = static_cast<unsigned char>(character);
    return character == '"' || character == '\\' || byte < 0x20 || byte == 0x7f;
}

} // namespace

std::string activationScript(std::string_view name) {
    std::string script;
    script.reserve(kBeforeName.size() + name.size() + kAfterName.size());
    return script.append(kBeforeName).append(name).append(kAfterName);
}

std::optional<std::string> activatedApplicationName(std::string_view source) {
    if (source.size() < kBeforeName.size() + kAfterName.size()) return std::nullopt;
    if (!source.starts_with(kBeforeName) || !source.ends_with(kAfterName)) return std::nullopt;
    source.remove_prefix(kBeforeName.size());
    source.remove_suffix(kAfterName.size());
    if (std::ranges::any_of(source, isUnsafe)) return std::nullopt;
    return std::string(source);
}

} // namespace trovel
