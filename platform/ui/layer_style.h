#pragma once

#include "platform/color.h"
#include "platform/geometry.h"

#include <optional>

namespace trovel {

/// A shadow behind a layer. Offset and radius are points, y upward.
struct LayerShadow {
    Color color;
    Size offset;
    double radius = 0;
    double opacity = 1;

    friend bool operator==(LayerShadow const&, LayerShadow const&) = default;
};

/// The look of a layer-backed view, apart from what its kind draws. Lengths are points.
struct LayerStyle {
    double cornerRadius = 0;
    bool masksToBounds = false;
    double borderWidth = 0;
    Color borderColor = Color::clear();
    Color backgroundColor = Color::clear();
    double opacity = 1;
    std::optional<LayerShadow> shadow;

    friend bool operator==(LayerStyle const&, LayerStyle const&) = default;
};

} // namespace trovel
