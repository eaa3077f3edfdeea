#pragma once

#include "platform/color.h"
#include "platform/ui/icon.h"
#include "platform/ui/view.h"

#include <cstdint>
#include <optional>

namespace trovel {

/// Whether an icon that is smaller than its frame is made larger. One that is larger is always made
/// smaller; either way it keeps its proportions and lies in the middle.
enum class ImageScaling : std::uint8_t { proportionallyDown, proportionallyUpOrDown };

/// Shows an icon in its frame. Main thread only.
class ImageView final : public View {
public:
    /// An empty icon leaves the view empty.
    ImageView(Rect frame, std::optional<Icon> icon, std::optional<Color> contentTint = {},
              ImageScaling scaling = ImageScaling::proportionallyDown);

    [[nodiscard]] ViewKind kind() const override { return ViewKind::imageView; }

    [[nodiscard]] std::optional<Icon> const& icon() const { return icon_; }
    [[nodiscard]] std::optional<Color> const& contentTint() const { return contentTint_; }
    [[nodiscard]] ImageScaling scaling() const { return scaling_; }

private:
    std::optional<Icon> icon_;
    std::optional<Color> contentTint_;
    ImageScaling scaling_;
};

} // namespace trovel
