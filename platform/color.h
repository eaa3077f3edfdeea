#pragma once

#include <cstdint>

namespace trovel {

/// A colour: either fixed components (0 to 1, sRGB, not premultiplied) or one of the desktop's own
/// colours, which a backend resolves when it draws and which follow light and dark appearance.
struct Color {
    enum class Name : std::uint8_t {
        fixed,
        controlAccent,
        controlBackground,
        label,
        secondaryLabel,
        tertiaryLabel,
        separator,
    };

    Name name = Name::fixed;
    double red = 0;
    double green = 0;
    double blue = 0;
    double alpha = 1;

    [[nodiscard]] static constexpr Color rgba(double red, double green, double blue, double alpha) {
        return {Name::fixed, red, green, blue, alpha};
    }
    [[nodiscard]] static constexpr Color white(double white, double alpha) {
        return {Name::fixed, white, white, white, alpha};
    }
    [[nodiscard]] static constexpr Color clear() { return {Name::fixed, 0, 0, 0, 0}; }
    [[nodiscard]] static constexpr Color system(Name name, double alpha = 1) {
        return {name, 0, 0, 0, alpha};
    }

    friend bool operator==(Color const&, Color const&) = default;
};

} // namespace trovel
