#pragma once

#include "platform/color.h"
#include "platform/font.h"
#include "platform/geometry.h"

#include <QColor>
#include <QFont>
#include <QRectF>
#include <QString>

#include <string_view>

namespace trovel {

/// Trovel's values as Qt's, for windows and pictures of Qt's. The desktop's own colours come from
/// the application's palette as it is now.
[[nodiscard]] QColor qtColor(Color const& color);
[[nodiscard]] QFont qtFont(Font const& font);
[[nodiscard]] QRectF qtRect(Rect const& rect);
[[nodiscard]] QString qtString(std::string_view text);

} // namespace trovel
