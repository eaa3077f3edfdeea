#pragma once

#include <cstdint>

namespace trovel {

/// A system font by role, size in points and weight; the backend picks the face.
struct Font {
    enum class Family : std::uint8_t { system, monospacedSystem };
    enum class Weight : std::uint8_t { light, regular, medium, semibold, bold };

    Family family = Family::system;
    double size = 13;
    Weight weight = Weight::regular;

    [[nodiscard]] static constexpr Font system(double size, Weight weight = Weight::regular) {
        return {Family::system, size, weight};
    }
    [[nodiscard]] static constexpr Font monospacedSystem(double size, Weight weight) {
        return {Family::monospacedSystem, size, weight};
    }

    friend bool operator==(Font const&, Font const&) = default;
};

} // namespace trovel
