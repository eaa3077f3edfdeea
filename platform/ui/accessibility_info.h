#pragma once

#include <cstdint>
#include <string>

namespace trovel {

/// What a screen reader says of a view that is no control of its own.
struct AccessibilityInfo {
    enum class Role : std::uint8_t { button };

    Role role = Role::button;
    std::string label;
    std::string value;

    friend bool operator==(AccessibilityInfo const&, AccessibilityInfo const&) = default;
};

} // namespace trovel
