#pragma once

#include "platform/color.h"
#include "platform/ui/icon.h"
#include "platform/ui/view.h"

#include <optional>

namespace trovel {

/// Shows an icon, scaled proportionally up or down to its frame. Main thread only.
class ImageView final : public View {
public:
    /// An empty icon leaves the view empty.
    ImageView(Rect frame, std::optional<Icon> icon, std::optional<Color> contentTint = {});

    [[nodiscard]] ViewKind kind() const override { return ViewKind::imageView; }

    [[nodiscard]] std::optional<Icon> const& icon() const { return icon_; }
    [[nodiscard]] std::optional<Color> const& contentTint() const { return contentTint_; }

private:
    std::optional<Icon> icon_;
    std::optional<Color> contentTint_;
};

} // namespace trovel
