#pragma once

#include "platform/font.h"
#include "platform/image.h"
#include "platform/ui/drawn_image.h"

#include <optional>
#include <string>
#include <variant>

namespace trovel {

/// Size (points) and weight in which a symbol is drawn.
struct SymbolConfiguration {
    double pointSize = 0;
    Font::Weight weight = Font::Weight::regular;

    friend bool operator==(SymbolConfiguration const&, SymbolConfiguration const&) = default;
};

/// One of the system's symbol images, by name. The backend draws it in the tint of its view.
struct SymbolIcon {
    std::string name;
    std::string accessibilityDescription;
    std::optional<SymbolConfiguration> configuration;

    friend bool operator==(SymbolIcon const&, SymbolIcon const&) = default;
};

/// The icon of this very application.
struct OwnApplicationIcon {
    friend bool operator==(OwnApplicationIcon const&, OwnApplicationIcon const&) = default;
};

/// The icon of another application, in pixels.
struct ApplicationIcon {
    Image image;
};

/// What an image view can show.
using Icon = std::variant<SymbolIcon, OwnApplicationIcon, ApplicationIcon, DrawnImage>;

} // namespace trovel
